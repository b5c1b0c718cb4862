#include <qvcore/TUUID.h>

#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <qvsys/QuorvelException.h>

#include "TextIntegers.h"

namespace {

// Where the groups of digits stand: 8-4-4-4-12.
constexpr std::size_t kDashes[] = {8, 13, 18, 23};

// Two digits for each byte, the higher one first.
struct DigitPairs {
    char16_t digits[256][2];
};

constexpr DigitPairs kDigitPairs = [] {
    constexpr char16_t kDigits[] = u"0123456789abcdef";
    DigitPairs pairs{};
    for (std::size_t byte = 0; byte < 256; ++byte) {
        pairs.digits[byte][0] = kDigits[byte >> 4];
        pairs.digits[byte][1] = kDigits[byte & 15];
    }
    return pairs;
}();

#if defined(__SSE2__)

// Eight digits to four bytes; wrong collects what is no digit.
std::uint32_t TakeDigits(__m128i units, __m128i& wrong) noexcept {
    const __m128i lower = _mm_or_si128(units, _mm_set1_epi16(0x20));
    const __m128i isLetter = _mm_cmpgt_epi16(lower, _mm_set1_epi16(u'9'));
    const __m128i base = _mm_or_si128(_mm_and_si128(isLetter, _mm_set1_epi16(u'a' - 10)),
                                      _mm_andnot_si128(isLetter, _mm_set1_epi16(u'0')));
    const __m128i digits =
        _mm_sub_epi16(_mm_or_si128(_mm_and_si128(isLetter, lower), _mm_andnot_si128(isLetter, units)), base);
    const __m128i letterTooLow = _mm_and_si128(isLetter, _mm_cmplt_epi16(digits, _mm_set1_epi16(10)));
    const __m128i outside = _mm_subs_epu16(digits, _mm_set1_epi16(15));
    wrong = _mm_or_si128(wrong, _mm_or_si128(letterTooLow, outside));
    const __m128i bytes = _mm_madd_epi16(digits, _mm_set1_epi32(0x00010010));
    const __m128i packed = _mm_packs_epi32(bytes, bytes);
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_packus_epi16(packed, packed)));
}

bool TakeAllDigits(const char16_t* text, std::uint8_t* bytes) noexcept {
    const auto load = [text](std::size_t at) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + at)); };
    const auto loadHalf = [text](std::size_t at) {
        return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(text + at));
    };
    __m128i wrong = _mm_setzero_si128();
    const std::uint32_t groups[4] = {
        TakeDigits(load(0), wrong),
        TakeDigits(_mm_unpacklo_epi64(loadHalf(9), loadHalf(14)), wrong),
        TakeDigits(_mm_unpacklo_epi64(loadHalf(19), loadHalf(24)), wrong),
        TakeDigits(load(28), wrong),
    };
    std::memcpy(bytes, groups, sizeof(groups));
    return _mm_movemask_epi8(_mm_cmpeq_epi16(wrong, _mm_setzero_si128())) == 0xFFFF;
}

#else

bool TakeAllDigits(const char16_t* text, std::uint8_t* bytes) noexcept {
    bool digitsOnly = true;
    for (std::size_t byte = 0; byte < 16; ++byte) {
        text += *text == u'-' ? 1 : 0;
        const unsigned high = qvcore::detail::DigitValue(*text++);
        const unsigned low = qvcore::detail::DigitValue(*text++);
        digitsOnly = digitsOnly && high < 16 && low < 16;
        bytes[byte] = static_cast<std::uint8_t>(high << 4 | (low & 15));
    }
    return digitsOnly;
}

#endif

}  // namespace

bool TUUID::TryParse(std::u16string_view text, TUUID& uuid) noexcept {
    if (text.size() != kTextUnits) {
        return false;
    }
    for (const std::size_t dash : kDashes) {
        if (text[dash] != u'-') {
            return false;
        }
    }
    TUUID parsed;
    if (!TakeAllDigits(text.data(), parsed.m_bytes.data())) {
        return false;
    }
    uuid = parsed;
    return true;
}

TUUID::TUUID(const TString& text) {
    if (!TryParse(text, *this)) {
        throw QuorvelException(u"Malformed UUID: " + text);
    }
}

void TUUID::WriteText(char16_t* to) const noexcept {
    for (std::size_t byte = 0; byte < m_bytes.size(); ++byte) {
        if (byte == 4 || byte == 6 || byte == 8 || byte == 10) {
            *to++ = u'-';
        }
        std::memcpy(to, kDigitPairs.digits[m_bytes[byte]], sizeof(kDigitPairs.digits[0]));
        to += 2;
    }
}

TString TUUID::ToString(int format) const {
    if (format != 0) {
        throw QuorvelException(u"Unknown UUID format: " + TString::number(format));
    }
    char16_t text[kTextUnits];
    WriteText(text);
    return std::u16string_view(text, kTextUnits);
}
