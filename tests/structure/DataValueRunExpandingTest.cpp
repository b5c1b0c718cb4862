// Runs of typed values, expanded again.
#include <qvpreslayer/DataSerializerHelpers.h>  // first: the header stands alone

#include <algorithm>
#include <limits>
#include <random>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "support/Failures.h"
#include "support/Printing.h"
#include "support/TypedValues.h"

using typed::Identical;
using typed::NullString;
using typed::String;

namespace {

using Values = std::vector<DataValue>;
using Records = std::vector<RunRecord>;

constexpr Int64 kMin = std::numeric_limits<Int64>::min();
constexpr Int64 kMax = std::numeric_limits<Int64>::max();

Values Expand(const std::vector<TString>& texts, const Records& runs) {
    const auto list = ParameterTypeSerializer<DataValue>().FromStringList(texts, runs);
    return GetParameterValue<Values>(list.Get());
}

// One run alone.
Values OneRun(const std::vector<TString>& items) { return Expand({}, {{0, items}, {1, {}}}); }

void ExpectRun(const Values& expected, const std::vector<TString>& items) {
    const Values values = OneRun(items);
    ASSERT_EQ(expected, values);
    for (std::size_t i = 0; i < values.size(); ++i) {
        EXPECT_TRUE(Identical(expected[i], values[i])) << i;
    }
}

auto ThrowsAFailure() { return ThrowsExactly<QuorvelException>(testing::A<const QuorvelException&>()); }

// Another budget while it lives.
class ExpansionLimit {
public:
    explicit ExpansionLimit(std::size_t bytes) : m_before(DataSerializerHelpers::GetExpansionLimit()) {
        DataSerializerHelpers::SetExpansionLimit(bytes);
    }
    ExpansionLimit(const ExpansionLimit&) = delete;
    ExpansionLimit& operator=(const ExpansionLimit&) = delete;
    ~ExpansionLimit() { DataSerializerHelpers::SetExpansionLimit(m_before); }

private:
    std::size_t m_before;
};

}  // namespace

TEST(DataValueRunExpanding, FirstValuesAreTyped) {
    ExpectRun({5, 5, 5, 5}, {L"i:5", L"4"});
    ExpectRun({0.5, 0.5}, {L"r:::0.5", L"2"});
    ExpectRun({DataValue(0.5, 2, 1), DataValue(0.5, 2, 1)}, {L"r:2:1:0.5", L"2"});
    ExpectRun({String(L"a,b"), String(L"a,b")}, {L"s:root:a,b", L"2"});
    ExpectRun({true, true, true}, {L"b:true", L"3"});
    ExpectRun({typed::TupleOf({1, 2}), typed::TupleOf({1, 2})}, {L"t:[i:1],[i:2]", L"2"});
    ExpectRun({DataValue::Null(DataType::Integer), DataValue::Null(DataType::Integer)}, {L"i:null", L"2"});
    ExpectRun({NullString(), NullString()}, {L"s:root:%null%", L"2"});
}

TEST(DataValueRunExpanding, IntegerSteps) {
    ExpectRun({5, 7, 9, 11}, {L"i:5", L"4", L"2"});
    ExpectRun({10, 8, 6, 4}, {L"i:10", L"4", L"-2"});
    ExpectRun({5, 5, 5}, {L"i:5", L"3", L"0"});
    ExpectRun({0, 1}, {L"i:0", L"2", L"+1"});
    ExpectRun({kMax, kMin, kMin + 1}, {L"i:9223372036854775807", L"3", L"1"});
    ExpectRun({kMin, kMax}, {L"i:-9223372036854775808", L"2", L"-1"});
}

// A step with a point is a real, and so is every value that it leads to.
TEST(DataValueRunExpanding, RealSteps) {
    ExpectRun({1, 1.5, 2.0}, {L"i:1", L"3", L"0.5"});
    ExpectRun({1, 0.5, 0.0}, {L"i:1", L"3", L"-0.5"});
    ExpectRun({1, 2.0, 3.0}, {L"i:1", L"3", L"1.0"});
    ExpectRun({1, 2.0}, {L"i:1", L"2", L"1."});
    ExpectRun({5, 5.0, 5.0}, {L"i:5", L"3", L"0.0"});
    ExpectRun({0.5, 1.0, 1.5}, {L"r:::0.5", L"3", L".5"});
    ExpectRun({0.5, 1.5, 2.5}, {L"r:::0.5", L"3", L"1"});
    ExpectRun({0.5, -1.5}, {L"r:::0.5", L"2", L"-2"});
    ExpectRun({DataValue(0.5, 2, 1), 1.0}, {L"r:2:1:0.5", L"2", L"0.5"});  // sums have no labels
    ExpectRun({0, 1000.0}, {L"i:0", L"2", L"1.0e3"});
}

