// The two spellings of parameter names: dashed lower case in the registry, camel case in JSON.
//
// Exceptions: strong.
#pragma once

#include <string_view>

#include <qvcore/Export.h>
#include <qvcore/TString.h>

// Drops every "-" that a letter "a" to "z" follows directly and makes that letter upper case; everything else (digits,
// a "-" before a digit, upper case, other scripts, a "-" at the end) is copied. "int-rle" gives "intRle", "a-1" stays.
QVCORE_API TString DashedToCamel(const TString& dashed);

// The same for writers: writes at to, where there must be room for as many units as dashed has, and answers the end.
QVCORE_API char16_t* WriteCamel(char16_t* to, std::u16string_view dashed) noexcept;

// Replaces every letter "A" to "Z" by "-" and its lower case; everything else is copied. "intRle" gives "int-rle".
//
// CamelToDashed(DashedToCamel(s)) is s for every s without "A" to "Z"; DashedToCamel(CamelToDashed(s)) is s for every
// s without a "-" before "a" to "z".
QVCORE_API TString CamelToDashed(const TString& camel);
