#include <qvpreslayer/BuildParameterStrings.h>  // first: the header stands alone

#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "support/Printing.h"

namespace {

using Events = std::function<void(BuildParameterStrings&)>;

constexpr JSONSerializer::OutputType kAllTypes[] = {JSONSerializer::Pretty, JSONSerializer::Compact,
                                                    JSONSerializer::Bare, JSONSerializer::BareRawNames,
                                                    JSONSerializer::UnquotedNames};

// The text of these events, opening and closing brace included where the form has them.
std::string TextOf(JSONSerializer::OutputType type, bool shortNames, const Events& events) {
    TString out;
    BuildParameterStrings visitor(out, type, false, false, shortNames);
    events(visitor);
    visitor.Finish();
    return out.ToUtf8();
}
std::string Compact(const Events& events) { return TextOf(JSONSerializer::Compact, false, events); }
std::string Pretty(const Events& events) { return TextOf(JSONSerializer::Pretty, false, events); }

void NumberAndList(BuildParameterStrings& visitor) {
    visitor.Parameter(L"a", L"1", PTC_Number);
    visitor.StartList(L"b", PTC_Text);
    visitor.ListItem(L"x");
    visitor.ListItem(L"y");
    visitor.EndList(L"b");
}

void DashedNames(BuildParameterStrings& visitor) {
    visitor.Parameter(L"max-count", L"3", PTC_Number);
    visitor.StartList(L"int-list", PTC_Number);
    visitor.ListItem(L"1");
    visitor.EndList(L"int-list");
    visitor.StartMap(L"my-map", PTC_Text);
    visitor.MapItem(L"a-b", L"x", false);
    visitor.MapItem(L"c-d", L"y", true);
    visitor.EndMap(L"my-map");
    visitor.StartMap(L"by-key", PTC_Structure);
    visitor.StartComposite(L"k-l", true);
    visitor.EndComposite(L"k-l");
    visitor.NullMapItem(L"m-n", false);
    visitor.NullMapItem(L"o-p", true);
    visitor.EndMap(L"by-key");
    visitor.StartComposite(L"sub-bag", false);
    visitor.EndComposite(L"sub-bag");
}

}  // namespace

TEST(BuildParameterStrings, NoEventGivesBracesAlone) {
    const char* const texts[] = {"{\n\n}", "{}", "", "", "{}"};
    for (const auto type : kAllTypes) {
        SCOPED_TRACE(type);
        EXPECT_EQ(texts[type], TextOf(type, false, [](BuildParameterStrings&) {}));
        EXPECT_EQ(texts[type], TextOf(type, true, [](BuildParameterStrings&) {}));
    }
}

TEST(BuildParameterStrings, OpeningBraceIsWrittenAtOnceAndClosingOneByFinish) {
    const struct {
        JSONSerializer::OutputType type;
        const wchar_t* opened;
        const wchar_t* finished;
    } cases[] = {
        {JSONSerializer::Pretty, L"{\n", L"{\n\n}"},
        {JSONSerializer::Compact, L"{", L"{}"},
        {JSONSerializer::Bare, L"", L""},
        {JSONSerializer::BareRawNames, L"", L""},
        {JSONSerializer::UnquotedNames, L"{", L"{}"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.type);
        TString out;
        BuildParameterStrings visitor(out, c.type, false, false, false);
        EXPECT_EQ(TString(c.opened), out);
        visitor.Finish();
        EXPECT_EQ(TString(c.finished), out);
    }
}

TEST(BuildParameterStrings, AppendsToWhatIsThere) {
    TString out(L"before ");
    BuildParameterStrings visitor(out, JSONSerializer::Compact, false, false, false);
    NumberAndList(visitor);
    visitor.Finish();
    EXPECT_EQ(TString(LR"(before {"a": 1,"b":["x","y"]})"), out);
}

TEST(BuildParameterStrings, PrettyPutsEachElementOnALineOfItsOwn) {
    EXPECT_EQ(
        "{\n"
        "  \"a\": 1, \n"
        "  \"b\": [\n"
        "    \"x\", \n"
        "    \"y\"\n"
        "  ]\n"
        "}",
        TextOf(JSONSerializer::Pretty, true, NumberAndList));
}

