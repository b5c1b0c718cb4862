// Each figure comes from a new thread in a process forked for it: scratch memory and buffers that contestants keep are
// not there yet, and count.
#include "Memory.h"

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <thread>

#include "Peers.h"

namespace compare {

namespace {

// What the counting module offers; null without it.
struct Counter {
    long (*live)();
    long (*peak)();
    void (*restart)();
};

template <class Function>
Function* FindFunction(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
}

Counter s_counter;
long s_liveWithResult;

struct Bytes {
    long peak = -1;
    long kept = -1;
};

Bytes RunCounted(Contestant& contestant, Operation operation) {
    Bytes bytes;
    std::thread([&] {
        contestant.Start();
        contestant.SetResultHook([] { s_liveWithResult = s_counter.live(); });
        s_counter.restart();
        const long before = s_counter.live();
        operation == Operation::Write ? contestant.Write(0) : contestant.Read(0);
        bytes = {s_counter.peak() - before, s_liveWithResult - before};
        contestant.End();
    }).join();
    return bytes;
}

Bytes MeasureInChild(Contestant& contestant, Operation operation) {
    Bytes bytes;
    int ends[2];
    if (pipe(ends) != 0) {
        return bytes;
    }
    const pid_t child = fork();
    if (child == 0) {
        const Bytes measured = RunCounted(contestant, operation);
        const bool written = write(ends[1], &measured, sizeof(measured)) == sizeof(measured);
        _exit(written ? 0 : 1);
    }
    close(ends[1]);
    if (read(ends[0], &bytes, sizeof(bytes)) != sizeof(bytes)) {
        bytes = Bytes();
    }
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return bytes;
}

void PrintFigures(Contest& contest) {
    for (Entry& entry : contest.GetEntries()) {
        contest.Prepare(entry);  // what a library makes once for a process is there then
        if (!entry.failure.empty()) {
            continue;
        }
        entry.contestant->Release();
        entry.contestant->Prepare(*entry.documents);
        for (const Operation operation : {Operation::Write, Operation::Read}) {
            if (operation == Operation::Write ? entry.contestant->CanWrite() : entry.contestant->CanRead()) {
                const Bytes bytes = MeasureInChild(*entry.contestant, operation);
                std::printf("%s\t%s\t%s\t%ld\t%ld\t%ld\n", contest.GetWorkload().name.c_str(), entry.label.c_str(),
                            GetOperationName(operation),
                            static_cast<long>(entry.documents->texts[0].size() * sizeof(char16_t)), bytes.peak,
                            bytes.kept);
            }
        }
        std::fflush(stdout);
        entry.contestant->Release();
    }
}

}  // namespace

int RunMemoryMode(ParametersRegistry& registry, Scale scale, const std::string& only) {
    s_counter = {FindFunction<long()>("CompareMemoryLive"), FindFunction<long()>("CompareMemoryPeak"),
                 FindFunction<void()>("CompareMemoryRestart")};
    if (s_counter.live == nullptr) {
        std::cerr << "the counting module is not loaded\n";
        return 1;
    }
    for (const WorkloadMaker& maker : GetWorkloadMakers()) {
        if (maker.name.starts_with(only)) {
            Contest contest(maker, registry, scale, true);
            PrintFigures(contest);
        }
    }
    return 0;
}

std::vector<MemoryFigure> MeasureMemory(Scale scale, const std::string& only) {
    const std::string folder = GetProgramFolder();
    const std::string command = "LD_PRELOAD='" + folder + "/compare/memory_hooks.so' '" + folder +
                                "/bench_compare' --memory" + (scale == Scale::Quick ? " --quick" : "") +
                                (only.empty() ? "" : " --only '" + only + "'");
    std::vector<MemoryFigure> figures;
    FILE* output = popen(command.c_str(), "r");
    if (output == nullptr) {
        return figures;
    }
    char line[512];
    while (std::fgets(line, sizeof(line), output) != nullptr) {
        std::istringstream cells(line);
        MemoryFigure figure;
        std::string operation;
        std::getline(cells, figure.workload, '\t');
        std::getline(cells, figure.label, '\t');
        std::getline(cells, operation, '\t');
        figure.operation = operation == GetOperationName(Operation::Write) ? Operation::Write : Operation::Read;
        if (cells >> figure.textBytes >> figure.peak >> figure.kept) {
            figures.push_back(figure);
        }
    }
    pclose(output);
    return figures;
}

}  // namespace compare
