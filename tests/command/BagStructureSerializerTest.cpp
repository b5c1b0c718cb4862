#include <qvpreslayer/BagStructureSerializer.h>

#include <map>
#include <vector>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"
#include "support/TraceVisitor.h"

namespace {

using Bag = BagStructureSerializer::Bag;
using Bags = BagStructureSerializer::Bags;
using BagMap = BagStructureSerializer::BagMap;

enum : int {
    kTitle = 1,
    kSizes = 2,
    kStyle = 3,
    kRecord = 6,
    kRecords = 7,
    kByKey = 9,
    kList = 16,
    kLists = 17,
    kListMap = 19
};

class BagStructures : public testing::Test {
protected:
    BagStructures() {
        registry.Add(L"view", 1, 20, [this](AbstractParamAdder& adder) {
            adder.AddSimple(kTitle, L"title", L"ti", TextSerializer());
            adder.AddList(kSizes, L"mark-sizes", L"ms", IntSerializer());
            adder.AddBag(kStyle, L"style", L"st");
            adder.AddStructure(kRecord, L"record", L"rc", record.Get());
            adder.AddStructureList(kRecords, L"records", L"rs", record.Get());
            adder.AddStructureMap(kByKey, L"by-key", L"bk", record.Get());
            adder.AddStructure(kList, L"list", L"li", list.Get());
            adder.AddStructureList(kLists, L"lists", L"ls", list.Get());
            adder.AddStructureMap(kListMap, L"list-map", L"lm", list.Get());
        });
        RegisterCoreNamespaceParameters(registry, L"qvcore");
    }

    static Bag Titled(const wchar_t* title) { return Bag(MakeBag({{kTitle, Text(title)}})); }
    static Bag Texts(int id, std::vector<TString> texts) { return Bag(MakeBag({{id, Val(std::move(texts))}})); }
    static RefCntPtr<const IParameter> Const(const RefCntPtr<IParameter>& value) { return value; }

    static std::string Trace(int id, const RefCntPtr<IParameter>& value) {
        return TraceOf(Bag(MakeBag({{id, value}})));
    }

    // The events of one structure.
    static std::string Written(const IStructureSerializer& serializer, const RefCntPtr<IParameter>& value, int id,
                               bool ownComposite, bool verbose = true, bool packed = false) {
        TraceVisitor visitor;
        SerializeStructure stream(visitor, verbose, packed);
        serializer.Serialize(Const(value), stream, id, ownComposite);
        return visitor.Text();
    }

    const RefCntPtr<BagStructureSerializer> record{new BagStructureSerializer};
    const RefCntPtr<BagStructureSerializer> list{new BagStructureSerializer(BagStructureSerializer::List)};
    TestRegistry registry;
};

}  // namespace

TEST_F(BagStructures, HaveOneOfTwoForms) {
    EXPECT_FALSE(record->IsListForm());
    EXPECT_TRUE(list->IsListForm());
}

TEST_F(BagStructures, ARecordIsWrittenByMembersInItsOwnComposite) {
    EXPECT_EQ(
        "StartComposite(record, false)\n"
        "Parameter(title, Sales, 1)\n"
        "EndComposite(record)\n",
        Written(*record, Val(Titled(L"Sales")), kRecord, true));
}

TEST_F(BagStructures, ARecordInsideAnOpenCompositeWritesMembersOnly) {
    EXPECT_EQ("Parameter(title, Sales, 1)\n", Written(*record, Val(Titled(L"Sales")), kRecord, false));
}

TEST_F(BagStructures, AnEmptyRecordStartsAndEnds) {
    EXPECT_EQ(
        "StartComposite(record, false)\n"
        "EndComposite(record)\n",
        Written(*record, Val(Bag(MakeBag())), kRecord, true));
}

TEST_F(BagStructures, ARecordFollowsTheOptionsOfTheStream) {
    const Bag bag(MakeBag({{kTitle, Text(L"Sales")}, {kSizes, Val(std::vector<int>{5, 5, 5, 5})}}));
    EXPECT_EQ(
        "StartComposite(rc, false)\n"
        "Parameter(ti, Sales, 1)\n"
        "StartList(ms, 2)\n"
        "ListItem(5)\n"
        "ListItem(5)\n"
        "ListItem(5)\n"
        "ListItem(5)\n"
        "EndList(ms)\n"
        "EndComposite(rc)\n",
        Written(*record, Val(bag), kRecord, true, false, false));
    EXPECT_EQ(
        "StartList(mark-sizes, 2)\n"
        "StartList(int-rle, 2)\n"
        "ListItem(5)\n"
        "ListItem(4)\n"
        "EndList(int-rle)\n"
        "StartList(int-rle, 2)\n"
        "EndList(int-rle)\n"
        "EndList(mark-sizes)\n",
        Written(*record, Val(Bag(MakeBag({{kSizes, Val(std::vector<int>{5, 5, 5, 5})}}))), kRecord, false, true, true));
}

