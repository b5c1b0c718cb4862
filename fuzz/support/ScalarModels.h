// What each scalar serializer makes of texts and values, the slow way. Included by SerializersFuzz.cpp.
//
// For each type:
//   Read(text)       the value, or nothing where the text is refused
//   Write(value)     the text
//   IsRefusal(e)     whether e is the failure that the type's header names
//   ComesBack(value) whether reading what was written gives the value
#pragma once

#include <algorithm>
#include <cctype>
#include <chrono>
#include <concepts>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>

#include <qvpreslayer/qvpreslayer.h>

#include "structure/RunModel.h"

namespace scalar_model {

template <class T>
struct Model;

// In ASCII, with "?" for every other unit and for U+0000: none of them is in any grammar of numbers.
inline std::string Ascii(const TString& text) {
    std::string result;
    for (const char16_t unit : text.view()) {
        result += unit != 0 && unit < 0x80 ? static_cast<char>(unit) : '?';
    }
    return result;
}

// How many digits stand at the start.
inline std::size_t Digits(std::string_view text) { return std::min(text.find_first_not_of("0123456789"), text.size()); }

inline bool HasSign(std::string_view text) { return text.starts_with('+') || text.starts_with('-'); }

template <class T>
std::optional<T> ReadInteger(const TString& text) {
    std::string digits = Ascii(text);
    const bool negative = digits.starts_with('-');
    if (HasSign(digits) && (std::is_signed_v<T> || !negative)) {
        digits.erase(0, 1);
    }
    if (digits.empty() || Digits(digits) != digits.size()) {
        return std::nullopt;
    }
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - 1));
    if (digits.size() > 20) {
        return std::nullopt;
    }
    const run_model::Wide value = negative ? -run_model::ValueOf(digits) : run_model::ValueOf(digits);
    const bool fits = value >= std::numeric_limits<T>::min() && value <= std::numeric_limits<T>::max();
    return fits ? std::optional<T>(static_cast<T>(value)) : std::nullopt;
}

// [+-]? ( digits ( "." digits? )? | "." digits ) ( [eE] [+-]? digits )?
inline bool IsReal(std::string_view text) {
    text.remove_prefix(HasSign(text) ? 1 : 0);
    const std::size_t whole = Digits(text);
    text.remove_prefix(whole);
    std::size_t decimals = 0;
    if (text.starts_with('.')) {
        decimals = Digits(text.substr(1));
        text.remove_prefix(1 + decimals);
    }
    if (whole + decimals == 0) {
        return false;
    }
    if (text.starts_with('e') || text.starts_with('E')) {
        text.remove_prefix(1);
        text.remove_prefix(HasSign(text) ? 1 : 0);
        return !text.empty() && Digits(text) == text.size();
    }
    return text.empty();
}

inline bool IsParseFailure(const std::exception& failure) {
    const auto* refusal = dynamic_cast<const ParameterParseException*>(&failure);
    return refusal != nullptr && refusal->GetID() == 0;
}

inline bool IsPlainFailure(const std::exception& failure) { return typeid(failure) == typeid(QuorvelException); }

template <std::integral T>
struct Model<T> {
    static std::optional<T> Read(const TString& text) { return ReadInteger<T>(text); }
    static TString Write(T value) { return TString::FromUtf8(run_model::TextOf(run_model::Wide{value})); }
    static bool IsRefusal(const std::exception& failure) { return IsParseFailure(failure); }
    static bool ComesBack(T) { return true; }
};

template <std::floating_point T>
struct Model<T> {
    static std::optional<T> Read(const TString& text) {
        if (text == u"null") {
            return std::numeric_limits<T>::quiet_NaN();
        }
        const std::string number = Ascii(text);
        if (!IsReal(number)) {
            return std::nullopt;
        }
        T value;
        if constexpr (std::is_same_v<T, float>) {
            value = std::strtof(number.c_str(), nullptr);
        } else {
            value = std::strtod(number.c_str(), nullptr);
        }
        return value - value == 0 ? std::optional<T>(value) : std::nullopt;  // finite
    }
    static TString Write(T value) { return TString::FromUtf8(run_model::RealTextOf(value)); }
    static bool IsRefusal(const std::exception& failure) { return IsParseFailure(failure); }
    static bool ComesBack(T value) { return value != value; }  // the digits decide
};

template <>
struct Model<bool> {
    static std::optional<bool> Read(const TString& text) {
        return text == u"true" ? std::optional(true) : text == u"false" ? std::optional(false) : std::nullopt;
    }
    static TString Write(bool value) { return value ? L"true" : L"false"; }
    static bool IsRefusal(const std::exception& failure) { return IsParseFailure(failure); }
    static bool ComesBack(bool) { return true; }
};

