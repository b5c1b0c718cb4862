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

bool IsExponent(char16_t unit) { return (unit | 0x20) == u'e'; }

// As TakeDigits, near the ends of the text: the unit at its end is no digit.
DigitRun TakeFewDigits(const char16_t* at) {
    DigitRun run{0, 0};
    for (; IsDigit(*at) && run.count <= DigitRun::kMostDigits; ++at, ++run.count) {
        run.value = run.count < DigitRun::kMostDigits ? run.value * 10 + (*at - u'0') : run.value;
    }
    return run;
}

}  // namespace

bool DirectNumberReader::HasRoom(const char16_t* at) const noexcept {
    return m_end - at >= kDigitsLookahead && at - m_begin >= kDigitsLookbehind;
}

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

// The tokens of most documents: up to seven digits, which travel as they are. Null for all others.
inline const char16_t* DirectNumberReader::TakeShortInteger(const char16_t* at, Int64& value) const noexcept {
    const bool negative = *at == u'-';
    at += negative ? 1 : 0;
    if (!HasRoom(at)) {
        return nullptr;
    }
    const unsigned count = CountDigits(at);
    if (count - 1 >= 7 || (*at == u'0' && count > 1) || at[count] == u'.' || IsExponent(at[count])) {
        return nullptr;
    }
    const auto magnitude = static_cast<Int64>(DigitsBefore(at + count, count));
    value = negative ? -magnitude : magnitude;
    return at + count;
}

// The same with up to seven digits behind a point, so that both numbers of the division are exact.
inline const char16_t* DirectNumberReader::TakeShortReal(const char16_t* at, double& value) const noexcept {
    const bool negative = *at == u'-';
    at += negative ? 1 : 0;
    if (!HasRoom(at)) {
        return nullptr;
    }
    const unsigned count = CountDigits(at);
    const char16_t* const fraction = at + count + 1;
    if (count - 1 >= 7 || (*at == u'0' && count > 1) || fraction[-1] != u'.') {
        return nullptr;
    }
    const unsigned fractionDigits = CountDigits(fraction);
    if (fractionDigits - 1 >= 7 || IsExponent(fraction[fractionDigits])) {
        return nullptr;
    }
    static constexpr std::uint32_t kPowers[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000};
    const UInt64 digits = UInt64{DigitsBefore(at + count, count)} * kPowers[fractionDigits] +
                          DigitsBefore(fraction + fractionDigits, fractionDigits);
    const double magnitude =
        static_cast<double>(static_cast<Int64>(digits)) / qvcore::detail::kRealPowersOfTen[fractionDigits];
    value = negative && digits != 0 ? -magnitude : magnitude;
    return fraction + fractionDigits;
}

const char16_t* DirectNumberReader::TakeInteger(const char16_t* at, Int64& value) const noexcept {
    if (const char16_t* const behind = TakeShortInteger(at, value)) [[likely]] {
        return behind;
    }
    Parts parts;
    at = TakeParts(at, parts);
    if (at == nullptr || parts.fractionDigits != 0) {
        return nullptr;
    }
    const auto magnitude = static_cast<Int64>(parts.whole);
    value = TravellingInteger(parts.negative ? -magnitude : magnitude);
    return at;
}

const char16_t* DirectNumberReader::TakeReal(const char16_t* at, double& value) const noexcept {
    if (const char16_t* const behind = TakeShortReal(at, value)) {
        return behind;
    }
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
    static constexpr UInt64 kPowers[] = {
        1u,           10u,           100u,           1000u,           10000u,
        100000u,      1000000u,      10000000u,      100000000u,      1000000000u,
        10000000000u, 100000000000u, 1000000000000u, 10000000000000u, 100000000000000u};
    static_assert(std::size(kPowers) == kExactFractionDigits + 1);
    const UInt64 digits = parts.whole * kPowers[parts.fractionDigits] + parts.fraction;
    const double magnitude = qvcore::detail::DecimalToReal(digits, parts.fractionDigits);
    value = parts.negative && digits != 0 ? -magnitude : magnitude;
    return at;
}
