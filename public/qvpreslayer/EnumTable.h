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
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>
#include <type_traits>

#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/ParameterTypeSerializer.h>
#include <qvpreslayer/ParameterTypeTraits.h>
#include <qvpreslayer/detail/LenientReads.h>

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

template <class E>
constexpr std::int64_t NumberOf(E value) {
    return static_cast<std::int64_t>(value);
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

// Where a search for name begins in a table of slots. Names of one enumeration share words: length, ends and middle
// tell them apart best.
[[gnu::always_inline]] constexpr std::size_t HashOfName(std::u16string_view name) {
    if (name.empty()) {
        return 0;
    }
    const std::size_t ends = name.front() + std::size_t{name.back()} * 0x9E37;
    const std::size_t middle = name[name.size() / 2] * std::size_t{0x85EB} + name[name.size() / 4];
    const std::size_t mixed = (ends + (middle << 20) + name.size() * 0x27D5) * 0x9E3779B97F4A7C15u;
    return mixed >> 40;
}

// Positions in a table, plus one, by the hash of their names; a taken slot leads to the next one, 0 ends the search.
// Half of the slots are free.
template <std::size_t N>
using EnumNameSlots = std::array<std::uint16_t, std::bit_ceil(2 * N)>;

template <class E, std::size_t N>
constexpr EnumNameSlots<N> SlotsByName(const EnumName<E> (&names)[N]) {
    static_assert(N < 0xFFFF, "positions have 16 bits");
    EnumNameSlots<N> slots{};
    for (std::size_t i = 0; i < N; ++i) {
        std::size_t slot = HashOfName(names[i].name) % slots.size();
        while (slots[slot] != 0) {
            slot = (slot + 1) % slots.size();
        }
        slots[slot] = static_cast<std::uint16_t>(i + 1);
    }
    return slots;
}

// Whether size units are the same, of which there are at least four. Short names in as many steps whatever their size
// is: jumps that depend on it are hard to foretell.
inline bool AreSameUnits(const char16_t* left, const char16_t* right, std::size_t size) {
    const auto difference = [&](std::size_t at) {
        std::uint64_t one = 0;
        std::uint64_t other = 0;
        std::memcpy(&one, left + at, sizeof(one));
        std::memcpy(&other, right + at, sizeof(other));
        return one ^ other;
    };
    if (size > 16) {
        return std::memcmp(left, right, size * sizeof(char16_t)) == 0;
    }
    const std::size_t last = size - 4;
    return (difference(0) | difference(std::min<std::size_t>(4, last)) | difference(std::min<std::size_t>(8, last)) |
            difference(last)) == 0;
}

// Equality of views compares unit by unit, which compilers do not turn into comparing memory, and names are too short
// for a call.
constexpr bool AreSameNames(std::u16string_view left, std::u16string_view right) {
    const std::size_t size = left.size();
    if (std::is_constant_evaluated() || size < 4 || size != right.size()) {
        return left == right;
    }
    return AreSameUnits(left.data(), right.data(), size);
}

// The line of name, or null.
template <class E, std::size_t N>
constexpr const EnumName<E>* FindByName(const EnumName<E> (&names)[N], const EnumNameSlots<N>& slots,
                                        std::u16string_view name) {
    for (std::size_t slot = HashOfName(name) % slots.size(); slots[slot] != 0; slot = (slot + 1) % slots.size()) {
        const EnumName<E>& line = names[slots[slot] - 1];
        if (AreSameNames(line.name, name)) {
            return &line;
        }
    }
    return nullptr;
}

// Whether every name leads to its own line.
template <class E, std::size_t N>
constexpr bool HasUniqueNames(const EnumName<E> (&names)[N], const EnumNameSlots<N>& slots) {
    return std::all_of(names, names + N, [&names, &slots](const EnumName<E>& line) {
        return FindByName(names, slots, line.name) == &line;
    });
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
    static constexpr auto kSlots = qvpreslayer::detail::SlotsByName(Names);

    // What traits derived from this one have in common with it, as long as they keep its conversions.
    using Table = EnumTraits;

    static_assert(std::is_enum_v<Enum> && sizeof(Enum) <= sizeof(std::int32_t), "enumerators have at most 32 bits");
    static_assert(qvpreslayer::detail::IsAscending(Names), "the values of the table ascend");
    static_assert(qvpreslayer::detail::HasUniqueNames(Names, kSlots), "the names of the table are unique");
    static_assert(qvpreslayer::detail::HasValue(Names, Default), "the default is in the table");

    static TString ToText(const Enum& value) {
        const EnumName<Enum>* line = qvpreslayer::detail::FindByValue(Names, value);
        if (line == nullptr) {
            qvpreslayer::detail::ThrowUnknownEnumValue();
        }
        return line->name;
    }

    // The name of value, a constant; the default view where the table has none.
    static constexpr std::u16string_view FindName(Enum value) {
        const EnumName<Enum>* line = qvpreslayer::detail::FindByValue(Names, value);
        return line == nullptr ? std::u16string_view() : line->name;
    }

    static Enum FromText(const TString& text) { return FromName(text); }
    static Enum FromName(std::u16string_view name) { return Lookup(name, qvpreslayer::detail::UnknownName::IsDefault); }

    // FromText with a choice; this library itself never asks for the strict one.
    static Enum Lookup(std::u16string_view text, qvpreslayer::detail::UnknownName unknown) {
        const EnumName<Enum>* line = qvpreslayer::detail::FindByName(Names, kSlots, text);
        if (line != nullptr) {
            return line->value;
        }
        if (unknown == qvpreslayer::detail::UnknownName::IsError) {
            qvpreslayer::detail::ThrowUnknownEnumValue();
        }
        qvpreslayer::detail::NoteLenientRead(qvpreslayer::detail::LenientRead::UnknownName);
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
