// The vocabulary and the bags that the JSON benchmarks write and read.
#pragma once

#include <vector>

#include "BenchHost.h"

inline constexpr const wchar_t* kBenchNamespace = L"bench";
inline constexpr int kFirstBenchID = 1001;
inline constexpr int kBenchParameters = 300;
inline constexpr int kChildID = 2000;  // nested bags: this one and the following, up to kMaxFanOut
inline constexpr int kMaxFanOut = 8;

// The kinds that the parameters take turns with; ten make a round.
inline void AddBenchParameter(AbstractParamAdder& adder, int id, int number) {
    const std::wstring suffix = std::to_wstring(number);
    const std::wstring name = L"bench-value-number-" + suffix;
    const std::wstring shortName = L"b" + suffix;
    const wchar_t* const verbose = name.c_str();
    const wchar_t* const brief = shortName.c_str();
    switch (number % 10) {
        case 0:
            return adder.AddSimple(id, verbose, brief, new ParameterTypeSerializer<int>);
        case 1:
            return adder.AddSimple(id, verbose, brief, new ParameterTypeSerializer<unsigned int>);
        case 2:
            return adder.AddSimple(id, verbose, brief, new ParameterTypeSerializer<double>);
        case 3:
            return adder.AddSimple(id, verbose, brief, new ParameterTypeSerializer<float>);
        case 4:
            return adder.AddSimple(id, verbose, brief, new ParameterTypeSerializer<bool>);
        case 5:
            return adder.AddSimple(id, verbose, brief, new ParameterTypeSerializer<SecondsDuration>);
        case 6:
            return adder.AddList(id, verbose, brief, new ParameterTypeSerializer<double>);
        case 7:
            return adder.AddMap(id, verbose, brief, new TStringSerializer);
        default:
            return adder.AddSimple(id, verbose, brief, new TStringSerializer);
    }
}

inline void RegisterBenchVocabulary(ParametersRegistry& registry) {
    RegisterCoreNamespaceParameters(registry, L"qvcore");
    const auto fill = [](AbstractParamAdder& adder) {
        for (int i = 0; i < kBenchParameters; ++i) {
            AddBenchParameter(adder, kFirstBenchID + i, i);
        }
        for (int i = 0; i < kMaxFanOut; ++i) {
            const std::wstring name = L"child-" + std::to_wstring(i);
            adder.AddBag(kChildID + i, name.c_str());
        }
    };
    registry.RegisterNamespace(kBenchNamespace, fill, kFirstBenchID, kChildID + kMaxFanOut, true);
}

inline void SetBenchValue(IParameters& bag, int id, int number) {
    switch (number % 10) {
        case 0:
            return SetParameterValue<int>(bag, id, -number);
        case 1:
            return SetParameterValue<unsigned int>(bag, id, static_cast<unsigned int>(number) * 1000003U);
        case 2:
            return SetParameterValue<double>(bag, id, number * 0.37 + 0.001);
        case 3:
            return SetParameterValue<float>(bag, id, static_cast<float>(number) + 0.25F);
        case 4:
            return SetParameterValue<bool>(bag, id, number % 20 == 4);
        case 5:
            return SetParameterValue<SecondsDuration>(bag, id, SecondsDuration(number * 3600));
        case 6:
            return SetParameterValue(bag, id, std::vector<double>{number + 0.1, 2.5, -0.75, 1e6, 4});
        case 7:
            return SetParameterValue(
                bag, id, std::map<TString, TString>{{L"left", L"10px"}, {L"right", L"12px"}, {L"top", L"auto"}});
        case 8:
            return SetParameterValue<TString>(bag, id, L"A title of ordinary length, as views have them");
        default:
            return SetParameterValue<TString>(bag, id, L"A \"quoted\" text\twith a tab and \u00e4\u00f6\u00fc");
    }
}

// A bag of the first count parameters.
inline RefCntPtr<IParameters> MakeBenchBag(int count) {
    const RefCntPtr<IParameters> bag = ParametersRegistry::Get().CreateParameters();
    for (int i = 0; i < count; ++i) {
        SetBenchValue(*bag, kFirstBenchID + i, i);
    }
    return bag;
}

// Bags in bags: depth levels, fanOut bags in each of all but the innermost, ten parameters in every one.
inline RefCntPtr<IParameters> MakeNestedBag(int depth, int fanOut) {
    const RefCntPtr<IParameters> bag = MakeBenchBag(10);
    for (int i = 0; depth > 1 && i < fanOut; ++i) {
        SetParameterValue<RefCntPtr<const IParameters>>(*bag, kChildID + i, MakeNestedBag(depth - 1, fanOut));
    }
    return bag;
}
