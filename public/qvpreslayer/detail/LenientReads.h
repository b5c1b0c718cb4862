// What conversions from text let pass without an exception, counted. Not for callers.
//
// Conversions are called in many ways and answer nothing but values. A reader that is to tell what was let pass
// compares the counts of its thread before and after a conversion.
#pragma once

#include <cstdint>

#include <qvpreslayer/Export.h>

namespace qvpreslayer::detail {

enum class LenientRead {
    UnknownName,     // a text that is no name of an enumeration became its default
    WrappedInteger,  // a count kept its low bits only
    SkippedRuns,     // a list that does not pack was given run records
};
inline constexpr int kLenientReads = 3;

QVPRESLAYER_API void NoteLenientRead(LenientRead read) noexcept;

// How often that was noted on this thread.
QVPRESLAYER_API std::uint64_t CountLenientReads(LenientRead read) noexcept;

}  // namespace qvpreslayer::detail
