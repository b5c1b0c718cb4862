// How each type of value goes the short way (see DirectText.h), worked out by the compiler. Not for callers.
#pragma once

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include <qvpreslayer/ParameterTypeTraits.h>
#include <qvpreslayer/ValParameter.h>
#include <qvpreslayer/detail/DirectText.h>

namespace qvpreslayer::detail {

// Types that are texts on the short way specialise this:
//
//   static std::u16string_view Text(const T& value, TextScratch& scratch);   the default view: no text
//   static bool Read(std::u16string_view text, T& value);                    false: the long way tells
//   static constexpr bool kIsPlain;                                          no text needs an escape in JSON
template <class T>
struct DirectTraits {};

// Nothing but a table of names stands behind the enumeration: a host's own conversions would go the long way.
template <class E>
concept TableEnum = std::is_enum_v<E> && requires {
    typename ParameterTypeTraits<E>::Table;
    requires& ParameterTypeTraits<E>::ToText == &ParameterTypeTraits<E>::Table::ToText;
    requires& ParameterTypeTraits<E>::FromText == &ParameterTypeTraits<E>::Table::FromText;
};

template <TableEnum E>
struct DirectTraits<E> {
    static constexpr bool kIsPlain =
        std::all_of(ParameterTypeTraits<E>::kNames.begin(), ParameterTypeTraits<E>::kNames.end(), [](const auto& line) {
            return std::all_of(line.name.begin(), line.name.end(), [](char16_t unit) {
                return unit == u'-' || (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'z') ||
                       (unit >= u'A' && unit <= u'Z');
            });
        });
    static std::u16string_view Text(const E& value, TextScratch&) { return ParameterTypeTraits<E>::FindName(value); }
    static bool Read(std::u16string_view text, E& value) {
        value = ParameterTypeTraits<E>::FromName(text);
        return true;
    }
};

// Durations: what DurationTraits says.
template <class T>
struct QVPRESLAYER_API DirectDuration {
    static constexpr bool kIsPlain = true;  // digits
    static std::u16string_view Text(const T& value, TextScratch& scratch);
    static bool Read(std::u16string_view text, T& value);
};

template <class Rep, class Period>
requires std::derived_from<ParameterTypeTraits<std::chrono::duration<Rep, Period>>,
                           DurationTraits<std::chrono::duration<Rep, Period>>>
struct DirectTraits<std::chrono::duration<Rep, Period>> : DirectDuration<std::chrono::duration<Rep, Period>> {
};

template <>
struct QVPRESLAYER_API DirectTraits<TUUID> {
    static constexpr bool kIsPlain = true;
    static std::u16string_view Text(const TUUID& value, TextScratch& scratch);
    static bool Read(std::u16string_view text, TUUID& value);
};

template <>
struct QVPRESLAYER_API DirectTraits<FieldName> {
    static constexpr bool kIsPlain = false;
    static std::u16string_view Text(const FieldName& value, TextScratch& scratch);
    static bool Read(std::u16string_view text, FieldName& value);
};

template <>
struct QVPRESLAYER_API DirectTraits<QualifiedName> {
    static constexpr bool kIsPlain = false;
    static std::u16string_view Text(const QualifiedName& value, TextScratch& scratch);
    static bool Read(std::u16string_view text, QualifiedName& value);
};

template <class T>
concept HasDirectTraits = requires(std::u16string_view text, TextScratch& scratch, T& value) {
    { DirectTraits<T>::Text(value, scratch) } -> std::same_as<std::u16string_view>;
    { DirectTraits<T>::Read(text, value) } -> std::same_as<bool>;
};

// The V that value holds when it is exactly a holder of V, else null.
template <class V>
const V* Exactly(const IParameter& value) noexcept {
    return typeid(value) == typeid(ValParameter<V>) ? &static_cast<const ValParameter<V>&>(value).GetValue() : nullptr;
}

// What stands at the start of a holder of V.
template <class V>
const void* FunctionsOfHolder() {
    const ValParameter<V> holder{V{}};
    holder.SetRefCountToOne();
    return FunctionsOf(holder);
}

template <HasDirectTraits T>
struct DirectTextOperations {
    static std::u16string_view ValueText(const IParameter& value, TextScratch& scratch) {
        const T* content = Exactly<T>(value);
        return content == nullptr ? std::u16string_view() : DirectTraits<T>::Text(*content, scratch);
    }

    static std::size_t ListSize(const IParameter& value) {
        const auto* content = Exactly<std::vector<T>>(value);
        return content == nullptr ? DirectTextType::kNoList : content->size();
    }

    static std::u16string_view ElementText(const IParameter& list, std::size_t position, TextScratch& scratch) {
        return DirectTraits<T>::Text(static_cast<const ValParameter<std::vector<T>>&>(list).GetValue()[position],
                                     scratch);
    }

    static RefCntPtr<IParameter> FromText(std::u16string_view text) {
        T value{};
        if (!DirectTraits<T>::Read(text, value)) {
            return {};
        }
        return MakeRefCnt<ValParameter<T>>(std::move(value));
    }

    static RefCntPtr<IParameter> FromTexts(ITextSource& texts) {
        std::vector<T> values;
        std::u16string_view text;
        while (texts.Next(text)) {
            T value{};
            if (!DirectTraits<T>::Read(text, value)) {
                return {};
            }
            values.push_back(std::move(value));
        }
        return MakeRefCnt<ValParameter<std::vector<T>>>(std::move(values));
    }

    static constexpr DirectTextType kTable{
        &ValueText, DirectTraits<T>::kIsPlain, &FunctionsOfHolder<T>, &ListSize, &ElementText, &FromText, &FromTexts};
};

template <class T>
constexpr DirectInfo DirectInfoFor() noexcept {
    DirectInfo info;
    if constexpr (std::is_same_v<T, int>) {
        info.type = DirectType::Int;
    } else if constexpr (std::is_same_v<T, unsigned int>) {
        info.type = DirectType::UInt;
    } else if constexpr (std::is_same_v<T, ::Int64>) {
        info.type = DirectType::Int64;
    } else if constexpr (std::is_same_v<T, ::UInt64>) {
        info.type = DirectType::UInt64;
    } else if constexpr (std::is_same_v<T, float>) {
        info.type = DirectType::Float;
    } else if constexpr (std::is_same_v<T, double>) {
        info.type = DirectType::Double;
    } else if constexpr (std::is_same_v<T, bool>) {
        info.type = DirectType::Bool;
    } else if constexpr (HasDirectTraits<T>) {
        info.type = DirectType::Text;
        info.text = &DirectTextOperations<T>::kTable;
    }
    return info;
}

}  // namespace qvpreslayer::detail
