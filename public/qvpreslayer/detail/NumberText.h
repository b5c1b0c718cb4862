// Numbers into UTF-16, in place. Not for callers.
//
// Each function writes at to and answers the end of what it wrote. The caller provides the room that kLongest... tells.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <qvcore/IntegerTypes.h>

#include <qvpreslayer/Export.h>

namespace qvpreslayer::detail {

// Room for any integer, and for what is written beyond its end and taken back.
inline constexpr std::size_t kLongestInteger = 24;

// Room for any real in fixed-point form: sign, 309 digits, point, fraction, and the same.
inline constexpr std::size_t kLongestReal = 352;

// The four digits of every number below 10000; one entry more, since short numbers read past their own.
struct FourDigitTable {
    char16_t digits[10001][4];
};
QVPRESLAYER_API extern const FourDigitTable kFourDigitTable;

// A number below 10000, without leading zeros. Writes four units whatever the length.
inline char16_t* WriteUpToFourDigits(char16_t* to, std::uint32_t value) {
    const std::size_t digits = 1 + std::size_t{value > 9} + std::size_t{value > 99} + std::size_t{value > 999};
    std::memcpy(to, &kFourDigitTable.digits[value][0] + (4 - digits), 4 * sizeof(char16_t));
    return to + digits;
}

// A number below 10000 as four digits.
inline char16_t* WriteFourDigits(char16_t* to, std::uint32_t value) {
    std::memcpy(to, kFourDigitTable.digits[value], 4 * sizeof(char16_t));
    return to + 4;
}

#if defined(__SSE2__)

// The digits of two numbers below 10000, as numbers, the first one lowest; each of the numbers, times four, stands in
// four lanes. Each lane is divided by its power of ten through multiplications that are exact below 10000; a tenth of
// it, taken from its neighbour, leaves the digit.
inline __m128i DigitsOfLanes(__m128i lanes) {
    const __m128i divided =
        _mm_mulhi_epu16(lanes, _mm_setr_epi16(8389, 5243, 13108, -32768, 8389, 5243, 13108, -32768));
    const __m128i quotients =
        _mm_mulhi_epu16(divided, _mm_setr_epi16(1 << 7, 1 << 11, 1 << 13, -32768, 1 << 7, 1 << 11, 1 << 13, -32768));
    // What the first lanes are multiplied by does not matter; factors that differ keep the compiler from spelling one
    // multiplication as four additions and shifts.
    return _mm_add_epi16(
        quotients, _mm_mullo_epi16(_mm_slli_epi64(quotients, 16), _mm_setr_epi16(0, -10, -10, -10, 0, -10, -10, -10)));
}

// The eight digits of a number below 10^8, as numbers, the first one lowest.
inline __m128i SplitEightDigits(std::uint32_t value) {
    const std::uint32_t high = value / 10000;
    const std::uint32_t low = value - high * 10000;
    const __m128i halves =
        _mm_unpacklo_epi64(_mm_cvtsi32_si128(static_cast<int>(high)), _mm_cvtsi32_si128(static_cast<int>(low)));
    return DigitsOfLanes(_mm_shufflelo_epi16(_mm_shufflehi_epi16(_mm_slli_epi64(halves, 2), 0), 0));
}

inline void StoreDigits(char16_t* to, __m128i digits) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_add_epi16(digits, _mm_set1_epi16(u'0')));
}

// A number below 10^8 as eight digits.
inline char16_t* WriteEightDigits(char16_t* to, std::uint32_t value) {
    StoreDigits(to, SplitEightDigits(value));
    return to + 8;
}

#else

inline char16_t* WriteEightDigits(char16_t* to, std::uint32_t value) {
    return WriteFourDigits(WriteFourDigits(to, value / 10000), value % 10000);
}

#endif

// In place everywhere: lists of integers take a quarter longer with a call for each.
[[gnu::always_inline]] inline char16_t* WriteInteger(char16_t* to, std::uint32_t value) {
    if (value < 10000) {
        return WriteUpToFourDigits(to, value);
    }
    if (value < 100000000) {
        return WriteFourDigits(WriteUpToFourDigits(to, value / 10000), value % 10000);
    }
    return WriteEightDigits(WriteUpToFourDigits(to, value / 100000000), value % 100000000);
}

inline char16_t* WriteInteger(char16_t* to, UInt64 value) {
    if (value <= 0xFFFFFFFF) {
        return WriteInteger(to, static_cast<std::uint32_t>(value));
    }
    constexpr UInt64 kTenTo8 = 100000000;
    const UInt64 head = value / kTenTo8;  // at most 184467440737
    if (head >= kTenTo8) {
        to = WriteInteger(to, static_cast<std::uint32_t>(head / kTenTo8));
        to = WriteEightDigits(to, static_cast<std::uint32_t>(head % kTenTo8));
    } else {
        to = WriteInteger(to, static_cast<std::uint32_t>(head));
    }
    return WriteEightDigits(to, static_cast<std::uint32_t>(value % kTenTo8));
}

inline char16_t* WriteInteger(char16_t* to, std::int32_t value) {
    // Without a branch: signs are hard to foretell.
    const std::uint32_t negative = value < 0 ? 1 : 0;
    *to = u'-';
    return WriteInteger(to + negative, (static_cast<std::uint32_t>(value) ^ (0 - negative)) + negative);
}

inline char16_t* WriteInteger(char16_t* to, Int64 value) {
    const UInt64 negative = value < 0 ? 1 : 0;
    *to = u'-';
    return WriteInteger(to + negative, (static_cast<UInt64>(value) ^ (0 - negative)) + negative);
}

// Reals: fixed-point decimal, never an exponent:
//
//   "null"                            a NaN
//   ["-"] "1" and 37 times "0"        an infinity: a plain number, so that every reader takes it
//   ["-"] digits ["." digits]         anything else: all integer digits, then up to so many digits of the
//                                     fraction, rounded half up, without zeros at the end
//
// The rounding is that of IEEE 754 double arithmetic, step by step: the fraction is scaled by a power of ten, one half
// is added, the floor is taken. "-" stands only before a text with a digit other than 0.
QVPRESLAYER_API char16_t* WriteReal(char16_t* to, double value);  // 14 fraction digits
QVPRESLAYER_API char16_t* WriteReal(char16_t* to, float value);   // 7 fraction digits

}  // namespace qvpreslayer::detail