TEST_F(BagStructures, ARecordPassesOverUnserializableMembers) {
    registry.AddUnserializable(kTitle);
    EXPECT_EQ("", Written(*record, Val(Titled(L"Sales")), kRecord, false));
}

TEST_F(BagStructures, AListFormIsWrittenAsItsTexts) {
    EXPECT_EQ(
        "StartList(list, 6)\n"
        "ListItem(b)\n"
        "ListItem(a)\n"
        "EndList(list)\n",
        Written(*list, Val(Texts(kList, {L"b", L"a"})), kList, true));
    EXPECT_EQ(
        "StartList(list, 6)\n"
        "EndList(list)\n",
        Written(*list, Val(Texts(kList, {})), kList, true));
}

TEST_F(BagStructures, AListFormHasNoPlaceInsideAnOpenComposite) {
    const auto value = Val(Texts(kListMap, {L"a"}));
    EXPECT_EQ("ownComposite || !IsListForm()", LogicErrorOf([&] { Written(*list, value, kListMap, false); }));
}

TEST_F(BagStructures, AValueThatIsNoBagIsAMismatch) {
    EXPECT_EQ(0, MismatchId([&] { Written(*record, Text(L"x"), kRecord, true); }));
    EXPECT_EQ(0, MismatchId([&] { Written(*list, Text(L"x"), kList, true); }));
}

TEST_F(BagStructures, ANullBagIsALogicError) {
    EXPECT_EQ("m_ptr", LogicErrorOf([&] { Written(*record, BagVal(nullptr), kRecord, true); }));
    EXPECT_EQ("m_ptr", LogicErrorOf([&] { Written(*list, BagVal(nullptr), kList, true); }));
}

TEST_F(BagStructures, AFailureInsideClosesTheRecord) {
    TraceVisitor visitor;
    SerializeStructure stream(visitor, true, false);
    const auto value = Val(Bag(MakeBag({{kTitle, Text(L"a")}, {500, Text(L"unknown")}})));
    EXPECT_EQ(500, NotFoundId([&] { record->Serialize(Const(value), stream, kRecord, true); }));
    EXPECT_EQ(
        "StartComposite(record, false)\n"
        "Parameter(title, a, 1)\n"
        "EndComposite(record)\n",
        visitor.Text());
}

TEST_F(BagStructures, AWalkWritesThemInPlace) {
    EXPECT_EQ(
        "StartComposite(record, false)\n"
        "Parameter(title, a, 1)\n"
        "EndComposite(record)\n",
        Trace(kRecord, Val(Titled(L"a"))));
    EXPECT_EQ(
        "StartList(list, 6)\n"
        "ListItem(a)\n"
        "EndList(list)\n",
        Trace(kList, Val(Texts(kList, {L"a"}))));
}

TEST_F(BagStructures, AWalkWritesLists) {
    EXPECT_EQ(
        "StartList(records, 6)\n"
        "StartComposite(records, false)\n"
        "Parameter(title, a, 1)\n"
        "EndComposite(records)\n"
        "StartComposite(records, false)\n"
        "Parameter(title, b, 1)\n"
        "EndComposite(records)\n"
        "EndList(records)\n",
        Trace(kRecords, Val(Bags{Titled(L"a"), Titled(L"b")})));
    EXPECT_EQ(
        "StartList(lists, 6)\n"
        "StartList(lists, 7)\n"
        "ListItem(a)\n"
        "EndList(lists)\n"
        "EndList(lists)\n",
        Trace(kLists, Val(Bags{Texts(kLists, {L"a"})})));
}

TEST_F(BagStructures, AWalkWritesMapsWithNullEntries) {
    EXPECT_EQ(
        "StartMap(by-key, 6)\n"
        "NullMapItem(a-k, false)\n"
        "StartComposite(b-k, true)\n"
        "Parameter(title, b, 1)\n"
        "EndComposite(b-k)\n"
        "EndMap(by-key)\n",
        Trace(kByKey, Val(BagMap{{L"b-k", Titled(L"b")}, {L"a-k", Bag()}})));
}

