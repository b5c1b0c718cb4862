#include "main/json/JSONStrings.h"

namespace {

bool IsHexDigit(char16_t unit) {
    const unsigned lower = unit | 0x20u;
    return (unit >= u'0' && unit <= u'9') || (lower >= u'a' && lower <= u'f');
}

// Takes an escape, at its backslash; answers whether it is one. at is left behind it, or at what is wrong.
bool TakeEscape(const char16_t*& at, const char16_t* end) {
    ++at;
    if (at == end || std::u16string_view(u"\"\\/bfnrtu").find(*at) == std::u16string_view::npos) {
        return false;
    }
    if (*at++ != u'u') {
        return true;
    }
    for (int digit = 0; digit < 4; ++digit, ++at) {
        if (at == end || !IsHexDigit(*at)) {
            return false;
        }
    }
    return true;
}

}  // namespace

StringInside SkipString(const char16_t* at, const char16_t* end) noexcept {
    bool escaped = false;
    while (true) {
        at = SkipPlainUnits(at, end);
        if (at == end) {
            return {at, false, escaped};
        }
        if (*at == u'"') {
            return {at, true, escaped};
        }
        if (*at == u'\\') {
            escaped = true;
            if (!TakeEscape(at, end)) {
                return {at, false, escaped};
            }
        } else if (*at < 0x20 && *at != 0) {
            return {at, false, escaped};
        } else {
            ++at;
        }
    }
}
