// The text of a real number once more, in integers alone: each step of the rule as exact arithmetic that is then
// rounded to 53 bits, half to even, as IEEE 754 says a double operation does. No floating-point operation is used, so
// that neither the compiler nor the processor has a say.
#pragma once

#include <bit>
#include <cstdint>
#include <string>

#include <boost/multiprecision/cpp_int.hpp>

namespace real_text_exact {

__extension__ typedef unsigned __int128 Wide;
using Big = boost::multiprecision::cpp_int;

// mantissa * 2^exponent
struct Binary {
    Wide mantissa = 0;
    int exponent = 0;
};

inline int BitsOf(Wide value) {
    const auto high = static_cast<std::uint64_t>(value >> 64);
    return high != 0 ? 128 - std::countl_zero(high) : 64 - std::countl_zero(static_cast<std::uint64_t>(value));
}

inline Binary RoundedTo53Bits(Binary number) {
    const int excess = BitsOf(number.mantissa) - 53;
    if (excess <= 0) {
        return number;
    }
    const Wide half = Wide{1} << (excess - 1);
    const Wide rest = number.mantissa & ((half << 1) - 1);
    number.mantissa >>= excess;
    number.exponent += excess;
    if (rest > half || (rest == half && (number.mantissa & 1) != 0)) {
        ++number.mantissa;
    }
    return number;
}

// A finite number taken apart, and its digits by the rule.
struct Digits {
    bool negative = false;
    std::uint64_t mantissa = 0;  // the magnitude is mantissa * 2^exponent
    int exponent = 0;
    std::uint64_t whole = 0;     // of numbers below 2^53
    std::uint64_t fraction = 0;  // in units of the last digit
};

inline constexpr std::uint64_t ScaleOf(int digits) { return digits == 7 ? 10000000 : 100000000000000; }

// digits is 7 for a float, which has been widened, and 14 for a double.
inline Digits DigitsOf(double value, int digits) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const int biased = static_cast<int>((bits >> 52) & 0x7FF);
    const std::uint64_t low = bits & ((std::uint64_t{1} << 52) - 1);
    Digits result;
    result.negative = (bits >> 63) != 0;
    result.mantissa = biased == 0 ? low : low + (std::uint64_t{1} << 52);
    result.exponent = biased == 0 ? -1074 : biased - 1075;
    if (result.exponent >= 0) {
        return result;  // whole
    }
    const int places = -result.exponent;
    const bool hasWhole = places <= 52;
    result.whole = hasWhole ? result.mantissa >> places : 0;
    const std::uint64_t fraction = hasWhole ? result.mantissa & ((std::uint64_t{1} << places) - 1) : result.mantissa;

    // Scale the fraction; add one half; take the floor.
    const Binary scaled = RoundedTo53Bits({Wide{fraction} * ScaleOf(digits), -places});
    constexpr int kNegligible = -100;  // far below one half: the floor of the sum is 0
    if (scaled.exponent >= kNegligible) {
        const Wide oneHalf = Wide{1} << (-1 - scaled.exponent);
        const Binary sum = RoundedTo53Bits({scaled.mantissa + oneHalf, scaled.exponent});
        result.fraction = static_cast<std::uint64_t>(sum.mantissa >> -sum.exponent);
    }
    if (result.fraction >= ScaleOf(digits)) {
        result.whole += 1;
        result.fraction -= ScaleOf(digits);
    }
    return result;
}

// Twice the distance between the digits and the number itself, in units of the last digit times 2^places, and what one
// such unit is; both exact. (What lies beyond the point is compared; numbers without anything there are themselves.)
struct Distance {
    Big twice;
    Big unit;
    bool above = false;  // whether the digits are more than the number
};
inline Distance DistanceOf(const Digits& digits, int fractionDigits) {
    const int places = -digits.exponent;
    const Big number = Big(digits.mantissa) * ScaleOf(fractionDigits);
    const Big written = (Big(digits.whole) * ScaleOf(fractionDigits) + digits.fraction) << places;
    const bool above = written > number;
    return {(above ? Big(written - number) : Big(number - written)) * 2, Big(1) << places, above};
}

// Whether the digits are those that exact decimal arithmetic gives. For a float they are the number rounded half up, by
// magnitude, to its seven digits. For a double, two steps are rounded, by at most 2^-7 units of the last digit each; so
// the number and its digits are no more than one half and 2^-6 of a unit apart.
inline bool AreExact(const Digits& digits, int fractionDigits) {
    if (digits.exponent >= 0) {
        return digits.fraction == 0;
    }
    const Distance distance = DistanceOf(digits, fractionDigits);
    if (fractionDigits == 7) {
        return distance.above ? distance.twice <= distance.unit : distance.twice < distance.unit;
    }
    return distance.twice * 64 <= distance.unit * 66;
}

inline std::string WholeText(const Digits& digits) {
    return digits.exponent < 0 ? std::to_string(digits.whole) : Big(Big(digits.mantissa) << digits.exponent).str();
}

inline std::string TextOf(double value, int fractionDigits) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    if (((bits >> 52) & 0x7FF) == 0x7FF) {
        const bool isInfinity = (bits << 12) == 0;
        return !isInfinity ? "null" : ((bits >> 63) != 0 ? "-1" : "1") + std::string(37, '0');
    }
    const Digits digits = DigitsOf(value, fractionDigits);
    std::string text = WholeText(digits);
    if (digits.negative && (text != "0" || digits.fraction != 0)) {
        text.insert(text.begin(), '-');
    }
    if (digits.fraction != 0) {
        std::string fraction = std::to_string(digits.fraction);
        fraction.insert(fraction.begin(), static_cast<std::size_t>(fractionDigits) - fraction.size(), '0');
        text += "." + fraction.substr(0, fraction.find_last_not_of('0') + 1);
    }
    return text;
}

}  // namespace real_text_exact
