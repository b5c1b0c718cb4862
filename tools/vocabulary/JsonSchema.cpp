// The schema of a namespace, member by member:
//
//   $ref         the bag below
//   $defs/bag    an object: a property for each parameter that names of the namespace lead to, under its name in JSON
//   $defs/parameter-ID   what stands under that name, by kind
//   $defs/type-NAME      what a single value of a type looks like
//
// Draft 2020-12; patterns keep to what ECMA-262 and other dialects have in common.
#include "tools/vocabulary/JsonSchema.h"

#include <limits>

#include <nlohmann/json.hpp>

#include <qvcore/CaseConversion.h>

namespace qvpres {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kNamePattern = R"(^(\[([^\]]|\]\])+\](\.\[([^\]]|\]\])+\]){0,7})?$)";
constexpr const char* kUuidPattern = "^[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}$";
constexpr const char* kTicksPattern = "^-?[0-9]+$";
constexpr const char* kTypedValuePattern =
    R"(^(i:(null|-?[0-9]+)|r:(null|[0-9]*:[0-9]*:-?[0-9]+(\.[0-9]+)?(e[+-][0-9]+)?)|s:[A-Za-z0-9_-]{0,64}:[\s\S]*|)"
    R"(b:(true|false|null)|d:(null|[0-9]{4}-[0-9]{2}-[0-9]{2})|)"
    R"(c:(null|[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}(\.[0-9]{1,9})?)|t:[\s\S]*|u:null)$)";

// Reals are written with a fraction only where they have one, hence no integers on their own.
const Json kNumberOrNull = {{"type", {"number", "null"}}};

template <class T>
Json IntegerOf() {
    return {
        {"type", "integer"}, {"minimum", std::numeric_limits<T>::min()}, {"maximum", std::numeric_limits<T>::max()}};
}

Json IntegerSchema(std::u16string_view type) {
    if (type == u"int") {
        return IntegerOf<int>();
    }
    if (type == u"unsigned-int") {
        return IntegerOf<unsigned int>();
    }
    return type == u"int64" ? IntegerOf<Int64>() : IntegerOf<UInt64>();
}

// The steps of a run: signed, of the width of the elements.
Json StepSchema(std::u16string_view type) {
    return type == u"int" || type == u"unsigned-int" ? IntegerOf<int>() : IntegerOf<Int64>();
}

Json PatternSchema(const char* pattern) { return {{"type", "string"}, {"pattern", pattern}}; }

Json ReferenceTo(const std::string& definition) { return {{"$ref", "#/$defs/" + definition}}; }

// A record of a run: the first value, the length, and the step where there can be one.
Json RunSchema(const Json& first, const Json* step) {
    Json items = {first, {{"type", "integer"}, {"minimum", 4}, {"maximum", std::numeric_limits<unsigned int>::max()}}};
    if (step != nullptr) {
        items.push_back(*step);
    }
    return {{"type", "array"}, {"prefixItems", std::move(items)}, {"items", false}, {"minItems", 2}};
}

// A list in which records of runs may stand. When any does, one empty array marks the list; none stands in a list
// without. That it comes last is beyond a schema.
Json PackedListSchema(const Json& element, const Json& run) {
    const Json marker = {{"type", "array"}, {"maxItems", 0}};
    return {{"type", "array"},
            {"items", {{"anyOf", {element, run, marker}}}},
            {"if", {{"contains", {{"type", "array"}, {"minItems", 1}}}}},
            {"then", {{"contains", marker}, {"maxContains", 1}}},
            {"else", {{"not", {{"contains", {{"type", "array"}}}}}}}};
}

class SchemaWriter {
public:
    SchemaWriter(const Vocabulary& vocabulary, const NamespaceDeclaration& nameSpace, const SchemaOptions& options)
        : m_vocabulary(vocabulary), m_nameSpace(nameSpace), m_options(options) {}

