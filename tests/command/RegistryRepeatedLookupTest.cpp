// The second look-up of an identifier goes another way than the first, and must follow every change of the registry.
#include <qvpreslayer/ParametersRegistry.h>

#include <limits>
#include <map>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

constexpr int kMin = std::numeric_limits<int>::min();
constexpr int kMax = std::numeric_limits<int>::max();

// A namespace whose parameters are these texts, named after it and their identifier.
void Add(TestRegistry& registry, const std::string& name, int first, int last, const std::vector<int>& ids) {
    registry.Add(TString::FromUtf8(name), first, last, [=](AbstractParamAdder& adder) {
        for (const int id : ids) {
            const std::string text = name + std::to_string(id);
            adder.AddSimple(id, std::wstring(text.begin(), text.end()).c_str(), TextSerializer());
        }
    });
}

// The verbose name, "-" when the identifier is not registered; asked for by every way, more than once.
std::string NameOf(const TestRegistry& registry, int id) {
    const ParameterInfo* const first = registry.FindInfo(id);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(first, registry.FindInfo(id)) << id;
    }
    if (first == nullptr) {
        EXPECT_EQ(id, NotFoundId([&] { registry.GetType(id); }));
        EXPECT_EQ(id, NotFoundId([&] { registry.GetName(id, true); }));
        return "-";
    }
    EXPECT_EQ(id, first->id);
    EXPECT_EQ(PTC_Text, registry.GetType(id));
    EXPECT_EQ(first->serializer.Get(), registry.GetValueSerializer(id));
    EXPECT_EQ(&first->verboseName, &registry.GetName(id, true));
    return first->verboseName.ToUtf8();
}

}  // namespace

TEST(RegistryRepeatedLookup, TheOutermostIdentifiersAndNone) {
    TestRegistry registry;
    Add(registry, "n", kMin, kMax, {kMin, kMin + 1, -1, 1, kMax - 1, kMax});
    for (const int id : {kMin, kMin + 1, -1, 1, kMax - 1, kMax}) {
        EXPECT_EQ("n" + std::to_string(id), NameOf(registry, id));
    }
    for (const int id : {kMin + 2, -2, 0, 2, kMax - 2}) {
        EXPECT_EQ("-", NameOf(registry, id));
    }
}

TEST(RegistryRepeatedLookup, ZeroIsAnIdentifierLikeOthers) {
    TestRegistry registry;
    EXPECT_EQ(nullptr, registry.FindInfo(0));
    Add(registry, "n", -5, 5, {0, 1});
    EXPECT_EQ("n0", NameOf(registry, 0));
    EXPECT_EQ("n1", NameOf(registry, 1));
}

TEST(RegistryRepeatedLookup, AClearedNamespaceIsGoneAndOthersStay) {
    TestRegistry registry;
    Add(registry, "a", 1, 9, {1, 2});
    Add(registry, "b", 11, 19, {11, 12});
    EXPECT_EQ("a1", NameOf(registry, 1));
    EXPECT_EQ("b11", NameOf(registry, 11));
    const ParameterInfo* const kept = registry.FindInfo(12);
    registry.Clear(L"a");
    EXPECT_EQ("-", NameOf(registry, 1));
    EXPECT_EQ("-", NameOf(registry, 2));
    EXPECT_EQ("b11", NameOf(registry, 11));
    EXPECT_EQ(kept, registry.FindInfo(12));
}

TEST(RegistryRepeatedLookup, ANamespaceRegisteredAgainIsTheNewOne) {
    TestRegistry registry;
    Add(registry, "old", 1, 9, {1, 2});
    EXPECT_EQ("old1", NameOf(registry, 1));
    registry.Clear(L"old");
    Add(registry, "new", 1, 9, {1, 3});
    EXPECT_EQ("new1", NameOf(registry, 1));
    EXPECT_EQ("-", NameOf(registry, 2));
    EXPECT_EQ("new3", NameOf(registry, 3));
    registry.Clear();
    EXPECT_EQ("-", NameOf(registry, 1));
    Add(registry, "newest", 1, 9, {2});
    EXPECT_EQ("-", NameOf(registry, 1));
    EXPECT_EQ("newest2", NameOf(registry, 2));
}

