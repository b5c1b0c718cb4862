// A vocabulary as the text of a declaration file: a line for each parameter.
#include <nlohmann/json.hpp>

#include "tools/vocabulary/Vocabulary.h"

namespace qvpres {

namespace {

using Json = nlohmann::ordered_json;

Json TextOf(const TString& text) { return text.ToUtf8(); }
Json TextOf(std::u16string_view text) { return TString(text).ToUtf8(); }

Json ToJsonValue(const ParameterDeclaration& parameter) {
    Json json = {{"id", parameter.id}, {"name", TextOf(parameter.name)}};
    if (!parameter.shortName.empty()) {
        json["short"] = TextOf(parameter.shortName);
    }
    if (parameter.kind != DeclaredKind::Value) {
        json["kind"] = TextOf(ToText(parameter.kind));
    }
    if (parameter.HasType()) {
        json["type"] = TextOf(parameter.type->name);
    }
    if (parameter.listForm) {
        json["form"] = "list";
    }
    if (parameter.members) {
        json["members"] = Json::array();
        for (const TString& member : *parameter.members) {
            json["members"].push_back(TextOf(member));
        }
    }
    if (parameter.unserializable) {
        json["unserializable"] = true;
    }
    if (!parameter.description.empty()) {
        json["description"] = TextOf(parameter.description);
    }
    if (!parameter.cppSerializer.empty()) {
        json["cppSerializer"] = TextOf(parameter.cppSerializer);
    }
    return json;
}

// On one line, with a blank behind every colon and comma.
std::string OnOneLine(const Json& json) {
    if (!json.is_structured()) {
        return json.dump();
    }
    std::string line;
    for (const auto& [key, value] : json.items()) {
        line += line.empty() ? "" : ", ";
        line += (json.is_object() ? Json(key).dump() + ": " : "") + OnOneLine(value);
    }
    return json.is_object() ? "{" + line + "}" : "[" + line + "]";
}

// Members of an object, a line for each.
class Lines {
public:
    explicit Lines(std::string indent) : m_indent(std::move(indent)) {}

    void Add(const char* name, const Json& value) { AddText(name, OnOneLine(value)); }

    void AddText(const char* name, const std::string& text) {
        m_text += m_text.empty() ? "" : ",\n";
        m_text += m_indent + '"' + name + "\": " + text;
    }

    const std::string& Text() const { return m_text; }

private:
    std::string m_indent;
    std::string m_text;
};

// An array, a line for each element.
std::string ArrayOfLines(const std::vector<std::string>& elements, const std::string& indent) {
    std::string text;
    for (const std::string& element : elements) {
        text += (text.empty() ? "" : ",\n") + indent + "  " + element;
    }
    return text.empty() ? "[]" : "[\n" + text + "\n" + indent + "]";
}

std::string ToObjectText(const NamespaceDeclaration& nameSpace) {
    Lines lines("      ");
    lines.Add("name", TextOf(nameSpace.name));
    lines.Add("firstId", nameSpace.firstId);
    lines.Add("lastId", nameSpace.lastId);
    if (!nameSpace.fallback.empty()) {
        lines.Add("fallback", TextOf(nameSpace.fallback));
    }
    if (!nameSpace.description.empty()) {
        lines.Add("description", TextOf(nameSpace.description));
    }
    if (!nameSpace.cppIds.empty()) {
        lines.Add("cppIds", TextOf(nameSpace.cppIds));
    }
    std::vector<std::string> parameters;
    for (const ParameterDeclaration& parameter : nameSpace.parameters) {
        parameters.push_back(OnOneLine(ToJsonValue(parameter)));
    }
    lines.AddText("parameters", ArrayOfLines(parameters, "      "));
    return "{\n" + lines.Text() + "\n    }";
}

Json ToJsonValue(const CppDeclaration& cpp) {
    Json json = Json::object();
    if (!cpp.nameSpace.empty()) {
        json["namespace"] = cpp.nameSpace;
    }
    if (!cpp.includes.empty()) {
        json["includes"] = cpp.includes;
    }
    return json;
}

}  // namespace

std::string Vocabulary::ToJson() const {
    Lines lines("  ");
    if (!m_description.empty()) {
        lines.Add("description", TextOf(m_description));
    }
    if (const Json cpp = ToJsonValue(m_cpp); !cpp.empty()) {
        lines.Add("cpp", cpp);
    }
    std::vector<std::string> namespaces;
    for (const NamespaceDeclaration& nameSpace : m_namespaces) {
        namespaces.push_back(ToObjectText(nameSpace));
    }
    lines.AddText("namespaces", ArrayOfLines(namespaces, "  "));
    if (!m_unserializable.empty()) {
        lines.Add("unserializable", m_unserializable);
    }
    return "{\n" + lines.Text() + "\n}\n";
}

}  // namespace qvpres
