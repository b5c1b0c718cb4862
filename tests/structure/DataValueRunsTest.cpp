// Lists of typed values, packed and plain, on the stream and in JSON.
#include <qvpreslayer/DataSerializerHelpers.h>  // first: the header stands alone

#include <limits>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "structure/FailingVisitor.h"
#include "support/Failures.h"
#include "support/ListHost.h"
#include "support/Printing.h"
#include "support/TypedValues.h"

using typed::Null;
using typed::NullString;
using typed::String;
using typed::TupleOf;

// The packing of typed values is for the serializers only; as one of them, this one reaches the form that is told the
// column's type.
struct ColumnAccess;
template <>
class ParameterTypeSerializer<ColumnAccess> {
public:
    static void Send(SerializeStructure& stream, int id, const std::vector<DataValue>& values, DataType type) {
        DataSerializerHelpers::SerializeDataValueVector(stream, id, values, type);
    }
};

namespace {

using Values = std::vector<DataValue>;

constexpr int kIntRunsId = 285398425;
constexpr int kFloatRunsId = 291551623;

const DataValue kNullInteger = DataValue::Null(DataType::Integer);
const DataValue kNullReal = DataValue::Null(DataType::Real);

struct PackingCase {
    Values values;
    const char* items;  // as ListTraceVisitor notes them, between the brackets of the outer list
};

// The outer list of a packed column is of the kind that is registered for it, which is text.
void ExpectPacked(const std::vector<PackingCase>& cases) {
    ListHost<DataValue> host;
    for (const PackingCase& c : cases) {
        EXPECT_EQ(std::string("values:1[") + c.items + "]", host.Packed(c.values));
    }
}

// The trace of a list that is told its column's type.
std::string ColumnTrace(const Values& values, DataType type, ListForm form) {
    const ListHost<DataValue> host;
    ListTraceVisitor visitor;
    SerializeStructure stream(visitor, true, form == ListForm::Packed);
    ParameterTypeSerializer<ColumnAccess>::Send(stream, host.kListId, values, type);
    return visitor.Text();
}

std::string JSONOf(const Values& values, ListForm form) {
    const ListHost<DataValue> host;
    const TestSession session(false, form == ListForm::Packed);
    const auto bag = MakeBag({{host.kListId, Val(values)}});
    return JSONSerializer(L"lists").ToString(bag, JSONSerializer::Compact).ToUtf8();
}

}  // namespace

TEST(DataValueRuns, PlainFormTellsTheKindOfTheColumn) {
    ListHost<DataValue> host;
    EXPECT_EQ("values:2[1 2 3 4 5]", host.Plain({1, 2, 3, 4, 5}));
    EXPECT_EQ("values:2[0.5 0.5 0.5 0.5]", host.Plain({0.5, 0.5, 0.5, 0.5}));
    EXPECT_EQ("values:1[a b,c]", host.Plain({String(L"a"), String(L"b,c")}));
    EXPECT_EQ("values:3[true false]", host.Plain({true, false}));
    EXPECT_EQ("values:1[2024-02-29]", host.Plain({typed::Day(2024, 2, 29)}));
    EXPECT_EQ("values:1[2024-02-29 23:59:58]", host.Plain({typed::LeapEvening()}));
    EXPECT_EQ("values:1[1,2 3]", host.Plain({TupleOf({1, 2}), TupleOf({3})}));
    EXPECT_EQ("values:1[POINT]", host.Plain({Spatial(L"POINT")}));
    EXPECT_EQ("values:1[null]", host.Plain({DataValue()}));
    EXPECT_EQ("values:1[]", host.Plain({}));
}

TEST(DataValueRuns, NullsInPlainForm) {
    ListHost<DataValue> host;
    EXPECT_EQ("values:2[1 null]", host.Plain({1, kNullInteger}));
    EXPECT_EQ("values:2[null]", host.Plain({kNullReal}));
    EXPECT_EQ("values:1[a %null%]", host.Plain({String(L"a"), NullString()}));
    EXPECT_EQ("values:3[null true]", host.Plain({Null(DataType::Boolean), true}));
}

