// What the blocks of the documents stand on: a host with the parameters that the documents speak of.
#pragma once

#include <iostream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <qvpreslayer/qvpreslayer.h>

// What is printed while it lives.
class DocOutput {
public:
    DocOutput() : m_before(std::cout.rdbuf(m_stream.rdbuf())) {}
    DocOutput(const DocOutput&) = delete;
    DocOutput& operator=(const DocOutput&) = delete;
    ~DocOutput() {
        std::cout.rdbuf(m_before);
        ParametersRegistry::SetInstance(nullptr);  // that of a program is gone with it
    }

    std::string Text() const { return m_stream.str(); }

private:
    std::ostringstream m_stream;
    std::streambuf* m_before;
};

#define DOC_EXPECT_THROW(statement, type) EXPECT_THROW(static_cast<void>(statement), type)

// The classes and identifiers of the tutorial.
class ChartBag : public BaseParameters {
    RefCntPtr<BaseParameters> DoEmptyClone() override { return MakeRefCnt<ChartBag>(); }
};

class ChartRegistry : public ParametersRegistry {
public:
    virtual ~ChartRegistry() = default;
    RefCntPtr<IParameters> CreateParameters() override { return MakeRefCnt<ChartBag>(); }
};

enum : int {
    kTitle = 1001,
    kMarkSizes,
    kColors,
    kStyle,
    kOpacity,
    kDays,
    kMaxCount,
    kSelection,
    kPlace,
    kSeries,
};

inline void RegisterChartParameters(AbstractParamAdder& adder) {
    adder.AddSimple(kTitle, L"title", L"ti", new TStringSerializer);
    adder.AddList(kMarkSizes, L"mark-sizes", L"ms", new ParameterTypeSerializer<double>);
    adder.AddMap(kColors, L"colors", L"cl", new TStringSerializer);
    adder.AddBag(kStyle, L"style", L"st");
    adder.AddSimple(kOpacity, L"opacity", L"op", new ParameterTypeSerializer<double>);
    adder.AddList(kDays, L"days", L"da", new ParameterTypeSerializer<int>);
    adder.AddSimple(kMaxCount, L"max-count", L"mc", new ParameterTypeSerializer<int>);
    adder.AddList(kSelection, L"selection", L"se", new ParameterTypeSerializer<int>);
    adder.AddStructure(kPlace, L"place", L"pl", new BagStructureSerializer);
    adder.AddStructureList(kSeries, L"series", L"sr", new BagStructureSerializer);
}

// What declarations that are shown alone are made on; it forgets them.
class DocAdder final : public AbstractParamAdder {
    void AddStructureEntry(int, const TString&, const TString&, RefCntPtr<IStructureSerializer>,
                           ParameterTypeCategory) override {}
    void AddValueEntry(int, const TString&, const TString&, RefCntPtr<IParameterSerializer>,
                       ParameterTypeCategory) override {}
};

// Blocks of statements run as member functions of it, so that they may name what stands here.
struct DocHost {
    DocHost() {
        ParametersRegistry::SetInstance(&registry);
        RegisterCoreNamespaceParameters(L"qvcore");
        registry.RegisterNamespace(L"chart", RegisterChartParameters, 1000, 1999, false);
    }

    ChartRegistry registry;
    RefCntPtr<IParameters> bag = MakeRefCnt<ChartBag>();
    JSONSerializer json{L"chart"};
    DocAdder adder;
};
