// Decimal digits in a text, eight units at a time. Included by the direct readers.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include <qvcore/IntegerTypes.h>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// A reader of digits that may look at a whole block from where it stands, and at one that ends where it stands: the
// text goes on for kDigitsLookahead units at least, and for as many before.
inline constexpr std::ptrdiff_t kDigitsLookahead = 24;
inline constexpr std::ptrdiff_t kDigitsLookbehind = 8;

#if defined(__SSE2__)

// All bits of each of the eight units from at on that is a digit.
inline __m128i DigitsAt(const char16_t* at) {
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    const __m128i values = _mm_sub_epi16(units, _mm_set1_epi16(u'0'));
    return _mm_cmpeq_epi16(_mm_subs_epu16(values, _mm_set1_epi16(9)), _mm_setzero_si128());
}

// How many of the eight units from at on are digits, up to the first that is not.
inline unsigned CountDigits(const char16_t* at) {
    const auto mask = static_cast<unsigned>(_mm_movemask_epi8(DigitsAt(at))) ^ 0x1FFFFu;
    return static_cast<unsigned>(std::countr_zero(mask)) / 2;
}

// One bit for each of the sixteen units from at on that is no digit, the first unit's lowest, and one behind them.
inline unsigned OthersThanDigits(const char16_t* at) {
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(DigitsAt(at), DigitsAt(at + 8)))) ^ 0x1FFFFu;
}

// The last count units before end as digits, zeros in front of them; count is at most 8.
inline __m128i DigitLanes(const char16_t* end, unsigned count) {
    alignas(16) static constexpr std::uint16_t kMasks[16] = {
        0, 0, 0, 0, 0, 0, 0, 0, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF};
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(end - 8));
    const __m128i mask = _mm_loadu_si128(reinterpret_cast<const __m128i*>(kMasks + count));
    return _mm_and_si128(_mm_sub_epi16(units, _mm_set1_epi16(u'0')), mask);
}

inline std::uint32_t NumberOfLanes(__m128i digits) {
    // Pairs to numbers below 100, these to numbers below 10000.
    const __m128i pairs = _mm_madd_epi16(digits, _mm_set1_epi32(0x0001000A));
    const __m128i packed = _mm_packs_epi32(pairs, pairs);
    const auto fours = static_cast<UInt64>(_mm_cvtsi128_si64(_mm_madd_epi16(packed, _mm_set1_epi32(0x00010064))));
    return static_cast<std::uint32_t>(fours) * 10000 + static_cast<std::uint32_t>(fours >> 32);
}

// The number that the last count digits before end spell; count is at most 8.
inline std::uint32_t DigitsBefore(const char16_t* end, unsigned count) { return NumberOfLanes(DigitLanes(end, count)); }

// The digits of the last units before end, with a point among them, as one number; fraction of them are behind the
// point. There are at least one before it and one behind it, and eight units at the most.
//
// Taken as a digit 0, the point makes the digits before it count ten times too much; these are what a division leaves.
inline std::uint32_t DigitsWithPointBefore(const char16_t* end, unsigned units, unsigned fraction) {
    constexpr std::size_t kMost = 7;
    static constexpr auto kReciprocals = [] {  // of ten times the powers, upwards, with 64 bits
        std::array<UInt64, kMost> reciprocals{};
        UInt64 power = 10;
        for (UInt64& reciprocal : reciprocals) {
            reciprocal = static_cast<UInt64>(-1) / power + 1;
            power *= 10;
        }
        return reciprocals;
    }();
    static constexpr std::uint32_t kExcess[kMost] = {9, 90, 900, 9000, 90000, 900000, 9000000};
    const __m128i lanes = _mm_max_epi16(DigitLanes(end, units), _mm_setzero_si128());
    const std::uint32_t number = NumberOfLanes(lanes);
    __extension__ using Product = unsigned __int128;
    const auto whole = static_cast<std::uint32_t>((Product{number} * kReciprocals[fraction]) >> 64);
    return number - whole * kExcess[fraction];
}

// The same for units that may be no digits, which it answers with false.
inline bool TakeDigitsBefore(const char16_t* end, unsigned count, std::uint32_t& value) {
    const __m128i digits = DigitLanes(end, count);
    value = NumberOfLanes(digits);
    const __m128i beyond = _mm_subs_epu16(digits, _mm_set1_epi16(9));
    return _mm_movemask_epi8(_mm_cmpeq_epi16(beyond, _mm_setzero_si128())) == 0xFFFF;
}

#else

inline unsigned CountDigits(const char16_t* at) {
    unsigned count = 0;
    while (count < 8 && at[count] >= u'0' && at[count] <= u'9') {
        ++count;
    }
    return count;
}

inline std::uint32_t DigitsBefore(const char16_t* end, unsigned count) {
    std::uint32_t value = 0;
    for (const char16_t* at = end - count; at != end; ++at) {
        value = value * 10 + (*at - u'0');
    }
    return value;
}

inline bool TakeDigitsBefore(const char16_t* end, unsigned count, std::uint32_t& value) {
    value = DigitsBefore(end, count);
    return CountDigits(end - count) >= count;
}

#endif

// Where commas and points stand among 64 units, the first one's bit lowest.
struct Separators {
    static constexpr std::ptrdiff_t kUnits = 64;

