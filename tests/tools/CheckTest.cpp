#include "tools/ToolsTestSupport.h"

#include <qvpreslayer/PresLayerLimits.h>

#include "tools/qvpres/check/Check.h"

using qvpres::Check;
using qvpres::CheckFinding;
using qvpres::CheckOptions;
using qvpres::CheckResult;
using testing::ElementsAre;

namespace {

class CheckTest : public testing::Test {
protected:
    CheckResult Look(const std::string& json, bool strict = false, std::size_t most = 100) const {
        CheckOptions options;
        options.strict = strict;
        options.maxFindings = most;
        return Check(json, m_host.Loaded(), L"chart", options);
    }

    // The only finding there is.
    CheckFinding Only(const std::string& json, bool strict = false) const {
        const CheckResult result = Look(json, strict);
        EXPECT_EQ(result.findings.size(), 1U) << json;
        return result.findings.empty() ? CheckFinding{} : result.findings.front();
    }

    // Line, column and path of the only finding, as LINE:COLUMN PATH.
    std::string Place(const std::string& json, bool strict = false) const {
        const CheckFinding finding = Only(json, strict);
        return std::to_string(finding.line) + ":" + std::to_string(finding.column) + " " + finding.path;
    }

    std::vector<std::string> Codes(const std::string& json, bool strict = true) const {
        std::vector<std::string> codes;
        for (const CheckFinding& finding : Look(json, strict).findings) {
            codes.push_back(finding.code);
        }
        return codes;
    }

    // Why a text is no JSON.
    std::string Hint(const std::string& json) const {
        const CheckFinding finding = Only(json);
        EXPECT_EQ(finding.code, "not-json");
        const std::string start = "the text is not valid JSON: ";
        EXPECT_EQ(finding.message.substr(0, start.size()), start);
        return finding.message.substr(start.size());
    }

    ChartHost m_host;
};

}  // namespace

// ---- Errors

TEST_F(CheckTest, AGoodTextHasNoFindings) {
    EXPECT_TRUE(Look(R"({"title": "a", "markSizes": [1, [2, 4], []], "style": {"fontSize": 1}, "colors": {"a": "b"},
                         "marks": [{"xValue": 1}], "dateRange": ["a"], "byRegion": {"n": {"title": "t"}, "s": null}})",
                     true)
                    .findings.empty());
    EXPECT_TRUE(Look("{}", true).findings.empty());
    EXPECT_TRUE(Look(R"({"ti": "a", "ms": [1]})", true).findings.empty()) << "under short names";
}

TEST_F(CheckTest, AnUnknownNameIsToldAtTheName) {
    const CheckFinding finding = Only("{\"title\": \"a\",\n   \"markSize\" : [1]}");
    EXPECT_EQ(finding.code, "unknown-name");
    EXPECT_EQ(finding.line, 2U);
    EXPECT_EQ(finding.column, 4U);
    EXPECT_EQ(finding.offset, 18U);
    EXPECT_EQ(finding.path, "/markSize");
    EXPECT_EQ(finding.message, "unknown name \"markSize\"");
    EXPECT_THAT(finding.nearest, ElementsAre("markSizes"));
    EXPECT_EQ(finding.excerpt, "   \"markSize\" : [1]}");
    EXPECT_EQ(finding.excerptColumn, 3U);
}

TEST_F(CheckTest, ShortNamesAreSuggestedAmongShortOnes) {
    const CheckFinding finding = Only(R"({"ti": "a", "mz": [1]})");
    EXPECT_THAT(finding.nearest, testing::Contains("ms"));
    EXPECT_TRUE(Only(R"({"unheardOfName": 1})").nearest.empty());
}

TEST_F(CheckTest, AValueOfTheWrongKindIsToldAtTheValue) {
    const CheckFinding finding = Only(R"({"style": {"fontSize":  [1]}})");
    EXPECT_EQ(finding.code, "kind");
    EXPECT_EQ(finding.column, 25U);
    EXPECT_EQ(finding.path, "/style/fontSize");
    EXPECT_EQ(finding.expected, "number (int)");
    EXPECT_EQ(finding.found, "array");
    EXPECT_EQ(finding.message, "expected number (int), found array");
    EXPECT_EQ(Only(R"({"style": 1.5})").message, "expected bag, found real");
    EXPECT_EQ(Only(R"({"markSizes": {}})").message, "expected list of double, found object");
    EXPECT_EQ(Only(R"({"title": {}})").message, "expected text, found object");
    EXPECT_EQ(Only(R"({"marks": {}})").message, "expected structure list, found object");
}

