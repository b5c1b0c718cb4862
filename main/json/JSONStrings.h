// The inside of JSON strings. Included by JSONParser.cpp and DirectReader.cpp.
#pragma once

#include <string_view>

#include "main/json/PlainUnits.h"

// How far the inside of a string goes.
struct StringInside {
    const char16_t* end;  // the closing quotation mark; or what is not allowed there, or the end of the text
    bool closed;
    bool escaped;  // holds escapes
};

// From the unit behind the opening quotation mark on. Control characters are refused, all but U+0000, which the writer
// leaves raw; escapes are checked, not resolved.
StringInside SkipString(const char16_t* at, const char16_t* end) noexcept;
