// The data that the contestants take turns on. All of it is made from fixed seeds and files of the project.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

#include "Vocabulary.h"

namespace compare {

enum class Scale {
    Full,   // what is published
    Quick,  // a tenth of the large ones, for a look
    Tiny,   // for counting instructions
};

struct Workload {
    std::string name;   // "W1"
    std::string title;  // "wide bag"
    TString namespaceName;
    std::vector<Field> fields;
    std::vector<RefCntPtr<const IParameters>> bags;
    std::size_t values = 0;  // scalars, elements of lists and entries of maps in all bags
};

struct WorkloadMaker {
    std::string name;
    std::function<Workload(ParametersRegistry& registry, Scale scale)> make;
};

// Every workload, in the order of the tables. Making one registers its namespace.
const std::vector<WorkloadMaker>& GetWorkloadMakers();

// How many of a full size, with so many in a tiny one.
std::size_t GetCount(Scale scale, std::size_t full, std::size_t tiny);

// Each workload has a namespace of its own and identifiers from first on.
inline constexpr int kFieldRange = 1000;

// The makers, a file for each group.
Workload MakeWideBag(ParametersRegistry& registry, Scale scale);
Workload MakeRealColumns(ParametersRegistry& registry, Scale scale);
Workload MakeNestedBags(ParametersRegistry& registry, Scale scale);
Workload MakeIntegerRuns(ParametersRegistry& registry, Scale scale);
Workload MakeConstantDoubles(ParametersRegistry& registry, Scale scale);
Workload MakeRandomIntegers(ParametersRegistry& registry, Scale scale);
Workload MakeStrings(ParametersRegistry& registry, Scale scale);
Workload MakeSmallBags(ParametersRegistry& registry, Scale scale);
Workload MakeViewModel(ParametersRegistry& registry, Scale scale);
Workload MakeRealDoubles(ParametersRegistry& registry, Scale scale);

// Registers the fields under the workload's name and counts its values, once fields and bags are there.
void Complete(Workload& workload, ParametersRegistry& registry, int firstId);

}  // namespace compare
