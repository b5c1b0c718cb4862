// The JSON of a declaration file, with the place of every value. Included by DeclarationReader.cpp.
//
// Stricter than the library is with its own texts: the file is UTF-8, nothing follows the value, no name stands twice
// in an object and no member is unknown. Comments stay allowed.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <qvcore/TString.h>

#include "main/json/JSONDocument.h"
#include "tools/vocabulary/VocabularyException.h"

namespace qvpres {

class DeclaredValue;

// A text that has been checked. VocabularyException for one that is no JSON.
class DeclarationText {
public:
    DeclarationText(std::string_view utf8, std::string source);
    DeclarationText(const DeclarationText&) = delete;
    DeclarationText& operator=(const DeclarationText&) = delete;

    DeclaredValue Root() const;
    const std::string& Source() const noexcept { return m_source; }

private:
    friend class DeclaredValue;

    void RequireNothingMore() const;

    // The place of a unit; by the starts of the lines, since every declaration keeps its place.
    TextLocation Locate(std::size_t offset) const;

    std::string m_source;
    TString m_text;
    std::vector<std::size_t> m_lines;  // where each starts
    std::optional<JSONDocument> m_document;
};

// One value. Refers to its text. Whatever asks for another kind of value than this is throws VocabularyException with
// the value's place.
class DeclaredValue {
public:
    DeclaredValue(const DeclarationText& text, JSONDocument::Index node, TString path)
        : m_text(&text), m_node(node), m_path(std::move(path)) {}

    [[noreturn]] void Fail(const TString& problem) const;
    TextLocation Location() const;

    // A text; one that is not empty and holds neither U+0000 nor half a surrogate pair; one of these.
    TString Text() const;
    TString Name() const;
    TString OneOf(const std::vector<TString>& known, const TString& what) const;

    // A 32-bit integer: a number, or a text such as "0x12000001" (hexadecimal digits of 32 bits).
    int Id() const;
    bool Bool() const;
    std::vector<DeclaredValue> Elements() const;

private:
    friend class DeclaredObject;

    void Require(JSONKind kind, const char16_t* what) const;
    const JSONDocument& Document() const { return *m_text->m_document; }

    const DeclarationText* m_text;
    JSONDocument::Index m_node;
    TString m_path;
};

// The members of an object value, each of which must be known.
class DeclaredObject {
public:
    DeclaredObject(const DeclaredValue& value, std::initializer_list<const char16_t*> known);

    // The member, or nothing; VocabularyException at the object when it is not there.
    const DeclaredValue* Find(const TString& name) const;
    const DeclaredValue& Get(const TString& name) const;

    // The text of a member, empty when there is none.
    TString TextOr(const TString& name) const;

    TextLocation Location() const { return m_value.Location(); }
    [[noreturn]] void Fail(const TString& problem) const { m_value.Fail(problem); }

private:
    DeclaredValue m_value;
    std::map<TString, DeclaredValue> m_members;
};

}  // namespace qvpres
