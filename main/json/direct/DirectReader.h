// JSON text straight into a bag, in one pass. Included by JSONSerializer.cpp.
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

#include "main/json/direct/DirectNames.h"
#include "main/json/direct/DirectNumberReader.h"

// Makes the bag that JSONReader makes of a valid text whose parameters are of the library's own types. Everything else
// goes the long way, from the start of the text: what is not valid, comments, host serializers, names twice in one
// object, values of another kind than registered, namespaces that have not been filled yet. So every failure is that of
// the long way.
//
// The text is read before the first bag is made, so that the host makes as many bags as on the long way and none for a
// text that goes there. Where its bags watch what is stored in them, values come in the order of their names.
class DirectReader {
public:
    // Reads the text; false for the long way. May be called again for another text, which is faster than a new reader.
    bool Read(const TString& json, ParametersRegistry& registry, const TString& namespaceName, NameForm form);

    // Makes the bag of the text that was read: root, filled. False, with nothing done, when root is not plain, which is
    // for the long way. What the host throws while it makes bags passes.
    bool MakeBag(IParameters& root);

    // Lets go of what an abandoned text has left, and of memory beyond what most texts take.
    void Forget() noexcept;

private:
    using Record = qvpreslayer::detail::DirectRecord;
    using Value = RefCntPtr<IParameter>;
    class Level;
    class StringTexts;

    enum class ItemKind : unsigned char {
        Value,
        Null,    // a member or entry that is null
        Bag,     // its members follow
        Bags,    // its elements follow, each a Bag
        BagMap,  // its entries follow, each a Bag or Null, in the order of their keys
    };

    // A piece of the text, before what is inside it.
    struct Item {
        const Record* record;    // null for elements and entries
        Value value;             // of ItemKind::Value
        std::uint32_t children;  // right inside it
        std::uint32_t firstKey;  // of ItemKind::BagMap, in m_keys
        ItemKind kind;
    };

    // Reading: each reads on from m_at. False, or an empty value, stands for the long way.
    bool ReadText();
    bool ReadBag(const Record* owner, const Record* memory);
    bool ReadMembers(const Record* owner, std::uint32_t& members, bool& inOrder);
    bool HasEqualMembers(std::size_t firstItem, std::uint32_t members) const;
    bool ReadMember(const Record& parameter);
    bool ReadBags(const Record& parameter);
    bool ReadBagMap(const Record& parameter);
    Value ReadScalar(const Record& parameter);
    Value ReadList(const Record& parameter);
    Value ReadMap(const Record& parameter);
    template <class T>
    Value ReadNumber();
    template <class T>
    Value ReadNumbers();
    template <class T>
    bool ReadRun(std::vector<T>& values);
    template <class T>
    bool TakeNumber(T& value);
    Value ReadBool();
    Value ReadBools();
    bool TakeBool(bool& value);
    Value ReadStrings();
    bool TakeString(TString& text);
    bool TakePlainString(std::u16string_view& text);

    // Making: each takes items from m_item on.
    RefCntPtr<IParameters> MakeNested();
    void Fill(IParameters& bag, std::uint32_t members);
    void FillInNameOrder(IParameters& bag, std::uint32_t members);
    void FillNested(IParameters& bag, const Record& parameter);
    Value MakeValue();
    RefCntPtr<IParameters> MakeEntry();
    void SkipItem();

    // What stands between values.
    void SkipBlanks() {
        while (*m_at <= u' ' && (*m_at == u' ' || *m_at == u'\n' || *m_at == u'\r' || *m_at == u'\t')) {
            ++m_at;
        }
    }
    bool Take(char16_t unit) {
        SkipBlanks();
        return *m_at == unit ? (++m_at, true) : false;
    }
    bool TakeWord(std::u16string_view word);

    const char16_t* m_at = nullptr;
    const char16_t* m_begin = nullptr;
    const char16_t* m_end = nullptr;  // a NUL, which is no part of the text
    ParametersRegistry* m_registry = nullptr;
    DirectNames m_names;
    DirectNumberReader m_numbers{nullptr, nullptr};
    std::vector<Item> m_items;    // of the text, in its order
    std::vector<TString> m_keys;  // of entries of structure maps
    std::size_t m_item = 0;       // the next to become part of a bag
    std::size_t m_spent = 0;      // bytes of expanded runs
    int m_depth = 0;
    int m_maxDepth = 0;
};
