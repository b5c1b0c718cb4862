// Reals are read in two steps. A scan checks the grammar
//
//     [+-]? ( digits ( "." digits? )? | "." digits ) ( [eE] [+-]? digits )?
//
// and finds the sign, the significant digits and the power of ten of the first of them. That power alone tells almost
// every overflow and underflow. What is left goes as "d.ddde<power>" to std::from_chars, whose own grammar (no "+", but
// "nan" and "inf") and whose single code for both ways out of range are thereby out of the game. A short text goes to
// it as written first, and is normalised only when that leads out of range.
#include <qvcore/TextNumbers.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <system_error>

#include "TextIntegers.h"

namespace {

using qvcore::detail::ParseInteger;

// A number half-way between two neighbouring doubles has at most 767 significant digits. Beyond that only matters
// whether anything but zeros follows, so that one more digit can stand for all of the rest.
constexpr std::size_t kMaximumDigits = 800;

// Numbers up to this length, which are nearly all, take the short way.
constexpr std::size_t kShortText = 64;

// Far outside every range, and far from overflowing when the length of a text is added.
constexpr Int64 kPowerCap = Int64{1} << 60;

bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

// Takes the digits at the start of text away.
std::u16string_view TakeDigits(std::u16string_view& text) {
    std::size_t count = 0;
    while (count < text.size() && IsDigit(text[count])) {
        ++count;
    }
    const std::u16string_view digits = text.substr(0, count);
    text.remove_prefix(count);
    return digits;
}

// Takes a sign at the start of text away; true for "-".
bool TakeSign(std::u16string_view& text) {
    const bool negative = text.starts_with(u'-');
    if (negative || text.starts_with(u'+')) {
        text.remove_prefix(1);
    }
    return negative;
}

// The parts of a real, as written.
struct RealParts {
    bool negative = false;
    std::u16string_view whole;     // the digits before the point
    std::u16string_view fraction;  // the digits behind it
    Int64 exponent = 0;            // not beyond kPowerCap
};

// Takes "e", its sign and its digits away.
bool TakeExponent(std::u16string_view& text, Int64& exponent) {
    text.remove_prefix(1);
    const bool negative = TakeSign(text);
    const std::u16string_view digits = TakeDigits(text);
    for (const char16_t digit : digits) {
        exponent = std::min(exponent * 10 + (digit - u'0'), kPowerCap / 10);
    }
    exponent = negative ? -exponent : exponent;
    return !digits.empty();
}

bool ScanReal(std::u16string_view text, RealParts& parts) {
    parts.negative = TakeSign(text);
    parts.whole = TakeDigits(text);
    if (text.starts_with(u'.')) {
        text.remove_prefix(1);
        parts.fraction = TakeDigits(text);
    }
    if (parts.whole.empty() && parts.fraction.empty()) {
        return false;
    }
    if (text.starts_with(u'e') || text.starts_with(u'E')) {
        if (!TakeExponent(text, parts.exponent)) {
            return false;
        }
    }
    return text.empty();
}

// Takes the zeros at the start of digits away and answers their number.
std::size_t TakeZeros(std::u16string_view& digits) {
    const std::size_t count = std::min(digits.find_first_not_of(u'0'), digits.size());
    digits.remove_prefix(count);
    return count;
}

// Drops the zeros before the first significant digit and answers that digit's power of ten; false for a zero.
bool Normalize(RealParts& parts, Int64& power) {
    TakeZeros(parts.whole);
    if (!parts.whole.empty()) {
        power = parts.exponent + static_cast<Int64>(parts.whole.size()) - 1;
        return true;
    }
    const std::size_t zeros = TakeZeros(parts.fraction);
    power = parts.exponent - static_cast<Int64>(zeros) - 1;
    return !parts.fraction.empty();
}

// The plain text of a number, in a buffer that holds every number.
class PlainReal {
public:
    PlainReal(const RealParts& parts, Int64 power) {
        AppendDigits(parts.whole);
        AppendDigits(parts.fraction);
        if (m_moreFollows) {
            *m_end++ = '1';
        }
        *m_end++ = 'e';
        m_end = std::to_chars(m_end, m_text + sizeof(m_text), power).ptr;
    }

    const char* Begin() const { return m_text; }
    const char* End() const { return m_end; }

private:
    void AppendDigits(std::u16string_view digits) {
        const std::size_t count = std::min(digits.size(), kMaximumDigits - m_digits);
        for (const char16_t digit : digits.substr(0, count)) {
            *m_end++ = static_cast<char>(digit);
            if (++m_digits == 1) {
                *m_end++ = '.';
            }
        }
        m_moreFollows = m_moreFollows || digits.find_first_not_of(u'0', count) != std::u16string_view::npos;
    }

    char m_text[kMaximumDigits + 32];  // with the point, the digit for the rest, "e" and the power
    char* m_end = m_text;
    std::size_t m_digits = 0;
    bool m_moreFollows = false;
};

// The magnitude of the number, 0 when the type has nothing as small; false when it has nothing as large.
template <class Real>
bool ConvertMagnitude(const RealParts& parts, Int64 power, Real& magnitude) {
    using Limits = std::numeric_limits<Real>;
    if (power > Limits::max_exponent10) {
        return false;
    }
    magnitude = 0;
    if (power < Limits::min_exponent10 - Limits::max_digits10) {
        return true;  // less than half of the smallest number
    }
    const PlainReal plain(parts, power);
    const std::from_chars_result result = std::from_chars(plain.Begin(), plain.End(), magnitude);
    if (result.ec == std::errc::result_out_of_range) {
        magnitude = 0;
        return power < 0;
    }
    return result.ec == std::errc() && !std::isinf(magnitude);
}

// The magnitude of a number of the grammar, without its sign and as it is written; false when it is long or out of
// range, which is for ConvertMagnitude to tell.
template <class Real>
bool ConvertShort(std::u16string_view text, Real& magnitude) {
    char plain[kShortText];
    if (text.size() > kShortText) {
        return false;
    }
    std::transform(text.begin(), text.end(), plain, [](char16_t unit) { return static_cast<char>(unit); });
    const std::from_chars_result result = std::from_chars(plain, plain + text.size(), magnitude);
    return result.ec == std::errc() && !std::isinf(magnitude);
}

template <class Real>
bool ParseReal(std::u16string_view text, Real& value) {
    RealParts parts;
    if (!ScanReal(text, parts)) {
        return false;
    }
    Real magnitude = 0;
    TakeSign(text);
    if (ConvertShort(text, magnitude)) {
        value = parts.negative ? -magnitude : magnitude;
        return true;
    }
    magnitude = 0;
    Int64 power = 0;
    if (Normalize(parts, power) && !ConvertMagnitude(parts, power, magnitude)) {
        return false;
    }
    value = parts.negative ? -magnitude : magnitude;
    return true;
}

}  // namespace

bool ParseInt32(std::u16string_view text, int& value) noexcept { return ParseInteger(text, 10, value); }

bool ParseUInt32(std::u16string_view text, unsigned int& value) noexcept { return ParseInteger(text, 10, value); }

bool ParseInt64(std::u16string_view text, Int64& value) noexcept { return ParseInteger(text, 10, value); }

bool ParseUInt64(std::u16string_view text, UInt64& value) noexcept { return ParseInteger(text, 10, value); }

bool ParseFloat(std::u16string_view text, float& value) noexcept { return ParseReal(text, value); }

bool ParseDouble(std::u16string_view text, double& value) noexcept { return ParseReal(text, value); }
