// What there is to say about one value of a text, in a line: for show and report.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/qvpres/text/NumberList.h"
#include "tools/qvpres/text/ParameterText.h"

namespace qvpres {

// A list in figures.
struct ListDescription {
    std::uint64_t count = 0;              // elements, those of runs included
    std::optional<NumberList> numbers;    // when it is a list of numbers
    std::vector<std::string> firstItems;  // as they stand in the text, runs as arrays; at most as many as asked for
    bool complete = false;                // these are all of them
};

struct Description {
    int id = 0;             // 0: none
    std::string name;       // registered verbose name, else as in the text; empty for elements and the root
    std::string shortName;  // may be empty
    std::string type;       // "int", "list of double", "bag", "unknown name" and so on
    std::string value;      // of single values, as it stands in the text
    std::optional<ListDescription> list;
    std::uint64_t inside = 0;  // parameters, elements or entries
    std::string remark;        // why the value is not read as it stands; may be empty
};

Description Describe(const ParameterText& text, ParameterText::Node node, std::size_t mostItems);

// The list in words: its items, or for a longer one of numbers the count, the bounds and a line of blocks.
std::string ListInWords(const ListDescription& list, std::size_t sparklineWidth);

}  // namespace qvpres
