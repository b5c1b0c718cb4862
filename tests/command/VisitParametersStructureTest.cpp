#include <qvpreslayer/VisitParametersStructure.h>

#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command/VisitTestSupport.h"

namespace {

using VisitParameters = VisitTest;

// Asks for short names as soon as a text is written.
class SwitchingSerializer final : public TStringSerializer {
public:
    explicit SwitchingSerializer(TestBuilderVars& vars) : m_vars(vars) {}
    TString ToString(RefCntPtr<const IParameter> value) override {
        m_vars.shortNames = true;
        m_vars.compressArrays = true;
        return TStringSerializer::ToString(value);
    }

private:
    TestBuilderVars& m_vars;
};

// Notes what it is handed instead of writing a list.
class NotingListSerializer final : public TStringSerializer {
public:
    void SerializeList(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id) const override {
        stream.ListItem(GetParameterValue<TString>(value.Get()) + L" for " + TString::number(id) +
                        (stream.GetUseVerboseNames() ? L" verbose" : L" short") +
                        (stream.GetCompressArrays() ? L" packed" : L" plain"));
    }
};

// A visitor that refuses single values.
class RefusingVisitor : public IStructuredParameterVisitor {
public:
    virtual ~RefusingVisitor() = default;
    void Parameter(const TString&, const TString&, ParameterTypeCategory) override {
        throw std::runtime_error("disk full");
    }
    MOCK_METHOD(void, StartList, (const TString&, ParameterTypeCategory), (override));
    MOCK_METHOD(void, ListItem, (const TString&), (override));
    MOCK_METHOD(void, EndList, (const TString&), (override));
    MOCK_METHOD(void, StartMap, (const TString&, ParameterTypeCategory), (override));
    MOCK_METHOD(void, MapItem, (const TString&, const TString&, bool), (override));
    MOCK_METHOD(void, EndMap, (const TString&), (override));
    MOCK_METHOD(void, StartComposite, (const TString&, bool), (override));
    MOCK_METHOD(void, EndComposite, (const TString&), (override));
    MOCK_METHOD(void, NullMapItem, (const TString&, bool), (override));
    MOCK_METHOD(void, StartCapture, (), (override));
    MOCK_METHOD(TString, EndCapture, (), (override));
    MOCK_METHOD(void, WriteCaptured, (const TString&), (override));
};

}  // namespace

TEST_F(VisitParameters, AnEmptyBagHasNoEvents) { EXPECT_EQ("", Trace(MakeBag())); }

TEST_F(VisitParameters, SingleValuesAreToldWithNameTextAndKind) {
    EXPECT_EQ(
        "Parameter(title, Sales, 1)\n"
        "Parameter(max-count, -5, 2)\n"
        "Parameter(is-on, true, 3)\n",
        Trace(MakeBag({{kBool, Val(true)}, {kNumber, Val(-5)}, {kText, Text(L"Sales")}})));
}

TEST_F(VisitParameters, TheNameArgumentIsNotLookedAt) {
    TraceVisitor visitor;
    const auto bag = MakeBag({{kText, Text(L"Sales")}});
    VisitParametersStructure(L"whatever", RefCntPtr<const IParameters>(bag), visitor);
    EXPECT_EQ("Parameter(title, Sales, 1)\n", visitor.Text());
}

TEST_F(VisitParameters, IdentifiersGoUpSigned) {
    registry.Add(L"negative", -10, 0, [](AbstractParamAdder& adder) {
        adder.AddSimple(-3, L"minus-three", TextSerializer());
        adder.AddSimple(0, L"zero", TextSerializer());
    });
    EXPECT_EQ(
        "Parameter(minus-three, a, 1)\n"
        "Parameter(zero, b, 1)\n"
        "Parameter(title, c, 1)\n",
        Trace(MakeBag({{kText, Text(L"c")}, {-3, Text(L"a")}, {0, Text(L"b")}})));
}

