// Differences, for people and for machines.
#pragma once

#include <iosfwd>

#include <nlohmann/json.hpp>

#include "tools/qvpres/Terminal.h"
#include "tools/qvpres/diff/TextComparison.h"

namespace qvpres {

void WriteDifference(std::ostream& out, const Difference& difference, const Style& style);

nlohmann::ordered_json ToJSON(const Difference& difference);

}  // namespace qvpres
