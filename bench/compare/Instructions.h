// Small fixed workloads for scripts/bench-instructions, which counts the instructions that they take.
#pragma once

#include "Contest.h"

namespace compare {

// Runs every operation twice: once so that all is loaded and filled, once through RunCounted. Prints a line for each,
// in order: workload, form, operation, characters.
void RunInstructionMode(ParametersRegistry& registry);

}  // namespace compare

// What the counting tool looks for by this name; never inlined, since it stands in a file of its own.
extern "C" void RunCounted(compare::Contestant& contestant, int write, std::size_t texts);
