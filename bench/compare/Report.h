// The tables of a comparison, in Markdown.
#pragma once

#include <iosfwd>
#include <vector>

#include "Contest.h"
#include "Memory.h"
#include "Timing.h"

namespace compare {

// How the figures came to be.
struct RunSettings {
    Scale scale = Scale::Full;
    TimingOptions timing;
    int processor = -1;  // that the program was kept on; -1 for none
};

void PrintSettings(std::ostream& out, const RunSettings& settings);
void PrintTimes(std::ostream& out, const std::vector<TimedContest>& contests, Operation operation);
void PrintRatios(std::ostream& out, const std::vector<TimedContest>& contests, Operation operation);
void PrintForms(std::ostream& out, const std::vector<TimedContest>& contests);
void PrintMemory(std::ostream& out, const std::vector<MemoryFigure>& figures, Operation operation);

// Who was left out, and why.
void PrintFailures(std::ostream& out, const std::vector<TimedContest>& contests);

}  // namespace compare
