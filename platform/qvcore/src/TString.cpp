#include <qvcore/TString.h>

#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <iterator>
#include <limits>

#include <utf8.h>

#include <qvsys/Utf8.h>

namespace {

constexpr char16_t kReplacement = 0xFFFD;

std::u16string FromWide(std::wstring_view text) {
    std::u16string result;
    result.reserve(text.size());
    for (const wchar_t character : text) {
        const auto value = static_cast<std::uint32_t>(character);
        if (value <= 0xFFFF) {
            result.push_back(static_cast<char16_t>(value));
        } else if (value <= 0x10FFFF) {
            result.push_back(static_cast<char16_t>(0xD800 + ((value - 0x10000) >> 10)));
            result.push_back(static_cast<char16_t>(0xDC00 + (value & 0x3FF)));
        } else {
            result.push_back(kReplacement);
        }
    }
    return result;
}

bool IsWithin(char byte, unsigned int low, unsigned int high) {
    const auto value = static_cast<unsigned char>(byte);
    return value >= low && value <= high;
}

// Whether second may follow first; what some first bytes allow is narrower, so that neither surrogates nor overlong
// forms nor anything beyond U+10FFFF can begin.
bool MayFollow(unsigned char first, char second) {
    switch (first) {
        case 0xE0:
            return IsWithin(second, 0xA0, 0xBF);
        case 0xED:
            return IsWithin(second, 0x80, 0x9F);
        case 0xF0:
            return IsWithin(second, 0x90, 0xBF);
        case 0xF4:
            return IsWithin(second, 0x80, 0x8F);
        default:
            return IsWithin(second, 0x80, 0xBF);
    }
}

// The length of the ill-formed part at the start of a text: as far as it could have become a character, at least 1.
std::size_t IllFormedLength(std::string_view utf8) {
    const auto first = static_cast<unsigned char>(utf8.front());
    if (first < 0xE0 || first > 0xF4 || utf8.size() < 2 || !MayFollow(first, utf8[1])) {
        return 1;
    }
    return first >= 0xF0 && utf8.size() > 2 && IsWithin(utf8[2], 0x80, 0xBF) ? 3 : 2;
}

// A position or a count, cut to what a text has.
std::size_t Cut(int value, std::size_t limit) {
    return value <= 0 ? 0 : std::min(static_cast<std::size_t>(value), limit);
}

}  // namespace

TString::TString(const wchar_t* text) : m_text(text == nullptr ? std::u16string() : FromWide(text)) {}

TString::TString(std::wstring_view text) : m_text(FromWide(text)) {}

TString::TString(const char16_t* text) : m_text(text == nullptr ? std::u16string() : std::u16string(text)) {}

TString TString::FromUtf8(std::string_view utf8) {
    std::u16string result;
    result.reserve(utf8.size());
    while (!utf8.empty()) {
        const auto wellFormed = static_cast<std::size_t>(utf8::find_invalid(utf8.begin(), utf8.end()) - utf8.begin());
        utf8::utf8to16(utf8.begin(), utf8.begin() + wellFormed, std::back_inserter(result));
        utf8.remove_prefix(wellFormed);
        if (!utf8.empty()) {
            result.push_back(kReplacement);
            utf8.remove_prefix(IllFormedLength(utf8));
        }
    }
    return result;
}

std::string TString::ToUtf8() const { return ::ToUtf8(view()); }

std::wstring TString::ToStdWString() const { return {data(), data() + size()}; }

TString TString::FromStdWString(const std::wstring& text) { return FromWide(text); }

std::vector<TString> TString::split(const TString& separator) const {
    const std::u16string_view text = view();
    std::vector<TString> parts;
    std::size_t start = 0;
    if (!separator.empty()) {
        for (std::size_t end; (end = text.find(separator, start)) != text.npos; start = end + separator.size()) {
            parts.emplace_back(text.substr(start, end - start));
        }
    }
    parts.emplace_back(text.substr(start));
    return parts;
}

int TString::indexOf(const TString& text, int from) const {
    const std::size_t position = view().find(text.view(), from > 0 ? static_cast<std::size_t>(from) : 0);
    return position <= static_cast<std::size_t>(std::numeric_limits<int>::max()) ? static_cast<int>(position) : -1;
}

TString TString::mid(int position, int n) const {
    const std::u16string_view rest = view().substr(Cut(position, size()));
    return n < 0 ? TString(rest) : TString(rest.substr(0, Cut(n, rest.size())));
}

TString TString::left(int n) const { return view().substr(0, Cut(n, size())); }

TString TString::right(int n) const { return view().substr(size() - Cut(n, size())); }

TString& TString::replace(const TString& before, const TString& after) {
    const std::u16string_view text = view();
    std::size_t found = before.empty() ? text.npos : text.find(before);
    if (found == text.npos) {
        return *this;
    }
    std::u16string result;
    std::size_t start = 0;
    for (; found != text.npos; found = text.find(before, start)) {
        result.append(text.substr(start, found - start)).append(after.view());
        start = found + before.size();
    }
    result.append(text.substr(start));
    m_text.assign(result);
    return *this;
}

TString& TString::removeAt(int position) {
    if (position >= 0 && static_cast<std::size_t>(position) < size()) {
        m_text.erase(static_cast<std::size_t>(position), 1);
    }
    return *this;
}