// Values of several types make no column, whatever stands first.
TEST(DataValueRuns, MixedListsArePlain) {
    ListHost<DataValue> host;
    for (const ListForm form : {ListForm::Plain, ListForm::Packed}) {
        EXPECT_EQ("values:1[1 2 3 x]", host.Trace({1, 2, 3, String(L"x")}, form));
        EXPECT_EQ("values:1[x 1 2 3 4 5]", host.Trace({String(L"x"), 1, 2, 3, 4, 5}, form));
        EXPECT_EQ("values:1[1 1 1 1 1]", host.Trace({1, 1, 1, 1, 1.0}, form));
        EXPECT_EQ("values:1[1 2 3 4 null]", host.Trace({1, 2, 3, 4, DataValue()}, form));
        EXPECT_EQ("values:1[1 2 3 4 null]", host.Trace({1, 2, 3, 4, kNullReal}, form));
    }
}

TEST(DataValueRuns, OtherColumnsAreNeverPacked) {
    ListHost<DataValue> host;
    const auto four = [&](const DataValue& value) { return host.Packed({value, value, value, value}); };
    EXPECT_EQ("values:1[a a a a]", four(String(L"a")));
    EXPECT_EQ("values:3[true true true true]", four(true));
    EXPECT_EQ("values:1[2024-02-29 2024-02-29 2024-02-29 2024-02-29]", four(typed::Day(2024, 2, 29)));
    EXPECT_EQ("values:1[1 1 1 1]", four(TupleOf({1})));
    EXPECT_EQ("values:1[null null null null]", four(DataValue()));
    EXPECT_EQ("values:1[]", host.Packed({}));
}

TEST(DataValueRuns, IntegerColumnsArePackedByStep) {
    ExpectPacked({
        {{1, 2, 3, 4, 5}, "int-rle:2[1 5 1] int-rle:2[]"},
        {{1, 2, 3, 4, 5, 9}, "int-rle:2[1 5 1] 9 int-rle:2[]"},
        {{10, 8, 6, 4}, "int-rle:2[10 4 -2] int-rle:2[]"},
        {{7, 7, 7, 7}, "int-rle:2[7 4] int-rle:2[]"},
        {{1, 2, 4, 6, 8, 10}, "1 int-rle:2[2 5 2] int-rle:2[]"},
        {{1, 2, 3, 5, 7, 9}, "1 2 int-rle:2[3 4 2] int-rle:2[]"},
        {{5, 5, 5, 6, 7, 8}, "5 5 int-rle:2[5 4 1] int-rle:2[]"},
        {{1, 2, 3, 4, 6}, "int-rle:2[1 4 1] 6 int-rle:2[]"},
        {{1, 2, 3, 4, 5, 6, 4, 2, 0}, "int-rle:2[1 6 1] 4 2 0 int-rle:2[]"},
        {{5, 5, 5, 5, 1, 1, 1, 1}, "int-rle:2[5 4] int-rle:2[1 4] int-rle:2[]"},
        {{7, 7, 7}, "7 7 7"},
        {{10, 8, 6}, "10 8 6"},
        {{1}, "1"},
    });
    ExpectPacked({{Values(100000, DataValue(3)), "int-rle:2[3 100000] int-rle:2[]"}});
}

// The halves of neighbours may differ by less than half of 10 to the power of 18.
TEST(DataValueRuns, LargestStepsOfIntegers) {
    constexpr Int64 kStep = 999999999999999998;
    constexpr Int64 kMin = std::numeric_limits<Int64>::min();
    constexpr Int64 kMax = std::numeric_limits<Int64>::max();
    ExpectPacked({
        {{-2 * kStep, -kStep, 0, kStep}, "int-rle:2[-1999999999999999996 4 999999999999999998] int-rle:2[]"},
        {{2 * kStep, kStep, 0, -kStep}, "int-rle:2[1999999999999999996 4 -999999999999999998] int-rle:2[]"},
        {{-2000000000000000000, -1000000000000000000, 0, 1000000000000000000},
         "-2000000000000000000 -1000000000000000000 0 1000000000000000000"},
        {{kMin, kMax, kMin, kMax}, "-9223372036854775808 9223372036854775807 -9223372036854775808 9223372036854775807"},
        {{kMax - 3, kMax - 2, kMax - 1, kMax}, "int-rle:2[9223372036854775804 4 1] int-rle:2[]"},
        {{kMin + 3, kMin + 2, kMin + 1, kMin}, "int-rle:2[-9223372036854775805 4 -1] int-rle:2[]"},
        {{0, 2000000000, 4000000000, 6000000000}, "int-rle:2[0 4 2000000000] int-rle:2[]"},  // not the bound of int
    });
}

