// Reading the texts of commands that need a whole, valid one.
#pragma once

#include <memory>
#include <string>

#include "tools/qvpres/CommonOptions.h"
#include "tools/qvpres/text/ParameterText.h"

namespace qvpres {

// The text of a file ("-" is standard input), cut by the vocabulary. Failure with its place when it is no JSON or no
// object.
std::unique_ptr<ParameterText> ReadParameterText(const std::string& file, const LoadedVocabulary& vocabulary,
                                                 const CommonOptions& options);

// The same for a text that is there already; name is what messages call it.
std::unique_ptr<ParameterText> MakeParameterText(TString text, const std::string& name,
                                                 const LoadedVocabulary& vocabulary, const TString& nameSpace,
                                                 const std::string& names);

}  // namespace qvpres