TEST(BuildParameterStrings, CompactIsOneLine) {
    EXPECT_EQ(R"({"a": 1,"b":["x","y"]})", TextOf(JSONSerializer::Compact, true, NumberAndList));
}

TEST(BuildParameterStrings, DashedNamesInEveryFormUnderVerboseNames) {
    const char* const texts[] = {
        "{\n"
        "  \"maxCount\": 3, \n"
        "  \"intList\": [\n"
        "    1\n"
        "  ], \n"
        "  \"myMap\": {\n"
        "    \"aB\": \"x\", \n"
        "    \"c-d\": \"y\"\n"
        "  }, \n"
        "  \"byKey\": {\n"
        "    \"k-l\": {\n"
        "\n"
        "    }, \n"
        "    \"mN\": null, \n"
        "    \"o-p\": null\n"
        "  }, \n"
        "  \"subBag\": {\n"
        "\n"
        "  }\n"
        "}",
        R"({"maxCount": 3,"intList":[1],"myMap":{"aB":"x","c-d":"y"},)"
        R"("byKey":{"k-l":{},"mN":null,"o-p":null},"subBag":{}})",
        R"(3,"intList":[1],"myMap":{"aB":"x","c-d":"y"},)"
        R"("byKey":{"k-l":{},"mN":null,"o-p":null},"subBag":{})",
        R"(3,"int-list":[1],"my-map":{"a-b":"x","c-d":"y"},)"
        R"("by-key":{"k-l":{},"m-n":null,"o-p":null},"sub-bag":{})",
        R"({maxCount: 3,intList:[1],myMap:{aB:"x",c-d:"y"},byKey:{k-l:{},mN:null,o-p:null},subBag:{}})",
    };
    for (const auto type : kAllTypes) {
        SCOPED_TRACE(type);
        EXPECT_EQ(texts[type], TextOf(type, false, DashedNames));
    }
}

TEST(BuildParameterStrings, DashedNamesInEveryFormUnderShortNames) {
    const char* const texts[] = {
        "{\n"
        "  \"max-count\": 3, \n"
        "  \"int-list\": [\n"
        "    1\n"
        "  ], \n"
        "  \"my-map\": {\n"
        "    \"a-b\": \"x\", \n"
        "    \"c-d\": \"y\"\n"
        "  }, \n"
        "  \"by-key\": {\n"
        "    \"k-l\": {\n"
        "\n"
        "    }, \n"
        "    \"m-n\": null, \n"
        "    \"o-p\": null\n"
        "  }, \n"
        "  \"sub-bag\": {\n"
        "\n"
        "  }\n"
        "}",
        R"({"max-count": 3,"int-list":[1],"my-map":{"a-b":"x","c-d":"y"},)"
        R"("by-key":{"k-l":{},"m-n":null,"o-p":null},"sub-bag":{}})",
        R"(3,"int-list":[1],"my-map":{"a-b":"x","c-d":"y"},)"
        R"("by-key":{"k-l":{},"m-n":null,"o-p":null},"sub-bag":{})",
        R"(3,"int-list":[1],"my-map":{"a-b":"x","c-d":"y"},)"
        R"("by-key":{"k-l":{},"m-n":null,"o-p":null},"sub-bag":{})",
        R"({max-count: 3,int-list:[1],my-map:{a-b:"x",c-d:"y"},by-key:{k-l:{},m-n:null,o-p:null},sub-bag:{}})",
    };
    for (const auto type : kAllTypes) {
        SCOPED_TRACE(type);
        EXPECT_EQ(texts[type], TextOf(type, true, DashedNames));
    }
}