TEST(DataValueRuns, RealColumnsArePackedWhereEqual) {
    ExpectPacked({
        {{0.5, 0.5, 0.5, 0.5}, "float-rle:2[0.5 4] float-rle:2[]"},
        {{0.0, -0.0, 0.0, -0.0}, "float-rle:2[0 4] float-rle:2[]"},
        {{-0.0, 0.0, 0.0, 0.0}, "float-rle:2[-0 4] float-rle:2[]"},
        {{0.0, -0.0}, "0 0"},  // the first value stands for all
        {{1.0, 2.0, 3.0, 4.0, 5.0}, "1 2 3 4 5"},
        {{0.1, 0.1, 0.1, 2.5, 2.5, 2.5, 2.5, 2.5}, "0.1 0.1 0.1 float-rle:2[2.5 5] float-rle:2[]"},
        {{1e300, 1e300, 1e300, 1e300, 0.1}, "float-rle:2[1e+300 4] 0.1 float-rle:2[]"},
        {{DataValue(0.5, 2, 1), 0.5, DataValue(0.5, 3, 3), 0.5}, "float-rle:2[0.5 4] float-rle:2[]"},
    });
}

TEST(DataValueRuns, NullsSplitRuns) {
    ExpectPacked({
        {{5, 5, kNullInteger, 5, 5, 5, 5}, "5 5 null int-rle:2[5 4] int-rle:2[]"},
        {{1, 2, kNullInteger, 3, 4, 5, 6}, "1 2 null int-rle:2[3 4 1] int-rle:2[]"},
        {{1, 2, 3, 4, kNullInteger}, "int-rle:2[1 4 1] null int-rle:2[]"},
        {{kNullInteger, 1, 2, 3, 4}, "null int-rle:2[1 4 1] int-rle:2[]"},
        {{1, 2, 3, kNullInteger, 4, 5, 6}, "1 2 3 null 4 5 6"},
        {{1, kNullInteger, kNullInteger, 2, kNullInteger}, "1 null null 2 null"},
        {{kNullInteger, kNullInteger, kNullInteger, kNullInteger}, "null null null null"},
        {{0.5, 0.5, 0.5, 0.5, kNullReal, 0.5}, "float-rle:2[0.5 4] null 0.5 float-rle:2[]"},
        {{kNullReal, kNullReal, kNullReal, kNullReal, kNullReal}, "null null null null null"},
        // A number that is none became null when the value was made.
        {{0.5, 0.5, std::numeric_limits<double>::quiet_NaN(), 0.5, 0.5}, "0.5 0.5 null 0.5 0.5"},
    });
}

TEST(DataValueRuns, ColumnsOfAToldType) {
    const Values numbers = {1, 2, 3, 4};
    EXPECT_EQ("values:1[int-rle:2[1 4 1] int-rle:2[]]", ColumnTrace(numbers, DataType::Integer, ListForm::Packed));
    EXPECT_EQ("values:2[1 2 3 4]", ColumnTrace(numbers, DataType::Integer, ListForm::Plain));
    EXPECT_EQ("values:1[float-rle:2[0.5 4] float-rle:2[]]",
              ColumnTrace({0.5, 0.5, 0.5, 0.5}, DataType::Real, ListForm::Packed));
    EXPECT_EQ("values:2[0.5]", ColumnTrace({0.5}, DataType::Real, ListForm::Plain));
    for (const ListForm form : {ListForm::Plain, ListForm::Packed}) {
        EXPECT_EQ("values:1[1 2 3 4]", ColumnTrace(numbers, DataType::Unknown, form));
        EXPECT_EQ("values:1[1 2 3 4]", ColumnTrace(numbers, DataType::CString, form));
        EXPECT_EQ("values:3[1 2 3 4]", ColumnTrace(numbers, DataType::Boolean, form));
        EXPECT_EQ("values:1[1 2 3 4]", ColumnTrace(numbers, DataType::Date, form));
        EXPECT_EQ("values:1[1 2 3 4]", ColumnTrace(numbers, DataType::Tuple, form));
    }
}

