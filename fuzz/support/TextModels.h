// Escaping and name conversion, the slow way: the rules of docs/json.md word for word, one unit at a time.
#pragma once

#include <cstdio>
#include <string>

#include <qvcore/TString.h>

namespace text_model {

inline bool IsShortEscape(char16_t unit) {
    return unit == u'\b' || unit == u'\t' || unit == u'\n' || unit == u'\f' || unit == u'\r';
}

// The units that are written as "\\x" and their code.
inline bool IsLongEscape(char16_t unit) {
    return unit == 0x7F || (unit >= 0x01 && unit <= 0x1F && !IsShortEscape(unit));
}

inline std::string Hexadecimal(char16_t unit) {
    char digits[8];
    std::snprintf(digits, sizeof(digits), "%x", static_cast<unsigned>(unit));
    return digits;
}

// A text between quotation marks.
inline TString Escaped(const TString& text) {
    TString result;
    for (const char16_t unit : text.view()) {
        switch (unit) {
            case u'\b':
                result += u"\\b";
                break;
            case u'\t':
                result += u"\\t";
                break;
            case u'\n':
                result += u"\\n";
                break;
            case u'\f':
                result += u"\\f";
                break;
            case u'\r':
                result += u"\\r";
                break;
            case u'"':
                result += u"\\\"";
                break;
            case u'\\':
                result += u"\\\\";
                break;
            default:
                result +=
                    IsLongEscape(unit) ? TString(u"\\\\x") + TString::FromUtf8(Hexadecimal(unit)) : TString(1, unit);
        }
    }
    return result;
}

// What comes back of a text: the long escapes are no escapes to a reader.
inline TString AsReadBack(const TString& text) {
    TString result;
    for (const char16_t unit : text.view()) {
        result += IsLongEscape(unit) ? TString(u"\\x") + TString::FromUtf8(Hexadecimal(unit)) : TString(1, unit);
    }
    return result;
}

// A dash before a letter a to z goes, the letter becomes a capital.
inline TString CamelCase(const TString& dashed) {
    TString result;
    for (std::size_t i = 0; i < dashed.size(); ++i) {
        const char16_t next = i + 1 < dashed.size() ? dashed[i + 1] : u'\0';
        if (dashed[i] == u'-' && next >= u'a' && next <= u'z') {
            result += static_cast<char16_t>(next - u'a' + u'A');
            ++i;
        } else {
            result += dashed[i];
        }
    }
    return result;
}

// A capital A to Z becomes a dash and the small letter.
inline TString Dashed(const TString& camel) {
    TString result;
    for (const char16_t unit : camel.view()) {
        if (unit >= u'A' && unit <= u'Z') {
            result += u'-';
            result += static_cast<char16_t>(unit - u'A' + u'a');
        } else {
            result += unit;
        }
    }
    return result;
}

inline bool HoldsCapital(const TString& text) { return text != Dashed(text); }

inline bool NeedsEscape(const TString& text) { return text != Escaped(text); }

}  // namespace text_model
