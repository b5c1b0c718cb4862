// What changed from one vocabulary to another, and whether texts that were written with the older still read.
#pragma once

#include <vector>

#include "tools/vocabulary/OldTexts.h"
#include "tools/vocabulary/Vocabulary.h"

namespace qvpres {

enum class ChangedPart {
    NamespaceAdded,
    NamespaceRemoved,
    Range,
    Fallback,
    Added,
    Removed,
    Id,
    VerboseName,
    ShortName,
    Kind,
    Type,
    Form,
    Members,
    Unserializable,
    Covered,  // another namespace now covers the identifier
};

// "namespace added", "range", "added", "verbose name" and so on.
std::u16string_view ToText(ChangedPart part);

struct Change {
    ChangedPart part;
    TString nameSpace;
    int id = 0;     // in the older vocabulary, in the newer for what was added; 0: the namespace itself
    TString name;   // the verbose name, as for id; empty for the namespace itself
    TString older;  // what was, where there is something to say
    TString newer;  // what is, likewise

    // What the change does to texts of this namespace under verbose and under short names.
    OldTexts verboseTexts = OldTexts::Read;
    OldTexts shortTexts = OldTexts::Read;
};

// In the order of the older vocabulary's namespaces and parameters, what was added behind. Namespaces are matched by
// name, parameters by identifier, else by verbose name. Descriptions and what concerns C++ alone do not count.
std::vector<Change> Compare(const Vocabulary& older, const Vocabulary& newer);

// The worst answer of all changes for texts under that sort of names.
OldTexts Verdict(const std::vector<Change>& changes, bool shortNames);

}  // namespace qvpres