TEST(DataValueRuns, EmptyColumnsOfAToldType) {
    EXPECT_EQ("values:2[]", ColumnTrace({}, DataType::Integer, ListForm::Plain));
    EXPECT_EQ("values:2[]", ColumnTrace({}, DataType::Real, ListForm::Plain));
    EXPECT_EQ("values:1[]", ColumnTrace({}, DataType::Integer, ListForm::Packed));
    EXPECT_EQ("values:1[]", ColumnTrace({}, DataType::Real, ListForm::Packed));
    EXPECT_EQ("values:3[]", ColumnTrace({}, DataType::Boolean, ListForm::Packed));
}

TEST(DataValueRuns, JSONOfColumns) {
    EXPECT_EQ(R"({"values":[[1,5,1],"9",[]]})", JSONOf({1, 2, 3, 4, 5, 9}, ListForm::Packed));
    EXPECT_EQ(R"({"values":[1,2,3,4,5,9]})", JSONOf({1, 2, 3, 4, 5, 9}, ListForm::Plain));
    EXPECT_EQ(R"({"values":["5","5","null",[5,4],[]]})", JSONOf({5, 5, kNullInteger, 5, 5, 5, 5}, ListForm::Packed));
    EXPECT_EQ(R"({"values":[1,null]})", JSONOf({1, kNullInteger}, ListForm::Plain));
    EXPECT_EQ(R"({"values":["a","%null%","\"q\""]})",
              JSONOf({String(L"a"), NullString(), String(L"\"q\"")}, ListForm::Plain));
    EXPECT_EQ(R"({"values":[true,null]})", JSONOf({true, Null(DataType::Boolean)}, ListForm::Plain));
    EXPECT_EQ(R"({"values":[[0,4],[]]})", JSONOf({0.0, -0.0, 0.0, -0.0}, ListForm::Packed));
    EXPECT_EQ(R"({"values":["1","2","x"]})", JSONOf({1, 2, String(L"x")}, ListForm::Packed));
    EXPECT_EQ(R"({"values":["2024-02-29","null"]})",
              JSONOf({typed::Day(2024, 2, 29), Null(DataType::Date)}, ListForm::Plain));
    EXPECT_EQ(R"({"values":[]})", JSONOf({}, ListForm::Packed));
}

TEST(DataValueRuns, WrittenJSONIsNotReadBackButLetteredTextsAre) {
    const TString written = TString::FromUtf8(JSONOf({1, 2}, ListForm::Plain));
    const ListHost<DataValue> host;
    const JSONSerializer json(L"lists");
    const auto notDelimited = ThrowsSerializerCheck("Serialized DataValue is not properly delimited");
    EXPECT_THAT(Doing([&] { json.ToParameters(written); }), notDelimited);
    EXPECT_THAT(Doing([&] { json.ToParameters(L"{\"values\":[[1,5,1],[]]}"); }), notDelimited);
    const auto bag = json.ToParameters(L"{\"values\":[\"i:1\",[\"i:5\",\"4\",\"2\"],[]]}");
    EXPECT_EQ((Values{1, 5, 7, 9, 11}), GetParameterValue<Values>(&bag->GetParameter(host.kListId)));
}

TEST(DataValueRuns, RunsNeedTheTagsToBeRegistered) {
    ListHost<DataValue> host(false);
    const auto expectMissing = [&](const Values& values, int tag, const char* trace) {
        ListTraceVisitor visitor;
        EXPECT_THAT(Doing([&] { host.Send(values, ListForm::Packed, visitor); }), ThrowsNotFound(tag));
        EXPECT_EQ(trace, visitor.Text());  // the outer list is closed all the same
    };
    expectMissing({9, 1, 1, 1, 1, 5, 6}, kIntRunsId, "values:1[9]");
    expectMissing({0.5, kNullReal, 2.0, 2.0, 2.0, 2.0, 1.0}, kFloatRunsId, "values:1[0.5 null]");
    EXPECT_EQ("values:1[1 2 3]", host.Packed({1, 2, 3}));
    EXPECT_EQ("values:2[1 2 3 4]", host.Plain({1, 2, 3, 4}));
}

TEST(DataValueRuns, FailuresOfTheVisitorPass) {
    ListHost<DataValue> host;
    FailingVisitor visitor("ListItem");
    EXPECT_THROW(host.Send({1, 2, 3, 4}, ListForm::Packed, visitor), std::runtime_error);
    EXPECT_EQ("StartList(values, 1)\nStartList(int-rle, 2)\nListItem(1)\nEndList(int-rle)\nEndList(values)\n",
              visitor.Text());
}