TEST_F(VisitParameters, CacheEntriesNeverShow) {
    const auto bag = MakeBag({{kText, Text(L"Sales")}});
    bag->SetCacheParameter(kNumber, Val(5));
    bag->SetCacheParameter(kUnregistered, Val(5));
    EXPECT_EQ("Parameter(title, Sales, 1)\n", Trace(bag));
}

TEST_F(VisitParameters, UnserializableIdentifiersArePassedOver) {
    registry.AddUnserializable(kText);
    EXPECT_EQ("", Trace(MakeBag({{kText, Text(L"Sales")}})));
    EXPECT_EQ("Parameter(max-count, 5, 2)\n", Trace(MakeBag({{kText, Text(L"Sales")}, {kNumber, Val(5)}})));
}

TEST_F(VisitParameters, UnserializableIdentifiersNeedNotBeRegistered) {
    registry.AddUnserializable(kUnregistered);
    registry.AddUnserializable(-1);
    EXPECT_EQ("", Trace(MakeBag({{kUnregistered, Val(5)}, {-1, Val(5)}})));
}

TEST_F(VisitParameters, UnserializableIdentifiersArePassedOverInNestedBagsToo) {
    registry.AddUnserializable(kText);
    EXPECT_EQ(
        "StartComposite(sub-bag, false)\n"
        "EndComposite(sub-bag)\n",
        Trace(MakeBag({{kBag, BagVal(MakeBag({{kText, Text(L"x")}}))}})));
}

TEST_F(VisitParameters, AnUnregisteredIdentifierEndsTheWalk) {
    const auto bag = MakeBag({{kText, Text(L"Sales")}, {kUnregistered, Val(5)}, {30, Val(6)}});
    EXPECT_EQ("Parameter(title, Sales, 1)\n", EventsBefore<ParameterNotFoundException>(bag));
    EXPECT_EQ(kUnregistered, NotFoundId([&] { Trace(bag); }));
}

TEST_F(VisitParameters, NamesAreShortWhenTheOptionsAsk) {
    const TestSession session(true);
    EXPECT_EQ(
        "Parameter(ti, Sales, 1)\n"
        "StartComposite(sb, false)\n"
        "Parameter(mc, 5, 2)\n"
        "EndComposite(sb)\n"
        "StartMap(mm, 1)\n"
        "EndMap(mm)\n",
        Trace(MakeBag({{kText, Text(L"Sales")},
                       {kBag, BagVal(MakeBag({{kNumber, Val(5)}}))},
                       {kMap, Val(std::map<TString, TString>())}})));
}

TEST_F(VisitParameters, WithoutAShortNameAShortWalkFails) {
    const auto bag = MakeBag({{kText, Text(L"Sales")}, {kNoShort, Text(L"x")}});
    EXPECT_EQ("Parameter(title, Sales, 1)\nParameter(no-short, x, 1)\n", Trace(bag));
    const TestSession session(true);
    EXPECT_EQ(kNoShort, NotFoundId([&] { Trace(bag); }));
    EXPECT_EQ("Parameter(ti, Sales, 1)\n", EventsBefore<ParameterNotFoundException>(bag));
}

TEST_F(VisitParameters, AValueOfAnotherTypeIsAMismatchWithoutIdentifier) {
    const auto bag = MakeBag({{kText, Val(5)}});
    EXPECT_EQ(0, MismatchId([&] { Trace(bag); }));
    EXPECT_EQ("", EventsBefore<TypeMismatchCommandException>(bag));
}

TEST_F(VisitParameters, ListsAreToldItemByItem) {
    EXPECT_EQ(
        "StartList(int-list, 2)\n"
        "ListItem(3)\n"
        "ListItem(-1)\n"
        "EndList(int-list)\n"
        "StartList(text-list, 1)\n"
        "ListItem(b)\n"
        "ListItem(a)\n"
        "EndList(text-list)\n",
        Trace(MakeBag({{kList, Val(std::vector<int>{3, -1})}, {kTextList, Val(std::vector<TString>{L"b", L"a"})}})));
}

TEST_F(VisitParameters, AnEmptyListStartsAndEnds) {
    EXPECT_EQ(
        "StartList(int-list, 2)\n"
        "EndList(int-list)\n",
        Trace(MakeBag({{kList, Val(std::vector<int>())}})));
}

