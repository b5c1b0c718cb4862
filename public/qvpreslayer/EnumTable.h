// Enumerations as parameter values: one table of names for each, and everything else follows from it.
//
// An enumeration of a host's own takes its table and one line:
//
//     enum class Season : int { Dry = 1, Wet = 2 };
//
//     inline constexpr EnumName<Season> kSeasonNames[] = {
//         {Season::Dry, u"dry-season"},
//         {Season::Wet, u"wet-season"},
//     };
//     template <>
//     struct ParameterTypeTraits<Season> : EnumTraits<kSeasonNames, Season::Dry> {};
//
// From then on ParameterTypeSerializer<Season> can be registered for values, lists and maps, and
// GetEnumValues<Season>() lists the table.
//
// Threads: tables are constants; nothing is built when the program starts, and nothing ever changes.
//
// Exceptions: reading and writing a value are strong; looking into a table never throws.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>

#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/ParameterTypeSerializer.h>
#include <qvpreslayer/ParameterTypeTraits.h>

// A line of a table: an enumerator and the text that it travels as.
template <class E>
struct EnumName {
    E value;
    std::u16string_view name;
};

namespace qvpreslayer::detail {

// Throws QuorvelException with the message that an enumeration value is not recognised.
[[noreturn]] QVPRESLAYER_API void ThrowUnknownEnumValue();

// What a text that is no name in the table leads to.
enum class UnknownName {
    IsDefault,  // the table's default, as everywhere in this library
    IsError,    // QuorvelException
};

// Positions in a table, put in the order of the names.
template <std::size_t N>
using EnumNameOrder = std::array<std::uint16_t, N>;

template <class E>
constexpr std::int64_t NumberOf(E value) {
    return static_cast<std::int64_t>(value);
}

// Shorter names first: most steps of a search then compare two lengths and no characters.
constexpr bool IsNameBefore(std::u16string_view left, std::u16string_view right) {
    return left.size() != right.size() ? left.size() < right.size() : left < right;
}

template <class E, std::size_t N>
constexpr EnumNameOrder<N> OrderByName(const EnumName<E> (&names)[N]) {
    static_assert(N <= 0x10000, "positions have 16 bits");
    EnumNameOrder<N> order{};
    for (std::size_t i = 0; i < N; ++i) {
        order[i] = static_cast<std::uint16_t>(i);
    }
    std::sort(order.begin(), order.end(), [&names](std::uint16_t left, std::uint16_t right) {
        return IsNameBefore(names[left].name, names[right].name);
    });
    return order;
}

// The checks that a table passes before it compiles.
template <class E, std::size_t N>
constexpr bool IsAscending(const EnumName<E> (&names)[N]) {
    const auto* notAbove = std::adjacent_find(names, names + N, [](const EnumName<E>& left, const EnumName<E>& right) {
        return NumberOf(left.value) >= NumberOf(right.value);
    });
    return notAbove == names + N;
}

template <class E, std::size_t N>
constexpr bool HasUniqueNames(const EnumName<E> (&names)[N], const EnumNameOrder<N>& order) {
    const auto* twin = std::adjacent_find(
        order.data(), order.data() + N,
        [&names](std::uint16_t left, std::uint16_t right) { return names[left].name == names[right].name; });
    return twin == order.data() + N;
}

template <class E, std::size_t N>
constexpr bool HasValue(const EnumName<E> (&names)[N], E value) {
    return std::any_of(names, names + N, [value](const EnumName<E>& line) { return line.value == value; });
}

// The line of value, or null. Where values are dense from the first on, the distance to it is the position.
template <class E, std::size_t N>
constexpr const EnumName<E>* FindByValue(const EnumName<E> (&names)[N], E value) {
    const std::int64_t distance = NumberOf(value) - NumberOf(names[0].value);
    if (distance < 0) {
        return nullptr;
    }
    const auto position = static_cast<std::size_t>(distance);
    if (position < N && names[position].value == value) {
        return &names[position];
    }
    const auto* line = std::lower_bound(names, names + N, value, [](const EnumName<E>& left, E right) {
        return NumberOf(left.value) < NumberOf(right);
    });
    return line != names + N && line->value == value ? line : nullptr;
}

// The line of name, or null.
template <class E, std::size_t N>
constexpr const EnumName<E>* FindByName(const EnumName<E> (&names)[N], const EnumNameOrder<N>& order,
                                        std::u16string_view name) {
    const auto* position = std::lower_bound(
        order.data(), order.data() + N, name,
        [&names](std::uint16_t left, std::u16string_view right) { return IsNameBefore(names[left].name, right); });
    return position != order.data() + N && names[*position].name == name ? &names[*position] : nullptr;
}

}  // namespace qvpreslayer::detail

// The traits of an enumeration, from its table and the value that unknown texts read as. Names is an array of EnumName
// with static storage; values ascend and may have gaps, names are unique, the default is one of the values: what breaks
// these rules does not compile.
//
// Reading is lenient, writing is strict: a text that is no name, compared character by character, gives the default; a
// value that is not in the table raises QuorvelException. A null pointer handed to the serializer is LogicException
// "m_ptr".
template <const auto& Names, auto Default>
struct EnumTraits : ParameterTypeTraitsBase {
    using Enum = decltype(Default);

    static constexpr bool kNullIsLogicError = true;
    static constexpr Enum kDefault = Default;
    static constexpr std::span<const EnumName<Enum>> kNames{Names};
    static constexpr auto kOrder = qvpreslayer::detail::OrderByName(Names);

    static_assert(std::is_enum_v<Enum> && sizeof(Enum) <= sizeof(std::int32_t), "enumerators have at most 32 bits");
    static_assert(qvpreslayer::detail::IsAscending(Names), "the values of the table ascend");
    static_assert(qvpreslayer::detail::HasUniqueNames(Names, kOrder), "the names of the table are unique");
    static_assert(qvpreslayer::detail::HasValue(Names, Default), "the default is in the table");

    static TString ToText(const Enum& value) {
        const EnumName<Enum>* line = qvpreslayer::detail::FindByValue(Names, value);
        if (line == nullptr) {
            qvpreslayer::detail::ThrowUnknownEnumValue();
        }
        return line->name;
    }

    static Enum FromText(const TString& text) { return Lookup(text, qvpreslayer::detail::UnknownName::IsDefault); }

    // FromText with a choice; this library itself never asks for the strict one.
    static Enum Lookup(std::u16string_view text, qvpreslayer::detail::UnknownName unknown) {
        const EnumName<Enum>* line = qvpreslayer::detail::FindByName(Names, kOrder, text);
        if (line != nullptr) {
            return line->value;
        }
        if (unknown == qvpreslayer::detail::UnknownName::IsError) {
            qvpreslayer::detail::ThrowUnknownEnumValue();
        }
        return kDefault;
    }
};

// Every enumerator of E with its name, upwards by value. The names are constants and stay valid.
template <class E>
constexpr std::span<const EnumName<E>> GetEnumValues() {
    return ParameterTypeTraits<E>::kNames;
}

// What a text that names no enumerator of E reads as.
template <class E>
constexpr E GetEnumDefault() {
    return ParameterTypeTraits<E>::kDefault;
}
