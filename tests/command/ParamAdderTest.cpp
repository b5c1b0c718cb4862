// What the registry's own adder makes of the entries.
#include <qvpreslayer/ParametersRegistry.h>

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

constexpr int kFirst = -10;
constexpr int kLast = 50;

// A serializer that does not say what its values are.
class KindlessSerializer final : public TStringSerializer {
public:
    ParameterTypeCategory GetType() const override { return PTC_None; }
};

class ParamAdder : public testing::Test {
protected:
    // Fills the namespace "view".
    void Fill(ParametersRegistry::RegistrationFunction fill) {
        registry.RegisterNamespace(L"view", std::move(fill), kFirst, kLast, true);
    }

    // The identifier under a short name.
    int ShortID(const TString& name) {
        const TestSession session(true);
        return registry.GetID(L"view", name, false);
    }

    TestRegistry registry;
};

}  // namespace

TEST_F(ParamAdder, SimpleValuesTakeTheKindOfTheirSerializer) {
    Fill([](AbstractParamAdder& adder) {
        adder.AddSimple(1, L"text", TextSerializer());
        adder.AddSimple(2, L"int", IntSerializer());
        adder.AddSimple(3, L"real", new ParameterTypeSerializer<double>);
        adder.AddSimple(4, L"bool", BoolSerializer());
        adder.AddSimple(5, L"uuid", new ParameterTypeSerializer<TUUID>);
        adder.AddSimple(6, L"seconds", new ParameterTypeSerializer<SecondsDuration>);
    });
    EXPECT_EQ(PTC_Text, registry.GetType(1));
    EXPECT_EQ(PTC_Number, registry.GetType(2));
    EXPECT_EQ(PTC_Number, registry.GetType(3));
    EXPECT_EQ(PTC_Bool, registry.GetType(4));
    EXPECT_EQ(PTC_Text, registry.GetType(5));
    EXPECT_EQ(PTC_Text, registry.GetType(6));
}

TEST_F(ParamAdder, ListsAndMapsKeepTheirKindWhateverTheSerializer) {
    Fill([](AbstractParamAdder& adder) {
        adder.AddList(1, L"texts", TextSerializer());
        adder.AddList(2, L"flags", BoolSerializer());
        adder.AddMap(3, L"numbers", IntSerializer());
        adder.AddMap(4, L"names", TextSerializer());
    });
    EXPECT_EQ(PTC_List, registry.GetType(1));
    EXPECT_EQ(PTC_List, registry.GetType(2));
    EXPECT_EQ(PTC_Map, registry.GetType(3));
    EXPECT_EQ(PTC_Map, registry.GetType(4));
}

TEST_F(ParamAdder, ABagHasBothNamesAndNoSerializer) {
    Fill([](AbstractParamAdder& adder) { adder.AddBag(1, L"style"); });
    EXPECT_EQ(PTC_Bag, registry.GetType(1));
    EXPECT_EQ(L"style", registry.GetName(1, true));
    EXPECT_EQ(L"style", registry.GetName(1, false));
    EXPECT_EQ(nullptr, registry.GetValueSerializer(1));
}

TEST_F(ParamAdder, AValueWithoutSerializerIsABag) {
    Fill([](AbstractParamAdder& adder) {
        adder.AddSimple(1, L"simple", nullptr);
        adder.AddList(2, L"list", nullptr);
        adder.AddMap(3, L"map", nullptr);
    });
    EXPECT_EQ(PTC_Bag, registry.GetType(1));
    EXPECT_EQ(PTC_Bag, registry.GetType(2));
    EXPECT_EQ(PTC_Bag, registry.GetType(3));
    EXPECT_EQ(2, NotFoundId([&] { registry.GetListSerializer(2); }));
}

TEST_F(ParamAdder, AStructureWithoutSerializerStaysAStructure) {
    Fill([](AbstractParamAdder& adder) {
        adder.AddStructure(6, L"record", nullptr);
        adder.AddStructureList(7, L"items", nullptr);
        adder.AddStructureMap(9, L"by-key", nullptr);
    });
    EXPECT_EQ(PTC_Structure, registry.GetType(6));
    EXPECT_EQ(PTC_StructureList, registry.GetType(7));
    EXPECT_EQ(PTC_StructureMap, registry.GetType(9));
    EXPECT_EQ(nullptr, registry.GetStructureSerializer(6));
    EXPECT_EQ(nullptr, registry.GetStructureListSerializer(7));
    EXPECT_EQ(nullptr, registry.GetStructureMapSerializer(9));
}

