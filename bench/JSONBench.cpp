// Writing and reading JSON. The bytes of the tables are characters of the text, one for one.
#include <benchmark/benchmark.h>

#include <fstream>
#include <stdexcept>

#include "BenchBags.h"
#include "WeatherModel.h"
#include "WeatherTable.h"
#include "WeatherVocabulary.h"

namespace {

void Write(benchmark::State& state, const TString& namespaceName, const RefCntPtr<IParameters>& bag,
           JSONSerializer::OutputType layout) {
    const JSONSerializer serializer(namespaceName);
    std::size_t characters = 0;
    for (auto _ : state) {
        TString json = serializer.ToString(bag, layout);
        benchmark::DoNotOptimize(json);
        characters = json.size();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(characters));
    state.counters["characters"] = static_cast<double>(characters);
}

void Read(benchmark::State& state, const TString& namespaceName, const RefCntPtr<IParameters>& bag,
          JSONSerializer::OutputType layout) {
    const JSONSerializer serializer(namespaceName);
    const TString json = serializer.ToString(bag, layout);
    for (auto _ : state) {
        RefCntPtr<IParameters> read = serializer.ToParameters(json);
        benchmark::DoNotOptimize(read);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(json.size()));
    state.counters["characters"] = static_cast<double>(json.size());
}

JSONSerializer::OutputType Layout(const benchmark::State& state, std::size_t axis) {
    return state.range(axis) != 0 ? JSONSerializer::Pretty : JSONSerializer::Compact;
}

// A bag of 300 parameters: short names, pretty.
void BM_WriteBag300(benchmark::State& state) {
    BenchRegistry registry;
    RegisterBenchVocabulary(registry);
    const BenchSession session(state.range(0) != 0, false);
    Write(state, kBenchNamespace, MakeBenchBag(kBenchParameters), Layout(state, 1));
}
BENCHMARK(BM_WriteBag300)->ArgNames({"short", "pretty"})->ArgsProduct({{0, 1}, {0, 1}});

void BM_ReadBag300(benchmark::State& state) {
    BenchRegistry registry;
    RegisterBenchVocabulary(registry);
    const BenchSession session(state.range(0) != 0, false);
    Read(state, kBenchNamespace, MakeBenchBag(kBenchParameters), Layout(state, 1));
}
BENCHMARK(BM_ReadBag300)->ArgNames({"short", "pretty"})->ArgsProduct({{0, 1}, {0, 1}});

// Bags in bags, ten parameters in each: levels, bags in a bag.
void BM_WriteNestedBags(benchmark::State& state) {
    BenchRegistry registry;
    RegisterBenchVocabulary(registry);
    Write(state, kBenchNamespace, MakeNestedBag(static_cast<int>(state.range(0)), static_cast<int>(state.range(1))),
          JSONSerializer::Compact);
}
BENCHMARK(BM_WriteNestedBags)->ArgNames({"depth", "fan"})->ArgsProduct({{6}, {1, 2, 4}});

void BM_ReadNestedBags(benchmark::State& state) {
    BenchRegistry registry;
    RegisterBenchVocabulary(registry);
    Read(state, kBenchNamespace, MakeNestedBag(static_cast<int>(state.range(0)), static_cast<int>(state.range(1))),
         JSONSerializer::Compact);
}
BENCHMARK(BM_ReadNestedBags)->ArgNames({"depth", "fan"})->ArgsProduct({{6}, {1, 2, 4}});

template <class T>
void Repeat(std::vector<T>& column, std::int64_t times) {
    const std::vector<T> once = column;
    for (std::int64_t i = 1; i < times; ++i) {
        column.insert(column.end(), once.begin(), once.end());
    }
}

// A bag with the model of the weather table, its rows repeated.
RefCntPtr<IParameters> MakeWeatherBag(std::int64_t times) {
    std::ifstream file(WEATHER_TABLE_FILE);
    if (!file) {
        throw std::runtime_error("cannot open " WEATHER_TABLE_FILE);
    }
    weather::WeatherTable table = weather::ReadWeatherTable(file);
    Repeat(table.dayNumbers, times);
    Repeat(table.precipitation, times);
    Repeat(table.tempMax, times);
    Repeat(table.tempMin, times);
    Repeat(table.wind, times);
    Repeat(table.conditions, times);
    return MakeRefCnt<weather::WeatherModel>(std::move(table))->AsIParameters();
}

// The weather columns: packed arrays, how many times the table. The time must grow as the text does.
void BM_WriteWeather(benchmark::State& state) {
    BenchRegistry registry;
    weather::RegisterVocabulary(registry);
    const BenchSession session(false, state.range(0) != 0);
    Write(state, weather::kViewNamespace, MakeWeatherBag(state.range(1)), JSONSerializer::Compact);
}
BENCHMARK(BM_WriteWeather)->ArgNames({"packed", "times"})->ArgsProduct({{0, 1}, {1, 8, 64}});

void BM_ReadWeather(benchmark::State& state) {
    BenchRegistry registry;
    weather::RegisterVocabulary(registry);
    const BenchSession session(false, state.range(0) != 0);
    Read(state, weather::kViewNamespace, MakeWeatherBag(state.range(1)), JSONSerializer::Compact);
}
BENCHMARK(BM_ReadWeather)->ArgNames({"packed", "times"})->ArgsProduct({{0, 1}, {1, 8, 64}});

}  // namespace
