// What the numbers of a text stand for. Included by JSONReader.cpp and DirectReading.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <qvcore/IntegerTypes.h>
#include <qvcore/TextNumbers.h>

// The integer that a token of kind JSONKind::Integer stands for: its low 32 bits, read as signed below 2^27 and as
// unsigned from there on. So values up to 4294967295 keep their value, negative ones of 32 bits theirs, and all others
// wrap.
inline Int64 TravellingInteger(Int64 value) {
    constexpr Int64 kUnsignedFrom = 0x8000000;
    const auto low = static_cast<std::uint32_t>(value);
    return value < kUnsignedFrom ? Int64{static_cast<std::int32_t>(low)} : Int64{low};
}

inline Int64 TravellingInteger(std::u16string_view digits) {
    Int64 value = 0;
    if (!ParseInt64(digits, value)) {
        UInt64 large = 0;
        ParseUInt64(digits, large);
        value = static_cast<Int64>(large);
    }
    return TravellingInteger(value);
}

// Up to this many fraction digits a real comes out of its 14-digit text as it went in; beyond, it may be another one.
inline constexpr std::size_t kExactFractionDigits = 14;
