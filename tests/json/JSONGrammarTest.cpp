// Which texts are JSON for the reader: RFC 8259, comments, text after the first value, and any unit but controls in
// strings.
#include <qvpreslayer/JSONSerializer.h>
#include <qvpreslayer/PresLayerLimits.h>

#include <string>

#include "json/JSONTestSupport.h"

namespace {

using JSONGrammar = JSONTest;

constexpr char16_t kHigh = 0xD83D;  // together U+1F600
constexpr char16_t kLow = 0xDE00;

std::string Repeated(std::size_t count, std::string_view text) {
    std::string result;
    result.reserve(count * text.size());
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

// A text of this many levels: nested bags, or a list of nested arrays.
std::string NestedBags(std::size_t levels) {
    return Repeated(levels - 1, "{\"subBag\":") + "{}" + std::string(levels - 1, '}');
}
std::string NestedArrays(std::size_t levels) {
    return "{\"textList\":" + std::string(levels - 1, '[') + std::string(levels - 1, ']') + "}";
}

// Every construct that can stand in a text; it ends with its last bracket.
constexpr std::string_view kEverything =
    " \t\r\n// a comment\n/* and ** another / */{ \"text\" : \"a\\\"\\\\\\/\\b\\f\\n\\r\\t\\u00e9\\uD83D\\ude00\" ,"
    "\"maxCount\":-12,\"unsigned\":0,\"real\":-0.25e+1,\"smallReal\":12.5E-2,\"big\":1e2,\"flag\":true,\"noShort\":"
    "null,"
    "\"flagList\":[true,false],\"textList\":[ ],\"intList\":[1,[2,4],[ ]/**/,7 ],\"myMap\":{ \"k\" : \"v\" , "
    "\"\":\"\"},"
    "\"subBag\":{\"subBag\":{}},\"items\":[{},{\"n\":1}],\"byKey\":{\"x\":null,\"y\":{}},\"rows\":[[\"a\"],[]]/*end*/}";

}  // namespace

TEST_F(JSONGrammar, Accepted) {
    const struct {
        const char* json;
        const char* bag;
    } cases[] = {
        {"{}", ""},
        {" \t\r\n{ \t\r\n} \t\r\n", ""},
        {R"( { "n" : 1 , "c" : "x" } )", "c=x n=1"},
        {"{\r\n\t\"n\"\r\n:\r\n1\r\n}", "n=1"},
        {R"({"textList":[ ]})", "text-list=[]"},
        {R"({"textList":[ "a" , "b" ]})", "text-list=[a,b]"},
        // Strings.
        {R"({"c":"\"\\\/"})", "c=\"\\/"},
        {R"({"c":"/"})", "c=/"},
        {R"({"c":"\b\f\n\r\t"})", "c=\b\f\n\r\t"},
        {R"({"c":"\u0041\u00e9\u00E9\u20AC\uFFFF"})", "c=A\xC3\xA9\xC3\xA9\xE2\x82\xAC\xEF\xBF\xBF"},
        {R"({"c":"\ud83d\ude00"})", "c=\xF0\x9F\x98\x80"},
        {R"({"c":"\uD83D\uDE00"})", "c=\xF0\x9F\x98\x80"},
        {"{\"c\":\"\x7F\"}", "c=\x7F"},
        {R"({"\u006e":1})", "n=1"},
        {R"({"max\u0043ount":1})", "max-count=1"},
        {R"({"c":"//"})", "c=//"},
        {R"({"c":"/*"})", "c=/*"},
        // Numbers.
        {R"({"c":0})", "c=0"},
        {R"({"c":-0})", "c=0"},
        {R"({"c":10})", "c=10"},
        {R"({"c":0.5})", "c=0.5"},
        {R"({"c":0e0})", "c=0"},
        {R"({"c":1E+00})", "c=1"},
        {R"({"c":1e-00})", "c=1"},
        {R"({"c":-1.0e1})", "c=-10"},
        // Comments stand where blanks may stand.
        {"//\n{}", ""},
        {"/**/{}", ""},
        {"/***/{}", ""},
        {"/* * / \" { */{}", ""},
        {"/* // */{}", ""},
        {"// /*\n{}", ""},
        {"// a\r\n{}", ""},
        {"/*\n\n*/ //\n/**/{}", ""},
        {R"({/**/"n"/**/:/**/1/**/,/**/"c"/**/:/**/"x"/**/})", "c=x n=1"},
        {"{//\n\"n\"//\n://\n1//\n}//", "n=1"},
        {R"({"intList":/**/[/**/1/**/,/**/2/**/]})", "int-list=[1,2]"},
        {R"({"textList":[/**/]})", "text-list=[]"},
        {R"({"flag":true/**/})", "flag=true"},
        // What follows the first value is not looked at.
        {R"({"n":1} rest)", "n=1"},
        {R"({"n":1}})", "n=1"},
        {R"({"n":1}{"n":2})", "n=1"},
        {R"({"n":1},)", "n=1"},
        {R"({"n":1}/*)", "n=1"},
        {R"({"n":1}/x)", "n=1"},
        {"{\"n\":1}\x01\"", "n=1"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.json);
        EXPECT_EQ(c.bag, Outcome(c.json));
    }
}

TEST_F(JSONGrammar, Refused) {
    const char* const cases[] = {
        "",
        " ",
        "\n\t\r ",
        "//",
        "// only a comment\n",
        "/**/",
        "/",
        "/*",
        "/* *",
        "/*/",
        "*/{}",
        "/x{}",
        "/ *x*/{}",
        "/* /* */ */{}",
        "//\r{}",  // a carriage return does not end a comment
        "{",
        "}",
        "[",
        "]",
        ",",
        ":",
        "{]",
        "[}",
        "{\"n\"}",
        "{\"n\":}",
        "{\"n\" 1}",
        "{\"n\"::1}",
        "{\"n\",1}",
        "{:1}",
        "{1:1}",
        "{n:1}",
        "{'n':1}",
        "{\"n\":1,}",
        "{,}",
        "{,\"n\":1}",
        "{\"n\":1,,\"c\":2}",
        "{\"n\":1 \"c\":2}",
        "{\"n\":1;\"c\":2}",
        "{true:1}",
        "{null}",
        "{[]}",
        "{{}}",
        "{\"n\":1",
        // Arrays.
        "{\"intList\":[1,]}",
        "{\"intList\":[,1]}",
        "{\"intList\":[1 2]}",
        "{\"intList\":[1,,2]}",
        "{\"intList\":[,]}",
        "{\"intList\":[1}",
        "{\"intList\":[1]",
        "{\"intList\":[1;2]}",
        "{\"intList\":[1:2]}",
        "[1,]",
        "[1",
        "[1 2]",
        "[1,/**/]",
        "{\"intList\":[1,//\n]}",
        "{\"n\":1,/**/}",
        "{/**/,\"n\":1}",
        // Numbers.
        "{\"n\":01}",
        "{\"n\":-01}",
        "{\"n\":00}",
        "{\"n\":+5}",
        "{\"n\":.5}",
        "{\"n\":1.}",
        "{\"n\":-}",
        "{\"n\":-.5}",
        "{\"n\":1.e1}",
        "{\"n\":1e}",
        "{\"n\":1e+}",
        "{\"n\":1e-}",
        "{\"n\":1e1.5}",
        "{\"n\":1.5.5}",
        "{\"n\":--1}",
        "{\"n\":-+1}",
        "{\"n\":0x10}",
        "{\"n\":1a}",
        "{\"n\":1_000}",
        "{\"n\":- 1}",
        "{\"n\":1 .5}",
        "{\"n\":1/2}",
        "{\"n\":NaN}",
        "{\"n\":nan}",
        "{\"n\":Infinity}",
        "{\"n\":-Infinity}",
        "{\"n\":-inf}",
        "{\"n\":1e 5}",
        // Words.
        "{\"n\":tru}",
        "{\"n\":True}",
        "{\"n\":TRUE}",
        "{\"n\":truex}",
        "{\"n\":fals}",
        "{\"n\":falsee}",
        "{\"n\":nul}",
        "{\"n\":Null}",
        "{\"n\":nulll}",
        "{\"n\":t}",
        "{\"n\":undefined}",
        "{\"n\":x}",
        "{\"n\":t/**/rue}",
        // Strings.
        "{\"c\":\"",
        "{\"c\":\"x",
        "{\"c\":\"x}",
        "{\"c\":'x'}",
        "{\"c\":\"\\\"}",
        "{\"c\":\"\\x41\"}",
        "{\"c\":\"\\a\"}",
        "{\"c\":\"\\v\"}",
        "{\"c\":\"\\0\"}",
        "{\"c\":\"\\'\"}",
        "{\"c\":\"\\U0041\"}",
        "{\"c\":\"\\ n\"}",
        "{\"c\":\"\\u\"}",
        "{\"c\":\"\\u1\"}",
        "{\"c\":\"\\u12\"}",
        "{\"c\":\"\\u123\"}",
        "{\"c\":\"\\u123g\"}",
        "{\"c\":\"\\u 123\"}",
        "{\"c\":\"\\u+123\"}",
        "{\"c\":\"\\u0x1\"}",
        "{\"c\":\"\\\n\"}",
        "{\"c\":\"\n\"}",
        "{\"c\":\"\r\"}",
        "{\"c\":\"\t\"}",
        "{\"c\":\"a\x01\"}",
        "{\"c\":\"\x1F\"}",
        "{\"\t\":1}",
        "{\"\\x\":1}",
        "{\"c\":\"a\" \"b\"}",
        // Blanks are four.
        "\x0B{}",
        "\x0C{}",
        "\x01{}",
        "\x7F{}",
        "{\x0C}",
        "\xC2\xA0{}",
        "\xE2\x80\xA8{}",
        "\xE3\x80\x80{}",
        "\xC2\x85{}",
        "\xEF\xBB\xBF{}",  // a byte-order mark
        "\xEF\xBF\xBE{}",
    };
    for (const char* const json : cases) {
        EXPECT_EQ("not valid", Outcome(json)) << json;
    }
}

TEST_F(JSONGrammar, EveryUnitOutsideStrings) {
    // Before a value stand the four blanks and nothing else.
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        std::u16string json(1, static_cast<char16_t>(unit));
        json += u"{}";
        const bool blank = unit == ' ' || unit == '\t' || unit == '\n' || unit == '\r';
        if (unit >= '0' && unit <= '9') {
            continue;  // a number with a rest
        }
        ASSERT_EQ(blank ? "" : "not valid", Outcome(TString(json))) << std::hex << unit;
    }
}

