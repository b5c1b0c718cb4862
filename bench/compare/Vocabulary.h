// The members of a workload's bags: declared once, registered with the library, and told to peers with a schema.
#pragma once

#include <functional>
#include <string>
#include <type_traits>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

#include "Contestant.h"

namespace compare {

struct Field {
    int id = 0;
    std::wstring name;
    std::wstring shortName;
    FieldKind kind = FieldKind::Text;
    std::function<void(AbstractParamAdder& adder, const Field& field)> add;
    std::vector<Field> members;  // of a record
};

template <class T>
using SerializerOf = std::conditional_t<std::is_same_v<T, TString>, TStringSerializer, ParameterTypeSerializer<T>>;

// What the JSON text shows of a T.
template <class T>
constexpr FieldKind GetValueKind() {
    if constexpr (std::is_same_v<T, int>) {
        return FieldKind::Int;
    } else if constexpr (std::is_same_v<T, double>) {
        return FieldKind::Double;
    } else if constexpr (std::is_same_v<T, bool>) {
        return FieldKind::Bool;
    } else {
        return FieldKind::Text;
    }
}

template <class T>
constexpr FieldKind GetListKind() {
    constexpr FieldKind kind = GetValueKind<T>();
    static_assert(kind != FieldKind::Bool, "no workload has lists of these");
    return kind == FieldKind::Int      ? FieldKind::IntList
           : kind == FieldKind::Double ? FieldKind::DoubleList
                                       : FieldKind::TextList;
}

template <class T>
Field MakeValue(int id, const wchar_t* name, const wchar_t* shortName) {
    const auto add = [](AbstractParamAdder& adder, const Field& field) {
        adder.AddSimple(field.id, field.name.c_str(), field.shortName.c_str(), new SerializerOf<T>);
    };
    return {id, name, shortName, GetValueKind<T>(), add, {}};
}

template <class T>
Field MakeList(int id, const wchar_t* name, const wchar_t* shortName) {
    const auto add = [](AbstractParamAdder& adder, const Field& field) {
        adder.AddList(field.id, field.name.c_str(), field.shortName.c_str(), new SerializerOf<T>);
    };
    return {id, name, shortName, GetListKind<T>(), add, {}};
}

Field MakeTextMap(int id, const wchar_t* name, const wchar_t* shortName);

// A bag of the same members as the one that it stands in.
Field MakeBag(int id, const wchar_t* name, const wchar_t* shortName);

Field MakeRecordList(int id, const wchar_t* name, const wchar_t* shortName, std::vector<Field> members);
Field MakeRecordMap(int id, const wchar_t* name, const wchar_t* shortName, std::vector<Field> members);

// Registers the fields, and the members of records beside them, as a namespace that falls back to the core's.
void RegisterFields(ParametersRegistry& registry, const TString& namespaceName, int firstId, int lastId,
                    const std::vector<Field>& fields);

// The fields with the names that JSON texts show: the camel-case forms, or the short names as they are. They must be
// registered.
std::vector<FieldShape> GetShapes(const ParametersRegistry& registry, const std::vector<Field>& fields,
                                  bool shortNames);

}  // namespace compare