    UInt64 commas;
    UInt64 points;

    static Separators At(const char16_t* at) {
        Separators separators{0, 0};
#if defined(__SSE2__)
        for (unsigned i = 0; i < kUnits; i += 16) {
            const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + i));
            const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + i + 8));
            separators.commas |= Equal(low, high, u',') << i;
            separators.points |= Equal(low, high, u'.') << i;
        }
#else
        for (unsigned i = 0; i < kUnits; ++i) {
            separators.commas |= UInt64{at[i] == u','} << i;
            separators.points |= UInt64{at[i] == u'.'} << i;
        }
#endif
        return separators;
    }

private:
#if defined(__SSE2__)
    static UInt64 Equal(__m128i low, __m128i high, char16_t unit) {
        const __m128i units = _mm_set1_epi16(static_cast<short>(unit));
        const __m128i bytes = _mm_packs_epi16(_mm_cmpeq_epi16(low, units), _mm_cmpeq_epi16(high, units));
        return static_cast<UInt64>(_mm_movemask_epi8(bytes));
    }
#endif
};

// Digits from a place on, up to kMostDigits of them.
struct DigitRun {
    static constexpr unsigned kMostDigits = 16;

    UInt64 value;
    unsigned count;  // one more than kMostDigits where more digits follow
};

// Requires: kDigitsLookahead units behind at, kDigitsLookbehind before it.
inline DigitRun TakeDigits(const char16_t* at) {
    constexpr UInt64 kPowers[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};
    const unsigned head = CountDigits(at);
    const UInt64 value = DigitsBefore(at + head, head);
    if (head < 8) [[likely]] {
        return {value, head};
    }
    const unsigned tail = CountDigits(at + 8);
    const unsigned more = tail == 8 && at[16] >= u'0' && at[16] <= u'9' ? 1u : 0u;
    return {value * kPowers[tail] + DigitsBefore(at + 8 + tail, tail), 8 + tail + more};
}

// How many elements a list of numbers has, from its first one at at on; about as many as the text has commas where it
// is not closed, and too few where it holds lists.
inline std::size_t CountElements(const char16_t* at, const char16_t* end) {
    std::size_t commas = 0;
#if defined(__SSE2__)
    constexpr int kBlocks = 0x4000;  // each adds up to one to every 16-bit count
    bool closed = false;
    while (!closed && end - at >= 8) {
        __m128i counts = _mm_setzero_si128();
        for (int block = 0; block < kBlocks && end - at >= 8; ++block, at += 8) {
            const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
            closed = _mm_movemask_epi8(_mm_cmpeq_epi16(units, _mm_set1_epi16(u']'))) != 0;
            if (closed) {
                break;
            }
            counts = _mm_sub_epi16(counts, _mm_cmpeq_epi16(units, _mm_set1_epi16(u',')));
        }
        alignas(16) std::uint16_t lanes[8];
        _mm_store_si128(reinterpret_cast<__m128i*>(lanes), counts);
        for (const std::uint16_t lane : lanes) {
            commas += lane;
        }
    }
#endif
    for (; at != end && *at != u']'; ++at) {
        commas += *at == u',' ? 1 : 0;
    }
    return commas + 1;
}

// Integers of up to seven digits, one after the other, in a piece of a text that is looked at once.
class UsualRun {
public:
    // Units that must follow where the first one stands; it also takes kDigitsLookbehind of them before.
    static constexpr std::ptrdiff_t kLookahead = 32;

    explicit UsualRun(const char16_t* at) noexcept : m_at(at), m_others(OthersAmong(at)) {}

    // Takes an integer as it travels; false, with the place lost, for any other.
    [[gnu::always_inline]] bool TakeInteger(Int64& value) noexcept {
        const bool negative = *m_at == u'-';
        Skip(negative ? 1 : 0);
        const auto count = static_cast<unsigned>(std::countr_zero(m_others));
        if (count - 1 >= kMostDigits || (*m_at == u'0' && count > 1)) [[unlikely]] {
            return false;
        }
        Skip(count);
        const auto magnitude = static_cast<Int64>(DigitsBefore(m_at, count));
        value = negative ? -magnitude : magnitude;
        return true;
    }

    // Takes unit if it stands here.
    bool TakeUnit(char16_t unit) noexcept {
        const bool stands = *m_at == unit;
        Skip(stands ? 1 : 0);
        return stands;
    }

    const char16_t* At() const noexcept { return m_at; }

private:
    static constexpr unsigned kMostDigits = 7;

    // One bit for each unit that is no digit, the first one's lowest, and one behind them.
    static UInt64 OthersAmong(const char16_t* at) noexcept {
        UInt64 others = UInt64{1} << kLookahead;
#if defined(__SSE2__)
        others |= (OthersThanDigits(at) & 0xFFFFu) | UInt64{OthersThanDigits(at + 16) & 0xFFFFu} << 16;
#else
        for (int i = 0; i < kLookahead; ++i) {
            others |= UInt64{at[i] < u'0' || at[i] > u'9'} << i;
        }
#endif
        return others;
    }

    void Skip(unsigned units) noexcept {
        m_at += units;
        m_others >>= units;
    }

    const char16_t* m_at;
    UInt64 m_others;
};
