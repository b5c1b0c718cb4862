// Texts that are no typed values, each with its exact failure.
#include <qvpreslayer/DataValueSerializer.h>

#include <algorithm>
#include <ctime>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Failures.h"
#include "support/Printing.h"
#include "support/Sanitized.h"
#include "support/TypedValues.h"

namespace {

constexpr const char* kNotDelimited = "Serialized DataValue is not properly delimited";
constexpr const char* kRealNotDelimited =
    "Serialized DataValue is not properly delimited, unable to parse real scale and precision values";
constexpr const char* kStringNotDelimited =
    "Serialized DataValue is not properly delimited, unable to parse string collation";

DataValue Read(const TString& text) { return ParameterTypeSerializer<DataValue>::TypeFromString(text); }

auto ThrowsParserFailure() { return ThrowsMessageText(L"Data value parse error"); }

}  // namespace

TEST(DataValueTextFailures, NoDelimiterBehindALetter) {
    for (const wchar_t* text : {L"", L"x", L":", L":x", L":i:1", L"::", L"i", L"null", L"%null%", L"42"}) {
        EXPECT_THAT(Doing([&] { Read(text); }), ThrowsSerializerCheck(kNotDelimited)) << text;
    }
}

TEST(DataValueTextFailures, UnknownLetters) {
    for (const wchar_t* text : {L"ii:1", L"I:1", L"S:root:x", L"T:[i:1]", L"l:1", L"p:POINT (1 2)", L"x:null", L"7:x",
                                L" i:1", L"i :1", L"null:", L"\u0131:1"}) {
        EXPECT_THAT(Doing([&] { Read(text); }), ThrowsUnknownLetter()) << TString(text).ToUtf8();
    }
}

TEST(DataValueTextFailures, RealsWithoutTheirFields) {
    for (const wchar_t* text : {L"r:", L"r:1", L"r:1:2", L"r::", L"r:1:", L"r:NULL", L"r:%null%", L"r:1.5"}) {
        EXPECT_THAT(Doing([&] { Read(text); }), ThrowsSerializerCheck(kRealNotDelimited)) << text;
    }
}

TEST(DataValueTextFailures, StringsWithoutACollation) {
    for (const wchar_t* text : {L"s:", L"s:x", L"s:NULL", L"s:null ", L"s:%null%"}) {
        EXPECT_THAT(Doing([&] { Read(text); }), ThrowsSerializerCheck(kStringNotDelimited)) << text;
    }
}

TEST(DataValueTextFailures, CollationsWithOtherCharacters) {
    for (const TString& name : {TString(L"ro ot"), TString(L"a.b"), TString(L"\u00e4"), TString(L"a,b"), TString(L"[a"),
                                TString(L"%null%"), TString(65, u'c')}) {
        EXPECT_THAT(Doing([&] { Read(TString(L"s:") + name + L":x"); }),
                    ThrowsExactly<QuorvelException>(testing::A<const QuorvelException&>()))
            << name.ToUtf8();
    }
}

TEST(DataValueTextFailures, ContentOfAnotherType) {
    for (const wchar_t* text : {L"i:",
                                L"i:x",
                                L"i:1.0",
                                L"i: 1",
                                L"i:1 ",
                                L"i:1,000",
                                L"i:1:2",
                                L"i:NULL",
                                L"i:true",
                                L"i:0x10",
                                L"i:9223372036854775808",
                                L"i:-9223372036854775809",
                                L"r:::",
                                L"r:::x",
                                L"r:::null",
                                L"r:::nan",
                                L"r:::inf",
                                L"r:::1e400",
                                L"r:::1,5",
                                L"r::: 1",
                                L"b:",
                                L"b:True",
                                L"b:TRUE",
                                L"b:1",
                                L"b: true",
                                L"b:NULL",
                                L"u:",
                                L"u:x",
                                L"u:NULL",
                                L"u:1"}) {
        EXPECT_THAT(Doing([&] { Read(text); }), ThrowsParserFailure()) << text;
    }
}

