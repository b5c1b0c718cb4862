// Objects of the text that become bags. Included by JSONReader.cpp and StructureFillings.cpp.
#pragma once

#include <map>
#include <vector>

#include "main/json/JSONMembers.h"
#include "main/json/JSONReader.h"

// Fills a bag from the members of an object: each name leads to a parameter, whose kind decides what the value may be
// and what becomes of it.
//
//   kind of value                       kinds of parameter
//   string, bool, integer, real         1, 2, 3      the text goes to the serializer
//   array                               4            list of texts, nested arrays as run records
//                                       6            structure in list form
//                                       7            structure list
//   object                              5, 6         a nested bag; for 6 the serializer makes the structure from it
//                                       8            map of texts
//                                       9            structure map
//   null                                any          skipped
//
// Every other pair is JSONParseException (Messages::kJSONKindMismatch).
class BagFilling final : public JSONFilling {
public:
    BagFilling(const JSONReader& reader, RefCntPtr<IParameters> bag, JSONDocument::Index object);

    bool Step(JSONReader& reader) override;
    JSONDocument::Index Current() const override;
    void AppendStep(TString& path, const JSONDocument& document) const override;

private:
    void FindParameter(JSONReader& reader, std::u16string_view name);
    void Apply(JSONReader& reader, JSONDocument::Index value);
    void StoreScalar(RefCntPtr<IParameter> value);
    void ApplyScalar(JSONReader& reader, JSONDocument::Index value);
    void ApplyArray(JSONReader& reader, JSONDocument::Index value);
    void ApplyObject(JSONReader& reader, JSONDocument::Index value);
    void ReadList(JSONReader& reader, JSONDocument::Index array);
    const ParameterInfo& KnownParameter(const JSONReader& reader) const;
    void ReportElements(const JSONReader& reader, JSONDocument::Index array) const;
    void ReportRuns(const JSONReader& reader, JSONDocument::Index array, bool allSkipped) const;
    void ReportOverridden(const JSONReader& reader);
    void ReadMap(JSONReader& reader, JSONDocument::Index object);
    void ReadListForm(JSONReader& reader, JSONDocument::Index array);
    void StartNested(JSONReader& reader, JSONDocument::Index object);
    void FinishNested();
    [[noreturn]] void ThrowMismatch(const JSONReader& reader, JSONKind found) const;

    RefCntPtr<IParameters> m_bag;
    std::vector<JSONMember> m_members;
    std::size_t m_next = 0;                // of m_members; the one before it is being read
    std::map<int, std::size_t> m_applied;  // m_next by parameter, where somebody wants to know of leniencies

    // The parameter being read.
    const ParameterInfo* m_info = nullptr;  // null where the short way did not find it
    int m_id = 0;
    ParameterTypeCategory m_kind = PTC_None;
    bool m_atName = false;                         // its name is being looked up, not its value read
    RefCntPtr<IParameters> m_nested;               // set while its filling is under way
    RefCntPtr<IStructureSerializer> m_serializer;  // of m_nested, when it is to become a structure
};
