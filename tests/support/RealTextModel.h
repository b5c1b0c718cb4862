// The text of a real number, worked out the slow way: the same steps as the library's rule, one statement each, with
// the C library's own formatting of the digits. Tests compare the library with it on numbers that nobody can list.
#pragma once

#include <array>
#include <cmath>
#include <cstdio>
#include <string>

// digits is 7 for a float, which is widened first, and 14 for a double.
inline std::string RealTextModel(double value, int digits) {
    const std::string infinity = "1" + std::string(37, '0');
    if (std::isnan(value)) {
        return "null";
    }
    if (std::isinf(value)) {
        return value > 0 ? infinity : "-" + infinity;
    }
    double whole = 0;
    const double fraction = std::modf(std::fabs(value), &whole);
    const double scale = digits == 7 ? 1e7 : 1e14;
    double scaled = std::floor(fraction * scale + 0.5);
    if (scaled >= scale) {
        whole += 1;
        scaled -= scale;
    }

    std::array<char, 400> buffer{};
    std::string text;
    if (value < 0 && (whole != 0 || scaled != 0)) {
        text += "-";
    }
    std::snprintf(buffer.data(), buffer.size(), "%.0f", whole);
    text += buffer.data();
    if (scaled == 0) {
        return text;
    }
    std::snprintf(buffer.data(), buffer.size(), "%0*.0f", digits, scaled);  // with leading zeros
    std::string decimals = buffer.data();
    while (decimals.back() == '0') {
        decimals.pop_back();
    }
    return text + "." + decimals;
}
