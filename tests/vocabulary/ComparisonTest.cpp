#include "tools/vocabulary/Comparison.h"

#include <gtest/gtest.h>

#include "vocabulary/VocabularyTestSupport.h"

using namespace qvpres;

namespace {

// The changes, a line for each: namespace, identifier, name, part, before, after, verbose and short texts.
std::string ChangesOf(const Vocabulary& older, const Vocabulary& newer) {
    std::string text;
    for (const Change& change : Compare(older, newer)) {
        text += change.nameSpace.ToUtf8() + " " + std::to_string(change.id) + " " + change.name.ToUtf8() + " " +
                TString(ToText(change.part)).ToUtf8() + " [" + change.older.ToUtf8() + "] [" + change.newer.ToUtf8() +
                "] " + TString(ToText(change.verboseTexts)).ToUtf8() + "/" +
                TString(ToText(change.shortTexts)).ToUtf8() + "\n";
    }
    return text;
}

std::string ChangesOf(const std::string& older, const std::string& newer) {
    return ChangesOf(ViewOf(older), ViewOf(newer));
}

const std::string kTitle = R"({"id": 1001, "name": "title", "short": "ti", "type": "text"})";
const std::string kSize = R"({"id": 1002, "name": "size", "short": "si", "type": "int"})";

}  // namespace

TEST(Comparison, NothingChangedIsNoChange) {
    const std::string all = ReadText(VOCABULARY_TEST_DATA "/every-type.json");
    EXPECT_EQ("", ChangesOf(VocabularyOf(all), VocabularyOf(all)));
}

TEST(Comparison, OrderDescriptionsAndCppDoNotCount) {
    EXPECT_EQ("",
              ChangesOf(kTitle + "," + kSize, kSize + R"(, {"id": 1001, "name": "title", "short": "ti", "type": "text",
                                         "description": "above", "cppSerializer": "A"})"));
}

TEST(Comparison, AddedAndRemoved) {
    EXPECT_EQ("view 1002 size added [] [] read/read\n", ChangesOf(kTitle, kTitle + "," + kSize));
    EXPECT_EQ("view 1002 size removed [] [] fail/fail\n", ChangesOf(kTitle + "," + kSize, kTitle));
    EXPECT_EQ("view 1001 a removed [] [] fail/read\n", ChangesOf(R"({"id": 1001, "name": "a", "type": "int"})", ""));
}

TEST(Comparison, NamesThatChanged) {
    EXPECT_EQ("view 1001 title verbose name [title] [caption] fail/read\n",
              ChangesOf(kTitle, R"({"id": 1001, "name": "caption", "short": "ti", "type": "text"})"));
    EXPECT_EQ("view 1001 title short name [ti] [] read/fail\n",
              ChangesOf(kTitle, R"({"id": 1001, "name": "title", "type": "text"})"));
    EXPECT_EQ("view 1001 title short name [] [ti] read/read\n",
              ChangesOf(R"({"id": 1001, "name": "title", "type": "text"})", kTitle));
}

TEST(Comparison, NamesThatChangedPlaces) {
    const std::string older = kTitle + R"(, {"id": 1002, "name": "text", "short": "te", "type": "text"})";
    const std::string newer = R"({"id": 1001, "name": "text", "short": "ti", "type": "text"},
                                 {"id": 1002, "name": "title", "short": "te", "type": "text"})";
    EXPECT_EQ(
        "view 1001 title verbose name [title] [text] differ/read\n"
        "view 1002 text verbose name [text] [title] differ/read\n",
        ChangesOf(older, newer));
}

TEST(Comparison, AnotherIdentifierForTheSameNameConcernsNoText) {
    EXPECT_EQ("view 1001 title identifier [1001] [1009] read/read\n",
              ChangesOf(kTitle, R"({"id": 1009, "name": "title", "short": "ti", "type": "text"})"));
}

TEST(Comparison, KindsTypesAndForms) {
    EXPECT_EQ("view 1002 size type [int] [double] read/read\n",
              ChangesOf(kSize, R"({"id": 1002, "name": "size", "short": "si", "type": "double"})"));
    EXPECT_EQ("view 1002 size type [int] [bool] fail/fail\n",
              ChangesOf(kSize, R"({"id": 1002, "name": "size", "short": "si", "type": "bool"})"));
    EXPECT_EQ("view 1002 size kind [value] [list] fail/fail\n",
              ChangesOf(kSize, R"({"id": 1002, "name": "size", "short": "si", "kind": "list", "type": "int"})"));
    EXPECT_EQ("view 1003 day kind [bag] [structure] read/read\n",
              ChangesOf(R"({"id": 1003, "name": "day", "short": "d", "kind": "bag"})",
                        R"({"id": 1003, "name": "day", "short": "d", "kind": "structure"})"));
    EXPECT_EQ("view 1003 day form [record] [list] differ/differ\n",
              ChangesOf(R"({"id": 1003, "name": "day", "short": "d", "kind": "structure"})",
                        R"({"id": 1003, "name": "day", "short": "d", "kind": "structure", "form": "list"})"));
}

