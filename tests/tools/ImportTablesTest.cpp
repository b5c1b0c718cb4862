#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tools/qvpres/Failure.h"
#include "tools/qvpres/import/Table.h"

using qvpres::Cell;
using qvpres::CSVOptions;
using qvpres::Failure;
using qvpres::ReadCSVTable;
using qvpres::ReadJSONTable;
using qvpres::Table;
using testing::ElementsAre;

namespace {

// Cells as texts: null as it is, texts in quotes, numbers and truth values bare.
std::vector<std::string> Cells(const qvpres::Column& column) {
    std::vector<std::string> cells;
    for (const Cell& cell : column.cells) {
        cells.push_back(cell.kind == Cell::Kind::Null   ? "null"
                        : cell.kind == Cell::Kind::Text ? "\"" + cell.text + "\""
                                                        : cell.text);
    }
    return cells;
}

template <class Read>
std::string FailureOf(const Read& read) {
    try {
        read();
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "none";
}

std::string CSVFailure(const std::string& csv, const CSVOptions& options = {}) {
    return FailureOf([&] { ReadCSVTable(csv, options, "t.csv"); });
}

std::string JSONFailure(const std::string& json) {
    return FailureOf([&] { ReadJSONTable(json, "t.json"); });
}

}  // namespace

TEST(CSVTable, RowsAndHeadings) {
    const Table table = ReadCSVTable("name,size\r\nant,1\r\nbee,2\r\n", {}, "t.csv");
    ASSERT_EQ(table.columns.size(), 2U);
    EXPECT_FALSE(table.typed);
    EXPECT_EQ(table.Rows(), 2U);
    EXPECT_EQ(table.columns[0].name, "name");
    EXPECT_THAT(Cells(table.columns[0]), ElementsAre("\"ant\"", "\"bee\""));
    EXPECT_THAT(Cells(table.columns[1]), ElementsAre("\"1\"", "\"2\""));
}

TEST(CSVTable, QuotedCellsHoldAnything) {
    const Table table = ReadCSVTable("a,b\n\"x, y\",\"say \"\"hi\"\"\"\n\"two\nlines\",\" spaces \"\n", {}, "t.csv");
    EXPECT_THAT(Cells(table.columns[0]), ElementsAre("\"x, y\"", "\"two\nlines\""));
    EXPECT_THAT(Cells(table.columns[1]), ElementsAre("\"say \"hi\"\"", "\" spaces \""));
}

TEST(CSVTable, EmptyCellsAreNullUnlessQuoted) {
    const Table table = ReadCSVTable("a,b,c\n,\"\",x\nNA,,\"NA\"\n", {'\0', true, {"NA"}}, "t.csv");
    EXPECT_THAT(Cells(table.columns[0]), ElementsAre("null", "null"));
    EXPECT_THAT(Cells(table.columns[1]), ElementsAre("\"\"", "null"));
    EXPECT_THAT(Cells(table.columns[2]), ElementsAre("\"x\"", "null"));
}

TEST(CSVTable, TheDelimiterIsThatOfTheFirstLine) {
    EXPECT_EQ(ReadCSVTable("a;b;c,d\n1;2;3\n", {}, "t.csv").columns.size(), 3U);
    EXPECT_EQ(ReadCSVTable("a\tb\n1\t2\n", {}, "t.csv").columns.size(), 2U);
    EXPECT_EQ(ReadCSVTable("a\n1\n", {}, "t.csv").columns.size(), 1U);
    EXPECT_EQ(ReadCSVTable("a|b\n1|2\n", {'|', true, {}}, "t.csv").columns.size(), 2U);
}

TEST(CSVTable, NoHeadingsAndNoLastLineEnd) {
    const Table table = ReadCSVTable(
        "\xEF\xBB\xBF"
        "1,2\n3,4",
        {'\0', false, {}}, "t.csv");
    EXPECT_EQ(table.columns[0].name, "");
    EXPECT_THAT(Cells(table.columns[0]), ElementsAre("\"1\"", "\"3\"")) << "the byte-order mark is no part of a cell";
    EXPECT_THAT(Cells(table.columns[1]), ElementsAre("\"2\"", "\"4\""));
    EXPECT_EQ(ReadCSVTable("a,b\n", {}, "t.csv").Rows(), 0U);
}

TEST(CSVTable, WhatIsNoTable) {
    EXPECT_EQ(CSVFailure(""), "t.csv: the table is empty");
    EXPECT_EQ(CSVFailure("a,b\n1,2\n1,2,3\n"), "t.csv: row 3 has 3 cells, the first row has 2");
    EXPECT_EQ(CSVFailure("a,b\n1\n"), "t.csv: row 2 has 1 cells, the first row has 2");
    EXPECT_EQ(CSVFailure("a,b\n1,\"2\n"), "t.csv: row 2: a quotation mark is not closed");
    EXPECT_EQ(CSVFailure("a,b\n1,x\"2\n"),
              "t.csv: row 2: a quotation mark stands where none can stand; in quoted cells they are doubled");
    EXPECT_EQ(CSVFailure("a\n\xFF\n"), "t.csv: is not UTF-8, from byte 2 on");
}

TEST(JSONTable, RowsAsObjects) {
    const Table table =
        ReadJSONTable(R"([{"a": 1, "b": "x"}, {"b": true, "c": null}, {"a": 2.5, "c": 1e3, "a": 3}])", "t.json");
    ASSERT_EQ(table.columns.size(), 3U);
    EXPECT_TRUE(table.typed);
    EXPECT_EQ(table.columns[0].name, "a");
    EXPECT_THAT(Cells(table.columns[0]), ElementsAre("1", "null", "3")) << "of two members the last counts";
    EXPECT_THAT(Cells(table.columns[1]), ElementsAre("\"x\"", "true", "null"));
    EXPECT_THAT(Cells(table.columns[2]), ElementsAre("null", "null", "1e3"));
}

TEST(JSONTable, ColumnsAsArrays) {
    const Table table = ReadJSONTable(R"({"a": [1, 2], "b": ["x", null]})", "t.json");
    ASSERT_EQ(table.columns.size(), 2U);
    EXPECT_THAT(Cells(table.columns[1]), ElementsAre("\"x\"", "null"));
}

TEST(JSONTable, WhatIsNoTable) {
    EXPECT_EQ(JSONFailure("3"), "t.json:1:1: a table is an array of objects or an object of arrays");
    EXPECT_EQ(JSONFailure("[]"), "t.json:1:1: the table is empty");
    EXPECT_EQ(JSONFailure("{}"), "t.json:1:1: the table is empty");
    EXPECT_EQ(JSONFailure("[{}, 1]"), "t.json:1:6: a row of the table is an object, this one is integer");
    EXPECT_EQ(JSONFailure(R"([{"a": {}}])"), "t.json:1:8: a cell is a single value, this one is object");
    EXPECT_EQ(JSONFailure(R"({"a": 1})"), "t.json:1:7: \"a\" is integer, and the columns of a table are arrays");
    EXPECT_EQ(JSONFailure(R"({"a": [1, 2], "b": [1]})"), "t.json:1:20: \"b\" has 1 element, the first column has 2");
    EXPECT_EQ(JSONFailure("[{]"), "t.json:1:3: not valid JSON: \"]\" cannot stand here");
}
