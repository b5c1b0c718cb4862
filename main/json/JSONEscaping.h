// Escaping of texts inside JSON strings. Included by BuildParameterStrings.cpp and its tests.
#pragma once

#include <string_view>

#include <qvcore/TString.h>

// Appends text to out, escaped:
//
//   U+0008 U+0009 U+000A U+000C U+000D          a backslash and one of b t n f r
//   the quotation mark and the backslash        a backslash before it
//   other U+0001 to U+001F, and U+007F          two backslashes, "x", the code in lower-case hexadecimal without zeros
//                                               in front. No JSON escape: a reader sees "\x1f" as four characters.
//   everything else, U+0000 and "/" included    itself
void AppendEscaped(TString& out, std::u16string_view text);
