// A vocabulary and a registry: each filled from the other.
#include <algorithm>

#include "tools/vocabulary/Vocabulary.h"

namespace qvpres {

namespace {

RefCntPtr<IStructureSerializer> MakeStructureSerializer(const ParameterDeclaration& parameter) {
    return MakeRefCnt<BagStructureSerializer>(parameter.listForm ? BagStructureSerializer::List
                                                                 : BagStructureSerializer::Record);
}

void AddParameter(AbstractParamAdder& adder, const ParameterDeclaration& parameter) {
    if (parameter.HasType()) {
        adder.AddValueEntry(parameter.id, parameter.name, parameter.shortName, parameter.type->makeSerializer(),
                            parameter.Category());
    } else if (parameter.kind == DeclaredKind::Bag) {
        adder.AddValueEntry(parameter.id, parameter.name, parameter.shortName, {}, PTC_None);
    } else {
        adder.AddStructureEntry(parameter.id, parameter.name, parameter.shortName, MakeStructureSerializer(parameter),
                                parameter.Category());
    }
}

DeclaredKind KindOf(ParameterTypeCategory category) {
    switch (category) {
        case PTC_List:
            return DeclaredKind::List;
        case PTC_Map:
            return DeclaredKind::Map;
        case PTC_Bag:
            return DeclaredKind::Bag;
        case PTC_Structure:
            return DeclaredKind::Structure;
        case PTC_StructureList:
            return DeclaredKind::StructureList;
        case PTC_StructureMap:
            return DeclaredKind::StructureMap;
        default:
            return DeclaredKind::Value;
    }
}

// The type that values of a host's own look like in JSON.
const ValueType* LookAlike(ParameterTypeCategory category) {
    return FindValueType(category == PTC_Number ? u"double" : category == PTC_Bool ? u"bool" : u"text");
}

struct Described {
    ParameterDeclaration declaration;
    bool approximate = false;
};

void DescribeValue(const ParameterInfo& info, Described& described) {
    const ValueType* type = info.serializer ? FindValueTypeOf(*info.serializer) : nullptr;
    described.approximate = type == nullptr;
    described.declaration.type =
        type != nullptr ? type : LookAlike(info.serializer ? info.serializer->GetType() : PTC_Text);
}

void DescribeStructure(const ParameterInfo& info, Described& described) {
    described.approximate =
        !info.structureSerializer || typeid(*info.structureSerializer) != typeid(BagStructureSerializer);
    described.declaration.listForm = described.declaration.kind != DeclaredKind::StructureMap &&
                                     info.structureSerializer && info.structureSerializer->IsListForm();
}

Described Describe(const ParameterInfo& info, const ParametersRegistry& registry) {
    Described described;
    ParameterDeclaration& declaration = described.declaration;
    declaration.id = info.id;
    declaration.name = info.verboseName;
    declaration.shortName = info.shortName;
    declaration.kind = KindOf(info.kind);
    declaration.unserializable = registry.IsUnserializable(info.id);
    if (declaration.HasType()) {
        DescribeValue(info, described);
    } else if (declaration.kind != DeclaredKind::Bag) {
        DescribeStructure(info, described);
    }
    return described;
}

}  // namespace

void Vocabulary::Register(ParametersRegistry& registry) const {
    const TString& core = GetCoreNamespace().name;
    if (!registry.HasNamespace(core)) {
        RegisterCoreNamespaceParameters(registry, core);
    }
    for (const NamespaceDeclaration& nameSpace : m_namespaces) {
        const auto fill = [parameters = nameSpace.parameters](AbstractParamAdder& adder) {
            for (const ParameterDeclaration& parameter : parameters) {
                AddParameter(adder, parameter);
            }
        };
        registry.RegisterNamespace(nameSpace.name, fill, nameSpace.firstId, nameSpace.lastId, false);
    }
    for (const NamespaceDeclaration& nameSpace : m_namespaces) {
        if (!nameSpace.fallback.empty()) {
            registry.SetFallback(nameSpace.name, nameSpace.fallback);
        }
        for (const ParameterDeclaration& parameter : nameSpace.parameters) {
            if (parameter.unserializable) {
                registry.AddUnserializable(parameter.id);
            }
        }
    }
    for (const int id : m_unserializable) {
        registry.AddUnserializable(id);
    }
}

Vocabulary Vocabulary::FromRegistry(const ParametersRegistry& registry) {
    Vocabulary vocabulary;
    std::vector<int> marked = registry.GetUnserializable();
    for (const ParameterNamespaceInfo& info : registry.DescribeNamespaces()) {
        if (info.name == GetCoreNamespace().name) {
            continue;
        }
        NamespaceDeclaration nameSpace;
        nameSpace.name = info.name;
        nameSpace.firstId = info.firstId;
        nameSpace.lastId = info.lastId;
        nameSpace.fallback = info.fallback;
        for (const ParameterInfo* parameter : info.parameters) {
            Described described = Describe(*parameter, registry);
            if (described.approximate) {
                vocabulary.m_approximate.push_back(parameter->id);
            }
            std::erase(marked, parameter->id);
            nameSpace.parameters.push_back(std::move(described.declaration));
        }
        vocabulary.AddNamespace(std::move(nameSpace));
    }
    vocabulary.m_unserializable = std::move(marked);
    return vocabulary;
}

}  // namespace qvpres
