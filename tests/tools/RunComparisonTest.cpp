#include <cmath>
#include <random>

#include "tools/ToolsTestSupport.h"

#include "tools/qvpres/diff/RunComparison.h"

using qvpres::CompareRuns;
using qvpres::NumberList;
using qvpres::Stretch;
using qvpres::Tolerance;

namespace {

class RunComparison : public testing::Test {
protected:
    NumberList Days(const std::string& array) const {
        const auto text = m_host.Cut("{\"days\": " + array + "}");
        return *NumberList::From(*text, text->Find("/days"));
    }

    std::vector<Stretch> Compare(const std::string& left, const std::string& right,
                                 const Tolerance& tolerance = {}) const {
        return CompareRuns(Days(left), Days(right), tolerance);
    }

    ChartHost m_host;
};

}  // namespace

TEST_F(RunComparison, PackingMakesNoDifference) {
    EXPECT_TRUE(Compare("[1, 2, 3, 4, 5, 8, 8, 8, 8]", "[[1, 5, 1], [8, 4], []]").empty());
    EXPECT_TRUE(Compare("[[0, 4000000000, 1], []]", "[0, [1, 3999999999, 1], []]").empty());
}

TEST_F(RunComparison, NeighboursMakeOneStretch) {
    const auto stretches = Compare("[1, 2, 3, 4, 5, 6]", "[1, 7, 7, 4, 5, 0]");
    ASSERT_EQ(stretches.size(), 2U);
    EXPECT_EQ(stretches[0].first, 1U);
    EXPECT_EQ(stretches[0].count, 2U);
    EXPECT_EQ(stretches[0].left.first, 2);
    EXPECT_EQ(stretches[0].right.first, 7);
    EXPECT_EQ(stretches[0].largest, 5);
    EXPECT_EQ(stretches[1].first, 5U);
    EXPECT_EQ(stretches[1].count, 1U);
    EXPECT_EQ(stretches[1].largest, 6);
}

// Both rise, one by 1 and one by 2 from the same start: from the first element on they part.
TEST_F(RunComparison, LongRunsThatPart) {
    const auto stretches = Compare("[[0, 1000000000, 1], []]", "[[0, 1000000000, 2], []]", {10, 0});
    ASSERT_EQ(stretches.size(), 1U);
    EXPECT_EQ(stretches[0].first, 11U);  // 11 apart
    EXPECT_EQ(stretches[0].count, 1000000000U - 11U);
    EXPECT_EQ(stretches[0].largest, 999999999);
}

// One falls from 1000, one rises from 0: they are within 2 of each other at 499, 500 and 501 only.
TEST_F(RunComparison, RunsThatCross) {
    const auto stretches = Compare("[[0, 1001, 1], []]", "[[1000, 1001, -1], []]", {2, 0});
    ASSERT_EQ(stretches.size(), 2U);
    EXPECT_EQ(stretches[0].first, 0U);
    EXPECT_EQ(stretches[0].count, 499U);
    EXPECT_EQ(stretches[1].first, 502U);
    EXPECT_EQ(stretches[1].count, 499U);
}

TEST_F(RunComparison, NullsDifferFromNumbersAlone) {
    EXPECT_TRUE(Compare("[null, 1]", "[null, 1]").empty());
    const auto stretches = Compare("[null, 1]", "[0, null]", {100, 1});
    ASSERT_EQ(stretches.size(), 1U);
    EXPECT_EQ(stretches[0].count, 2U);
    EXPECT_TRUE(stretches[0].left.null);
    EXPECT_FALSE(stretches[0].right.null);
}

TEST_F(RunComparison, OneListMayBeLonger) {
    EXPECT_TRUE(Compare("[1, 2]", "[1, 2, 3]").empty());
    EXPECT_TRUE(Compare("[]", "[1]").empty());
}

// Random runs and tolerances, against a comparison of one element after the other.
TEST_F(RunComparison, AgreesWithComparingElementByElement) {
    std::mt19937 random(20240601);
    const auto below = [&](unsigned bound) { return static_cast<int>(random() % bound); };
    const Tolerance tolerances[] = {{0, 0}, {1, 0}, {5, 0}, {0, 0.25L}, {2, 0.5L}};
    const auto makeList = [&](std::string& json, std::vector<double>& elements) {
        json = "[";
        for (int i = below(6); i >= 0; --i) {
            const int first = below(21) - 10;
            const int count = 1 + below(12);
            const int step = below(7) - 3;
            json += "[" + std::to_string(first) + "," + std::to_string(count) + "," + std::to_string(step) + "],";
            for (int j = 0; j < count; ++j) {
                elements.push_back(first + j * step);
            }
        }
        json += "[]]";
    };
    for (int round = 0; round < 3000; ++round) {
        std::string left;
        std::string right;
        std::vector<double> leftElements;
        std::vector<double> rightElements;
        makeList(left, leftElements);
        makeList(right, rightElements);
        const Tolerance& tolerance = tolerances[round % std::size(tolerances)];
        std::vector<bool> expected;
        for (std::size_t i = 0; i < std::min(leftElements.size(), rightElements.size()); ++i) {
            const double apart = std::fabs(leftElements[i] - rightElements[i]);
            const double size = std::max(std::fabs(leftElements[i]), std::fabs(rightElements[i]));
            expected.push_back(apart > static_cast<double>(tolerance.absolute + tolerance.relative * size));
        }
        std::vector<bool> found(expected.size());
        for (const Stretch& stretch : Compare(left, right, tolerance)) {
            ASSERT_LE(stretch.first + stretch.count, found.size());
            double largest = 0;
            for (std::uint64_t i = stretch.first; i < stretch.first + stretch.count; ++i) {
                found[i] = true;
                largest = std::max(largest, std::fabs(leftElements[i] - rightElements[i]));
            }
            EXPECT_EQ(static_cast<double>(stretch.largest), largest);
            EXPECT_EQ(static_cast<double>(stretch.left.first), leftElements[stretch.first]);
        }
        ASSERT_EQ(found, expected) << left << " " << right;
    }
}