// Each value is the one before it and the step, rounded each time.
TEST(DataValueRunExpanding, RealStepsAddUp) {
    Values rising = {0.1};
    Values falling = {0.1};
    double up = 0.1;
    double down = 0.1;
    while (rising.size() < 50) {
        rising.push_back(up += 0.1);
        falling.push_back(down -= 0.1);
    }
    ExpectRun(rising, {L"r:::0.1", L"50", L"0.1"});
    ExpectRun(falling, {L"r:::0.1", L"50", L"-0.1"});
}

// Packing writes longer steps as well; reading refuses them and never gives wrong values.
TEST(DataValueRunExpanding, IntegerStepsHave32Bits) {
    ExpectRun({0, 2147483647, 4294967294}, {L"i:0", L"3", L"2147483647"});
    ExpectRun({0, -2147483648LL, -4294967296LL}, {L"i:0", L"3", L"-2147483648"});
    for (const wchar_t* step : {L"2147483648", L"-2147483649", L"999999999999999998", L"9999999999999999999999"}) {
        EXPECT_THAT(Doing([&] { OneRun({L"i:0", L"4", step}); }), ThrowsParseFailure()) << step;
        EXPECT_THAT(Doing([&] { OneRun({L"r:::0", L"4", step}); }), ThrowsParseFailure()) << step;
    }
}

TEST(DataValueRunExpanding, TextsThatAreNoSteps) {
    for (const wchar_t* step :
         {L"", L"x", L"1e3", L"null", L".", L"1.x", L"1.0 ", L" 1", L"1.0.0", L"-", L"i:1", L"1.0e999", L"1,5"}) {
        EXPECT_THAT(Doing([&] { OneRun({L"i:1", L"4", step}); }), ThrowsParseFailure()) << step;
    }
}

TEST(DataValueRunExpanding, TextsThatAreNoLengths) {
    for (const wchar_t* length : {L"", L"x", L"-1", L"1.0", L"4294967296", L"i:4", L" 4", L"null"}) {
        EXPECT_THAT(Doing([&] { OneRun({L"i:1", length}); }), ThrowsParseFailure()) << length;
        EXPECT_THAT(Doing([&] { OneRun({L"i:1", length, L"1"}); }), ThrowsParseFailure()) << length;
    }
}

TEST(DataValueRunExpanding, TextsThatAreNoFirstValues) {
    EXPECT_THAT(Doing([] {
                    OneRun({L"1", L"4"});
                }),
                ThrowsSerializerCheck("Serialized DataValue is not properly delimited"));
    EXPECT_THAT(Doing([] { OneRun({L"x:1", L"4"}); }), ThrowsUnknownLetter());
    EXPECT_THAT(Doing([] { OneRun({L"i:x", L"4"}); }), ThrowsMessageText(L"Data value parse error"));
    EXPECT_THAT(
        [] {
            OneRun({L"t:null", L"4"});
        },
        ThrowsSerializerCheck("Tuple should begin and end with square brackets"));
}

TEST(DataValueRunExpanding, OnlyNumbersStep) {
    for (const wchar_t* first : {L"s:root:a", L"b:true", L"d:2024-02-29", L"c:2024-02-29 00:00:00", L"t:[i:1]",
                                 L"i:null", L"r:null", L"u:null"}) {
        EXPECT_THAT(Doing([&] { OneRun({first, L"2", L"1"}); }), ThrowsAFailure()) << first;
        EXPECT_THAT(Doing([&] { OneRun({first, L"2", L"0.5"}); }), ThrowsAFailure()) << first;
    }
}

TEST(DataValueRunExpanding, AnyLengthIsTaken) {
    EXPECT_TRUE(OneRun({L"i:1", L"0"}).empty());
    EXPECT_TRUE(OneRun({L"i:1", L"0", L"3"}).empty());
    ExpectRun({1}, {L"i:1", L"1"});
    ExpectRun({1}, {L"i:1", L"1", L"7"});
    ExpectRun({1, 8}, {L"i:1", L"2", L"7"});
}

TEST(DataValueRunExpanding, PositionsCountNestedLists) {
    const Values expected = {9, 1, 2, 3, 4, 5, 8, 8, 8, 8, String(L"x")};
    EXPECT_EQ(expected, Expand({L"i:9", L"s:root:x"}, {{1, {L"i:1", L"5", L"1"}}, {2, {L"i:8", L"4"}}, {4, {}}}));
    EXPECT_EQ(expected, Expand({L"i:9", L"s:root:x"}, {{4, {}}, {2, {L"i:8", L"4"}}, {1, {L"i:1", L"5", L"1"}}}));
}