TEST_F(JSONGrammar, EveryUnitRawInAString) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        if (unit == '"' || unit == '\\') {
            continue;
        }
        const std::u16string value{u'a', static_cast<char16_t>(unit), u'b'};
        const TString json(u"{\"c\":\"" + value + u"\"}");
        if (unit >= 0x01 && unit <= 0x1F) {
            ASSERT_EQ("not valid", Outcome(json)) << std::hex << unit;
        } else {
            const auto bag = m_json.ToParameters(json);
            ASSERT_TRUE(TString(value) == GetParameterValue<TString>(*bag, view::kC)) << std::hex << unit;
        }
    }
}

TEST_F(JSONGrammar, EveryUnitEscapedInAString) {
    const char16_t* const digits[] = {u"0123456789abcdef", u"0123456789ABCDEF"};
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const char16_t* const digit = digits[unit & 1];
        std::u16string json = u"{\"c\":\"a\\u";
        for (const unsigned shift : {12U, 8U, 4U, 0U}) {
            json += digit[(unit >> shift) & 0xF];
        }
        json += u"b\"}";
        const auto bag = m_json.ToParameters(TString(json));
        const std::u16string value{u'a', static_cast<char16_t>(unit), u'b'};
        ASSERT_TRUE(TString(value) == GetParameterValue<TString>(*bag, view::kC)) << std::hex << unit;
    }
}

