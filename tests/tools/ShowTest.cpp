#include <sstream>

#include "tools/ToolsTestSupport.h"

#include "tools/qvpres/show/ShowRendering.h"

using qvpres::ParameterText;
using qvpres::ShowOptions;
using qvpres::Style;

namespace {

class Show : public testing::Test {
protected:
    std::string Tree(const std::string& json, const ShowOptions& options = {}, const std::string& path = "") const {
        const auto text = m_host.Cut(json);
        std::ostringstream out;
        WriteTree(out, *text, text->Find(path), options, Style("never", qvpres::Stream::Out));
        return out.str();
    }

    nlohmann::ordered_json JSON(const std::string& json, const ShowOptions& options = {}) const {
        const auto text = m_host.Cut(json);
        return ToJSON(*text, 0, options);
    }

    ChartHost m_host;
};

}  // namespace

TEST_F(Show, IdentifiersNamesTypesAndValues) {
    EXPECT_EQ(Tree(R"({"title": "Sales", "style": {"fontSize": 11}, "nobody": [1, {}]})"),
              "chart  3 parameters\n"
              "├─ 1001 title (ti)  text          \"Sales\"\n"
              "├─ 1003 style (sy)  bag           1 parameter\n"
              "│  └─ 1004 font-size (fs)  int  11\n"
              "└─      nobody      unknown name  [1, {…}]\n");
}

TEST_F(Show, StructuresMapsAndEmptyOnes) {
    EXPECT_EQ(Tree(R"({"marks": [{"xValue": 1}, {}], "colors": {"a": "b"}, "byRegion": {}})"),
              "chart  3 parameters\n"
              "├─ 1008 marks (mk)      structure list  2 structures\n"
              "│  ├─ [0]  structure  1 parameter\n"
              "│  │  └─ 1009 x-value (xv)  double  1\n"
              "│  └─ [1]  structure  {}\n"
              "├─ 1007 colors (cl)     map of text     1 entry\n"
              "│  └─ a  text  \"b\"\n"
              "└─ 1014 by-region (br)  structure map   {}\n");
}

TEST_F(Show, LongListsAreFolded) {
    EXPECT_EQ(Tree(R"({"days": [0, 1, 2, 3, 4, 5, 6, 7]})"),
              "chart  1 parameter\n"
              "└─ 1011 days (da)  list of int  [0, 1, 2, 3, 4, 5, 6, 7]\n");
    EXPECT_EQ(Tree(R"({"days": [0, 1, 2, 3, 4, 5, 6, 7, 3]})"),
              "chart  1 parameter\n"
              "└─ 1011 days (da)  list of int  9 numbers: 0 to 7  ▁▂▃▄▅▆▇█▄\n");
    EXPECT_EQ(Tree(R"({"days": [7, [0, 12, 0], [7, 3], []]})", {.items = 2}),
              "chart  1 parameter\n"
              "└─ 1011 days (da)  list of int  16 numbers: 0 to 7  █▁▁▁▁▁▁▁▁▁▁▁▁███  2 runs hold 93.8 %\n");
    EXPECT_EQ(Tree(R"({"dateRange": ["a", "b", "c"]})", {.items = 2}),
              "chart  1 parameter\n"
              "└─ 1012 date-range (dr)  structure  3 items: \"a\", …\n");
}

TEST_F(Show, NothingIsFoldedWhenAskedFor) {
    ShowOptions options;
    options.full = true;
    options.items = 1;
    options.width = 5;
    EXPECT_EQ(Tree(R"({"title": "abcdefghij", "days": [[1, 4], 9]})", options),
              "chart  2 parameters\n"
              "├─ 1001 title (ti)  text         \"abcdefghij\"\n"
              "└─ 1011 days (da)   list of int  [[1, 4], 9]\n");
}

TEST_F(Show, ElementsAndEntriesAreFoldedToo) {
    EXPECT_EQ(Tree(R"({"marks": [{}, {}, {}, {}]})", {.items = 2}),
              "chart  1 parameter\n"
              "└─ 1008 marks (mk)  structure list  4 structures\n"
              "   ├─ [0]  structure  {}\n"
              "   ├─ [1]  structure  {}\n"
              "   └─ … 2 more\n");
}

TEST_F(Show, LevelsAndPartsCanBeChosen) {
    const std::string json = R"({"style": {"style": {"fontSize": 1}}, "title": "a"})";
    EXPECT_EQ(Tree(json, {.depth = 1}),
              "chart  2 parameters\n"
              "├─ 1003 style (sy)  bag   1 parameter\n"
              "└─ 1001 title (ti)  text  \"a\"\n");
    EXPECT_EQ(Tree(json, {}, "/style/style"),
              "/style/style  bag  1 parameter\n"
              "└─ 1004 font-size (fs)  int  1\n");
    EXPECT_EQ(Tree(json, {}, "/title"), "/title  text  \"a\"\n");
}

TEST_F(Show, WhatIsNotReadIsMarked) {
    EXPECT_EQ(Tree(R"({"title": "a", "title": null})"),
              "chart  2 parameters\n"
              "├─ 1001 title (ti)  text  \"a\"  (not read: the name comes again)\n"
              "└─ 1001 title (ti)  text  null  (null: as if it were not there)\n");
}

TEST_F(Show, ControlCharactersDoNotReachTheTerminal) {
    EXPECT_EQ(Tree(R"({"title": "\u001b[31mred\u007f\u009b\u00a0", "colors": {"\u001b[2J": "x"}})"),
              "chart  2 parameters\n"
              "├─ 1001 title (ti)   text         \"\\u001b[31mred\\u007f\\u009b\u00a0\"\n"
              "└─ 1007 colors (cl)  map of text  1 entry\n"
              "   └─ \\u001b[2J  text  \"x\"\n");
}

TEST_F(Show, ForMachines) {
    const auto json =
        JSON(R"({"title": "a", "markSizes": [1, 2, 3, [4, 8], []], "style": {"nobody": {"x": [1]}}})", {.items = 4});
    EXPECT_EQ(json.at("path"), "");
    const auto& children = json.at("children");
    ASSERT_EQ(children.size(), 3U);
    EXPECT_EQ(
        children[0],
        nlohmann::ordered_json::parse(
            R"({"path": "/title", "id": 1001, "name": "title", "shortName": "ti", "type": "text", "value": "a"})"));
    EXPECT_EQ(
        children[1].at("list"),
        nlohmann::ordered_json::parse(
            R"({"count": 11, "nulls": 0, "min": 1.0, "max": 4.0, "mean": 3.4545454545454546, "runs": 1, "inRuns": 8})"));
    EXPECT_FALSE(children[1].contains("value")) << "folded";
    EXPECT_EQ(children[2].at("children")[0].at("value"), nlohmann::ordered_json::parse(R"({"x": [1]})"));
    EXPECT_EQ(JSON(R"({"days": [1, [2, 4]]})").at("children")[0].at("value"),
              nlohmann::ordered_json::parse("[1, [2, 4]]"));
    EXPECT_EQ(JSON(R"({"title": "\ud800\u0000"})").at("children")[0].at("value"), std::string("\xEF\xBF\xBD\0", 4))
        << "what UTF-8 cannot hold is U+FFFD";
}
