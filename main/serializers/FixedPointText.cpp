#include "main/serializers/FixedPointText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <system_error>

#include <qvsys/QuorvelException.h>

namespace {

constexpr int kMaxFractionDigits = 16;

constexpr std::array<double, kMaxFractionDigits + 1> kPowersOfTen = {1e0, 1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7, 1e8,
                                                                     1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16};

// Sign, the 309 digits of the largest double, point, fraction.
constexpr std::size_t kLongestText = 1 + 309 + 1 + kMaxFractionDigits;

// Below this a double's integer part fits an unsigned 64-bit integer.
constexpr double kTwoTo64 = 18446744073709551616.0;

struct Buffer {
    std::array<char, kLongestText + 8> text;
    char* end = text.data();

    char* Limit() { return text.data() + text.size(); }

    void Take(const std::to_chars_result& result) {
        if (result.ec != std::errc()) {
            throw QuorvelException(u"Data serialization error");
        }
        end = result.ptr;
    }

    void WriteInteger(double integer) {
        if (integer < kTwoTo64) {
            Take(std::to_chars(end, Limit(), static_cast<std::uint64_t>(integer)));
        } else {
            Take(std::to_chars(end, Limit(), integer, std::chars_format::fixed, 0));
        }
    }

    // A non-zero fraction of that many digits, with its leading zeros and without those at the end.
    void WriteFraction(std::uint64_t fraction, int digits) {
        while (fraction % 10 == 0) {
            fraction /= 10;
            --digits;
        }
        *end++ = '.';
        for (char* digit = end + digits; digit != end; fraction /= 10) {
            *--digit = static_cast<char>('0' + fraction % 10);
        }
        end += digits;
    }

    TString Text() const {
        TString result;
        result.resize(static_cast<std::size_t>(end - text.data()));
        std::copy(text.data(), static_cast<const char*>(end), result.mutable_data());
        return result;
    }
};

TString InfinityText(bool negative) {
    TString text = negative ? u"-1" : u"1";
    text.append(37, u'0');
    return text;
}

}  // namespace

TString FixedPointText(double value, int fractionDigits) {
    if (std::isnan(value)) {
        return u"null";
    }
    if (std::isinf(value)) {
        return InfinityText(value < 0);
    }
    const double scale = kPowersOfTen[static_cast<std::size_t>(fractionDigits)];
    double integer = 0;
    double fraction = std::floor(std::modf(std::fabs(value), &integer) * scale + 0.5);
    if (fraction >= scale) {
        integer += 1;
        fraction -= scale;
    }
    Buffer buffer;
    if (value < 0 && (integer != 0 || fraction != 0)) {
        *buffer.end++ = '-';
    }
    buffer.WriteInteger(integer);
    if (fraction != 0) {
        buffer.WriteFraction(static_cast<std::uint64_t>(fraction), fractionDigits);
    }
    return buffer.Text();
}
