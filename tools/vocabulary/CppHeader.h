// A vocabulary as a C++ header.
#pragma once

#include <string>

#include "tools/vocabulary/Vocabulary.h"

namespace qvpres {

// A header, in UTF-8, with an enumeration of identifiers for each namespace and the function
//
//     inline void RegisterVocabulary(ParametersRegistry& registry);
//
// that registers what Vocabulary::Register registers, with the host's own serializers where the declarations name some.
// origin is named at the top as where the header comes from. VocabularyException when two parameters, or two
// namespaces, come out under one name in C++.
std::string ToCppHeader(const Vocabulary& vocabulary, const std::string& origin);

}  // namespace qvpres
