#include <qvpreslayer/ParametersRegistry.h>

#include <functional>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

// A namespace "lazy" from 1 to 9 that counts how often it is filled. Identifier and kind are the same number.
class RegistryFilling : public testing::Test {
protected:
    RegistryFilling() {
        registry.Add(L"lazy", 1, 9, [this](AbstractParamAdder& adder) {
            ++runs;
            adder.AddSimple(PTC_Text, L"title", L"ti", TextSerializer());
            adder.AddList(PTC_List, L"int-list", IntSerializer());
            adder.AddStructure(PTC_Structure, L"record", new BagStructureSerializer);
            adder.AddStructureList(PTC_StructureList, L"items", new BagStructureSerializer);
            adder.AddMap(PTC_Map, L"my-map", TextSerializer());
            adder.AddStructureMap(PTC_StructureMap, L"by-key", new BagStructureSerializer);
        });
    }

    // A registration function that notes a word in log.
    ParametersRegistry::RegistrationFunction Note(const char* word) {
        return [this, word](AbstractParamAdder&) { log += std::string(log.empty() ? "" : " ") + word; };
    }

    TestRegistry registry;
    int runs = 0;
    std::string log;
};

using Lookup = std::function<void(const ParametersRegistry&)>;

}  // namespace

TEST_F(RegistryFilling, WaitsForALookup) {
    EXPECT_TRUE(registry.HasNamespace(L"lazy"));
    EXPECT_EQ(0, runs);
    EXPECT_EQ(1, registry.GetID(L"lazy", L"title", true));
    EXPECT_EQ(1, runs);
}

TEST_F(RegistryFilling, HappensOnce) {
    for (int i = 0; i < 3; ++i) {
        registry.GetID(L"lazy", L"title", true);
        registry.GetName(1, true);
        registry.GetType(1);
        EXPECT_THROW(registry.GetType(2), ParameterNotFoundException);
    }
    EXPECT_EQ(1, runs);
}