TEST(BuildParameterStrings, EmptyContainersInPrettyHoldAnEmptyLine) {
    const auto events = [](BuildParameterStrings& visitor) {
        visitor.StartList(L"e-list", PTC_Text);
        visitor.EndList(L"e-list");
        visitor.StartComposite(L"e-bag", false);
        visitor.EndComposite(L"e-bag");
        visitor.StartMap(L"e-map", PTC_Text);
        visitor.EndMap(L"e-map");
    };
    EXPECT_EQ("{\n  \"eList\": [\n\n  ], \n  \"eBag\": {\n\n  }, \n  \"eMap\": {\n\n  }\n}", Pretty(events));
    EXPECT_EQ(R"({"eList":[],"eBag":{},"eMap":{}})", Compact(events));
}

TEST(BuildParameterStrings, ColonsOfEachKindOfElement) {
    const auto events = [](BuildParameterStrings& visitor) {
        visitor.StartMap(L"m", PTC_Bool);
        visitor.MapItem(L"k", L"true", false);
        visitor.NullMapItem(L"l", false);
        visitor.StartComposite(L"o", true);
        visitor.Parameter(L"p", L"2", PTC_Number);
        visitor.EndComposite(L"o");
        visitor.EndMap(L"m");
    };
    EXPECT_EQ(R"({"m":{"k":true,"l":null,"o":{"p": 2}}})", Compact(events));
    EXPECT_EQ("{\n  \"m\": {\n    \"k\": true, \n    \"l\": null, \n    \"o\": {\n      \"p\": 2\n    }\n  }\n}",
              Pretty(events));
}

TEST(BuildParameterStrings, ElementsOfListsHaveNoNames) {
    const auto events = [](BuildParameterStrings& visitor) {
        visitor.StartList(L"list", PTC_Number);
        visitor.ListItem(L"9");
        visitor.StartList(L"int-rle", PTC_Number);
        visitor.ListItem(L"1");
        visitor.ListItem(L"5");
        visitor.EndList(L"int-rle");
        visitor.StartComposite(L"record", false);
        visitor.Parameter(L"n", L"1", PTC_Number);
        visitor.EndComposite(L"record");
        visitor.StartMap(L"map", PTC_Text);
        visitor.EndMap(L"map");
        visitor.Parameter(L"scalar", L"7", PTC_Number);
        visitor.EndList(L"list");
    };
    EXPECT_EQ(R"({"list":[9,[1,5],{"n": 1},{},7]})", Compact(events));
    EXPECT_EQ(
        "{\n  \"list\": [\n    9, \n    [\n      1, \n      5\n    ], \n    {\n      \"n\": 1\n    }, \n    {\n\n    "
        "}, "
        "\n    7\n  ]\n}",
        Pretty(events));
}

TEST(BuildParameterStrings, MapAndNullItemsWriteTheirColonAlsoWithoutAKey) {
    const auto events = [](BuildParameterStrings& visitor) {
        visitor.StartList(L"b", PTC_Number);
        visitor.MapItem(L"k", L"1", true);
        visitor.NullMapItem(L"l", true);
        visitor.EndList(L"b");
    };
    EXPECT_EQ(R"({"b":[:1,:null]})", Compact(events));
    EXPECT_EQ("{\n  \"b\": [\n    : 1, \n    : null\n  ]\n}", Pretty(events));
}

