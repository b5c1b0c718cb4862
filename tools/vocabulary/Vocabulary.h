// A vocabulary: namespaces and their parameters as a value that can be read, written, looked through and registered.
//
// A registry holds serializers and answers lookups; a vocabulary holds what was declared. It comes from a declaration
// file (docs/vocabulary.md has the format) or from a registry that a host has filled, and it can fill a registry in
// turn.
//
// The library's own namespace "qvcore" is always there and never part of a vocabulary, but may be a fallback in it.
//
// Threads: a value class; const operations may run at once on several threads.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

#include "tools/vocabulary/ValueTypes.h"
#include "tools/vocabulary/VocabularyException.h"

namespace qvpres {

// What a parameter is. Single values are one kind here; which of PTC_Text, PTC_Number and PTC_Bool follows from the
// type.
enum class DeclaredKind { Value, List, Map, Bag, Structure, StructureList, StructureMap };

// "value", "list", "map", "bag", "structure", "structure-list", "structure-map".
std::u16string_view ToText(DeclaredKind kind);

// One parameter.
struct ParameterDeclaration {
    int id = 0;         // never 0
    TString name;       // the verbose name, never empty
    TString shortName;  // empty when there is none
    DeclaredKind kind = DeclaredKind::Value;
    const ValueType* type = nullptr;  // of the value, or of the elements; null for bags and structures
    bool listForm = false;            // structures and their lists: written as a list of texts

    // The names of the parameters that a bag or structure holds; nothing stands for any of the namespace. Names lead to
    // parameters as in reading: in the namespace, else in its fallback, and so on.
    std::optional<std::vector<TString>> members;

    bool unserializable = false;  // never written
    TString description;          // for people; may be empty
    TString cppSerializer;        // the class of the host's own serializer, for generated C++; empty for the library's

    TextLocation location;  // in the declaration file; not known when there was none

    // The kind that the registry knows.
    ParameterTypeCategory Category() const;
    bool HasType() const {
        return kind == DeclaredKind::Value || kind == DeclaredKind::List || kind == DeclaredKind::Map;
    }
    bool IsBagLike() const { return !HasType(); }
};

// One namespace.
struct NamespaceDeclaration {
    TString name;  // never empty
    int firstId = 0;
    int lastId = 0;    // not below firstId
    TString fallback;  // empty when there is none
    TString description;
    TString cppIds;  // the name of the enumeration of identifiers in generated C++; empty for one made from the name
    std::vector<ParameterDeclaration> parameters;  // in the order of the file; identifiers differ
    TextLocation location;

    const ParameterDeclaration* FindId(int id) const;

    // The parameter of a verbose name; the later of two, as in the registry.
    const ParameterDeclaration* FindName(const TString& parameterName) const;
};

// The library's own namespace, "qvcore".
const NamespaceDeclaration& GetCoreNamespace();

// What generated C++ needs beside the namespaces.
struct CppDeclaration {
    std::string nameSpace;              // "weather", "acme::charts"; empty for the global one
    std::vector<std::string> includes;  // headers that declare the host's own serializers, as they are included
};

class Vocabulary {
public:
    // Reads a declaration file, or its text in UTF-8. VocabularyException with source, line, column and path for the
    // first thing that is wrong, or when the file cannot be read.
    static Vocabulary FromFile(const std::filesystem::path& file);
    static Vocabulary FromText(std::string_view utf8, std::string_view source);

    // What a registry holds, but for "qvcore". Fills every namespace. Serializers that are not the library's own become
    // the type that their values look like in JSON: "text", "double" or "bool"; structures with a serializer of a
    // host's own, or without one, become plain ones. IsApproximate answers true for all these.
    static Vocabulary FromRegistry(const ParametersRegistry& registry);

    const std::vector<NamespaceDeclaration>& GetNamespaces() const { return m_namespaces; }

    // The namespace of that name, or null. "qvcore" is the library's own, which is found here although it is not part
    // of the vocabulary.
    const NamespaceDeclaration* FindNamespace(const TString& name) const;

    // The namespace and those in which its unknown names are sought, in that order.
    std::vector<const NamespaceDeclaration*> GetChain(const NamespaceDeclaration& nameSpace) const;

    // Identifiers outside of all declared parameters that are never written.
    const std::vector<int>& GetUnserializable() const { return m_unserializable; }
    const CppDeclaration& GetCpp() const { return m_cpp; }
    const TString& GetDescription() const { return m_description; }

    // Where the vocabulary comes from, for messages: the name of the file, or of whatever was given.
    const std::string& GetSource() const { return m_source; }

    // The parameters that names in a text of the namespace lead to, verbose or short ones: its own, then those of its
    // fallbacks under names that no nearer namespace has. Parameters without a short name are left out of those.
    std::vector<const ParameterDeclaration*> GetReachable(const NamespaceDeclaration& nameSpace,
                                                          bool shortNames = false) const;

    // The parameter that a verbose name leads to from the namespace, or null.
    const ParameterDeclaration* Resolve(const NamespaceDeclaration& nameSpace, const TString& name) const;

    // The namespace that covers an identifier: where ranges overlap, the one whose name sorts first. Null when there is
    // none; "qvcore" counts.
    const NamespaceDeclaration* FindCovering(int id) const;

    // The parameter of an identifier, as the registry finds it: in the namespace that covers it. Null when there is
    // none.
    const ParameterDeclaration* FindId(int id) const;

    // Whether FromRegistry had to guess the parameter's type.
    bool IsApproximate(int id) const;

    // Registers everything: "qvcore" when the registry has none, namespaces, fallbacks, unserializable identifiers.
    // Structures and their lists and maps get a BagStructureSerializer. Throws what registering throws; a registry that
    // already holds one of the namespaces is left with what came before it.
    void Register(ParametersRegistry& registry) const;

    // The declaration file: reading it gives the same vocabulary. UTF-8, a line for each parameter.
    std::string ToJson() const;

    // For those who make vocabularies.
    void AddNamespace(NamespaceDeclaration nameSpace) { m_namespaces.push_back(std::move(nameSpace)); }
    void SetSource(std::string source) { m_source = std::move(source); }

private:
    friend class DeclarationReader;

    std::string m_source;
    std::vector<NamespaceDeclaration> m_namespaces;  // in the order of the file
    std::vector<int> m_unserializable;
    std::vector<int> m_approximate;
    CppDeclaration m_cpp;
    TString m_description;
};

}  // namespace qvpres
