// The text of every name and value: UTF-16 code units, any of them, NUL and unpaired surrogates included.
//
// Threads: const operations may run at once on several threads; a change needs exclusion.
//
// Exceptions: strong: a text that cannot be changed stays as it was. What only looks, shortens, moves or destroys never
// throws.
#pragma once

#include <compare>
#include <cstddef>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <qvcore/Export.h>
#include <qvcore/IntegerTypes.h>
#include <qvcore/TextBuffer.h>

// A text of UTF-16 code units with value semantics. Lengths and positions count code units; comparison is ordinal by
// code unit, case-sensitive and independent of any locale.
//
// Signed positions and lengths (int) follow the names that hosts know; texts longer than an int can count are held and
// compared in full, but searched only through view().
class QVCORE_API TString {
public:
    TString() noexcept = default;

    // From a null-terminated wide text, a null pointer giving the empty text. A wide character up to U+FFFF becomes one
    // code unit, one up to U+10FFFF two surrogates, any other U+FFFD.
    TString(const wchar_t* text);
    TString(std::wstring_view text);
    TString(const std::wstring& text) : TString(std::wstring_view(text)) {}

    // From code units, unchanged; a null pointer gives the empty text.
    TString(const char16_t* text);
    TString(std::u16string_view text) : m_text(text) {}
    TString(const std::u16string& text) : m_text(text) {}

    // The same, faster, where as many units can be read as fill whole blocks of kBlockUnits from the start of text on,
    // the last of which ends behind the text.
    static constexpr int kBlockUnits = 16;
    struct WholeBlocks {};
    TString(WholeBlocks, std::u16string_view text) : m_text(qvcore::detail::TextBuffer::WholeBlocks(), text) {}

    // count times the same code unit.
    TString(std::size_t count, char16_t unit) : m_text(count, unit) {}

    // From UTF-8 (RFC 3629); every maximal ill-formed part becomes U+FFFD.
    static TString FromUtf8(std::string_view utf8);

    // In UTF-8; a surrogate without its partner becomes U+FFFD.
    std::string ToUtf8() const;

    // Code unit by code unit, whatever width a wide character has: nothing is joined or split, so that every text
    // survives the way there and back. FromStdWString follows the rule of the wide constructor for wider characters.
    std::wstring ToStdWString() const;
    static TString FromStdWString(const std::wstring& text);

    // The code units, valid until the next change.
    operator std::u16string_view() const noexcept { return m_text.view(); }
    std::u16string_view view() const noexcept { return m_text.view(); }
    const char16_t* data() const noexcept { return m_text.data(); }
    std::size_t size() const noexcept { return m_text.size(); }
    int length() const noexcept { return static_cast<int>(m_text.size()); }
    bool empty() const noexcept { return m_text.empty(); }

    // data() ends with a NUL that is not counted; texts may hold others.
    //
    // Requires: position < size().
    char16_t operator[](std::size_t position) const noexcept { return m_text[position]; }

    void clear() noexcept { m_text.clear(); }
    std::size_t capacity() const noexcept { return m_text.capacity(); }
    void reserve(std::size_t units) { m_text.reserve(units); }
    void shrink_to_fit() noexcept { m_text.shrink_to_fit(); }
    void append(std::u16string_view text) { m_text.append(text); }
    void append(std::size_t count, char16_t unit) { m_text.append(count, unit); }
    void push_back(char16_t unit) { m_text.push_back(unit); }

    // Cuts the text to units, or lengthens it with NUL units.
    void resize(std::size_t units) { m_text.resize(units); }
    char16_t* mutable_data() noexcept { return m_text.data(); }

    // For writers that know how much they may write: room for at least more units behind the text. What is written
    // there becomes part of the text with Accept, which is given the end of it. Valid until the next change.
    char16_t* Extend(std::size_t more) { return m_text.Extend(more); }
    void Accept(const char16_t* end) noexcept { m_text.SetSize(static_cast<std::size_t>(end - m_text.data())); }

    TString& operator+=(std::u16string_view text) {
        m_text.append(text);
        return *this;
    }
    TString& operator+=(const std::u16string& text) { return *this += std::u16string_view(text); }
    TString& operator+=(const TString& text) { return *this += text.view(); }
    TString& operator+=(const wchar_t* text) { return *this += TString(text); }
    TString& operator+=(const char16_t* text) { return *this += TString(text); }
    TString& operator+=(char16_t unit) {
        m_text.push_back(unit);
        return *this;
    }

