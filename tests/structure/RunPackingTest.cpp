#include <qvpreslayer/DataSerializerHelpers.h>  // first: the header stands alone

#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "structure/FailingVisitor.h"
#include "structure/PackingCases.h"
#include "support/Failures.h"

namespace {

constexpr int kIntRunsId = 285398425;
constexpr int kUIntRunsId = 297868712;
constexpr int kFloatRunsId = 291551623;

template <class T>
class NumericLists : public testing::Test {};

using NumericTypes = testing::Types<int, unsigned int, Int64, UInt64, float, double>;
TYPED_TEST_SUITE(NumericLists, NumericTypes);

template <class T>
class SteppedLists : public testing::Test {};

using SteppedTypes = testing::Types<int, unsigned int, Int64, UInt64>;
TYPED_TEST_SUITE(SteppedLists, SteppedTypes);

template <class T>
class RealLists : public testing::Test {};

using RealTypes = testing::Types<float, double>;
TYPED_TEST_SUITE(RealLists, RealTypes);

static_assert(DataSerializerHelpers::kRLERunThreshold == 4);
static_assert(std::is_same_v<const std::int32_t, decltype(DataSerializerHelpers::kRLERunThreshold)>);

}  // namespace

TYPED_TEST(NumericLists, PlainFormHasOneItemForEachElement) {
    ListHost<TypeParam> host;
    EXPECT_EQ("values:2[1 2 3 4 5 7 7 7 7]", host.Plain({1, 2, 3, 4, 5, 7, 7, 7, 7}));
    EXPECT_EQ("values:2[]", host.Plain({}));
}

TYPED_TEST(NumericLists, EmptyListHasNoMarker) {
    ListHost<TypeParam> host;
    EXPECT_EQ("values:2[]", host.Packed({}));
}

TYPED_TEST(NumericLists, ShortRunsStayPlain) {
    ListHost<TypeParam> host;
    EXPECT_EQ("values:2[7]", host.Packed({7}));
    EXPECT_EQ("values:2[7 7]", host.Packed({7, 7}));
    EXPECT_EQ("values:2[7 7 7]", host.Packed({7, 7, 7}));
    EXPECT_EQ("values:2[1 2 3]", host.Packed({1, 2, 3}));
}

// Two items, never a step of zero; and the marker behind.
TYPED_TEST(NumericLists, FourEqualElementsAreARun) {
    ListHost<TypeParam> host;
    EXPECT_EQ("values:2[" + Run<TypeParam>("7 4") + " " + Run<TypeParam>("") + "]", host.Packed({7, 7, 7, 7}));
    EXPECT_EQ("values:2[" + Run<TypeParam>("0 4") + " " + Run<TypeParam>("") + "]", host.Packed({0, 0, 0, 0}));
}

TYPED_TEST(NumericLists, LongRun) {
    ListHost<TypeParam> host;
    EXPECT_EQ("values:2[" + Run<TypeParam>("3 100000") + " " + Run<TypeParam>("") + "]",
              host.Packed(std::vector<TypeParam>(100000, TypeParam(3))));
}

TYPED_TEST(NumericLists, OneMarkerForSeveralRuns) {
    ListHost<TypeParam> host;
    EXPECT_EQ("values:2[" + Run<TypeParam>("5 4") + " 9 " + Run<TypeParam>("6 5") + " " + Run<TypeParam>("8 4") +
                  " 1 " + Run<TypeParam>("") + "]",
              host.Packed({5, 5, 5, 5, 9, 6, 6, 6, 6, 6, 8, 8, 8, 8, 1}));
}

TYPED_TEST(SteppedLists, StepsAreRuns) {
    const auto run = [](const char* items) { return Run<TypeParam>(items); };
    const std::string marker = run("");
    ExpectPacked<TypeParam>({
        {{1, 2, 3, 4, 5}, run("1 5 1") + " " + marker},
        {{10, 8, 6, 4}, run("10 4 -2") + " " + marker},
        {{0, 10, 20, 30}, run("0 4 10") + " " + marker},
        {{3, 2, 1, 0}, run("3 4 -1") + " " + marker},
        {{9, 1, 2, 3, 4, 5, 8, 8, 8, 8}, "9 " + run("1 5 1") + " " + run("8 4") + " " + marker},
    });
}