    Json Write() {
        Json bag = BagOf(m_vocabulary.GetReachable(m_nameSpace, m_options.shortNames));
        Json definitions = {{"bag", std::move(bag)}};
        definitions.update(m_parameters);
        definitions.update(m_types);
        Json schema = {{"$schema", "https://json-schema.org/draft/2020-12/schema"},
                       {"title", "Parameters of the namespace " + m_nameSpace.name.ToUtf8()}};
        if (!m_nameSpace.description.empty()) {
            schema["description"] = m_nameSpace.description.ToUtf8();
        }
        schema["$ref"] = "#/$defs/bag";
        schema["$defs"] = std::move(definitions);
        return schema;
    }

private:
    // The name of a parameter in a text; empty when it cannot be written.
    TString JsonName(const ParameterDeclaration& parameter) const {
        return m_options.shortNames ? parameter.shortName : DashedToCamel(parameter.name);
    }

    Json BagOf(const std::vector<const ParameterDeclaration*>& parameters) {
        Json properties = Json::object();
        for (const ParameterDeclaration* parameter : parameters) {
            const std::string name = JsonName(*parameter).ToUtf8();
            if (parameter->unserializable || name.empty()) {
                continue;
            }
            Json value = Parameter(*parameter);
            if (properties.contains(name)) {  // spelled alike
                value = {{"anyOf", {properties[name], std::move(value)}}};
            }
            properties[name] = std::move(value);
        }
        return {{"type", "object"}, {"properties", std::move(properties)}, {"additionalProperties", false}};
    }

    // A reference to what is defined when it is first needed.
    Json Parameter(const ParameterDeclaration& parameter) {
        const std::string definition = "parameter-" + std::to_string(parameter.id);
        if (!m_parameters.contains(definition)) {
            m_parameters[definition] = nullptr;  // a bag may hold itself
            Json schema = Json::object();
            if (!parameter.description.empty()) {
                schema["description"] = parameter.description.ToUtf8();
            }
            schema.update(ValueOf(parameter));
            m_parameters[definition] = std::move(schema);
        }
        return ReferenceTo(definition);
    }

    Json ValueOf(const ParameterDeclaration& parameter) {
        switch (parameter.kind) {
            case DeclaredKind::Value:
                return Type(*parameter.type);
            case DeclaredKind::List:
                return ListOf(*parameter.type);
            case DeclaredKind::Map:
                return {{"type", "object"}, {"additionalProperties", Type(*parameter.type)}};
            case DeclaredKind::Bag:
            case DeclaredKind::Structure:
                return RecordOf(parameter);
            case DeclaredKind::StructureList:
                return {{"type", "array"}, {"items", RecordOf(parameter)}};
            case DeclaredKind::StructureMap:
                return {{"type", "object"},
                        {"additionalProperties", {{"anyOf", {RecordOf(parameter), {{"type", "null"}}}}}}};
        }
        return {};
    }

    Json RecordOf(const ParameterDeclaration& parameter) {
        if (parameter.listForm) {
            return {{"type", "array"}, {"items", {{"type", "string"}}}};
        }
        if (!parameter.members) {
            return ReferenceTo("bag");
        }
        std::vector<const ParameterDeclaration*> members;
        for (const TString& name : *parameter.members) {
            members.push_back(m_vocabulary.Resolve(OwnerOf(parameter), name));
        }
        return BagOf(members);
    }

    // Members are sought from the namespace that declares them.
    const NamespaceDeclaration& OwnerOf(const ParameterDeclaration& parameter) const {
        for (const NamespaceDeclaration* link : m_vocabulary.GetChain(m_nameSpace)) {
            if (link->FindId(parameter.id) == &parameter) {
                return *link;
            }
        }
        return m_nameSpace;
    }

