#include <qvpreslayer/DataValueSerializer.h>  // first: the header stands alone

#include <cstdint>
#include <limits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/CommaLocale.h"
#include "support/Failures.h"
#include "support/Printing.h"
#include "support/TypedValues.h"

using typed::Day;
using typed::Identical;
using typed::LeapEvening;
using typed::Null;
using typed::NullString;
using typed::String;
using typed::TupleOf;

namespace {

TString Write(const DataValue& value) { return ParameterTypeSerializer<DataValue>::TypeToString(value); }
DataValue Read(const TString& text) { return ParameterTypeSerializer<DataValue>::TypeFromString(text); }

struct TextCase {
    DataValue value;
    const wchar_t* text;
};

void ExpectWritten(const std::vector<TextCase>& cases) {
    for (const TextCase& c : cases) {
        EXPECT_EQ(c.text, Write(c.value));
    }
}

void ExpectRead(const std::vector<TextCase>& cases) {
    for (const TextCase& c : cases) {
        SCOPED_TRACE(TString(c.text).ToUtf8());
        const DataValue value = Read(c.text);
        EXPECT_EQ(c.value, value);
        EXPECT_TRUE(Identical(c.value, value)) << "labels, collation or sign differ";
    }
}

void ExpectBothWays(const std::vector<TextCase>& cases) {
    ExpectWritten(cases);
    ExpectRead(cases);
}

void ExpectLabels(int precision, int scale, const TString& text) {
    const DataValue value = Read(text);
    EXPECT_EQ(DataType::Real, value.GetDataType()) << text.ToUtf8();
    EXPECT_EQ(precision, value.GetPrecision()) << text.ToUtf8();
    EXPECT_EQ(scale, value.GetScale()) << text.ToUtf8();
}

}  // namespace

TEST(DataValueText, Integers) {
    ExpectBothWays({
        {42, L"i:42"},
        {0, L"i:0"},
        {-1, L"i:-1"},
        {1234567, L"i:1234567"},
        {std::numeric_limits<Int64>::max(), L"i:9223372036854775807"},
        {std::numeric_limits<Int64>::min(), L"i:-9223372036854775808"},
    });
    ExpectRead({{5, L"i:+5"}, {7, L"i:007"}, {0, L"i:-0"}});
}

TEST(DataValueText, RealsHaveTwoLabels) {
    ExpectBothWays({
        {12.5, L"r:::12.5"},
        {DataValue(12.5, 2, 1), L"r:2:1:12.5"},
        {DataValue(12.5, 2), L"r:2::12.5"},
        {DataValue(12.5, DataValue::kUnset, 1), L"r::1:12.5"},
        {DataValue(12.5, 0, 0), L"r:0:0:12.5"},
        {DataValue(12.5, 254, 254), L"r:254:254:12.5"},
        {DataValue(12.567, 2, 1), L"r:2:1:12.567"},  // labels do not round
    });
}

TEST(DataValueText, RealDigits) {
    ExpectBothWays({
        {12.0, L"r:::12"},
        {0.1, L"r:::0.1"},
        {0.1 + 0.2, L"r:::0.30000000000000004"},
        {-3.25, L"r:::-3.25"},
        {0.0, L"r:::0"},
        {-0.0, L"r:::-0"},
        {1234567.0, L"r:::1234567"},  // never grouped
        {1e300, L"r:::1e+300"},
        {5e-324, L"r:::5e-324"},
        {std::numeric_limits<double>::max(), L"r:::1.7976931348623157e+308"},
    });
    ExpectRead({{0.5, L"r:::.5"}, {5.0, L"r:::5."}, {1000.0, L"r:::1E3"}, {3.5, L"r:::+003.50"}, {0.0, L"r:::1e-999"}});
}