template <class Rep, class Period>
struct Model<std::chrono::duration<Rep, Period>> {
    using Duration = std::chrono::duration<Rep, Period>;
    static std::optional<Duration> Read(const TString& text) {
        const std::optional<Int64> ticks = ReadInteger<Int64>(text);
        return ticks ? std::optional(Duration(static_cast<Rep>(*ticks))) : std::nullopt;  // the low bits
    }
    static TString Write(Duration value) { return Model<Rep>::Write(value.count()); }
    static bool IsRefusal(const std::exception& failure) {
        return IsPlainFailure(failure) && std::string_view(failure.what()) == "Data serialization error";
    }
    static bool ComesBack(Duration) { return true; }
};

template <>
struct Model<TString> {
    static std::optional<TString> Read(const TString& text) { return text; }
    static TString Write(const TString& value) { return value; }
    static bool IsRefusal(const std::exception&) { return false; }
    static bool ComesBack(const TString&) { return true; }
};

template <>
struct Model<PasswordString> {
    static std::optional<PasswordString> Read(const TString& text) { return PasswordString(text); }
    static TString Write(const PasswordString&) { return L"********"; }
    static bool IsRefusal(const std::exception&) { return false; }
    static bool ComesBack(const PasswordString&) { return false; }
};

// Made through the class itself, whose text must then be the lower-case form.
template <>
struct Model<TUUID> {
    static std::optional<TUUID> Read(const TString& text) {
        const std::string layout = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
        std::string characters = Ascii(text);
        for (char& character : characters) {
            const bool isDigit = std::isxdigit(static_cast<unsigned char>(character)) != 0;
            character = isDigit ? 'x' : character == '-' ? '-' : '?';
        }
        return characters == layout ? std::optional(TUUID(text)) : std::nullopt;
    }
    static TString Lower(const TString& text) {
        TString lower = text;
        for (std::size_t i = 0; i < lower.size(); ++i) {
            const char16_t unit = lower[i];
            lower.mutable_data()[i] = static_cast<char16_t>(unit >= u'A' && unit <= u'F' ? unit + 32 : unit);
        }
        return lower;
    }
    static TString Write(const TUUID& value) { return Lower(value.ToString(0)); }
    static bool IsRefusal(const std::exception& failure) { return IsPlainFailure(failure); }
    static bool ComesBack(const TUUID&) { return true; }
};

// The segments of a name, none when the text is malformed: cut at every "].[" that no doubled bracket hides.
inline std::vector<TString> Segments(const TString& text) {
    if (!text.empty() && text.indexOf(L"[") < 0 && text.indexOf(L"]") < 0) {
        return {text};
    }
    std::vector<TString> segments;
    std::size_t at = 0;
    while (at < text.size() && text[at] == u'[') {
        TString segment;
        for (++at; at < text.size() && !(text[at] == u']' && (at + 1 == text.size() || text[at + 1] != u']')); ++at) {
            segment += text[at];
            at += text[at] == u']' ? 1 : 0;
        }
        if (at >= text.size() || segment.empty()) {
            return {};
        }
        segments.push_back(segment);
        ++at;
        if (at == text.size()) {
            return segments.size() <= 8 ? segments : std::vector<TString>();
        }
        at = text[at] == u'.' ? at + 1 : text.size();
    }
    return {};
}

template <std::derived_from<QualifiedName> T>
struct Model<T> {
    static std::optional<T> Read(const TString& text) {
        const std::vector<TString> segments = Segments(text);
        if (segments.empty()) {
            return std::nullopt;
        }
        TString full;
        for (TString segment : segments) {
            full += TString(full.empty() ? L"[" : L".[") + segment.replace(L"]", L"]]") + TString(L"]");
        }
        const T value = T::ParseGlobal(full);
        return value.GetSegments() == segments && value.GetFullValue() == full ? std::optional(value) : std::nullopt;
    }
    static TString Write(const T& value) { return value.GetFullValue(); }
    static bool IsRefusal(const std::exception& failure) { return IsPlainFailure(failure); }
    static bool ComesBack(const T& value) { return !value.GetFullValue().empty(); }
};

template <class E>
requires std::is_enum_v<E>
struct Model<E> {
    static std::optional<E> Read(const TString& text) {
        for (const EnumName<E>& line : GetEnumValues<E>()) {
            if (text == line.name) {
                return line.value;
            }
        }
        return GetEnumDefault<E>();
    }
    static TString Write(E value) {
        for (const EnumName<E>& line : GetEnumValues<E>()) {
            if (value == line.value) {
                return line.name;
            }
        }
        return {};
    }
    static bool IsRefusal(const std::exception&) { return false; }
    static bool ComesBack(E) { return true; }
};

}  // namespace scalar_model
