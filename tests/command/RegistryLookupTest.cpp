#include <qvpreslayer/ParametersRegistry.h>

#include <functional>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

// Every kind under its own number.
enum : int {
    kText = 1,
    kNumber = 2,
    kBool = 3,
    kList = 4,
    kBag = 5,
    kStructure = 6,
    kStructureList = 7,
    kMap = 8,
    kStructureMap = 9,
    kUnregistered = 10,
    kUncovered = 100,
};

class RegistryLookup : public testing::Test {
protected:
    RegistryLookup() {
        registry.Add(L"view", 0, kUnregistered, [this](AbstractParamAdder& adder) { Fill(adder); });
    }

    void Fill(AbstractParamAdder& adder) {
        adder.AddSimple(kText, L"title", L"ti", text.Get());
        adder.AddSimple(kNumber, L"max-count", L"mc", IntSerializer());
        adder.AddSimple(kBool, L"is-on", L"on", BoolSerializer());
        adder.AddList(kList, L"int-list", L"il", list.Get());
        adder.AddBag(kBag, L"sub-bag", L"sb");
        adder.AddStructure(kStructure, L"record", L"rc", structure.Get());
        adder.AddStructureList(kStructureList, L"items", L"it", structureList.Get());
        adder.AddMap(kMap, L"my-map", L"mm", map.Get());
        adder.AddStructureMap(kStructureMap, L"by-key", L"bk", structureMap.Get());
        adder.AddSimple(0, L"zero", L"z", TextSerializer());
    }

    const RefCntPtr<TStringSerializer> text{TextSerializer()};
    const RefCntPtr<ParameterTypeSerializer<int>> list{IntSerializer()};
    const RefCntPtr<TStringSerializer> map{TextSerializer()};
    const RefCntPtr<BagStructureSerializer> structure{new BagStructureSerializer};
    const RefCntPtr<BagStructureSerializer> structureList{new BagStructureSerializer};
    const RefCntPtr<BagStructureSerializer> structureMap{new BagStructureSerializer};
    TestRegistry registry;
};

// The kinds whose identifiers lookup answers without ParameterNotFoundException: "4".
std::string KindsAnsweredBy(const std::function<void(int)>& lookup) {
    std::string kinds;
    for (int id = kText; id <= kStructureMap; ++id) {
        try {
            lookup(id);
            kinds += std::to_string(id);
        } catch (const ParameterNotFoundException& error) {
            EXPECT_EQ(id, error.GetID());
        }
    }
    return kinds;
}

}  // namespace

TEST_F(RegistryLookup, NamesGiveIdentifiers) {
    EXPECT_EQ(kText, registry.GetID(L"view", L"title", true));
    EXPECT_EQ(kStructureMap, registry.GetID(L"view", L"by-key", true));
}

TEST_F(RegistryLookup, VerboseLooksAtVerboseNamesWhateverTheOption) {
    for (const bool shortNames : {false, true}) {
        const TestSession session(shortNames);
        EXPECT_EQ(kText, registry.GetID(L"view", L"title", true));
        EXPECT_EQ("ti", NotFoundName([&] { registry.GetID(L"view", L"ti", true); }));
    }
}

TEST_F(RegistryLookup, NotVerboseFollowsTheOption) {
    {
        const TestSession verbose(false);
        EXPECT_EQ(kText, registry.GetID(L"view", L"title", false));
        EXPECT_EQ("ti", NotFoundName([&] { registry.GetID(L"view", L"ti", false); }));
    }
    {
        const TestSession shortNames(true);
        EXPECT_EQ(kText, registry.GetID(L"view", L"ti", false));
        EXPECT_EQ("title", NotFoundName([&] { registry.GetID(L"view", L"title", false); }));
    }
    EXPECT_EQ(kText, registry.GetID(L"view", L"title", false)) << "no session: verbose";
}

TEST_F(RegistryLookup, CaseCounts) {
    EXPECT_EQ("Title", NotFoundName([&] { registry.GetID(L"view", L"Title", true); }));
    EXPECT_EQ("maxCount", NotFoundName([&] { registry.GetID(L"view", L"maxCount", true); }));
}

TEST_F(RegistryLookup, AnUnknownNameIsNotFound) {
    const auto error = Thrown<ParameterNotFoundException>([&] { registry.GetID(L"view", L"Foo", true); });
    ASSERT_TRUE(error);
    EXPECT_STREQ("Error finding command parameter: Foo", error->what());
    EXPECT_EQ(0, error->GetID());
    EXPECT_EQ(L"Foo", error->GetName());
}

