#include "tools/vocabulary/DeclarationReader.h"

#include <algorithm>
#include <regex>

#include "tools/vocabulary/NearestNames.h"

namespace qvpres {

namespace {

constexpr DeclaredKind kKinds[] = {DeclaredKind::Value,       DeclaredKind::List,      DeclaredKind::Map,
                                   DeclaredKind::Bag,         DeclaredKind::Structure, DeclaredKind::StructureList,
                                   DeclaredKind::StructureMap};

const std::vector<TString>& KindNames() {
    static const std::vector<TString> s_names = [] {
        std::vector<TString> names;
        for (const DeclaredKind kind : kKinds) {
            names.emplace_back(ToText(kind));
        }
        return names;
    }();
    return s_names;
}

const std::vector<TString>& TypeNames() {
    static const std::vector<TString> s_names = [] {
        std::vector<TString> names;
        for (const ValueType& type : GetValueTypes()) {
            names.emplace_back(type.name);
        }
        return names;
    }();
    return s_names;
}

DeclaredKind ReadKind(const DeclaredObject& parameter) {
    const DeclaredValue* value = parameter.Find(u"kind");
    if (value == nullptr) {
        return DeclaredKind::Value;
    }
    const TString name = value->OneOf(KindNames(), u"kind");
    return *std::find_if(std::begin(kKinds), std::end(kKinds), [&](DeclaredKind kind) { return name == ToText(kind); });
}

const ValueType* ReadType(const DeclaredObject& parameter, const ParameterDeclaration& declaration) {
    if (!declaration.HasType()) {
        if (const DeclaredValue* type = parameter.Find(u"type")) {
            type->Fail(u"a parameter of the kind " + Quoted(ToText(declaration.kind)) + u" has no type");
        }
        return nullptr;
    }
    return FindValueType(parameter.Get(u"type").OneOf(TypeNames(), u"type"));
}

bool ReadListForm(const DeclaredObject& parameter, const ParameterDeclaration& declaration) {
    const DeclaredValue* form = parameter.Find(u"form");
    if (form == nullptr) {
        return false;
    }
    if (declaration.HasType() || declaration.kind == DeclaredKind::Bag) {
        form->Fail(u"only structures have a form");
    }
    const bool listForm = form->OneOf({u"record", u"list"}, u"form") == u"list";
    if (listForm && declaration.kind == DeclaredKind::StructureMap) {
        form->Fail(u"the structures of a map have no list form: their names are written already");
    }
    return listForm;
}

// What goes into C++ as it stands must be what it is taken for, and no more.
std::string ReadCppText(const DeclaredValue& value, const char* pattern, const char16_t* what) {
    constexpr std::size_t kLongest = 500;  // matching takes stack with the length
    const std::string text = value.Text().ToUtf8();
    if (text.size() > kLongest || !std::regex_match(text, std::regex(pattern))) {
        value.Fail(u"must be " + TString(what));
    }
    return text;
}

constexpr const char* kIdentifierPattern = "[A-Za-z_][A-Za-z_0-9]*";
constexpr const char* kScopedPattern = "[A-Za-z_][A-Za-z_0-9]*(::[A-Za-z_][A-Za-z_0-9]*)*";
constexpr const char* kClassPattern = "(::)?[A-Za-z_][A-Za-z_0-9:]*(<[A-Za-z_0-9:<>, ]*>)?";
constexpr const char* kIncludePattern = "[^\"<>\\\\\\x00-\\x1f]+";

TString IdText(int id) { return TString::number(id); }

}  // namespace

DeclarationReader::DeclarationReader(std::string_view utf8, std::string source) : m_text(utf8, std::move(source)) {}

Vocabulary DeclarationReader::Read() {
    const DeclaredObject file(m_text.Root(), {u"$schema", u"description", u"cpp", u"namespaces", u"unserializable"});
    m_vocabulary.m_source = m_text.Source();
    file.TextOr(u"$schema");
    m_vocabulary.m_description = file.TextOr(u"description");
    ReadCpp(file);
    ReadNamespaces(file.Get(u"namespaces"));
    ReadUnserializable(file);
    CheckFallbacks();
    CheckMembers();
    return std::move(m_vocabulary);
}

void DeclarationReader::ReadCpp(const DeclaredObject& file) {
    const DeclaredValue* value = file.Find(u"cpp");
    if (value == nullptr) {
        return;
    }
    const DeclaredObject cpp(*value, {u"namespace", u"includes"});
    if (const DeclaredValue* nameSpace = cpp.Find(u"namespace")) {
        m_vocabulary.m_cpp.nameSpace = ReadCppText(*nameSpace, kScopedPattern, u"a namespace such as acme::charts");
    }
    if (const DeclaredValue* includes = cpp.Find(u"includes")) {
        for (const DeclaredValue& include : includes->Elements()) {
            m_vocabulary.m_cpp.includes.push_back(ReadCppText(include, kIncludePattern, u"the name of a header"));
        }
    }
}

void DeclarationReader::ReadNamespaces(const DeclaredValue& list) {
    for (const DeclaredValue& value : list.Elements()) {
        ReadNamespace(value);
    }
}

void DeclarationReader::ReadNamespace(const DeclaredValue& value) {
    const DeclaredObject object(
        value, {u"name", u"firstId", u"lastId", u"fallback", u"description", u"cppIds", u"parameters"});
    NamespaceDeclaration nameSpace;
    nameSpace.location = value.Location();
    nameSpace.name = object.Get(u"name").Name();
    if (nameSpace.name == GetCoreNamespace().name) {
        object.Get(u"name").Fail(u"\"qvcore\" is the library's own and always there");
    }
    if (m_vocabulary.FindNamespace(nameSpace.name) != nullptr) {
        object.Get(u"name").Fail(u"there is a namespace " + Quoted(nameSpace.name) + u" already");
    }
    nameSpace.firstId = object.Get(u"firstId").Id();
    nameSpace.lastId = object.Get(u"lastId").Id();
    if (nameSpace.lastId < nameSpace.firstId) {
        object.Get(u"lastId").Fail(u"must not be below firstId, " + IdText(nameSpace.firstId));
    }
    if (const DeclaredValue* fallback = object.Find(u"fallback")) {
        nameSpace.fallback = fallback->Name();
        m_fallbacks.push_back({m_vocabulary.m_namespaces.size(), *fallback});
    }
    nameSpace.description = object.TextOr(u"description");
    if (const DeclaredValue* ids = object.Find(u"cppIds")) {
        nameSpace.cppIds = TString::FromUtf8(ReadCppText(*ids, kIdentifierPattern, u"a name of C++"));
    }
    m_lines.clear();
    for (const DeclaredValue& parameter : object.Get(u"parameters").Elements()) {
        nameSpace.parameters.push_back(ReadParameter(parameter, nameSpace));
    }
    m_vocabulary.AddNamespace(std::move(nameSpace));
}

ParameterDeclaration DeclarationReader::ReadParameter(const DeclaredValue& value,
                                                      const NamespaceDeclaration& nameSpace) {
    const DeclaredObject object(value, {u"id", u"name", u"short", u"kind", u"type", u"form", u"members",
                                        u"unserializable", u"description", u"cppSerializer"});
    ParameterDeclaration parameter;
    parameter.location = value.Location();
    parameter.id = object.Get(u"id").Id();
    if (parameter.id == 0) {
        object.Get(u"id").Fail(u"identifier 0 is never found");
    }
    if (parameter.id < nameSpace.firstId || parameter.id > nameSpace.lastId) {
        object.Get(u"id").Fail(u"identifier " + IdText(parameter.id) + u" is outside of the namespace's range, " +
                               IdText(nameSpace.firstId) + u" to " + IdText(nameSpace.lastId));
    }
    const auto [earlier, isNew] = m_lines.emplace(parameter.id, parameter.location.line);
    if (!isNew) {
        object.Get(u"id").Fail(u"identifier " + IdText(parameter.id) + u" is declared already, in line " +
                               TString::number(UInt64{earlier->second}));
    }
    parameter.name = object.Get(u"name").Name();
    if (const DeclaredValue* shortName = object.Find(u"short")) {
        parameter.shortName = shortName->Name();
    }
    parameter.kind = ReadKind(object);
    parameter.type = ReadType(object, parameter);
    parameter.listForm = ReadListForm(object, parameter);
    parameter.members = ReadMembers(object, parameter);
    if (const DeclaredValue* unserializable = object.Find(u"unserializable")) {
        parameter.unserializable = unserializable->Bool();
    }
    parameter.description = object.TextOr(u"description");
    if (const DeclaredValue* serializer = object.Find(u"cppSerializer")) {
        if (parameter.kind == DeclaredKind::Bag) {
            serializer->Fail(u"bags have no serializer");
        }
        parameter.cppSerializer = TString::FromUtf8(ReadCppText(*serializer, kClassPattern, u"a class of C++"));
    }
    return parameter;
}

std::optional<std::vector<TString>> DeclarationReader::ReadMembers(const DeclaredObject& parameter,
                                                                   const ParameterDeclaration& declaration) {
    const DeclaredValue* value = parameter.Find(u"members");
    if (value == nullptr) {
        return std::nullopt;
    }
    if (declaration.HasType() || declaration.listForm) {
        value->Fail(u"only bags and structures in the form \"record\" have members");
    }
    std::vector<TString> members;
    for (const DeclaredValue& element : value->Elements()) {
        const TString name = element.Name();
        if (std::find(members.begin(), members.end(), name) != members.end()) {
            element.Fail(Quoted(name) + u" is a member already");
        }
        members.push_back(name);
        m_members.push_back({m_vocabulary.m_namespaces.size(), element});
    }
    return members;
}

void DeclarationReader::ReadUnserializable(const DeclaredObject& file) {
    const DeclaredValue* value = file.Find(u"unserializable");
    if (value == nullptr) {
        return;
    }
    for (const DeclaredValue& element : value->Elements()) {
        const int id = element.Id();
        for (const NamespaceDeclaration& nameSpace : m_vocabulary.m_namespaces) {
            if (const ParameterDeclaration* parameter = nameSpace.FindId(id)) {
                element.Fail(u"identifier " + IdText(id) + u" is the parameter " + Quoted(parameter->name) +
                             u": say \"unserializable\": true there");
            }
        }
        m_vocabulary.m_unserializable.push_back(id);
    }
}

void DeclarationReader::CheckFallbacks() const {
    for (const Reference& reference : m_fallbacks) {
        const NamespaceDeclaration& nameSpace = m_vocabulary.m_namespaces[reference.nameSpace];
        if (m_vocabulary.FindNamespace(nameSpace.fallback) == nullptr) {
            std::vector<TString> known = {GetCoreNamespace().name};
            for (const NamespaceDeclaration& other : m_vocabulary.m_namespaces) {
                known.push_back(other.name);
            }
            reference.value.Fail(u"there is no namespace " + Quoted(nameSpace.fallback) +
                                 NearestNamesHint(nameSpace.fallback, known));
        }
        for (const NamespaceDeclaration* link : m_vocabulary.GetChain(nameSpace)) {
            if (link->fallback == nameSpace.name) {
                reference.value.Fail(u"this fallback leads back to " + Quoted(nameSpace.name));
            }
        }
    }
}

void DeclarationReader::CheckMembers() const {
    for (const Reference& reference : m_members) {
        const NamespaceDeclaration& nameSpace = m_vocabulary.m_namespaces[reference.nameSpace];
        const TString name = reference.value.Name();
        if (m_vocabulary.Resolve(nameSpace, name) != nullptr) {
            continue;
        }
        std::vector<TString> known;
        for (const ParameterDeclaration* reachable : m_vocabulary.GetReachable(nameSpace)) {
            known.push_back(reachable->name);
        }
        reference.value.Fail(u"there is no parameter " + Quoted(name) + NearestNamesHint(name, known));
    }
}

}  // namespace qvpres
