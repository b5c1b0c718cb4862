// What changed from one vocabulary to another, and whether texts that were written with the older still read.
#pragma once

#include <string_view>
#include <vector>

#include "tools/vocabulary/Vocabulary.h"

namespace qvpres {

// Whether texts that hold what changed, written by the library with the older vocabulary, are read with the newer.
enum class OldTexts {
    Read,      // all of them, and mean the same
    Differ,    // all of them, but values may mean or be something else
    SomeFail,  // it depends on the values
    Fail,      // none of them
};

std::u16string_view ToText(OldTexts oldTexts);

struct Change {
    TString nameSpace;
    int id = 0;     // in the older vocabulary, in the newer for what was added; 0: the namespace itself
    TString name;   // the verbose name, as for id; empty for the namespace itself
    TString what;   // "added", "removed", "verbose name", "short name", "type", "kind" and so on
    TString older;  // the value before and after, where there is one
    TString newer;
    OldTexts verboseTexts = OldTexts::Read;  // texts under verbose names
    OldTexts shortTexts = OldTexts::Read;    // texts under short names
    TString remark;                          // why, in a sentence; may be empty
};

// In the order of the older vocabulary's namespaces and parameters, what was added last. Namespaces are matched by
// name, parameters by identifier, else by verbose name.
std::vector<Change> Compare(const Vocabulary& older, const Vocabulary& newer);

// The worst answer of all changes for texts of that kind of names.
OldTexts Verdict(const std::vector<Change>& changes, bool shortNames);

}  // namespace qvpres
