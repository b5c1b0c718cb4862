#include <random>

#include "tools/ToolsTestSupport.h"

#include "tools/qvpres/check/Check.h"
#include "tools/qvpres/import/ColumnNames.h"
#include "tools/qvpres/import/TableBag.h"

using qvpres::ImportedColumn;
using qvpres::InferColumn;
using qvpres::LoadedVocabulary;
using qvpres::MakeTableBag;
using qvpres::NameColumns;
using qvpres::TableBag;
using qvpres::TableBagOptions;
using qvpres::TypedColumn;
using testing::ElementsAre;

namespace {

std::vector<std::string> VerboseNames(const std::vector<std::string>& headings) {
    std::vector<std::string> names;
    for (const auto& name : NameColumns(headings, {u"row-count"})) {
        names.push_back(name.verbose.ToUtf8());
    }
    return names;
}

TypedColumn Column(const std::string& name, DataType type, std::vector<DataValue> values) {
    TypedColumn column{name, type, std::move(values), 0};
    for (const DataValue& value : column.values) {
        column.nulls += value.IsSpecial() ? 1U : 0U;
    }
    return column;
}

DataValue Text(const wchar_t* text) { return IndirectString::Lookup(GetUnknownCollation(), text); }

TableBagOptions Options() {
    TableBagOptions options;
    options.tableName = "t.csv";
    return options;
}

// What the bag's own vocabulary says of its text.
std::size_t Findings(const TableBag& bag) {
    const LoadedVocabulary loaded(bag.vocabulary);
    qvpres::CheckOptions options;
    options.strict = true;
    return Check(bag.json, loaded, loaded.GetNamespace(), options).findings.size();
}

}  // namespace

TEST(ColumnNames, HeadingsBecomeDashedWords) {
    EXPECT_THAT(
        VerboseNames({"temp_max", "Body Mass (g)", "tempMax2", "DEP", "2012", "", "a - b", "größe", "x 1", "--"}),
        ElementsAre("temp-max", "body-mass-g", "temp-max2", "dep", "column2012", "column", "a-b", "größe", "x1",
                    "column2"));
}

TEST(ColumnNames, NoTwoAreTheSame) {
    EXPECT_THAT(VerboseNames({"a", "A", "a 2", "row count"}), ElementsAre("a", "a2", "a22", "row-count2"));
    const auto names = NameColumns({"c2", "x"}, {});
    EXPECT_EQ(names[0].shortName, L"c1");
    EXPECT_EQ(names[1].shortName, L"c22") << "c2 is a verbose name";
}

TEST(ColumnNames, NamesSurviveTheConversionOfCase) {
    for (const char* heading : {"temp_max", "A1b2C", "9 lives", "x-1", "émile Zola", "a__b--c", "UPPER lower"}) {
        const TString name = NameColumns({heading}, {})[0].verbose;
        EXPECT_EQ(CamelToDashed(DashedToCamel(name)), name) << heading;
    }
}

TEST(TableBag, ColumnsWithoutNullsArePlainLists) {
    const TableBag bag = MakeTableBag(
        {Column("n", DataType::Integer, {1, 2}), Column("x", DataType::Real, {1.5, 2.0}),
         Column("b", DataType::Boolean, {true, false}), Column("t", DataType::CString, {Text(L"u"), Text(L"")})},
        Options());
    EXPECT_EQ(bag.json, R"({"tableName": "t.csv","rowCount": 2,"columnNames":["n","x","b","t"],"n":[1,2],"x":[1.5,2],)"
                        R"("b":[true,false],"t":["u",""]})");
    EXPECT_EQ(bag.columns[0].listOf, "int");
    EXPECT_EQ(bag.columns[1].listOf, "double");
    EXPECT_EQ(bag.columns[2].listOf, "bool");
    EXPECT_EQ(bag.columns[3].listOf, "text");
    EXPECT_EQ(Findings(bag), 0U);
}

TEST(TableBag, NullsAndDatesAreTypedValues) {
    const Date day(std::chrono::year(2024), std::chrono::month(2), std::chrono::day(29));
    const TableBag bag = MakeTableBag({Column("n", DataType::Integer, {1, DataValue::Null(DataType::Integer)}),
                                       Column("d", DataType::Date, {day, day})},
                                      Options());
    EXPECT_NE(bag.json.find(R"("n":["i:1","i:null"],"d":["d:2024-02-29","d:2024-02-29"])"), std::string::npos)
        << bag.json;
    EXPECT_EQ(bag.columns[0].listOf, "data-value");
    EXPECT_EQ(bag.columns[0].nulls, 1U);
    EXPECT_EQ(Findings(bag), 0U);
}