TEST_F(CheckTest, AValueThatIsNoneOfItsType) {
    const CheckFinding finding = Only(R"({"style": {"fontSize": "big", "showGrid": true}})");
    EXPECT_EQ(finding.code, "value");
    EXPECT_EQ(finding.message, "\"big\" is no int");
    EXPECT_EQ(finding.path, "/style/fontSize");
    EXPECT_EQ(Only(R"({"style": {"fontSize": 1.5}})").message, "1.5 is no int");
    EXPECT_EQ(Only(R"({"style": {"showGrid": 1}})").message, "1 is no bool");
    const std::string text(100, 'x');
    EXPECT_EQ(Only("{\"totalCents\": \"" + text + "\"}").message, "\"" + text.substr(0, 39) + "…\" is no int64");
}

TEST_F(CheckTest, ElementsOfListsAndMapsAreToldOneByOne) {
    const CheckResult result = Look(R"({"days": [1, "x", [2, 4, 1], ["y", 4], null]})");
    ASSERT_EQ(result.findings.size(), 3U);
    EXPECT_EQ(result.findings[0].path, "/days/1");
    EXPECT_EQ(result.findings[0].column, 14U);
    EXPECT_EQ(result.findings[0].message, "\"x\" is no int");
    EXPECT_EQ(result.findings[1].path, "/days/3");
    EXPECT_EQ(result.findings[2].path, "/days/4");
    EXPECT_EQ(result.findings[2].message, "null is no int");
}

TEST_F(CheckTest, ElementsOfStructureListsAndMaps) {
    const CheckFinding element = Only(R"({"marks": [{"xValue": 1}, 7, {"xValue": 2}]})");
    EXPECT_EQ(element.code, "kind");
    EXPECT_EQ(element.path, "/marks/1");
    EXPECT_EQ(element.message, "expected object, found integer");
    EXPECT_EQ(Only(R"({"marks": [{"xValue": 1}, {"xValue": "a"}]})").path, "/marks/1/xValue");
    EXPECT_EQ(Only(R"({"byRegion": {"north": {"titel": 1}}})").path, "/byRegion/north/titel");
    EXPECT_EQ(Only(R"({"byRegion": {"north": 3}})").message, "expected object, found integer");
}

TEST_F(CheckTest, AllErrorsAreFoundInTheOrderOfTheText) {
    const CheckResult result =
        Look(R"({"totalCents": "x", "nobody": 1, "style": {"fontSize": "x", "nobody": 2}, "title": []})");
    std::vector<std::string> paths;
    for (const CheckFinding& finding : result.findings) {
        paths.push_back(finding.path);
    }
    EXPECT_THAT(paths, ElementsAre("/totalCents", "/nobody", "/style/fontSize", "/style/nobody", "/title"));
    EXPECT_EQ(result.Errors(), 5U);
}

TEST_F(CheckTest, AMemberThatIsNotReadIsNoError) {
    EXPECT_TRUE(Look(R"({"title": [], "title": "a"})").findings.empty());
    EXPECT_TRUE(Look(R"({"style": {"fontSize": "x", "fontSize": 1}})").findings.empty());
}

TEST_F(CheckTest, AListThatIsTooLongAsAWholeIsToldAsAWhole) {
    PresLayerLimits::SetExpansionBytes(400);  // a hundred ints
    const CheckResult result = Look(R"({"title": "a", "days": [[1, 60], [1, 60], []]})");
    PresLayerLimits::SetExpansionBytes(PresLayerLimits::kDefaultExpansionBytes);
    ASSERT_EQ(result.findings.size(), 1U);
    EXPECT_EQ(result.findings[0].path, "/days");
    EXPECT_EQ(result.findings[0].message, "Error parsing command parameter value string");
}

TEST_F(CheckTest, ListsThatAreTooLongTogetherAreToldWhereReadingEnds) {
    PresLayerLimits::SetExpansionBytes(400);
    const CheckResult result = Look(R"({"days": [[1, 60], []], "style": {"days": [[1, 60], []]}})");
    PresLayerLimits::SetExpansionBytes(PresLayerLimits::kDefaultExpansionBytes);
    ASSERT_EQ(result.findings.size(), 1U);
    EXPECT_EQ(result.findings[0].path, "/style/days");
    EXPECT_EQ(result.findings[0].column, 43U);
}

