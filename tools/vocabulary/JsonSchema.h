// JSON Schema (2020-12) of the JSON that a vocabulary describes.
#pragma once

#include <string>

#include "tools/vocabulary/Vocabulary.h"

namespace qvpres {

struct SchemaOptions {
    bool shortNames = false;   // texts under short names rather than verbose ones
    bool packedLists = false;  // texts whose lists of numbers are packed
};

// The schema of the texts that JSONSerializer writes for bags of the namespace, as Pretty and Compact: whatever the
// library writes is valid. docs/vocabulary.md tells which wrong texts a schema cannot find.
// ParameterNamespaceNotFoundException when there is no such namespace.
std::string ToJsonSchema(const Vocabulary& vocabulary, const TString& nameSpace, const SchemaOptions& options = {});

}  // namespace qvpres
