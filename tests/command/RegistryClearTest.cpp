#include <qvpreslayer/ParametersRegistry.h>

#include <stdexcept>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

// Namespaces "A" (1 to 10, "a" is 1), "B" (11 to 20, "b" is 11) and "C" (21 to 30, "c" is 21).
class RegistryClear : public testing::Test {
protected:
    RegistryClear() {
        AddNamespace(L"A", L"a", 1);
        AddNamespace(L"B", L"b", 11);
        AddNamespace(L"C", L"c", 21);
    }

    void AddNamespace(const TString& name, const wchar_t* parameter, int id) {
        registry.Add(name, id, id + 9,
                     [=](AbstractParamAdder& adder) { adder.AddSimple(id, parameter, TextSerializer()); });
    }

    TestRegistry registry;
};

}  // namespace

TEST_F(RegistryClear, AnUnknownNamespaceCannotBeCleared) {
    EXPECT_EQ("X", UnknownNamespace([&] { registry.Clear(L"X"); }));
}

TEST_F(RegistryClear, TheNamespaceIsGone) {
    registry.Clear(L"A");
    EXPECT_FALSE(registry.HasNamespace(L"A"));
    EXPECT_EQ("A", UnknownNamespace([&] { registry.GetID(L"A", L"a", true); }));
    EXPECT_EQ(1, NotFoundId([&] { registry.GetType(1); }));
    EXPECT_EQ(1, NotFoundId([&] { registry.GetName(1, true); }));
    EXPECT_EQ("A", UnknownNamespace([&] { registry.Clear(L"A"); }));
}

TEST_F(RegistryClear, OtherNamespacesStay) {
    registry.Clear(L"B");
    EXPECT_EQ(1, registry.GetID(L"A", L"a", true));
    EXPECT_EQ(PTC_Text, registry.GetType(21));
}

TEST_F(RegistryClear, MarksOfIdentifiersWithBothNamesGo) {
    registry.Add(L"marks", 100, 110, [](AbstractParamAdder& adder) {
        adder.AddSimple(101, L"both", L"bo", TextSerializer());
        adder.AddSimple(102, L"verbose-only", L"", TextSerializer());
        adder.AddSimple(103, L"", L"short-only", TextSerializer());
    });
    for (const int id : {101, 102, 103, 104, 1}) {
        registry.AddUnserializable(id);
    }
    registry.Clear(L"marks");
    EXPECT_FALSE(registry.IsUnserializable(101));
    EXPECT_TRUE(registry.IsUnserializable(102)) << "has no row in the listing";
    EXPECT_FALSE(registry.IsUnserializable(103)) << "its empty verbose name makes a row";
    EXPECT_TRUE(registry.IsUnserializable(104)) << "in the range, but not registered";
    EXPECT_TRUE(registry.IsUnserializable(1)) << "of another namespace";
}

TEST_F(RegistryClear, AnUnfilledNamespaceIsFilledFirst) {
    int runs = 0;
    registry.Add(L"lazy", 100, 110, [&](AbstractParamAdder& adder) {
        ++runs;
        adder.AddSimple(100, L"both", TextSerializer());
    });
    registry.AddUnserializable(100);
    registry.Clear(L"lazy");
    EXPECT_EQ(1, runs);
    EXPECT_FALSE(registry.IsUnserializable(100));
}

TEST_F(RegistryClear, SearchesEndWhereTheFallbackWas) {
    registry.SetFallback(L"A", L"B");
    registry.SetFallback(L"B", L"C");
    registry.Clear(L"B");
    EXPECT_EQ(1, registry.GetID(L"A", L"a", true));
    EXPECT_EQ("b", NotFoundName([&] { registry.GetID(L"A", L"b", true); }));
    EXPECT_EQ("c", NotFoundName([&] { registry.GetID(L"A", L"c", true); }));
}