TEST_F(CheckTest, TheRootIsAnObject) {
    EXPECT_EQ(Only("[1]").message, "expected object, found array");
    EXPECT_EQ(Only(" 5").code, "root");
    EXPECT_EQ(Place(" 5"), "1:2 ");
}

TEST_F(CheckTest, NoMoreThanAskedFor) {
    const CheckResult result = Look(R"({"a": 1, "b": 2, "c": 3})", false, 2);
    EXPECT_EQ(result.findings.size(), 2U);
    EXPECT_TRUE(result.cut);
    EXPECT_FALSE(Look(R"({"a": 1, "b": 2})", false, 2).cut);
}

TEST_F(CheckTest, LongLinesAreCutAroundThePlace) {
    const std::string blanks(60, ' ');
    const CheckFinding finding = Only("{" + blanks + "\"nobody\": 1," + blanks + "\"title\": \"\"}");
    EXPECT_EQ(finding.column, 62U);
    // 50 units before, 30 behind: "nobody": 1, takes 12 of them.
    EXPECT_EQ(finding.excerpt, "…" + std::string(50, ' ') + "\"nobody\": 1," + std::string(18, ' ') + "…");
    EXPECT_EQ(finding.excerptColumn, 51U);
}

// ---- Texts that are no JSON

TEST_F(CheckTest, WhyATextIsNoJSON) {
    EXPECT_EQ(Hint(""), "it is empty");
    EXPECT_EQ(Hint("{\"title\": "), "it ends too early");
    EXPECT_EQ(Hint("\xEF\xBB\xBF{}"), "it starts with a byte-order mark, which is to be left out");
    EXPECT_EQ(Hint("{\"title\": 'a'}"), "texts and names stand in double quotation marks");
    EXPECT_EQ(Hint("{'title': 1}"), "texts and names stand in double quotation marks");
    EXPECT_EQ(Hint("{\"days\": [1, 2,]}"), "a comma stands before the closing bracket");
    EXPECT_EQ(Hint("{\"title\": \"a\", // why\n}"), "a comma stands before the closing bracket");
    EXPECT_EQ(Hint("{title: 1}"), "names stand in double quotation marks");
    EXPECT_EQ(Hint("{\"a\": NaN}"), "NaN and Infinity are no numbers of JSON; null stands for not a number");
    EXPECT_EQ(Hint("{\"a\": None}"),
              "the words of JSON are true, false and null; texts stand in double quotation marks");
    EXPECT_EQ(Hint("{\"a\": 1 \"b\": 2}"), "a comma is missing before this");
    EXPECT_EQ(Hint("{\"a\": \"x\ny\"}"),
              "a line ends inside a string; its quotation mark is missing, or the line end is to be written \\n");
    EXPECT_EQ(Hint("{\"a\": \"x\ty\"}"),
              "a control character stands inside a string; it is to be written as an escape");
    EXPECT_EQ(Hint(R"({"a": "\x41"})"), "no escape of JSON begins so");
    EXPECT_EQ(Hint("{\"a\": \x01}"), "control character 1 cannot stand here");
    EXPECT_EQ(Hint("{\"a\"; 1}"), "\";\" cannot stand here");
    EXPECT_NE(Hint("{\"a\": 01}").find("without a leading"), std::string::npos);
    EXPECT_NE(Hint("{\"a\": +1}").find("without a leading"), std::string::npos);
    EXPECT_EQ(Hint(std::string(513, '[')), "it is nested more than 512 levels deep");
}

TEST_F(CheckTest, WhereATextStopsBeingJSON) {
    EXPECT_EQ(Place("{\"style\": {\"fontSize\": 1,}}"), "1:26 /style");
    EXPECT_EQ(Place("{\n\"title\": nul}"), "2:13 /title");
}

// ---- Leniencies

TEST_F(CheckTest, LenienciesAreToldWhenAskedFor) {
    EXPECT_TRUE(Look(R"({"title": null})").findings.empty());
    const CheckFinding finding = Only(R"({"title": null})", true);
    EXPECT_FALSE(finding.isError);
    EXPECT_EQ(finding.code, "null");
    EXPECT_EQ(finding.path, "/title");
}