TEST_F(JSONGrammar, SurrogatesComeBackAsTheyWere) {
    const std::u16string values[] = {
        {kHigh, kLow},
        {kHigh},
        {kLow},
        {kLow, kHigh},
        {kHigh, kHigh, kLow},
        {kHigh, kLow, kLow},
        {kHigh, u'x', kLow},
        {u'x', kHigh, kLow, kHigh},
        {kHigh, 0xFFFD, kLow},
        {0xDBFF, 0xDFFF, 0xD800, 0xDC00},
        {0xFFFE, 0xFFFF, 0xFEFF},
        {u'a', u'\0', u'b', u'\0'},
        {u'\0'},
    };
    for (const auto& value : values) {
        const auto bag = m_json.ToParameters(TString(u"{\"c\":\"" + value + u"\"}"));
        EXPECT_TRUE(TString(value) == GetParameterValue<TString>(*bag, view::kC));
        const TString written = m_json.ToString(MakeBag({{view::kC, Text(value)}}), JSONSerializer::Compact);
        EXPECT_TRUE(TString(u"{\"c\": \"" + value + u"\"}") == written);
        EXPECT_TRUE(TString(value) == GetParameterValue<TString>(*m_json.ToParameters(written), view::kC));
    }
}

TEST_F(JSONGrammar, EscapedSurrogatesNeedNoPartner) {
    const struct {
        const wchar_t* json;
        std::u16string value;
    } cases[] = {
        {LR"({"c":"\ud83d"})", {kHigh}},
        {LR"({"c":"\ude00"})", {kLow}},
        {LR"({"c":"\ude00\ud83d"})", {kLow, kHigh}},
        {LR"({"c":"\ud83dx"})", {kHigh, u'x'}},
        {LR"({"c":"\ud83d\n"})", {kHigh, u'\n'}},
        {LR"({"c":"\ud83d\u0041"})", {kHigh, u'A'}},
        {LR"({"c":"\ud83d\ud83d\ude00"})", {kHigh, kHigh, kLow}},
        {LR"({"c":"\ud800"})", {0xD800}},
        {LR"({"c":"\u0000"})", {u'\0'}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(TString(c.json).ToUtf8());
        EXPECT_TRUE(TString(c.value) == GetParameterValue<TString>(*m_json.ToParameters(c.json), view::kC));
    }
}

TEST_F(JSONGrammar, RawAndEscapedHalvesOfAPairJoin) {
    const TString rawThenEscaped(u"{\"c\":\"" + std::u16string(1, kHigh) + u"\\ude00\"}");
    const TString escapedThenRaw(u"{\"c\":\"\\ud83d" + std::u16string(1, kLow) + u"\"}");
    for (const auto& json : {rawThenEscaped, escapedThenRaw}) {
        EXPECT_EQ(TString(L"\U0001F600"), GetParameterValue<TString>(*m_json.ToParameters(json), view::kC));
    }
}

TEST_F(JSONGrammar, NamesAndKeysHoldAnyUnit) {
    const std::u16string name{u'a', u'\0', kLow, u'b'};
    const auto e = Caught<ParameterNotFoundException>([&] { m_json.ToParameters(TString(u"{\"" + name + u"\":1}")); });
    ASSERT_TRUE(e);
    EXPECT_TRUE(TString(name) == e->GetName());

    const auto bag = m_json.ToParameters(TString(u"{\"myMap\":{\"" + name + u"\":\"" + name + u"\"}}"));
    const std::map<TString, TString> expected{{TString(name), TString(name)}};
    EXPECT_TRUE(expected == (GetParameterValue<std::map<TString, TString>>(*bag, view::kMyMap)));
}

TEST_F(JSONGrammar, UnpairedSurrogatesOutsideStringsAreRefused) {
    for (const char16_t unit : {kHigh, kLow}) {
        EXPECT_EQ("not valid", Outcome(TString(u"{\"n\":" + std::u16string(1, unit) + u"}")));
        EXPECT_EQ("not valid", Outcome(TString(u"{" + std::u16string(1, unit) + u"}")));
    }
}

TEST_F(JSONGrammar, AnyUnitMayStandInAComment) {
    std::u16string units;
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        units += unit == '/' ? u' ' : static_cast<char16_t>(unit);
    }
    EXPECT_EQ("n=1", Outcome(TString(u"/*" + units + u"*/{\"n\":1}")));
    std::erase(units, u'\n');
    EXPECT_EQ("n=1", Outcome(TString(u"//" + units + u"\n{\"n\":1}")));
}