TEST_F(VisitParameters, TheListSerializerWritesTheList) {
    registry.Add(L"other", 100, 110,
                 [](AbstractParamAdder& adder) { adder.AddList(100, L"own-list", L"ol", new NotingListSerializer); });
    const auto bag = MakeBag({{100, Text(L"value")}});
    EXPECT_EQ("ListItem(value for 100 verbose plain)\n", Trace(bag));
    const TestSession session(true, true);
    EXPECT_EQ("ListItem(value for 100 short packed)\n", Trace(bag));
}

TEST_F(VisitParameters, MapsAreToldUpwardsByKey) {
    EXPECT_EQ(
        "StartMap(my-map, 1)\n"
        "MapItem(-, z, false)\n"
        "MapItem(B, y, false)\n"
        "MapItem(a, x, false)\n"
        "MapItem(b, w, false)\n"
        "EndMap(my-map)\n",
        Trace(MakeBag(
            {{kMap, Val(std::map<TString, TString>{{L"b", L"w"}, {L"a", L"x"}, {L"B", L"y"}, {L"-", L"z"}})}})));
}

TEST_F(VisitParameters, MapsTellTheKindOfTheirValues) {
    EXPECT_EQ(
        "StartMap(number-map, 2)\n"
        "MapItem(k, 7, false)\n"
        "EndMap(number-map)\n",
        Trace(MakeBag({{kNumberMap, Val(std::map<TString, int>{{L"k", 7}})}})));
}

TEST_F(VisitParameters, AnEmptyMapStartsAndEnds) {
    EXPECT_EQ(
        "StartMap(my-map, 1)\n"
        "EndMap(my-map)\n",
        Trace(MakeBag({{kMap, Val(std::map<TString, TString>())}})));
}

TEST_F(VisitParameters, AMapThatFailsHasNoEnd) {
    EXPECT_EQ("StartMap(my-map, 1)\n", EventsBefore<TypeMismatchCommandException>(MakeBag({{kMap, Text(L"none")}})));
}

TEST_F(VisitParameters, NestedBagsAreWalkedInside) {
    const auto inner = MakeBag({{kNumber, Val(1)}, {kBag, BagVal(MakeBag({{kText, Text(L"deep")}}))}});
    EXPECT_EQ(
        "Parameter(title, out, 1)\n"
        "StartComposite(sub-bag, false)\n"
        "Parameter(max-count, 1, 2)\n"
        "StartComposite(sub-bag, false)\n"
        "Parameter(title, deep, 1)\n"
        "EndComposite(sub-bag)\n"
        "EndComposite(sub-bag)\n"
        "StartMap(my-map, 1)\n"
        "EndMap(my-map)\n",
        Trace(MakeBag({{kText, Text(L"out")}, {kBag, BagVal(inner)}, {kMap, Val(std::map<TString, TString>())}})));
}

TEST_F(VisitParameters, AnEmptyNestedBagStartsAndEnds) {
    EXPECT_EQ(
        "StartComposite(sub-bag, false)\n"
        "EndComposite(sub-bag)\n",
        Trace(MakeBag({{kBag, BagVal(MakeBag())}})));
}

TEST_F(VisitParameters, ABagParameterWithoutABagIsAMismatchOfItsIdentifier) {
    const RefCntPtr<IParameter> values[] = {
        Text(L"none"), RefCntPtr<IParameter>(new PresentationModelParameter(nullptr)),
        RefCntPtr<IParameter>(new PresentationModelParameter(RefCntPtr<const PresentationModel>(new BagModel)))};
    for (const auto& value : values) {
        const auto bag = MakeBag({{kBag, value}, {kMap, Text(L"never seen")}});
        EXPECT_EQ(kBag, MismatchId([&] { Trace(bag); }));
        EXPECT_EQ("StartComposite(sub-bag, false)\n", EventsBefore<TypeMismatchCommandException>(bag));
    }
}

