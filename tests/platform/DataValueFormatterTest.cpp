#include <qvcore/DataValueFormatter.h>

#include <limits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <qvsys/QuorvelException.h>

#include "support/Printing.h"

namespace {

using FormatOptions = DataValueFormatter::FormatOptions;

// The bare text for programs.
constexpr FormatOptions kInvariant{1, false, false, true, false, false};

Date Day(int year, unsigned month, unsigned day) {
    return {std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
}

DataValue Text(const TString& text) { return IndirectString::Lookup(Collation(u"root"), text); }

DataValue MakeTuple(std::vector<DataValue> values) { return MakeRefCnt<Tuple>(std::move(values)); }

TString Format(const DataValue& value) { return DataValueFormatter::Format(value, kInvariant); }

TString FormatTime(std::chrono::nanoseconds timeOfDay) { return Format(DateTime(Day(2024, 2, 29), timeOfDay)); }

TEST(DataValueFormatter, HasItsDelimiters) {
    EXPECT_EQ(TString(u"\""), DataValueFormatter::delimiterString);
    EXPECT_EQ(TString(u"#"), DataValueFormatter::delimiterDatetime);
    EXPECT_EQ(TString(u"%"), DataValueFormatter::delimiterSpecial);
    EXPECT_EQ(TString(u"%null%"), DataValueFormatter::valueNull);
}

TEST(DataValueFormatter, HasItsDefaults) {
    const FormatOptions options;
    EXPECT_EQ(0, options.style);
    EXPECT_TRUE(options.delimitStrings);
    EXPECT_TRUE(options.delimitDatetimes);
    EXPECT_TRUE(options.shortestReals);
    EXPECT_TRUE(options.groupDigits);
    EXPECT_TRUE(options.localize);
}

TEST(DataValueFormatter, WritesIntegersInDecimal) {
    EXPECT_EQ(TString(u"0"), Format(0));
    EXPECT_EQ(TString(u"42"), Format(42));
    EXPECT_EQ(TString(u"-1234567"), Format(-1234567));
    EXPECT_EQ(TString(u"9223372036854775807"), Format(std::numeric_limits<Int64>::max()));
    EXPECT_EQ(TString(u"-9223372036854775808"), Format(std::numeric_limits<Int64>::min()));
}

TEST(DataValueFormatter, WritesRealsAsShortAsTheyReadBack) {
    const struct {
        double number;
        const char16_t* text;
    } cases[] = {
        {12.0, u"12"},
        {12.5, u"12.5"},
        {0.1, u"0.1"},
        {0.0, u"0"},
        {-0.0, u"-0"},
        {-3.25, u"-3.25"},
        {1e300, u"1e+300"},
        {5e-324, u"5e-324"},
        {1.7976931348623157e308, u"1.7976931348623157e+308"},
        {0.1 + 0.2, u"0.30000000000000004"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(TString(c.text), Format(c.number));
    }
}

TEST(DataValueFormatter, LabelsDoNotChangeTheDigits) { EXPECT_EQ(TString(u"12.5"), Format(DataValue(12.5, 2, 0))); }

TEST(DataValueFormatter, WritesTheWordsOfBooleans) {
    EXPECT_EQ(TString(u"true"), Format(true));
    EXPECT_EQ(TString(u"false"), Format(false));
}

TEST(DataValueFormatter, WritesDatesWithFullWidth) {
    EXPECT_EQ(TString(u"2024-02-29"), Format(Day(2024, 2, 29)));
    EXPECT_EQ(TString(u"0001-01-01"), Format(Day(1, 1, 1)));
    EXPECT_EQ(TString(u"9999-12-31"), Format(Day(9999, 12, 31)));
}

TEST(DataValueFormatter, WritesTimesWithTheFractionThatThereIs) {
    using namespace std::chrono;
    EXPECT_EQ(TString(u"2024-02-29 00:00:00"), FormatTime(nanoseconds(0)));
    EXPECT_EQ(TString(u"2024-02-29 23:59:59.999999999"), FormatTime(hours(24) - nanoseconds(1)));
    EXPECT_EQ(TString(u"2024-02-29 01:02:03.5"), FormatTime(hours(1) + minutes(2) + seconds(3) + milliseconds(500)));
    EXPECT_EQ(TString(u"2024-02-29 00:00:00.000000001"), FormatTime(nanoseconds(1)));
    EXPECT_EQ(TString(u"2024-02-29 00:00:00.01"), FormatTime(milliseconds(10)));
    EXPECT_EQ(TString(u"2024-02-29 00:00:10"), FormatTime(seconds(10)));
}

TEST(DataValueFormatter, WritesTextsAsTheyAre) {
    EXPECT_EQ(TString(u""), Format(Text(u"")));
    EXPECT_EQ(TString(u"a\"\\%#,:[]"), Format(Text(u"a\"\\%#,:[]")));
    EXPECT_EQ(TString(u"POINT(1 2)"), Format(Spatial(u"POINT(1 2)")));
}

TEST(DataValueFormatter, WritesEveryNullAlike) {
    for (int type = 0; type <= 8; ++type) {
        SCOPED_TRACE(type);
        const DataValue null = DataValue::Null(static_cast<DataType>(type));
        EXPECT_EQ(TString(u"%null%"), Format(null));
        EXPECT_EQ(TString(u"%null%"), DataValueFormatter::Format(null, FormatOptions()));
    }
}

TEST(DataValueFormatter, JoinsTheValuesOfTuples) {
    EXPECT_EQ(TString(u""), Format(MakeTuple({})));
    EXPECT_EQ(TString(u"1,a,b,%null%"), Format(MakeTuple({1, Text(u"a,b"), DataValue()})));
    EXPECT_EQ(TString(u"1,2,3,,4"), Format(MakeTuple({1, MakeTuple({2, 3}), MakeTuple({}), 4})));
}

TEST(DataValueFormatter, WritesDeepTuples) {
    DataValue value = 7;
    for (int i = 0; i < 200'000; ++i) {
        value = MakeTuple({std::move(value)});
    }
    EXPECT_EQ(TString(u"7"), Format(value));
}

TEST(DataValueFormatter, DelimitsTextsOnRequest) {
    FormatOptions options = kInvariant;
    options.delimitStrings = true;
    EXPECT_EQ(TString(u"\"a\"b\""), DataValueFormatter::Format(Text(u"a\"b"), options));
    EXPECT_EQ(TString(u"2024-02-29"), DataValueFormatter::Format(Day(2024, 2, 29), options));
    EXPECT_EQ(TString(u"\"a\",1"), DataValueFormatter::Format(MakeTuple({Text(u"a"), 1}), options));
}

TEST(DataValueFormatter, DelimitsDatesOnRequest) {
    FormatOptions options = kInvariant;
    options.delimitDatetimes = true;
    EXPECT_EQ(TString(u"#2024-02-29#"), DataValueFormatter::Format(Day(2024, 2, 29), options));
    EXPECT_EQ(TString(u"#2024-02-29 00:00:00#"), DataValueFormatter::Format(DateTime(Day(2024, 2, 29)), options));
    EXPECT_EQ(TString(u"a"), DataValueFormatter::Format(Text(u"a"), options));
}

TEST(DataValueFormatter, WritesAllDigitsOfRealsOnRequest) {
    FormatOptions options = kInvariant;
    options.shortestReals = false;
    EXPECT_EQ(TString(u"0.10000000000000001"), DataValueFormatter::Format(0.1, options));
    EXPECT_EQ(TString(u"12"), DataValueFormatter::Format(12.0, options));
    EXPECT_EQ(TString(u"0.5"), DataValueFormatter::Format(0.5, options));
}

TEST(DataValueFormatter, GroupsTheDigitsOfIntegers) {
    const FormatOptions options;
    EXPECT_EQ(TString(u"7"), DataValueFormatter::Format(7, options));
    EXPECT_EQ(TString(u"-123"), DataValueFormatter::Format(-123, options));
    EXPECT_EQ(TString(u"1,234"), DataValueFormatter::Format(1234, options));
    EXPECT_EQ(TString(u"-123,456,789"), DataValueFormatter::Format(-123456789, options));
    EXPECT_EQ(TString(u"1234.5"), DataValueFormatter::Format(1234.5, options));
}

TEST(DataValueFormatter, GroupsForPeopleOnlyWhenItMayLocalize) {
    const struct {
        int style;
        bool groupDigits;
        bool localize;
        const char16_t* text;
    } cases[] = {
        {0, true, true, u"1,234"}, {0, true, false, u"1234"},  {0, false, true, u"1234"}, {0, false, false, u"1234"},
        {1, true, true, u"1,234"}, {1, true, false, u"1,234"}, {1, false, true, u"1234"}, {1, false, false, u"1234"},
    };
    for (const auto& c : cases) {
        FormatOptions options;
        options.style = c.style;
        options.groupDigits = c.groupDigits;
        options.localize = c.localize;
        EXPECT_EQ(TString(c.text), DataValueFormatter::Format(1234, options));
    }
}

TEST(DataValueFormatter, RefusesOtherStyles) {
    FormatOptions options;
    options.style = 2;
    EXPECT_THROW(DataValueFormatter::Format(1, options), QuorvelException);
    options.style = -1;
    EXPECT_THROW(DataValueFormatter::Format(1, options), QuorvelException);
}

TEST(DataValueFormatter, AppendsToWhatIsThere) {
    TString text(u"i:");
    DataValueFormatter::Append(text, 42, kInvariant);
    EXPECT_EQ(TString(u"i:42"), text);
    DataValueFormatter::Append(text, DateTime(Day(2024, 2, 29)), kInvariant);
    EXPECT_EQ(TString(u"i:422024-02-29 00:00:00"), text);
}

}  // namespace
