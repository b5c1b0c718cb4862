// Peak memory of writing and reading one text.
#pragma once

#include <string>
#include <vector>

#include "Contest.h"

namespace compare {

struct MemoryFigure {
    std::string workload;
    std::string label;
    Operation operation;
    long textBytes;  // the text in UTF-16
    long peak;       // the most bytes in use at once, beyond those before the operation
    long kept;       // bytes in use when the result is complete
};

// In a process with the counting module: measures and prints a line for each figure. Answers an exit status.
int RunMemoryMode(ParametersRegistry& registry, Scale scale, const std::string& only);

// Starts this program again with the counting module and collects what it prints; empty when that is not possible.
std::vector<MemoryFigure> MeasureMemory(Scale scale, const std::string& only);

}  // namespace compare