TYPED_TEST(SteppedLists, ShortRunGivesItsLastElementToTheNext) {
    const auto run = [](const char* items) { return Run<TypeParam>(items); };
    const std::string marker = run("");
    ExpectPacked<TypeParam>({
        {{1, 2, 4, 6, 8, 10}, "1 " + run("2 5 2") + " " + marker},
        {{1, 2, 3, 5, 7, 9}, "1 2 " + run("3 4 2") + " " + marker},
        {{5, 5, 5, 6, 7, 8}, "5 5 " + run("5 4 1") + " " + marker},
        {{0, 0, 0, 1, 2, 3, 4}, "0 0 " + run("0 5 1") + " " + marker},
        {{9, 8, 7, 7, 7, 7}, "9 8 " + run("7 4") + " " + marker},
    });
}

TYPED_TEST(SteppedLists, LongRunKeepsAllItsElements) {
    const auto run = [](const char* items) { return Run<TypeParam>(items); };
    const std::string marker = run("");
    ExpectPacked<TypeParam>({
        {{1, 2, 3, 4, 6}, run("1 4 1") + " 6 " + marker},
        {{1, 2, 3, 4, 5, 6, 4, 2, 0}, run("1 6 1") + " 4 2 0 " + marker},  // 6, 4, 2, 0 would be four
        {{0, 0, 0, 0, 1, 2, 3}, run("0 4") + " 1 2 3 " + marker},
        {{1, 2, 3, 4, 3, 2, 1, 0}, run("1 4 1") + " " + run("3 4 -1") + " " + marker},
    });
}

TYPED_TEST(SteppedLists, ShortProgressionsStayPlain) {
    ExpectPacked<TypeParam>({
        {{10, 8, 6}, "10 8 6"},
        {{1, 2, 4, 7}, "1 2 4 7"},
        {{1, 2, 3, 2, 1}, "1 2 3 2 1"},
        {{5, 5, 5, 6, 6, 6, 7}, "5 5 5 6 6 6 7"},
        {{1, 3, 5, 4, 3, 5, 7}, "1 3 5 4 3 5 7"},
    });
}

TEST(RunPacking, StepsThroughZero) {
    ExpectPacked<int>({
        {{-2, -1, 0, 1, 2}, "int-rle:2[-2 5 1] int-rle:2[]"},
        {{3, 0, -3, -6}, "int-rle:2[3 4 -3] int-rle:2[]"},
        {{-7, -7, -7, -7}, "int-rle:2[-7 4] int-rle:2[]"},
    });
}

TYPED_TEST(RealLists, OnlyEqualElementsMakeRuns) {
    ExpectPacked<TypeParam>({
        {{1, 2, 3, 4}, "1 2 3 4"},
        {{0.5, 0.5, 0.5, 0.5}, "float-rle:2[0.5 4] float-rle:2[]"},
        {{1, 1, 1, 2, 2, 2}, "1 1 1 2 2 2"},
        {{1, 2, 2, 2, 2, 3}, "1 float-rle:2[2 4] 3 float-rle:2[]"},
        {{1, 1, 1, 1, 2, 3, 4, 5}, "float-rle:2[1 4] 2 3 4 5 float-rle:2[]"},
    });
}

TYPED_TEST(RealLists, ZerosOfBothSignsAreEqual) {
    ExpectPacked<TypeParam>({
        {{TypeParam(0.0), TypeParam(-0.0), TypeParam(0.0), TypeParam(-0.0)}, "float-rle:2[0 4] float-rle:2[]"},
        {{TypeParam(-0.0), TypeParam(0.0), TypeParam(0.0), TypeParam(0.0)}, "float-rle:2[0 4] float-rle:2[]"},
    });
}

TYPED_TEST(RealLists, NotANumberJoinsNothing) {
    const TypeParam nan = std::numeric_limits<TypeParam>::quiet_NaN();
    ExpectPacked<TypeParam>({
        {{nan, nan, nan, nan}, "null null null null"},
        {{1, 1, nan, 1, 1}, "1 1 null 1 1"},
        {{1, 1, 1, 1, nan, 2, 2, 2, 2}, "float-rle:2[1 4] null float-rle:2[2 4] float-rle:2[]"},
    });
}

