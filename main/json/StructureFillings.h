// Arrays and objects of the text that become structure lists and maps. Included by BagFilling.cpp.
#pragma once

#include <map>
#include <vector>

#include "main/json/JSONMembers.h"
#include "main/json/JSONReader.h"

// Makes a structure list of an array: an element is an object of members, or an array of texts in list form.
class StructureListFilling final : public JSONFilling {
public:
    StructureListFilling(JSONReader& reader, RefCntPtr<IParameters> owner, int id, JSONDocument::Index array);

    bool Step(JSONReader& reader) override;
    JSONDocument::Index Current() const override { return m_current; }
    void AppendStep(TString& path, const JSONDocument& document) const override;

private:
    void FinishElement(JSONReader& reader);

    RefCntPtr<IParameters> m_owner;  // where the list goes
    int m_id;
    RefCntPtr<IStructureSerializer> m_serializer;
    JSONDocument::Index m_current;  // the element being read; the array itself before the first
    JSONDocument::Index m_next;     // the element after it
    JSONDocument::Index m_end;
    std::size_t m_started = 0;            // elements begun
    RefCntPtr<IParameters> m_elementBag;  // of the element being read
    std::vector<RefCntPtr<IParameter>> m_elements;
};

// Makes a structure map of an object: an entry is an object of members, or null. Keys stand as they are.
class StructureMapFilling final : public JSONFilling {
public:
    StructureMapFilling(JSONReader& reader, RefCntPtr<IParameters> owner, int id, JSONDocument::Index object);

    bool Step(JSONReader& reader) override;
    JSONDocument::Index Current() const override { return m_current; }
    void AppendStep(TString& path, const JSONDocument& document) const override;

private:
    void FinishEntry();

    RefCntPtr<IParameters> m_owner;  // where the map goes
    int m_id;
    RefCntPtr<IStructureSerializer> m_serializer;
    JSONDocument::Index m_current;  // the entry being read; the object itself before the first
    std::vector<JSONMember> m_members;
    std::size_t m_next = 0;             // of m_members; the one before it is being read
    RefCntPtr<IParameters> m_entryBag;  // of the entry being read
    std::map<TString, RefCntPtr<IParameter>> m_entries;
};

// A new bag that holds, under id, the texts of an array: a structure in list form.
RefCntPtr<IParameters> MakeListFormBag(JSONReader& reader, int id, JSONDocument::Index array);
