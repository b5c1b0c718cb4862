// A vocabulary as a C++ header.
#pragma once

#include <string>

#include "tools/vocabulary/Vocabulary.h"

namespace qvpres {

// A header, in UTF-8: for each namespace its name, its range and an enumeration of its identifiers, and the function
//
//     inline void RegisterVocabulary(ParametersRegistry& registry);
//
// which registers what Vocabulary::Register registers, with the host's own serializers where the declarations name
// some. Names of C++ are made from those of the vocabulary; where two come out alike, the later gets its identifier, or
// its number among the namespaces, behind it. origin is named at the top as where the header comes from.
std::string ToCppHeader(const Vocabulary& vocabulary, const std::string& origin);

}  // namespace qvpres
