// The fixed message texts, by number.
//
// Exceptions: strong.
#pragma once

#include <cstdint>
#include <initializer_list>

#include <qvcore/Export.h>
#include <qvcore/TString.h>

using StringId = std::uint32_t;

// The messages that the libraries raise themselves.
namespace Messages {
inline constexpr StringId kJSONNotValid = 1732813050;      // no argument
inline constexpr StringId kJSONKindMismatch = 178195976;   // one argument: the member's name
inline constexpr StringId kEnumValueUnknown = 1237050406;  // no argument
}  // namespace Messages

// The text of id. An unknown id gives a text that names it, never an exception.
QVCORE_API TString LookupTStr(StringId id);

// The text of id with "%1" to "%9" replaced by the arguments, in one pass: what an argument holds is never expanded
// again. A place without an argument stays as it is.
QVCORE_API TString LookupTFmtStr(StringId id, std::initializer_list<TString> arguments);
