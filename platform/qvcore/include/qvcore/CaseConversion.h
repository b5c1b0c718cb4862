// The two spellings of parameter names: dashed lower case in the registry, camel case in JSON.
//
// Exceptions: strong.
#pragma once

#include <qvcore/Export.h>
#include <qvcore/TString.h>

// Drops every "-" that a letter "a" to "z" follows directly and makes that letter upper case; everything else (digits,
// a "-" before a digit, upper case, other scripts, a "-" at the end) is copied. "int-rle" gives "intRle", "a-1" stays.
QVCORE_API TString DashedToCamel(const TString& dashed);

// Replaces every letter "A" to "Z" by "-" and its lower case; everything else is copied. "intRle" gives "int-rle".
//
// CamelToDashed(DashedToCamel(s)) is s for every s without "A" to "Z"; DashedToCamel(CamelToDashed(s)) is s for every
// s without a "-" before "a" to "z".
QVCORE_API TString CamelToDashed(const TString& camel);