TEST_F(CheckTest, IntegersThatWrap) {
    EXPECT_EQ(Only(R"({"totalCents": 5000000000})", true).message,
              "5000000000 is read as 705032704: integers keep their low 32 bits; quoted they stay whole");
    EXPECT_THAT(Codes(R"({"totalCents": 4294967295})"), ElementsAre());
    EXPECT_THAT(Codes(R"({"totalCents": 4294967296})"), ElementsAre("wraps"));
    EXPECT_THAT(Codes(R"({"totalCents": -2147483648})"), ElementsAre());
    EXPECT_THAT(Codes(R"({"totalCents": -2147483649})"), ElementsAre("wraps"));
    EXPECT_THAT(Codes(R"({"totalCents": "5000000000"})"), ElementsAre("other-kind"));
    EXPECT_THAT(Codes(R"({"markSizes": [5000000000]})"), ElementsAre("wraps"));
    EXPECT_THAT(Codes(R"({"markSizes": [5000000000.5, 1e20, -0]})"), ElementsAre());
}

TEST_F(CheckTest, OneFindingForEachSortInAList) {
    const CheckFinding finding = Only(R"({"markSizes": [1, 5000000000, 6000000000, [7000000000, 4]]})", true);
    EXPECT_EQ(finding.path, "/markSizes/1");
    EXPECT_NE(finding.message.find("(the first of 3 such elements)"), std::string::npos);
}

TEST_F(CheckTest, ElementsAreTheOnesThatAreMeant) {
    EXPECT_EQ(Only(R"({"days": [1, [7000000000, 4], 2]})", true).path, "/days/1") << "inside a run";
    EXPECT_EQ(Only(R"({"days": [[0, 4], [1, 4, 7000000000]]})", true).path, "/days/1") << "the last item of the last";
    const CheckFinding text = Only(R"({"dateRange": ["2024-01-01", null]})", true);
    EXPECT_EQ(text.code, "empty-text");
    EXPECT_EQ(text.path, "/dateRange/1");
}

TEST_F(CheckTest, RealsThatLoseDigits) {
    EXPECT_THAT(Codes(R"({"markSizes": [0.1, 0.5e-3, 1e300, 1.00000000000001]})"), ElementsAre());
    EXPECT_EQ(Only(R"({"marks": [{"xValue": 1e-20}]})", true).message,
              "1e-20 is read as 0: reals keep 14 digits behind the point");
    EXPECT_THAT(Codes(R"({"markSizes": [0.1234567890123456]})"), ElementsAre("rounded"));
}

TEST_F(CheckTest, ValuesOfOtherKinds) {
    EXPECT_EQ(Only(R"({"title": 5})", true).message, "a number stands where a text is expected");
    EXPECT_EQ(Only(R"({"title": true})", true).message, "a bool stands where a text is expected");
    EXPECT_EQ(Only(R"({"style": {"fontSize": "5"}})", true).message, "a string stands where a number is expected");
    EXPECT_EQ(Only(R"({"style": {"showGrid": "true"}})", true).message, "a string stands where a bool is expected");
    EXPECT_THAT(Codes(R"({"colors": {"a": 1, "b": null, "c": [], "d": {}}})"),
                ElementsAre("other-kind", "empty-text", "empty-text", "empty-text"));
}

TEST_F(CheckTest, WhatMakesReadingFailIsNoLeniencyToo) {
    EXPECT_THAT(Codes(R"({"style": {"fontSize": "x"}})"), ElementsAre("value"));
}

TEST_F(CheckTest, EnumerationsThatReadingDoesNotKnow) {
    EXPECT_EQ(Only(R"({"style": {"fontWeight": "heavy"}})", true).message,
              "\"heavy\" is no FontWeight and is read as its default, \"font-weight-normal\"");
    EXPECT_THAT(Codes(R"({"style": {"fontWeight": "font-weight-bold"}})"), ElementsAre());
}

