// How failed checks show texts: in UTF-8 between quotes, with escapes for what a terminal would not show.
//
// GoogleTest prints std::u16string by itself; being of namespace std, it could not be found here anyway.
#pragma once

#include <ostream>
#include <string>

#include <qvcore/TString.h>

namespace printing {

inline bool IsLead(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
inline bool IsTrail(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// The unit as \uXXXX.
inline std::string Escape(char16_t unit) {
    std::string text = "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) {
        text += "0123456789ABCDEF"[(unit >> shift) & 0xF];
    }
    return text;
}

inline std::string ToPrintable(const TString& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        const bool isPair = IsLead(unit) && i + 1 < text.size() && IsTrail(text[i + 1]);
        if (isPair) {
            result += TString(text.view().substr(i++, 2)).ToUtf8();
        } else if (unit < 0x20 || unit == 0x7F || IsLead(unit) || IsTrail(unit) || unit >= 0xFFFE) {
            result += Escape(unit);
        } else {
            result += unit == u'"' || unit == u'\\' ? "\\" : "";
            result += TString(1, unit).ToUtf8();
        }
    }
    return result;
}

}  // namespace printing

// Global, as TString is, so that GoogleTest finds it.
inline void PrintTo(const TString& text, std::ostream* stream) { *stream << '"' << printing::ToPrintable(text) << '"'; }
