#include "Timing.h"

#include <sched.h>
#include <time.h>

#include <algorithm>
#include <cmath>

namespace compare {

namespace {

// Nanoseconds that this thread had the processor: what other work on the machine takes is not counted. Every contestant
// works on one thread.
double GetProcessorTime() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

// One entry in one operation, with what was measured so far.
struct Series {
    Entry* entry;
    Operation operation;
    int passes = 1;
    std::vector<double> samples;  // nanoseconds for a pass
};

volatile std::size_t s_sink;  // what was made counts as used

void RunOnce(Contestant& contestant, Operation operation, std::size_t texts) {
    std::size_t sum = 0;
    for (std::size_t i = 0; i < texts; ++i) {
        sum += operation == Operation::Write ? contestant.Write(i) : contestant.Read(i);
    }
    s_sink = sum;
}

// Nanoseconds for each of so many passes.
double Sample(const Series& series, std::size_t texts) {
    Contestant& contestant = *series.entry->contestant;
    contestant.Start();
    const double begin = GetProcessorTime();
    for (int pass = 0; pass < series.passes; ++pass) {
        RunOnce(contestant, series.operation, texts);
    }
    const double taken = GetProcessorTime() - begin;
    contestant.End();
    return taken / series.passes;
}

std::vector<Series> MakeSeries(Contest& contest) {
    std::vector<Series> all;
    for (const Operation operation : {Operation::Write, Operation::Read}) {
        for (Entry& entry : contest.GetEntries()) {
            const bool can = operation == Operation::Write ? entry.contestant->CanWrite() : entry.contestant->CanRead();
            if (entry.failure.empty() && can) {
                all.push_back({&entry, operation, 1, {}});
            }
        }
    }
    return all;
}

double Quantile(const std::vector<double>& sorted, double part) {
    const double position = part * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<std::size_t>(position);
    const std::size_t above = std::min(below + 1, sorted.size() - 1);
    return sorted[below] + (position - static_cast<double>(below)) * (sorted[above] - sorted[below]);
}

Figure Summarize(std::vector<double> samples) {
    std::sort(samples.begin(), samples.end());
    const double median = Quantile(samples, 0.5);
    return {median, (Quantile(samples, 0.75) - Quantile(samples, 0.25)) / median};
}

// How many characters our own entries make of the workload.
std::vector<std::size_t> CountOwnCharacters(Contest& contest) {
    std::vector<std::size_t> counts;
    for (std::size_t form = 0; form < 4; ++form) {
        Contestant& contestant = *contest.GetEntries()[form].contestant;
        contestant.Start();
        std::size_t characters = 0;
        for (std::size_t i = 0; i < contest.GetWorkload().bags.size(); ++i) {
            characters += contestant.Write(i);
        }
        contestant.End();
        counts.push_back(characters);
    }
    return counts;
}

}  // namespace

const TimedEntry* TimedContest::Find(const std::string& label) const {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&label](const TimedEntry& entry) { return entry.label == label; });
    return found == entries.end() ? nullptr : &*found;
}

TimedContest Measure(Contest& contest, const TimingOptions& options) {
    const std::size_t texts = contest.GetWorkload().bags.size();
    std::vector<Series> all = MakeSeries(contest);
    for (Series& series : all) {
        const double once = std::max(Sample(series, texts), 1.0);
        series.passes = std::max(1, static_cast<int>(std::ceil(options.sampleSeconds * 1e9 / once)));
    }
    // Each round begins with another one, so that nobody always follows the same neighbour's caches.
    for (int round = 0; round < options.rounds; ++round) {
        for (std::size_t i = 0; i < all.size(); ++i) {
            Series& series = all[(i + static_cast<std::size_t>(round) * 5) % all.size()];
            series.samples.push_back(Sample(series, texts));
        }
    }
    TimedContest result;
    result.name = contest.GetWorkload().name;
    result.title = contest.GetWorkload().title;
    result.characters = contest.GetDocuments().GetCharacters();
    result.values = contest.GetWorkload().values;
    result.ownCharacters = CountOwnCharacters(contest);
    for (Entry& entry : contest.GetEntries()) {
        TimedEntry& timed = result.entries.emplace_back(TimedEntry{entry.label, entry.failure, {}, {}});
        for (const Series& series : all) {
            if (series.entry == &entry) {
                (series.operation == Operation::Write ? timed.write : timed.read) = Summarize(series.samples);
            }
        }
    }
    return result;
}

int PinToProcessor() {
    cpu_set_t allowed;
    if (sched_getaffinity(0, sizeof(allowed), &allowed) != 0) {
        return -1;
    }
    int last = -1;
    for (int cpu = 0; cpu < CPU_SETSIZE; ++cpu) {
        last = CPU_ISSET(cpu, &allowed) ? cpu : last;
    }
    cpu_set_t one;
    CPU_ZERO(&one);
    if (last < 0) {
        return -1;
    }
    CPU_SET(last, &one);
    return sched_setaffinity(0, sizeof(one), &one) == 0 ? last : -1;
}

}  // namespace compare
