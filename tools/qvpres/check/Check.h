// What is wrong with a text, and what reading is lenient about.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <qvcore/TString.h>

#include "tools/qvpres/LoadedVocabulary.h"

namespace qvpres {

// One finding, with its place. Lines and columns count from 1, offsets from 0, both in UTF-16 units. UTF-8 texts.
struct CheckFinding {
    bool isError = true;  // reading fails; else reading passes over it or changes it
    std::string code;     // for machines: "unknown-name", "kind" and so on; docs/qvpres.md lists them
    std::size_t line = 0;
    std::size_t column = 0;
    std::size_t offset = 0;
    std::string path;  // empty at the root
    std::string message;
    std::string expected;              // what the parameter is, and
    std::string found;                 // what the text has, where the two do not suit each other
    std::vector<std::string> nearest;  // known names like an unknown one, the nearest first
    std::string excerpt;               // the line of the text, or a part of it around the place
    std::size_t excerptColumn = 0;     // of the place, within the excerpt, in characters from 0
};

struct CheckResult {
    std::vector<CheckFinding> findings;  // in the order of the text
    bool cut = false;                    // there were more

    std::size_t Errors() const;
    std::size_t Leniencies() const { return findings.size() - Errors(); }
};

struct CheckOptions {
    bool strict = false;  // leniencies too
    std::size_t maxFindings = 100;
    std::string names = "auto";
};

// Checks one text, in UTF-8.
CheckResult Check(std::string_view utf8, const LoadedVocabulary& vocabulary, const TString& nameSpace,
                  const CheckOptions& options);

}  // namespace qvpres
