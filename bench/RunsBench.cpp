// Packing lists of a million numbers in runs, and expanding them again. No JSON text is made.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>

#include "BenchHost.h"
#include "ListVisitors.h"

namespace {

constexpr int kListID = 1;
constexpr std::int64_t kElements = 1'000'000;

// What the elements look like.
enum Shape {
    Constant,    // one run
    Arithmetic,  // one run with a step
    Runs100,     // runs of a hundred with steps of their own
    Runs4,       // the shortest runs that are packed
    Random,      // no runs
};

const char* ShapeName(std::int64_t shape) {
    constexpr const char* names[] = {"constant", "arithmetic", "runs of 100", "runs of 4", "random"};
    return names[shape];
}

template <class T>
std::vector<T> MakeValues(std::int64_t shape) {
    std::mt19937 random(1);
    std::vector<T> values;
    values.reserve(kElements);
    for (std::int64_t i = 0; i < kElements; ++i) {
        switch (shape) {
            case Constant:
                values.push_back(T{42});
                break;
            case Arithmetic:
                values.push_back(static_cast<T>(15340 + i));
                break;
            case Runs100:
                values.push_back(static_cast<T>(i % 100 * (i / 100 % 7) + i / 100));
                break;
            case Runs4:
                values.push_back(static_cast<T>(i / 4 % 2 * 1000 + 5));
                break;
            default:
                values.push_back(static_cast<T>(random() % 1'000'000));
                break;
        }
    }
    return values;
}

template <class T>
void RegisterList(ParametersRegistry& registry) {
    RegisterCoreNamespaceParameters(registry, L"qvcore");
    const auto fill = [](AbstractParamAdder& adder) {
        adder.AddList(kListID, L"list", new ParameterTypeSerializer<T>);
    };
    registry.RegisterNamespace(L"bench", fill, kListID, kListID, true);
}

// Writing a list onto the stream: element type, shape of the list, packed or plain.
template <class T>
void BM_WriteNumberList(benchmark::State& state) {
    BenchRegistry registry;
    RegisterList<T>(registry);
    const std::vector<T> values = MakeValues<T>(state.range(0));
    const auto serializer = MakeRefCnt<ParameterTypeSerializer<T>>();
    std::int64_t events = 0;
    for (auto _ : state) {
        ListCounter counter;
        SerializeStructure stream(counter, true, state.range(1) != 0);
        serializer->SerializeVector(stream, kListID, values);
        benchmark::DoNotOptimize(events = counter.items + counter.lists);
    }
    state.SetItemsProcessed(state.iterations() * kElements);
    state.counters["events"] = static_cast<double>(events);
    state.SetLabel(ShapeName(state.range(0)));
}

// Expanding what packing gave: element type, shape of the list.
template <class T>
void BM_ExpandNumberList(benchmark::State& state) {
    BenchRegistry registry;
    RegisterList<T>(registry);
    const auto serializer = MakeRefCnt<ParameterTypeSerializer<T>>();
    ListCollector packed;
    SerializeStructure stream(packed, true, true);
    serializer->SerializeVector(stream, kListID, MakeValues<T>(state.range(0)));
    for (auto _ : state) {
        RefCntPtr<IParameter> list = serializer->FromStringList(packed.values, packed.runs);
        benchmark::DoNotOptimize(list);
    }
    state.SetItemsProcessed(state.iterations() * kElements);
    state.counters["runs"] = static_cast<double>(packed.runs.size());
    state.SetLabel(ShapeName(state.range(0)));
}

// Reals are packed where they are equal, so steps count for integers only.
void PackingAxes(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"shape", "packed"})
        ->ArgsProduct({{Constant, Arithmetic, Runs100, Runs4, Random}, {1}})
        ->Args({Random, 0})
        ->Unit(benchmark::kMillisecond);
}
void ExpandingAxes(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgName("shape")
        ->Arg(Constant)
        ->Arg(Arithmetic)
        ->Arg(Runs100)
        ->Arg(Runs4)
        ->Arg(Random)
        ->Unit(benchmark::kMillisecond);
}

BENCHMARK(BM_WriteNumberList<int>)->Apply(PackingAxes);
BENCHMARK(BM_WriteNumberList<Int64>)->Apply(PackingAxes);
BENCHMARK(BM_WriteNumberList<double>)->Apply(PackingAxes);
BENCHMARK(BM_ExpandNumberList<int>)->Apply(ExpandingAxes);
BENCHMARK(BM_ExpandNumberList<Int64>)->Apply(ExpandingAxes);
BENCHMARK(BM_ExpandNumberList<double>)->Apply(ExpandingAxes);

}  // namespace
