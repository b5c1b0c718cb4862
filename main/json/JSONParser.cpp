#include "main/json/JSONParser.h"

#include <algorithm>
#include <limits>

#include <qvcore/Messages.h>
#include <qvcore/TextNumbers.h>

#include <qvpreslayer/PresLayerLimits.h>

#include "main/json/JSONStrings.h"

namespace {

// About how many units of text come with a node: room for most texts at the first go.
constexpr std::size_t kUnitsPerNode = 8;

// As many integer digits always stay within the range of double.
constexpr std::size_t kSafeDigits = 300;

// As many digits, a sign included, always fit a 64-bit integer.
constexpr std::size_t kShortInteger = 18;

bool IsInteger(std::u16string_view digits) {
    if (digits.size() <= kShortInteger) {
        return true;
    }
    Int64 number = 0;
    UInt64 large = 0;
    return ParseInt64(digits, number) || ParseUInt64(digits, large);
}

}  // namespace

JSONParser::JSONParser(std::u16string_view text, std::vector<JSONNode>& nodes)
    : m_text(text),
      m_nodes(nodes),
      m_maxDepth(static_cast<std::size_t>(std::max(PresLayerLimits::GetJSONDepth(), 0))) {}

std::size_t JSONParser::Parse() {
    if (m_text.size() >= std::numeric_limits<std::uint32_t>::max()) {
        Fail();
    }
    m_nodes.reserve(m_text.size() / kUnitsPerNode + 1);
    State state = State::Value;
    while (state != State::Done) {
        TakeBlanks();
        switch (state) {
            case State::Value:
                state = TakeValue();
                break;
            case State::FirstElement:
                state = TakeFirstElement();
                break;
            case State::FirstName:
                state = TakeName(true);
                break;
            case State::Name:
                state = TakeName(false);
                break;
            default:
                state = TakeSeparator();
        }
    }
    return m_at;
}

JSONParser::State JSONParser::TakeValue() {
    m_inValue = true;
    if (AtEnd()) {
        Fail();
    }
    switch (m_text[m_at]) {
        case u'{':
            return Open(JSONKind::Object);
        case u'[':
            return Open(JSONKind::Array);
        case u'"':
            TakeString();
            break;
        case u't':
            TakeWord(u"true", JSONKind::Bool);
            break;
        case u'f':
            TakeWord(u"false", JSONKind::Bool);
            break;
        case u'n':
            TakeWord(u"null", JSONKind::Null);
            break;
        default:
            TakeNumber();
    }
    return AfterValue();
}

JSONParser::State JSONParser::TakeFirstElement() { return IsAt(u']') ? Close() : TakeValue(); }

JSONParser::State JSONParser::TakeName(bool first) {
    m_inValue = false;
    if (first && IsAt(u'}')) {
        return Close();
    }
    if (!IsAt(u'"')) {
        Fail();
    }
    const auto name = static_cast<std::uint32_t>(m_nodes.size());
    TakeString();
    m_open.back().element = name;
    TakeBlanks();
    if (!IsAt(u':')) {
        Fail();
    }
    ++m_at;
    return State::Value;
}

JSONParser::State JSONParser::TakeSeparator() {
    m_inValue = false;
    const bool inArray = m_nodes[m_open.back().node].kind == JSONKind::Array;
    if (IsAt(u',')) {
        ++m_at;
        if (inArray) {
            ++m_open.back().element;
            return State::Value;
        }
        return State::Name;
    }
    if (!IsAt(inArray ? u']' : u'}')) {
        Fail();
    }
    return Close();
}

JSONParser::State JSONParser::Open(JSONKind kind) {
    if (m_open.size() >= m_maxDepth) {
        Fail();
    }
    m_open.push_back({static_cast<std::uint32_t>(m_nodes.size()), 0});
    AddScalar(kind, m_at, 0, false);
    ++m_at;
    m_inValue = kind == JSONKind::Array;
    return kind == JSONKind::Array ? State::FirstElement : State::FirstName;
}

JSONParser::State JSONParser::Close() {
    m_nodes[m_open.back().node].end = static_cast<std::uint32_t>(m_nodes.size());
    m_open.pop_back();
    ++m_at;
    return AfterValue();
}

