#include <qvpreslayer/ParametersRegistry.h>

#include <limits>
#include <map>
#include <random>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

// Registers first to last, all of them, under the names "<namespace><id>".
void AddRange(TestRegistry& registry, const std::string& name, int first, int last) {
    registry.Add(TString::FromUtf8(name), first, last, [=](AbstractParamAdder& adder) {
        for (Int64 id = first; id <= last; ++id) {
            const std::wstring parameter = TString::FromUtf8(name + std::to_string(id)).ToStdWString();
            adder.AddSimple(static_cast<int>(id), parameter.c_str(), TextSerializer());
        }
    });
}

// The name of id, or "-" when nothing covers it.
std::string NameOf(const ParametersRegistry& registry, int id) {
    try {
        return registry.GetName(id, true).ToUtf8();
    } catch (const ParameterNotFoundException& error) {
        EXPECT_EQ(id, error.GetID());
        return "-";
    }
}

}  // namespace

TEST(RegistryCoverage, LimitsBelongToTheRange) {
    TestRegistry registry;
    AddRange(registry, "a", -3, 3);
    EXPECT_EQ("-", NameOf(registry, -4));
    EXPECT_EQ("a-3", NameOf(registry, -3));
    EXPECT_EQ("a3", NameOf(registry, 3));
    EXPECT_EQ("-", NameOf(registry, 4));
}

TEST(RegistryCoverage, TheFirstNameCoversWhatIsShared) {
    TestRegistry registry;
    AddRange(registry, "b", 1, 10);
    AddRange(registry, "a", 5, 6);
    AddRange(registry, "c", 9, 12);
    EXPECT_EQ("b4", NameOf(registry, 4));
    EXPECT_EQ("a5", NameOf(registry, 5));
    EXPECT_EQ("b7", NameOf(registry, 7));
    EXPECT_EQ("b10", NameOf(registry, 10));
    EXPECT_EQ("c11", NameOf(registry, 11));
    registry.Clear(L"a");
    EXPECT_EQ("b5", NameOf(registry, 5));
}

TEST(RegistryCoverage, TheFirstNameCoversAlone) {
    TestRegistry registry;
    registry.Add(L"a", 1, 10, [](AbstractParamAdder&) {});
    AddRange(registry, "b", 1, 10);
    EXPECT_EQ(5, NotFoundId([&] { registry.GetType(5); }));
    EXPECT_EQ("-", NameOf(registry, 5));
    EXPECT_EQ(5, registry.GetID(L"b", L"b5", true)) << "by name it is found";
}

TEST(RegistryCoverage, OnlyTheCoveringNamespaceIsFilled) {
    TestRegistry registry;
    int runs = 0;
    AddRange(registry, "a", 1, 10);
    registry.Add(L"b", 1, 20, [&](AbstractParamAdder&) { ++runs; });
    EXPECT_EQ("a5", NameOf(registry, 5));
    EXPECT_EQ(0, runs);
    EXPECT_EQ("-", NameOf(registry, 15));
    EXPECT_EQ(1, runs);
}

TEST(RegistryCoverage, SharedRangesMayEndWithTheLastIdentifier) {
    TestRegistry registry;
    AddRange(registry, "b", kHighest - 9, kHighest);
    AddRange(registry, "a", kHighest - 4, kHighest);
    AddRange(registry, "c", kHighest - 19, kHighest);
    const auto name = [&](int back) { return NameOf(registry, kHighest - back); };
    EXPECT_EQ("a" + std::to_string(kHighest), name(0));
    EXPECT_EQ("a" + std::to_string(kHighest - 4), name(4));
    EXPECT_EQ("b" + std::to_string(kHighest - 5), name(5));
    EXPECT_EQ("b" + std::to_string(kHighest - 9), name(9));
    EXPECT_EQ("c" + std::to_string(kHighest - 10), name(10));
    EXPECT_EQ("c" + std::to_string(kHighest - 19), name(19));
    EXPECT_EQ("-", name(20));
}

TEST(RegistryCoverage, AnInvertedRangeCoversNothing) {
    TestRegistry registry;
    registry.Add(L"a", 10, 1, [](AbstractParamAdder&) {});
    AddRange(registry, "b", 1, 10);
    EXPECT_TRUE(registry.HasNamespace(L"a"));
    for (const int id : {1, 5, 10}) {
        EXPECT_EQ("b" + std::to_string(id), NameOf(registry, id));
    }
}

TEST(RegistryCoverage, TheOutermostIdentifiersAreCovered) {
    TestRegistry registry;
    AddRange(registry, "low", kLowest, kLowest);
    AddRange(registry, "high", kHighest, kHighest);
    EXPECT_EQ("low-2147483648", NameOf(registry, kLowest));
    EXPECT_EQ("high2147483647", NameOf(registry, kHighest));
    EXPECT_EQ("-", NameOf(registry, kLowest + 1));
    EXPECT_EQ("-", NameOf(registry, kHighest - 1));
}

TEST(RegistryCoverage, ARangeMayTakeInEverything) {
    TestRegistry registry;
    registry.Add(L"z", kLowest, kHighest, [](AbstractParamAdder& adder) {
        adder.AddBag(kLowest, L"lowest");
        adder.AddBag(kHighest, L"highest");
    });
    AddRange(registry, "a", -1, 1);
    EXPECT_EQ("lowest", NameOf(registry, kLowest));
    EXPECT_EQ("highest", NameOf(registry, kHighest));
    EXPECT_EQ("a0", NameOf(registry, 0));
    EXPECT_EQ("-", NameOf(registry, 2));
}

// Random ranges over a few identifiers, put in and taken out, against a walk in name order.
TEST(RegistryCoverage, AgreesWithAWalkInNameOrder) {
    for (unsigned int seed = 0; seed < 30; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto pick = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };
        TestRegistry registry;
        std::map<std::string, std::pair<int, int>> ranges;
        for (int step = 0; step < 40; ++step) {
            const std::string name(1, static_cast<char>('a' + pick(0, 7)));
            if (ranges.erase(name) != 0) {
                registry.Clear(TString::FromUtf8(name));
            } else {
                ranges[name] = {pick(-9, 9), pick(-9, 9)};
                AddRange(registry, name, ranges[name].first, ranges[name].second);
            }
            for (int id = -10; id <= 10; ++id) {
                std::string expected = "-";
                for (const auto& [owner, range] : ranges) {
                    if (range.first <= id && id <= range.second) {
                        expected = owner + std::to_string(id);
                        break;
                    }
                }
                ASSERT_EQ(expected, NameOf(registry, id));
            }
        }
    }
}
