// The numbers of a text, one after the other. Included by DirectReader.h.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

#include <qvcore/DecimalReal.h>
#include <qvcore/IntegerTypes.h>

#include "main/json/JSONNumbers.h"
#include "main/json/direct/DirectDigits.h"

// 10 to as many digits as may stand behind a point.
inline constexpr UInt64 kFractionPowers[] = {
    1u,         10u,         100u,         1000u,         10000u,         100000u,         1000000u,        10000000u,
    100000000u, 1000000000u, 10000000000u, 100000000000u, 1000000000000u, 10000000000000u, 100000000000000u};
static_assert(sizeof(kFractionPowers) / sizeof(kFractionPowers[0]) == kExactFractionDigits + 1);

// Reads tokens of the JSON grammar for numbers, from at on, and tells what they stand for by the rules of the long way.
// Each operation answers the unit behind the token; null, with nothing said about value, when the long way is to take
// it: a token that is none, too many digits, an exponent. What follows the token is not looked at, but for that it does
// not belong to it.
class DirectNumberReader {
public:
    // Requires: the text ends with a unit that is no part of a number, at end.
    DirectNumberReader(const char16_t* begin, const char16_t* end) noexcept : m_begin(begin), m_end(end) {}

    // An integer, as it travels (see TravellingInteger).
    const char16_t* TakeInteger(const char16_t* at, Int64& value) const noexcept;

    // An integer as it travels, or a real as its 14-digit text gives it; never a negative zero.
    const char16_t* TakeReal(const char16_t* at, double& value) const noexcept;

private:
    struct Parts;

    // Tokens of up to so many digits, before a point, are the usual ones: they travel as they are.
    static constexpr unsigned kUsualDigits = 7;

    static bool IsExponent(char16_t unit) noexcept { return (unit | 0x20) == u'e'; }
    bool HasRoom(const char16_t* at) const noexcept {
        return m_end - at >= kDigitsLookahead && at - m_begin >= kDigitsLookbehind;
    }

    // All others.
    const char16_t* TakeLongInteger(const char16_t* at, Int64& value) const noexcept;
    const char16_t* TakeLongReal(const char16_t* at, double& value) const noexcept;
    const char16_t* TakeParts(const char16_t* at, Parts& parts) const noexcept;

    const char16_t* m_begin;
    const char16_t* m_end;
};

inline const char16_t* DirectNumberReader::TakeInteger(const char16_t* at, Int64& value) const noexcept {
    const bool negative = *at == u'-';
    const char16_t* const digits = at + (negative ? 1 : 0);
    if (!HasRoom(digits)) [[unlikely]] {
        return TakeLongInteger(at, value);
    }
    const unsigned count = CountDigits(digits);
    const char16_t* const end = digits + count;
    if (count - 1 >= kUsualDigits || (*digits == u'0' && count > 1) || *end == u'.' || IsExponent(*end)) [[unlikely]] {
        return TakeLongInteger(at, value);
    }
    const auto magnitude = static_cast<Int64>(DigitsBefore(end, count));
    value = negative ? -magnitude : magnitude;
    return end;
}

inline const char16_t* DirectNumberReader::TakeReal(const char16_t* at, double& value) const noexcept {
    const bool negative = *at == u'-';
    const char16_t* const digits = at + (negative ? 1 : 0);
    if (!HasRoom(digits)) [[unlikely]] {
        return TakeLongReal(at, value);
    }
#if defined(__SSE2__)
    // Most reals are short.
    const unsigned others = OthersThanDigits(digits);
    const auto wholeDigits = static_cast<unsigned>(std::countr_zero(others));
    const auto units = static_cast<unsigned>(std::countr_zero((others & (others - 1)) | 0x20000u));
    if (units - 3 <= 5 && wholeDigits - 1 < units - 2 && digits[wholeDigits] == u'.' &&
        (*digits != u'0' || wholeDigits == 1)) [[likely]] {
        const unsigned fractionDigits = units - wholeDigits - 1;
        const UInt64 number = DigitsWithPointBefore(digits + units, units, fractionDigits);
        const double magnitude =
            static_cast<double>(static_cast<Int64>(number)) / qvcore::detail::kRealPowersOfTen[fractionDigits];
        value = negative && number != 0 ? -magnitude : magnitude;
        return IsExponent(digits[units]) ? nullptr : digits + units;
    }
#else
    const unsigned wholeDigits = CountDigits(digits);
#endif
    const char16_t* const fraction = digits + wholeDigits + 1;
    if (wholeDigits - 1 >= kUsualDigits || (*digits == u'0' && wholeDigits > 1)) [[unlikely]] {
        return TakeLongReal(at, value);
    }
    UInt64 number = DigitsBefore(fraction - 1, wholeDigits);
    if (fraction[-1] != u'.') {
        const auto magnitude = static_cast<Int64>(number);
        value = static_cast<double>(negative ? -magnitude : magnitude);
        return IsExponent(fraction[-1]) ? nullptr : fraction - 1;
    }
    unsigned fractionDigits = CountDigits(fraction);
    if (fractionDigits < 8) {
        if (fractionDigits == 0) [[unlikely]] {
            return nullptr;
        }
        number = number * kFractionPowers[fractionDigits] + DigitsBefore(fraction + fractionDigits, fractionDigits);
    } else {
        const unsigned more = CountDigits(fraction + 8);
        fractionDigits += more;
        if (fractionDigits > kExactFractionDigits || wholeDigits + fractionDigits > qvcore::detail::kLargestFraction)
            [[unlikely]] {
            return nullptr;
        }
        number = (number * 100000000 + DigitsBefore(fraction + 8, 8)) * kFractionPowers[more] +
                 DigitsBefore(fraction + fractionDigits, more);
    }
    const char16_t* const end = fraction + fractionDigits;
    const double magnitude = qvcore::detail::DecimalToReal(number, fractionDigits);
    value = negative && number != 0 ? -magnitude : magnitude;
    return IsExponent(*end) ? nullptr : end;
}
