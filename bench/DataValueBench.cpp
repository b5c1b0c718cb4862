// Typed values: their texts both ways, type by type; and packing lists of a million of them in runs, and expanding
// those again. No JSON text is made.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <random>
#include <vector>

#include "BenchHost.h"
#include "ListVisitors.h"

namespace {

using Serializer = ParameterTypeSerializer<DataValue>;
using Values = std::vector<DataValue>;

constexpr int kListID = 1;
constexpr std::int64_t kElements = 1'000'000;
constexpr std::int64_t kTexts = 1000;  // values in turn, so that no branch learns one of them by heart

// What values of a kind look like.
enum Kind {
    Integer,     // of one to eighteen digits
    ShortReal,   // two decimals
    LongReal,    // all digits of a double
    String,      // of twelve letters
    LongString,  // of a thousand, every tenth a delimiter
    DateTimes,   // with milliseconds
    Boolean,
    Days,
    TupleOfFour,  // an integer, a real, two strings, one of them with a comma
    Null,
};

const char* KindName(std::int64_t kind) {
    constexpr const char* names[] = {"integer",   "short real", "long real", "string", "long string",
                                     "date-time", "boolean",    "date",      "tuple",  "null"};
    return names[kind];
}

DataValue MakeString(std::mt19937_64& random, std::size_t length, const wchar_t* delimiters) {
    const TString marks = delimiters;
    TString text;
    for (std::size_t i = 0; i < length; ++i) {
        const bool isMark = !marks.empty() && i % 10 == 9;
        text.push_back(isMark ? marks[random() % marks.size()] : static_cast<char16_t>(u'a' + random() % 26));
    }
    return IndirectString::Lookup(Collation(L"root"), text);
}

Date MakeDay(std::mt19937_64& random) { return Date(std::chrono::sys_days(std::chrono::days(random() % 20000))); }

DataValue MakeValue(std::mt19937_64& random, std::int64_t kind) {
    switch (kind) {
        case Integer:
            return static_cast<Int64>((random() % 1'000'000'000'000'000'000) >> (random() % 60));
        case ShortReal:
            return static_cast<double>(random() % 1'000'000) / 100;
        case LongReal:
            return static_cast<double>(random() >> 11) * 0x1p-53;
        case String:
            return MakeString(random, 12, L"");
        case LongString:
            return MakeString(random, 1000, L":,%#\"\\[]");
        case DateTimes:
            return DateTime(MakeDay(random), std::chrono::milliseconds(random() % 86'400'000));
        case Boolean:
            return random() % 2 == 0;
        case Days:
            return MakeDay(random);
        case TupleOfFour:
            return MakeRefCnt<Tuple>(Values{MakeValue(random, Integer), MakeValue(random, ShortReal),
                                            MakeValue(random, String), MakeString(random, 20, L",")});
        default:
            return DataValue::Null(DataType::Real);
    }
}

Values MakeValues(std::int64_t kind) {
    std::mt19937_64 random(1);
    Values values;
    for (std::int64_t i = 0; i < kTexts; ++i) {
        values.push_back(MakeValue(random, kind));
    }
    return values;
}

// Values to texts, by kind.
void BM_WriteTypedText(benchmark::State& state) {
    const Values values = MakeValues(state.range(0));
    for (auto _ : state) {
        for (const DataValue& value : values) {
            TString text = Serializer::TypeToString(value);
            benchmark::DoNotOptimize(text);
        }
    }
    state.SetItemsProcessed(state.iterations() * kTexts);
    state.SetLabel(KindName(state.range(0)));
}

// Texts to values, by kind.
void BM_ReadTypedText(benchmark::State& state) {
    std::vector<TString> texts;
    for (const DataValue& value : MakeValues(state.range(0))) {
        texts.push_back(Serializer::TypeToString(value));
    }
    for (auto _ : state) {
        for (const TString& text : texts) {
            DataValue value = Serializer::TypeFromString(text);
            benchmark::DoNotOptimize(value);
        }
    }
    state.SetItemsProcessed(state.iterations() * kTexts);
    state.SetLabel(KindName(state.range(0)));
}

// Values to bare texts, by kind.
void BM_WriteBareText(benchmark::State& state) {
    const Values values = MakeValues(state.range(0));
    for (auto _ : state) {
        for (const DataValue& value : values) {
            TString text = ContextualDataValueSerializerCore::ToString(value);
            benchmark::DoNotOptimize(text);
        }
    }
    state.SetItemsProcessed(state.iterations() * kTexts);
    state.SetLabel(KindName(state.range(0)));
}

// What the elements of a column look like; one in a thousand is null but in the first two.
enum Shape {
    Constant,    // one run
    Arithmetic,  // one run with a step; for reals as many values as elements
    Runs100,     // runs of a hundred, with steps of their own for integers
    Runs4,       // the shortest runs that are packed
    Random,      // no runs
};

const char* ShapeName(std::int64_t shape) {
    constexpr const char* names[] = {"constant", "arithmetic", "runs of 100", "runs of 4", "random"};
    return names[shape];
}

std::int64_t MakeNumber(std::mt19937_64& random, std::int64_t shape, bool isReal, std::int64_t i) {
    switch (shape) {
        case Constant:
            return 42;
        case Arithmetic:
            return 15340 + i;
        case Runs100:
            return (isReal ? 0 : i % 100 * (i / 100 % 7)) + i / 100;
        case Runs4:
            return i / 4 % 2 * 1000 + 5;
        default:
            return static_cast<std::int64_t>(random() % 1'000'000);
    }
}

Values MakeColumn(DataType type, std::int64_t shape) {
    const bool isReal = type == DataType::Real;
    std::mt19937_64 random(1);
    Values values;
    values.reserve(kElements);
    for (std::int64_t i = 0; i < kElements; ++i) {
        const std::int64_t number = MakeNumber(random, shape, isReal, i);
        if (shape >= Runs100 && i % 1000 == 500) {
            values.push_back(DataValue::Null(type));
        } else if (isReal) {
            values.emplace_back(static_cast<double>(number) / 4);
        } else {
            values.emplace_back(number);
        }
    }
    return values;
}

void RegisterList(ParametersRegistry& registry) {
    RegisterCoreNamespaceParameters(registry, L"qvcore");
    const auto fill = [](AbstractParamAdder& adder) { adder.AddList(kListID, L"list", new Serializer); };
    registry.RegisterNamespace(L"bench", fill, kListID, kListID, true);
}

// Writing a column onto the stream: type, shape, packed or plain.
void WriteColumn(benchmark::State& state, DataType type) {
    BenchRegistry registry;
    RegisterList(registry);
    const Values values = MakeColumn(type, state.range(0));
    const auto serializer = MakeRefCnt<Serializer>();
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

// A bare text with its letter, which the reader wants.
TString Lettered(const TString& text, DataType type) {
    const bool isReal = type == DataType::Real;
    return TString(!isReal ? L"i:" : text == L"null" ? L"r:" : L"r:::") + text;
}

// Expanding what packing gave, once its texts have their letters: type, shape.
void ExpandColumn(benchmark::State& state, DataType type) {
    BenchRegistry registry;
    RegisterList(registry);
    const auto serializer = MakeRefCnt<Serializer>();
    ListCollector packed;
    SerializeStructure stream(packed, true, true);
    serializer->SerializeVector(stream, kListID, MakeColumn(type, state.range(0)));
    for (TString& text : packed.values) {
        text = Lettered(text, type);
    }
    for (RunRecord& run : packed.runs) {
        if (!run.second.empty()) {
            run.second.front() = Lettered(run.second.front(), type);
        }
    }
    for (auto _ : state) {
        RefCntPtr<IParameter> list = serializer->FromStringList(packed.values, packed.runs);
        benchmark::DoNotOptimize(list);
    }
    state.SetItemsProcessed(state.iterations() * kElements);
    state.counters["runs"] = static_cast<double>(packed.runs.size());
    state.SetLabel(ShapeName(state.range(0)));
}

void BM_WriteTypedIntegers(benchmark::State& state) { WriteColumn(state, DataType::Integer); }
void BM_WriteTypedReals(benchmark::State& state) { WriteColumn(state, DataType::Real); }
void BM_ExpandTypedIntegers(benchmark::State& state) { ExpandColumn(state, DataType::Integer); }
void BM_ExpandTypedReals(benchmark::State& state) { ExpandColumn(state, DataType::Real); }

void PackingAxes(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"shape", "packed"})
        ->ArgsProduct({{Constant, Arithmetic, Runs100, Runs4, Random}, {1}})
        ->Args({Random, 0})
        ->Unit(benchmark::kMillisecond);
}
void ExpandingAxes(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgName("shape")->DenseRange(Constant, Random)->Unit(benchmark::kMillisecond);
}

BENCHMARK(BM_WriteTypedText)->ArgName("kind")->DenseRange(Integer, Null);
BENCHMARK(BM_ReadTypedText)->ArgName("kind")->DenseRange(Integer, Null);
BENCHMARK(BM_WriteBareText)->ArgName("kind")->DenseRange(Integer, Null);
BENCHMARK(BM_WriteTypedIntegers)->Apply(PackingAxes);
BENCHMARK(BM_WriteTypedReals)->Apply(PackingAxes);
BENCHMARK(BM_ExpandTypedIntegers)->Apply(ExpandingAxes);
BENCHMARK(BM_ExpandTypedReals)->Apply(ExpandingAxes);

}  // namespace