TEST_F(JSONGrammar, NULOutsideStringsIsRefusedBeforeTheEndAndIgnoredAfterIt) {
    const std::u16string nul(1, u'\0');
    EXPECT_EQ("not valid", Outcome(TString(nul)));
    EXPECT_EQ("not valid", Outcome(TString(nul + u"{}")));
    EXPECT_EQ("not valid", Outcome(TString(u"{" + nul + u"}")));
    EXPECT_EQ("not valid", Outcome(TString(u"{\"n\":1" + nul + u"}")));
    EXPECT_EQ("n=1", Outcome(TString(u"{\"n\":1}" + nul)));
}

TEST_F(JSONGrammar, LongStringsSurviveWhateverTheirParts) {
    // Pairs, unpaired halves and NULs at every place relative to the blocks that a parser may work in.
    for (std::size_t shift = 0; shift < 5; ++shift) {
        std::u16string value(shift, u'x');
        while (value.size() < 70000) {
            value += {kHigh, kLow, u'é', u'\0', kLow, u'z', u'\u20AC'};
        }
        const auto bag = m_json.ToParameters(TString(u"{\"c\":\"" + value + u"\"}"));
        ASSERT_TRUE(TString(value) == GetParameterValue<TString>(*bag, view::kC)) << shift;
    }
}

