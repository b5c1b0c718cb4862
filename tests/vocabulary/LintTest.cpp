#include "tools/vocabulary/Lint.h"

#include <gtest/gtest.h>

#include "vocabulary/VocabularyTestSupport.h"

using namespace qvpres;

namespace {

// The findings, a line for each: severity, rule, namespace, identifier, message.
std::string FindingsOf(const Vocabulary& vocabulary) {
    std::string text;
    for (const Finding& finding : Lint(vocabulary)) {
        text += TString(ToText(finding.severity)).ToUtf8() + " " + TString(ToText(finding.rule)).ToUtf8() + " " +
                finding.nameSpace.ToUtf8() + " " + std::to_string(finding.id) + " " + finding.message.ToUtf8() + "\n";
    }
    return text;
}

std::string Named(int id, const std::string& name, const std::string& shortName) {
    return "{\"id\": " + std::to_string(id) + ", \"name\": \"" + name + "\", \"short\": \"" + shortName +
           "\", \"type\": \"text\"}";
}

std::string Space(const std::string& name, int first, int last, const std::string& parameters,
                  const std::string& fallback = "") {
    return "{\"name\": \"" + name + "\", \"firstId\": " + std::to_string(first) +
           ", \"lastId\": " + std::to_string(last) + (fallback.empty() ? "" : ", \"fallback\": \"" + fallback + "\"") +
           ", \"parameters\": [" + parameters + "]}";
}

Vocabulary Spaces(const std::string& first, const std::string& second) {
    return VocabularyOf("{\"namespaces\": [" + first + ", " + second + "]}");
}

}  // namespace

TEST(Lint, AGoodVocabularyHasNoFindings) {
    EXPECT_EQ("", FindingsOf(ViewOf(Named(1001, "mark-sizes", "ms") + "," + Named(1002, "größe-2", "g2") + "," +
                                    R"({"id": 1003, "name": "selection", "type": "int", "unserializable": true})")));
}

TEST(Lint, NamesThatDoNotSurviveCamelCase) {
    EXPECT_EQ(
        "error name-conversion view 1001 JSON spells the name as \"Title\", which is read as \"-title\"\n"
        "error name-conversion view 1002 JSON spells the name as \"fontSIZE\", which is read as \"font-s-i-z-e\"\n",
        FindingsOf(ViewOf(Named(1001, "Title", "ti") + "," + Named(1002, "font-sIZE", "fs") + "," +
                          Named(1003, "-a", "a"))));  // "A", and back
}

TEST(Lint, NamesThatWouldHaveToBeEscaped) {
    EXPECT_EQ(
        "error name-not-escaped view 1001 the name holds a character that would have to be escaped, and names in camel "
        "case are not\n"
        "error name-not-escaped view 1002 the name holds a character that would have to be escaped, and names in camel "
        "case are not\n",
        FindingsOf(ViewOf(Named(1001, "a\\\"b", "x") + "," + Named(1002, "a\\u007fb", "y") + "," +
                          Named(1003, "a/b c", "z"))));
}

TEST(Lint, CollidingNames) {
    EXPECT_EQ(
        "error duplicate-name view 1002 identifier 1001 has this name too; it leads to the later one\n"
        "error duplicate-name view 1003 the short name \"ti\" is that of \"title\" too; it leads to the later one\n",
        FindingsOf(
            ViewOf(Named(1001, "title", "ti") + "," + Named(1002, "title", "t2") + "," + Named(1003, "text", "ti"))));
    EXPECT_EQ(
        "error name-conversion view 1002 JSON spells the name as \"fontSize\", which is read as \"font-size\"\n"
        "error camel-collision view 1002 JSON spells this name and \"font-size\" alike\n",
        FindingsOf(ViewOf(Named(1001, "font-size", "fs") + "," + Named(1002, "fontSize", "f2"))));
}

TEST(Lint, AShortNameThatIsAnothersVerboseName) {
    EXPECT_EQ(
        "warning crossed-name view 1002 the short name \"title\" is another parameter's verbose name: texts under the "
        "wrong sort of names are read as that one\n",
        FindingsOf(ViewOf(Named(1001, "title", "title") + "," + Named(1002, "text", "title2") + "," +
                          Named(1003, "x", "text2"))) +
            FindingsOf(ViewOf(Named(1001, "title", "ti") + "," + Named(1002, "text", "title"))));
}

