// The real nearest to a decimal number, worked out in integers: what correct rounding means (IEEE 754, half to even).
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include <boost/multiprecision/cpp_int.hpp>

namespace nearest_real {

using Big = boost::multiprecision::cpp_int;

inline Big PowerOfTen(int exponent) { return boost::multiprecision::pow(Big(10), static_cast<unsigned>(exponent)); }
inline int BitsOf(const Big& value) { return value == 0 ? 0 : static_cast<int>(msb(value)) + 1; }

// digits * 10^exponent; an infinity beyond the range of T.
template <class T>
T Nearest(const Big& digits, int exponent) {
    constexpr int kBits = std::numeric_limits<T>::digits;
    constexpr int kLeast = std::numeric_limits<T>::min_exponent - kBits;  // 2^kLeast is the smallest number
    if (digits == 0) {
        return 0;
    }
    Big numerator = exponent > 0 ? Big(digits * PowerOfTen(exponent)) : digits;
    Big denominator = exponent < 0 ? PowerOfTen(-exponent) : Big(1);
    // The number is q * 2^power, where q has as many bits as T keeps, or fewer at the lower end of its range.
    int power = std::max(BitsOf(numerator) - BitsOf(denominator) - kBits, kLeast);
    const auto divide = [&](Big& quotient, Big& rest, Big& divisor) {
        divisor = power > 0 ? Big(denominator << power) : denominator;
        const Big dividend = power < 0 ? Big(numerator << -power) : numerator;
        boost::multiprecision::divide_qr(dividend, divisor, quotient, rest);
    };
    Big quotient;
    Big rest;
    Big divisor;
    divide(quotient, rest, divisor);
    if (BitsOf(quotient) > kBits) {
        ++power;
        divide(quotient, rest, divisor);
    }
    const Big twice = rest * 2;
    if (twice > divisor || (twice == divisor && (quotient & 1) != 0)) {
        ++quotient;
    }
    return std::ldexp(static_cast<T>(static_cast<std::uint64_t>(quotient)), power);
}

// The same for a text of an optional sign, digits with an optional point, and an optional exponent.
template <class T>
T NearestTo(std::string_view text) {
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) {
        text.remove_prefix(1);
    }
    int exponent = 0;
    if (const std::size_t e = text.find_first_of("eE"); e != std::string_view::npos) {
        exponent = std::stoi(std::string(text.substr(e + 1)));
        text = text.substr(0, e);
    }
    std::string digits(text);
    if (const std::size_t point = digits.find('.'); point != std::string::npos) {
        exponent -= static_cast<int>(digits.size() - point - 1);
        digits.erase(point, 1);
    }
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));  // a leading zero would mean octal
    const T magnitude = Nearest<T>(digits.empty() ? Big(0) : Big(digits), exponent);
    return negative ? -magnitude : magnitude;
}

}  // namespace nearest_real
