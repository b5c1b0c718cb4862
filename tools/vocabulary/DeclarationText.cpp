#include "tools/vocabulary/DeclarationText.h"

#include <algorithm>
#include <iterator>

#include <utf8.h>

#include "tools/vocabulary/NearestNames.h"

namespace qvpres {

namespace {

constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

bool IsSurrogate(char16_t unit) { return (unit & 0xF800) == 0xD800; }
bool IsHighSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }

// Whether every surrogate has its partner.
bool IsWellFormed(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (IsSurrogate(text[i])) {
            if (!IsHighSurrogate(text[i]) || i + 1 == text.size() || (text[i + 1] & 0xFC00) != 0xDC00) {
                return false;
            }
            ++i;
        }
    }
    return true;
}

const char16_t* KindName(JSONKind kind) {
    constexpr const char16_t* kNames[] = {
        u"an object", u"an array", u"a text", u"true or false", u"a number", u"a number with a fraction", u"null"};
    return kNames[static_cast<std::size_t>(kind)];
}

// The identifier of up to eight hexadecimal digits; the upper half of 32 bits is negative.
std::optional<int> FromHexadecimal(const TString& text) {
    constexpr int kPrefixLength = 2;
    constexpr std::size_t kLongest = kPrefixLength + 8;
    bool ok = text.startsWith(u"0x") && text.size() <= kLongest && !text.mid(kPrefixLength).startsWith(u"+");
    const unsigned int bits = ok ? text.mid(kPrefixLength).toUInt(&ok, 16) : 0;
    return ok ? std::optional<int>(static_cast<int>(bits)) : std::nullopt;
}

}  // namespace

DeclarationText::DeclarationText(std::string_view utf8, std::string source) : m_source(std::move(source)) {
    if (utf8.starts_with(kByteOrderMark)) {
        utf8.remove_prefix(kByteOrderMark.size());
    }
    const auto invalid = utf8::find_invalid(utf8.begin(), utf8.end());
    if (invalid != utf8.end()) {
        const TString before = TString::FromUtf8(utf8.substr(0, static_cast<std::size_t>(invalid - utf8.begin())));
        throw VocabularyException(m_source, LocateUnit(before, before.size()), u"the file is not UTF-8 here");
    }
    m_text = TString::FromUtf8(utf8);
    m_lines.push_back(0);
    for (std::size_t i = 0; i < m_text.size(); ++i) {
        if (m_text[i] == u'\n') {
            m_lines.push_back(i + 1);
        }
    }
    try {
        m_document.emplace(m_text);
    } catch (const JSONParseException& failure) {
        throw VocabularyException(m_source, failure.GetLocation(), u"this is not valid JSON");
    }
    RequireNothingMore();
}

// What follows is read as one more text: when it holds blanks and comments alone, it ends before its first value.
void DeclarationText::RequireNothingMore() const {
    const std::u16string_view rest = m_text.view().substr(m_document->End());
    std::size_t at = 0;
    try {
        at = JSONDocument(rest).Locate(0).offset;
    } catch (const JSONParseException& failure) {
        at = failure.GetLocation().offset;
    }
    if (at != rest.size()) {
        throw VocabularyException(m_source, Locate(m_document->End() + at), u"nothing may follow the declaration");
    }
}

TextLocation DeclarationText::Locate(std::size_t offset) const {
    const auto line = std::upper_bound(m_lines.begin(), m_lines.end(), offset);
    TextLocation location;
    location.line = static_cast<std::size_t>(line - m_lines.begin());
    location.column = offset - line[-1] + 1;
    location.offset = offset;
    return location;
}

DeclaredValue DeclarationText::Root() const { return {*this, 0, {}}; }

void DeclaredValue::Fail(const TString& problem) const {
    throw VocabularyException(m_text->Source(), Location(), problem);
}