TEST(Lint, MissingShortNames) {
    EXPECT_EQ(
        "warning missing-short-name view 1001 there is no short name, so that it cannot be written under short names\n",
        FindingsOf(ViewOf(R"({"id": 1001, "name": "a", "kind": "bag"})")));
}

TEST(Lint, OverlappingRangesAndWhatTheyHide) {
    EXPECT_EQ(
        "warning overlapping-range a 0 the range overlaps that of \"b\"; \"a\" covers what both have, since its name "
        "sorts first\n",
        FindingsOf(Spaces(Space("b", 1, 10, Named(9, "x", "y")), Space("a", 10, 20, Named(11, "x", "y")))));
    EXPECT_EQ(
        "error hidden-parameter b 10 the namespace \"a\" covers the identifier, so that it is not found here\n"
        "warning overlapping-range a 0 the range overlaps that of \"b\"; \"a\" covers what both have, since its name "
        "sorts first\n",
        FindingsOf(Spaces(Space("b", 1, 10, Named(10, "x", "y")), Space("a", 10, 20, ""))));
    EXPECT_EQ(
        "warning overlapping-range z 0 the range overlaps that of \"qvcore\"; \"qvcore\" covers what both have, since "
        "its name sorts first\n",
        FindingsOf(Spaces(Space("z", 301989887, 301989888, ""), Space("a", 1, 2, ""))));
    EXPECT_EQ("", FindingsOf(Spaces(Space("b", 1, 10, ""), Space("a", 11, 20, ""))));
}

TEST(Lint, NamesThatStandBeforeThoseOfAFallback) {
    EXPECT_EQ(
        "warning shadowed-name near 1 \"size\" of the fallback \"far\" has the same name: texts of this namespace "
        "never "
        "lead there\n"
        "warning shadowed-name near 2 \"other\" of the fallback \"far\" has the same name: texts of this namespace "
        "never lead there\n",
        FindingsOf(Spaces(Space("near", 1, 9, Named(1, "size", "s1") + "," + Named(2, "b", "s2"), "far"),
                          Space("far", 11, 19, Named(11, "size", "s3") + "," + Named(12, "other", "s2")))));
}

TEST(Lint, NotesOfTypesWhoseValuesDoNotAllComeBack) {
    const std::string cut = "whole numbers below -2147483648 or above 4294967295 are cut to 32 bits on reading\n";
    EXPECT_EQ("note lossy-type view 1001 " + cut + "note lossy-type view 1002 " + cut +
                  "note lossy-type view 1003 lists of typed values are written without their types and cannot be read "
                  "back\n"
                  "note lossy-type view 1005 a password is written as asterisks and does not come back\n",
              FindingsOf(ViewOf(R"({"id": 1001, "name": "a", "short": "a", "type": "int64"},
        {"id": 1002, "name": "b", "short": "b", "kind": "map", "type": "uint64"},
        {"id": 1003, "name": "c", "short": "c", "kind": "list", "type": "data-value"},
        {"id": 1004, "name": "d", "short": "d", "kind": "map", "type": "data-value"},
        {"id": 1005, "name": "e", "short": "e", "type": "password"})")));
}

TEST(Lint, FindingsTellTheirPlace) {
    const auto findings = Lint(ViewOf("\n" + Named(1001, "Title", "ti")));
    ASSERT_EQ(1U, findings.size());
    EXPECT_EQ(TString(L"Title"), findings[0].name);
    EXPECT_EQ(2U, findings[0].location.line);
    EXPECT_EQ(1U, findings[0].location.column);
    EXPECT_EQ(TString(L"/namespaces/0/parameters/0"), findings[0].location.path);
}

// What the findings warn of does happen.
TEST(Lint, NamesAreLostAsItSays) {
    ToolRegistry registry;
    ViewOf(Named(1001, "font-size", "fs") + "," + Named(1002, "fontSize", "f2") + "," + Named(1003, "a\\\"b", "x"))
        .Register(registry);
    const RefCntPtr<IParameters> bag = MakeRefCnt<ToolBag>();
    SetParameterValue<TString>(*bag, 1002, L"x");
    EXPECT_EQ(R"({"fontSize": "x"})", CompactText(bag));
    EXPECT_TRUE(ReadBag(CompactText(bag))->HasParameter(1001));
    const RefCntPtr<IParameters> quoted = MakeRefCnt<ToolBag>();
    SetParameterValue<TString>(*quoted, 1003, L"x");
    EXPECT_THROW(ReadBag(CompactText(quoted)), JSONParseException);
}