TEST_F(ParamAdder, ASerializerWithoutKindLeavesTheIdentifierWithoutKind) {
    Fill([](AbstractParamAdder& adder) { adder.AddSimple(1, L"title", new KindlessSerializer); });
    EXPECT_EQ(1, NotFoundId([&] { registry.GetType(1); }));
    EXPECT_EQ(1, registry.GetID(L"view", L"title", true));
}

TEST_F(ParamAdder, WithoutAShortNameThereIsNone) {
    Fill([](AbstractParamAdder& adder) { adder.AddSimple(1, L"title", L"", TextSerializer()); });
    EXPECT_EQ(L"title", registry.GetName(1, true));
    EXPECT_EQ(1, NotFoundId([&] { registry.GetName(1, false); }));
    EXPECT_EQ("title", NotFoundName([&] { ShortID(L"title"); }));
    EXPECT_EQ("", NotFoundName([&] { ShortID(L""); }));
}

TEST_F(ParamAdder, AnIdentifierOutsideTheRangeIsRefused) {
    for (const int id : {kFirst - 1, kLast + 1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        SCOPED_TRACE(id);
        registry.Clear();
        Fill([&](AbstractParamAdder& adder) {
            const auto value = [&] { adder.AddSimple(id, L"title", TextSerializer()); };
            const auto structure = [&] { adder.AddStructure(id, L"record", new BagStructureSerializer); };
            EXPECT_EQ("pid >= FirstID() && pid <= LastID()", LogicErrorOf(value));
            EXPECT_EQ("pid >= FirstID() && pid <= LastID()", LogicErrorOf(structure));
            EXPECT_EQ("main/command/ParametersRegistry", LogicFileOf(value));
            EXPECT_EQ("main/command/ParametersRegistry", LogicFileOf(structure));
        });
        EXPECT_EQ("title", NotFoundName([&] { registry.GetID(L"view", L"title", true); }));
        EXPECT_EQ("record", NotFoundName([&] { registry.GetID(L"view", L"record", true); }));
        EXPECT_TRUE(registry.GetNamespaceInfos()[0].second.empty());
    }
}

TEST_F(ParamAdder, TheLimitsOfTheRangeAreAccepted) {
    Fill([](AbstractParamAdder& adder) {
        adder.AddSimple(kFirst, L"first", TextSerializer());
        adder.AddStructure(kLast, L"last", new BagStructureSerializer);
    });
    EXPECT_EQ(kFirst, registry.GetID(L"view", L"first", true));
    EXPECT_EQ(PTC_Structure, registry.GetType(kLast));
}

TEST_F(ParamAdder, AddingAgainReplacesNamesKindAndSerializer) {
    Fill([](AbstractParamAdder& adder) {
        adder.AddSimple(7, L"old", L"o", TextSerializer());
        adder.AddList(7, L"new", L"n", IntSerializer());
    });
    EXPECT_EQ(L"new", registry.GetName(7, true));
    EXPECT_EQ(L"n", registry.GetName(7, false));
    EXPECT_EQ(PTC_List, registry.GetType(7));
    EXPECT_EQ(PTC_Number, registry.GetListSerializer(7)->GetType());
}

TEST_F(ParamAdder, OldNamesGoOnLeadingToTheIdentifier) {
    Fill([](AbstractParamAdder& adder) {
        adder.AddSimple(7, L"old", L"o", TextSerializer());
        adder.AddSimple(7, L"new", L"n", TextSerializer());
    });
    EXPECT_EQ(7, registry.GetID(L"view", L"old", true));
    EXPECT_EQ(7, registry.GetID(L"view", L"new", true));
    EXPECT_EQ(7, ShortID(L"o"));
    EXPECT_EQ(7, ShortID(L"n"));
}

TEST_F(ParamAdder, AddingAgainWithoutAShortNameLeavesTheEarlierOne) {
    Fill([](AbstractParamAdder& adder) {
        adder.AddSimple(7, L"old", L"o", TextSerializer());
        adder.AddSimple(7, L"new", L"", BoolSerializer());
    });
    EXPECT_EQ(L"new", registry.GetName(7, true));
    EXPECT_EQ(L"o", registry.GetName(7, false));
    EXPECT_EQ(7, registry.GetID(L"view", L"old", true));
    EXPECT_EQ(7, registry.GetID(L"view", L"new", true));
    EXPECT_EQ(7, ShortID(L"o"));
    EXPECT_EQ(PTC_Bool, registry.GetType(7));
}

TEST_F(ParamAdder, AddingAgainAsAStructureForgetsTheValueSerializer) {
    Fill([](AbstractParamAdder& adder) {
        adder.AddSimple(7, L"value", TextSerializer());
        adder.AddStructure(7, L"record", new BagStructureSerializer);
    });
    EXPECT_EQ(PTC_Structure, registry.GetType(7));
    EXPECT_NE(nullptr, registry.GetStructureSerializer(7));
    EXPECT_EQ(nullptr, registry.GetValueSerializer(7));
    EXPECT_EQ(7, NotFoundId([&] { registry.GetValueString(Text(L"x"), 7); }));
}

TEST_F(ParamAdder, AddingAgainAsAValueForgetsTheStructureSerializer) {
    Fill([](AbstractParamAdder& adder) {
        adder.AddStructure(7, L"record", new BagStructureSerializer);
        adder.AddSimple(7, L"value", TextSerializer());
    });
    EXPECT_EQ(PTC_Text, registry.GetType(7));
    EXPECT_EQ(7, NotFoundId([&] { registry.GetStructureSerializer(7); }));
    EXPECT_FALSE(registry.FindInfo(7)->structureSerializer);
    EXPECT_EQ(L"x", registry.GetValueString(Text(L"x"), 7));
}

TEST_F(ParamAdder, ANameOfTwoIdentifiersLeadsToTheLaterOne) {
    Fill([](AbstractParamAdder& adder) {
        adder.AddSimple(9, L"title", L"ti", TextSerializer());
        adder.AddSimple(3, L"title", L"ti", TextSerializer());
    });
    EXPECT_EQ(3, registry.GetID(L"view", L"title", true));
    EXPECT_EQ(3, ShortID(L"ti"));
    EXPECT_EQ(L"title", registry.GetName(9, true));
    EXPECT_EQ(L"title", registry.GetName(3, true));
}

TEST_F(ParamAdder, AnIdentifierAddedAgainIsListedOnce) {
    Fill([](AbstractParamAdder& adder) {
        adder.AddSimple(7, L"old", L"o", TextSerializer());
        adder.AddSimple(7, L"new", L"n", TextSerializer());
    });
    const auto rows = registry.GetNamespaceInfos()[0].second;
    ASSERT_EQ(1U, rows.size());
    EXPECT_EQ(7, rows[0].id);
    EXPECT_EQ(L"new", rows[0].verboseName);
    EXPECT_EQ(L"n", rows[0].shortName);
}

TEST_F(ParamAdder, TheNamespaceKeepsSerializersAlive) {
    int alive = 0;
    Fill([&](AbstractParamAdder& adder) {
        adder.AddSimple(1, L"one", new CountedSerializer(alive));
        adder.AddSimple(2, L"two", new CountedSerializer(alive));
        adder.AddSimple(1, L"one", new CountedSerializer(alive));  // lets go of the first
    });
    EXPECT_EQ(2, alive);
    IParameterSerializer* serializer = registry.GetValueSerializer(1);
    EXPECT_EQ(L"x", serializer->ToString(RefCntPtr<const IParameter>(Text(L"x"))));
    EXPECT_EQ(2, alive);
    registry.Clear(L"view");
    EXPECT_EQ(0, alive);
}

TEST_F(ParamAdder, OneSerializerMayServeSeveralIdentifiers) {
    int alive = 0;
    Fill([&](AbstractParamAdder& adder) {
        auto* shared = new CountedSerializer(alive);
        adder.AddSimple(1, L"one", shared);
        adder.AddList(2, L"two", shared);
    });
    EXPECT_EQ(1, alive);
    EXPECT_EQ(registry.GetValueSerializer(1), registry.GetListSerializer(2));
    registry.Clear();  // the serializer counts itself out while the counter is there
    EXPECT_EQ(0, alive);
}
