#include "tools/ToolsTestSupport.h"

#include "tools/qvpres/diff/TextComparison.h"

using qvpres::CompareTexts;
using qvpres::ComparisonResult;
using qvpres::Difference;
using qvpres::Tolerance;

namespace {

using Sort = Difference::Sort;

class TextComparison : public testing::Test {
protected:
    ComparisonResult Compare(const std::string& left, const std::string& right, const Tolerance& tolerance = {},
                             std::size_t most = 100) const {
        return CompareTexts(*m_host.Cut(left), *m_host.Cut(right), tolerance, most);
    }

    bool IsSame(const std::string& left, const std::string& right, const Tolerance& tolerance = {}) const {
        return Compare(left, right, tolerance).differences.empty();
    }

    // The only difference there is.
    Difference Only(const std::string& left, const std::string& right) const {
        const ComparisonResult result = Compare(left, right);
        EXPECT_EQ(result.differences.size(), 1U);
        return result.differences.empty() ? Difference{} : result.differences.front();
    }

    ChartHost m_host;
};

}  // namespace

TEST_F(TextComparison, SpellingMakesNoDifference) {
    EXPECT_TRUE(IsSame(R"({"title": "a", "markSizes": [1, 2]})", R"({ "mark-sizes":[1,2], "title":"\u0061" })"));
    EXPECT_TRUE(IsSame(R"({"title": "a", "style": {"fontSize": 1}})", R"({"ti": "a", "sy": {"fs": 1}})"));
    EXPECT_TRUE(IsSame(R"({"style": {"fontSize": 1.0}})", R"({"style": {"fontSize": "1"}})"));
    EXPECT_TRUE(IsSame(R"({"days": [1, 2, 3, 4, 9]})", R"({"days": [[1, 4, 1], 9, []]})"));
}

TEST_F(TextComparison, WhatIsNotReadMakesNoDifference) {
    EXPECT_TRUE(IsSame(R"({"title": null})", "{}"));
    EXPECT_TRUE(IsSame(R"({"title": "a", "title": "b"})", R"({"title": "b"})"));
    EXPECT_TRUE(IsSame(R"({"markSizes": [1], "mark-sizes": [2]})", R"({"markSizes": [1]})"))
        << "of two spellings the greater is read";
}

TEST_F(TextComparison, MembersComeAndGo) {
    const Difference removed = Only(R"({"style": {"fontSize": 1, "showGrid": true}})", R"({"style": {"fontSize": 1}})");
    EXPECT_EQ(removed.sort, Sort::Removed);
    EXPECT_EQ(removed.path, "/style/showGrid");
    EXPECT_EQ(removed.left, "true");
    EXPECT_EQ(removed.right, "");
    const Difference added = Only(R"({"colors": {}})", R"({"colors": {"a": "b"}})");
    EXPECT_EQ(added.sort, Sort::Added);
    EXPECT_EQ(added.path, "/colors/a");
    EXPECT_EQ(added.right, "\"b\"");
}

TEST_F(TextComparison, ValuesChange) {
    const Difference change = Only(R"({"title": "Sales"})", R"({"ti": "sales"})");
    EXPECT_EQ(change.sort, Sort::Changed);
    EXPECT_EQ(change.path, "/title") << "as the first text spells it";
    EXPECT_EQ(change.left, "\"Sales\"");
    EXPECT_EQ(change.right, "\"sales\"");
    EXPECT_EQ(Only(R"({"style": 1})", R"({"style": {}})").sort, Sort::Changed);
    EXPECT_EQ(Only(R"({"style": {}})", R"({"style": {"fontSize": 1}})").path, "/style/fontSize");
    EXPECT_EQ(Only(R"({"byRegion": {"n": null}})", R"({"byRegion": {"n": {}}})").path, "/byRegion/n");
}

TEST_F(TextComparison, LargeIntegersAreComparedExactly) {
    EXPECT_FALSE(IsSame(R"({"totalCents": 9007199254740993})", R"({"totalCents": 9007199254740992})"));
    EXPECT_TRUE(IsSame(R"({"totalCents": 9007199254740993})", R"({"totalCents": "9007199254740993"})"));
}

