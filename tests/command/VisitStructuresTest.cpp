// The walk of structures, structure lists and structure maps.
#include <qvpreslayer/VisitParametersStructure.h>

#include <map>
#include <vector>

#include <gtest/gtest.h>

#include "command/VisitTestSupport.h"

namespace {

using VisitStructures = VisitTest;
using Numbers = std::vector<int>;
using NumberMap = std::map<TString, int>;

}  // namespace

TEST_F(VisitStructures, AStructureIsWrittenByItsSerializerAlone) {
    EXPECT_EQ("ListItem(Serialize 5 for 6 own verbose plain)\n", Trace(MakeBag({{kStructure, Val(5)}})));
}

TEST_F(VisitStructures, OptionsReachTheStream) {
    const auto bag = MakeBag({{kStructure, Val(5)}});
    {
        const TestSession session(false, true);
        EXPECT_EQ("ListItem(Serialize 5 for 6 own verbose packed)\n", Trace(bag));
    }
    const TestSession session(true, false);
    EXPECT_EQ("ListItem(Serialize 5 for 6 own short plain)\n", Trace(bag));
}

TEST_F(VisitStructures, AListIsToldElementByElement) {
    EXPECT_EQ(
        "StartList(items, 6)\n"
        "ListItem(Serialize 8 for 7 own verbose plain)\n"
        "ListItem(Serialize 3 for 7 own verbose plain)\n"
        "EndList(items)\n",
        Trace(MakeBag({{kStructureList, Val(Numbers{8, 3})}})));
    EXPECT_EQ(2U, structures->streams.size());
}

TEST_F(VisitStructures, AnEmptyListStartsAndEnds) {
    EXPECT_EQ(
        "StartList(items, 6)\n"
        "EndList(items)\n",
        Trace(MakeBag({{kStructureList, Val(Numbers())}})));
    EXPECT_TRUE(structures->streams.empty());
}

TEST_F(VisitStructures, AListHandsNullElementsToItsSerializer) {
    EXPECT_EQ(
        "StartList(items, 6)\n"
        "ListItem(Serialize null for 7 own verbose plain)\n"
        "EndList(items)\n",
        Trace(MakeBag({{kStructureList, Val(Numbers{-1})}})));
}

TEST_F(VisitStructures, AMapIsToldUpwardsByKeyWithRawKeys) {
    EXPECT_EQ(
        "StartMap(by-key, 6)\n"
        "StartComposite(a-k, true)\n"
        "ListItem(Serialize 1 for 9 inside verbose plain)\n"
        "EndComposite(a-k)\n"
        "StartComposite(b-k, true)\n"
        "ListItem(Serialize 2 for 9 inside verbose plain)\n"
        "EndComposite(b-k)\n"
        "EndMap(by-key)\n",
        Trace(MakeBag({{kStructureMap, Val(NumberMap{{L"b-k", 2}, {L"a-k", 1}})}})));
}

TEST_F(VisitStructures, ANullEntryOfAMapIsToldWithoutItsSerializer) {
    EXPECT_EQ(
        "StartMap(by-key, 6)\n"
        "NullMapItem(a-k, false)\n"
        "StartComposite(b-k, true)\n"
        "ListItem(Serialize 2 for 9 inside verbose plain)\n"
        "EndComposite(b-k)\n"
        "EndMap(by-key)\n",
        Trace(MakeBag({{kStructureMap, Val(NumberMap{{L"a-k", -1}, {L"b-k", 2}})}})));
    EXPECT_EQ(1U, structures->streams.size());
}

TEST_F(VisitStructures, AnEmptyMapStartsAndEnds) {
    EXPECT_EQ(
        "StartMap(by-key, 6)\n"
        "EndMap(by-key)\n",
        Trace(MakeBag({{kStructureMap, Val(NumberMap())}})));
}

TEST_F(VisitStructures, NamesAreShortWhenTheOptionsAsk) {
    const TestSession session(true);
    EXPECT_EQ(
        "StartList(it, 6)\n"
        "EndList(it)\n"
        "StartMap(bk, 6)\n"
        "NullMapItem(a-k, false)\n"
        "EndMap(bk)\n",
        Trace(MakeBag({{kStructureList, Val(Numbers())}, {kStructureMap, Val(NumberMap{{L"a-k", -1}})}})));
}

TEST_F(VisitStructures, AFailureLeavesListsAndMapsOpen) {
    EXPECT_EQ("StartList(items, 6)\n",
              EventsBefore<TypeMismatchCommandException>(MakeBag({{kStructureList, Text(L"none")}})));
    EXPECT_EQ("StartMap(by-key, 6)\n",
              EventsBefore<TypeMismatchCommandException>(MakeBag({{kStructureMap, Text(L"none")}})));
    EXPECT_EQ("", EventsBefore<TypeMismatchCommandException>(MakeBag({{kStructure, Text(L"none")}})));
}

TEST_F(VisitStructures, WithoutASerializerNothingCanBeWritten) {
    registry.Add(L"bare", 100, 110, [](AbstractParamAdder& adder) {
        adder.AddStructure(100, L"bare-record", nullptr);
        adder.AddStructureList(101, L"bare-items", nullptr);
        adder.AddStructureMap(102, L"bare-by-key", nullptr);
    });
    EXPECT_EQ("m_ptr", LogicErrorOf([] { Trace(MakeBag({{100, Val(1)}})); }));
    EXPECT_EQ("m_ptr", LogicErrorOf([] { Trace(MakeBag({{101, Val(Numbers{1})}})); }));
    EXPECT_EQ("m_ptr", LogicErrorOf([] { Trace(MakeBag({{102, Val(NumberMap{{L"k", 1}})}})); }));
}
