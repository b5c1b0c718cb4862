// Looking up parameters by identifier and by name, after all namespaces have been filled.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <utility>
#include <vector>

#include "BenchHost.h"

namespace {

constexpr int kParametersPerNamespace = 100;
constexpr int kRangeSize = 1000;  // identifiers that a namespace covers; most of them stay unused
constexpr std::size_t kQuestions = 4096;

TString NamespaceName(int number) { return TString(L"namespace-") + TString::number(number, 10, 4, u'0'); }

std::wstring ParameterName(int number) { return L"parameter-name-" + std::to_wstring(number); }

// Registers and fills the namespaces.
void RegisterNamespaces(ParametersRegistry& registry, int count) {
    for (int number = 0; number < count; ++number) {
        const int first = 1 + number * kRangeSize;
        const auto fill = [first](AbstractParamAdder& adder) {
            for (int i = 0; i < kParametersPerNamespace; ++i) {
                const std::wstring shortName = L"p" + std::to_wstring(i);
                adder.AddSimple(first + i, ParameterName(i).c_str(), shortName.c_str(),
                                new ParameterTypeSerializer<int>);
            }
        };
        registry.RegisterNamespace(NamespaceName(number), fill, first, first + kRangeSize - 1, true);
    }
}

// What is asked for, in random order over all namespaces.
struct Question {
    TString namespaceName;
    TString name;
    int id;
};

std::vector<Question> MakeQuestions(int namespaces) {
    std::mt19937 random(1);
    std::vector<Question> questions;
    for (std::size_t i = 0; i < kQuestions; ++i) {
        const int number = std::uniform_int_distribution(0, namespaces - 1)(random);
        const int parameter = std::uniform_int_distribution(0, kParametersPerNamespace - 1)(random);
        questions.push_back({NamespaceName(number), TString::FromStdWString(ParameterName(parameter)),
                             1 + number * kRangeSize + parameter});
    }
    return questions;
}

// Asks one question after the other, over and over.
template <class Ask>
void LookUp(benchmark::State& state, Ask ask) {
    BenchRegistry registry;
    const int namespaces = static_cast<int>(state.range(0));
    RegisterNamespaces(registry, namespaces);
    const std::vector<Question> questions = MakeQuestions(namespaces);
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ask(std::as_const(registry), questions[next]));
        next = (next + 1) % kQuestions;
    }
    state.SetItemsProcessed(state.iterations());
}

// By identifier: number of namespaces.
void BM_FindInfoByID(benchmark::State& state) {
    LookUp(state,
           [](const ParametersRegistry& registry, const Question& question) { return registry.FindInfo(question.id); });
}
BENCHMARK(BM_FindInfoByID)->ArgName("namespaces")->Arg(1)->Arg(1000);

void BM_GetTypeByID(benchmark::State& state) {
    LookUp(state,
           [](const ParametersRegistry& registry, const Question& question) { return registry.GetType(question.id); });
}
BENCHMARK(BM_GetTypeByID)->ArgName("namespaces")->Arg(1)->Arg(1000);

void BM_GetNameByID(benchmark::State& state) {
    LookUp(state, [](const ParametersRegistry& registry, const Question& question) {
        return registry.GetName(question.id, true).data();
    });
}
BENCHMARK(BM_GetNameByID)->ArgName("namespaces")->Arg(1)->Arg(1000);

// By name in a namespace: number of namespaces.
void BM_GetIDByName(benchmark::State& state) {
    LookUp(state, [](const ParametersRegistry& registry, const Question& question) {
        return registry.GetID(question.namespaceName, question.name, true);
    });
}
BENCHMARK(BM_GetIDByName)->ArgName("namespaces")->Arg(1)->Arg(1000);

// By name, found at the end of a chain of fallbacks: length of the chain.
void BM_GetIDByNameThroughFallbacks(benchmark::State& state) {
    BenchRegistry registry;
    const int namespaces = static_cast<int>(state.range(0));
    for (int number = 0; number < namespaces; ++number) {
        const int first = 1 + number * kRangeSize;
        const bool last = number + 1 == namespaces;
        const auto fill = [first, last](AbstractParamAdder& adder) {
            adder.AddSimple(first, last ? L"wanted" : L"other", new ParameterTypeSerializer<int>);
        };
        registry.RegisterNamespace(NamespaceName(number), fill, first, first + kRangeSize - 1, true);
    }
    for (int number = 0; number + 1 < namespaces; ++number) {
        registry.SetFallback(NamespaceName(number), NamespaceName(number + 1));
    }
    const TString start = NamespaceName(0);
    const TString wanted = L"wanted";
    for (auto _ : state) {
        benchmark::DoNotOptimize(registry.GetID(start, wanted, true));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_GetIDByNameThroughFallbacks)->ArgName("chain")->Arg(1)->Arg(2)->Arg(8);

}  // namespace
