#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "tools/qvpres/import/TypeInference.h"

using qvpres::Cell;
using qvpres::Column;
using qvpres::InferColumn;
using qvpres::TypedColumn;
using testing::ElementsAre;

namespace {

TypedColumn Infer(const std::vector<std::string>& texts) {
    Column column{"c", {}};
    for (const std::string& text : texts) {
        column.cells.push_back(text == "-null-" ? Cell{} : Cell{Cell::Kind::Text, text});
    }
    return InferColumn(column, false);
}

// The type of a column of one or more texts, in a word.
std::string TypeOf(const std::vector<std::string>& texts) { return qvpres::TypeWord(Infer(texts).type); }

// Values as their typed texts.
std::vector<std::string> ValuesOf(const TypedColumn& column) {
    std::vector<std::string> texts;
    for (const DataValue& value : column.values) {
        texts.push_back(ParameterTypeTraits<DataValue>::ToText(value).ToUtf8());
    }
    return texts;
}

}  // namespace

TEST(TypeInference, Booleans) {
    EXPECT_EQ(TypeOf({"true", "FALSE", "True"}), "boolean");
    EXPECT_EQ(TypeOf({"true", "yes"}), "text");
    EXPECT_EQ(TypeOf({"0", "1"}), "integer");
    EXPECT_THAT(ValuesOf(Infer({"true", "False"})), ElementsAre("b:true", "b:false"));
}

TEST(TypeInference, Integers) {
    EXPECT_EQ(TypeOf({"0", "-12", "9223372036854775807"}), "integer");
    EXPECT_EQ(TypeOf({"9223372036854775808"}), "text") << "as a real it would lose digits";
    EXPECT_EQ(TypeOf({"007"}), "text") << "the name of something";
    EXPECT_EQ(TypeOf({"-01"}), "text");
    EXPECT_EQ(TypeOf({"1 "}), "text");
    EXPECT_EQ(TypeOf({"-"}), "text");
    EXPECT_EQ(TypeOf({"0x10"}), "text");
}

TEST(TypeInference, Reals) {
    EXPECT_EQ(TypeOf({"0.5", "-1e3", ".5", "5."}), "real");
    EXPECT_EQ(TypeOf({"1", "2.5"}), "real");
    EXPECT_EQ(TypeOf({"1,5"}), "text");
    EXPECT_EQ(TypeOf({"inf"}), "text");
    EXPECT_EQ(TypeOf({"nan"}), "text");
    EXPECT_EQ(TypeOf({"1e999"}), "text");
    EXPECT_EQ(TypeOf({"00.5"}), "text");
    EXPECT_THAT(ValuesOf(Infer({"1", "2.5"})), ElementsAre("r:::1", "r:::2.5"));
}

TEST(TypeInference, DatesAndPointsInTime) {
    EXPECT_EQ(TypeOf({"2024-02-29", "2023/01/31"}), "date");
    EXPECT_EQ(TypeOf({"2023-02-29"}), "text") << "no such day";
    EXPECT_EQ(TypeOf({"2024-2-29"}), "text");
    EXPECT_EQ(TypeOf({"2024-02/29"}), "text");
    EXPECT_EQ(TypeOf({"2024-02-29 23:59", "2024-02-29T23:59:58.5", "2024-02-29"}), "date-time");
    EXPECT_EQ(TypeOf({"2024-02-29 24:00"}), "text");
    EXPECT_EQ(TypeOf({"2024-02-29 23:59Z"}), "text");
    EXPECT_EQ(TypeOf({"2024-02-29 23:59:58."}), "text");
    EXPECT_THAT(ValuesOf(Infer({"2024/02/29"})), ElementsAre("d:2024-02-29"));
    EXPECT_THAT(ValuesOf(Infer({"2024-02-29", "2001/01/01 06:55"})),
                ElementsAre("c:2024-02-29 00:00:00", "c:2001-01-01 06:55:00"));
    EXPECT_THAT(ValuesOf(Infer({"2024-02-29 23:59:58.25"})), ElementsAre("c:2024-02-29 23:59:58.25"));
}

TEST(TypeInference, NullsHaveTheTypeOfTheOthers) {
    const TypedColumn column = Infer({"-null-", "5", "-null-"});
    EXPECT_EQ(column.type, DataType::Integer);
    EXPECT_EQ(column.nulls, 2U);
    EXPECT_THAT(ValuesOf(column), ElementsAre("i:null", "i:5", "i:null"));
    EXPECT_EQ(TypeOf({"-null-", "-null-"}), "text");
    EXPECT_EQ(TypeOf({}), "text");
}

TEST(TypeInference, CellsOfJSONKeepTheirTypes) {
    const auto typed = [](std::vector<Cell> cells) { return InferColumn({"c", std::move(cells)}, true).type; };
    EXPECT_EQ(typed({{Cell::Kind::Text, "5"}}), DataType::CString);
    EXPECT_EQ(typed({{Cell::Kind::Text, "true"}}), DataType::CString);
    EXPECT_EQ(typed({{Cell::Kind::Number, "5"}}), DataType::Integer);
    EXPECT_EQ(typed({{Cell::Kind::Number, "5"}, {Cell::Kind::Number, "5e0"}}), DataType::Real);
    EXPECT_EQ(typed({{Cell::Kind::Bool, "true"}}), DataType::Boolean);
    EXPECT_EQ(typed({{Cell::Kind::Text, "2024-02-29"}}), DataType::Date);
    EXPECT_EQ(typed({{Cell::Kind::Number, "5"}, {Cell::Kind::Text, "x"}}), DataType::CString);
}