TEST_F(BagStructures, AListSplitsIntoItsBags) {
    const Bag first = Titled(L"a");
    const Bag second = Titled(L"b");
    const auto elements = record->SplitList(Const(Val(Bags{first, second})));
    ASSERT_EQ(2U, elements.size());
    EXPECT_EQ(first.Get(), GetParameterValue<Bag>(elements[0].Get()).Get());
    EXPECT_EQ(second.Get(), GetParameterValue<Bag>(elements[1].Get()).Get());
    EXPECT_TRUE(record->SplitList(Const(Val(Bags()))).empty());
}

TEST_F(BagStructures, AMapSplitsIntoItsBagsAndNulls) {
    const Bag bag = Titled(L"a");
    const auto elements = record->SplitMap(Const(Val(BagMap{{L"set", bag}, {L"null", Bag()}})));
    ASSERT_EQ(2U, elements.size());
    EXPECT_EQ(bag.Get(), GetParameterValue<Bag>(elements.at(L"set").Get()).Get());
    EXPECT_FALSE(elements.at(L"set")->IsNull());
    EXPECT_TRUE(elements.at(L"null")->IsNull());
}

TEST_F(BagStructures, WhatIsNoListOrMapOfBagsIsAMismatch) {
    EXPECT_EQ(0, MismatchId([&] { record->SplitList(Const(Val(Titled(L"a")))); }));
    EXPECT_EQ(0, MismatchId([&] { record->SplitMap(Const(Val(Bags()))); }));
}

TEST_F(BagStructures, ABagBecomesAStructureOfThatBag) {
    const auto bag = MakeBag({{kTitle, Text(L"a")}});
    const auto value = record->FromParameters(kRecord, bag);
    EXPECT_EQ(bag.Get(), GetParameterValue<Bag>(value.Get()).Get());
}

TEST_F(BagStructures, ElementsBecomeAList) {
    const auto first = MakeBag();
    const auto second = MakeBag();
    const auto value =
        record->MakeList({record->FromParameters(kRecords, first), record->FromParameters(kRecords, second)});
    const auto& bags = GetParameterValue<Bags>(value.Get());
    ASSERT_EQ(2U, bags.size());
    EXPECT_EQ(first.Get(), bags[0].Get());
    EXPECT_EQ(second.Get(), bags[1].Get());
    EXPECT_TRUE(GetParameterValue<Bags>(record->MakeList({}).Get()).empty());
}

TEST_F(BagStructures, EntriesBecomeAMapInWhichNullIsAnEmptyPointer) {
    const auto bag = MakeBag();
    const auto value = record->MakeMap(
        {{L"set", record->FromParameters(kByKey, bag)}, {L"null", record->FromParameters(kByKey, nullptr)}});
    const auto& bags = GetParameterValue<BagMap>(value.Get());
    ASSERT_EQ(2U, bags.size());
    EXPECT_EQ(bag.Get(), bags.at(L"set").Get());
    EXPECT_FALSE(bags.at(L"null"));
    EXPECT_TRUE(GetParameterValue<BagMap>(record->MakeMap({}).Get()).empty());
}

TEST_F(BagStructures, ElementsAreLeftAsTheyAre) {
    const auto element = MakeBag({{kTitle, Text(L"a")}});
    const auto owner = MakeBag();
    record->PrepareElement(kRecords, element, owner);
    EXPECT_EQ("Parameter(title, a, 1)\n", TraceOf(Bag(element)));
    EXPECT_EQ("", TraceOf(Bag(owner)));
}

TEST_F(BagStructures, ARecordThatHoldsItselfIsTooDeep) {
    const auto bag = MakeBag();
    bag->SetParameter(kRecord, Val(Bag(bag)));
    const auto error = Thrown<QuorvelException>([&] { TraceOf(Bag(bag)); });
    bag->SetParameter(kRecord, nullptr);
    ASSERT_TRUE(error);
    EXPECT_STREQ("Parameter bags are nested too deeply", error->what());
}

TEST_F(BagStructures, RecordsAndBagsCountTogether) {
    const auto bag = MakeBag();
    const auto style = MakeBag({{kRecords, Val(Bags{Bag(bag)})}});
    bag->SetParameter(kStyle, BagVal(style));
    const auto error = Thrown<QuorvelException>([&] { TraceOf(Bag(bag)); });
    bag->SetParameter(kStyle, nullptr);
    ASSERT_TRUE(error);
    EXPECT_STREQ("Parameter bags are nested too deeply", error->what());
}
