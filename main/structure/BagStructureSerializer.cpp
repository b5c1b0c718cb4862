#include <qvpreslayer/BagStructureSerializer.h>

#include <typeinfo>

#include <qvpreslayer/ParameterAccess.h>
#include <qvpreslayer/ParametersRegistry.h>
#include <qvpreslayer/SerializeStructure.h>
#include <qvpreslayer/StructureScopes.h>
#include <qvpreslayer/VisitParametersStructure.h>
#include <qvpreslayer/detail/DirectText.h>

namespace {

using Bag = BagStructureSerializer::Bag;
using Bags = BagStructureSerializer::Bags;
using BagMap = BagStructureSerializer::BagMap;

RefCntPtr<const IParameter> AsValue(const Bag& bag) { return MakeRefCnt<BagParameter>(bag); }

const Bag& BagOf(const RefCntPtr<IParameter>& value) { return GetParameterValue<Bag>(value.Get()); }

void WriteTexts(const IParameters& bag, SerializeStructure& stream, int id) {
    const auto& texts = GetParameterValue<std::vector<TString>>(bag, id);
    const SubStructure list(id, stream, false);
    for (const TString& text : texts) {
        stream.ListItem(text);
    }
}

void WriteMembers(const Bag& bag, SerializeStructure& stream) {
    VisitStructuredParameters(ParametersRegistry::Get(), bag, stream.GetVisitor(), stream.GetUseVerboseNames(),
                              stream.GetCompressArrays())
        .Walk();
}

}  // namespace

IStructureSerializer::~IStructureSerializer() = default;

BagStructureSerializer::BagStructureSerializer(Form form) : m_form(form) {}

BagStructureSerializer::~BagStructureSerializer() = default;

void BagStructureSerializer::Serialize(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id,
                                       bool ownComposite) const {
    QV_ASSERT(ownComposite || !IsListForm(), "main/structure/BagStructureSerializer");
    const Bag& bag = GetParameterValue<Bag>(value.Get());
    if (IsListForm()) {
        WriteTexts(*bag, stream, id);
    } else if (ownComposite) {
        const CompositeStructure composite(id, stream);
        WriteMembers(bag, stream);
    } else {
        WriteMembers(bag, stream);
    }
}

std::vector<RefCntPtr<const IParameter>> BagStructureSerializer::SplitList(RefCntPtr<const IParameter> value) const {
    std::vector<RefCntPtr<const IParameter>> elements;
    for (const Bag& bag : GetParameterValue<Bags>(value.Get())) {
        elements.push_back(AsValue(bag));
    }
    return elements;
}

std::map<TString, RefCntPtr<const IParameter>> BagStructureSerializer::SplitMap(
    RefCntPtr<const IParameter> value) const {
    std::map<TString, RefCntPtr<const IParameter>> entries;
    for (const auto& [key, bag] : GetParameterValue<BagMap>(value.Get())) {
        entries.emplace_hint(entries.end(), key, AsValue(bag));
    }
    return entries;
}

bool BagStructureSerializer::IsListForm() const { return m_form == List; }

void BagStructureSerializer::PrepareElement(int, RefCntPtr<IParameters>, RefCntPtr<IParameters>) const {}

RefCntPtr<IParameter> BagStructureSerializer::FromParameters(int, RefCntPtr<IParameters> bag) const {
    return MakeRefCnt<BagParameter>(Bag(std::move(bag)));
}

RefCntPtr<IParameter> BagStructureSerializer::MakeList(const std::vector<RefCntPtr<IParameter>>& elements) const {
    Bags bags;
    bags.reserve(elements.size());
    for (const auto& element : elements) {
        bags.push_back(BagOf(element));
    }
    return MakeRefCnt<ValParameter<Bags>>(std::move(bags));
}

RefCntPtr<IParameter> BagStructureSerializer::MakeMap(const std::map<TString, RefCntPtr<IParameter>>& entries) const {
    BagMap bags;
    for (const auto& [key, entry] : entries) {
        bags.emplace_hint(bags.end(), key, BagOf(entry));
    }
    return MakeRefCnt<ValParameter<BagMap>>(std::move(bags));
}

qvpreslayer::detail::DirectInfo qvpreslayer::detail::DirectInfoOf(const IStructureSerializer& serializer) {
    DirectInfo info;
    if (typeid(serializer) == typeid(BagStructureSerializer) && !serializer.IsListForm()) {
        info.type = DirectType::Bags;
    }
    return info;
}
