#include <qvpreslayer/DataValueSerializer.h>  // first: the header stands alone

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <qvpreslayer/PresLayerLimits.h>

#include "support/Failures.h"
#include "support/Printing.h"
#include "support/TypedValues.h"

using typed::Identical;
using typed::MakeTuple;
using typed::Nested;
using typed::NestedText;
using typed::Null;
using typed::NullString;
using typed::String;
using typed::TupleOf;

namespace {

constexpr const char* kBrackets = "Tuple should begin and end with square brackets";
constexpr const char* kLength =
    "Malformed serialization of data value tuple, length must be at least 4 and begin with square bracket";

using Values = std::vector<DataValue>;

TString Write(Values values) { return TupleDataValueSerializer::ToString(MakeTuple(std::move(values))); }
DataValue Read(const TString& text) { return TupleDataValueSerializer::FromString(text); }
DataValue ReadTyped(const TString& text) { return ParameterTypeSerializer<DataValue>::TypeFromString(text); }
TString WriteTyped(const DataValue& value) { return ParameterTypeSerializer<DataValue>::TypeToString(value); }

auto ThrowsMalformedElement() { return ThrowsMessageText(L"Malformed serialization of a tuple element"); }

struct TupleCase {
    Values values;
    const wchar_t* text;
};

void ExpectRead(const std::vector<TupleCase>& cases) {
    for (const TupleCase& c : cases) {
        SCOPED_TRACE(TString(c.text).ToUtf8());
        const DataValue expected = TupleOf(c.values);
        const DataValue value = Read(c.text);
        EXPECT_EQ(expected, value);
        EXPECT_TRUE(Identical(expected, value)) << "labels, collation or sign differ";
    }
}

void ExpectBothWays(const std::vector<TupleCase>& cases) {
    for (const TupleCase& c : cases) {
        EXPECT_EQ(c.text, Write(c.values));
    }
    ExpectRead(cases);
}

// Another depth limit while it lives.
class TupleDepth {
public:
    explicit TupleDepth(int levels) : m_before(PresLayerLimits::GetTupleDepth()) {
        PresLayerLimits::SetTupleDepth(levels);
    }
    TupleDepth(const TupleDepth&) = delete;
    TupleDepth& operator=(const TupleDepth&) = delete;
    ~TupleDepth() { PresLayerLimits::SetTupleDepth(m_before); }

private:
    int m_before;
};

}  // namespace

TEST(TupleText, ElementsStandInBrackets) {
    ExpectBothWays({
        {{1}, L"[i:1]"},
        {{1, 2, 3}, L"[i:1],[i:2],[i:3]"},
        {{1, String(L"a,b")}, L"[i:1],[s:root:a,b]"},
        {{DataValue(3.5, 2, 1), DataValue(0.1)}, L"[r:2:1:3.5],[r:::0.1]"},
        {{true, typed::Day(2024, 2, 29), typed::LeapEvening(5)},
         L"[b:true],[d:2024-02-29],[c:2024-02-29 23:59:58.000000005]"},
    });
}

TEST(TupleText, NullElements) {
    ExpectBothWays({
        {{Null(DataType::Integer), Null(DataType::Real), Null(DataType::DateTime)}, L"[i:null],[r:null],[c:null]"},
        {{Null(DataType::Boolean), Null(DataType::Date), DataValue()}, L"[b:null],[d:null],[u:null]"},
        {{NullString(), NullString(L"")}, L"[s:root:%null%],[s::%null%]"},
    });
}

TEST(TupleText, StringsWithCommas) {
    ExpectBothWays({
        {{String(L",")}, L"[s:root:,]"},
        {{String(L",,,")}, L"[s:root:,,,]"},
        {{String(L"a,b,c"), 1}, L"[s:root:a,b,c],[i:1]"},
        {{String(L"a,"), String(L",b")}, L"[s:root:a,],[s:root:,b]"},
        {{String(L",", L"x"), String(L"a,b", L""), 2}, L"[s:x:,],[s::a,b],[i:2]"},
        {{String(L"a:b,c:d")}, L"[s:root:a:b,c:d]"},
        {{String(L",[i:1")}, L"[s:root:,[i:1]"},  // what is behind the comma is not looked into
        {{String(L"a,b"), String(L"c,d"), String(L"e")}, L"[s:root:a,b],[s:root:c,d],[s:root:e]"},
    });
}

TEST(TupleText, StringsWithBrackets) {
    ExpectBothWays({
        {{String(L"a]")}, L"[s:root:a]]"},
        {{String(L"]")}, L"[s:root:]]"},
        {{String(L"a,b]")}, L"[s:root:a,b]]"},
        {{String(L"a,]")}, L"[s:root:a,]]"},
        {{String(L",]]"), 1}, L"[s:root:,]]],[i:1]"},
        {{String(L"a]b,c")}, L"[s:root:a]b,c]"},
        {{String(L"a,b]c,d")}, L"[s:root:a,b]c,d]"},
        {{String(L"[x"), String(L"[[")}, L"[s:root:[x],[s:root:[[]"},
        {{String(L"] ,")}, L"[s:root:] ,]"},
    });
}

