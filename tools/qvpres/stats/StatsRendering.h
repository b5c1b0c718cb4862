// Statistics, for people and for machines.
#pragma once

#include <cstddef>
#include <iosfwd>

#include <nlohmann/json.hpp>

#include "tools/qvpres/Terminal.h"
#include "tools/qvpres/stats/Stats.h"

namespace qvpres {

// At most most rows of each table.
void WriteStats(std::ostream& out, const Stats& stats, std::size_t most, const Style& style);

nlohmann::ordered_json ToJSON(const Stats& stats);

}  // namespace qvpres
