// The kinds of typed values.
#pragma once

#include <cstdint>

#include <qvcore/Export.h>

// What a DataValue holds, or, for a null, what it would hold. The numbers are part of stored texts and never change.
enum class QVCORE_API DataType : std::uint8_t {
    Integer = 0,   // a signed 64-bit integer
    Real = 1,      // a finite double, with labels for precision and scale
    CString = 2,   // a text with the collation that it belongs to
    DateTime = 3,  // a calendar day with a time of day, in nanoseconds
    Boolean = 4,   // true or false
    Date = 5,      // a calendar day
    Tuple = 6,     // an ordered, immutable sequence of typed values
    Spatial = 7,   // a geometry, kept as a text that nothing here looks into
    Unknown = 8,   // the type of a null that nobody gave a type; no other value has it

    // The same two, spelled as their names "cstring" and "datetime" would be.
    Cstring = CString,
    Datetime = DateTime,
};
