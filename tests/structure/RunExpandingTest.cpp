#include <qvpreslayer/DataSerializerHelpers.h>  // first: the header stands alone

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "structure/Expand.h"
#include "support/Failures.h"

namespace {

template <class T>
class RunExpansion : public testing::Test {};

using NumericTypes = testing::Types<int, unsigned int, Int64, UInt64, float, double>;
TYPED_TEST_SUITE(RunExpansion, NumericTypes);

template <class T>
class RealExpansion : public testing::Test {};

using RealTypes = testing::Types<float, double>;
TYPED_TEST_SUITE(RealExpansion, RealTypes);

}  // namespace

TYPED_TEST(RunExpansion, NoRecordsNoChange) {
    EXPECT_EQ((std::vector<TypeParam>{9, 1}), Expand<TypeParam>({L"9", L"1"}, {}));
    EXPECT_TRUE(Expand<TypeParam>({}, {}).empty());
}

TYPED_TEST(RunExpansion, ConstantRun) {
    EXPECT_EQ((std::vector<TypeParam>{5, 5, 5, 5}), Expand<TypeParam>({}, {{0, {L"5", L"4"}}, {1, {}}}));
}

TYPED_TEST(RunExpansion, RisingAndFallingRuns) {
    EXPECT_EQ((std::vector<TypeParam>{1, 2, 3, 4, 5}), Expand<TypeParam>({}, {{0, {L"1", L"5", L"1"}}, {1, {}}}));
    EXPECT_EQ((std::vector<TypeParam>{10, 8, 6, 4}), Expand<TypeParam>({}, {{0, {L"10", L"4", L"-2"}}, {1, {}}}));
    EXPECT_EQ((std::vector<TypeParam>{7, 7, 7, 7}), Expand<TypeParam>({}, {{0, {L"7", L"4", L"0"}}, {1, {}}}));
}

TYPED_TEST(RunExpansion, PositionsCountNestedLists) {
    EXPECT_EQ((std::vector<TypeParam>{9, 1, 2, 3, 4, 5, 8, 8, 8, 8}),
              Expand<TypeParam>({L"9"}, {{1, {L"1", L"5", L"1"}}, {2, {L"8", L"4"}}, {3, {}}}));
    EXPECT_EQ((std::vector<TypeParam>{1, 5, 5, 2, 6, 6, 3}),
              Expand<TypeParam>({L"1", L"2", L"3"}, {{1, {L"5", L"2"}}, {3, {L"6", L"2"}}, {5, {}}}));
}

TYPED_TEST(RunExpansion, RunsBeforeBetweenAndBehind) {
    EXPECT_EQ((std::vector<TypeParam>{5, 5, 1}), Expand<TypeParam>({L"1"}, {{0, {L"5", L"2"}}}));
    EXPECT_EQ((std::vector<TypeParam>{1, 5, 5}), Expand<TypeParam>({L"1"}, {{1, {L"5", L"2"}}}));
    EXPECT_EQ((std::vector<TypeParam>{1, 5, 5, 2}), Expand<TypeParam>({L"1", L"2"}, {{1, {L"5", L"2"}}}));
}

TYPED_TEST(RunExpansion, RecordsMayComeInAnyOrder) {
    const std::vector<TypeParam> expected = {9, 1, 2, 3, 4, 5, 8, 8, 8, 8};
    EXPECT_EQ(expected, Expand<TypeParam>({L"9"}, {{3, {}}, {2, {L"8", L"4"}}, {1, {L"1", L"5", L"1"}}}));
    EXPECT_EQ(expected, Expand<TypeParam>({L"9"}, {{2, {L"8", L"4"}}, {3, {}}, {1, {L"1", L"5", L"1"}}}));
}

// Lists of other sizes vanish, yet the positions behind them count them.
TYPED_TEST(RunExpansion, OtherSizesAreSkippedAndCount) {
    EXPECT_EQ((std::vector<TypeParam>{5, 2, 2, 2, 2}), Expand<TypeParam>({L"5"}, {{0, {L"1"}}, {2, {L"2", L"4"}}}));
    EXPECT_EQ((std::vector<TypeParam>{5, 2, 2, 2, 2}), Expand<TypeParam>({L"5"}, {{0, {}}, {2, {L"2", L"4"}}}));
    EXPECT_EQ((std::vector<TypeParam>{5, 2, 2, 2, 2}),
              Expand<TypeParam>({L"5"}, {{1, {L"a", L"b", L"c", L"d"}}, {2, {L"2", L"4"}}}));
    EXPECT_EQ((std::vector<TypeParam>{5}),
              Expand<TypeParam>({L"5"}, {{0, {}}, {1, {L"7"}}, {3, {L"a", L"b", L"c", L"d", L"e"}}}));
}