// Lists of other sizes vanish unread, yet the positions behind them count them.
TEST(DataValueRunExpanding, OtherSizesAreSkippedAndCount) {
    EXPECT_EQ((Values{5, 2, 2}), Expand({L"i:5"}, {{0, {L"x"}}, {2, {L"i:2", L"2"}}}));
    EXPECT_EQ((Values{5, 2, 2}), Expand({L"i:5"}, {{0, {}}, {2, {L"i:2", L"2"}}}));
    EXPECT_EQ((Values{5, 2, 2}), Expand({L"i:5"}, {{1, {L"a", L"b", L"c", L"d"}}, {2, {L"i:2", L"2"}}}));
    EXPECT_EQ((Values{5}), Expand({L"i:5"}, {{0, {}}, {1, {L"7"}}, {3, {L"a", L"b", L"c", L"d", L"e"}}}));
}

TEST(DataValueRunExpanding, PositionsOutsideTheList) {
    const auto outside = ThrowsLogicFailure("index <= values.size()");
    EXPECT_THAT(Doing([] { Expand({L"i:1"}, {{99, {L"i:1", L"4"}}}); }), outside);
    EXPECT_THAT(Doing([] { Expand({L"i:1"}, {{2, {L"i:1", L"4"}}}); }), outside);
    EXPECT_THAT(Doing([] { Expand({L"i:1"}, {{-1, {L"i:1", L"4"}}}); }), outside);
    EXPECT_THAT(Doing([] { Expand({}, {{0, {L"i:5", L"4"}}, {0, {L"i:6", L"4"}}}); }), outside);
}

TEST(DataValueRunExpanding, BudgetIsExact) {
    const ExpansionLimit limit(10 * sizeof(DataValue));
    EXPECT_EQ(10U, OneRun({L"i:1", L"10"}).size());
    EXPECT_EQ(10U, Expand({}, {{0, {L"i:1", L"4"}}, {1, {L"r:::1", L"6"}}, {2, {}}}).size());
    EXPECT_THAT(Doing([] { OneRun({L"i:1", L"11"}); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { Expand({}, {{0, {L"i:1", L"5"}}, {1, {L"i:1", L"6", L"1"}}}); }), ThrowsParseFailure());
    EXPECT_EQ(50U, Expand(std::vector<TString>(50, L"i:1"), {{50, {}}}).size());  // plain items are free
}

TEST(DataValueRunExpanding, ListsOfOneReadingCallShareABudget) {
    const ExpansionLimit limit(10 * sizeof(DataValue));
    const PresLayerLimits::ExpansionBudgetScope scope;
    EXPECT_EQ(4U, OneRun({L"i:1", L"4"}).size());
    EXPECT_EQ(6U, OneRun({L"i:1", L"6"}).size());
    EXPECT_THAT(Doing([] { OneRun({L"i:1", L"1"}); }), ThrowsParseFailure());
}

TEST(DataValueRunExpanding, HugeRunsFailAtOnce) {
    EXPECT_THAT(Doing([] { OneRun({L"i:0", L"4294967295"}); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { OneRun({L"s:root:x", L"4294967295"}); }), ThrowsParseFailure());
    const TString most = TString::number(UInt64{512} * 1024 * 1024 / sizeof(DataValue));
    EXPECT_THAT(Doing([&] { Expand({}, {{0, {L"i:0", most}}, {1, {L"i:0", L"1"}}}); }), ThrowsParseFailure());
}

// Inserting each run on its own would move hundreds of gigabytes.
TEST(DataValueRunExpanding, ManyRunsAmongManyItems) {
    constexpr int kRuns = 50000;
    std::vector<TString> texts;
    Values expected;
    Records records;
    for (int run = 0; run < kRuns; ++run) {
        for (int i = 0; i < 5; ++i) {
            texts.push_back(TString(L"i:") + TString::number(i));
            expected.push_back(i);
        }
        records.push_back({run * 6 + 5, {TString(L"i:") + TString::number(run), L"4", L"2"}});
        for (int i = 0; i < 4; ++i) {
            expected.push_back(run + 2 * i);
        }
    }
    std::mt19937 random(7);
    std::shuffle(records.begin(), records.end(), random);
    EXPECT_TRUE(expected == Expand(texts, records));  // without printing half a million values
}
