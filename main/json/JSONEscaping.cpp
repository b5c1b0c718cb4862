#include "main/json/JSONEscaping.h"

#include <array>

namespace {

// What stands behind the backslash for a unit below U+0080: the letter of a short escape, 'x' for the long form, 0 for
// none.
constexpr std::array<char16_t, 128> kEscapes = [] {
    std::array<char16_t, 128> escapes{};
    for (std::size_t unit = 1; unit < 0x20; ++unit) {
        escapes[unit] = u'x';
    }
    escapes[0x7F] = u'x';
    escapes[u'\b'] = u'b';
    escapes[u'\t'] = u't';
    escapes[u'\n'] = u'n';
    escapes[u'\f'] = u'f';
    escapes[u'\r'] = u'r';
    escapes[u'"'] = u'"';
    escapes[u'\\'] = u'\\';
    return escapes;
}();

char16_t EscapeOf(char16_t unit) { return unit < kEscapes.size() ? kEscapes[unit] : u'\0'; }

void AppendEscape(TString& out, char16_t unit, char16_t escape) {
    out.push_back(u'\\');
    if (escape != u'x') {
        out.push_back(escape);
        return;
    }
    out.append(u"\\x");
    out.append(TString::number(static_cast<unsigned int>(unit), 16));
}

}  // namespace

void AppendEscaped(TString& out, std::u16string_view text) {
    std::size_t copied = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t escape = EscapeOf(text[i]);
        if (escape == u'\0') [[likely]] {
            continue;
        }
        out.append(text.substr(copied, i - copied));
        AppendEscape(out, text[i], escape);
        copied = i + 1;
    }
    out.append(text.substr(copied));
}
