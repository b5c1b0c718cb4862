// Every way in which a declaration file can be wrong, with the place that is told.
#include <string>

#include <gtest/gtest.h>

#include "vocabulary/VocabularyTestSupport.h"

namespace {

using qvpres::Vocabulary;
using qvpres::VocabularyException;

// In the texts below, the place of the failure is marked by this; it is taken out before reading.
constexpr std::string_view kMark = "@";

struct Case {
    std::string text;
    std::string path;
    std::string problem;
};

void ExpectFailure(const Case& c) {
    SCOPED_TRACE(c.text);
    const std::size_t mark = c.text.find(kMark);
    ASSERT_NE(std::string::npos, mark);
    const std::string before = c.text.substr(0, mark);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const std::size_t column = TString::FromUtf8(before.substr(before.rfind('\n') + 1)).size() + 1;
    const std::string expected = "test.json:" + std::to_string(line) + ":" + std::to_string(column) + ": " +
                                 (c.path.empty() ? "" : c.path + ": ") + c.problem;
    try {
        Vocabulary::FromText(before + c.text.substr(mark + kMark.size()), kSource);
        ADD_FAILURE() << "was read";
    } catch (const VocabularyException& failure) {
        EXPECT_EQ(expected, failure.what());
        EXPECT_EQ(kSource, failure.GetSource());
        EXPECT_EQ(c.problem, failure.GetProblem().ToUtf8());
        EXPECT_EQ(static_cast<std::size_t>(line), failure.GetLocation().line);
        EXPECT_EQ(column, failure.GetLocation().column);
        EXPECT_EQ(c.path, failure.GetLocation().path.ToUtf8());
    }
}

// A file with one namespace of these members.
std::string Space(const std::string& members) { return "{\"namespaces\": [{\n" + members + "}]}"; }

// A file with one parameter of these members, after a first one.
std::string Parameter(const std::string& members) {
    return ViewText("\n{\"id\": 1000, \"name\": \"title\", \"type\": \"text\"},\n" + members);
}

constexpr const char* kParameterPath = "/namespaces/0/parameters/1";

Case ParameterCase(const std::string& members, const std::string& member, const std::string& problem) {
    return {Parameter(members), kParameterPath + member, problem};
}

}  // namespace

TEST(DeclarationErrors, TextsThatAreNoJson) {
    for (const Case& c : {
             Case{"@", "", "this is not valid JSON"},
             Case{"\n // nothing but a comment\n@", "", "this is not valid JSON"},
             Case{"{\"namespaces\": [@,]}", "/namespaces/0", "this is not valid JSON"},
             Case{"{\n  \"namespaces\": [{\"name\" @\"view\"}]\n}", "/namespaces/0", "this is not valid JSON"},
             Case{"{\"namespaces\": []@", "", "this is not valid JSON"},
             Case{"{\"namespaces\": []\n@", "", "this is not valid JSON"},
             Case{"{\"namespaces\": []} @{}", "", "nothing may follow the declaration"},
             Case{"{\"namespaces\": []}\n@, {}", "", "nothing may follow the declaration"},
             Case{"{\"namespaces\": []}@]", "", "nothing may follow the declaration"},
             Case{"{\"namespaces\": []} // one\n /* two */ @x", "", "nothing may follow the declaration"},
             Case{"{\"description\": \"é@\xff\"}", "", "the file is not UTF-8 here"},
             Case{"{\n\"a\": \"@\xc3\"}", "", "the file is not UTF-8 here"},
         }) {
        ExpectFailure(c);
    }
}