TextLocation DeclaredValue::Location() const {
    const JSONNode& node = Document()[m_node];
    const bool isQuoted = node.kind == JSONKind::String;
    TextLocation location = m_text->Locate(isQuoted ? node.begin - 1 : node.begin);
    location.path = m_path;
    return location;
}

void DeclaredValue::Require(JSONKind kind, const char16_t* what) const {
    if (Document()[m_node].kind != kind) {
        Fail(u"must be " + TString(what) + u", not " + KindName(Document()[m_node].kind));
    }
}

TString DeclaredValue::Text() const {
    Require(JSONKind::String, KindName(JSONKind::String));
    return Document().Text(m_node);
}

TString DeclaredValue::Name() const {
    TString name = Text();
    if (name.empty()) {
        Fail(u"must not be empty");
    }
    if (name.view().find(u'\0') != std::u16string_view::npos || !IsWellFormed(name)) {
        Fail(u"must not hold U+0000 or half a surrogate pair");
    }
    return name;
}

TString DeclaredValue::OneOf(const std::vector<TString>& known, const TString& what) const {
    TString name = Text();
    if (std::find(known.begin(), known.end(), name) == known.end()) {
        Fail(u"unknown " + what + u' ' + Quoted(name) + NearestNamesHint(name, known));
    }
    return name;
}

int DeclaredValue::Id() const {
    const JSONKind kind = Document()[m_node].kind;
    if (kind == JSONKind::String) {
        if (const auto id = FromHexadecimal(Document().Text(m_node))) {
            return *id;
        }
        Fail(u"must be a number, or hexadecimal digits such as \"0x12000001\"");
    }
    if (kind != JSONKind::Integer && kind != JSONKind::Real) {
        Require(JSONKind::Integer, u"a number");
    }
    bool ok = false;
    const int id = TString(Document().Text(m_node)).toInt(&ok);
    if (!ok) {
        Fail(u"must be an integer from -2147483648 to 2147483647");
    }
    return id;
}

bool DeclaredValue::Bool() const {
    Require(JSONKind::Bool, KindName(JSONKind::Bool));
    return Document().Text(m_node) == u"true";
}

std::vector<DeclaredValue> DeclaredValue::Elements() const {
    Require(JSONKind::Array, KindName(JSONKind::Array));
    std::vector<DeclaredValue> elements;
    for (auto node = m_node + 1; node != Document().Next(m_node); node = Document().Next(node)) {
        TString path = m_path;
        AppendPath(path, elements.size());
        elements.emplace_back(*m_text, node, std::move(path));
    }
    return elements;
}

DeclaredObject::DeclaredObject(const DeclaredValue& value, std::initializer_list<const char16_t*> known)
    : m_value(value) {
    value.Require(JSONKind::Object, KindName(JSONKind::Object));
    const JSONDocument& document = value.Document();
    const std::vector<TString> names(known.begin(), known.end());
    for (auto node = value.m_node + 1; node != document.Next(value.m_node); node = document.Next(node + 1)) {
        const TString name = document.Text(node);
        TString path = value.m_path;
        AppendPath(path, name);
        const DeclaredValue atName(*value.m_text, node, path);
        if (std::find(names.begin(), names.end(), name) == names.end()) {
            atName.Fail(u"unknown member" + NearestNamesHint(name, names));
        }
        if (!m_members.emplace(name, DeclaredValue(*value.m_text, node + 1, path)).second) {
            atName.Fail(u"stands here for the second time");
        }
    }
}

const DeclaredValue* DeclaredObject::Find(const TString& name) const {
    const auto member = m_members.find(name);
    return member == m_members.end() ? nullptr : &member->second;
}

const DeclaredValue& DeclaredObject::Get(const TString& name) const {
    const DeclaredValue* member = Find(name);
    if (member == nullptr) {
        Fail(Quoted(name) + u" is missing");
    }
    return *member;
}

TString DeclaredObject::TextOr(const TString& name) const {
    const DeclaredValue* member = Find(name);
    return member == nullptr ? TString() : member->Text();
}

}  // namespace qvpres