TYPED_TEST(RunExpansion, AnyLengthIsTaken) {
    EXPECT_TRUE(Expand<TypeParam>({}, {{0, {L"1", L"0"}}}).empty());
    EXPECT_TRUE(Expand<TypeParam>({}, {{0, {L"1", L"0", L"3"}}}).empty());
    EXPECT_EQ((std::vector<TypeParam>{1}), Expand<TypeParam>({}, {{0, {L"1", L"1"}}}));
    EXPECT_EQ((std::vector<TypeParam>{5, 5}), Expand<TypeParam>({}, {{0, {L"5", L"2"}}}));
    EXPECT_EQ((std::vector<TypeParam>{5, 6, 7}), Expand<TypeParam>({}, {{0, {L"5", L"3", L"1"}}}));
    EXPECT_EQ((std::vector<TypeParam>{5}), Expand<TypeParam>({}, {{0, {L"5", L"1", L"7"}}}));
}

TYPED_TEST(RunExpansion, TextsThatAreNoNumbers) {
    EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{0, {L"a", L"4"}}}); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{0, {L"", L"4"}}}); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{0, {L"1", L"b"}}}); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{0, {L"1", L"-4"}}}); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{0, {L"1", L"4.0"}}}); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{0, {L"1", L"4294967296"}}}); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{0, {L"1", L"4", L"x"}}}); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{0, {L"1", L"4", L""}}}); }), ThrowsParseFailure());
}

TYPED_TEST(RunExpansion, PositionsOutsideTheList) {
    const auto outside = ThrowsLogicFailure("index <= values.size()");
    EXPECT_THAT(Doing([] { Expand<TypeParam>({L"1"}, {{99, {L"1", L"4"}}}); }), outside);
    EXPECT_THAT(Doing([] { Expand<TypeParam>({L"1"}, {{2, {L"1", L"4"}}}); }), outside);
    EXPECT_THAT(Doing([] { Expand<TypeParam>({L"1"}, {{-1, {L"1", L"4"}}}); }), outside);
    EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{1, {L"1", L"4"}}}); }), outside);
    EXPECT_THAT(Doing([] { Expand<TypeParam>({L"1"}, {{0, {L"1", L"4"}}, {3, {L"1", L"4"}}}); }), outside);
    EXPECT_THAT(Doing([] { Expand<TypeParam>({L"1"}, {{2147483647, {L"1", L"4"}}}); }), outside);
    EXPECT_THAT(Doing([] { Expand<TypeParam>({L"1"}, {{std::numeric_limits<int>::min(), {L"1", L"4"}}}); }), outside);
}

TYPED_TEST(RunExpansion, TwoRecordsCannotShareAPosition) {
    const auto outside = ThrowsLogicFailure("index <= values.size()");
    EXPECT_THAT(Doing([] { Expand<TypeParam>({L"1", L"2"}, {{1, {L"5", L"4"}}, {1, {L"6", L"4"}}}); }), outside);
    EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{0, {L"5", L"4"}}, {0, {L"6", L"4"}}}); }), outside);
}

TYPED_TEST(RunExpansion, PlainItemsAreReadFirst) {
    EXPECT_THAT(Doing([] { Expand<TypeParam>({L"x"}, {{99, {L"1", L"4"}}}); }), ThrowsParseFailure());
}

