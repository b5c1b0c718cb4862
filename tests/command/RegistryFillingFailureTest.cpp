// Registration functions that throw, look up the registry, or register more while their namespace is being filled.
#include <qvpreslayer/ParametersRegistry.h>

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

class FillingFunctions : public testing::Test {
protected:
    void Note(const char* word) { log += std::string(log.empty() ? "" : " ") + word; }

    TestRegistry registry;
    std::string log;
};

}  // namespace

TEST_F(FillingFunctions, OneThatThrowsMakesTheNextLookupRunAllAgain) {
    bool ready = false;
    registry.Add(L"n", 1, 9, [&](AbstractParamAdder& adder) {
        Note("first");
        adder.AddBag(1, L"one");
    });
    registry.RegisterNamespacePart(
        L"n",
        [&](AbstractParamAdder& adder) {
            Note("second");
            if (!ready) {
                throw std::runtime_error("not yet");
            }
            adder.AddBag(2, L"two");
        },
        1, 9);
    registry.RegisterNamespacePart(
        L"n", [&](AbstractParamAdder&) { Note("third"); }, 1, 9);
    EXPECT_THROW(registry.GetType(1), std::runtime_error);
    EXPECT_EQ("first second", log);
    EXPECT_THROW(registry.GetID(L"n", L"one", true), std::runtime_error);
    EXPECT_EQ("first second first second", log);
    ready = true;
    EXPECT_EQ(PTC_Bag, registry.GetType(2));
    EXPECT_EQ("first second first second first second third", log);
    EXPECT_EQ(1, registry.GetID(L"n", L"one", true));
    EXPECT_EQ("first second first second first second third", log);
}

TEST_F(FillingFunctions, OneThatThrowsLeavesTheNamespaceOpenForParts) {
    bool ready = false;
    registry.Add(L"n", 1, 9, [&](AbstractParamAdder&) {
        if (!ready) {
            throw std::runtime_error("not yet");
        }
    });
    EXPECT_THROW(registry.GetType(1), std::runtime_error);
    EXPECT_TRUE(registry.HasNamespace(L"n"));
    EXPECT_NO_THROW(registry.RegisterNamespacePart(
        L"n", [](AbstractParamAdder& adder) { adder.AddBag(1, L"one"); }, 1, 9));
    ready = true;
    EXPECT_EQ(PTC_Bag, registry.GetType(1));
}

TEST_F(FillingFunctions, EntriesFromBeforeTheThrowMayBeAddedAgain) {
    int attempts = 0;
    registry.Add(L"n", 1, 9, [&](AbstractParamAdder& adder) {
        adder.AddSimple(1, L"one", TextSerializer());
        if (++attempts == 1) {
            throw std::runtime_error("not yet");
        }
        adder.AddBag(2, L"two");
    });
    EXPECT_THROW(registry.GetType(1), std::runtime_error);
    EXPECT_EQ(PTC_Text, registry.GetType(1));
    EXPECT_EQ(PTC_Bag, registry.GetType(2));
    EXPECT_EQ(2, attempts);
}

TEST_F(FillingFunctions, OneMayLookIntoItsOwnNamespace) {
    registry.Add(L"n", 1, 9, [&](AbstractParamAdder& adder) {
        Note("run");
        adder.AddSimple(1, L"one", L"o", TextSerializer());
        EXPECT_EQ(1, registry.GetID(L"n", L"one", true));
        EXPECT_EQ(PTC_Text, registry.GetType(1));
        EXPECT_EQ(L"o", registry.GetName(1, false));
        EXPECT_EQ("two", NotFoundName([&] { registry.GetID(L"n", L"two", true); })) << "not added yet";
        EXPECT_EQ(2, NotFoundId([&] { registry.GetType(2); }));
        adder.AddBag(2, L"two");
    });
    EXPECT_EQ(2, registry.GetID(L"n", L"two", true));
    EXPECT_EQ("run", log);
}

TEST_F(FillingFunctions, OneSeesWhatEarlierPartsAdded) {
    registry.Add(L"n", 1, 9, [&](AbstractParamAdder& adder) { adder.AddBag(1, L"one"); });
    int seen = 0;
    registry.RegisterNamespacePart(
        L"n", [&](AbstractParamAdder&) { seen = registry.GetID(L"n", L"one", true); }, 1, 9);
    EXPECT_EQ(PTC_Bag, registry.GetType(1));
    EXPECT_EQ(1, seen);
}

