// Packing lists of a million numbers in runs, and expanding them again. No JSON text is made.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>

#include "BenchHost.h"

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

// Counts what it is told and forgets it. Derived classes keep some.
class CountingVisitor : public IStructuredParameterVisitor {
public:
    std::int64_t items = 0;
    std::int64_t lists = 0;

    void Parameter(const TString&, const TString&, ParameterTypeCategory) override {}
    void StartList(const TString&, ParameterTypeCategory) override { ++lists; }
    void ListItem(const TString&) override { ++items; }
    void EndList(const TString&) override {}
    void StartMap(const TString&, ParameterTypeCategory) override {}
    void MapItem(const TString&, const TString&, bool) override {}
    void EndMap(const TString&) override {}
    void StartComposite(const TString&, bool) override {}
    void EndComposite(const TString&) override {}
    void NullMapItem(const TString&, bool) override {}
    void StartCapture() override {}
    TString EndCapture() override { return TString(); }
    void WriteCaptured(const TString&) override {}

protected:
    ~CountingVisitor() = default;
};

class Counter final : public CountingVisitor {};

// Keeps a list as the reader of JSON hands it to a serializer: plain elements, and nested lists by their position.
class Collector final : public CountingVisitor {
public:
    std::vector<TString> values;
    std::vector<RunRecord> runs;

    void StartList(const TString& name, ParameterTypeCategory kind) override {
        CountingVisitor::StartList(name, kind);
        if (++m_depth == 2) {
            runs.emplace_back(static_cast<int>(m_position++), std::vector<TString>());
        }
    }
    void ListItem(const TString& text) override {
        if (m_depth == 2) {
            runs.back().second.push_back(text);
        } else {
            values.push_back(text);
            ++m_position;
        }
    }
    void EndList(const TString&) override { --m_depth; }

private:
    int m_depth = 0;
    std::int64_t m_position = 0;
};

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
        Counter counter;
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
    Collector packed;
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