TEST(DeclarationErrors, TheFileAsAWhole) {
    for (const Case& c : {
             Case{"@[]", "", "must be an object, not an array"},
             Case{"@\"namespaces\"", "", "must be an object, not a text"},
             Case{"@{}", "", "\"namespaces\" is missing"},
             Case{"{@\"namespace\": []}", "/namespace", "unknown member; did you mean \"namespaces\"?"},
             Case{"{\"namespaces\": [], @\"zzzzz\": 1}", "/zzzzz", "unknown member"},
             Case{"{\"namespaces\": [], @\"namespaces\": []}", "/namespaces", "stands here for the second time"},
             Case{"{\"namespaces\": @{}}", "/namespaces", "must be an array, not an object"},
             Case{"{\"namespaces\": [], \"$schema\": @1}", "/$schema", "must be a text, not a number"},
             Case{"{\"namespaces\": [], \"description\": @null}", "/description", "must be a text, not null"},
             Case{"{\"namespaces\": [], \"unserializable\": @7}", "/unserializable", "must be an array, not a number"},
             Case{"{\"namespaces\": [], \"unserializable\": [1, @true]}", "/unserializable/1",
                  "must be a number, not true or false"},
             Case{"{\"namespaces\": [], \"cpp\": @[]}", "/cpp", "must be an object, not an array"},
             Case{"{\"namespaces\": [], \"cpp\": {@\"include\": []}}", "/cpp/include",
                  "unknown member; did you mean \"includes\"?"},
             Case{"{\"namespaces\": [], \"cpp\": {\"namespace\": @\"a b\"}}", "/cpp/namespace",
                  "must be a namespace such as acme::charts"},
             Case{"{\"namespaces\": [], \"cpp\": {\"namespace\": @\"a::\"}}", "/cpp/namespace",
                  "must be a namespace such as acme::charts"},
             Case{"{\"namespaces\": [], \"cpp\": {\"includes\": [\"a.h\", @\"b\\\"c\"]}}", "/cpp/includes/1",
                  "must be the name of a header"},
         }) {
        ExpectFailure(c);
    }
}

TEST(DeclarationErrors, Namespaces) {
    for (const Case& c : {
             Case{"{\"namespaces\": [@7]}", "/namespaces/0", "must be an object, not a number"},
             Case{"{\"namespaces\": [@{}]}", "/namespaces/0", "\"name\" is missing"},
             Case{Space("@\"title\": 1"), "/namespaces/0/title", "unknown member"},
             Case{Space("\"name\": @\"\""), "/namespaces/0/name", "must not be empty"},
             Case{Space("\"name\": @\"a\\u0000\""), "/namespaces/0/name",
                  "must not hold U+0000 or half a surrogate pair"},
             Case{Space("\"name\": @\"qvcore\""), "/namespaces/0/name",
                  "\"qvcore\" is the library's own and always there"},
             Case{Space("\"name\": \"view\", \"lastId\": 1, \"firstId\": @1.5"), "/namespaces/0/firstId",
                  "must be an integer from -2147483648 to 2147483647"},
             Case{Space("\"name\": \"view\", \"firstId\": @2147483648"), "/namespaces/0/firstId",
                  "must be an integer from -2147483648 to 2147483647"},
             Case{Space("\"name\": \"view\", \"firstId\": @\"0x112345678\""), "/namespaces/0/firstId",
                  "must be a number, or hexadecimal digits such as \"0x12000001\""},
             Case{Space("\"name\": \"view\", \"firstId\": @\"17\""), "/namespaces/0/firstId",
                  "must be a number, or hexadecimal digits such as \"0x12000001\""},
             Case{Space("\"name\": \"view\", \"firstId\": @\"0x\""), "/namespaces/0/firstId",
                  "must be a number, or hexadecimal digits such as \"0x12000001\""},
             Case{Space("\"name\": \"view\", \"firstId\": @\"0x+5\""), "/namespaces/0/firstId",
                  "must be a number, or hexadecimal digits such as \"0x12000001\""},
             Case{Space("\"name\": \"view\", \"firstId\": @\"0x000000001\""), "/namespaces/0/firstId",
                  "must be a number, or hexadecimal digits such as \"0x12000001\""},
             Case{Space("\"name\": \"view\", \"firstId\": @\"0xg\""), "/namespaces/0/firstId",
                  "must be a number, or hexadecimal digits such as \"0x12000001\""},
             Case{Space("\"name\": \"view\", \"firstId\": @\"0X5\""), "/namespaces/0/firstId",
                  "must be a number, or hexadecimal digits such as \"0x12000001\""},
             Case{Space("\"name\": \"view\", \"firstId\": 5, \"lastId\": @4"), "/namespaces/0/lastId",
                  "must not be below firstId, 5"},
             Case{"{\"namespaces\": [@{\"name\": \"view\", \"firstId\": 5, \"lastId\": 9}]}", "/namespaces/0",
                  "\"parameters\" is missing"},
             Case{Space("\"name\": \"view\", \"firstId\": 5, \"lastId\": 9, \"parameters\": @{}"),
                  "/namespaces/0/parameters", "must be an array, not an object"},
             Case{Space("\"name\": \"view\", \"firstId\": 5, \"lastId\": 9, \"parameters\": [], \"cppIds\": @\"a::b\""),
                  "/namespaces/0/cppIds", "must be a name of C++"},
         }) {
        ExpectFailure(c);
    }
}