TYPED_TEST(RealLists, InfinitiesJoin) {
    const TypeParam infinity = std::numeric_limits<TypeParam>::infinity();
    const std::string text = "1" + std::string(37, '0');
    ExpectPacked<TypeParam>({
        {{infinity, infinity, infinity, infinity}, "float-rle:2[" + text + " 4] float-rle:2[]"},
        {{infinity, infinity, -infinity, -infinity}, text + " " + text + " -" + text + " -" + text},
    });
}

// Texts may agree where the numbers do not.
TEST(RunPacking, RealsAreComparedAsNumbers) { ExpectPacked<double>({{{0.0, 1e-20, 2e-20, 3e-20}, "0 0 0 0"}}); }

TEST(RunPacking, ShortNames) {
    EXPECT_EQ("v:2[pSA01:2[1 4 1] pSA01:2[]]", ListHost<int>().Trace({1, 2, 3, 4}, ListForm::Packed, false));
    EXPECT_EQ("v:2[pSA01:2[1 4 1] pSA01:2[]]", ListHost<Int64>().Trace({1, 2, 3, 4}, ListForm::Packed, false));
    EXPECT_EQ("v:2[tqb01:2[1 4 1] tqb01:2[]]", ListHost<unsigned int>().Trace({1, 2, 3, 4}, ListForm::Packed, false));
    EXPECT_EQ("v:2[tqb01:2[1 4 1] tqb01:2[]]", ListHost<UInt64>().Trace({1, 2, 3, 4}, ListForm::Packed, false));
    EXPECT_EQ("v:2[nVJ01:2[1 4] nVJ01:2[]]", ListHost<float>().Trace({1, 1, 1, 1}, ListForm::Packed, false));
    EXPECT_EQ("v:2[nVJ01:2[1 4] nVJ01:2[]]", ListHost<double>().Trace({1, 1, 1, 1}, ListForm::Packed, false));
}

// The outer list is opened before its runs are known, with the kind that is registered for it.
TEST(RunPacking, OuterKindComesFromTheRegistry) {
    ListHost<TString> host;
    ListTraceVisitor visitor;
    SerializeStructure stream(visitor, true, true);
    ParameterTypeSerializer<int>().SerializeList(Val<std::vector<int>>({1, 2, 3, 4}), stream, host.kListId);
    EXPECT_EQ("values:1[int-rle:2[1 4 1] int-rle:2[]]", visitor.Text());
}

TYPED_TEST(NumericLists, RunsNeedTheTagsToBeRegistered) {
    ListHost<TypeParam> host(false);
    ListTraceVisitor visitor;
    const int tag = std::is_floating_point_v<TypeParam> ? kFloatRunsId
                    : std::is_signed_v<TypeParam>       ? kIntRunsId
                                                        : kUIntRunsId;
    EXPECT_THAT(Doing([&] { host.Send({9, 1, 1, 1, 1, 5, 6}, ListForm::Packed, visitor); }), ThrowsNotFound(tag));
    EXPECT_EQ("values:2[9]", visitor.Text());  // the outer list is closed all the same
}

TYPED_TEST(NumericLists, ListsWithoutRunsNeedNoTags) {
    ListHost<TypeParam> host(false);
    EXPECT_EQ("values:2[7 7 7]", host.Packed({7, 7, 7}));
    EXPECT_EQ("values:2[7 7 7 7]", host.Plain({7, 7, 7, 7}));
}

TEST(RunPacking, UnregisteredListIsNotFound) {
    ListHost<int> host;
    ListTraceVisitor visitor;
    SerializeStructure stream(visitor, true, true);
    EXPECT_THAT(
        [&] {
            ParameterTypeSerializer<int>().SerializeList(Val<std::vector<int>>({1, 2, 3, 4}), stream, 8);
        },
        ThrowsNotFound(8));
    EXPECT_EQ("", visitor.Text());
}

TEST(RunPacking, WhatTheVisitorThrowsClosesTheLists) {
    ListHost<int> host;
    FailingVisitor visitor("ListItem");
    EXPECT_THROW(host.Send({1, 2, 3, 4}, ListForm::Packed, visitor), std::runtime_error);
    EXPECT_EQ("StartList(values, 2)\nStartList(int-rle, 2)\nListItem(1)\nEndList(int-rle)\nEndList(values)\n",
              visitor.Text());
}
