#include "main/json/JSONEscaping.h"

#include <array>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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

// How many units from at on surely need no escape; fewer than there are, but never one too many.
std::size_t PlainUnits(const char16_t* at, const char16_t* end) {
    const char16_t* const begin = at;
#if defined(__SSE2__)
    // Eight units at a time. U+0000 counts as one to look at, which costs time and nothing else.
    const __m128i quote = _mm_set1_epi16(u'"');
    const __m128i backslash = _mm_set1_epi16(u'\\');
    const __m128i del = _mm_set1_epi16(0x7F);
    const __m128i lastControl = _mm_set1_epi16(0x1F);
    for (; end - at >= 8; at += 8) {
        const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        const __m128i control = _mm_cmpeq_epi16(_mm_subs_epu16(units, lastControl), _mm_setzero_si128());
        const __m128i marks = _mm_or_si128(_mm_cmpeq_epi16(units, quote), _mm_cmpeq_epi16(units, backslash));
        const __m128i found = _mm_or_si128(_mm_or_si128(control, marks), _mm_cmpeq_epi16(units, del));
        if (_mm_movemask_epi8(found) != 0) {
            break;
        }
    }
#endif
    while (at != end && EscapeOf(*at) == u'\0') {
        ++at;
    }
    return static_cast<std::size_t>(at - begin);
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
        const std::size_t plain = PlainUnits(text.data(), text.data() + text.size());
        out.append(text.substr(0, plain));
        if (plain == text.size()) [[likely]] {
            return;
        }
        AppendEscape(out, text[plain], EscapeOf(text[plain]));
        text.remove_prefix(plain + 1);
    }
}
