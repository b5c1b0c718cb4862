// From the text of a declaration file to a vocabulary. Included by Vocabulary.cpp.
//
//   file        {"$schema", "description", "cpp", "namespaces", "unserializable"}
//   namespace   {"name", "firstId", "lastId", "fallback", "description", "cppIds", "parameters"}
//   parameter   {"id", "name", "short", "kind", "type", "form", "members", "unserializable", "description",
//                "cppSerializer"}
//
// docs/vocabulary.md tells what each means, declaration.schema.json which values may stand.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/vocabulary/DeclarationText.h"
#include "tools/vocabulary/Vocabulary.h"

namespace qvpres {

class DeclarationReader {
public:
    DeclarationReader(std::string_view utf8, std::string source);

    // VocabularyException for the first thing that is wrong: what one parameter or namespace says for itself in the
    // order of the file, then what leads from one to another.
    Vocabulary Read();

private:
    void ReadCpp(const DeclaredObject& file);
    void ReadNamespaces(const DeclaredValue& list);
    void ReadNamespace(const DeclaredValue& value);
    ParameterDeclaration ReadParameter(const DeclaredValue& value, const NamespaceDeclaration& nameSpace);
    std::optional<std::vector<TString>> ReadMembers(const DeclaredObject& parameter,
                                                    const ParameterDeclaration& declaration);
    void ReadUnserializable(const DeclaredObject& file);
    void CheckFallbacks() const;
    void CheckMembers() const;

    // A name that must lead somewhere, and the position of the namespace that it stands in.
    struct Reference {
        std::size_t nameSpace;
        DeclaredValue value;
    };

    DeclarationText m_text;
    std::map<int, std::size_t> m_lines;  // of the identifiers of the namespace that is being read
    Vocabulary m_vocabulary;
    std::vector<Reference> m_fallbacks;
    std::vector<Reference> m_members;
};

}  // namespace qvpres
