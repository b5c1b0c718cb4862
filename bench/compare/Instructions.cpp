#include "Instructions.h"

#include <cstdio>

namespace compare {

namespace {

// Short names and packed arrays where they make a difference that is worth a figure.
bool IsCounted(const std::string& workload, OwnForm form) {
    if (form.shortNames) {
        return !form.packedArrays && workload == "W1";
    }
    return !form.packedArrays || workload.starts_with("W4") || workload == "W8";
}

void Run(Contest& contest, OwnForm form) {
    const Workload& workload = contest.GetWorkload();
    const auto contestant = MakeOwnContestant(workload, form);
    contestant->Prepare(contest.GetDocuments());
    contestant->Start();
    std::size_t characters = 0;
    for (std::size_t i = 0; i < workload.bags.size(); ++i) {
        characters += contestant->Write(i);
        contestant->Read(i);
    }
    for (const Operation operation : {Operation::Write, Operation::Read}) {
        RunCounted(*contestant, operation == Operation::Write ? 1 : 0, workload.bags.size());
        std::printf("%s %s %s %zu\n", workload.name.c_str(),
                    form.packedArrays ? "packed"
                    : form.shortNames ? "short"
                                      : "plain",
                    GetOperationName(operation), characters);
    }
    contestant->End();
}

}  // namespace

void RunInstructionMode(ParametersRegistry& registry) {
    for (const WorkloadMaker& maker : GetWorkloadMakers()) {
        Contest contest(maker, registry, Scale::Tiny, false);
        for (const OwnForm form : {kPlainForm, kPackedForm, kShortForm, kShortPackedForm}) {
            if (IsCounted(maker.name, form)) {
                Run(contest, form);
            }
        }
    }
}

}  // namespace compare
