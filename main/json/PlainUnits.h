// The block classifier of JSON strings: how far a text goes on without anything special. Included by JSONEscaping.cpp
// and JSONParser.cpp.
#pragma once

#include <cstddef>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Whether a unit is none of: control characters (U+0000 to U+001F, U+007F), the quotation mark, the backslash.
inline bool IsPlainUnit(char16_t unit) { return unit > 0x1F && unit != u'"' && unit != u'\\' && unit != 0x7F; }

#if defined(__SSE2__)
// All bits of each of eight units that is not plain.
inline __m128i SpecialLanes(__m128i units) {
    const __m128i control = _mm_cmpeq_epi16(_mm_subs_epu16(units, _mm_set1_epi16(0x1F)), _mm_setzero_si128());
    const __m128i marks =
        _mm_or_si128(_mm_cmpeq_epi16(units, _mm_set1_epi16(u'"')), _mm_cmpeq_epi16(units, _mm_set1_epi16(u'\\')));
    const __m128i del = _mm_cmpeq_epi16(units, _mm_set1_epi16(0x7F));
    return _mm_or_si128(_mm_or_si128(control, marks), del);
}

// One bit for each of sixteen units that is not plain, the first unit's lowest.
inline unsigned SpecialUnits(__m128i first, __m128i second) {
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(SpecialLanes(first), SpecialLanes(second))));
}

// Two bits for each of eight units that is not plain, the first unit's lowest.
inline unsigned SpecialUnits(__m128i units) { return static_cast<unsigned>(_mm_movemask_epi8(SpecialLanes(units))); }
#endif

// The first unit from at on that is not plain, or end. Sixteen units at a time where the machine can, then eight, the
// last ones together with units before at if there are so many from begin on; the loop behind is the rule, and all
// there is elsewhere.
[[gnu::always_inline]] inline const char16_t* SkipPlainUnits([[maybe_unused]] const char16_t* begin, const char16_t* at,
                                                             const char16_t* end) {
#if defined(__SSE2__)
    for (; end - at >= 16; at += 16) {  // most strings end here, in the first steps
        const unsigned mask = SpecialUnits(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at)),
                                           _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 8)));
        if (mask != 0) {
            return at + __builtin_ctz(mask);
        }
    }
    for (; end - at >= 8; at += 8) {
        const unsigned mask = SpecialUnits(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at)));
        if (mask != 0) {
            return at + __builtin_ctz(mask) / 2;
        }
    }
    if (end - begin >= 8) {
        const unsigned mask = SpecialUnits(_mm_loadu_si128(reinterpret_cast<const __m128i*>(end - 8)));
        const unsigned behind = (mask | 0x10000u) >> 2 * (8 - (end - at));
        return at + __builtin_ctz(behind) / 2;
    }
#endif
    while (at != end && IsPlainUnit(*at)) {
        ++at;
    }
    return at;
}

inline const char16_t* SkipPlainUnits(const char16_t* at, const char16_t* end) { return SkipPlainUnits(at, at, end); }
