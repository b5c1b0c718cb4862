#include <qvpreslayer/ParametersRegistry.h>

#include <string>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

std::string LinesOf(const ParametersRegistry& registry) {
    std::string lines;
    for (const ParameterNamespaceInfo& info : registry.DescribeNamespaces()) {
        lines += info.name.ToUtf8() + " " + std::to_string(info.firstId) + " " + std::to_string(info.lastId) + " <" +
                 info.fallback.ToUtf8() + ">";
        for (const ParameterInfo* parameter : info.parameters) {
            lines += " " + std::to_string(parameter->id) + "=" + parameter->verboseName.ToUtf8() + "/" +
                     parameter->shortName.ToUtf8();
        }
        lines += "\n";
    }
    return lines;
}

}  // namespace

TEST(RegistryDescription, NamespacesComeInNameOrderWithAllTheirParameters) {
    TestRegistry registry;
    registry.Add(L"b", -20, -10, [](AbstractParamAdder& adder) {
        adder.AddBag(-12, L"twelve", L"tw");
        adder.AddBag(-15, L"no-short", L"");
    });
    registry.Add(L"a", 1, 9, [](AbstractParamAdder& adder) { adder.AddBag(1, L"one"); });
    registry.SetFallback(L"b", L"a");
    EXPECT_EQ(
        "a 1 9 <> 1=one/one\n"
        "b -20 -10 <a> -12=twelve/tw -15=no-short/\n",
        LinesOf(registry));
}

TEST(RegistryDescription, AnIdentifierThatWasAddedAgainStandsOnceInItsFirstPlace) {
    TestRegistry registry;
    registry.Add(L"a", 1, 9, [](AbstractParamAdder& adder) {
        adder.AddBag(2, L"old");
        adder.AddBag(1, L"one");
        adder.AddBag(2, L"new");
    });
    EXPECT_EQ("a 1 9 <> 2=new/new 1=one/one\n", LinesOf(registry));
}

TEST(RegistryDescription, RecordsAreThoseOfTheLookup) {
    TestRegistry registry;
    registry.Add(L"a", 1, 9, [](AbstractParamAdder& adder) { adder.AddBag(1, L"one"); });
    EXPECT_EQ(registry.FindInfo(1), registry.DescribeNamespaces().at(0).parameters.at(0));
}

TEST(RegistryDescription, NothingIsDescribedOfAnEmptyRegistry) {
    const TestRegistry registry;
    EXPECT_TRUE(registry.DescribeNamespaces().empty());
    EXPECT_TRUE(registry.GetUnserializable().empty());
}

TEST(RegistryDescription, UnserializableIdentifiersComeUpwardsAlsoWhenTheyAreNotRegistered) {
    TestRegistry registry;
    for (const int id : {7, -3, 12, 7}) {
        registry.AddUnserializable(id);
    }
    EXPECT_EQ((std::vector<int>{-3, 7, 12}), registry.GetUnserializable());
}
