// This library beside other ways to do its work, on the same data in the same process:
//
//     bench_compare [--quick] [--only W4] [--rounds N]    times and memory, as tables in Markdown
//     bench_compare --instructions                        see Instructions.h
//     bench_compare --memory                              used by the program itself, see Memory.h
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

#include "BenchHost.h"
#include "Instructions.h"
#include "Memory.h"
#include "Report.h"
#include "Timing.h"

namespace {

using namespace compare;

struct Arguments {
    RunSettings settings;
    std::string only;  // the beginning of the workloads' names
    bool instructions = false;
    bool memory = false;
};

void MakeQuick(RunSettings& settings) {
    settings.scale = Scale::Quick;
    settings.timing = {3, 0.005};
}

// Answers false for arguments that it does not know.
bool Parse(int argc, char** argv, Arguments& arguments) {
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const bool hasValue = i + 1 < argc;
        if (argument == "--quick") {
            MakeQuick(arguments.settings);
        } else if (argument == "--instructions") {
            arguments.instructions = true;
        } else if (argument == "--memory") {
            arguments.memory = true;
        } else if (argument == "--only" && hasValue) {
            arguments.only = argv[++i];
        } else if (argument == "--rounds" && hasValue && std::atoi(argv[i + 1]) > 0) {
            arguments.settings.timing.rounds = std::atoi(argv[++i]);
        } else {
            return false;
        }
    }
    return true;
}

std::vector<TimedContest> MeasureAll(ParametersRegistry& registry, const Arguments& arguments) {
    std::vector<TimedContest> results;
    for (const WorkloadMaker& maker : GetWorkloadMakers()) {
        if (maker.name.starts_with(arguments.only)) {
            std::cerr << maker.name << " ..." << std::endl;
            Contest contest(maker, registry, arguments.settings.scale, true);
            contest.PrepareAll();
            results.push_back(Measure(contest, arguments.settings.timing));
        }
    }
    return results;
}

void Compare(ParametersRegistry& registry, Arguments& arguments) {
    arguments.settings.processor = PinToProcessor();
    const auto contests = MeasureAll(registry, arguments);
    std::cerr << "memory ..." << std::endl;
    const auto figures = MeasureMemory(arguments.settings.scale, arguments.only);

    std::ostream& out = std::cout;
    PrintSettings(out, arguments.settings);
    PrintFailures(out, contests);
    out << "### Writing, million characters a second\n\n";
    PrintTimes(out, contests, Operation::Write);
    out << "### Reading, million characters a second\n\n";
    PrintTimes(out, contests, Operation::Read);
    out << "### How many times faster\n\nIn brackets what is to be reached at least; bold where it is not.\n\n";
    PrintRatios(out, contests, Operation::Write);
    PrintRatios(out, contests, Operation::Read);
    out << "### Short names and packed arrays\n\nAgainst RapidJSON on the plain text with the same names.\n\n";
    PrintForms(out, contests);
    out << "### Peak memory\n\nIn bytes for each byte of the UTF-16 text: at the peak / in use when the result is "
           "complete.\n\n";
    if (figures.empty()) {
        out << "Not measured: the program could not be started with its counting module.\n";
        return;
    }
    PrintMemory(out, figures, Operation::Write);
    PrintMemory(out, figures, Operation::Read);
}

int Run(Arguments& arguments) {
    BenchRegistry registry;
    RegisterCoreNamespaceParameters(registry, L"qvcore");
    if (arguments.instructions) {
        RunInstructionMode(registry);
        return 0;
    }
    if (arguments.memory) {
        return RunMemoryMode(registry, arguments.settings.scale, arguments.only);
    }
    Compare(registry, arguments);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    Arguments arguments;
    if (!Parse(argc, argv, arguments)) {
        std::cerr << "usage: bench_compare [--quick] [--only W4] [--rounds N] [--instructions]\n";
        return 2;
    }
    try {
        return Run(arguments);
    } catch (const std::exception& failure) {
        std::cerr << "bench_compare: " << failure.what() << '\n';
        return 1;
    }
}