TEST_F(FillingFunctions, OneThatThrewWhileLookingMayRunAgain) {
    registry.Add(L"n", 1, 9, [&](AbstractParamAdder& adder) {
        Note("run");
        adder.AddBag(1, L"one");
        registry.GetID(L"n", log == "run" ? L"missing" : L"one", true);
    });
    EXPECT_EQ("missing", NotFoundName([&] { registry.GetType(1); }));
    EXPECT_EQ(PTC_Bag, registry.GetType(1));
    EXPECT_EQ("run run", log);
}

TEST_F(FillingFunctions, OneMayFillAnotherNamespace) {
    registry.Add(L"used", 11, 19, [&](AbstractParamAdder& adder) {
        Note("used");
        adder.AddBag(11, L"eleven");
    });
    registry.Add(L"user", 1, 9, [&](AbstractParamAdder& adder) {
        Note("user");
        adder.AddBag(registry.GetID(L"used", L"eleven", true) - 10, L"one");
    });
    EXPECT_EQ(1, registry.GetID(L"user", L"one", true));
    EXPECT_EQ("user used", log);
}

TEST_F(FillingFunctions, TwoMayLookIntoEachOthersNamespaces) {
    registry.Add(L"a", 1, 9, [&](AbstractParamAdder& adder) {
        Note("a");
        adder.AddBag(1, L"one");
        EXPECT_EQ(11, registry.GetID(L"b", L"eleven", true));
        adder.AddBag(2, L"two");
    });
    registry.Add(L"b", 11, 19, [&](AbstractParamAdder& adder) {
        Note("b");
        adder.AddBag(11, L"eleven");
        EXPECT_EQ(1, registry.GetID(L"a", L"one", true)) << "what a has so far";
        EXPECT_EQ("two", NotFoundName([&] { registry.GetID(L"a", L"two", true); }));
    });
    EXPECT_EQ(2, registry.GetID(L"a", L"two", true));
    EXPECT_EQ("a b", log);
}

TEST_F(FillingFunctions, APartAddedMeanwhileRunsInTheSameFilling) {
    registry.Add(L"n", 1, 9, [&](AbstractParamAdder& adder) {
        Note("first");
        adder.AddBag(1, L"one");
        for (int i = 0; i < 100; ++i) {  // enough to move whatever holds the functions
            registry.RegisterNamespacePart(
                L"n", [&, i](AbstractParamAdder& late) { late.AddBag(2, (L"late-" + std::to_wstring(i)).c_str()); }, 1,
                9);
        }
        Note("first-ends");
    });
    registry.RegisterNamespacePart(
        L"n", [&](AbstractParamAdder&) { Note("second"); }, 1, 9);
    EXPECT_EQ(PTC_Bag, registry.GetType(1));
    EXPECT_EQ("first first-ends second", log);
    EXPECT_EQ(2, registry.GetID(L"n", L"late-0", true));
    EXPECT_EQ(2, registry.GetID(L"n", L"late-99", true));
    EXPECT_EQ(L"late-99", registry.GetName(2, true));
}

TEST_F(FillingFunctions, OneMayRegisterAnotherNamespace) {
    registry.Add(L"n", 1, 9, [&](AbstractParamAdder& adder) {
        adder.AddBag(1, L"one");
        registry.Add(L"another", 11, 19, [](AbstractParamAdder& inner) { inner.AddBag(11, L"eleven"); });
    });
    EXPECT_EQ(PTC_Bag, registry.GetType(1));
    EXPECT_EQ(11, registry.GetID(L"another", L"eleven", true));
}

TEST_F(FillingFunctions, OneMayMarkItsIdentifiers) {
    registry.Add(L"n", 1, 9, [&](AbstractParamAdder& adder) {
        adder.AddBag(1, L"one");
        registry.AddUnserializable(1);
    });
    EXPECT_FALSE(registry.IsUnserializable(1));
    registry.GetType(1);
    EXPECT_TRUE(registry.IsUnserializable(1));
}
