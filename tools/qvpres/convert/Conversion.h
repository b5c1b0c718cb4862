// One text in another form, by reading it and writing it again; and what got lost on the way.
#pragma once

#include <string>

#include <qvcore/TString.h>

#include <qvpreslayer/JSONSerializer.h>

#include "tools/qvpres/LoadedVocabulary.h"
#include "tools/qvpres/diff/TextComparison.h"

namespace qvpres {

struct ConvertOptions {
    std::string names = "auto";         // of what is read
    std::string writtenNames = "same";  // "verbose", "short", or "same" as what is read
    JSONSerializer::OutputType layout = JSONSerializer::Pretty;
    bool packed = false;
    bool lossy = false;  // do not look what got lost
};

struct Conversion {
    std::string utf8;
    ComparisonResult losses;  // what the new text says otherwise than the old one; empty with lossy
    bool readable = true;     // the library reads the new text; not looked at with lossy
};

// Threads: may run at once on several threads. Failure when the text cannot be read or written; source is what messages
// call it, with line added to line numbers.
Conversion Convert(const TString& text, const LoadedVocabulary& vocabulary, const TString& nameSpace,
                   const ConvertOptions& options, const std::string& source, std::size_t line = 0);

}  // namespace qvpres