JSONParser::State JSONParser::AfterValue() const { return m_open.empty() ? State::Done : State::Separator; }

void JSONParser::TakeString() {
    const std::size_t begin = ++m_at;
    const StringInside inside = SkipString(m_text.data() + m_at, m_text.data() + m_text.size());
    m_at = static_cast<std::size_t>(inside.end - m_text.data());
    if (!inside.closed) {
        Fail();
    }
    AddScalar(JSONKind::String, begin, m_at, inside.escaped);
    ++m_at;
}

void JSONParser::TakeNumber() {
    const std::size_t begin = m_at;
    if (IsAt(u'-')) {
        ++m_at;
    }
    if (IsAt(u'0')) {
        ++m_at;
    } else {
        TakeDigits();
    }
    bool integer = true;
    if (IsAt(u'.')) {
        integer = false;
        ++m_at;
        TakeDigits();
    }
    const bool exponent = IsAt(u'e') || IsAt(u'E');
    if (exponent) {
        integer = false;
        ++m_at;
        if (IsAt(u'+') || IsAt(u'-')) {
            ++m_at;
        }
        TakeDigits();
    }
    const std::u16string_view number = m_text.substr(begin, m_at - begin);
    double value = 0;
    if ((exponent || number.size() > kSafeDigits) && !ParseDouble(number, value)) {
        m_at = begin;
        Fail();
    }
    AddScalar(integer && IsInteger(number) ? JSONKind::Integer : JSONKind::Real, begin, m_at, false);
}

// At least one digit.
void JSONParser::TakeDigits() {
    if (!IsAtDigit()) {
        Fail();
    }
    while (IsAtDigit()) {
        ++m_at;
    }
}

void JSONParser::TakeWord(std::u16string_view word, JSONKind kind) {
    const std::size_t begin = m_at;
    for (const char16_t unit : word) {
        if (!IsAt(unit)) {
            Fail();
        }
        ++m_at;
    }
    AddScalar(kind, begin, m_at, false);
}

void JSONParser::TakeBlanks() {
    while (true) {
        while (IsAt(u' ') || IsAt(u'\n') || IsAt(u'\r') || IsAt(u'\t')) {
            ++m_at;
        }
        if (!IsAt(u'/')) {
            return;
        }
        TakeComment();
    }
}

void JSONParser::TakeComment() {
    if (!TryTakeComment()) {
        Fail();
    }
}

// Leaves the place behind what made it clear that there is none.
bool JSONParser::TryTakeComment() {
    ++m_at;
    std::size_t end = std::u16string_view::npos;
    if (IsAt(u'/')) {
        end = m_text.find(u'\n', m_at);
        m_at = end == std::u16string_view::npos ? m_text.size() : end + 1;
        return true;
    }
    if (IsAt(u'*')) {
        end = m_text.find(u"*/", m_at + 1);
        m_at = end == std::u16string_view::npos ? m_text.size() : end + 2;
    }
    return end != std::u16string_view::npos;
}

std::size_t JSONParser::FindTextAfter(std::size_t at) {
    m_at = at;
    while (true) {
        while (IsAt(u' ') || IsAt(u'\n') || IsAt(u'\r') || IsAt(u'\t')) {
            ++m_at;
        }
        const std::size_t start = m_at;
        if (!IsAt(u'/') || !TryTakeComment()) {
            return start;
        }
    }
}

void JSONParser::AddScalar(JSONKind kind, std::size_t begin, std::size_t end, bool escaped) {
    m_nodes.push_back({static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end), kind, escaped});
}

void JSONParser::Fail() const {
    JSONParseException failure(Messages::kJSONNotValid);
    TextLocation location = LocateUnit(m_text, m_at);
    location.path = Path();
    failure.SetLocation(location);
    throw failure;
}

TString JSONParser::Path() const {
    TString path;
    for (std::size_t level = 0; level < m_open.size(); ++level) {
        if (level + 1 == m_open.size() && !m_inValue) {
            break;
        }
        const Container& container = m_open[level];
        if (m_nodes[container.node].kind == JSONKind::Array) {
            AppendPath(path, std::size_t{container.element});
        } else {
            const JSONNode& name = m_nodes[container.element];
            AppendPath(path, Unescaped(m_text.substr(name.begin, name.end - name.begin)));
        }
    }
    return path;
}