    Json ListOf(const ValueType& type) {
        if (type.form == TextForm::TypedValue) {
            return TypedValueList();
        }
        const Json element = Type(type);
        if (!m_options.packedLists || (type.form != TextForm::Integer && type.form != TextForm::Real)) {
            return {{"type", "array"}, {"items", element}};
        }
        if (type.form == TextForm::Real) {
            return PackedListSchema(element, RunSchema(element, nullptr));
        }
        const Json step = StepSchema(type.name);
        return PackedListSchema(element, RunSchema(element, &step));
    }

    // Typed values stand without their types: numbers, truth values, else texts. In packed lists numbers stand in
    // quotes outside of runs.
    Json TypedValueList() const {
        const Json texts = {{"type", "string"}};
        const Json truths = {{"type", "array"}, {"items", {{"type", {"boolean", "null"}}}}};
        if (!m_options.packedLists) {
            return {{"anyOf",
                     {{{"type", "array"}, {"items", kNumberOrNull}}, truths, {{"type", "array"}, {"items", texts}}}}};
        }
        const Json number = {{"type", "number"}};
        const Json step = StepSchema(u"int64");
        return {{"anyOf", {PackedListSchema(texts, RunSchema(number, &step)), truths}}};
    }

    Json Type(const ValueType& type) {
        const std::string definition = "type-" + TString(type.name).ToUtf8();
        if (!m_types.contains(definition)) {
            m_types[definition] = TypeSchema(type);
        }
        return ReferenceTo(definition);
    }

    Json TypeSchema(const ValueType& type) const {
        switch (type.form) {
            case TextForm::AnyText:
                return {{"type", "string"}};
            case TextForm::Integer:
                return IntegerSchema(type.name);
            case TextForm::Real:
                return kNumberOrNull;
            case TextForm::Bool:
                return {{"type", "boolean"}};
            case TextForm::Name:
                return PatternSchema(kNamePattern);
            case TextForm::UUID:
                return PatternSchema(kUuidPattern);
            case TextForm::Duration:
                return PatternSchema(kTicksPattern);
            case TextForm::Password:
                return {{"const", PasswordString::s_Mask.ToUtf8()}};
            case TextForm::Enumeration:
                return NamesSchema({type.names.begin(), type.names.end()});
            case TextForm::TypedValue:
                return PatternSchema(kTypedValuePattern);
            case TextForm::ParameterID:
                return NamesSchema(AllNames());
        }
        return {};
    }

    static Json NamesSchema(const std::vector<TString>& names) {
        Json list = Json::array();
        for (const TString& name : names) {
            if (Json text = name.ToUtf8(); std::find(list.begin(), list.end(), text) == list.end()) {
                list.push_back(std::move(text));
            }
        }
        return {{"type", "string"}, {"enum", std::move(list)}};
    }

    // An identifier as a value may be any that is registered.
    std::vector<TString> AllNames() const {
        std::vector<TString> names;
        const auto add = [&](const NamespaceDeclaration& nameSpace) {
            for (const ParameterDeclaration& parameter : nameSpace.parameters) {
                const TString& name = m_options.shortNames ? parameter.shortName : parameter.name;
                if (!name.empty()) {
                    names.push_back(name);
                }
            }
        };
        add(GetCoreNamespace());
        for (const NamespaceDeclaration& nameSpace : m_vocabulary.GetNamespaces()) {
            add(nameSpace);
        }
        return names;
    }

    const Vocabulary& m_vocabulary;
    const NamespaceDeclaration& m_nameSpace;
    const SchemaOptions& m_options;
    Json m_parameters = Json::object();
    Json m_types = Json::object();
};

}  // namespace

std::string ToJsonSchema(const Vocabulary& vocabulary, const TString& nameSpace, const SchemaOptions& options) {
    const NamespaceDeclaration* declaration = vocabulary.FindNamespace(nameSpace);
    if (declaration == nullptr) {
        throw ParameterNamespaceNotFoundException(nameSpace);
    }
    return SchemaWriter(vocabulary, *declaration, options).Write().dump(2) + "\n";
}

}  // namespace qvpres