TEST(DeclarationErrors, WhatLeadsFromOneNamespaceToAnother) {
    const std::string first = R"({"name": "first", "firstId": 1, "lastId": 9, "parameters": [], "fallback": )";
    const std::string second = R"({"name": "second", "firstId": 11, "lastId": 19, "parameters": [], "fallback": )";
    const std::string twin = R"({"firstId": 11, "lastId": 19, "parameters": [], "name": )";
    for (const Case& c : {
             Case{"{\"namespaces\": [\n" + first + "@\"secnod\"}, " + second + "\"qvcore\"}]}",
                  "/namespaces/0/fallback", "there is no namespace \"secnod\"; did you mean \"second\"?"},
             Case{"{\"namespaces\": [\n" + first + "@\"qvcor\"}]}", "/namespaces/0/fallback",
                  "there is no namespace \"qvcor\"; did you mean \"qvcore\"?"},
             Case{"{\"namespaces\": [\n" + first + "@\"second\"},\n" + second + "\"first\"}]}",
                  "/namespaces/0/fallback", "this fallback leads back to \"first\""},
             Case{"{\"namespaces\": [\n" + first + "\"second\"},\n" + second + "@\"second\"}]}",
                  "/namespaces/1/fallback", "this fallback leads back to \"second\""},
             Case{"{\"namespaces\": [\n" + twin + "\"a\"},\n" + twin + "@\"a\"}]}", "/namespaces/1/name",
                  "there is a namespace \"a\" already"},
         }) {
        ExpectFailure(c);
    }
}

TEST(DeclarationErrors, IdentifiersAndNames) {
    for (const Case& c : {
             ParameterCase("@7", "", "must be an object, not a number"),
             ParameterCase("@{\"name\": \"b\", \"type\": \"text\"}", "", "\"id\" is missing"),
             ParameterCase("@{\"id\": 1001, \"type\": \"text\"}", "", "\"name\" is missing"),
             ParameterCase("{\"id\": 1001, \"name\": \"b\", \"type\": \"text\", @\"shrot\": \"b\"}", "/shrot",
                           "unknown member; did you mean \"short\"?"),
             ParameterCase("{\"id\": @2000, \"name\": \"b\", \"type\": \"text\"}", "/id",
                           "identifier 2000 is outside of the namespace's range, 1000 to 1999"),
             ParameterCase("{\"id\": @999, \"name\": \"b\", \"type\": \"text\"}", "/id",
                           "identifier 999 is outside of the namespace's range, 1000 to 1999"),
             ParameterCase("{\"id\": @0, \"name\": \"b\", \"type\": \"text\"}", "/id", "identifier 0 is never found"),
             ParameterCase("{\"id\": @1000, \"name\": \"b\", \"type\": \"text\"}", "/id",
                           "identifier 1000 is declared already, in line 2"),
             ParameterCase("{\"id\": 1001, \"name\": @[], \"type\": \"text\"}", "/name",
                           "must be a text, not an array"),
             ParameterCase("{\"id\": 1001, \"name\": @\"\", \"type\": \"text\"}", "/name", "must not be empty"),
             ParameterCase("{\"id\": 1001, \"name\": @\"\\ud800\", \"type\": \"text\"}", "/name",
                           "must not hold U+0000 or half a surrogate pair"),
             ParameterCase("{\"id\": 1001, \"name\": @\"\\ude00\\ud83d\", \"type\": \"text\"}", "/name",
                           "must not hold U+0000 or half a surrogate pair"),
             ParameterCase("{\"id\": 1001, \"name\": \"b\", \"short\": @\"\", \"type\": \"text\"}", "/short",
                           "must not be empty"),
             ParameterCase("{\"id\": 1001, \"name\": \"b\", \"unserializable\": @1, \"type\": \"text\"}",
                           "/unserializable", "must be true or false, not a number"),
         }) {
        ExpectFailure(c);
    }
}

