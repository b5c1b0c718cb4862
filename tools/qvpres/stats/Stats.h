// Where the characters of a text go, and what other forms of it would take.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/qvpres/text/ParameterText.h"

namespace qvpres {

// What is counted together. Characters are UTF-16 units; own ones are those of the value and its name without what
// stands inside as a value of its own, so that the own characters of all rows are those of the text.
struct StatsRow {
    std::string label;
    std::uint64_t values = 0;
    std::uint64_t own = 0;
    std::uint64_t total = 0;  // with all that is inside
};

// A list of numbers, written compactly plain and packed.
struct PackingRow {
    std::string path;
    std::uint64_t elements = 0;
    std::uint64_t plain = 0;
    std::uint64_t packed = 0;
};

struct FormRow {
    std::string form;
    std::uint64_t characters = 0;
    bool readable = true;  // the library reads it again; lists of typed values are written without their types
};

struct Stats {
    std::uint64_t characters = 0;  // of the root's text
    std::uint64_t layout = 0;      // blanks and line ends between values, among the characters
    std::vector<StatsRow> byPath;  // positions and keys as *; by total, the largest first
    std::vector<StatsRow> byName;  // verbose names; by own characters, the largest first; so are the others
    std::vector<StatsRow> byType;
    bool readable = true;  // else the rest is empty
    std::vector<FormRow> forms;
    std::vector<PackingRow> packing;  // by what packing saves, the most first
};

Stats MakeStats(const ParameterText& text);

}  // namespace qvpres
