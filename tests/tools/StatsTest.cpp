#include <algorithm>

#include "tools/ToolsTestSupport.h"

#include "tools/qvpres/stats/Stats.h"

using qvpres::MakeStats;
using qvpres::Stats;
using qvpres::StatsRow;

namespace {

Stats StatsOf(const std::string& json) {
    const ChartHost host;
    return MakeStats(*host.Cut(json));
}

StatsRow Row(const std::vector<StatsRow>& rows, const std::string& label) {
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const StatsRow& each) { return each.label == label; });
    return row == rows.end() ? StatsRow{} : *row;
}

std::uint64_t Form(const Stats& stats, const std::string& form) {
    for (const auto& row : stats.forms) {
        if (row.form == form) {
            return row.characters;
        }
    }
    return 0;
}

}  // namespace

// {"style": {"fontSize": 11}, "marks": [{"xValue": 1}, {"xValue": 20}]}
//  |---- 25 characters -----|  |------------ 40 characters ----------|
TEST(Stats, CharactersByPathNameAndType) {
    const Stats stats = StatsOf(R"( {"style": {"fontSize": 11}, "marks": [{"xValue": 1}, {"xValue": 20}]} x)");
    EXPECT_EQ(stats.characters, 69U);
    EXPECT_EQ(stats.layout, 7U);
    EXPECT_EQ(Row(stats.byPath, "/").total, 69U);
    EXPECT_EQ(Row(stats.byPath, "/").own, 4U);  // braces, comma, blank
    EXPECT_EQ(Row(stats.byPath, "/style").total, 25U);
    EXPECT_EQ(Row(stats.byPath, "/style").own, 11U);  // without "fontSize": 11
    EXPECT_EQ(Row(stats.byPath, "/marks").total, 40U);
    EXPECT_EQ(Row(stats.byPath, "/marks").own, 13U);
    EXPECT_EQ(Row(stats.byPath, "/marks/*").values, 2U);
    EXPECT_EQ(Row(stats.byPath, "/marks/*").total, 27U);
    EXPECT_EQ(Row(stats.byPath, "/marks/*/xValue").total, 23U);
    EXPECT_EQ(Row(stats.byName, "x-value").values, 2U);
    EXPECT_EQ(Row(stats.byName, "x-value").own, 23U);
    EXPECT_EQ(Row(stats.byName, "font-size").own, 14U);
    EXPECT_EQ(Row(stats.byType, "double").own, 23U);
    EXPECT_EQ(Row(stats.byType, "structure").own, 4U);
    EXPECT_EQ(stats.byPath.front().label, "/");
    EXPECT_EQ(stats.byName.front().label, "x-value");
}

TEST(Stats, OwnCharactersAreAllThereAre) {
    const Stats stats =
        StatsOf(R"({"title": "a", "colors": {"k": "v"}, "byRegion": {"n": {"days": [1, 2]}}, "nobody": [{}]})");
    for (const auto* rows : {&stats.byPath, &stats.byName, &stats.byType}) {
        std::uint64_t sum = 0;
        for (const StatsRow& row : *rows) {
            sum += row.own;
        }
        EXPECT_EQ(sum, stats.characters);
    }
}

TEST(Stats, FormsAreMeasured) {
    const Stats stats = StatsOf(R"({"title": "a", "days": [1, 2, 3, 4, 5]})");
    EXPECT_EQ(Form(stats, "as it is"), 39U);
    EXPECT_EQ(Form(stats, "compact"), std::string(R"({"title": "a","days":[1,2,3,4,5]})").size());
    EXPECT_EQ(Form(stats, "compact, packed"), std::string(R"({"title": "a","days":[[1,5,1],[]]})").size());
    EXPECT_EQ(Form(stats, "compact, short names"), std::string(R"({"ti": "a","da":[1,2,3,4,5]})").size());
    EXPECT_EQ(Form(stats, "compact, short names, packed"), std::string(R"({"ti": "a","da":[[1,5,1],[]]})").size());
}

TEST(Stats, PackingIsMeasuredListByList) {
    const Stats stats = StatsOf(R"({"markSizes": [1, 2], "style": {"days": [7, 7, 7, 7, 7, 7, 7, 7]}})");
    ASSERT_EQ(stats.packing.size(), 2U);
    EXPECT_EQ(stats.packing[0].path, "/style/days");
    EXPECT_EQ(stats.packing[0].elements, 8U);
    EXPECT_EQ(stats.packing[0].plain, std::string(R"({"days":[7,7,7,7,7,7,7,7]})").size());
    EXPECT_EQ(stats.packing[0].packed, std::string(R"({"days":[[7,8],[]]})").size());
    EXPECT_EQ(stats.packing[1].plain, stats.packing[1].packed);
}

TEST(Stats, FormsThatCannotBeReadAgainAreMarked) {
    const Stats stats = StatsOf(R"({"readings": ["i:1"]})");
    EXPECT_TRUE(stats.forms[0].readable);
    EXPECT_FALSE(stats.forms[1].readable);
    EXPECT_TRUE(stats.packing.empty());
}

TEST(Stats, ATextThatIsNotReadIsCountedAllTheSame) {
    const Stats stats = StatsOf(R"({"nobody": 1})");
    EXPECT_FALSE(stats.readable);
    EXPECT_TRUE(stats.forms.empty());
    EXPECT_EQ(Row(stats.byName, "nobody").own, 11U);
    EXPECT_EQ(Row(stats.byType, "unknown name").values, 1U);
}
