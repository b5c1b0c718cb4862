// Long lists of numbers, in the spelling that they nearly always have. Included by DirectReader.cpp.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
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
#include "main/json/direct/DirectNumberReader.h"

// What stands between values. Documents of programs have little of it.
inline const char16_t* SkipBlanks(const char16_t* at) {
    while (*at <= u' ' && (*at == u' ' || *at == u'\n' || *at == u'\r' || *at == u'\t'))
        [[unlikely]] { ++at; }
    return at;
}

// An element as it stands between two commas, before the second one at end.
struct NumberToken {
    NumberToken(const char16_t* at, const char16_t* behind)
        : negative(*at == u'-'), digits(at + (negative ? 1 : 0)), end(behind) {}

    bool negative;
    const char16_t* digits;
    const char16_t* end;
};

// An integer of up to ten digits that keeps its value when it travels.
template <class T>
bool IsUsual(const NumberToken& token, T& value) {
    constexpr UInt64 kLargestNegative = std::is_signed_v<T> ? 0x7FFFFFFF : 0;
    constexpr UInt64 kLargest = std::is_same_v<T, int> ? 0x7FFFFFFF : 0xFFFFFFFF;
    const auto count = static_cast<unsigned>(token.end - token.digits);
    if (count - 1 >= 10 || (*token.digits == u'0' && count > 1)) {
        return false;
    }
    std::uint32_t tail = 0;
    bool isNumber = TakeDigitsBefore(token.end, std::min(count, 8u), tail);
    UInt64 number = tail;
    if (count > 8) {
        std::uint32_t head = 0;
        isNumber = TakeDigitsBefore(token.end - 8, count - 8, head) && isNumber;
        number += UInt64{head} * 100000000;
    }
    if (!isNumber || number > (token.negative ? kLargestNegative : kLargest)) {
        return false;
    }
    const auto magnitude = static_cast<Int64>(number);
    value = static_cast<T>(token.negative ? -magnitude : magnitude);
    return true;
}

// A real of up to seven digits, and up to 14 more behind its point; point is the token's end where there is none.
inline bool IsUsual(const NumberToken& token, const char16_t* point, double& value) {
    const auto wholeDigits = static_cast<unsigned>(point - token.digits);
    if (wholeDigits - 1 >= 7 || (*token.digits == u'0' && wholeDigits > 1)) {
        return false;
    }
    std::uint32_t part = 0;
    bool isNumber = TakeDigitsBefore(point, wholeDigits, part);
    UInt64 number = part;
    unsigned fractionDigits = 0;
    if (point != token.end) {
        fractionDigits = static_cast<unsigned>(token.end - point) - 1;
        if (fractionDigits - 1 >= kExactFractionDigits || wholeDigits + fractionDigits > 19) {
            return false;
        }
        number *= kFractionPowers[fractionDigits];
        isNumber = TakeDigitsBefore(token.end, std::min(fractionDigits, 8u), part) && isNumber;
        number += part;
        if (fractionDigits > 8) {
            isNumber = TakeDigitsBefore(token.end - 8, fractionDigits - 8, part) && isNumber;
            number += UInt64{part} * 100000000;
        }
    }
    if (!isNumber) {
        return false;
    }
    const double magnitude = qvcore::detail::DecimalToReal(number, fractionDigits);
    value = token.negative && number != 0 ? -magnitude : magnitude;
    return true;
}

// A float from the double that its text gives. False where that does not tell which of two floats is nearer to the text
// itself, or where floats are not normal: there the text has to be read once more.
inline bool NarrowReal(double number, float& value) {
    constexpr auto kBitsBeyond = std::uint64_t{0x1FFFFFFF};
    constexpr auto kHalfway = std::uint64_t{0x10000000};
    const double magnitude = std::fabs(number);
    value = static_cast<float>(number);
    return magnitude == 0 || (magnitude >= static_cast<double>(std::numeric_limits<float>::min()) &&
                              magnitude < static_cast<double>(std::numeric_limits<float>::max()) &&
                              (std::bit_cast<std::uint64_t>(number) & kBitsBeyond) != kHalfway);
}

