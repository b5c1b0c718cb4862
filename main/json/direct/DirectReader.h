// JSON text straight into a bag, in one pass. Included by JSONSerializer.cpp.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include <qvsys/RefCntPtr.h>

#include <qvcore/TString.h>

#include <qvpreslayer/IParameters.h>
#include <qvpreslayer/ParametersRegistry.h>
#include <qvpreslayer/detail/DirectText.h>
#include <qvpreslayer/detail/ParameterTable.h>

#include "main/json/direct/DirectNames.h"
#include "main/json/direct/DirectNumberReader.h"

// Makes the bag that JSONReader makes of a valid text whose parameters are of the library's own types. Everything else
// goes the long way, from the start of the text: what is not valid, comments, host serializers and bags of a class that
// watches its values, names twice in one object, values of another kind than registered, namespaces that have not been
// filled yet. So every failure is that of the long way, and the order in which host code is called, since there is
// none to be called but the making of bags.
class DirectReader {
public:
    // The bag; empty for the long way. May be called again for another text, which is faster than a new reader.
    RefCntPtr<IParameters> Read(const TString& json, ParametersRegistry& registry, const TString& namespaceName,
                                NameForm form);

    // Lets go of what an abandoned text has left, and of memory beyond what most texts take.
    void Forget() noexcept;

private:
    using Entry = qvpreslayer::detail::ParameterTable::Entry;
    using Record = qvpreslayer::detail::DirectRecord;
    using Value = RefCntPtr<IParameter>;
    class Level;
    class StringTexts;

    // Each reads on from m_at. False, or an empty value, stands for the long way.
    bool ReadBag(IParameters& bag, const Record* owner);
    bool ReadMembers(const Record* owner, bool& inOrder);
    bool PutInOrder(std::size_t firstEntry);
    Value ReadValue(const Record& parameter);
    Value ReadScalar(const Record& parameter);
    Value ReadList(const Record& parameter);
    Value ReadMap(const Record& parameter);
    Value ReadStructure(const Record& parameter);
    RefCntPtr<IParameters> ReadNested(const Record& parameter);
    Value ReadBags(const Record& parameter);
    Value ReadBagMap(const Record& parameter);
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
    std::vector<Entry> m_entries;  // of the objects that are being read, the innermost last
    int m_depth = 0;
    int m_maxDepth = 0;
};
