// Numbers from text without a TString, for readers that walk a longer text.
//
// Threads: all functions may run at once on several threads. None allocates, none reads a locale, and all are linear in
// the length of the text.
//
// Exceptions: never throws.
#pragma once

#include <string_view>

#include <qvcore/Export.h>
#include <qvcore/IntegerTypes.h>

// Each reads the whole text by the grammars of TString's conversions, integers to the base 10. True when the text is a
// number of the type; otherwise value is left as it was.
QVCORE_API bool ParseInt32(std::u16string_view text, int& value) noexcept;
QVCORE_API bool ParseUInt32(std::u16string_view text, unsigned int& value) noexcept;
QVCORE_API bool ParseInt64(std::u16string_view text, Int64& value) noexcept;
QVCORE_API bool ParseUInt64(std::u16string_view text, UInt64& value) noexcept;
QVCORE_API bool ParseFloat(std::u16string_view text, float& value) noexcept;
QVCORE_API bool ParseDouble(std::u16string_view text, double& value) noexcept;
