#include "tools/vocabulary/Vocabulary.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <set>
#include <system_error>

#include "tools/vocabulary/DeclarationReader.h"

namespace qvpres {

namespace {

constexpr const char16_t* kCoreName = u"qvcore";

ParameterDeclaration CoreParameter(CoreParameterID id, DeclaredKind kind, const char16_t* type) {
    // What the library itself registers says the names.
    static const struct CoreRegistry final : ParametersRegistry {
        CoreRegistry() { RegisterCoreNamespaceParameters(*this, kCoreName); }
        ~CoreRegistry() = default;
        RefCntPtr<IParameters> CreateParameters() override { return nullptr; }
    } s_registry;

    ParameterDeclaration parameter;
    parameter.id = static_cast<int>(id);
    parameter.name = s_registry.GetName(parameter.id, true);
    parameter.shortName = s_registry.GetName(parameter.id, false);
    parameter.kind = kind;
    parameter.type = FindValueType(type);
    return parameter;
}

NamespaceDeclaration MakeCoreNamespace() {
    NamespaceDeclaration core;
    core.name = kCoreName;
    core.firstId = kCoreNamespaceFirstID;
    core.lastId = kCoreNamespaceLastID;
    core.parameters = {CoreParameter(CoreParameterID::IntRLE, DeclaredKind::List, u"int"),
                       CoreParameter(CoreParameterID::UIntRLE, DeclaredKind::List, u"unsigned-int"),
                       CoreParameter(CoreParameterID::FloatRLE, DeclaredKind::List, u"float"),
                       CoreParameter(CoreParameterID::ParamType, DeclaredKind::Value, u"parameter-id")};
    return core;
}

std::string ReadWhole(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string text;
    if (stream && !std::filesystem::is_directory(file)) {
        text.assign(std::istreambuf_iterator<char>(stream), {});
    } else {
        stream.setstate(std::ios::failbit);
    }
    if (stream.fail() && !stream.eof()) {
        throw VocabularyException(file.string(), {}, u"cannot be read");
    }
    return text;
}

}  // namespace

std::u16string_view ToText(DeclaredKind kind) {
    constexpr std::u16string_view kTexts[] = {u"value",     u"list",           u"map",          u"bag",
                                              u"structure", u"structure-list", u"structure-map"};
    return kTexts[static_cast<std::size_t>(kind)];
}

ParameterTypeCategory ParameterDeclaration::Category() const {
    switch (kind) {
        case DeclaredKind::Value:
            return type->category;
        case DeclaredKind::List:
            return PTC_List;
        case DeclaredKind::Map:
            return PTC_Map;
        case DeclaredKind::Bag:
            return PTC_Bag;
        case DeclaredKind::Structure:
            return PTC_Structure;
        case DeclaredKind::StructureList:
            return PTC_StructureList;
        case DeclaredKind::StructureMap:
            return PTC_StructureMap;
    }
    return PTC_None;
}

const ParameterDeclaration* NamespaceDeclaration::FindId(int id) const {
    const auto found = std::find_if(parameters.begin(), parameters.end(),
                                    [id](const ParameterDeclaration& parameter) { return parameter.id == id; });
    return found == parameters.end() ? nullptr : &*found;
}

const ParameterDeclaration* NamespaceDeclaration::FindName(const TString& parameterName) const {
    const auto found = std::find_if(parameters.rbegin(), parameters.rend(), [&](const ParameterDeclaration& parameter) {
        return parameter.name == parameterName;
    });
    return found == parameters.rend() ? nullptr : &*found;
}

const NamespaceDeclaration& GetCoreNamespace() {
    static const NamespaceDeclaration s_core = MakeCoreNamespace();
    return s_core;
}

Vocabulary Vocabulary::FromFile(const std::filesystem::path& file) { return FromText(ReadWhole(file), file.string()); }

Vocabulary Vocabulary::FromText(std::string_view utf8, std::string_view source) {
    return DeclarationReader(utf8, std::string(source)).Read();
}

const NamespaceDeclaration* Vocabulary::FindNamespace(const TString& name) const {
    const auto found = std::find_if(m_namespaces.begin(), m_namespaces.end(),
                                    [&](const NamespaceDeclaration& candidate) { return candidate.name == name; });
    if (found != m_namespaces.end()) {
        return &*found;
    }
    return name == kCoreName ? &GetCoreNamespace() : nullptr;
}

std::vector<const NamespaceDeclaration*> Vocabulary::GetChain(const NamespaceDeclaration& nameSpace) const {
    std::vector<const NamespaceDeclaration*> chain;
    for (const NamespaceDeclaration* link = &nameSpace;
         link != nullptr && std::find(chain.begin(), chain.end(), link) == chain.end();
         link = link->fallback.empty() ? nullptr : FindNamespace(link->fallback)) {
        chain.push_back(link);
    }
    return chain;
}

std::vector<const ParameterDeclaration*> Vocabulary::GetReachable(const NamespaceDeclaration& nameSpace,
                                                                  bool shortNames) const {
    std::vector<const ParameterDeclaration*> reachable;
    std::set<TString> names;
    for (const NamespaceDeclaration* link : GetChain(nameSpace)) {
        std::vector<const ParameterDeclaration*> own;
        // Of two in one namespace the later has the name.
        for (auto parameter = link->parameters.rbegin(); parameter != link->parameters.rend(); ++parameter) {
            const TString& name = shortNames ? parameter->shortName : parameter->name;
            if (!name.empty() && names.insert(name).second) {
                own.push_back(&*parameter);
            }
        }
        reachable.insert(reachable.end(), own.rbegin(), own.rend());
    }
    return reachable;
}

const ParameterDeclaration* Vocabulary::Resolve(const NamespaceDeclaration& nameSpace, const TString& name) const {
    for (const NamespaceDeclaration* link : GetChain(nameSpace)) {
        if (const ParameterDeclaration* parameter = link->FindName(name)) {
            return parameter;
        }
    }
    return nullptr;
}

const NamespaceDeclaration* Vocabulary::FindCovering(int id) const {
    const NamespaceDeclaration* covering = nullptr;
    const auto consider = [&](const NamespaceDeclaration& candidate) {
        if (candidate.firstId <= id && id <= candidate.lastId &&
            (covering == nullptr || candidate.name < covering->name)) {
            covering = &candidate;
        }
    };
    consider(GetCoreNamespace());
    std::for_each(m_namespaces.begin(), m_namespaces.end(), consider);
    return covering;
}

const ParameterDeclaration* Vocabulary::FindId(int id) const {
    const NamespaceDeclaration* covering = FindCovering(id);
    return covering == nullptr ? nullptr : covering->FindId(id);
}

bool Vocabulary::IsApproximate(int id) const {
    return std::find(m_approximate.begin(), m_approximate.end(), id) != m_approximate.end();
}

}  // namespace qvpres