TEST_F(TextComparison, NumbersMayLieApart) {
    const std::string left = R"({"marks": [{"xValue": 100}]})";
    const std::string right = R"({"marks": [{"xValue": 100.5}]})";
    EXPECT_FALSE(IsSame(left, right));
    EXPECT_TRUE(IsSame(left, right, {0.5, 0}));
    EXPECT_FALSE(IsSame(left, right, {0.49L, 0}));
    EXPECT_TRUE(IsSame(left, right, {0, 0.005L}));
    EXPECT_FALSE(IsSame(left, right, {0, 0.004L}));
    EXPECT_FALSE(IsSame(R"({"title": "1"})", R"({"title": "2"})", {5, 0})) << "texts are no numbers";
}

TEST_F(TextComparison, ElementsOfListsOfNumbers) {
    const Difference change = Only(R"({"markSizes": [1, 2, 3, 4]})", R"({"markSizes": [1, 2.5, 3.75, 4]})");
    EXPECT_EQ(change.sort, Sort::Elements);
    EXPECT_EQ(change.path, "/markSizes");
    EXPECT_EQ(change.first, 1U);
    EXPECT_EQ(change.count, 2U);
    EXPECT_EQ(change.left, "2");
    EXPECT_EQ(change.right, "2.5");
    EXPECT_EQ(change.largest, 0.75);
    const Difference length = Only(R"({"markSizes": [1, 2]})", R"({"markSizes": [1]})");
    EXPECT_EQ(length.sort, Sort::Length);
    EXPECT_EQ(length.left, "2");
    EXPECT_EQ(length.right, "1");
}

TEST_F(TextComparison, ElementsOfOtherLists) {
    const Difference change = Only(R"({"dateRange": ["a", "b", "c"]})", R"({"dateRange": ["a", "x", "y"]})");
    EXPECT_EQ(change.sort, Sort::Elements);
    EXPECT_EQ(change.first, 1U);
    EXPECT_EQ(change.count, 2U);
    EXPECT_EQ(change.left, "\"b\"");
    EXPECT_EQ(change.right, "\"x\"");
    EXPECT_EQ(Only(R"({"days": ["x", 1]})", R"({"days": ["x", 2]})").first, 1U) << "a list that is not read either";
    EXPECT_EQ(Only(R"({"days": ["x", [1, 4]]})", R"({"days": ["x", [1, 5]]})").first, 1U);
}

TEST_F(TextComparison, TypedValuesByWhatTheyAre) {
    EXPECT_TRUE(IsSame(R"({"readings": ["r:::1.5", "i:2"]})", R"({"readings": ["r:3:1:1.50", "i:2"]})"));
    EXPECT_FALSE(IsSame(R"({"readings": ["s::a"]})", R"({"readings": ["s::b"]})"));
    EXPECT_FALSE(IsSame(R"({"readings": ["i:2"]})", R"({"readings": [2]})")) << "a bare value is no typed one";
}

TEST_F(TextComparison, StructuresByPosition) {
    const Difference change =
        Only(R"({"marks": [{"xValue": 1}, {"xValue": 2}]})", R"({"marks": [{"xValue": 1}, {"xValue": 3}]})");
    EXPECT_EQ(change.path, "/marks/1/xValue");
    EXPECT_EQ(Only(R"({"marks": [{"xValue": 1}]})", R"({"marks": [{"xValue": 1}, {}]})").path, "/marks/1");
}

TEST_F(TextComparison, UnknownMembersByTheirText) {
    EXPECT_TRUE(IsSame(R"({"nobody": {"a": 1}})", R"({"nobody": {"a": 1}})"));
    EXPECT_EQ(Only(R"({"nobody": {"a": 1}})", R"({"nobody": {"a": 2}})").path, "/nobody");
    EXPECT_EQ(Only(R"({"nobody": [1]})", R"({"nobody": [2]})").path, "/nobody");
}

TEST_F(TextComparison, NoMoreThanAskedFor) {
    const ComparisonResult result = Compare(R"({"title": "a", "style": {"fontSize": 1}})", "{}", {}, 1);
    EXPECT_EQ(result.differences.size(), 1U);
    EXPECT_TRUE(result.cut);
    EXPECT_FALSE(Compare(R"({"title": "a"})", "{}", {}, 1).cut);
}
