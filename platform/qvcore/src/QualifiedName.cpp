// The text form of a qualified name:
//
//     name     one to eight segments, joined by "."
//     segment  "[", one or more units, "]"; a "]" among the units is written "]]"
#include <qvcore/QualifiedName.h>

#include <string_view>

#include <qvsys/QuorvelException.h>

namespace {

constexpr std::size_t kMaximumSegments = 8;

// Takes the segment at the start of text away and answers its units; empty when it is malformed.
TString TakeSegment(std::u16string_view& text) {
    TString segment;
    if (!text.starts_with(u'[')) {
        return segment;
    }
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == u']') {
            const bool isDoubled = i + 1 < text.size() && text[i + 1] == u']';
            if (!isDoubled) {
                text.remove_prefix(i + 1);
                return segment;
            }
            ++i;
        }
        segment.push_back(text[i]);
    }
    return {};
}

// The segments of a text in the form above; none when it is malformed.
std::vector<TString> ReadSegments(std::u16string_view text) {
    std::vector<TString> segments;
    while (segments.size() < kMaximumSegments) {
        TString segment = TakeSegment(text);
        if (segment.empty()) {
            return {};
        }
        segments.push_back(std::move(segment));
        if (text.empty()) {
            return segments;
        }
        if (!text.starts_with(u'.')) {
            return {};
        }
        text.remove_prefix(1);
    }
    return {};
}

}  // namespace

QualifiedName QualifiedName::ParseGlobal(const TString& text) {
    const bool isPlain = !text.empty() && text.view().find_first_of(u"[]") == std::u16string_view::npos;
    if (!isPlain && ReadSegments(text).empty()) {
        throw QuorvelException(u"Malformed qualified name: " + text);
    }
    QualifiedName name;
    name.m_fullValue = isPlain ? u"[" + text + u"]" : text;
    return name;
}

std::vector<TString> QualifiedName::GetSegments() const { return ReadSegments(m_fullValue); }