TEST_F(CheckTest, MembersThatComeTwice) {
    EXPECT_EQ(Place(R"({"title": "a", "title": "b"})", true), "1:2 /title");
    const CheckFinding twin = Only(R"({"markSizes": [1], "mark-sizes": [2]})", true);
    EXPECT_EQ(twin.code, "duplicate");
    EXPECT_EQ(twin.path, "/mark-sizes") << "\"markSizes\" comes later in order";
    EXPECT_THAT(Codes(R"({"markSizes": [1], "mark-sizes": [2], "nobody": 1})"),
                ElementsAre("duplicate", "unknown-name"))
        << "also where something fails";
    EXPECT_THAT(Codes(R"({"title": "a", "title": [1, 2], "title": null})"),
                ElementsAre("duplicate", "duplicate", "null"));
}

TEST_F(CheckTest, WhatIsPassedOver) {
    EXPECT_THAT(Codes(R"({"days": [1, [], [5], [1, 2, 3, 4], []]})"), ElementsAre("run-skipped"));
    EXPECT_THAT(Codes("{} trailing"), ElementsAre("text-after-value"));
    EXPECT_THAT(Codes("{\"title\": /* c */ \"/*\"} // end"), ElementsAre("comment", "comment"));
    EXPECT_THAT(Codes("{} // one\n/* two */ three // four"), ElementsAre("comment", "comment", "text-after-value"));
    EXPECT_THAT(Codes(R"({"selection": [1]})"), ElementsAre("never-written"));
}

TEST_F(CheckTest, CharactersThatOtherReadersMayRefuse) {
    EXPECT_THAT(Codes(R"({"title": "\ud83d\ude00 \\ud800", "colors": {"a": "\ud83d\ude00"}})"), ElementsAre());
    EXPECT_EQ(Place(R"({"colors": {"a": "\ud83d"}})", true), "1:18 /colors/a");
    EXPECT_THAT(Codes(R"({"title": "\ude00\ud83d"})"), ElementsAre("odd-character"));
    EXPECT_THAT(Codes(std::string("{\"title\": \"a\0b\"}", 16)), ElementsAre("odd-character"));
}

TEST_F(CheckTest, MembersThatAStructureIsNotDeclaredToHold) {
    const CheckFinding finding = Only(R"({"style": {"title": "x"}})", true);
    EXPECT_EQ(finding.code, "undeclared-member");
    EXPECT_EQ(finding.path, "/style/title");
}

TEST_F(CheckTest, BytesThatAreNotUTF8) {
    const CheckFinding finding = Only("{\"title\": \"\xC3\xA4\xFF\"}", true);
    EXPECT_EQ(finding.code, "not-utf8");
    EXPECT_EQ(finding.message, "byte 13 is not UTF-8; what is not is read as U+FFFD");
    EXPECT_EQ(finding.column, 13U);
}

// ---- Other vocabularies

namespace {

// The leniencies of a text of these parameters: code, path and message of each.
std::vector<std::string> LenienciesOf(const std::string& json, const std::string& parameters) {
    const qvpres::LoadedVocabulary loaded(qvpres::Vocabulary::FromText(ViewText(parameters), "view.json"));
    CheckOptions options;
    options.strict = true;
    std::vector<std::string> found;
    for (const CheckFinding& finding : Check(json, loaded, L"view", options).findings) {
        found.push_back(finding.code + " " + finding.path + ": " + finding.message);
    }
    return found;
}

}  // namespace

TEST(CheckLeniencies, AnArrayForAStructureWithoutAFormOfAList) {
    EXPECT_THAT(LenienciesOf(R"({"place": ["a"]})", R"({"id": 1001, "name": "place", "kind": "structure"})"),
                ElementsAre("passed-over /place: an array stands where an object is expected and is passed over"));
}

TEST(CheckLeniencies, HoursAndMinutesKeep32Bits) {
    const std::string lost = ": hours and minutes keep the low 32 bits of their number";
    EXPECT_THAT(LenienciesOf(R"({"open": "4294967297", "steps": ["2147483647", "-2147483649"], "ticks": "4294967297"})",
                             R"({"id": 1001, "name": "open", "type": "hours"},
                                {"id": 1002, "name": "steps", "kind": "list", "type": "minutes"},
                                {"id": 1003, "name": "ticks", "type": "nanoseconds"})"),
                ElementsAre("wraps /open" + lost, "wraps /steps/1" + lost));
    // This number arrives whole, as no text does that is a number.
    EXPECT_THAT(LenienciesOf(R"({"open": 4294967295})", R"({"id": 1001, "name": "open", "type": "hours"})"),
                ElementsAre("wraps /open" + lost, "other-kind /open: a number stands where a text is expected"));
}