TEST_F(RegistryLookup, AnUnknownNamespaceIsNotFound) {
    const auto error = Thrown<ParameterNamespaceNotFoundException>([&] { registry.GetID(L"nowhere", L"title", true); });
    ASSERT_TRUE(error);
    EXPECT_STREQ("Unknown parameter namespace: nowhere", error->what());
}

TEST_F(RegistryLookup, TheNamespaceComesBeforeTheName) {
    EXPECT_EQ("title", UnknownNamespace([&] { registry.GetID(L"title", L"view", true); }));
}

TEST_F(RegistryLookup, IdentifierZeroHasANameButIsNeverFoundByIt) {
    const auto error = Thrown<ParameterNotFoundException>([&] { registry.GetID(L"view", L"zero", true); });
    ASSERT_TRUE(error);
    EXPECT_STREQ("Error finding command parameter: zero", error->what());
    EXPECT_EQ(L"zero", registry.GetName(0, true));
    EXPECT_EQ(PTC_Text, registry.GetType(0));
}

TEST_F(RegistryLookup, IdentifiersGiveNames) {
    EXPECT_EQ(L"title", registry.GetName(kText, true));
    EXPECT_EQ(L"ti", registry.GetName(kText, false));
    const TestSession shortNames(true);
    EXPECT_EQ(L"title", registry.GetName(kText, true)) << "the option does not count here";
}

TEST_F(RegistryLookup, UnregisteredIdentifiersHaveNoName) {
    for (const int id : {int{kUnregistered}, int{kUncovered}, -1}) {
        EXPECT_EQ(id, NotFoundId([&] { registry.GetName(id, true); }));
        EXPECT_EQ(id, NotFoundId([&] { registry.GetName(id, false); }));
    }
}

TEST_F(RegistryLookup, AnEmptyNameIsNone) {
    registry.Add(L"other", 200, 300, [](AbstractParamAdder& adder) {
        adder.AddSimple(200, L"", L"s", TextSerializer());
        adder.AddSimple(201, L"v", L"", TextSerializer());
    });
    EXPECT_EQ(200, NotFoundId([&] { registry.GetName(200, true); }));
    EXPECT_EQ(L"s", registry.GetName(200, false));
    EXPECT_EQ(L"v", registry.GetName(201, true));
    EXPECT_EQ(201, NotFoundId([&] { registry.GetName(201, false); }));
}

TEST_F(RegistryLookup, NamesStayWhereTheyAre) {
    const TString* verbose = &registry.GetName(kText, true);
    const TString* shortName = &registry.GetName(kText, false);
    for (int i = 0; i < 100; ++i) {
        registry.Add(L"other-" + TString::number(i), 1000 + i, 1000 + i,
                     [i](AbstractParamAdder& adder) { adder.AddBag(1000 + i, L"some-bag"); });
        EXPECT_EQ(1000 + i, registry.GetID(L"other-" + TString::number(i), L"some-bag", true));
    }
    registry.Clear(L"other-50");
    EXPECT_EQ(verbose, &registry.GetName(kText, true));
    EXPECT_EQ(L"title", *verbose);
    EXPECT_EQ(L"ti", *shortName);
}

TEST_F(RegistryLookup, IdentifiersGiveKinds) {
    for (int id = kText; id <= kStructureMap; ++id) {
        EXPECT_EQ(id, registry.GetType(id));
    }
}

TEST_F(RegistryLookup, UnregisteredIdentifiersHaveNoKind) {
    for (const int id : {int{kUnregistered}, int{kUncovered}, -1, std::numeric_limits<int>::min()}) {
        EXPECT_EQ(id, NotFoundId([&] { registry.GetType(id); }));
    }
}

TEST_F(RegistryLookup, ASerializerIsAnsweredForItsKindOnly) {
    EXPECT_EQ("4", KindsAnsweredBy([&](int id) { registry.GetListSerializer(id); }));
    EXPECT_EQ("8", KindsAnsweredBy([&](int id) { registry.GetMapSerializer(id); }));
    EXPECT_EQ("6", KindsAnsweredBy([&](int id) { registry.GetStructureSerializer(id); }));
    EXPECT_EQ("7", KindsAnsweredBy([&](int id) { registry.GetStructureListSerializer(id); }));
    EXPECT_EQ("9", KindsAnsweredBy([&](int id) { registry.GetStructureMapSerializer(id); }));
}

