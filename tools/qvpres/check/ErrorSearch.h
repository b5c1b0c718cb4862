// All errors of a text, by the library's own reader.
#pragma once

#include <cstddef>
#include <vector>

#include "tools/qvpres/check/Check.h"
#include "tools/qvpres/text/ParameterText.h"

namespace qvpres {

// The reader ends at the first error. So a text that it refuses is read piece by piece: each member alone, and inside
// those that fail what is inside them, down to the smallest piece that fails. Whether something is an error is decided
// by the reader alone. At most so many; places are offsets only.
std::vector<CheckFinding> FindErrors(const ParameterText& text, std::size_t most);

}  // namespace qvpres
