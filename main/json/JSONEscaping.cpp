#include "main/json/JSONEscaping.h"

#include <array>

#include "main/json/PlainUnits.h"

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

// How many units from the start on need no escape. U+0000 is not plain and needs none all the same.
std::size_t UnescapedUnits(std::u16string_view text) {
    const char16_t* const end = text.data() + text.size();
    const char16_t* at = SkipPlainUnits(text.data(), end);
    while (at != end && EscapeOf(*at) == u'\0') {
        at = SkipPlainUnits(at + 1, end);
    }
    return static_cast<std::size_t>(at - text.data());
}

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
    while (true) {
        const std::size_t plain = UnescapedUnits(text);
        out.append(text.substr(0, plain));
        if (plain == text.size()) [[likely]] {
            return;
        }
        AppendEscape(out, text[plain], EscapeOf(text[plain]));
        text.remove_prefix(plain + 1);
    }
}
