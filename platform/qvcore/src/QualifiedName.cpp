// The text form of a qualified name:
//
//     name     one to eight segments, joined by "."
//     segment  "[", one or more units, "]"; a "]" among the units is written "]]"
#include <qvcore/QualifiedName.h>

#include <string_view>
#include <utility>

#include <qvsys/QuorvelException.h>

namespace {

constexpr std::size_t kMaximumSegments = 8;

// The end of the segment at the start of text, behind its closing bracket; 0 when it is malformed.
std::size_t FindSegmentEnd(std::u16string_view text) {
    if (!text.starts_with(u'[')) {
        return 0;
    }
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] != u']') {
            continue;
        }
        if (i + 1 == text.size() || text[i + 1] != u']') {
            return i == 1 ? 0 : i + 1;
        }
        ++i;
    }
    return 0;
}

// Takes the next segment away, with the "." behind it; empty when there is none or it is malformed.
std::u16string_view TakeSegment(std::u16string_view& text) {
    const std::size_t end = FindSegmentEnd(text);
    const std::u16string_view segment = text.substr(0, end);
    text.remove_prefix(end);
    if (text.size() > 1 && text.front() == u'.') {
        text.remove_prefix(1);  // a "." at the end stays, as a segment that is malformed
    }
    return segment;
}

bool IsWellFormed(std::u16string_view text) {
    std::size_t segments = 0;
    while (!text.empty()) {
        const std::size_t size = text.size();
        const std::u16string_view segment = TakeSegment(text);
        const bool joined = text.empty() || segment.size() + 1 + text.size() == size;
        if (segment.empty() || !joined || ++segments > kMaximumSegments) {
            return false;
        }
    }
    return segments != 0;
}

// What stands between the brackets of a segment, "]]" being "]".
TString Content(std::u16string_view segment) {
    TString content;
    for (std::size_t i = 1; i + 1 < segment.size(); ++i) {
        content.push_back(segment[i]);
        if (segment[i] == u']') {
            ++i;
        }
    }
    return content;
}

}  // namespace

bool QualifiedName::TryParseGlobal(std::u16string_view text, QualifiedName& name) {
    if (!text.empty() && text.find_first_of(u"[]") == std::u16string_view::npos) {
        TString full;
        full.reserve(text.size() + 2);
        full.push_back(u'[');
        full.append(text);
        full.push_back(u']');
        name.m_fullValue = std::move(full);
        return true;
    }
    if (!IsWellFormed(text)) {
        return false;
    }
    name.m_fullValue = text;
    return true;
}

QualifiedName QualifiedName::ParseGlobal(const TString& text) {
    QualifiedName name;
    if (!TryParseGlobal(text, name)) {
        throw QuorvelException(u"Malformed qualified name: " + text);
    }
    return name;
}

std::vector<TString> QualifiedName::GetSegments() const {
    std::vector<TString> segments;
    for (std::u16string_view rest = m_fullValue; !rest.empty();) {
        segments.push_back(Content(TakeSegment(rest)));
    }
    return segments;
}
