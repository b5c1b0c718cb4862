// What is different between two texts of one vocabulary, by what they say: spelling, layout, the order of members, kind
// of names and packing make no difference.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/qvpres/text/ParameterText.h"

namespace qvpres {

struct Difference {
    enum class Sort {
        Removed,   // only the first text has it
        Added,     // only the second has it
        Changed,   // both have it
        Length,    // of a list; left and right are the numbers of elements
        Elements,  // a stretch of elements of a list; left and right are the first of them
    };

    Sort sort = Sort::Changed;
    std::string path;  // as the text spells it that has the value, the first when both do
    std::string left;  // values as they stand in the texts; empty when there is none
    std::string right;
    std::uint64_t first = 0;  // of elements: where the stretch begins and how long it is
    std::uint64_t count = 0;
    double largest = 0;  // of elements: how far two numbers lie apart at most
};

// Two numbers are the same when they lie no further apart than absolute, plus relative times the larger of their sizes.
struct Tolerance {
    long double absolute = 0;
    long double relative = 0;
};

struct ComparisonResult {
    std::vector<Difference> differences;  // in the order of the first text, additions of an object behind its members
    bool cut = false;                     // there were more
};

// Members that are null count as absent, as in reading. Lists of numbers are compared run by run. At most most
// differences are told. Requires: both texts stand on the same loaded vocabulary.
ComparisonResult CompareTexts(const ParameterText& left, const ParameterText& right, const Tolerance& tolerance,
                              std::size_t most);

}  // namespace qvpres