TEST_F(JSONGrammar, EveryPrefixOfATextIsNotValid) {
    ASSERT_EQ(
        "max-count=-12 unsigned=0 big=100 small-real=0.125 real=-2.5 flag=true "
        "text=a\"\\/\b\f\n\r\t\xC3\xA9\xF0\x9F\x98"
        "\x80 int-list=[1,2,2,2,2,7] flag-list=[true,false] text-list=[] my-map={:,k:v} sub-bag=(sub-bag=()) "
        "items=<(),(n=1)> by-key=<x:null,y:()> rows=<(rows=[a]),(rows=[])>",
        Outcome(kEverything));
    for (std::size_t length = 0; length < kEverything.size(); ++length) {
        ASSERT_EQ("not valid", Outcome(kEverything.substr(0, length))) << kEverything.substr(0, length);
    }
}

TEST_F(JSONGrammar, DepthLimit) {
    EXPECT_NE("not valid", Outcome(NestedBags(512)));
    EXPECT_EQ("not valid", Outcome(NestedBags(513)));
    EXPECT_EQ("text-list=[]", Outcome(NestedArrays(512)));
    EXPECT_EQ("not valid", Outcome(NestedArrays(513)));
}

TEST_F(JSONGrammar, DepthLimitHoldsForEveryRoot) {
    const auto arrays = [](std::size_t levels) { return std::string(levels, '[') + std::string(levels, ']'); };
    EXPECT_EQ("runtime: the JSON root is array, not object", Outcome(arrays(512)));
    EXPECT_EQ("not valid", Outcome(arrays(513)));
}

TEST_F(JSONGrammar, WhatWasReadAtTheDepthLimitCanBeWritten) {
    const auto bag = Read(NestedBags(512));
    const std::string json = m_json.ToString(bag, JSONSerializer::Compact).ToUtf8();
    EXPECT_EQ(NestedBags(512), json);
}

TEST_F(JSONGrammar, OnlyNestingCountsAsDepth) {
    EXPECT_EQ("text-list=[]", Outcome("{\"textList\":[" + Repeated(2000, "[],") + "[]]}"));
    EXPECT_EQ("c=" + std::string(2000, '['), Outcome("{\"c\":\"" + std::string(2000, '[') + "\"}"));
    EXPECT_EQ("n=1", Outcome("/*" + std::string(2000, '{') + "*/{\"n\":1}"));
}

TEST_F(JSONGrammar, AMillionLevelsAreRefused) {
    constexpr std::size_t kLevels = 1000000;
    EXPECT_EQ("not valid", Outcome(std::string(kLevels, '[')));
    EXPECT_EQ("not valid", Outcome(std::string(kLevels, '{')));
    EXPECT_EQ("not valid", Outcome(NestedBags(kLevels)));
    EXPECT_EQ("not valid", Outcome(NestedArrays(kLevels)));
    EXPECT_EQ("not valid", Outcome("/*\"*/" + NestedArrays(kLevels)));  // comments hide no brackets
    EXPECT_EQ("not valid", Outcome("//\"\n" + NestedBags(kLevels)));
    EXPECT_EQ("not valid", Outcome(Repeated(kLevels, "[/*\"*/")));
}

TEST_F(JSONGrammar, DepthLimitCanBeChanged) {
    const int earlier = PresLayerLimits::GetJSONDepth();
    EXPECT_EQ(512, earlier);
    PresLayerLimits::SetJSONDepth(3);
    EXPECT_EQ("sub-bag=(sub-bag=())", Outcome(NestedBags(3)));
    EXPECT_EQ("not valid", Outcome(NestedBags(4)));
    EXPECT_EQ("not valid", Outcome(NestedArrays(4)));
    PresLayerLimits::SetJSONDepth(600);
    EXPECT_NE("not valid", Outcome(NestedBags(600)));
    EXPECT_EQ("not valid", Outcome(NestedBags(601)));
    PresLayerLimits::SetJSONDepth(earlier);
}

TEST_F(JSONGrammar, NotValidCarriesTheFixedMessage) {
    const auto e = Caught<JSONParseException>([&] { Read("{"); });
    ASSERT_TRUE(e);
    EXPECT_EQ(1732813050U, e->GetStringId());
    EXPECT_TRUE(e->GetMessageText() == u"The text is not valid JSON.");
    EXPECT_EQ(0, e->GetID());
    EXPECT_EQ(PTC_None, e->GetExpectedKind());
}

TEST_F(JSONGrammar, UnquotedAndBareFormsAreNotRead) {
    const auto bag = MakeBag({{view::kMaxCount, Val(1)}, {view::kText, Text(L"t")}});
    EXPECT_EQ("not valid", Outcome(Write(bag, JSONSerializer::UnquotedNames)));
    EXPECT_EQ("runtime: the JSON root is integer, not object", Outcome(Write(bag, JSONSerializer::Bare)));
}
