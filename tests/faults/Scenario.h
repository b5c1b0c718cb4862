// Operations whose allocations fail one after the other: what a scenario is, and what is expected of it.
#pragma once

#include <functional>
#include <string>
#include <vector>

// What an operation promises when it fails, in the words of the headers.
enum class Promise {
    NoFail,  // it does not fail: without memory it comes to the same end
    Strong,  // nothing has changed, and the same call may follow
    Basic,   // nothing is lost or broken; what has changed is told in the header
};

// What a run works on, and what it does; made anew for each run. The description tells all that the operation may
// change. It is asked for once, last, and may itself use up the subject.
struct Subject {
    std::function<void()> operate;
    std::function<std::string()> describe;
};

struct Scenario {
    const char* name;
    Promise promise;
    std::function<Subject()> prepare;
};

// A subject without anything that could change.
template <class Operation>
Subject Nothing(Operation operation) {
    return {operation, [] { return std::string(); }};
}

// Fails the first allocation of each scenario, then the second, and so on; each of the first 200, and samples of those
// beyond; alone, and together with all that follow. Sees that
//
//   the outcome is that of an undisturbed run, std::bad_alloc, or ParameterParseException, which the registry makes of
//   every failure while it parses; no other, and no crash;
//   the subject is as the promise says, and the promise of another try holds;
//   no block is left when the subject is gone.
void CheckUnderFaults(const std::vector<Scenario>& scenarios);
