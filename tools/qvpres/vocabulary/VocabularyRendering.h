// Vocabularies, findings and changes before people and machines. Included by VocabularyCommands.cpp.
#pragma once

#include <iosfwd>
#include <vector>

#include <nlohmann/json.hpp>

#include "tools/qvpres/Terminal.h"
#include "tools/vocabulary/Comparison.h"
#include "tools/vocabulary/Lint.h"
#include "tools/vocabulary/Vocabulary.h"

namespace qvpres {

// A table for each namespace: identifiers, both names, what the parameters hold.
void WriteNamespaces(std::ostream& out, const Vocabulary& vocabulary,
                     const std::vector<const NamespaceDeclaration*>& namespaces, const Style& style);
nlohmann::ordered_json ToJSON(const Vocabulary& vocabulary, const std::vector<const NamespaceDeclaration*>& namespaces);

// A line for each finding, and how many there are.
void WriteFindings(std::ostream& out, const Vocabulary& vocabulary, const std::vector<Finding>& findings,
                   const Style& style);
nlohmann::ordered_json ToJSON(const std::vector<Finding>& findings);

// A line for each change, and what becomes of old texts.
void WriteChanges(std::ostream& out, const std::vector<Change>& changes, const Style& style);
nlohmann::ordered_json ToJSON(const std::vector<Change>& changes);

}  // namespace qvpres