TEST(BuildParameterStrings, BareDropsTheFirstNameWhateverItIs) {
    const struct {
        Events events;
        const char* text;
    } cases[] = {
        {[](BuildParameterStrings& v) { v.Parameter(L"a", L"1", PTC_Text); }, R"("1")"},
        {[](BuildParameterStrings& v) { v.StartList(L"a", PTC_Text), v.EndList(L"a"); }, "[]"},
        {[](BuildParameterStrings& v) { v.StartMap(L"a", PTC_Text), v.EndMap(L"a"); }, "{}"},
        {[](BuildParameterStrings& v) { v.StartComposite(L"a", false), v.EndComposite(L"a"); }, "{}"},
        {[](BuildParameterStrings& v) { v.StartComposite(L"a", true), v.EndComposite(L"a"); }, "{}"},
        {[](BuildParameterStrings& v) { v.MapItem(L"k", L"1", false); }, R"(:"1")"},  // the base frame quotes
        {[](BuildParameterStrings& v) { v.MapItem(L"k", L"1", true); }, R"(:"1")"},
        {[](BuildParameterStrings& v) { v.NullMapItem(L"k", false); }, ":null"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(c.text, TextOf(JSONSerializer::Bare, false, c.events));
        EXPECT_EQ(c.text, TextOf(JSONSerializer::BareRawNames, false, c.events));
    }
}

TEST(BuildParameterStrings, BareWritesTheNamesAfterTheFirst) {
    const auto listFirst = [](BuildParameterStrings& visitor) {
        visitor.StartList(L"list", PTC_Number);
        visitor.ListItem(L"1");
        visitor.EndList(L"list");
        visitor.Parameter(L"n-y", L"t", PTC_Text);
    };
    EXPECT_EQ(R"([1],"nY": "t")", TextOf(JSONSerializer::Bare, false, listFirst));
    EXPECT_EQ(R"([1],"n-y": "t")", TextOf(JSONSerializer::BareRawNames, false, listFirst));

    const auto compositeFirst = [](BuildParameterStrings& visitor) {
        visitor.StartComposite(L"bag", false);
        visitor.Parameter(L"a-b", L"1", PTC_Number);
        visitor.EndComposite(L"bag");
    };
    EXPECT_EQ(R"({"aB": 1})", TextOf(JSONSerializer::Bare, false, compositeFirst));
}

TEST(BuildParameterStrings, NumbersAndTruthValuesAreBareEverythingElseIsQuoted) {
    for (int kind = PTC_None; kind <= PTC_StructureMap; ++kind) {
        SCOPED_TRACE(kind);
        const auto category = static_cast<ParameterTypeCategory>(kind);
        const bool bare = category == PTC_Number || category == PTC_Bool;
        const std::string value = bare ? "x" : "\"x\"";
        EXPECT_EQ("{\"a\": " + value + "}", Compact([&](auto& v) { v.Parameter(L"a", L"x", category); }));
        EXPECT_EQ("{\"a\":[" + value + "]}", Compact([&](auto& v) {
                      v.StartList(L"a", category);
                      v.ListItem(L"x");
                      v.EndList(L"a");
                  }));
        EXPECT_EQ("{\"a\":{\"k\":" + value + "}}", Compact([&](auto& v) {
                      v.StartMap(L"a", category);
                      v.MapItem(L"k", L"x", false);
                      v.EndMap(L"a");
                  }));
    }
}

TEST(BuildParameterStrings, ItemsTakeTheKindOfTheInnermostContainer) {
    EXPECT_EQ(R"({"a":[1,["t"],2,{},3]})", Compact([](auto& v) {
                  v.StartList(L"a", PTC_Number);
                  v.ListItem(L"1");
                  v.StartList(L"b", PTC_Text);
                  v.ListItem(L"t");
                  v.EndList(L"b");
                  v.ListItem(L"2");
                  v.StartComposite(L"c", false);
                  v.EndComposite(L"c");
                  v.ListItem(L"3");
                  v.EndList(L"a");
              }));
}

TEST(BuildParameterStrings, ItemsInACompositeAreQuoted) {
    EXPECT_EQ(R"({"a":{"k":"1"}})", Compact([](auto& v) {
                  v.StartComposite(L"a", false);
                  v.MapItem(L"k", L"1", false);
                  v.EndComposite(L"a");
              }));
}

TEST(BuildParameterStrings, CamelNamesAreNotEscapedAllOthersAre) {
    const auto name = [](auto& v) { v.Parameter(L"a\"-b", L"1", PTC_Number); };
    EXPECT_EQ("{\"a\"B\": 1}", TextOf(JSONSerializer::Compact, false, name));
    EXPECT_EQ("{\"a\\\"-b\": 1}", TextOf(JSONSerializer::Compact, true, name));
    EXPECT_EQ("{a\"B: 1}", TextOf(JSONSerializer::UnquotedNames, false, name));
    EXPECT_EQ("{a\\\"-b: 1}", TextOf(JSONSerializer::UnquotedNames, true, name));

    const auto second = [](auto& v) {
        v.Parameter(L"first", L"1", PTC_Number);
        v.Parameter(L"a\n-b", L"2", PTC_Number);
    };
    EXPECT_EQ("1,\"a\\n-b\": 2", TextOf(JSONSerializer::BareRawNames, false, second));
    EXPECT_EQ("1,\"a\nB\": 2", TextOf(JSONSerializer::Bare, false, second));
}

TEST(BuildParameterStrings, RawKeysAreEscapedAndOtherKeysTurnedToCamelCase) {
    // A key is turned like a parameter's name and therefore not escaped: members can be smuggled in through keys.
    const auto keys = [](auto& v) {
        v.StartMap(L"m", PTC_Text);
        v.MapItem(L"x\":1,\"ad-min", L"t", false);
        v.MapItem(L"x\":1,\"ad-min", L"t", true);
        v.NullMapItem(L"\t-z", false);
        v.NullMapItem(L"\t-z", true);
        v.StartComposite(L"\"-z", true);
        v.EndComposite(L"\"-z");
        v.EndMap(L"m");
    };
    EXPECT_EQ(
        "{\"m\":{\"x\":1,\"adMin\":\"t\",\"x\\\":1,\\\"ad-min\":\"t\",\"\tZ\":null,\"\\t-z\":null,\"\\\"-z\":{}}}",
        Compact(keys));
}

TEST(BuildParameterStrings, CamelCaseFollowsTheRuleOfNames) {
    const struct {
        const wchar_t* name;
        const char* written;
    } cases[] = {
        {L"int-rle", "intRle"}, {L"a-b-c", "aBC"}, {L"a-1", "a-1"},  // no letter follows
        {L"a--b", "a-B"},       {L"-a", "A"},      {L"a-", "a-"},   {L"aB", "aB"},
        {L"a-B", "a-B"},        {L"", ""},         {L"a-é", "a-é"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.written);
        EXPECT_EQ("{\"" + std::string(c.written) + "\": 1}",
                  Compact([&](auto& v) { v.Parameter(c.name, L"1", PTC_Number); }));
    }
}

TEST(BuildParameterStrings, ClosingBracketsStandAtTheParentsIndentation) {
    EXPECT_EQ(
        "{\n"
        "  \"a\": {\n"
        "    \"b\": {\n"
        "      \"c\": [\n"
        "        [\n"
        "\n"
        "        ]\n"
        "      ]\n"
        "    }\n"
        "  }, \n"
        "  \"d\": \"e\"\n"
        "}",
        Pretty([](auto& v) {
            v.StartComposite(L"a", false);
            v.StartMap(L"b", PTC_Structure);
            v.StartList(L"c", PTC_Text);
            v.StartList(L"x", PTC_Text);
            v.EndList(L"x");
            v.EndList(L"c");
            v.EndMap(L"b");
            v.EndComposite(L"a");
            v.Parameter(L"d", L"e", PTC_Text);
        }));
}

TEST(BuildParameterStrings, BalanceIsNotChecked) {
    EXPECT_EQ("{\"a\":[1}", Compact([](auto& v) {
                  v.StartList(L"a", PTC_Number);
                  v.ListItem(L"1");
              }));
    EXPECT_EQ("{\"a\":[1}}", Compact([](auto& v) {  // an end writes its own bracket, whatever was started
                  v.StartList(L"a", PTC_Number);
                  v.ListItem(L"1");
                  v.EndComposite(L"a");
              }));
}

TEST(BuildParameterStrings, VisitorsShareNothing) {
    TString one;
    TString two;
    BuildParameterStrings first(one, JSONSerializer::Bare, false, false, false);
    BuildParameterStrings second(two, JSONSerializer::Compact, false, false, true);
    first.StartList(L"a-b", PTC_Number);
    second.Parameter(L"a-b", L"1", PTC_Text);
    first.ListItem(L"1");
    second.Parameter(L"a-c", L"2", PTC_Number);
    first.EndList(L"a-b");
    first.Finish();
    second.Finish();
    EXPECT_EQ(TString(L"[1]"), one);
    EXPECT_EQ(TString(LR"({"a-b": "1","a-c": 2})"), two);
}
