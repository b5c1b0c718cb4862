#include <qvpreslayer/VisitParametersStructure.h>

#include <qvpreslayer/ParameterAccess.h>
#include <qvpreslayer/ParametersRegistry.h>
#include <qvpreslayer/PresModelBuilderSupport.h>
#include <qvpreslayer/RegistryExceptions.h>
#include <qvpreslayer/SerializeStructure.h>
#include <qvpreslayer/detail/BagLevel.h>

#include "main/command/DeepWalk.h"

using qvpreslayer::detail::BagLevel;
using qvpreslayer::detail::DeepWalk;
using qvpreslayer::detail::DirectType;
using qvpreslayer::detail::IDirectVisitor;

namespace {

// What the registry knows of id; ParameterNotFoundException when it is not registered.
const ParameterInfo& Known(const ParametersRegistry& registry, int id) {
    const ParameterInfo* info = registry.FindInfo(id);
    if (info == nullptr || info->kind == PTC_None) {
        throw ParameterNotFoundException(id);
    }
    return *info;
}

}  // namespace

void VisitParametersStructure(const TString&, RefCntPtr<const IParameters> bag, IStructuredParameterVisitor& visitor) {
    VisitStructuredParameters(ParametersRegistry::Get(), std::move(bag), visitor).Walk();
}

VisitStructuredParameters::VisitStructuredParameters(const ParametersRegistry& registry,
                                                     RefCntPtr<const IParameters> bag,
                                                     IStructuredParameterVisitor& visitor)
    : VisitStructuredParameters(registry, std::move(bag), visitor, PresModelBuilderSupport::UseVerboseNames(),
                                PresModelBuilderSupport::CompressArrays()) {}

VisitStructuredParameters::VisitStructuredParameters(const ParametersRegistry& registry,
                                                     RefCntPtr<const IParameters> bag,
                                                     IStructuredParameterVisitor& visitor, bool useVerboseNames,
                                                     bool compressArrays)
    : m_registry(&registry),
      m_bag(std::move(bag)),
      m_visitor(visitor),
      m_directVisitor(dynamic_cast<IDirectVisitor*>(&visitor)),
      m_useVerboseNames(useVerboseNames),
      m_compressArrays(compressArrays) {}

VisitStructuredParameters::~VisitStructuredParameters() = default;

void VisitStructuredParameters::Walk() {
    const BagLevel level;
    if (level.IsDeep()) {
        DeepWalk().Run(*this);
    } else {
        m_bag->Accept(*this);
    }
}

void VisitStructuredParameters::VisitParameter(int id, const RefCntPtr<IParameter>& value) {
    if (m_registry->IsUnserializable(id)) {
        return;
    }
    const ParameterInfo& info = Known(*m_registry, id);
    const TString& name = m_useVerboseNames ? info.verboseName : info.shortName;
    if (name.empty()) {
        throw ParameterNotFoundException(id);
    }
    if (VisitDirectly(info, value)) {
        return;
    }
    switch (info.kind) {
        case PTC_List:
            return VisitList(id, value);
        case PTC_Map:
            return VisitMap(id, name, value);
        case PTC_Bag:
            return VisitBag(id, name);
        case PTC_Structure:
            return VisitStructure(id, value);
        case PTC_StructureList:
            return VisitStructureList(id, name, value);
        case PTC_StructureMap:
            return VisitStructureMap(id, name, value);
        default:
            return m_visitor.Parameter(name, m_registry->GetValueString(value, id), info.kind);
    }
}

bool VisitStructuredParameters::VisitDirectly(const ParameterInfo& info, const RefCntPtr<IParameter>& value) {
    if (m_directVisitor == nullptr || info.direct.type == DirectType::None || info.direct.type == DirectType::Text ||
        info.direct.type == DirectType::Bags || info.kind == PTC_Map || (info.kind == PTC_List && m_compressArrays)) {
        return false;
    }
    return value && m_directVisitor->WriteDirectly(info, m_useVerboseNames, *value);
}

void VisitStructuredParameters::VisitList(int id, const RefCntPtr<IParameter>& value) {
    SerializeStructure stream(m_visitor, m_useVerboseNames, m_compressArrays);
    m_registry->GetListSerializer(id)->SerializeList(value, stream, id);
}

void VisitStructuredParameters::VisitMap(int id, const TString& name, const RefCntPtr<IParameter>& value) {
    IParameterSerializer& serializer = *m_registry->GetMapSerializer(id);
    m_visitor.StartMap(name, serializer.GetType());
    for (const auto& [key, text] : serializer.ToStringMap(value)) {
        m_visitor.MapItem(key, text, false);
    }
    m_visitor.EndMap(name);
}

void VisitStructuredParameters::VisitBag(int id, const TString& name) {
    m_visitor.StartComposite(name, false);
    const auto& inner = GetParameterValue<RefCntPtr<const IParameters>>(*m_bag, id);
    VisitStructuredParameters walker(*m_registry, inner, m_visitor);
    if (m_deepWalk != nullptr) {
        m_deepWalk->EnterBag(walker, name);
        return;
    }
    walker.Walk();
    m_visitor.EndComposite(name);
}

void VisitStructuredParameters::VisitStructure(int id, const RefCntPtr<IParameter>& value) {
    const RefCntPtr<IStructureSerializer> serializer(m_registry->GetStructureSerializer(id));
    if (m_deepWalk != nullptr) {
        m_deepWalk->WriteStructure(*this, id, serializer, value);
        return;
    }
    SerializeStructure stream(m_visitor, m_useVerboseNames, m_compressArrays);
    serializer->Serialize(value, stream, id, true);
}

void VisitStructuredParameters::VisitStructureList(int id, const TString& name, const RefCntPtr<IParameter>& value) {
    const RefCntPtr<IStructureSerializer> serializer(m_registry->GetStructureListSerializer(id));
    m_visitor.StartList(name, PTC_Structure);
    auto elements = serializer->SplitList(value);
    if (m_deepWalk != nullptr) {
        m_deepWalk->EnterList(*this, id, name, serializer, std::move(elements));
        return;
    }
    for (const RefCntPtr<const IParameter>& element : elements) {
        SerializeStructure stream(m_visitor, m_useVerboseNames, m_compressArrays);
        serializer->Serialize(element, stream, id, true);
    }
    m_visitor.EndList(name);
}

void VisitStructuredParameters::VisitStructureMap(int id, const TString& name, const RefCntPtr<IParameter>& value) {
    const RefCntPtr<IStructureSerializer> serializer(m_registry->GetStructureMapSerializer(id));
    m_visitor.StartMap(name, PTC_Structure);
    auto elements = serializer->SplitMap(value);
    if (m_deepWalk != nullptr) {
        m_deepWalk->EnterMap(*this, id, name, serializer, std::move(elements));
        return;
    }
    for (const auto& [key, element] : elements) {
        SerializeStructure stream(m_visitor, m_useVerboseNames, m_compressArrays);
        if (element->IsNull()) {
            stream.NullMapItem(key, false);
        } else {
            stream.StartMapItem(key);
            serializer->Serialize(element, stream, id, false);
            stream.EndMapItem(key);
        }
    }
    m_visitor.EndMap(name);
}
