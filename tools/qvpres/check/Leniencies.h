// What reading passes over or changes without a word, told in full.
#pragma once

#include <string_view>
#include <vector>

#include "tools/qvpres/check/Check.h"
#include "tools/qvpres/check/ErrorSearch.h"
#include "tools/qvpres/text/ParameterText.h"

namespace qvpres {

// Appends a finding for each leniency: those that the reader told, and what it has no word for, such as comments and
// values of another kind. In lists one finding for each sort, with their number. Places are offsets only.
void AddLeniencies(const ParameterText& text, const std::vector<ReadingNote>& notes,
                   std::vector<CheckFinding>& findings);

// Appends a finding when bytes are not UTF-8; what is not becomes U+FFFD before anything else looks at it.
void FindInvalidUtf8(std::string_view bytes, std::vector<CheckFinding>& findings);

}  // namespace qvpres