TEST_F(RegistryLookup, TheSerializerIsTheRegisteredObject) {
    EXPECT_EQ(list.Get(), registry.GetListSerializer(kList));
    EXPECT_EQ(map.Get(), registry.GetMapSerializer(kMap));
    EXPECT_EQ(structure.Get(), registry.GetStructureSerializer(kStructure));
    EXPECT_EQ(structureList.Get(), registry.GetStructureListSerializer(kStructureList));
    EXPECT_EQ(structureMap.Get(), registry.GetStructureMapSerializer(kStructureMap));
}

TEST_F(RegistryLookup, UnregisteredIdentifiersHaveNoSerializer) {
    for (const int id : {int{kUnregistered}, int{kUncovered}}) {
        EXPECT_EQ(id, NotFoundId([&] { registry.GetListSerializer(id); }));
        EXPECT_EQ(id, NotFoundId([&] { registry.GetMapSerializer(id); }));
        EXPECT_EQ(id, NotFoundId([&] { registry.GetStructureSerializer(id); }));
        EXPECT_EQ(id, NotFoundId([&] { registry.GetStructureListSerializer(id); }));
        EXPECT_EQ(id, NotFoundId([&] { registry.GetStructureMapSerializer(id); }));
    }
}

TEST_F(RegistryLookup, ValueSerializersStandForSingleValuesListsAndMaps) {
    EXPECT_EQ(text.Get(), registry.GetValueSerializer(kText));
    EXPECT_EQ(list.Get(), registry.GetValueSerializer(kList));
    EXPECT_EQ(map.Get(), registry.GetValueSerializer(kMap));
    for (const int id : {int{kBag}, int{kStructure}, int{kStructureList}, int{kStructureMap}, int{kUnregistered}}) {
        EXPECT_EQ(nullptr, registry.GetValueSerializer(id)) << id;
    }
    EXPECT_EQ(kUncovered, NotFoundId([&] { registry.GetValueSerializer(kUncovered); }));
}

TEST_F(RegistryLookup, OneLookupTellsEverythingOfAValue) {
    const ParameterInfo* info = registry.FindInfo(kList);
    ASSERT_NE(nullptr, info);
    EXPECT_EQ(kList, info->id);
    EXPECT_EQ(PTC_List, info->kind);
    EXPECT_EQ(L"int-list", info->verboseName);
    EXPECT_EQ(L"il", info->shortName);
    EXPECT_EQ(L"intList", info->camelName);
    EXPECT_EQ(list.Get(), info->serializer.Get());
    EXPECT_FALSE(info->structureSerializer);
}

TEST_F(RegistryLookup, OneLookupTellsEverythingOfAStructure) {
    const ParameterInfo* info = registry.FindInfo(kStructureMap);
    ASSERT_NE(nullptr, info);
    EXPECT_EQ(PTC_StructureMap, info->kind);
    EXPECT_FALSE(info->serializer);
    EXPECT_EQ(structureMap.Get(), info->structureSerializer.Get());
    EXPECT_EQ(nullptr, registry.FindInfo(kUnregistered));
    EXPECT_EQ(nullptr, registry.FindInfo(kUncovered));
}

TEST_F(RegistryLookup, FailuresChangeNothing) {
    const auto before = registry.GetNamespaceInfos();
    EXPECT_THROW(registry.GetID(L"nowhere", L"title", true), ParameterNamespaceNotFoundException);
    EXPECT_THROW(registry.GetID(L"view", L"nothing", true), ParameterNotFoundException);
    EXPECT_THROW(registry.GetType(kUnregistered), ParameterNotFoundException);
    EXPECT_THROW(registry.GetName(kUncovered, true), ParameterNotFoundException);
    EXPECT_THROW(registry.GetListSerializer(kMap), ParameterNotFoundException);
    const auto after = registry.GetNamespaceInfos();
    ASSERT_EQ(1U, after.size());
    EXPECT_EQ(before[0].second.size(), after[0].second.size());
    EXPECT_FALSE(registry.HasNamespace(L"nowhere"));
    EXPECT_EQ(nullptr, registry.FindInfo(kUnregistered));
}