    friend TString operator+(TString left, const TString& right) {
        left += right;
        return left;
    }

    friend TString operator+(TString left, char16_t right) {
        left += right;
        return left;
    }

    friend bool operator==(const TString& left, const TString& right) noexcept {
        return left.size() == right.size() &&
               std::memcmp(left.data(), right.data(), left.size() * sizeof(char16_t)) == 0;
    }
    friend bool operator==(const TString& left, std::u16string_view right) noexcept { return left.view() == right; }
    friend bool operator==(const TString& left, const std::u16string& right) noexcept {
        return left.view() == std::u16string_view(right);
    }
    friend bool operator==(const TString& left, const char16_t* right) { return left == TString(right); }
    friend bool operator==(const TString& left, const wchar_t* right) { return left == TString(right); }
    friend std::strong_ordering operator<=>(const TString& left, const TString& right) noexcept {
        return left.view() <=> right.view();
    }
    friend std::strong_ordering operator<=>(const TString& left, std::u16string_view right) noexcept {
        return left.view() <=> right;
    }
    friend std::strong_ordering operator<=>(const TString& left, const std::u16string& right) noexcept {
        return left.view() <=> std::u16string_view(right);
    }
    friend std::strong_ordering operator<=>(const TString& left, const char16_t* right) {
        return left <=> TString(right);
    }
    friend std::strong_ordering operator<=>(const TString& left, const wchar_t* right) {
        return left <=> TString(right);
    }

    // The parts between the occurrences of separator, empty ones included: n occurrences give n + 1 parts, an empty
    // text gives one empty part. An empty separator separates nothing.
    std::vector<TString> split(const TString& separator) const;

    // The first position at or after from at which text stands, or -1. A negative from counts as 0; the empty text
    // stands everywhere up to the end.
    int indexOf(const TString& text, int from = 0) const;

    // Parts of the text: n units from position on (to the end when n is negative), the first n, the last n. Positions
    // and counts are cut to the text: a negative position counts as 0, one beyond the end gives the empty text.
    TString mid(int position, int n = -1) const;
    TString left(int n) const;
    TString right(int n) const;

    // Replaces every occurrence of before, from left to right, without looking again at what was put in. An empty
    // before changes nothing. Answers this text.
    TString& replace(const TString& before, const TString& after);

    // Removes the unit at position; a position outside the text changes nothing. Answers this text.
    TString& removeAt(int position);

    bool startsWith(const TString& text) const { return view().starts_with(text.view()); }
    bool endsWith(const TString& text) const { return view().ends_with(text.view()); }

    // Integers in: an optional "+" (or "-", signed types only), then ASCII digits of the base, the whole text, without
    // blanks or grouping; leading zeros are allowed. Anything else, and a number out of range, answers 0 and sets *ok
    // to false; success sets it to true. A null ok is allowed. base is 2 to 36, with letters of either case as digits
    // beyond 9; any other base accepts nothing.
    int toInt(bool* ok = nullptr, int base = 10) const;
    unsigned int toUInt(bool* ok = nullptr, int base = 10) const;
    Int64 toLong(bool* ok = nullptr, int base = 10) const;
    Int64 toLongLong(bool* ok = nullptr, int base = 10) const;
    UInt64 toULongLong(bool* ok = nullptr, int base = 10) const;

    // Reals in: [+-]?([0-9]+(\.[0-9]*)?|\.[0-9]+)([eE][+-]?[0-9]+)?, the whole text, the point always ".", rounded
    // correctly to the type itself (IEEE 754, nearest even). Overflow and everything else answer 0 and set *ok to
    // false; underflow answers the nearest value, 0 included, with *ok true.
    float toFloat(bool* ok = nullptr) const;
    double toDouble(bool* ok = nullptr) const;

    // Integers out: "-" for negative numbers, lower-case letters beyond 9, filled up to width on the left. base is 2
    // to 36, LogicException for any other.
    static TString number(int value, int base = 10, int width = 0, char16_t fill = u' ');
    static TString number(unsigned int value, int base = 10, int width = 0, char16_t fill = u' ');
    static TString number(Int64 value, int base = 10, int width = 0, char16_t fill = u' ');
    static TString number(UInt64 value, int base = 10, int width = 0, char16_t fill = u' ');

private:
    qvcore::detail::TextBuffer m_text;
};

template <>
struct std::hash<TString> {
    std::size_t operator()(const TString& text) const noexcept { return std::hash<std::u16string_view>()(text.view()); }
};