TEST_F(VisitParameters, AnEmptyPointerToABagIsALogicError) {
    const auto bag = MakeBag({{kBag, BagVal(nullptr)}});
    EXPECT_EQ("m_ptr", LogicErrorOf([&] { Trace(bag); }));
    EXPECT_EQ("StartComposite(sub-bag, false)\n", EventsBefore<LogicException>(bag));
}

TEST_F(VisitParameters, AFailureInsideANestedBagEndsNothing) {
    EXPECT_EQ("StartComposite(sub-bag, false)\nParameter(title, a, 1)\n",
              EventsBefore<ParameterNotFoundException>(
                  MakeBag({{kBag, BagVal(MakeBag({{kText, Text(L"a")}, {kUnregistered, Text(L"b")}}))}})));
}

TEST_F(VisitParameters, ABagThatIsAModelIsWalkedAsABag) {
    const RefCntPtr<BagModel> model(new BagModel);
    model->SetParameter(kText, Text(L"Sales"));
    EXPECT_EQ(
        "StartComposite(sub-bag, false)\n"
        "Parameter(title, Sales, 1)\n"
        "EndComposite(sub-bag)\n",
        Trace(MakeBag({{kBag, BagVal(model)}})));
}

TEST_F(VisitParameters, NestedBagsReadTheOptionsAnew) {
    TestSession session;
    registry.Add(L"switch", 0, 0, [&](AbstractParamAdder& adder) {
        adder.AddSimple(0, L"switch", L"sw", new SwitchingSerializer(session.Vars()));
    });
    const auto inner = MakeBag({{kNumber, Val(5)}, {kStructure, Val(6)}});
    EXPECT_EQ(
        "Parameter(switch, on, 1)\n"
        "Parameter(title, Sales, 1)\n"
        "StartComposite(sub-bag, false)\n"
        "Parameter(mc, 5, 2)\n"
        "ListItem(Serialize 6 for 6 own short packed)\n"
        "EndComposite(sub-bag)\n"
        "ListItem(Serialize 7 for 6 own verbose plain)\n",
        Trace(MakeBag({{0, Text(L"on")}, {kText, Text(L"Sales")}, {kBag, BagVal(inner)}, {kStructure, Val(7)}})));
}

TEST_F(VisitParameters, ANullBagIsALogicError) {
    EXPECT_EQ("m_ptr", LogicErrorOf([] { TraceOf(nullptr); }));
}

TEST(VisitParametersWithoutRegistry, IsALogicErrorBeforeAnythingElse) {
    EXPECT_EQ("gm_RegistryInstance != nullptr", LogicErrorOf([] { TraceOf(RefCntPtr<const IParameters>(MakeBag())); }));
    EXPECT_EQ("gm_RegistryInstance != nullptr", LogicErrorOf([] { TraceOf(nullptr); }));
}

TEST_F(VisitParameters, WhatTheVisitorThrowsPasses) {
    testing::StrictMock<RefusingVisitor> visitor;
    EXPECT_CALL(visitor, StartComposite(TString(L"sub-bag"), false));
    const auto bag = MakeBag({{kBag, BagVal(MakeBag({{kText, Text(L"a")}}))}});
    const auto error =
        Thrown<std::runtime_error>([&] { VisitParametersStructure(L"", RefCntPtr<const IParameters>(bag), visitor); });
    ASSERT_TRUE(error);
    EXPECT_STREQ("disk full", error->what());
}

TEST_F(VisitParameters, TheVisitorIsNeverDeletedThroughItsInterface) {
    EXPECT_FALSE(std::has_virtual_destructor_v<IStructuredParameterVisitor>);
    EXPECT_FALSE(std::is_destructible_v<IStructuredParameterVisitor>);
}

TEST_F(VisitParameters, TheBagIsNotChanged) {
    const auto value = Text(L"a");
    const auto bag = MakeBag({{kText, value}});
    const std::string first = Trace(bag);
    EXPECT_EQ(first, Trace(bag));
    EXPECT_EQ(value.Get(), &bag->GetParameter(kText));
}
