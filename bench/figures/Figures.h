// The single figures of docs/performance.md, one function for each subject.
#pragma once

#include <string>
#include <vector>

#include "Duel.h"

namespace figures {

struct Figure {
    std::string what;
    std::string beside;  // what it is compared with
    Outcome outcome;
    double most;  // the ratio that it should not exceed; 0 where there is no such goal
};

using Figures = std::vector<Figure>;

void AddNumberTexts(Figures& figures);
void AddLookUps(Figures& figures);
void AddBags(Figures& figures);
void AddRuns(Figures& figures);
void AddThreads(Figures& figures);

}  // namespace figures