TEST(DataValueText, NumbersThatAreNoneAreNull) {
    EXPECT_EQ(L"r:null", Write(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(L"r:null", Write(DataValue(-std::numeric_limits<double>::infinity(), 2, 1)));
}

// What stands between the third and the fourth ":"; a label that is no number is 0, a long one loses its high bits.
TEST(DataValueText, FieldsOfAReal) {
    ExpectRead({{3.5, L"r:::3.5:junk"}, {3.5, L"r:::3.5:"}, {DataValue(3.5, 2, 1), L"r:2:1:3.5:4:5"}});
    ExpectLabels(255, 255, L"r:::3.5");
    ExpectLabels(2, 1, L"r:2:1:3.5");
    ExpectLabels(44, 0, L"r:300:abc:1");
    ExpectLabels(0, 255, L"r:abc::1");
    ExpectLabels(0, 255, L"r:null::1");
    ExpectLabels(255, 255, L"r:255::1");
    ExpectLabels(255, 254, L"r:-1:-2:1");
    ExpectLabels(255, 0, L"r:-257:256:1");
    ExpectLabels(7, 0, L"r:+7: 7:1");                     // blanks belong to no number
    ExpectLabels(0, 0, L"r:2147483648:-2147483649:1");    // beyond 32 bits
    ExpectLabels(255, 0, L"r:2147483647:-2147483648:1");  // their low eight bits
    EXPECT_EQ(L"r:::1", Write(Read(L"r:255::1")));
    EXPECT_EQ(L"r:::1", Write(Read(L"r:-1::1")));
    EXPECT_EQ(L"r:44:0:1", Write(Read(L"r:300:abc:1")));
}

TEST(DataValueText, StringsAreWrittenAsTheyAre) {
    ExpectBothWays({
        {String(L"text"), L"s:root:text"},
        {String(L""), L"s:root:"},
        {String(L"a:b,c"), L"s:root:a:b,c"},
        {String(L":"), L"s:root::"},
        {String(L"null"), L"s:root:null"},
        {String(L"%null"), L"s:root:%null"},
        {String(L" %null% "), L"s:root: %null% "},
        {String(L"%NULL%"), L"s:root:%NULL%"},
        {String(L"100% #1"), L"s:root:100% #1"},
        {String(L"\\%\\#\\\\%#\\"), L"s:root:\\%\\#\\\\%#\\"},
        {String(L"\""), L"s:root:\""},
        {String(L"\"quoted\""), L"s:root:\"quoted\""},
        {String(L"[x],[y]"), L"s:root:[x],[y]"},
        {String(L"i:42"), L"s:root:i:42"},
        {String(L" \t\n "), L"s:root: \t\n "},
        {String(L"\u00e4\u4e2d\U0001f600"), L"s:root:\u00e4\u4e2d\U0001f600"},
    });
}

TEST(DataValueText, AnyCodeUnitSurvivesInAString) {
    const TString units(std::u16string_view(u"a\0\xd800\xffff\xfffe\u0001z", 7));
    const TString text = Write(String(units));
    EXPECT_EQ(TString(L"s:root:") + units, text);
    EXPECT_EQ(units, Read(text).GetString().GetText());
}

TEST(DataValueText, CollationsOfStrings) {
    ExpectBothWays({
        {String(L"x", L"unknown"), L"s:unknown:x"},
        {String(L"x", L""), L"s::x"},
        {String(L"x", L"null"), L"s:null:x"},
        {String(L"", L""), L"s::"},
        {String(L"x", L"en_US-u-KS_1"), L"s:en_US-u-KS_1:x"},
    });
    EXPECT_EQ(GetUnknownCollation(), Read(L"s:unknown:x").GetCollation());
    EXPECT_EQ(TString(64, u'c'), Read(TString(L"s:") + TString(64, u'c') + L":x").GetCollation().GetName());
}

TEST(DataValueText, OtherTypes) {
    ExpectBothWays({
        {true, L"b:true"},
        {false, L"b:false"},
        {Day(2024, 2, 29), L"d:2024-02-29"},
        {Day(1, 1, 1), L"d:0001-01-01"},
        {Day(9999, 12, 31), L"d:9999-12-31"},
        {LeapEvening(), L"c:2024-02-29 23:59:58"},
        {LeapEvening(500000000), L"c:2024-02-29 23:59:58.5"},
        {LeapEvening(1), L"c:2024-02-29 23:59:58.000000001"},
        {LeapEvening(999999999), L"c:2024-02-29 23:59:58.999999999"},
        {DateTime(), L"c:0001-01-01 00:00:00"},
        {TupleOf({1, String(L"a,b")}), L"t:[i:1],[s:root:a,b]"},
    });
}

TEST(DataValueText, NullOfEachType) {
    ExpectBothWays({
        {Null(DataType::Integer), L"i:null"},
        {Null(DataType::Real), L"r:null"},
        {Null(DataType::DateTime), L"c:null"},
        {Null(DataType::Boolean), L"b:null"},
        {Null(DataType::Date), L"d:null"},
        {DataValue(), L"u:null"},
        {NullString(), L"s:root:%null%"},
        {NullString(L"unknown"), L"s:unknown:%null%"},
        {NullString(L""), L"s::%null%"},
    });
}

TEST(DataValueText, NullTupleIsWrittenAndNotRead) {
    EXPECT_EQ(L"t:null", Write(Null(DataType::Tuple)));
    EXPECT_EQ(L"t:null", Write(DataValue(RefCntPtr<Tuple>())));
    EXPECT_THAT(Doing([] { Read(L"t:null"); }),
                ThrowsSerializerCheck("Tuple should begin and end with square brackets"));
    EXPECT_THAT(Doing([] { Read(L"t:%null%"); }),
                ThrowsSerializerCheck("Tuple should begin and end with square brackets"));
}

// Texts of nulls that the writer does not make.
TEST(DataValueText, OtherTextsOfNull) {
    ExpectRead({
        {NullString(L"unknown"), L"s:null"},
        {Null(DataType::Integer), L"i:%null%"},
        {Null(DataType::Boolean), L"b:%null%"},
        {DataValue(), L"u:%null%"},
        {Null(DataType::Real), L"r:::%null%"},
        {Null(DataType::Real), L"r:2:1:%null%"},
    });
}

// The one text that does not come back: nothing in it is escaped.
TEST(DataValueText, StringThatLooksLikeNullReadsAsNull) {
    EXPECT_EQ(L"s:root:%null%", Write(String(L"%null%")));
    EXPECT_TRUE(Read(L"s:root:%null%").IsSpecial());
}

TEST(DataValueText, SpatialValuesHaveNoLetter) {
    EXPECT_THAT(Doing([] { Write(Spatial(L"POINT (1 2)")); }), ThrowsUnknownLetter());
    EXPECT_THAT(Doing([] { Write(Null(DataType::Spatial)); }), ThrowsUnknownLetter());
    EXPECT_THAT(Doing([] { Write(TupleOf({1, Spatial(L"POINT (1 2)")})); }), ThrowsUnknownLetter());
}

TEST(DataValueText, NoLocaleMatters) {
    const CommaLocale locale;
    ExpectBothWays(
        {{1234567, L"i:1234567"}, {1234.5, L"r:::1234.5"}, {LeapEvening(5), L"c:2024-02-29 23:59:58.000000005"}});
}

TEST(DataValueText, WritingAgainGivesTheSame) {
    for (const wchar_t* text : {L"i:42", L"r:2:1:3.5", L"s:root:a:b,c", L"c:2024-02-29 23:59:58.5", L"u:null",
                                L"t:[i:null],[s:root:%null%],[t:[b:true]],[r:2::0.1],[d:2024-02-29]"}) {
        EXPECT_EQ(text, Write(Read(text)));
    }
}
