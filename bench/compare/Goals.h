// How many times faster than a peer this library means to be.
#pragma once

#include <optional>
#include <string>

#include "Contest.h"

namespace compare {

struct Goal {
    double atLeast;
    double aim;  // 0 where there is none beyond
};

// The goal of a row, "W4a" or "W4a packed", against a peer; empty when there is none.
std::optional<Goal> FindGoal(const std::string& row, Operation operation, const std::string& peer);

}  // namespace compare