// Dates get their delimiters while they are read; nothing else may bring any, not even the null of the formatter.
TEST(DataValueTextFailures, DatesThatAreNone) {
    for (const wchar_t* text : {L"d:",
                                L"d:2024-02-30",
                                L"d:2023-02-29",
                                L"d:0000-01-01",
                                L"d:10000-01-01",
                                L"d:2024-2-29",
                                L"d:2024/02/29",
                                L"d:#2024-02-29#",
                                L"d: 2024-02-29",
                                L"d:2024-02-29 ",
                                L"d:2024-02-29 00:00:00",
                                L"d:%null%",
                                L"d:NULL",
                                L"c:",
                                L"c:2024-02-29",
                                L"c:2024-02-29 24:00:00",
                                L"c:2024-02-29 23:60:00",
                                L"c:2024-02-29 23:59:60",
                                L"c:2024-02-30 00:00:00",
                                L"c:2024-02-29T23:59:58",
                                L"c:#2024-02-29 23:59:58#",
                                L"c:2024-02-29 23:59",
                                L"c:2024-02-29 23:59:58.",
                                L"c:2024-02-29 23:59:58.0000000001",
                                L"c:%null%",
                                L"c:NULL"}) {
        EXPECT_THAT(Doing([&] { Read(text); }), ThrowsParserFailure()) << text;
    }
}

TEST(DataValueTextFailures, CheckedFromLeftToRight) {
    EXPECT_THAT(Doing([] { Read(L"x:"); }), ThrowsUnknownLetter());                        // before the content
    EXPECT_THAT(Doing([] { Read(L"r:1:x"); }), ThrowsSerializerCheck(kRealNotDelimited));  // before the labels
    EXPECT_THAT(Doing([] { Read(L"t:x"); }), ThrowsSerializerCheck("Tuple should begin and end with square brackets"));
}

namespace {

// The processor time that work takes at best, in milliseconds; 0 where sanitizers or counting slow everything down.
template <class Work>
double Milliseconds(Work work) {
    double best = 1e9;
    for (int i = 0; i < 3; ++i) {
        const std::clock_t start = std::clock();
        work();
        const std::clock_t end = std::clock();
        best = std::min(best, 1000.0 * static_cast<double>(end - start) / CLOCKS_PER_SEC);
    }
    return QV_TEST_SANITIZED || QV_TEST_COUNTED ? 0 : best;
}

constexpr std::size_t kMillion = 1000000;

}  // namespace

TEST(LongDataValueTexts, MillionDelimiters) {
    const TString colons(kMillion, u':');
    const double milliseconds = Milliseconds([&] {
        EXPECT_EQ(colons, Read(TString(L"s:root:") + colons).GetString().GetText());
        EXPECT_EQ(DataValue(1.5), Read(TString(L"r:::1.5") + colons));
    });
    EXPECT_LT(milliseconds, 100);  // two texts
}

TEST(LongDataValueTexts, MillionDigits) {
    const TString digits(kMillion, u'7');
    const double milliseconds = Milliseconds([&] {
        EXPECT_THAT(Doing([&] { Read(TString(L"i:") + digits); }), ThrowsParserFailure());
        EXPECT_THAT(Doing([&] { Read(TString(L"r:::") + digits); }), ThrowsParserFailure());
        EXPECT_EQ(0, Read(TString(L"r:") + digits + L"::1").GetPrecision());
        EXPECT_THAT(Doing([&] { Read(TString(L"d:") + digits); }), ThrowsParserFailure());
    });
    EXPECT_LT(milliseconds, 200);  // four texts
}

TEST(LongDataValueTexts, MillionEscapes) {
    const TString escapes(kMillion, u'%');
    EXPECT_EQ(escapes, Read(TString(L"s:root:") + escapes).GetString().GetText());
}

TEST(LongDataValueTexts, MillionCommasInATuple) {
    const TString commas(kMillion, u',');
    const DataValue tuple = Read(TString(L"t:[i:1],[s:root:") + commas + L"],[i:2]");
    ASSERT_EQ(3U, tuple.GetTuple()->GetValues().size());
    EXPECT_EQ(commas, tuple.GetTuple()->GetValues()[1].GetString().GetText());
}

// Texts from outside leave nothing behind, whether they were read or not.
TEST(LongDataValueTexts, SharedTextsGoWithTheirValues) {
    const std::size_t before = IndirectString::GetTableSize();
    for (int i = 0; i < 1000; ++i) {
        const TString text = TString(L"s:root:shared") + TString::number(i);
        EXPECT_NO_THROW(Read(text));
        EXPECT_THROW(Read(TString(L"t:[") + text + L"],[" + text + L",more],[i:x]"), QuorvelException);
    }
    EXPECT_EQ(before, IndirectString::GetTableSize());
}
