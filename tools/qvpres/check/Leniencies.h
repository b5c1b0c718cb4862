// What reading passes over or changes without a word, found by looking at the text.
#pragma once

#include <string_view>
#include <vector>

#include "tools/qvpres/check/Check.h"
#include "tools/qvpres/text/ParameterText.h"

namespace qvpres {

// Appends a finding for each leniency of a text; in lists one for each sort, with their number. Places are offsets
// only.
void FindLeniencies(const ParameterText& text, std::vector<CheckFinding>& findings);

// Appends a finding when bytes are not UTF-8; what is not becomes U+FFFD before anything else looks at it.
void FindInvalidUtf8(std::string_view bytes, std::vector<CheckFinding>& findings);

}  // namespace qvpres
