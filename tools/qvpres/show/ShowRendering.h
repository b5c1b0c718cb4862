// A bag as a tree, for people and for machines.
#pragma once

#include <cstddef>
#include <iosfwd>

#include <nlohmann/json.hpp>

#include "tools/qvpres/Terminal.h"
#include "tools/qvpres/show/Description.h"

namespace qvpres {

struct ShowOptions {
    std::size_t depth = 1000;  // levels below the first
    std::size_t items = 8;     // of a list or a structure list before it is folded
    std::size_t width = 60;    // characters of a value
    bool full = false;         // nothing is folded or shortened
};

void WriteTree(std::ostream& out, const ParameterText& text, ParameterText::Node root, const ShowOptions& options,
               const Style& style);

nlohmann::ordered_json ToJSON(const ParameterText& text, ParameterText::Node root, const ShowOptions& options);

}  // namespace qvpres
