// What reading answers to texts that are wrong.
#pragma once

#include <string>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

namespace weather {

// One wrong text and its answer.
struct BadText {
    std::string what;           // what is wrong with the text
    std::string message;        // what the exception says
    TextLocation location;      // where it says that the failure lies
    bool asDocumented = false;  // whether the exception is the one that the library promises
};

// Reads an unknown name, a wrong kind, a number that is none, and goodText cut off in the middle; all under verbose
// names.
std::vector<BadText> ReadBadTexts(const TString& goodText);

}  // namespace weather