TEST(RunExpanding, StepsOfUnsignedTypesAreSigned) {
    EXPECT_EQ((std::vector<unsigned int>{10, 8, 6, 4}), Expand<unsigned int>({}, {{0, {L"10", L"4", L"-2"}}}));
    // 32-bit steps are read as int, 64-bit ones as 64-bit signed integers, for both signs of the elements.
    EXPECT_THAT(Doing([] { Expand<int>({}, {{0, {L"0", L"4", L"2147483648"}}}); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { Expand<unsigned int>({}, {{0, {L"0", L"4", L"2147483648"}}}); }), ThrowsParseFailure());
    EXPECT_EQ((std::vector<unsigned int>{0U, 2147483647U, 4294967294U}),
              Expand<unsigned int>({}, {{0, {L"0", L"3", L"2147483647"}}}));
    EXPECT_EQ((std::vector<Int64>{0, 2147483648, 4294967296}), Expand<Int64>({}, {{0, {L"0", L"3", L"2147483648"}}}));
    EXPECT_EQ((std::vector<UInt64>{18446744073709551615U, 12297829382473034410U, 6148914691236517205U, 0U}),
              Expand<UInt64>({}, {{0, {L"18446744073709551615", L"4", L"-6148914691236517205"}}}));
    EXPECT_THAT(Doing([] { Expand<Int64>({}, {{0, {L"0", L"4", L"9223372036854775808"}}}); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { Expand<UInt64>({}, {{0, {L"0", L"4", L"9223372036854775808"}}}); }), ThrowsParseFailure());
}

TEST(RunExpanding, FirstValuesAreOfTheElementType) {
    EXPECT_THAT(Doing([] { Expand<int>({}, {{0, {L"2147483648", L"4"}}}); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { Expand<unsigned int>({}, {{0, {L"-1", L"4"}}}); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { Expand<int>({}, {{0, {L"1.5", L"4"}}}); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { Expand<int>({}, {{0, {L"1", L"4", L"0.5"}}}); }), ThrowsParseFailure());
}

TEST(RunExpanding, ArithmeticWraps) {
    constexpr int kMin = std::numeric_limits<int>::min();
    EXPECT_EQ((std::vector<int>{2147483647, kMin, kMin + 1, kMin + 2}),
              Expand<int>({}, {{0, {L"2147483647", L"4", L"1"}}}));
    EXPECT_EQ((std::vector<int>{0, kMin, 0, kMin}), Expand<int>({}, {{0, {L"0", L"4", L"-2147483648"}}}));
    EXPECT_EQ((std::vector<int>{kMin, 2147483647}), Expand<int>({}, {{0, {L"-2147483648", L"2", L"-1"}}}));
    EXPECT_EQ((std::vector<unsigned int>{1U, 0U, 4294967295U}), Expand<unsigned int>({}, {{0, {L"1", L"3", L"-1"}}}));
    EXPECT_EQ((std::vector<unsigned int>{4294967295U, 0U, 1U}),
              Expand<unsigned int>({}, {{0, {L"4294967295", L"3", L"1"}}}));
    constexpr Int64 kMin64 = std::numeric_limits<Int64>::min();
    EXPECT_EQ((std::vector<Int64>{9223372036854775807, kMin64, kMin64 + 1}),
              Expand<Int64>({}, {{0, {L"9223372036854775807", L"3", L"1"}}}));
    EXPECT_EQ((std::vector<Int64>{0, kMin64, 0}), Expand<Int64>({}, {{0, {L"0", L"3", L"-9223372036854775808"}}}));
    EXPECT_EQ((std::vector<UInt64>{18446744073709551615U, 0U}),
              Expand<UInt64>({}, {{0, {L"18446744073709551615", L"2", L"1"}}}));
    EXPECT_EQ((std::vector<UInt64>{0U, 9223372036854775808U, 0U}),
              Expand<UInt64>({}, {{0, {L"0", L"3", L"-9223372036854775808"}}}));
}

TYPED_TEST(RealExpansion, StepsAreAccepted) {
    EXPECT_EQ((std::vector<TypeParam>{1, 1.5, 2}), Expand<TypeParam>({}, {{0, {L"1", L"3", L"0.5"}}}));
    EXPECT_EQ((std::vector<TypeParam>{1, 0.75, 0.5, 0.25}), Expand<TypeParam>({}, {{0, {L"1", L"4", L"-0.25"}}}));
    EXPECT_EQ((std::vector<TypeParam>{0.5, 1000.5, 2000.5}), Expand<TypeParam>({}, {{0, {L"0.5", L"3", L"1e3"}}}));
}

// Each value is the one before it plus the step, rounded in the type itself; a product would round otherwise.
TYPED_TEST(RealExpansion, StepsAddUp) {
    const TypeParam step = ParameterTypeSerializer<TypeParam>::TypeFromString(L"0.1");
    std::vector<TypeParam> rising = {step};
    std::vector<TypeParam> falling = {step};
    while (rising.size() < 50) {
        rising.push_back(rising.back() + step);
        falling.push_back(falling.back() - step);
    }
    EXPECT_EQ(rising, Expand<TypeParam>({}, {{0, {L"0.1", L"50", L"0.1"}}}));
    EXPECT_EQ(falling, Expand<TypeParam>({}, {{0, {L"0.1", L"50", L"-0.1"}}}));
}

TYPED_TEST(RealExpansion, NullIsANumberHere) {
    const auto values = Expand<TypeParam>({}, {{0, {L"null", L"2"}}, {1, {L"1", L"3", L"null"}}});
    ASSERT_EQ(5U, values.size());
    EXPECT_TRUE(std::isnan(values[0]) && std::isnan(values[1]));
    EXPECT_EQ(TypeParam(1), values[2]);
    EXPECT_TRUE(std::isnan(values[3]) && std::isnan(values[4]));
}

TYPED_TEST(RealExpansion, LengthsAreWholeNumbers) {
    EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{0, {L"1", L"null"}}}); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{0, {L"1", L"1e1"}}}); }), ThrowsParseFailure());
}

// Inserting each run on its own would move hundreds of gigabytes.
TEST(RunExpanding, ManyRunsAmongManyItems) {
    constexpr int kRuns = 100000;
    std::vector<TString> values;
    std::vector<int> expected;
    Records records;
    for (int run = 0; run < kRuns; ++run) {
        for (int i = 0; i < 10; ++i) {
            values.push_back(TString::number(i));
            expected.push_back(i);
        }
        records.push_back({run * 11 + 10, {TString::number(run), L"4", L"2"}});
        for (int i = 0; i < 4; ++i) {
            expected.push_back(run + 2 * i);
        }
    }
    std::mt19937 random(7);
    std::shuffle(records.begin(), records.end(), random);
    const std::vector<int> expanded = Expand<int>(values, records);
    EXPECT_TRUE(expected == expanded);  // without printing a million numbers
}
