// This library in the comparison: from a bag to a TString and back, through the public interface alone.
#pragma once

#include <memory>

#include "Contestant.h"
#include "Workload.h"

namespace compare {

// How the library writes: the first words of a contestant's name tell it.
struct OwnForm {
    bool shortNames;
    bool packedArrays;
};

// The contestant's name in the tables.
std::string GetOwnName(OwnForm form);

// The workload must outlive the contestant. Prepare makes texts in the form; the documents are not looked at.
std::unique_ptr<Contestant> MakeOwnContestant(const Workload& workload, OwnForm form);

// The workload's texts with plain arrays: what peers read. Throws std::logic_error when a text does not come back.
Documents MakeDocuments(const Workload& workload, bool shortNames);

}  // namespace compare
