// What is wrong, or worth knowing, about a vocabulary that loads.
#pragma once

#include <string_view>
#include <vector>

#include "tools/vocabulary/Vocabulary.h"

namespace qvpres {

enum class Severity {
    Error,    // texts come back wrong, or cannot be written
    Warning,  // works, and is likely to trip somebody up
    Note,     // values of the type that do not come back as they went
};

enum class Rule {
    NameConversion,    // a verbose name that camel case does not lead back to
    NameNotEscaped,    // a verbose name that makes JSON that is none
    DuplicateName,     // two parameters of a namespace under one verbose or short name
    CamelCollision,    // two verbose names that JSON spells alike
    ShadowedName,      // a name of a fallback that a nearer namespace has too
    CrossedName,       // a short name that is another parameter's verbose name
    MissingShortName,  // cannot be written under short names
    OverlappingRange,  // two namespaces over the same identifiers
    HiddenParameter,   // lies where another namespace covers its identifier
    LossyType,         // a type whose values do not all come back
};

// "name-conversion" and so on; "error", "warning", "note".
std::u16string_view ToText(Rule rule);
std::u16string_view ToText(Severity severity);

struct Finding {
    Rule rule;
    Severity severity;
    TString nameSpace;
    int id = 0;             // 0: the namespace itself
    TString name;           // the parameter's verbose name, or empty
    TString message;        // a sentence
    TextLocation location;  // in the declaration file, where there is one
};

// In the order of the namespaces and their parameters.
std::vector<Finding> Lint(const Vocabulary& vocabulary);

}  // namespace qvpres
