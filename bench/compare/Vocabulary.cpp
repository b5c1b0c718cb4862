#include "Vocabulary.h"

#include <utility>

namespace compare {

namespace {

void AddFields(AbstractParamAdder& adder, const std::vector<Field>& fields) {
    for (const Field& field : fields) {
        field.add(adder, field);
        AddFields(adder, field.members);
    }
}

}  // namespace

Field MakeTextMap(int id, const wchar_t* name, const wchar_t* shortName) {
    const auto add = [](AbstractParamAdder& adder, const Field& field) {
        adder.AddMap(field.id, field.name.c_str(), field.shortName.c_str(), new TStringSerializer);
    };
    return {id, name, shortName, FieldKind::TextMap, add, {}};
}

Field MakeBag(int id, const wchar_t* name, const wchar_t* shortName) {
    const auto add = [](AbstractParamAdder& adder, const Field& field) {
        adder.AddBag(field.id, field.name.c_str(), field.shortName.c_str());
    };
    return {id, name, shortName, FieldKind::Bag, add, {}};
}

Field MakeRecordList(int id, const wchar_t* name, const wchar_t* shortName, std::vector<Field> members) {
    const auto add = [](AbstractParamAdder& adder, const Field& field) {
        adder.AddStructureList(field.id, field.name.c_str(), field.shortName.c_str(), new BagStructureSerializer);
    };
    return {id, name, shortName, FieldKind::RecordList, add, std::move(members)};
}

Field MakeRecordMap(int id, const wchar_t* name, const wchar_t* shortName, std::vector<Field> members) {
    const auto add = [](AbstractParamAdder& adder, const Field& field) {
        adder.AddStructureMap(field.id, field.name.c_str(), field.shortName.c_str(), new BagStructureSerializer);
    };
    return {id, name, shortName, FieldKind::RecordMap, add, std::move(members)};
}

void RegisterFields(ParametersRegistry& registry, const TString& namespaceName, int firstId, int lastId,
                    const std::vector<Field>& fields) {
    const auto fill = [fields](AbstractParamAdder& adder) { AddFields(adder, fields); };
    registry.RegisterNamespace(namespaceName, fill, firstId, lastId, true);
    registry.SetFallback(namespaceName, L"qvcore");
}

std::vector<FieldShape> GetShapes(const ParametersRegistry& registry, const std::vector<Field>& fields,
                                  bool shortNames) {
    std::vector<FieldShape> shapes;
    for (const Field& field : fields) {
        const ParameterInfo& info = *registry.FindInfo(field.id);
        const TString& name = shortNames ? info.shortName : info.camelName;
        shapes.push_back({name.ToUtf8(), field.kind, GetShapes(registry, field.members, shortNames)});
    }
    return shapes;
}

}  // namespace compare
