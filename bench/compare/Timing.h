// Times of one contest: all entries take turns, round by round, so that what disturbs the machine disturbs everybody.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Contest.h"

namespace compare {

struct TimingOptions {
    int rounds = 9;
    double sampleSeconds = 0.03;  // at least this long; a sample holds as many passes over the texts as that takes
};

// Nanoseconds of processor time for one pass over all texts of the workload.
struct Figure {
    double median;
    double spread;  // between the quartiles, as a part of the median
};

struct TimedEntry {
    std::string label;
    std::string failure;
    std::optional<Figure> write;
    std::optional<Figure> read;

    const std::optional<Figure>& Get(Operation operation) const { return operation == Operation::Write ? write : read; }
};

struct TimedContest {
    std::string name;
    std::string title;
    std::size_t characters = 0;
    std::size_t values = 0;
    std::vector<std::size_t> ownCharacters;  // of our entries, which come first
    std::vector<TimedEntry> entries;

    // Null when nobody of that label took part.
    const TimedEntry* Find(const std::string& label) const;
};

// The contest must be prepared.
TimedContest Measure(Contest& contest, const TimingOptions& options);

// Keeps this thread on the last processor that it may use. Answers its number, or -1 where the machine does not allow
// it.
int PinToProcessor();

}  // namespace compare
