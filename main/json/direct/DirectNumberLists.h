// Long lists of numbers, in the spelling that they nearly always have. Included by DirectReader.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

#include <qvcore/DecimalReal.h>
#include <qvcore/IntegerTypes.h>

#include "main/json/JSONNumbers.h"
#include "main/json/direct/DirectDigits.h"

// Each of the following takes elements from at on while they are followed directly by a comma, and perhaps a blank, and
// answers where the first one stands that is spelled otherwise, stands near an end of the text or holds more digits
// than usual: what to make of that is for DirectNumberReader to say. begin and end are those of the text.

// Numbers of up to 16 digits that keep their value when they travel.
template <class T>
requires std::is_integral_v<T>
const char16_t* TakeUsualNumbers(const char16_t* at, const char16_t* begin, const char16_t* end,
                                 std::vector<T>& values) {
    constexpr UInt64 kLargestNegative = std::is_signed_v<T> ? 0x7FFFFFFF : 0;
    constexpr UInt64 kLargest = std::is_same_v<T, int> ? 0x7FFFFFFF : 0xFFFFFFFF;
    if (at - begin < kDigitsLookbehind) {
        return at;
    }
    while (end - at > kDigitsLookahead) {
        const bool negative = *at == u'-';
        const char16_t* const digits = at + (negative ? 1 : 0);
        const DigitRun run = TakeDigits(digits);
        if (run.count - 1 >= DigitRun::kMostDigits || run.value > (negative ? kLargestNegative : kLargest) ||
            (*digits == u'0' && run.count > 1) || digits[run.count] != u',') {
            break;
        }
        const auto value = static_cast<Int64>(run.value);
        values.push_back(static_cast<T>(negative ? -value : value));
        at = digits + run.count + 1;
        at += *at == u' ' ? 1 : 0;
    }
    return at;
}

// Reals of up to seven digits and 14 fraction digits. In columns neighbours are often equal, and spelled equally.
template <class T>
requires std::is_same_v<T, double>
const char16_t* TakeUsualNumbers(const char16_t* at, const char16_t* begin, const char16_t* end,
                                 std::vector<T>& values) {
    static constexpr UInt64 kPowers[] = {
        1u,           10u,           100u,           1000u,           10000u,
        100000u,      1000000u,      10000000u,      100000000u,      1000000000u,
        10000000000u, 100000000000u, 1000000000000u, 10000000000000u, 100000000000000u};
    static_assert(sizeof(kPowers) / sizeof(kPowers[0]) == kExactFractionDigits + 1);
    if (at - begin < kDigitsLookbehind) {
        return at;
    }
    const char16_t* last = at;  // the text of the last real, with the comma behind it
    std::size_t lastSize = 0;
    while (end - at > 2 * kDigitsLookahead) {
        if (lastSize != 0 && std::memcmp(at, last, 4 * sizeof(char16_t)) == 0 &&
            std::memcmp(at, last, lastSize * sizeof(char16_t)) == 0) {
            values.push_back(values.back());
            at += lastSize;
            continue;
        }
        const bool negative = *at == u'-';
        const char16_t* digits = at + (negative ? 1 : 0);
        const unsigned wholeDigits = CountDigits(digits);
        if (wholeDigits - 1 >= 7 || (*digits == u'0' && wholeDigits > 1)) {
            break;
        }
        digits += wholeDigits;
        UInt64 number = DigitsBefore(digits, wholeDigits);
        unsigned fractionDigits = 0;
        if (*digits == u'.') {
            ++digits;
            const DigitRun fraction = TakeDigits(digits);
            if (fraction.count - 1 >= kExactFractionDigits || wholeDigits + fraction.count > 19) {
                break;
            }
            fractionDigits = fraction.count;
            number = number * kPowers[fractionDigits] + fraction.value;
            digits += fractionDigits;
        }
        if (*digits != u',') {
            break;
        }
        const double magnitude = qvcore::detail::DecimalToReal(number, fractionDigits);
        values.push_back(negative && number != 0 ? -magnitude : magnitude);
        last = at;
        at = digits + 1;
        at += *at == u' ' ? 1 : 0;
        lastSize = static_cast<std::size_t>(at - last);
    }
    return at;
}
