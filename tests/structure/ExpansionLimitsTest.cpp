#include <qvpreslayer/PresLayerLimits.h>  // first: the header stands alone

#include <limits>
#include <vector>

#include <sys/resource.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "structure/Expand.h"
#include "support/Failures.h"

namespace {

template <class T>
class ExpansionBudget : public testing::Test {};

using NumericTypes = testing::Types<int, unsigned int, Int64, UInt64, float, double>;
TYPED_TEST_SUITE(ExpansionBudget, NumericTypes);

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

// The most memory that the process has held so far, in KiB.
long PeakMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

}  // namespace

TEST(ExpansionLimits, Default) {
    EXPECT_EQ(std::size_t{512} * 1024 * 1024, DataSerializerHelpers::GetExpansionLimit());
    EXPECT_EQ(PresLayerLimits::kDefaultExpansionBytes, PresLayerLimits::GetExpansionBytes());
}

TEST(ExpansionLimits, OneSettingByTwoNames) {
    const ExpansionLimit limit(12345);
    EXPECT_EQ(12345U, DataSerializerHelpers::GetExpansionLimit());
    EXPECT_EQ(12345U, PresLayerLimits::GetExpansionBytes());
}

TYPED_TEST(ExpansionBudget, HugeRunsFailBeforeMemoryIsTaken) {
    const long before = PeakMemory();
    EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{0, {L"0", L"4294967295"}}, {1, {}}}); }), ThrowsParseFailure());
    // Each alone would fit into the budget.
    const TString half = TString::number(UInt64{512} * 1024 * 1024 / sizeof(TypeParam));
    EXPECT_THAT(Doing([&] { Expand<TypeParam>({}, {{0, {L"0", half}}, {1, {L"0", half}}}); }), ThrowsParseFailure());
    Records many;
    for (int i = 0; i < 1000; ++i) {
        many.push_back({i, {L"0", L"4294967295", L"1"}});
    }
    EXPECT_THAT(Doing([&] { Expand<TypeParam>({}, many); }), ThrowsParseFailure());
    EXPECT_LT(PeakMemory() - before, 50 * 1024);
}

TYPED_TEST(ExpansionBudget, BudgetIsExact) {
    const ExpansionLimit limit(10 * sizeof(TypeParam));
    EXPECT_EQ(10U, Expand<TypeParam>({}, {{0, {L"1", L"10"}}}).size());
    EXPECT_EQ(10U, Expand<TypeParam>({}, {{0, {L"1", L"4"}}, {1, {L"1", L"6", L"1"}}, {2, {}}}).size());
    EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{0, {L"1", L"11"}}}); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{0, {L"1", L"5"}}, {1, {L"1", L"6"}}}); }), ThrowsParseFailure());
}

TYPED_TEST(ExpansionBudget, BudgetCountsExpandedElementsOnly) {
    const ExpansionLimit limit(0);
    EXPECT_EQ(1000U, Expand<TypeParam>(std::vector<TString>(1000, L"1"), {{1000, {}}}).size());
    EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{0, {L"1", L"1"}}}); }), ThrowsParseFailure());
}

TYPED_TEST(ExpansionBudget, EachListHasABudgetOfItsOwn) {
    const ExpansionLimit limit(10 * sizeof(TypeParam));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(10U, Expand<TypeParam>({}, {{0, {L"1", L"10"}}}).size());
    }
}

TYPED_TEST(ExpansionBudget, ListsOfOneReadingCallShareABudget) {
    const ExpansionLimit limit(10 * sizeof(TypeParam));
    {
        const PresLayerLimits::ExpansionBudgetScope scope;
        EXPECT_EQ(4U, Expand<TypeParam>({}, {{0, {L"1", L"4"}}}).size());
        {
            const PresLayerLimits::ExpansionBudgetScope inner;  // joins
            EXPECT_EQ(6U, Expand<TypeParam>({}, {{0, {L"1", L"6"}}}).size());
        }
        EXPECT_THAT(Doing([] { Expand<TypeParam>({}, {{0, {L"1", L"1"}}}); }), ThrowsParseFailure());
    }
    EXPECT_EQ(10U, Expand<TypeParam>({}, {{0, {L"1", L"10"}}}).size());
}

// As many elements as the budget allows are an ordinary list: nothing is copied about, nothing grows step by step.
TEST(ExpansionLimits, SixtyMillionElementsAreWithinTheBudget) {
    constexpr int kCount = 60000000;
    const long before = PeakMemory();
    {
        const auto list =
            ParameterTypeSerializer<int>().FromStringList({L"-7", L"9"}, {{1, {L"1", TString::number(kCount), L"1"}}});
        const auto& values = GetParameterValue<std::vector<int>>(list.Get());
        ASSERT_EQ(static_cast<std::size_t>(kCount) + 2, values.size());
        EXPECT_EQ(-7, values.front());
        EXPECT_EQ(9, values.back());
        for (const int position : {1, 2, 1000000, kCount / 2, kCount}) {
            EXPECT_EQ(position, values[static_cast<std::size_t>(position)]);
        }
    }
    EXPECT_LT(PeakMemory() - before, 300 * 1024) << "once the elements, " << kCount / 1000000 * 4 << " MB";
}

TEST(ExpansionLimits, SpendingBeyondTheBudget) {
    const ExpansionLimit limit(100);
    EXPECT_NO_THROW(PresLayerLimits::ExpansionBudgetScope::Spend(100));  // one of its own for each call
    EXPECT_NO_THROW(PresLayerLimits::ExpansionBudgetScope::Spend(100));
    EXPECT_THAT(Doing([] { PresLayerLimits::ExpansionBudgetScope::Spend(101); }), ThrowsParseFailure());
    const PresLayerLimits::ExpansionBudgetScope scope;
    PresLayerLimits::ExpansionBudgetScope::Spend(60);
    EXPECT_THAT(Doing([] { PresLayerLimits::ExpansionBudgetScope::Spend(41); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { PresLayerLimits::ExpansionBudgetScope::Spend(std::numeric_limits<std::size_t>::max()); }),
                ThrowsParseFailure());
}
