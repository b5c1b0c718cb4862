#include <qvpreslayer/SerializeStructure.h>

#include <qvpreslayer/ParametersRegistry.h>

SerializeStructure::SerializeStructure(IStructuredParameterVisitor& visitor, bool useVerboseNames, bool compressArrays)
    : m_visitor(visitor),
      m_registry(ParametersRegistry::Get()),
      m_useVerboseNames(useVerboseNames),
      m_compressArrays(compressArrays) {}

void SerializeStructure::Parameter(int id, const TString& value) {
    m_visitor.Parameter(m_registry.GetName(id, m_useVerboseNames), value, m_registry.GetType(id));
}

void SerializeStructure::StartList(int id, ParameterTypeCategory category) {
    const TString& name = m_registry.GetName(id, m_useVerboseNames);
    const ParameterTypeCategory kind = m_registry.GetType(id);
    if (kind != PTC_List) {
        category = kind;
    } else if (category == PTC_None) {
        category = RefCntPtr<IParameterSerializer>(m_registry.GetListSerializer(id))->GetType();
    }
    m_visitor.StartList(name, category);
}

void SerializeStructure::ListItem(const TString& value) { m_visitor.ListItem(value); }

void SerializeStructure::EndList(int id) { m_visitor.EndList(m_registry.GetName(id, m_useVerboseNames)); }

void SerializeStructure::StartMap(int id) {
    const TString& name = m_registry.GetName(id, m_useVerboseNames);
    ParameterTypeCategory category = m_registry.GetType(id);
    if (category == PTC_Map) {
        category = RefCntPtr<IParameterSerializer>(m_registry.GetMapSerializer(id))->GetType();
    }
    m_visitor.StartMap(name, category);
}

void SerializeStructure::MapItem(const TString& key, const TString& value, bool rawKey) {
    m_visitor.MapItem(key, value, rawKey);
}

void SerializeStructure::NullMapItem(const TString& key, bool rawKey) { m_visitor.NullMapItem(key, rawKey); }

void SerializeStructure::EndMap(int id) { m_visitor.EndMap(m_registry.GetName(id, m_useVerboseNames)); }

void SerializeStructure::StartComposite(int id) {
    m_visitor.StartComposite(m_registry.GetName(id, m_useVerboseNames), false);
}

void SerializeStructure::EndComposite(int id) { m_visitor.EndComposite(m_registry.GetName(id, m_useVerboseNames)); }

void SerializeStructure::StartMapItem(const TString& key) { m_visitor.StartComposite(key, true); }

void SerializeStructure::EndMapItem(const TString& key) { m_visitor.EndComposite(key); }

RefCntPtr<IStructureSerializer> SerializeStructure::GetStructureSerializer(int id) const {
    return RefCntPtr<IStructureSerializer>(m_registry.GetStructureSerializer(id));
}
