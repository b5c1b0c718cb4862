// Lines in, lines out, in the same order, worked on by several threads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

namespace qvpres {

// What became of one line.
struct LineOutcome {
    std::string output;     // written with a line feed, unless dropped
    std::string complaint;  // told on standard error; empty when all is well
    bool dropped = false;   // nothing is written
    bool failed = false;    // the run ends here, unless it goes on in spite of failures
};

// line counts from 0. Called on several threads at once; must not throw.
using LineWork = std::function<LineOutcome(std::string_view text, std::size_t line)>;

struct PipelineOptions {
    unsigned jobs = 1;
    bool keepGoing = false;
};

struct PipelineResult {
    std::uint64_t lines = 0;  // written or complained of
    std::uint64_t complaints = 0;
    std::uint64_t failures = 0;
};

// Reads in to its end, or to the first failure. What stood before a failure has been written then.
PipelineResult RunPipeline(std::istream& in, std::ostream& out, std::ostream& complaints, const LineWork& work,
                           const PipelineOptions& options);

}  // namespace qvpres
