#include "main/json/JSONDocument.h"

#include <algorithm>

#include "main/json/JSONParser.h"

namespace {

unsigned HexDigit(char16_t unit) {
    if (unit <= u'9') {
        return unit - u'0';
    }
    return (unit | 0x20u) - u'a' + 10u;
}

// The unit that a checked escape stands for; moves i, at the letter behind the backslash, to the escape's last unit.
char16_t Unescape(std::u16string_view text, std::size_t& i) {
    switch (text[i]) {
        case u'b':
            return u'\b';
        case u'f':
            return u'\f';
        case u'n':
            return u'\n';
        case u'r':
            return u'\r';
        case u't':
            return u'\t';
        case u'u': {
            unsigned code = 0;
            for (int digit = 0; digit < 4; ++digit) {
                code = code * 16 + HexDigit(text[++i]);
            }
            return static_cast<char16_t>(code);
        }
        default:
            return text[i];
    }
}

}  // namespace

JSONDocument::JSONDocument(std::u16string_view text) : m_text(text), m_end(JSONParser(text, m_nodes).Parse()) {}

std::u16string_view JSONDocument::Text(Index node) const {
    const JSONNode& token = m_nodes[node];
    const std::u16string_view raw = m_text.substr(token.begin, token.end - token.begin);
    if (!token.escaped) [[likely]] {
        return raw;
    }
    return m_unescaped.emplace_back(Unescaped(raw));
}

std::size_t JSONDocument::FindTextAfterValue() const {
    std::vector<JSONNode> none;
    return JSONParser(m_text, none).FindTextAfter(m_end);
}

TextLocation JSONDocument::LocateOffset(std::size_t offset) const {
    if (m_lineStarts.empty()) {
        m_lineStarts.push_back(0);
        for (std::size_t end = m_text.find(u'\n'); end != std::u16string_view::npos;
             end = m_text.find(u'\n', end + 1)) {
            m_lineStarts.push_back(end + 1);
        }
    }
    const auto next = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset);
    TextLocation location;
    location.line = static_cast<std::size_t>(next - m_lineStarts.begin());
    location.column = offset - *(next - 1) + 1;
    location.offset = offset;
    return location;
}

TextLocation JSONDocument::Locate(Index node) const {
    const JSONNode& token = m_nodes[node];
    return LocateOffset(token.kind == JSONKind::String ? token.begin - 1 : token.begin);
}

std::u16string Unescaped(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'\\') {
            result.push_back(Unescape(text, ++i));
        } else {
            result.push_back(text[i]);
        }
    }
    return result;
}

TextLocation LocateUnit(std::u16string_view text, std::size_t offset) {
    const std::u16string_view before = text.substr(0, offset);
    TextLocation location;
    location.line = static_cast<std::size_t>(std::count(before.begin(), before.end(), u'\n')) + 1;
    location.column = before.size() - (before.rfind(u'\n') + 1) + 1;  // npos + 1 is 0: the first line
    location.offset = before.size();
    return location;
}

void AppendPath(TString& path, std::u16string_view name) {
    path.push_back(u'/');
    path.append(name);
}

void AppendPath(TString& path, std::size_t position) {
    path.push_back(u'/');
    path.append(TString::number(static_cast<UInt64>(position)));
}
