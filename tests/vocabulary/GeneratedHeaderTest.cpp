// A generated header as a host uses it: data/every-type.json became EveryType.h before this file was compiled.
#include "EveryType.h"

#include <gtest/gtest.h>

#include "tools/vocabulary/CppHeader.h"
#include "vocabulary/VocabularyTestSupport.h"

using namespace qvpres;
using everytype::EveryTypeID::kAInt;
namespace ids = everytype::EveryTypeID;

namespace {

// Everything that a registry knows, a line for each parameter; serializers by their class.
std::string DescriptionOf(const ParametersRegistry& registry) {
    std::string text;
    for (const ParameterNamespaceInfo& info : registry.DescribeNamespaces()) {
        text += info.name.ToUtf8() + " " + std::to_string(info.firstId) + " " + std::to_string(info.lastId) + " " +
                info.fallback.ToUtf8() + "\n";
        for (const ParameterInfo* parameter : info.parameters) {
            text += std::to_string(parameter->id) + " " + parameter->verboseName.ToUtf8() + " " +
                    parameter->shortName.ToUtf8() + " " + std::to_string(parameter->kind);
            if (const auto* serializer = parameter->serializer.Get()) {
                text += std::string(" ") + typeid(*serializer).name();
            }
            if (const auto* serializer = parameter->structureSerializer.Get()) {
                text += std::string(" ") + typeid(*serializer).name() + (serializer->IsListForm() ? " list" : "");
            }
            text += "\n";
        }
    }
    for (const int id : registry.GetUnserializable()) {
        text += std::to_string(id) + "\n";
    }
    return text;
}

// The description with the serializer of one parameter exchanged.
template <class From, class To>
void Exchange(std::string& description, const std::string& parameter) {
    std::string line = parameter;
    line.append(typeid(From).name());
    const std::size_t at = description.find(line);
    ASSERT_NE(std::string::npos, at) << line;
    description.replace(at + parameter.size(), line.size() - parameter.size(), typeid(To).name());
}

}  // namespace

TEST(GeneratedHeader, RegistersWhatTheDeclarationFileDeclares) {
    std::string declared;
    {
        ToolRegistry registry;
        Vocabulary::FromFile(VOCABULARY_TEST_DATA "/every-type.json").Register(registry);
        declared = DescriptionOf(registry);
    }
    // Only generated code knows the host's own serializers.
    Exchange<TStringSerializer, ParameterTypeSerializer<Season>>(declared, "season h1 1 ");
    Exchange<BagStructureSerializer, CountingSerializer>(declared, "counted h2 6 ");
    ToolRegistry registry;
    everytype::RegisterVocabulary(registry);
    EXPECT_EQ(declared, DescriptionOf(registry));
}

TEST(GeneratedHeader, ConstantsAreTheIdentifiers) {
    EXPECT_EQ(0x20000001, everytype::kFirstEveryTypeID);
    EXPECT_EQ(0x2000ffff, everytype::kLastEveryTypeID);
    EXPECT_EQ(TString(L"every-type"), TString(everytype::kEveryTypeNamespace));
    EXPECT_EQ(0x20000001, ids::kAText);
    EXPECT_EQ(0x20000002, kAInt);
    EXPECT_EQ(0x20000073, ids::kAInt_536871027);  // "a--int" comes out as "a-int" does
    EXPECT_EQ(0x20000071, ids::kGrU00f6U00dfEX);
    EXPECT_EQ(0x20000072, ids::kUd83dUde00);
    EXPECT_EQ(-20, everytype::SharedID::kAShared);
    EXPECT_EQ(std::numeric_limits<int>::min(), everytype::kFirstNamespace2EmptyID);
}

TEST(GeneratedHeader, AHostWritesAndReadsWithIt) {
    ToolRegistry registry;
    everytype::RegisterVocabulary(registry);
    const RefCntPtr<IParameters> bag = MakeRefCnt<ToolBag>();
    SetParameterValue<TString>(*bag, ids::kAText, L"x");
    SetParameterValue<WhiskerEnd>(*bag, ids::kWhiskerEnd, WhiskerEnd::Small);
    SetParameterValue<std::vector<double>>(*bag, ids::kDoubleList, {1, 2.5});
    SetParameterValue<Season>(*bag, ids::kSeason, Season::Wet);
    SetParameterValue<std::vector<int>>(*bag, ids::kSelection, {1});
    SetParameterValue<bool>(*bag, everytype::SharedID::kAShared, true);
    const std::string text =
        R"({"aShared": true,"aText": "x","whiskerEnd": "small","doubleList":[1,2.5],"season": "wet-season"})";
    EXPECT_EQ(text, CompactText(bag, L"every-type"));
    const RefCntPtr<IParameters> copy = ReadBag(text, L"every-type");
    EXPECT_EQ(Season::Wet, GetParameterValue<Season>(*copy, ids::kSeason));
    EXPECT_EQ(text, CompactText(copy, L"every-type"));
}

TEST(CppHeader, TheWholeOfASmallOne) {
    const Vocabulary vocabulary = VocabularyOf(R"({"description": "Charts", "cpp": {"includes": ["a/b.h"]},
        "namespaces": [{"name": "chart", "firstId": 1000, "lastId": 1999, "fallback": "qvcore", "parameters": [
            {"id": 1001, "name": "title", "short": "ti", "type": "text", "description": "above"},
            {"id": 1002, "name": "mark-sizes", "kind": "list", "type": "double", "unserializable": true},
            {"id": 1003, "name": "style", "short": "st", "kind": "bag"},
            {"id": 1004, "name": "range", "short": "ra", "kind": "structure-list", "form": "list"}]}],
        "unserializable": [-5]})");
    EXPECT_EQ(R"(// Made from chart.json by qvpres generate --cpp; do not edit.
// clang-format off
//
// Charts
#pragma once

#include <qvpreslayer/qvpreslayer.h>

#include "a/b.h"

inline constexpr const wchar_t* kChartNamespace = L"chart";
inline constexpr int kFirstChartID = 1000;
inline constexpr int kLastChartID = 1999;

namespace ChartID {
enum : int {
    kTitle = 1001,  // TString: above
    kMarkSizes = 1002,  // list of double; never written
    kStyle = 1003,  // bag
    kRange = 1004,  // list of structures in the form of a list
};
}  // namespace ChartID

// The parameters of "chart".
inline void AddChartParameters(AbstractParamAdder& adder) {
    adder.AddSimple(ChartID::kTitle, L"title", L"ti", new TStringSerializer);
    adder.AddList(ChartID::kMarkSizes, L"mark-sizes", L"", new ParameterTypeSerializer<double>);
    adder.AddBag(ChartID::kStyle, L"style", L"st");
    adder.AddStructureList(ChartID::kRange, L"range", L"ra", new BagStructureSerializer(BagStructureSerializer::List));
}

// Registers all of the above, and the library's own namespace where the registry has none.
inline void RegisterVocabulary(ParametersRegistry& registry) {
    if (!registry.HasNamespace(L"qvcore")) {
        RegisterCoreNamespaceParameters(registry, L"qvcore");
    }
    registry.RegisterNamespace(kChartNamespace, AddChartParameters, kFirstChartID, kLastChartID, false);
    registry.SetFallback(kChartNamespace, L"qvcore");
    registry.AddUnserializable(ChartID::kMarkSizes);
    registry.AddUnserializable(-5);
}
)",
              ToCppHeader(vocabulary, "chart.json"));
}
