// A JSON text cut into the values that the vocabulary knows, each with its place: what show, diff, stats, report and
// check walk. Nothing is read into a bag, so that texts with mistakes can be looked at too.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <qvcore/TString.h>

#include <qvpreslayer/ParametersRegistry.h>

#include "main/json/JSONDocument.h"

#include "tools/qvpres/LoadedVocabulary.h"

namespace qvpres {

enum class NameForm { Verbose, Short };

enum class Role {
    Root,
    Parameter,  // a member that leads to a parameter
    Unknown,    // a member that leads to none; nothing inside it is looked at
    Element,    // of a structure list
    Entry,      // of a map or a structure map
};

// Lists are leaves; what is inside bags, structures, structure lists and maps are nodes of their own.
struct TextNode {
    Role role = Role::Root;
    bool overridden = false;            // a later member of the object has the same name, so that this one is not read
    JSONDocument::Index value = 0;      // in the document
    JSONDocument::Index nameToken = 0;  // of members and entries; else 0
    std::u16string_view name;           // of members and entries, as it stands in the text
    std::uint32_t position = 0;         // among the nodes of its parent
    std::uint32_t parent = 0;
    std::uint32_t end = 0;                // the node behind the last one inside
    std::size_t begin = 0;                // in the text: of the name, else of the value
    std::size_t behind = 0;               // one past the last unit of the value
    const ParameterInfo* info = nullptr;  // of parameters; of elements and entries that of what they are in
    const ParameterDeclaration* declaration = nullptr;  // of the same; null for those of the core namespace
};

class ParameterText {
public:
    using Node = std::uint32_t;

    // names: "verbose", "short", or "auto", which takes the form of the first name that is known in one form alone.
    // JSONParseException when the text is not valid. Requires: vocabulary outlives the object.
    ParameterText(TString text, const LoadedVocabulary& vocabulary, const TString& nameSpace, const std::string& names);
    ParameterText(const ParameterText&) = delete;
    ParameterText& operator=(const ParameterText&) = delete;

    std::u16string_view Text() const { return m_text; }
    const JSONDocument& Document() const { return *m_document; }
    const LoadedVocabulary& GetLoaded() const { return m_loaded; }
    const TString& Namespace() const { return m_namespace; }
    NameForm Names() const { return m_names; }

    // In the order of the text, the root first. An inner node comes behind the one that it is in.
    const std::vector<TextNode>& Nodes() const { return m_nodes; }
    const TextNode& operator[](Node node) const { return m_nodes[node]; }

    JSONKind KindOf(Node node) const { return (*m_document)[m_nodes[node].value].kind; }
    std::vector<Node> Children(Node node) const;

    // What a string or number spells, escapes resolved; for others their text.
    std::u16string_view ValueText(Node node) const;

    // Names and positions from the root, as failures of the library tell them; empty for the root.
    std::string Path(Node node) const;

    // The node of a path whose steps are names in any spelling (of the text, verbose, short, camel case), positions or
    // identifiers; kNone when there is none.
    Node Find(std::string_view path) const;
    static constexpr Node kNone = 0xFFFFFFFF;

private:
    struct Known {
        const ParameterInfo* info = nullptr;
        const ParameterDeclaration* declaration = nullptr;
    };

    NameForm DetectNames() const;
    Known Look(std::u16string_view name);
    void AddInside(Node node);
    void AddMembers(Node node, bool areParameters);
    void AddElements(Node node);
    Node Add(TextNode added);
    void MarkOverridden(Node object);
    std::size_t Behind(Node node) const;
    bool Answers(Node node, std::string_view step) const;

    TString m_text;
    const LoadedVocabulary& m_loaded;
    TString m_namespace;
    std::unique_ptr<JSONDocument> m_document;
    NameForm m_names = NameForm::Verbose;
    std::vector<TextNode> m_nodes;
    std::unordered_map<std::u16string, Known> m_known;  // by name in the text
};

}  // namespace qvpres
