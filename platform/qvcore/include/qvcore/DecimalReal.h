// Decimal numbers of few digits to reals, for readers that have the digits at hand. Not for callers.
//
// Exceptions: never throws.
//
// Threads: both functions may run at once on several threads.
#pragma once

#include <qvcore/Export.h>
#include <qvcore/IntegerTypes.h>

namespace qvcore::detail {

inline constexpr unsigned kLargestFraction = 19;

inline constexpr double kRealPowersOfTen[kLargestFraction + 1] = {
    1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};

// digits * 10^-fraction, rounded correctly, for digits of any size.
QVCORE_API double DivideByPowerOfTen(UInt64 digits, unsigned fraction) noexcept;

// digits * 10^-fraction, rounded correctly (IEEE 754, nearest even). Requires: fraction <= kLargestFraction.
//
// Where both numbers are exact doubles one division rounds once (Clinger, "How to Read Floating Point Numbers
// Accurately", PLDI 1990).
inline double DecimalToReal(UInt64 digits, unsigned fraction) noexcept {
    constexpr UInt64 kExactIntegers = UInt64{1} << 53;
    return digits <= kExactIntegers ? static_cast<double>(static_cast<Int64>(digits)) / kRealPowersOfTen[fraction]
                                    : DivideByPowerOfTen(digits, fraction);
}

}  // namespace qvcore::detail