TEST(TupleText, EmptyStringsAndNames) {
    ExpectBothWays({{{String(L"")}, L"[s:root:]"}, {{String(L"", L"")}, L"[s::]"}});
}

// Only the piece before the first comma goes through the parser; all of them stay as they are.
TEST(TupleText, EscapesInStrings) {
    ExpectBothWays({
        {{String(L"%,%"), String(L"#,#")}, L"[s:root:%,%],[s:root:#,#]"},
        {{String(L"\\%#,\\%#")}, L"[s:root:\\%#,\\%#]"},
        {{String(L"\"a\",\"b\"")}, L"[s:root:\"a\",\"b\"]"},
        {{String(L"\\,\\")}, L"[s:root:\\,\\]"},
        {{String(L"a,%null%")}, L"[s:root:a,%null%]"},
    });
}

// A piece that reads as null is the text of null when more of the string follows.
TEST(TupleText, NullInFrontOfAComma) {
    ExpectBothWays({{{String(L"%null%,x")}, L"[s:root:%null%,x]"}, {{String(L"%null%,")}, L"[s:root:%null%,]"}});
    ExpectRead({{{String(L"%null%,x", L"unknown")}, L"[s:null,x]"}, {{NullString(L"unknown")}, L"[s:null]"}});
}

TEST(TupleText, TuplesOfOneElementNest) {
    ExpectBothWays({
        {{TupleOf({1})}, L"[t:[i:1]]"},
        {{TupleOf({TupleOf({TupleOf({String(L"a]")})})})}, L"[t:[t:[t:[s:root:a]]]]]"},
        {{1, TupleOf({2}), String(L"x,y"), TupleOf({NullString()})},
         L"[i:1],[t:[i:2]],[s:root:x,y],[t:[s:root:%null%]]"},
    });
}

TEST(TupleText, EmptyTupleIsWrittenAndNotRead) {
    EXPECT_EQ(L"", Write({}));
    EXPECT_EQ(L"t:", WriteTyped(TupleOf({})));
    EXPECT_EQ(L"[t:]", Write({TupleOf({})}));
    EXPECT_THAT(Doing([] { Read(L""); }), ThrowsSerializerCheck(kBrackets));
    EXPECT_THAT(Doing([] { ReadTyped(L"t:"); }), ThrowsSerializerCheck(kBrackets));
    EXPECT_THAT(Doing([] { Read(L"[t:]"); }), ThrowsSerializerCheck(kBrackets));
}

// The outer tuple is cut at the commas of the inner one.
TEST(TupleText, InnerTuplesWithCommasAreNotRead) {
    EXPECT_EQ(L"[t:[i:1],[i:2]]", Write({TupleOf({1, 2})}));
    EXPECT_THAT(Doing([] { Read(L"[t:[i:1],[i:2]]"); }), ThrowsSerializerCheck(kBrackets));
    EXPECT_EQ(L"[t:[s:root:a,b]]", Write({TupleOf({String(L"a,b")})}));
    EXPECT_THAT(Doing([] { Read(L"[t:[s:root:a,b]]"); }), ThrowsSerializerCheck(kBrackets));
}

TEST(TupleText, NullTuplesAreNotRead) {
    EXPECT_EQ(L"[t:null]", Write({Null(DataType::Tuple)}));
    EXPECT_THAT(Doing([] { Read(L"[t:null]"); }), ThrowsSerializerCheck(kBrackets));
}

// A bracket before a comma ends the string.
TEST(TupleText, StringsThatCloseTheirBracketAreNotReadBack) {
    EXPECT_EQ(L"[s:root:a],b]", Write({String(L"a],b")}));
    EXPECT_THAT(Doing([] { Read(L"[s:root:a],b]"); }), ThrowsSerializerCheck(kLength));
    EXPECT_EQ(L"[s:root:x],[i:1]", Write({String(L"x],[i:1")}));
    ExpectRead({{{String(L"x"), 1}, L"[s:root:x],[i:1]"}});
    EXPECT_THAT(Doing([] { Read(L"[s:root:a,b],c]"); }), ThrowsSerializerCheck(kLength));
}

TEST(TupleText, NoPointer) {
    EXPECT_THAT(Doing([] { TupleDataValueSerializer::ToString(RefCntPtr<Tuple>()); }), ThrowsLogicFailure("m_ptr"));
}

TEST(TupleText, OuterBrackets) {
    for (const wchar_t* text : {L"", L"[", L"]", L"x", L"[i:1", L"i:1]", L"i:1", L"null", L"%null%", L" [i:1]",
                                L"[i:1] ", L"[i:1],", L",[i:1]", L"(i:1)", L"]i:1["}) {
        EXPECT_THAT(Doing([&] { Read(text); }), ThrowsSerializerCheck(kBrackets)) << text;
    }
}

TEST(TupleText, PiecesThatStartNoElement) {
    for (const wchar_t* text : {L"[]", L"[i]", L"[:]", L"[,]", L"[,,,]", L"[i:1],i:2]", L"[i:1],[i]", L"[i:1],[]",
                                L"[i:1],,[i:2]", L"[i:1], [i:2]", L"[s:root:a],bcde]", L"[i:1],i:12345]"}) {
        EXPECT_THAT(Doing([&] { Read(text); }), ThrowsSerializerCheck(kLength)) << text;
    }
}