TEST_F(RegistryClear, LinksToAndFromTheNamespaceAreCut) {
    registry.SetFallback(L"A", L"B");
    registry.SetFallback(L"B", L"C");
    registry.Clear(L"B");
    AddNamespace(L"B", L"b2", 11);
    EXPECT_EQ("c", NotFoundName([&] { registry.GetID(L"B", L"c", true); })) << "starts without a link";
    EXPECT_EQ("b2", NotFoundName([&] { registry.GetID(L"A", L"b2", true); }));
    EXPECT_NO_THROW(registry.SetFallback(L"A", L"C"));
    EXPECT_NO_THROW(registry.SetFallback(L"B", L"A"));
    EXPECT_EQ(21, registry.GetID(L"B", L"c", true));
}

TEST_F(RegistryClear, ALinkBetweenOthersStays) {
    registry.SetFallback(L"A", L"C");
    registry.Clear(L"B");
    EXPECT_EQ(21, registry.GetID(L"A", L"c", true));
}

TEST_F(RegistryClear, TheNameCanBeRegisteredAgain) {
    registry.GetID(L"A", L"a", true);
    registry.Clear(L"A");
    AddNamespace(L"A", L"again", 41);
    EXPECT_EQ(41, registry.GetID(L"A", L"again", true));
    EXPECT_EQ("a", NotFoundName([&] { registry.GetID(L"A", L"a", true); }));
    EXPECT_EQ(1, NotFoundId([&] { registry.GetType(1); }));
}

TEST_F(RegistryClear, APartCanComeAfterwards) {
    registry.GetID(L"A", L"a", true);
    registry.Clear(L"A");
    registry.RegisterNamespacePart(
        L"A", [](AbstractParamAdder& adder) { adder.AddSimple(2, L"part", TextSerializer()); }, 2, 3);
    EXPECT_EQ(2, registry.GetID(L"A", L"part", true));
}

TEST_F(RegistryClear, SerializersAreLetGo) {
    int alive = 0;
    registry.Add(L"counted", 100, 110, [&](AbstractParamAdder& adder) {
        adder.AddSimple(100, L"one", new CountedSerializer(alive));
        adder.AddList(101, L"two", new CountedSerializer(alive));
    });
    registry.GetType(100);
    ASSERT_EQ(2, alive);
    registry.Clear(L"counted");
    EXPECT_EQ(0, alive);
}

TEST_F(RegistryClear, AFunctionThatThrowsLeavesTheNamespace) {
    registry.Add(L"throwing", 100, 110, [](AbstractParamAdder&) { throw std::runtime_error("not today"); });
    EXPECT_THROW(registry.Clear(L"throwing"), std::runtime_error);
    EXPECT_TRUE(registry.HasNamespace(L"throwing"));
}

TEST_F(RegistryClear, EverythingGoesAtOnce) {
    registry.SetFallback(L"A", L"B");
    registry.AddUnserializable(1);
    registry.AddUnserializable(999);
    registry.Clear();
    EXPECT_TRUE(registry.GetNamespaceInfos().empty());
    EXPECT_FALSE(registry.HasNamespace(L"A"));
    EXPECT_FALSE(registry.IsUnserializable(1));
    EXPECT_FALSE(registry.IsUnserializable(999));
    EXPECT_EQ(11, NotFoundId([&] { registry.GetType(11); }));
}

TEST_F(RegistryClear, EverythingMeansFallbacksToo) {
    registry.SetFallback(L"A", L"B");
    registry.Clear();
    AddNamespace(L"A", L"a", 1);
    AddNamespace(L"B", L"b", 11);
    EXPECT_EQ("b", NotFoundName([&] { registry.GetID(L"A", L"b", true); }));
    EXPECT_NO_THROW(registry.SetFallback(L"B", L"A"));
}

TEST_F(RegistryClear, EverythingMayBeNothing) {
    registry.Clear();
    EXPECT_NO_THROW(registry.Clear());
}

TEST_F(RegistryClear, ClearingEverythingFillsNothing) {
    int runs = 0;
    registry.Add(L"lazy", 100, 110, [&](AbstractParamAdder&) { ++runs; });
    registry.Clear();
    EXPECT_EQ(0, runs);
}
