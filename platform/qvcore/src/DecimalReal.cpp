#include <qvcore/DecimalReal.h>

#include <bit>
#include <cstdint>

namespace qvcore::detail {

namespace {

constexpr UInt64 kPowersOfTen[kLargestFraction + 1] = {1u,
                                                       10u,
                                                       100u,
                                                       1000u,
                                                       10000u,
                                                       100000u,
                                                       1000000u,
                                                       10000000u,
                                                       100000000u,
                                                       1000000000u,
                                                       10000000000u,
                                                       100000000000u,
                                                       1000000000000u,
                                                       10000000000000u,
                                                       100000000000000u,
                                                       1000000000000000u,
                                                       10000000000000000u,
                                                       100000000000000000u,
                                                       1000000000000000000u,
                                                       10000000000000000000u};

}  // namespace

// Integer division with more digits than a double holds, rounded once. The remainder only matters when it decides
// whether the quotient lies half-way between two doubles. Requires: digits != 0.
double DivideByPowerOfTen(UInt64 digits, unsigned fraction) noexcept {
    const UInt64 divisor = kPowersOfTen[fraction];
    const int divisorShift = std::countl_zero(divisor);
    const int digitsShift = std::countl_zero(digits);
    const UInt64 normalDivisor = divisor << divisorShift;
    // Half of the normalised digits, so that the quotient fits 64 bits; it has 63 or 64 of them.
    const UInt64 high = (digits << digitsShift) >> 1;
    const UInt64 low = (digits << digitsShift) << 63;
#if defined(__x86_64__)
    UInt64 quotient = 0;
    UInt64 remainder = 0;
    __asm__("divq %[divisor]"
            : "=a"(quotient), "=d"(remainder)
            : [divisor] "r"(normalDivisor), "a"(low), "d"(high)
            : "cc");
#else
    __extension__ using Wide = unsigned __int128;
    const Wide numerator = static_cast<Wide>(high) << 64 | low;
    auto quotient = static_cast<UInt64>(numerator / normalDivisor);
    const auto remainder = static_cast<UInt64>(numerator % normalDivisor);
#endif
    quotient |= remainder != 0 ? 1u : 0u;  // below the last bit that rounding looks at
    // The quotient is digits / divisor * 2^(63 + digitsShift - divisorShift); converting rounds it to nearest even.
    const int exponent = divisorShift - digitsShift - 63;
    const auto scale = std::bit_cast<double>(static_cast<UInt64>(1023 + exponent) << 52);
    // 64 bits to a double: through the signed conversion, which is one instruction, with the last bit kept.
    const double rounded = 2 * static_cast<double>(static_cast<Int64>(quotient >> 1 | (quotient & 1)));
    return rounded * scale;
}

}  // namespace qvcore::detail
