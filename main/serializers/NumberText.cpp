#include <qvpreslayer/detail/NumberText.h>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <system_error>

#include <qvsys/QuorvelException.h>

namespace qvpreslayer::detail {

namespace {

// Below this a real's integer part is exact in a 64-bit integer.
constexpr double kTwoTo63 = 9223372036854775808.0;

char16_t* WriteAscii(char16_t* to, const char* begin, const char* end) { return std::copy(begin, end, to); }

// The integer part of a real of any size, every digit of it.
char16_t* WriteWhole(char16_t* to, double whole) {
    std::array<char, kLongestReal> digits;
    const auto [end, error] =
        std::to_chars(digits.data(), digits.data() + digits.size(), whole, std::chars_format::fixed, 0);
    if (error != std::errc()) {
        throw QuorvelException(u"Data serialization error");
    }
    return WriteAscii(to, digits.data(), end);
}

char16_t* WriteSpecial(char16_t* to, double value) {
    if (std::isnan(value)) {
        constexpr char kNull[] = "null";
        return WriteAscii(to, kNull, kNull + 4);
    }
    if (value < 0) {
        *to++ = u'-';
    }
    *to++ = u'1';
    return std::fill_n(to, 37, u'0');
}

char16_t* DropZeros(char16_t* end) {
    while (end[-1] == u'0') {
        --end;
    }
    return end;
}

// The four digits of a number that is not 0, without zeros at the end: most reals have few digits behind the point.
char16_t* WriteUpToFourPlaces(char16_t* to, std::uint32_t value) {
    if constexpr (std::endian::native == std::endian::little) {
        UInt64 digits = 0;
        std::memcpy(&digits, kFourDigitTable.digits[value], sizeof(digits));
        std::memcpy(to, &digits, sizeof(digits));
        constexpr UInt64 kZeros = 0x0030'0030'0030'0030;
        return to + (std::bit_width(digits ^ kZeros) + 15) / 16;
    } else {
        return DropZeros(WriteFourDigits(to, value));
    }
}

#if defined(__SSE2__)

// The sixteen digits of two numbers below 10^8. Both are divided by 10000 at once, and then spread: each digit is
// worked out in a lane of its own, as SplitEightDigits does it.
struct SixteenDigits {
    __m128i first;
    __m128i second;
};
inline SixteenDigits SplitSixteenDigits(std::uint32_t first, std::uint32_t second) {
    const __m128i numbers =
        _mm_unpacklo_epi64(_mm_cvtsi32_si128(static_cast<int>(first)), _mm_cvtsi32_si128(static_cast<int>(second)));
    const __m128i highs = _mm_srli_epi64(_mm_mul_epu32(numbers, _mm_set1_epi64x(0xD1B71759)), 45);
    const __m128i lows = _mm_sub_epi32(numbers, _mm_mul_epu32(highs, _mm_set1_epi64x(10000)));
    const __m128i shifted = _mm_slli_epi16(_mm_or_si128(highs, _mm_slli_epi64(lows, 32)), 2);
    const __m128i twice = _mm_or_si128(shifted, _mm_slli_epi32(shifted, 16));
    return {DigitsOfLanes(_mm_unpacklo_epi32(twice, twice)), DigitsOfLanes(_mm_unpackhi_epi32(twice, twice))};
}

#endif

// A point and the digits of a fraction that is not 0, without zeros at the end.
template <int Digits>
char16_t* WriteFraction(char16_t* to, UInt64 fraction) {
    *to++ = u'.';
    if constexpr (Digits == 14) {
        constexpr UInt64 kTenTo6 = 1000000;
        constexpr UInt64 kTenTo10 = 10000000000;
        if (const UInt64 head = fraction / kTenTo10; head * kTenTo10 == fraction) {
            return WriteUpToFourPlaces(to, static_cast<std::uint32_t>(head));
        }
        const auto high = static_cast<std::uint32_t>(fraction / kTenTo6);       // eight digits
        const auto low = static_cast<std::uint32_t>(fraction % kTenTo6) * 100;  // six, and two zeros
#if defined(__SSE2__)
        const auto [first, second] = SplitSixteenDigits(high, low);
        StoreDigits(to, first);
        StoreDigits(to + 8, second);
        const __m128i zeros =
            _mm_packs_epi16(_mm_cmpeq_epi16(first, _mm_setzero_si128()), _mm_cmpeq_epi16(second, _mm_setzero_si128()));
        const unsigned others = static_cast<unsigned>(_mm_movemask_epi8(zeros)) ^ 0xFFFFu;
        return to + (32 - static_cast<std::size_t>(__builtin_clz(others)));
#else
        return DropZeros(WriteEightDigits(WriteEightDigits(to, high), low));
#endif
    } else {
        static_assert(Digits == 7);
        const auto digits = static_cast<std::uint32_t>(fraction);
        return DropZeros(WriteFourDigits(WriteFourDigits(to, digits / 1000), digits % 1000 * 10));
    }
}

template <int Digits>
constexpr double kScale = Digits == 14 ? 1e14 : 1e7;

template <int Digits>
char16_t* WriteFixedPoint(char16_t* to, double value) {
    const double magnitude = std::fabs(value);
    if (!(magnitude < kTwoTo63)) [[unlikely]] {
        if (!std::isfinite(value)) {
            return WriteSpecial(to, value);
        }
        if (value < 0) {
            *to++ = u'-';
        }
        return WriteWhole(to, magnitude);  // so large a real has no fraction
    }
    auto whole = static_cast<Int64>(magnitude);
    // The difference is exact, as is the product's rounding that of the rule; a positive sum is cut to its floor.
    auto fraction = static_cast<Int64>((magnitude - static_cast<double>(whole)) * kScale<Digits> + 0.5);
    if (fraction >= static_cast<Int64>(kScale<Digits>)) {
        ++whole;
        fraction -= static_cast<Int64>(kScale<Digits>);
    }
    if (value < 0 && (whole | fraction) != 0) {
        *to++ = u'-';
    }
    to = WriteInteger(to, static_cast<UInt64>(whole));
    return fraction == 0 ? to : WriteFraction<Digits>(to, static_cast<UInt64>(fraction));
}

}  // namespace

constinit const FourDigitTable kFourDigitTable = [] {
    FourDigitTable table{};
    for (unsigned value = 0; value < 10000; ++value) {
        table.digits[value][0] = static_cast<char16_t>(u'0' + value / 1000);
        table.digits[value][1] = static_cast<char16_t>(u'0' + value / 100 % 10);
        table.digits[value][2] = static_cast<char16_t>(u'0' + value / 10 % 10);
        table.digits[value][3] = static_cast<char16_t>(u'0' + value % 10);
    }
    return table;
}();

char16_t* WriteReal(char16_t* to, double value) { return WriteFixedPoint<14>(to, value); }

char16_t* WriteReal(char16_t* to, float value) { return WriteFixedPoint<7>(to, static_cast<double>(value)); }

}  // namespace qvpreslayer::detail