// Of tuples in tuples, the inside of each must be long enough.
TEST(TupleText, InnerPiecesThatStartNoElement) {
    for (const wchar_t* text : {L"[t:[]]", L"[t:[x]]", L"[t:[t:[]]]", L"[i:1],[t:[:]]"}) {
        EXPECT_THAT([&] { Read(text); }, ThrowsSerializerCheck(kLength)) << text;
    }
}

TEST(TupleText, OpenElementsOfOtherTypes) {
    for (const wchar_t* text : {L"[i:1,2]", L"[i:1,[i:2]", L"[i:1],[b:true,[i:2]", L"[i:null,x]", L"[u:null,,]",
                                L"[r:::1,5]", L"[d:2024-02-29,1]"}) {
        EXPECT_THAT(Doing([&] { Read(text); }), ThrowsMalformedElement()) << text;
    }
}

// The inside is read before its closing bracket is missed.
TEST(TupleText, FailuresOfElementsPass) {
    EXPECT_THAT(Doing([] { Read(L"[i:a,2]"); }), ThrowsMessageText(L"Data value parse error"));
    EXPECT_THAT(Doing([] { Read(L"[i:1],[i:a]"); }), ThrowsMessageText(L"Data value parse error"));
    EXPECT_THAT(Doing([] { Read(L"[i:1] ,[i:2]"); }), ThrowsMessageText(L"Data value parse error"));
    EXPECT_THAT(Doing([] { Read(L"[i:]"); }), ThrowsMessageText(L"Data value parse error"));
    EXPECT_THAT(Doing([] { Read(L"[x:1]"); }), ThrowsUnknownLetter());
    EXPECT_THAT(Doing([] { Read(L"[x:1,2]"); }), ThrowsUnknownLetter());
    EXPECT_THAT(Doing([] { Read(L"[::]"); }), ThrowsSerializerCheck("Serialized DataValue is not properly delimited"));
    EXPECT_THAT(Doing([] { Read(L"[abcd]"); }),
                ThrowsSerializerCheck("Serialized DataValue is not properly delimited"));
    EXPECT_THAT(
        [] { Read(L"[s:x,y]"); },
        ThrowsSerializerCheck("Serialized DataValue is not properly delimited, unable to parse string collation"));
    EXPECT_THAT(Doing([] { Read(L"[r:1]"); }),
                ThrowsSerializerCheck("Serialized DataValue is not properly delimited, unable to parse real scale and "
                                      "precision values"));
}

TEST(TupleText, DepthLimit) {
    EXPECT_EQ(256, PresLayerLimits::GetTupleDepth());
    EXPECT_EQ(NestedText(256), WriteTyped(Nested(256)));
    EXPECT_TRUE(Nested(256) == ReadTyped(NestedText(256)));
    EXPECT_THAT(Doing([] { WriteTyped(Nested(257)); }), ThrowsMalformedElement());
    EXPECT_THAT(Doing([] { ReadTyped(NestedText(257)); }), ThrowsMalformedElement());
}

TEST(TupleText, DepthLimitOfTuplesAlone) {
    EXPECT_EQ(NestedText(256).mid(2), TupleDataValueSerializer::ToString(Nested(256).GetTuple()));
    EXPECT_TRUE(Nested(256) == Read(NestedText(256).mid(2)));
    EXPECT_THAT(Doing([] { TupleDataValueSerializer::ToString(Nested(257).GetTuple()); }), ThrowsMalformedElement());
    EXPECT_THAT(Doing([] { Read(NestedText(257).mid(2)); }), ThrowsMalformedElement());
}

// Elements side by side are one level, and a failure leaves the count as it was.
TEST(TupleText, DepthCountsLevelsOnly) {
    const TupleDepth depth(2);
    Values many(100, TupleOf({1}));
    const TString text = Write(many);
    EXPECT_EQ(TupleOf(many), Read(text));
    for (int i = 0; i < 5; ++i) {
        EXPECT_THAT(Doing([] { ReadTyped(NestedText(3)); }), ThrowsMalformedElement());
        EXPECT_THAT(Doing([] { WriteTyped(Nested(3)); }), ThrowsMalformedElement());
        EXPECT_THAT(Doing([] { ReadTyped(L"t:[t:[i:x]]"); }), ThrowsMessageText(L"Data value parse error"));
        EXPECT_THAT(Doing([] { WriteTyped(TupleOf({TupleOf({Spatial()})})); }), ThrowsUnknownLetter());
    }
    EXPECT_EQ(Nested(2), ReadTyped(NestedText(2)));
    EXPECT_EQ(NestedText(2), WriteTyped(Nested(2)));
}

TEST(TupleText, HostileDepthFailsAtOnce) {
    EXPECT_THAT(Doing([] { ReadTyped(NestedText(200000)); }), ThrowsMalformedElement());
    EXPECT_THAT(Doing([] { WriteTyped(Nested(1000000)); }), ThrowsMalformedElement());
}
