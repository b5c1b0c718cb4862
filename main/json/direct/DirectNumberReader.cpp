#include "main/json/direct/DirectNumberReader.h"

#include <qvcore/DecimalReal.h>

#include "main/json/JSONNumbers.h"
#include "main/json/direct/DirectDigits.h"

// A token up to its exponent, which ends it here.
struct DirectNumberReader::Parts {
    bool negative = false;
    UInt64 whole = 0;
    UInt64 fraction = 0;
    unsigned wholeDigits = 0;
    unsigned fractionDigits = 0;  // 0: an integer
};

namespace {

bool IsDigit(char16_t unit) { return static_cast<char16_t>(unit - u'0') <= 9; }

// As TakeDigits, near the ends of the text: the unit at its end is no digit.
DigitRun TakeFewDigits(const char16_t* at) {
    DigitRun run{0, 0};
    for (; IsDigit(*at) && run.count <= DigitRun::kMostDigits; ++at, ++run.count) {
        run.value = run.count < DigitRun::kMostDigits ? run.value * 10 + (*at - u'0') : run.value;
    }
    return run;
}

}  // namespace

inline const char16_t* DirectNumberReader::TakeParts(const char16_t* at, Parts& parts) const noexcept {
    parts.negative = *at == u'-';
    at += parts.negative ? 1 : 0;
    const DigitRun whole = HasRoom(at) ? TakeDigits(at) : TakeFewDigits(at);
    if (whole.count - 1 >= DigitRun::kMostDigits || (*at == u'0' && whole.count > 1)) [[unlikely]] {
        return nullptr;
    }
    parts.whole = whole.value;
    parts.wholeDigits = whole.count;
    at += whole.count;
    if (*at == u'.') {
        ++at;
        const DigitRun fraction = HasRoom(at) ? TakeDigits(at) : TakeFewDigits(at);
        if (fraction.count - 1 >= DigitRun::kMostDigits) [[unlikely]] {
            return nullptr;
        }
        parts.fraction = fraction.value;
        parts.fractionDigits = fraction.count;
        at += fraction.count;
    }
    return IsExponent(*at) ? nullptr : at;
}

const char16_t* DirectNumberReader::TakeLongInteger(const char16_t* at, Int64& value) const noexcept {
    Parts parts;
    at = TakeParts(at, parts);
    if (at == nullptr || parts.fractionDigits != 0) {
        return nullptr;
    }
    const auto magnitude = static_cast<Int64>(parts.whole);
    value = TravellingInteger(parts.negative ? -magnitude : magnitude);
    return at;
}

const char16_t* DirectNumberReader::TakeLongReal(const char16_t* at, double& value) const noexcept {
    Parts parts;
    at = TakeParts(at, parts);
    if (at == nullptr) {
        return nullptr;
    }
    if (parts.fractionDigits == 0) {
        const auto magnitude = static_cast<Int64>(parts.whole);
        value = static_cast<double>(TravellingInteger(parts.negative ? -magnitude : magnitude));
        return at;
    }
    if (parts.fractionDigits > kExactFractionDigits ||
        parts.wholeDigits + parts.fractionDigits > qvcore::detail::kLargestFraction) [[unlikely]] {
        return nullptr;
    }
    const UInt64 digits = parts.whole * kFractionPowers[parts.fractionDigits] + parts.fraction;
    const double magnitude = qvcore::detail::DecimalToReal(digits, parts.fractionDigits);
    value = parts.negative && digits != 0 ? -magnitude : magnitude;
    return at;
}