TEST(RegistryFillingLookups, EveryLookupFills) {
    const struct {
        const char* name;
        Lookup lookup;
    } cases[] = {
        {"GetID", [](const auto& registry) { registry.GetID(L"lazy", L"title", true); }},
        {"GetName", [](const auto& registry) { registry.GetName(PTC_Text, true); }},
        {"GetType", [](const auto& registry) { registry.GetType(PTC_Text); }},
        {"GetListSerializer", [](const auto& registry) { registry.GetListSerializer(PTC_List); }},
        {"GetMapSerializer", [](const auto& registry) { registry.GetMapSerializer(PTC_Map); }},
        {"GetStructureSerializer", [](const auto& registry) { registry.GetStructureSerializer(PTC_Structure); }},
        {"GetStructureListSerializer",
         [](const auto& registry) { registry.GetStructureListSerializer(PTC_StructureList); }},
        {"GetStructureMapSerializer",
         [](const auto& registry) { registry.GetStructureMapSerializer(PTC_StructureMap); }},
        {"GetValueSerializer", [](const auto& registry) { registry.GetValueSerializer(PTC_Text); }},
        {"GetValueString", [](const auto& registry) { registry.GetValueString(Text(L"x"), PTC_Text); }},
        {"FromString", [](const auto& registry) { registry.FromString(L"lazy", MakeBag(), L"title", L"x", true); }},
        {"FindInfo", [](const auto& registry) { registry.FindInfo(PTC_Text); }},
        {"GetNamespaceInfos", [](const auto& registry) { registry.GetNamespaceInfos(); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TestRegistry registry;
        int runs = 0;
        registry.Add(L"lazy", 1, 9, [&](AbstractParamAdder& adder) {
            ++runs;
            adder.AddSimple(PTC_Text, L"title", TextSerializer());
            adder.AddList(PTC_List, L"int-list", IntSerializer());
            adder.AddStructure(PTC_Structure, L"record", nullptr);
            adder.AddStructureList(PTC_StructureList, L"items", nullptr);
            adder.AddMap(PTC_Map, L"my-map", TextSerializer());
            adder.AddStructureMap(PTC_StructureMap, L"by-key", nullptr);
        });
        EXPECT_NO_THROW(c.lookup(registry));
        EXPECT_EQ(1, runs);
    }
}

TEST_F(RegistryFilling, QuestionsAboutTheRegistryItselfDoNotFill) {
    registry.Add(L"other", 11, 19, [](AbstractParamAdder&) {});
    EXPECT_TRUE(registry.HasNamespace(L"lazy"));
    EXPECT_FALSE(registry.IsUnserializable(1));
    registry.AddUnserializable(1);
    EXPECT_TRUE(registry.IsUnserializable(1));
    registry.SetFallback(L"lazy", L"other");
    EXPECT_THROW(registry.SetFallback(L"other", L"lazy"), CyclicFallbacksException);
    EXPECT_THROW(registry.RegisterNamespace(L"lazy", Note("no"), 1, 9, true), ParameterNamespaceAlreadyExistsException);
    EXPECT_EQ(0, runs);
    EXPECT_EQ("", log);
}

TEST_F(RegistryFilling, LookingElsewhereDoesNotFill) {
    registry.Add(L"other", 11, 19, [](AbstractParamAdder& adder) { adder.AddBag(11, L"bag"); });
    EXPECT_EQ(11, registry.GetID(L"other", L"bag", true));
    EXPECT_EQ(PTC_Bag, registry.GetType(11));
    EXPECT_EQ(nullptr, registry.FindInfo(100));
    EXPECT_EQ(0, runs);
}

TEST_F(RegistryFilling, AFallbackIsFilledWhenTheSearchArrives) {
    registry.Add(L"front", 11, 19, [](AbstractParamAdder& adder) { adder.AddBag(11, L"bag"); });
    registry.SetFallback(L"front", L"lazy");
    EXPECT_EQ(11, registry.GetID(L"front", L"bag", true));
    EXPECT_EQ(0, runs);
    EXPECT_EQ(1, registry.GetID(L"front", L"title", true));
    EXPECT_EQ(1, runs);
}

TEST_F(RegistryFilling, AnEagerNamespaceIsFilledAtOnce) {
    registry.RegisterNamespace(L"eager", Note("filled"), 11, 19, true);
    EXPECT_EQ("filled", log);
    EXPECT_THROW(registry.GetID(L"eager", L"x", true), ParameterNotFoundException);
    EXPECT_EQ("filled", log);
}

TEST_F(RegistryFilling, AnEagerFunctionThatThrowsLeavesNoNamespace) {
    const auto throwing = [](AbstractParamAdder&) { throw std::runtime_error("not today"); };
    const auto error = Thrown<std::runtime_error>([&] { registry.RegisterNamespace(L"n", throwing, 11, 19, true); });
    ASSERT_TRUE(error);
    EXPECT_STREQ("not today", error->what());
    EXPECT_FALSE(registry.HasNamespace(L"n"));
    registry.RegisterNamespace(L"n", Note("second"), 11, 19, true);
    EXPECT_EQ("second", log);
    EXPECT_TRUE(registry.HasNamespace(L"n"));
}

TEST_F(RegistryFilling, AnEagerFunctionDoesNotFindItsOwnNamespace) {
    std::string unknown;
    registry.RegisterNamespace(
        L"eager",
        [&](AbstractParamAdder& adder) {
            adder.AddBag(11, L"bag");
            EXPECT_FALSE(registry.HasNamespace(L"eager"));
            unknown = UnknownNamespace([&] { registry.GetID(L"eager", L"bag", true); });
        },
        11, 19, true);
    EXPECT_EQ("eager", unknown);
    EXPECT_EQ(11, registry.GetID(L"eager", L"bag", true));
}

TEST_F(RegistryFilling, AnEagerFunctionThatRegistersItsOwnNameTakesIt) {
    const auto again = [&](AbstractParamAdder&) { registry.RegisterNamespace(L"n", Note("inner"), 11, 19, false); };
    const auto error = Thrown<ParameterNamespaceAlreadyExistsException>(
        [&] { registry.RegisterNamespace(L"n", again, 21, 29, true); });
    ASSERT_TRUE(error);
    EXPECT_EQ(L"n", error->GetName());
    EXPECT_TRUE(registry.HasNamespace(L"n"));
    EXPECT_THROW(registry.GetID(L"n", L"x", true), ParameterNotFoundException);
    EXPECT_EQ("inner", log);
}

TEST_F(RegistryFilling, PartsRunInTheOrderOfTheirRegistration) {
    registry.RegisterNamespace(L"n", Note("first"), 11, 19, false);
    registry.RegisterNamespacePart(L"n", Note("second"), 11, 19);
    registry.RegisterNamespacePart(L"n", Note("third"), 11, 19);
    EXPECT_EQ("", log);
    registry.FindInfo(11);
    EXPECT_EQ("first second third", log);
}

TEST_F(RegistryFilling, TheFirstPartMakesALazyNamespace) {
    registry.RegisterNamespacePart(L"n", Note("part"), 11, 19);
    EXPECT_TRUE(registry.HasNamespace(L"n"));
    EXPECT_EQ("", log);
    registry.RegisterNamespacePart(L"n", Note("another"), 11, 19);
    EXPECT_THROW(registry.RegisterNamespace(L"n", Note("whole"), 11, 19, false),
                 ParameterNamespaceAlreadyExistsException);
    registry.FindInfo(11);
    EXPECT_EQ("part another", log);
}

TEST_F(RegistryFilling, PartsShareTheirTables) {
    registry.RegisterNamespacePart(
        L"lazy", [](AbstractParamAdder& adder) { adder.AddBag(PTC_Text, L"replaced", L"rp"); }, 1, 9);
    EXPECT_EQ(PTC_Bag, registry.GetType(PTC_Text));
    EXPECT_EQ(1, registry.GetID(L"lazy", L"title", true));
    EXPECT_EQ(1, registry.GetID(L"lazy", L"replaced", true));
}

TEST_F(RegistryFilling, APartComesTooLateAfterTheFirstLookup) {
    registry.GetType(PTC_Text);
    const auto late = [&] { registry.RegisterNamespacePart(L"lazy", Note("late"), 1, 9); };
    EXPECT_EQ("m_needInit", LogicErrorOf(late));
    EXPECT_EQ("main/command/ParametersRegistry", LogicFileOf(late));
    registry.GetType(PTC_Text);
    EXPECT_EQ("", log);
}

TEST_F(RegistryFilling, APartComesTooLateForAnEagerNamespace) {
    registry.RegisterNamespace(L"eager", Note("filled"), 11, 19, true);
    EXPECT_EQ("m_needInit", LogicErrorOf([&] { registry.RegisterNamespacePart(L"eager", Note("late"), 11, 19); }));
}

TEST_F(RegistryFilling, AnUnsuccessfulLookupFillsToo) {
    EXPECT_THROW(registry.GetType(2), ParameterNotFoundException);
    EXPECT_EQ("m_needInit", LogicErrorOf([&] { registry.RegisterNamespacePart(L"lazy", Note("late"), 1, 9); }));
}

TEST_F(RegistryFilling, PartsNameTheSameRange) {
    const auto first = [&] { registry.RegisterNamespacePart(L"lazy", Note("part"), 2, 9); };
    const auto last = [&] { registry.RegisterNamespacePart(L"lazy", Note("part"), 1, 10); };
    EXPECT_EQ("m_namespace.FirstID() == firstId", LogicErrorOf(first));
    EXPECT_EQ("m_namespace.LastID() == lastId", LogicErrorOf(last));
    EXPECT_EQ("main/command/ParametersRegistry", LogicFileOf(first));
    EXPECT_EQ("main/command/ParametersRegistry", LogicFileOf(last));
    registry.GetType(PTC_Text);
    EXPECT_EQ("", log) << "a refused part is not kept";
}

TEST_F(RegistryFilling, ChecksOfAPartHaveAnOrder) {
    const auto bothWrong = [&] { registry.RegisterNamespacePart(L"lazy", Note("part"), 2, 10); };
    EXPECT_EQ("m_namespace.FirstID() == firstId", LogicErrorOf(bothWrong));
    registry.GetType(PTC_Text);
    EXPECT_EQ("m_needInit", LogicErrorOf(bothWrong));
}
