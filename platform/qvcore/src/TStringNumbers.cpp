#include <qvcore/TString.h>

#include <algorithm>
#include <charconv>
#include <iterator>

#include <qvsys/LogicException.h>

#include <qvcore/TextNumbers.h>

#include "TextIntegers.h"

namespace {

bool IsBase(int base) { return base >= 2 && base <= 36; }

template <class Integer>
Integer ToInteger(std::u16string_view text, bool* ok, int base) {
    Integer value = 0;
    const bool read = IsBase(base) && qvcore::detail::ParseInteger(text, static_cast<unsigned int>(base), value);
    if (ok != nullptr) {
        *ok = read;
    }
    return value;
}

template <class Real>
Real ToReal(std::u16string_view text, bool* ok, bool (*parse)(std::u16string_view, Real&) noexcept) {
    Real value = 0;
    const bool read = parse(text, value);
    if (ok != nullptr) {
        *ok = read;
    }
    return value;
}

template <class Integer>
TString FromInteger(Integer value, int base, int width, char16_t fill) {
    QV_ASSERT(IsBase(base), "TString");
    char digits[65];  // 64 binary digits and a sign
    const std::size_t length =
        static_cast<std::size_t>(std::to_chars(digits, std::end(digits), value, base).ptr - digits);
    const std::size_t wanted = width > 0 ? static_cast<std::size_t>(width) : 0;
    std::u16string text;
    text.reserve(std::max(wanted, length));
    text.append(wanted > length ? wanted - length : 0, fill);
    text.append(digits, digits + length);
    return text;
}

}  // namespace

int TString::toInt(bool* ok, int base) const { return ToInteger<int>(view(), ok, base); }

unsigned int TString::toUInt(bool* ok, int base) const { return ToInteger<unsigned int>(view(), ok, base); }

Int64 TString::toLong(bool* ok, int base) const { return ToInteger<Int64>(view(), ok, base); }

Int64 TString::toLongLong(bool* ok, int base) const { return ToInteger<Int64>(view(), ok, base); }

UInt64 TString::toULongLong(bool* ok, int base) const { return ToInteger<UInt64>(view(), ok, base); }

float TString::toFloat(bool* ok) const { return ToReal(view(), ok, &ParseFloat); }

double TString::toDouble(bool* ok) const { return ToReal(view(), ok, &ParseDouble); }

TString TString::number(int value, int base, int width, char16_t fill) { return FromInteger(value, base, width, fill); }

TString TString::number(unsigned int value, int base, int width, char16_t fill) {
    return FromInteger(value, base, width, fill);
}

TString TString::number(Int64 value, int base, int width, char16_t fill) {
    return FromInteger(value, base, width, fill);
}

TString TString::number(UInt64 value, int base, int width, char16_t fill) {
    return FromInteger(value, base, width, fill);
}