TEST(TableBag, NumbersThatAPlainListWouldLoseAreTypedValues) {
    const TableBag bag =
        MakeTableBag({Column("a", DataType::Integer, {5000000000}), Column("b", DataType::Real, {5000000000.0}),
                      Column("c", DataType::Real, {1e-20}), Column("d", DataType::Real, {0.1})},
                     Options());
    EXPECT_EQ(bag.columns[0].listOf, "data-value");
    EXPECT_EQ(bag.columns[1].listOf, "data-value");
    EXPECT_EQ(bag.columns[2].listOf, "data-value");
    EXPECT_EQ(bag.columns[3].listOf, "double");
    for (const ImportedColumn& column : bag.columns) {
        EXPECT_EQ(column.loss, "") << column.name;
    }
    EXPECT_EQ(Findings(bag), 0U);
}

TEST(TableBag, WhatNoFormKeepsIsTold) {
    const TableBag bag = MakeTableBag({Column("t", DataType::CString, {Text(L"\x1"), Text(L"fine")})}, Options());
    EXPECT_EQ(bag.columns[0].loss, "some values of column t do not come back from the text");
}

TEST(TableBag, ArraysCanBePacked) {
    TableBagOptions options = Options();
    options.packed = true;
    const TableBag bag = MakeTableBag({Column("n", DataType::Integer, {1, 2, 3, 4, 9})}, options);
    EXPECT_NE(bag.json.find(R"("n":[[1,4,1],9,[]])"), std::string::npos);
    EXPECT_EQ(Findings(bag), 0U);
}

TEST(TableBag, IdentifiersAndTheNamespaceAreAsAskedFor) {
    TableBagOptions options = Options();
    options.nameSpace = u"weather";
    options.firstId = -500;
    const TableBag bag = MakeTableBag({Column("n", DataType::Integer, {1})}, options);
    const auto& space = bag.vocabulary.GetNamespaces().at(0);
    EXPECT_EQ(space.name, L"weather");
    EXPECT_EQ(space.firstId, -500);
    EXPECT_EQ(space.parameters.back().id, -490);
    EXPECT_EQ(Findings(bag), 0U);
    EXPECT_EQ(qvpres::Vocabulary::FromText(bag.vocabulary.ToJson(), "x").GetNamespaces().at(0).parameters.size(), 4U);
}

// Random columns of every type come back from the text to the last bit.
TEST(TableBag, EveryValueComesBack) {
    std::mt19937_64 random(7);
    for (int round = 0; round < 40; ++round) {
        std::vector<DataValue> values;
        const DataType type = round % 2 == 0 ? DataType::Real : DataType::Integer;
        for (int i = 0; i < 20; ++i) {
            const std::uint64_t bits = random() >> (random() % 64);
            if (bits % 11 == 0 && round % 3 == 0) {
                values.push_back(DataValue::Null(type));
            } else if (type == DataType::Integer) {
                values.emplace_back(static_cast<Int64>(bits));
            } else {
                values.emplace_back(static_cast<double>(bits) / static_cast<double>(1 + random() % 1000000));
            }
        }
        const TableBag bag = MakeTableBag({Column("v", type, values)}, Options());
        EXPECT_EQ(bag.columns[0].loss, "");
        const LoadedVocabulary loaded(bag.vocabulary);
        const auto read = JSONSerializer(L"table").ToParameters(TString::FromUtf8(bag.json));
        if (bag.columns[0].listOf == "data-value") {
            EXPECT_EQ(GetParameterValue<std::vector<DataValue>>(*read, 1010), values);
        } else if (type == DataType::Real) {
            const auto& reals = GetParameterValue<std::vector<double>>(*read, 1010);
            EXPECT_EQ(std::vector<DataValue>(reals.begin(), reals.end()), values);
        } else {
            const auto& integers = GetParameterValue<std::vector<int>>(*read, 1010);
            EXPECT_EQ(std::vector<DataValue>(integers.begin(), integers.end()), values);
        }
    }
}
