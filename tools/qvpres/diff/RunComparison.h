// Two lists of numbers, compared run by run: the time depends on the runs and not on how many elements they stand for.
#pragma once

#include <cstdint>
#include <vector>

#include "tools/qvpres/diff/TextComparison.h"
#include "tools/qvpres/text/NumberList.h"

namespace qvpres {

// Neighbouring elements that differ.
struct Stretch {
    std::uint64_t first = 0;
    std::uint64_t count = 0;
    NumberRun left;  // of the first element, with its null
    NumberRun right;
    long double largest = 0;  // 0 where a null is one of the two
};

// As far as both lists go; the length is compared by the caller.
std::vector<Stretch> CompareRuns(const NumberList& left, const NumberList& right, const Tolerance& tolerance);

// Whether two numbers are the same.
bool IsSame(long double left, long double right, const Tolerance& tolerance);

}  // namespace qvpres
