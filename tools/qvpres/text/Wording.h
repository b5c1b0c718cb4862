// How numbers, texts and counts are put before people. UTF-8 throughout.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <qvcore/TString.h>

#include <qvpreslayer/JSONParseException.h>
#include <qvpreslayer/ParameterTypeCategory.h>

#include "tools/vocabulary/Vocabulary.h"

namespace qvpres {

// 1461 as "1,461".
std::string Grouped(std::uint64_t number);

// "1 item", "1,461 items"; the plural is that of the word with an "s".
std::string Counted(std::uint64_t number, std::string_view word);

// The shortest decimal text that leads back to the double; integers of 64 bits in full.
std::string NumberText(long double number);

// A part of a whole in percent, "12.3 %".
std::string Percent(std::uint64_t part, std::uint64_t whole);

// Control characters as escapes (\u001b), so that texts cannot steer the terminal that they are shown on.
std::string Visible(std::string_view utf8);

// In quotation marks, escaped as in JSON, all control characters too.
std::string Quoted(std::string_view utf8);

// The characters of a text, roughly what it is wide.
std::size_t Width(std::string_view utf8);

// Filled up with blanks on the right, or on the left.
std::string Padded(std::string_view utf8, std::size_t width);
std::string PaddedLeft(std::string_view utf8, std::size_t width);

// At most so many characters, the last one "…" when something was cut off.
std::string Shortened(std::string_view utf8, std::size_t width);

inline std::string ToUtf8(std::u16string_view text) { return TString(text).ToUtf8(); }

// "object", "array", "string", "bool", "integer", "real", "null".
std::string_view KindName(JSONKind kind);

// "text", "number", "structure list" and so on.
std::string_view KindName(ParameterTypeCategory kind);

// What a parameter holds: "int", "list of double", "bag".
std::string TypeName(const ParameterDeclaration& declaration);

}  // namespace qvpres
