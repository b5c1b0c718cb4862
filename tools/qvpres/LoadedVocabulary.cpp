#include "tools/qvpres/LoadedVocabulary.h"

#include <algorithm>
#include <string>
#include <vector>

#include <dlfcn.h>

#include "tools/qvpres/Failure.h"

namespace qvpres {

namespace {

constexpr const char* kRegisterFunction = "QvpresRegisterParameters";  // as in qvpres/HostModule.h

// The library stays loaded to the end of the program: its serializers live on in the registry, and their code with it.
void RegisterModule(const std::string& file, ParametersRegistry& registry) {
    // Without a slash the loader would look in its own folders rather than here.
    const std::string path = file.find('/') == std::string::npos ? "./" + file : file;
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (library == nullptr) {
        throw Failure(std::string("the module cannot be loaded: ") + dlerror());
    }
    auto* registerParameters = reinterpret_cast<void (*)(ParametersRegistry&)>(dlsym(library, kRegisterFunction));
    if (registerParameters == nullptr) {
        throw Failure(file + " exports no function " + kRegisterFunction);
    }
    try {
        registerParameters(registry);
    } catch (const std::exception& failure) {
        throw Failure(file + ": registering its parameters failed: " + failure.what());
    }
    if (!registry.HasNamespace(L"qvcore")) {
        RegisterCoreNamespaceParameters(registry, L"qvcore");
    }
}

std::string Joined(const std::vector<const NamespaceDeclaration*>& namespaces) {
    std::string names;
    for (const NamespaceDeclaration* each : namespaces) {
        names += (names.empty() ? "" : ", ") + each->name.ToUtf8();
    }
    return names;
}

// Those that no other namespace falls back to.
std::vector<const NamespaceDeclaration*> OutermostNamespaces(const Vocabulary& vocabulary) {
    std::vector<const NamespaceDeclaration*> outermost;
    const auto& all = vocabulary.GetNamespaces();
    for (const NamespaceDeclaration& each : all) {
        const bool isFallback = std::any_of(
            all.begin(), all.end(), [&](const NamespaceDeclaration& other) { return other.fallback == each.name; });
        if (!isFallback) {
            outermost.push_back(&each);
        }
    }
    return outermost;
}

}  // namespace

LoadedVocabulary::LoadedVocabulary(const CommonOptions& options)
    : m_askedNamespace(TString::FromUtf8(options.nameSpace)) {
    if (!options.vocabulary.empty()) {
        m_vocabulary = Vocabulary::FromFile(options.vocabulary);
        m_vocabulary.Register(m_registry);
    } else if (!options.module.empty()) {
        RegisterModule(options.module, m_registry);
        m_vocabulary = Vocabulary::FromRegistry(m_registry);
        m_vocabulary.SetSource(options.module);
    } else {
        throw Failure(
            "no vocabulary: name a declaration file (--vocabulary FILE) or a host's module (--module LIB.so)");
    }
}

LoadedVocabulary::LoadedVocabulary(Vocabulary vocabulary) : m_vocabulary(std::move(vocabulary)) {
    m_vocabulary.Register(m_registry);
}

TString LoadedVocabulary::GetNamespace() const {
    if (!m_askedNamespace.empty()) {
        if (!m_registry.HasNamespace(m_askedNamespace)) {
            throw Failure("the vocabulary has no namespace " + m_askedNamespace.ToUtf8());
        }
        return m_askedNamespace;
    }
    const auto outermost = OutermostNamespaces(m_vocabulary);
    if (outermost.empty()) {
        throw Failure("the vocabulary has no namespaces");
    }
    if (outermost.size() > 1) {
        throw Failure("the vocabulary has several namespaces, name one with --namespace: " + Joined(outermost));
    }
    return outermost.front()->name;
}

}  // namespace qvpres
