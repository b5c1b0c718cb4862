// Names that somebody may have meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tools/qvpres/text/ParameterText.h"

namespace qvpres {

// Up to three names like an unknown one that the text may hold, in the spelling of JSON, the nearest first.
std::vector<std::string> SuggestNames(std::u16string_view unknown, const ParameterText& text);

}  // namespace qvpres
