// The grammar of integers: an optional "+", or "-" for signed types, then digits of the base, the whole text.
// Included by TextNumbers.cpp and TStringNumbers.cpp.
#pragma once

#include <concepts>
#include <limits>
#include <string_view>

#include <qvcore/IntegerTypes.h>

namespace qvcore::detail {

// The value of a digit, 36 for anything else.
constexpr unsigned int DigitValue(char16_t unit) noexcept {
    if (unit >= u'0' && unit <= u'9') {
        return static_cast<unsigned int>(unit - u'0');
    }
    if (unit >= u'a' && unit <= u'z') {
        return static_cast<unsigned int>(unit - u'a') + 10;
    }
    if (unit >= u'A' && unit <= u'Z') {
        return static_cast<unsigned int>(unit - u'A') + 10;
    }
    return 36;
}

// The digits as a number of at most limit.
inline bool ParseDigits(std::u16string_view digits, unsigned int base, UInt64 limit, UInt64& value) noexcept {
    UInt64 result = 0;
    for (const char16_t unit : digits) {
        const unsigned int digit = DigitValue(unit);
        if (digit >= base || __builtin_mul_overflow(result, base, &result) ||
            __builtin_add_overflow(result, digit, &result)) {
            return false;
        }
    }
    value = result;
    return !digits.empty() && result <= limit;
}

// True and the number when the text is one of type T; otherwise value is left as it was.
template <std::integral T>
bool ParseInteger(std::u16string_view text, unsigned int base, T& value) noexcept {
    const bool negative = std::signed_integral<T> && text.starts_with(u'-');
    if (negative || text.starts_with(u'+')) {
        text.remove_prefix(1);
    }
    // One more fits below zero than above.
    const UInt64 limit = static_cast<UInt64>(std::numeric_limits<T>::max()) + (negative ? 1 : 0);
    UInt64 magnitude = 0;
    if (!ParseDigits(text, base, limit, magnitude)) {
        return false;
    }
    value = static_cast<T>(negative ? 0 - magnitude : magnitude);
    return true;
}

}  // namespace qvcore::detail