inline bool IsUsual(const NumberToken& token, const char16_t* point, float& value) {
    double number = 0;
    return IsUsual(token, point, number) && NarrowReal(number, value);
}

// Texts of up to 24 units, compared in blocks that overlap; others count as different. In columns of reals neighbours
// are often equal, and spelled equally.
inline bool IsSameText(const char16_t* left, const char16_t* right, std::size_t size) {
    const auto same = [&](std::size_t at, std::size_t units) {
        return std::memcmp(left + at, right + at, units * sizeof(char16_t)) == 0;
    };
    if (size < 8 || size > 24) {
        return size >= 4 && size < 8 && same(0, 4) && same(size - 4, 4);
    }
    return same(0, 8) && same(size - 8, 8) && same(std::min<std::size_t>(8, size - 8), 8);
}

// After so many equal neighbours there are probably more.
inline constexpr unsigned kManyEquals = 3;

// Takes the last element of a list as often as its text, the size units before at with their comma, stands again from
// at on; answers the place behind.
template <class T>
[[gnu::noinline]] const char16_t* TakeRepeats(const char16_t* at, std::size_t size, const char16_t* end,
                                              std::vector<T>& values) {
    const char16_t* same = at;
    const auto isRepeated = [&](std::size_t units) {
        return std::memcmp(same, same - size, units * sizeof(char16_t)) == 0;
    };
    while (end - same >= 8 && isRepeated(8)) {
        same += 8;
    }
    while (same != end && isRepeated(1)) {
        ++same;
    }
    const std::size_t repeats = static_cast<std::size_t>(same - at) / size;
    values.insert(values.end(), repeats, T(values.back()));
    return at + repeats * size;
}

// Takes elements from at on, and answers where the first one stands that is spelled otherwise than IsUsual has it, or
// stands near an end of the text: what to make of that is for DirectNumberReader to say. begin and end are those of the
// text.
//
// Commas are found for 64 units at once, so that no element has to wait until the one before has been read.
template <class T>
const char16_t* TakeUsualNumbers(const char16_t* at, const char16_t* begin, const char16_t* end,
                                 std::vector<T>& values) {
    if (at - begin < kDigitsLookbehind || *at == u'[') {
        return at;
    }
    [[maybe_unused]] const char16_t* last = at;
    [[maybe_unused]] std::size_t lastSize = 0;
    [[maybe_unused]] unsigned equals = 0;  // neighbours in a row
    while (end - at >= Separators::kUnits) {
        const char16_t* const block = at;
        auto [commas, points] = Separators::At(block);
        if (commas == 0) {
            break;
        }
        for (; commas != 0; commas &= commas - 1) {
            const char16_t* const comma = block + std::countr_zero(commas);
            at = SkipBlanks(at);
            T value{};
            if constexpr (std::is_integral_v<T>) {
                if (!IsUsual(NumberToken(at, comma), value)) {
                    return at;
                }
            } else {
                const char16_t* const point = std::min(comma, block + std::countr_zero(points));
                points &= comma == point ? points : points - 1;
                const auto size = static_cast<std::size_t>(comma - at);
                if (size == lastSize && IsSameText(at, last, size)) {
                    value = values.back();
                    if (++equals == kManyEquals) [[unlikely]] {
                        values.push_back(value);
                        at = TakeRepeats(comma + 1, size + 1, end, values);
                        equals = 0;
                        last = at - (size + 1);
                        break;
                    }
                } else if (!IsUsual(NumberToken(at, comma), point, value)) {
                    return at;
                } else {
                    equals = 0;
                }
                last = at;
                lastSize = size;
            }
            values.push_back(value);
            at = comma + 1;
        }
    }
    return at;
}