TEST(Comparison, WhatConcernsNoTextIsToldToo) {
    EXPECT_EQ(
        "view 1003 day members [any] [title] read/read\n"
        "view 1003 day unserializable [no] [yes] read/read\n",
        ChangesOf(kTitle + R"(, {"id": 1003, "name": "day", "short": "d", "kind": "bag"})",
                  kTitle + R"(, {"id": 1003, "name": "day", "short": "d", "kind": "bag", "members": ["title"],
                                 "unserializable": true})"));
    EXPECT_EQ(" 0  unserializable [] [5, 6] read/read\n",
              ChangesOf(VocabularyOf(R"({"namespaces": []})"),
                        VocabularyOf(R"({"namespaces": [], "unserializable": [6, 5]})")));
    EXPECT_EQ("", ChangesOf(VocabularyOf(R"({"namespaces": [], "unserializable": [6, 5]})"),
                            VocabularyOf(R"({"namespaces": [], "unserializable": [5, 6, 5]})")));
}

namespace {

// Two namespaces, the first with a fallback and parameters.
Vocabulary TwoSpaces(const std::string& fallback, const std::string& near, const std::string& far, int lastId = 9) {
    return VocabularyOf(R"({"namespaces": [{"name": "near", "firstId": 1, "lastId": )" + std::to_string(lastId) +
                        (fallback.empty() ? "" : R"(, "fallback": ")" + fallback + '"') + R"(, "parameters": [)" +
                        near + R"(]}, {"name": "far", "firstId": 11, "lastId": 19, "parameters": [)" + far + "]}]}");
}

const std::string kFarSize = R"({"id": 11, "name": "size", "short": "si", "type": "int"})";
const std::string kNearSize = R"({"id": 1, "name": "size", "short": "si", "type": "int"})";

}  // namespace

TEST(Comparison, NamespacesAndRanges) {
    const Vocabulary none = VocabularyOf(R"({"namespaces": []})");
    EXPECT_EQ("view 0  namespace added [] [] read/read\n", ChangesOf(none, ViewOf(kTitle)));
    EXPECT_EQ("view 0  namespace removed [] [] fail/fail\n", ChangesOf(ViewOf(kTitle), none));
    EXPECT_EQ("near 0  range [1 to 9] [1 to 10] read/read\n",
              ChangesOf(TwoSpaces("", "", ""), TwoSpaces("", "", "", 10)));
}

TEST(Comparison, NamesThatLedToAFallback) {
    EXPECT_EQ("near 0  fallback [far] [] fail/fail\n",
              ChangesOf(TwoSpaces("far", "", kFarSize), TwoSpaces("", "", kFarSize)));
    EXPECT_EQ("near 0  fallback [] [far] read/read\n",
              ChangesOf(TwoSpaces("", "", kFarSize), TwoSpaces("far", "", kFarSize)));
    // Moved to the namespace itself: the text is read, as another parameter.
    EXPECT_EQ(
        "near 1 size added [] [] differ/differ\n"
        "far 11 size removed [] [] fail/fail\n",
        ChangesOf(TwoSpaces("far", "", kFarSize), TwoSpaces("far", kNearSize, "")));
    // Moved to the fallback.
    EXPECT_EQ(
        "near 1 size removed [] [] differ/differ\n"
        "far 11 size added [] [] read/read\n",
        ChangesOf(TwoSpaces("far", kNearSize, ""), TwoSpaces("far", "", kFarSize)));
}

TEST(Comparison, AParameterThatAnotherNamespaceNowCovers) {
    EXPECT_EQ(
        "near 0  range [1 to 9] [1 to 11] read/read\n"
        "near 9 a covered by [near] [far] fail/fail\n"
        "far 0  range [10 to 19] [9 to 19] read/read\n",
        ChangesOf(VocabularyOf(R"({"namespaces": [
            {"name": "near", "firstId": 1, "lastId": 9, "parameters": [{"id": 9, "name": "a", "type": "int"}]},
            {"name": "far", "firstId": 10, "lastId": 19, "parameters": []}]})"),
                  VocabularyOf(R"({"namespaces": [
            {"name": "near", "firstId": 1, "lastId": 11, "parameters": [{"id": 9, "name": "a", "type": "int"}]},
            {"name": "far", "firstId": 9, "lastId": 19, "parameters": []}]})")));
}

TEST(Comparison, TheVerdictIsTheWorstOfAll) {
    const auto changes =
        Compare(ViewOf(kTitle + "," + kSize), ViewOf(R"({"id": 1001, "name": "caption", "short": "ti", "type": "text"},
                                           {"id": 1002, "name": "size", "short": "si", "type": "float"})"));
    EXPECT_EQ(OldTexts::Fail, Verdict(changes, false));
    EXPECT_EQ(OldTexts::Differ, Verdict(changes, true));
    EXPECT_EQ(OldTexts::Read, Verdict({}, true));
}
