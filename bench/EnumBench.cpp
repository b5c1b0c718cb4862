// Enumerations to text and back: a table of 3 names and one of 164, for texts that are names and texts that are none.
#include <qvpreslayer/qvpreslayer.h>

#include <cstddef>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

// Every value of E to text, one for each iteration in turn.
template <class E>
void BM_EnumToText(benchmark::State& state) {
    std::vector<E> values;
    for (const EnumName<E>& line : GetEnumValues<E>()) {
        values.push_back(line.value);
    }
    std::size_t next = 0;
    for (auto _ : state) {
        TString text = ParameterTypeSerializer<E>::TypeToString(values[next]);
        benchmark::DoNotOptimize(text);
        next = next + 1 == values.size() ? 0 : next + 1;
    }
    state.SetItemsProcessed(state.iterations());
}

// Texts to values, one for each iteration in turn: every name of E, or every name with its last character changed.
template <class E>
void BM_TextToEnum(benchmark::State& state) {
    const bool hit = state.range(0) != 0;
    std::vector<TString> texts;
    for (const EnumName<E>& line : GetEnumValues<E>()) {
        texts.emplace_back(line.name);
        if (!hit) {
            texts.back().mutable_data()[texts.back().size() - 1] = u'#';
        }
    }
    std::size_t next = 0;
    for (auto _ : state) {
        E value = ParameterTypeSerializer<E>::TypeFromString(texts[next]);
        benchmark::DoNotOptimize(value);
        next = next + 1 == texts.size() ? 0 : next + 1;
    }
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK(BM_EnumToText<WhiskerEnd>);
BENCHMARK(BM_EnumToText<StyleAttribute>);
BENCHMARK(BM_TextToEnum<WhiskerEnd>)->ArgName("hit")->Arg(1)->Arg(0);
BENCHMARK(BM_TextToEnum<StyleAttribute>)->ArgName("hit")->Arg(1)->Arg(0);

}  // namespace
