#include "main/json/StructureFillings.h"

#include <utility>

#include <qvpreslayer/ValParameter.h>

#include "main/json/BagFilling.h"

namespace {

void StoreTexts(JSONReader& reader, IParameters& bag, int id, JSONDocument::Index array) {
    if (reader.IsWatched()) {
        reader.ReportTexts(id, array);
    }
    bag.SetParameter(id, MakeRefCnt<ValParameter<std::vector<TString>>>(reader.ScalarTexts(array)));
}

}  // namespace

RefCntPtr<IParameters> MakeListFormBag(JSONReader& reader, int id, JSONDocument::Index array) {
    RefCntPtr<IParameters> bag = reader.NewBag();
    StoreTexts(reader, *bag, id, array);
    return bag;
}

StructureListFilling::StructureListFilling(JSONReader& reader, RefCntPtr<IParameters> owner, int id,
                                           JSONDocument::Index array)
    : m_owner(std::move(owner)),
      m_id(id),
      m_serializer(reader.Registry().GetStructureListSerializer(id)),
      m_current(array),
      m_next(array + 1),
      m_end(reader.Document().Next(array)) {}

bool StructureListFilling::Step(JSONReader& reader) {
    if (m_elementBag) {
        FinishElement(reader);
    }
    if (m_next == m_end) {
        m_owner->SetParameter(m_id, m_serializer->MakeList(m_elements));
        return false;
    }
    m_current = std::exchange(m_next, reader.Document().Next(m_next));
    ++m_started;
    m_elementBag = reader.NewBag();
    if (m_serializer->IsListForm()) {
        reader.RequireKind(m_current, JSONKind::Array);
        StoreTexts(reader, *m_elementBag, m_id, m_current);
    } else {
        reader.RequireKind(m_current, JSONKind::Object);
        reader.Push(std::make_unique<BagFilling>(reader, m_elementBag, m_current));
    }
    return true;
}

void StructureListFilling::FinishElement(JSONReader& reader) {
    const RefCntPtr<IParameters> bag = std::exchange(m_elementBag, nullptr);
    reader.PrepareElement(m_id, bag);
    m_elements.push_back(m_serializer->FromParameters(m_id, bag));
}

void StructureListFilling::AppendStep(TString& path, const JSONDocument&) const {
    if (m_started != 0) {
        AppendPath(path, m_started - 1);
    }
}

StructureMapFilling::StructureMapFilling(JSONReader& reader, RefCntPtr<IParameters> owner, int id,
                                         JSONDocument::Index object)
    : m_owner(std::move(owner)),
      m_id(id),
      m_serializer(reader.Registry().GetStructureMapSerializer(id)),
      m_current(object),
      m_members(reader.Members(object, id)) {}

bool StructureMapFilling::Step(JSONReader& reader) {
    if (m_entryBag) {
        FinishEntry();
    }
    if (m_next == m_members.size()) {
        m_owner->SetParameter(m_id, m_serializer->MakeMap(m_entries));
        return false;
    }
    const JSONMember& entry = m_members[m_next++];
    m_current = entry.value;
    RefCntPtr<IParameters> bag = reader.NewBag();
    if (reader.Document()[entry.value].kind == JSONKind::Null) {
        m_entries.emplace(entry.name, m_serializer->FromParameters(m_id, nullptr));
        return true;
    }
    reader.RequireKind(entry.value, JSONKind::Object);
    m_entryBag = std::move(bag);
    reader.Push(std::make_unique<BagFilling>(reader, m_entryBag, entry.value));
    return true;
}

void StructureMapFilling::FinishEntry() {
    const RefCntPtr<IParameters> bag = std::exchange(m_entryBag, nullptr);
    m_entries.emplace(m_members[m_next - 1].name, m_serializer->FromParameters(m_id, bag));
}

void StructureMapFilling::AppendStep(TString& path, const JSONDocument&) const {
    if (m_next != 0) {
        AppendPath(path, m_members[m_next - 1].name);
    }
}