TEST(DeclarationErrors, KindsTypesAndForms) {
    const std::string start = "{\"id\": 1001, \"name\": \"é\", ";
    for (const Case& c : {
             ParameterCase("@{\"id\": 1001, \"name\": \"b\"}", "", "\"type\" is missing"),
             ParameterCase("@{\"id\": 1001, \"name\": \"b\", \"kind\": \"list\"}", "", "\"type\" is missing"),
             ParameterCase(start + "\"type\": @\"doubel\"}", "/type",
                           "unknown type \"doubel\"; did you mean \"double\"?"),
             ParameterCase(start + "\"type\": @\"font-weight\"}", "/type",
                           "unknown type \"font-weight\"; did you mean \"FontWeight\"?"),
             ParameterCase(start + "\"kind\": @\"structure-lists\", \"type\": \"text\"}", "/kind",
                           "unknown kind \"structure-lists\"; did you mean \"structure-list\"?"),
             ParameterCase(start + "\"kind\": \"bag\", \"type\": @\"text\"}", "/type",
                           "a parameter of the kind \"bag\" has no type"),
             ParameterCase(start + "\"kind\": \"bag\", \"form\": @\"record\"}", "/form", "only structures have a form"),
             ParameterCase(start + "\"type\": \"int\", \"form\": @\"list\"}", "/form", "only structures have a form"),
             ParameterCase(start + "\"kind\": \"structure\", \"form\": @\"map\"}", "/form", "unknown form \"map\""),
             ParameterCase(start + "\"kind\": \"structure-map\", \"form\": @\"list\"}", "/form",
                           "the structures of a map have no list form: their names are written already"),
             ParameterCase(start + "\"kind\": \"bag\", \"cppSerializer\": @\"A\"}", "/cppSerializer",
                           "bags have no serializer"),
             ParameterCase(start + "\"type\": \"int\", \"cppSerializer\": @\"A(); evil()\"}", "/cppSerializer",
                           "must be a class of C++"),
         }) {
        ExpectFailure(c);
    }
}

TEST(DeclarationErrors, Members) {
    const std::string start = "{\"id\": 1001, \"name\": \"b\", ";
    for (const Case& c : {
             ParameterCase(start + "\"type\": \"int\", \"members\": @[]}", "/members",
                           "only bags and structures in the form \"record\" have members"),
             ParameterCase(start + "\"kind\": \"structure\", \"form\": \"list\", \"members\": @[]}", "/members",
                           "only bags and structures in the form \"record\" have members"),
             ParameterCase(start + "\"kind\": \"bag\", \"members\": [\"title\", @\"title\"]}", "/members/1",
                           "\"title\" is a member already"),
             ParameterCase(start + "\"kind\": \"bag\", \"members\": [\"title\", @\"titel\"]}", "/members/1",
                           "there is no parameter \"titel\"; did you mean \"title\"?"),
             ParameterCase(start + "\"kind\": \"bag\", \"members\": [@\"int-rle\"]}", "/members/0",
                           "there is no parameter \"int-rle\""),
         }) {
        ExpectFailure(c);
    }
}

TEST(DeclarationErrors, AMarkedIdentifierThatIsAParameterSaysSoThere) {
    ExpectFailure({R"({"namespaces": [{"name": "v", "firstId": 1, "lastId": 9, "parameters": [
{"id": 3, "name": "a", "type": "int"}]}], "unserializable": [@3]})",
                   "/unserializable/0", "identifier 3 is the parameter \"a\": say \"unserializable\": true there"});
}

TEST(DeclarationErrors, AFileThatCannotBeReadHasNoPlaceInIt) {
    for (const char* file : {"/nowhere/at/all.json", VOCABULARY_TEST_DATA}) {
        try {
            Vocabulary::FromFile(file);
            ADD_FAILURE() << file;
        } catch (const VocabularyException& failure) {
            EXPECT_EQ(std::string(file) + ": cannot be read", failure.what());
            EXPECT_FALSE(failure.GetLocation().IsKnown());
        }
    }
}

TEST(DeclarationErrors, TheExceptionSurvivesCopies) {
    const VocabularyException failure("f", {3, 4, 17, TString(L"/a")}, L"wrong");
    const std::unique_ptr<QuorvelException> clone(failure.Clone());
    EXPECT_STREQ("f:3:4: /a: wrong", clone->what());
    EXPECT_THROW(clone->Throw(), VocabularyException);
}
