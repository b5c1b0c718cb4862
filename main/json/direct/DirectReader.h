// JSON text straight into a bag, in one pass. Included by ThreadScratch.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include <qvsys/RefCntPtr.h>

#include <qvcore/TString.h>

#include <qvpreslayer/IParameters.h>
#include <qvpreslayer/ParametersRegistry.h>
#include <qvpreslayer/detail/DirectText.h>

#include "main/json/direct/DirectItems.h"
#include "main/json/direct/DirectNames.h"
#include "main/json/direct/DirectNumberReader.h"

template <class T>
struct RunAt;

// Makes the bag that JSONReader makes of a valid text whose parameters are of the library's own types. Everything else
// goes the long way, from the start of the text: what is not valid, comments, host serializers, names twice in one
// object, values of another kind than registered, namespaces that have not been filled yet. So every failure is that of
// the long way.
//
// The text is read into items before the first bag is made (DirectFilling), so that the host makes as many bags as on
// the long way and none for a text that goes there.
class DirectReader {
public:
    // Reads the text; false for the long way. May be called again for another text, which is faster than a new reader.
    bool Read(const TString& json, ParametersRegistry& registry, const TString& namespaceName, NameForm form);

    // What was read, for DirectFilling.
    DirectItems& Items() noexcept { return m_items; }

    // Lets go of what an abandoned text has left, and of memory beyond what most texts take.
    void Forget() noexcept {
        m_items.Clear();
        m_items.Shrink();
    }

private:
    using Record = qvpreslayer::detail::DirectRecord;
    using Value = RefCntPtr<IParameter>;
    class Level;
    class StringTexts;

    bool ReadWholeText();

    void SetInside(std::size_t position, DirectItem::Kind kind, std::uint64_t children) noexcept {
        m_items.SetInside(position, kind, children);
        ++m_others;
    }

    // Each reads from a place on, adds the item of what it read, and answers the place behind; null for the long way.
    // Those with an identifier are told what the item is to name.
    const char16_t* ReadBag(const char16_t* at, const Record* owner, int id);
    const char16_t* ReadMembers(const char16_t* at, const Record* owner, std::uint32_t& members, bool& ascends);
    const char16_t* TakeName(const char16_t* at, const Record*& guess, const Record* previous, bool first);
    const char16_t* ReadMember(const char16_t* at, const Record& parameter);
    const char16_t* ReadOther(const char16_t* at, const Record& parameter);
    const char16_t* ReadNull(const char16_t* at, int id);
    const char16_t* ReadBags(const char16_t* at, const Record& parameter);
    const char16_t* ReadBagMap(const char16_t* at, const Record& parameter);
    const char16_t* ReadEntry(const char16_t* at, const Record& parameter, int key);
    bool HasEqualMembers(std::size_t position, std::uint32_t members) const;

    template <class T>
    const char16_t* ReadNumber(const char16_t* at, int id);
    const char16_t* ReadBool(const char16_t* at, int id);
    const char16_t* ReadString(const char16_t* at, int id);
    const char16_t* ReadUnusualString(const char16_t* at, int id);
    const char16_t* ReadText(const char16_t* at, const Record& parameter);

    const char16_t* ReadMap(const char16_t* at, const Record& parameter);
    template <class T>
    const char16_t* ReadEntries(const char16_t* at, int id);
    const char16_t* ReadList(const char16_t* at, const Record& parameter);
    template <class T>
    const char16_t* ReadNumbers(const char16_t* at, int id);
    const char16_t* ReadBools(const char16_t* at, int id);
    const char16_t* ReadStrings(const char16_t* at, int id);
    const char16_t* ReadTexts(const char16_t* at, const Record& parameter);

    // Parts of values, which add no item.
    template <class T>
    const char16_t* TakeRun(const char16_t* at, RunAt<T>& run) const;
    template <class T>
    const char16_t* TakeUsualRun(const char16_t* at, RunAt<T>& run) const;
    template <class T>
    const char16_t* ReadRun(const char16_t* at, std::size_t position, std::vector<RunAt<T>>& runs);
    template <class T>
    const char16_t* TakeValue(const char16_t* at, T& value) const;
    template <class T>
    const char16_t* TakeNumber(const char16_t* at, T& value) const;
    const char16_t* TakeBool(const char16_t* at, bool& value) const;
    const char16_t* TakeWord(const char16_t* at, std::u16string_view word) const;

    const char16_t* m_begin = nullptr;
    const char16_t* m_end = nullptr;  // a NUL, which is no part of the text
    DirectNames m_names;
    DirectNumberReader m_numbers{nullptr, nullptr};
    DirectItems m_items;
    std::size_t m_others = 0;  // items that are no values, so far
    std::size_t m_spent = 0;   // bytes of expanded runs
    int m_depth = 0;
    int m_maxDepth = 0;
};