TEST(RegistryRepeatedLookup, ANamespaceThatSortsFirstTakesOver) {
    TestRegistry registry;
    Add(registry, "m", 1, 9, {1, 5, 6});
    EXPECT_EQ("m5", NameOf(registry, 5));
    Add(registry, "a", 5, 6, {5});
    EXPECT_EQ("m1", NameOf(registry, 1));
    EXPECT_EQ("a5", NameOf(registry, 5));
    EXPECT_EQ("-", NameOf(registry, 6)) << "covered by one that does not know it";
    Add(registry, "z", 1, 20, {1, 5, 6, 20});
    EXPECT_EQ("m1", NameOf(registry, 1));
    EXPECT_EQ("a5", NameOf(registry, 5));
    EXPECT_EQ("z20", NameOf(registry, 20));
    registry.Clear(L"a");
    EXPECT_EQ("m5", NameOf(registry, 5));
    EXPECT_EQ("m6", NameOf(registry, 6));
    registry.Clear(L"m");
    EXPECT_EQ("z5", NameOf(registry, 5));
}

TEST(RegistryRepeatedLookup, WhileTheNamespaceIsFilled) {
    TestRegistry registry;
    registry.Add(L"n", 1, 9, [&](AbstractParamAdder& adder) {
        EXPECT_EQ(nullptr, registry.FindInfo(1));
        adder.AddBag(1, L"one");
        ASSERT_NE(nullptr, registry.FindInfo(1));
        EXPECT_EQ(PTC_Bag, registry.FindInfo(1)->kind);
        EXPECT_EQ(nullptr, registry.FindInfo(2));
        adder.AddSimple(1, L"first", TextSerializer());
        adder.AddSimple(2, L"second", TextSerializer());
    });
    EXPECT_EQ("second", NameOf(registry, 2));
    EXPECT_EQ("first", NameOf(registry, 1));
}

TEST(RegistryRepeatedLookup, AfterAFillingThatFailed) {
    TestRegistry registry;
    bool fails = true;
    registry.Add(L"n", 1, 9, [&](AbstractParamAdder& adder) {
        adder.AddSimple(1, L"one", TextSerializer());
        EXPECT_NE(nullptr, registry.FindInfo(1));
        if (fails) {
            throw std::runtime_error("not yet");
        }
        adder.AddSimple(2, L"two", TextSerializer());
    });
    EXPECT_THROW(registry.FindInfo(1), std::runtime_error);
    EXPECT_THROW(registry.FindInfo(1), std::runtime_error);
    fails = false;
    EXPECT_EQ("two", NameOf(registry, 2));
    EXPECT_EQ("one", NameOf(registry, 1));
}

TEST(RegistryRepeatedLookup, AfterAPartThatCameLate) {
    TestRegistry registry;
    registry.RegisterNamespacePart(
        L"n", [](AbstractParamAdder& adder) { adder.AddSimple(1, L"one", TextSerializer()); }, 1, 9);
    Add(registry, "other", 11, 19, {11});
    EXPECT_EQ("other11", NameOf(registry, 11));
    registry.RegisterNamespacePart(
        L"n", [](AbstractParamAdder& adder) { adder.AddSimple(2, L"two", TextSerializer()); }, 1, 9);
    EXPECT_EQ("two", NameOf(registry, 2));
    EXPECT_EQ("one", NameOf(registry, 1));
}

TEST(RegistryRepeatedLookup, RegistriesDoNotMix) {
    TestRegistry first;
    Add(first, "first", 1, 9, {1, 2});
    EXPECT_EQ("first1", NameOf(first, 1));
    TestRegistry second;
    Add(second, "second", 1, 9, {1, 3});
    EXPECT_EQ("second1", NameOf(second, 1));
    EXPECT_EQ("-", NameOf(second, 2));
    EXPECT_EQ("first1", NameOf(first, 1));
    EXPECT_EQ("-", NameOf(first, 3));
}

// Identifiers at all sorts of distances, so that some share their place in any table.
TEST(RegistryRepeatedLookup, RecordsStayWhereTheyAreWhileTheRegistryGrows) {
    TestRegistry registry;
    std::map<int, const ParameterInfo*> known;
    int first = -400'000;
    for (int number = 0; number < 60; ++number) {
        const int distance = 1 << (number % 11);
        std::vector<int> ids;
        for (int i = 0; i < 40; ++i) {
            ids.push_back(first + i * distance);
        }
        Add(registry, "n" + std::to_string(number) + "x", first, ids.back(), ids);
        for (const int id : ids) {
            ASSERT_NE(nullptr, registry.FindInfo(id)) << id;
            known[id] = registry.FindInfo(id);
        }
        for (const auto& [id, info] : known) {
            ASSERT_EQ(info, registry.FindInfo(id)) << id;
            ASSERT_EQ(id, info->id);
            ASSERT_EQ(known.contains(id + 1), registry.FindInfo(id + 1) != nullptr) << id;
        }
        first = ids.back() + 1 + number % 3;
    }
}
