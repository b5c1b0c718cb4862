#include <qvpreslayer/DataSerializerHelpers.h>  // first: the header stands alone

#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "structure/FailingVisitor.h"
#include "support/Failures.h"
#include "support/ListHost.h"

namespace {

constexpr int kIntRunsId = 285398425;
constexpr int kUIntRunsId = 297868712;
constexpr int kFloatRunsId = 291551623;

template <class T>
struct PackingCase {
    std::vector<T> values;
    std::string items;  // as ListTraceVisitor notes them, between the brackets of the outer list
};

template <class T>
void ExpectPacked(const std::vector<PackingCase<T>>& cases) {
    ListHost<T> host;
    for (const auto& c : cases) {
        EXPECT_EQ("values:2[" + c.items + "]", host.Packed(c.values));
    }
}

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

// The name of a type's runs.
template <class T>
std::string TagOf() {
    if constexpr (std::is_floating_point_v<T>) {
        return "float-rle";
    } else {
        return std::is_signed_v<T> ? "int-rle" : "uint-rle";
    }
}

// The trace of one run, and the marker.
template <class T>
std::string Run(const std::string& items) {
    return TagOf<T>() + ":2[" + items + "]";
}

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

// Steps are usable while the halves of two neighbours, each cut towards zero, differ by less than 500,000,000.
TEST(RunPacking, LargestStepsOfInt) {
    ExpectPacked<int>({
        {{-1999999996, -999999998, 0, 999999998}, "int-rle:2[-1999999996 4 999999998] int-rle:2[]"},
        {{1999999996, 999999998, 0, -999999998}, "int-rle:2[1999999996 4 -999999998] int-rle:2[]"},
        // The halves of two odd or two even neighbours decide alike; of one each, by where they stand.
        {{-1999999998, -999999999, 0, 999999999}, "-1999999998 -999999999 0 999999999"},
        {{-2000000000, -1000000000, 0, 1000000000}, "-2000000000 -1000000000 0 1000000000"},
        {{-1, 999999999}, "-1 999999999"},
        {{0, 999999999}, "0 999999999"},
        {{0, 1000000000}, "0 1000000000"},
    });
}

TEST(RunPacking, UnusableStepOpensARunOfOne) {
    ExpectPacked<int>({
        {{0, 2000000000, 2000000000, 2000000000, 2000000000}, "0 int-rle:2[2000000000 4] int-rle:2[]"},
        {{1, 2, 3, 4, 2000000000}, "int-rle:2[1 4 1] 2000000000 int-rle:2[]"},
        {{1, 2, 3, 2000000000, 2000000001, 2000000002, 2000000003}, "1 2 3 int-rle:2[2000000000 4 1] int-rle:2[]"},
        {{0, 2000000000, 0, 2000000000}, "0 2000000000 0 2000000000"},
    });
}

TEST(RunPacking, LargestStepsOfUnsignedInt) {
    ExpectPacked<unsigned int>({
        {{0U, 999999998U, 1999999996U, 2999999994U}, "uint-rle:2[0 4 999999998] uint-rle:2[]"},
        {{2999999994U, 1999999996U, 999999998U, 0U}, "uint-rle:2[2999999994 4 -999999998] uint-rle:2[]"},
        {{0U, 999999999U, 1999999998U, 2999999997U}, "0 999999999 1999999998 2999999997"},
        {{0U, 1000000000U, 2000000000U, 3000000000U}, "0 1000000000 2000000000 3000000000"},
    });
}

// Here the halves differ by less than 500,000,000,000,000,000.
TEST(RunPacking, LargestStepsOfSixtyFourBits) {
    ExpectPacked<Int64>({
        {{0, 999999999999999998, 1999999999999999996, 2999999999999999994},
         "int-rle:2[0 4 999999999999999998] int-rle:2[]"},
        {{999999999999999998, 0, -999999999999999998, -1999999999999999996},
         "int-rle:2[999999999999999998 4 -999999999999999998] int-rle:2[]"},
        {{0, 999999999999999999, 1999999999999999998, 2999999999999999997},
         "0 999999999999999999 1999999999999999998 2999999999999999997"},
        {{0, 1000000000000000000, 2000000000000000000, 3000000000000000000},
         "0 1000000000000000000 2000000000000000000 3000000000000000000"},
        {{0, 2000000000, 4000000000, 6000000000}, "int-rle:2[0 4 2000000000] int-rle:2[]"},
    });
}

// The bound of unsigned 64-bit halves lies beyond every step that fits four times into the type.
TEST(RunPacking, LargestStepsOfUnsignedSixtyFourBits) {
    ExpectPacked<UInt64>({
        {{0U, 6148914691236517205U, 12297829382473034410U, 18446744073709551615U},
         "uint-rle:2[0 4 6148914691236517205] uint-rle:2[]"},
        {{18446744073709551615U, 12297829382473034410U, 6148914691236517205U, 0U},
         "uint-rle:2[18446744073709551615 4 -6148914691236517205] uint-rle:2[]"},
        {{0U, 9999999999999999998U}, "0 9999999999999999998"},
        {{18446744073709551614U, 8446744073709551616U, 1U}, "18446744073709551614 8446744073709551616 1"},
        {{0U, 10000000000000000000U, 10000000000000000000U, 10000000000000000000U, 10000000000000000000U},
         "0 uint-rle:2[10000000000000000000 4] uint-rle:2[]"},
    });
}

TYPED_TEST(SteppedLists, ExtremesSideBySideStayPlain) {
    constexpr TypeParam kMin = std::numeric_limits<TypeParam>::min();
    constexpr TypeParam kMax = std::numeric_limits<TypeParam>::max();
    const std::string low = std::to_string(kMin);
    const std::string high = std::to_string(kMax);
    ExpectPacked<TypeParam>({
        {{kMin, kMax}, low + " " + high},
        {{kMax, kMin}, high + " " + low},
        {{kMin, kMax, kMin, kMax, kMin}, low + " " + high + " " + low + " " + high + " " + low},
    });
}

TYPED_TEST(SteppedLists, RunsAtTheExtremes) {
    constexpr TypeParam kMin = std::numeric_limits<TypeParam>::min();
    constexpr TypeParam kMax = std::numeric_limits<TypeParam>::max();
    const std::string marker = Run<TypeParam>("");
    const std::string low = std::to_string(kMin);
    const std::string high = std::to_string(kMax);
    ExpectPacked<TypeParam>({
        {{kMin, kMin, kMin, kMin}, Run<TypeParam>(low + " 4") + " " + marker},
        {{kMax, kMax, kMax, kMax}, Run<TypeParam>(high + " 4") + " " + marker},
        {{kMax, kMax - 1, kMax - 2, kMax - 3}, Run<TypeParam>(high + " 4 -1") + " " + marker},
        {{kMin, kMin + 1, kMin + 2, kMin + 3}, Run<TypeParam>(low + " 4 1") + " " + marker},
        {{kMin, kMin, kMin, kMin, kMax, kMax, kMax, kMax},
         Run<TypeParam>(low + " 4") + " " + Run<TypeParam>(high + " 4") + " " + marker},
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
    EXPECT_THAT([&] { host.Send({9, 1, 1, 1, 1, 5, 6}, ListForm::Packed, visitor); }, ThrowsNotFound(tag));
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
