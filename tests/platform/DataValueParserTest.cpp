#include <qvcore/DataValueParser.h>

#include <bit>
#include <chrono>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include <qvsys/QuorvelException.h>

#include <qvcore/DataValueFormatter.h>

#include "support/Printing.h"

namespace {

Date Day(int year, unsigned month, unsigned day) {
    return {std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
}

DataValue Text(const TString& text) { return IndirectString::Lookup(GetUnknownCollation(), text); }

DataValue Parse(DataType type, const TString& text) {
    return DataValueParser::ParseGeneric(type, GetUnknownCollation(), 255, 255, text, false);
}

std::string ErrorOf(DataType type, const TString& text) {
    try {
        Parse(type, text);
    } catch (const QuorvelException& error) {
        return error.what();
    }
    return "read";
}

void ExpectErrors(DataType type, const std::vector<const char16_t*>& texts) {
    for (const char16_t* text : texts) {
        SCOPED_TRACE(TString(text).ToUtf8());
        EXPECT_EQ("Data value parse error", ErrorOf(type, text));
    }
}

// The text of value as the parser wants it.
TString Write(const DataValue& value) {
    DataValueFormatter::FormatOptions options{1, false, true, true, false, false};
    TString text = DataValueFormatter::Format(value, options);
    if (value.GetDataType() == DataType::CString && !value.IsSpecial()) {
        text.replace(u"%", u"\\%").replace(u"#", u"\\#");
        text = DataValueFormatter::delimiterString + text + DataValueFormatter::delimiterString;
    }
    return text;
}

DataValue WriteAndRead(const DataValue& value) { return Parse(value.GetDataType(), Write(value)); }

// A date-time on 2024-02-29.
DataValue At(std::chrono::nanoseconds timeOfDay) { return DateTime(Day(2024, 2, 29), timeOfDay); }

TEST(DataValueParser, ReadsTheNullOfEveryReadableType) {
    for (const DataType type : {DataType::Integer, DataType::Real, DataType::CString, DataType::DateTime,
                                DataType::Boolean, DataType::Date, DataType::Unknown}) {
        SCOPED_TRACE(static_cast<int>(type));
        const DataValue value = Parse(type, u"%null%");
        EXPECT_TRUE(value.IsSpecial());
        EXPECT_EQ(type, value.GetDataType());
    }
}

TEST(DataValueParser, NullTextKeepsTheCollation) {
    const DataValue value =
        DataValueParser::ParseGeneric(DataType::CString, Collation(u"root"), 255, 255, u"%null%", false);
    EXPECT_TRUE(value.IsSpecial());
    EXPECT_EQ(Collation(u"root"), value.GetCollation());
}

TEST(DataValueParser, NullIsExact) {
    ExpectErrors(DataType::Integer, {u"null", u"%NULL%", u" %null%", u"%null% ", u"%null", u"\"%null%\"", u"#%null%#"});
}

TEST(DataValueParser, ReadsNoTupleNoSpatialAndNoOtherType) {
    ExpectErrors(DataType::Tuple, {u"%null%", u"", u"[i:1]", u"1"});
    ExpectErrors(DataType::Spatial, {u"%null%", u"", u"POINT(1 2)"});
    ExpectErrors(DataType::Unknown, {u"", u"null", u"1", u"\"a\""});
    ExpectErrors(static_cast<DataType>(9), {u"%null%", u"1"});
}

TEST(DataValueParser, ReadsIntegers) {
    EXPECT_EQ(DataValue(42), Parse(DataType::Integer, u"42"));
    EXPECT_EQ(DataValue(42), Parse(DataType::Integer, u"+042"));
    EXPECT_EQ(DataValue(-7), Parse(DataType::Integer, u"-7"));
}

TEST(DataValueParser, RefusesWhatIsNoInteger) {
    ExpectErrors(DataType::Integer, {u"", u"-", u"1.0", u"1e3", u" 1", u"1 ", u"1,234", u"0x1", u"a",
                                     u"9223372036854775808", u"-9223372036854775809"});
}

TEST(DataValueParser, ReadsRealsWithTheLabelsGiven) {
    const DataValue value = DataValueParser::ParseGeneric(DataType::Real, GetUnknownCollation(), 2, 1, u"3.5", false);
    EXPECT_EQ(3.5, value.GetReal());
    EXPECT_EQ(2, value.GetPrecision());
    EXPECT_EQ(1, value.GetScale());
    EXPECT_EQ(DataValue(0.5), Parse(DataType::Real, u".5"));
    EXPECT_EQ(DataValue(1500.0), Parse(DataType::Real, u"+1.5E+3"));
    EXPECT_EQ(DataValue(5.0), Parse(DataType::Real, u"5."));
}

TEST(DataValueParser, RefusesWhatIsNoFiniteReal) {
    ExpectErrors(DataType::Real, {u"", u".", u"-", u"1e", u"nan", u"inf", u"-infinity", u"1e309", u"-1e309", u" 1",
                                  u"1,5", u"0x1p3", u"1.5f", u"null"});
}

TEST(DataValueParser, ReadsTheTwoWordsOfBooleansOnly) {
    EXPECT_EQ(DataValue(true), Parse(DataType::Boolean, u"true"));
    EXPECT_EQ(DataValue(false), Parse(DataType::Boolean, u"false"));
    ExpectErrors(DataType::Boolean, {u"", u"True", u"FALSE", u" true", u"true ", u"1", u"0", u"truefalse"});
}

TEST(DataValueParser, ReadsDates) {
    EXPECT_EQ(DataValue(Day(2024, 2, 29)), Parse(DataType::Date, u"#2024-02-29#"));
    EXPECT_EQ(DataValue(Day(1, 1, 1)), Parse(DataType::Date, u"#0001-01-01#"));
    EXPECT_EQ(DataValue(Day(9999, 12, 31)), Parse(DataType::Date, u"#9999-12-31#"));
}

TEST(DataValueParser, RefusesDaysThatDoNotExist) {
    ExpectErrors(DataType::Date, {u"#2023-02-29#", u"#1900-02-29#", u"#2024-02-30#", u"#2024-04-31#", u"#2024-13-01#",
                                  u"#2024-00-01#", u"#2024-01-00#", u"#0000-01-01#"});
    ExpectErrors(DataType::DateTime, {u"#2023-02-29 00:00:00#", u"#0000-01-01 00:00:00#"});
}

TEST(DataValueParser, RefusesDatesOfAnotherForm) {
    ExpectErrors(DataType::Date, {u"2024-02-29", u"#2024-02-29", u"2024-02-29#", u"##2024-02-29##", u"#2024-2-29#",
                                  u"#20240229#", u"#2024/02/29#", u"#+024-02-29#", u"#2024-02-29 #", u"#10000-01-01#",
                                  u"#2024-02-29 00:00:00#", u"##", u"#", u"", u"#2024-02-2a#", u"#-001-01-01#"});
}

TEST(DataValueParser, ReadsDateTimes) {
    using namespace std::chrono;
    EXPECT_EQ(At(nanoseconds(0)), Parse(DataType::DateTime, u"#2024-02-29 00:00:00#"));
    EXPECT_EQ(At(hours(23) + minutes(59) + seconds(58)), Parse(DataType::DateTime, u"#2024-02-29 23:59:58#"));
}

TEST(DataValueParser, ReadsFractionsOfOneToNineDigits) {
    const struct {
        const char16_t* text;
        int nanoseconds;
    } cases[] = {
        {u"#2024-02-29 00:00:00.1#", 100'000'000},
        {u"#2024-02-29 00:00:00.12#", 120'000'000},
        {u"#2024-02-29 00:00:00.123#", 123'000'000},
        {u"#2024-02-29 00:00:00.1234#", 123'400'000},
        {u"#2024-02-29 00:00:00.12345#", 123'450'000},
        {u"#2024-02-29 00:00:00.123456#", 123'456'000},
        {u"#2024-02-29 00:00:00.1234567#", 123'456'700},
        {u"#2024-02-29 00:00:00.12345678#", 123'456'780},
        {u"#2024-02-29 00:00:00.123456789#", 123'456'789},
        {u"#2024-02-29 00:00:00.000000001#", 1},
        {u"#2024-02-29 00:00:00.500#", 500'000'000},  // zeros at the end are read, not written
        {u"#2024-02-29 00:00:00.0#", 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(TString(c.text).ToUtf8());
        EXPECT_EQ(At(std::chrono::nanoseconds(c.nanoseconds)), Parse(DataType::DateTime, c.text));
    }
}

TEST(DataValueParser, RefusesDateTimesOfAnotherForm) {
    ExpectErrors(DataType::DateTime,
                 {u"2024-02-29 00:00:00", u"#2024-02-29#", u"#2024-02-29T00:00:00#", u"#2024-02-29 24:00:00#",
                  u"#2024-02-29 00:60:00#", u"#2024-02-29 00:00:60#", u"#2024-02-29 0:00:00#", u"#2024-02-29 00:00#",
                  u"#2024-02-29 00:00:00.#", u"#2024-02-29 00:00:00.1234567890#", u"#2024-02-29 00:00:00,5#",
                  u"#2024-02-29 00:00:00.5a#", u"#2024-02-29 00:00:00.-5#", u"#2024-02-29 00:00:00Z#",
                  u"#2024-02-29  00:00:00#", u"#2024-02-29 00-00-00#", u"#", u"##", u""});
}

TEST(DataValueParser, ReadsWhatStandsBetweenTheQuotes) {
    EXPECT_EQ(Text(u""), Parse(DataType::CString, u"\"\""));
    EXPECT_EQ(Text(u"a"), Parse(DataType::CString, u"\"a\""));
    EXPECT_EQ(Text(u"a\"b"), Parse(DataType::CString, u"\"a\"b\""));
    EXPECT_EQ(Text(u"\""), Parse(DataType::CString, u"\"\"\""));
    ExpectErrors(DataType::CString, {u"", u"\"", u"a", u"\"a", u"a\"", u" \"a\""});
}

TEST(DataValueParser, DropsTheBackslashBeforePercentAndHashOnly) {
    const struct {
        const char16_t* text;
        const char16_t* content;
    } cases[] = {
        {u"\"\\%\"", u"%"},         {u"\"\\#\"", u"#"},     {u"\"%\"", u"%"},
        {u"\"#\"", u"#"},           {u"\"\\\\%\"", u"\\%"}, {u"\"\\\"", u"\\"},
        {u"\"\\a\"", u"\\a"},       {u"\"\\\\\"", u"\\\\"}, {u"\"\\%null\\%\"", u"%null%"},
        {u"\"%null%\"", u"%null%"},  // in quotes it is a text, not the null
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(TString(c.text).ToUtf8());
        EXPECT_EQ(Text(c.content), Parse(DataType::CString, c.text));
    }
}

TEST(DataValueParser, GivesTextsTheCollation) {
    const DataValue value =
        DataValueParser::ParseGeneric(DataType::CString, Collation(u"root"), 255, 255, u"\"a\"", false);
    EXPECT_EQ(Collation(u"root"), value.GetCollation());
    EXPECT_EQ(TString(u"a"), value.GetString().GetText());
}

TEST(DataValueParser, TheFlagChangesNothing) {
    EXPECT_EQ(DataValue(1),
              DataValueParser::ParseGeneric(DataType::Integer, GetUnknownCollation(), 255, 255, u"1", true));
}

TEST(DataValueRoundTrip, Integers) {
    for (const Int64 number :
         {std::numeric_limits<Int64>::min(), Int64{-1}, Int64{0}, Int64{1000}, std::numeric_limits<Int64>::max()}) {
        EXPECT_EQ(number, WriteAndRead(number).GetInteger());
    }
}

TEST(DataValueRoundTrip, Reals) {
    for (const double number : {0.0, -0.0, 0.1, 1e300, 5e-324, -5e-324, 1.7976931348623157e308, 100000.0, 1.0 / 3}) {
        EXPECT_EQ(std::bit_cast<UInt64>(number), std::bit_cast<UInt64>(WriteAndRead(number).GetReal()));
    }
}

TEST(DataValueRoundTrip, RealsOfAnyBits) {
    std::mt19937_64 random(20240229);
    for (int i = 0; i < 20'000; ++i) {
        const auto number = std::bit_cast<double>(static_cast<UInt64>(random()));
        if (std::isfinite(number)) {
            ASSERT_EQ(std::bit_cast<UInt64>(number), std::bit_cast<UInt64>(WriteAndRead(number).GetReal()));
        }
    }
}

TEST(DataValueRoundTrip, BooleansAndNulls) {
    EXPECT_EQ(DataValue(true), WriteAndRead(true));
    EXPECT_EQ(DataValue(false), WriteAndRead(false));
    for (const DataType type : {DataType::Integer, DataType::Real, DataType::CString, DataType::DateTime,
                                DataType::Boolean, DataType::Date, DataType::Unknown}) {
        SCOPED_TRACE(static_cast<int>(type));
        EXPECT_EQ(DataValue::Null(type), WriteAndRead(DataValue::Null(type)));
    }
}

TEST(DataValueRoundTrip, EveryDayOfFourHundredYears) {
    using namespace std::chrono;
    for (sys_days day = Day(1799, 12, 31); day < sys_days(Day(2200, 1, 2)); day += days(1)) {
        const DataValue value{Date(day)};
        ASSERT_EQ(value, WriteAndRead(value));
    }
}

TEST(DataValueRoundTrip, DateTimesWithEveryLengthOfFraction) {
    for (int unit = 1; unit < 1'000'000'000; unit *= 10) {
        const DataValue value = At(std::chrono::hours(5) + std::chrono::nanoseconds(7LL * unit));
        EXPECT_EQ(value, WriteAndRead(value));
    }
    EXPECT_EQ(At(std::chrono::hours(24) - std::chrono::nanoseconds(1)),
              WriteAndRead(At(std::chrono::hours(24) - std::chrono::nanoseconds(1))));
}

// All texts of up to six characters out of those that mean something to the grammar, and one that does not.
TEST(DataValueRoundTrip, EveryShortText) {
    constexpr std::u16string_view kAlphabet = u"\\%#\"a";
    std::vector<TString> texts{u""};
    for (std::size_t done = 0, length = 0; length < 6; ++length) {
        const std::size_t end = texts.size();
        for (; done < end; ++done) {
            for (const char16_t unit : kAlphabet) {
                texts.push_back(texts[done] + TString(1, unit));
            }
        }
    }
    ASSERT_EQ(19'531u, texts.size());  // 1 + 5 + 25 + ... + 15625
    for (const TString& text : texts) {
        ASSERT_EQ(text, WriteAndRead(Text(text)).GetString().GetText());
    }
}

TEST(DataValueRoundTrip, TextsOfAnyCodeUnits) {
    const TString texts[] = {u"a:b,c", u"[x],[y]", u"%null%", TString(std::u16string_view(u"\0\xD800z", 3)),
                             TString(100'000, u'%')};
    for (const TString& text : texts) {
        EXPECT_EQ(text, WriteAndRead(Text(text)).GetString().GetText());
    }
}

TEST(DataValueParser, RefusesAMillionDigits) {
    TString digits(1'000'000, u'9');
    EXPECT_EQ("Data value parse error", ErrorOf(DataType::Integer, digits));
    EXPECT_EQ("Data value parse error", ErrorOf(DataType::Real, digits));
}

}  // namespace
