// Two ways to do the same, measured in turns.
#pragma once

#include <time.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace figures {

struct Outcome {
    double ours;    // nanoseconds for one operation, the median of all rounds
    double theirs;  // likewise
    double ratio;   // ours / theirs, the median of the rounds' own ratios
};

inline volatile std::size_t s_sink;  // what was made counts as used

namespace detail {

inline double ProcessorTime() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

// Nanoseconds for one of so many calls.
template <class Work>
double Time(Work& work, int calls) {
    const double begin = ProcessorTime();
    std::size_t sum = 0;
    for (int call = 0; call < calls; ++call) {
        sum += work();
    }
    s_sink = sum;
    return (ProcessorTime() - begin) / calls;
}

template <class Work>
int CallsFor(Work& work, double nanoseconds) {
    Time(work, 1);  // the first call may make what all others find
    return std::max(1, static_cast<int>(nanoseconds / std::max(Time(work, 3), 1.0)));
}

inline double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

}  // namespace detail

// Each work does as many operations as it is told to in one call, and answers a number that depends on all of them.
template <class Ours, class Theirs>
Outcome Duel(std::size_t operations, Ours ours, Theirs theirs) {
    constexpr int kRounds = 15;
    constexpr double kSample = 20e6;
    const int ourCalls = detail::CallsFor(ours, kSample);
    const int theirCalls = detail::CallsFor(theirs, kSample);
    std::vector<double> ourTimes;
    std::vector<double> theirTimes;
    std::vector<double> ratios;
    for (int round = 0; round < kRounds; ++round) {
        ourTimes.push_back(detail::Time(ours, ourCalls));
        theirTimes.push_back(detail::Time(theirs, theirCalls));
        ratios.push_back(ourTimes.back() / theirTimes.back());
    }
    const auto count = static_cast<double>(operations);
    return {detail::Median(ourTimes) / count, detail::Median(theirTimes) / count, detail::Median(ratios)};
}

}  // namespace figures
