#include <qvcore/TString.h>

#include <gtest/gtest.h>

#include <climits>

#include "support/Printing.h"

namespace {

using Parts = std::vector<TString>;

TEST(TString, SplitKeepsEmptyParts) {
    const struct {
        TString text;
        TString separator;
        Parts parts;
    } cases[] = {
        {L"", L":", {L""}},
        {L"a", L":", {L"a"}},
        {L":", L":", {L"", L""}},
        {L"a:b:c", L":", {L"a", L"b", L"c"}},
        {L":a::b:", L":", {L"", L"a", L"", L"b", L""}},
        {L"a, b,c", L", ", {L"a", L"b,c"}},
        {L"aaa", L"aa", {L"", L"a"}},  // from left to right
        {L"abc", L"", {L"abc"}},       // an empty separator separates nothing
        {L"ab", L"abc", {L"ab"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.text));
        EXPECT_EQ(c.parts, c.text.split(c.separator));
    }
}

TEST(TString, IndexOfFindsTheFirstFromAPosition) {
    const TString text(L"abcabc");
    EXPECT_EQ(0, text.indexOf(L"abc"));
    EXPECT_EQ(3, text.indexOf(L"abc", 1));
    EXPECT_EQ(3, text.indexOf(L"abc", 3));
    EXPECT_EQ(-1, text.indexOf(L"abc", 4));
    EXPECT_EQ(2, text.indexOf(L"c", -5));  // a negative position counts as 0
    EXPECT_EQ(-1, text.indexOf(L"C"));
    EXPECT_EQ(-1, text.indexOf(L"a", INT_MAX));
    EXPECT_EQ(-1, TString().indexOf(L"a"));
}

TEST(TString, TheEmptyTextStandsEverywhereUpToTheEnd) {
    const TString text(L"abc");
    EXPECT_EQ(0, text.indexOf(L""));
    EXPECT_EQ(2, text.indexOf(L"", 2));
    EXPECT_EQ(3, text.indexOf(L"", 3));
    EXPECT_EQ(-1, text.indexOf(L"", 4));
}

TEST(TString, MidIsCutToTheText) {
    const TString text(L"abcdef");
    const struct {
        int position;
        int n;
        const wchar_t* part;
    } cases[] = {
        {0, -1, L"abcdef"}, {2, -1, L"cdef"},      {2, 3, L"cde"}, {2, 0, L""},
        {2, 100, L"cdef"},  {2, INT_MAX, L"cdef"}, {5, 1, L"f"},   {6, -1, L""},
        {7, -1, L""},       {INT_MAX, 1, L""},     {-3, 2, L"ab"}, {INT_MIN, -1, L"abcdef"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.position << " " << c.n);
        EXPECT_EQ(c.part, text.mid(c.position, c.n));
    }
    EXPECT_EQ(L"def", text.mid(3));
}

TEST(TString, LeftAndRightAreCutToTheText) {
    const TString text(L"abc");
    EXPECT_EQ(L"ab", text.left(2));
    EXPECT_EQ(L"bc", text.right(2));
    for (const int all : {3, 4, INT_MAX}) {
        EXPECT_EQ(text, text.left(all));
        EXPECT_EQ(text, text.right(all));
    }
    for (const int none : {0, -1, INT_MIN}) {
        EXPECT_EQ(L"", text.left(none));
        EXPECT_EQ(L"", text.right(none));
    }
}

TEST(TString, ReplaceTakesEveryOccurrenceOnce) {
    const struct {
        TString text;
        TString before;
        TString after;
        TString result;
    } cases[] = {
        {L"a.b.c", L".", L"", L"abc"},    {L"50%", L"%", L"%%", L"50%%"},  // what was put in is not looked at again
        {L"aaa", L"aa", L"a", L"aa"},                                      // nor does it join with what follows
        {L"##", L"#", L"\\#", L"\\#\\#"}, {L"abc", L"", L"x", L"abc"},     // an empty text is replaced nowhere
        {L"abc", L"d", L"x", L"abc"},     {L"abc", L"abc", L"", L""},     {L"", L"a", L"b", L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.text));
        TString text(c.text);
        EXPECT_EQ(&text, &text.replace(c.before, c.after));
        EXPECT_EQ(c.result, text);
    }
}

TEST(TString, ReplaceTakesTheTextItselfAsArgument) {
    TString text(L"ab");
    text.replace(L"a", text);
    EXPECT_EQ(L"abb", text);
    text.replace(text, L"c");
    EXPECT_EQ(L"c", text);
}

TEST(TString, RemoveAtRemovesOneUnit) {
    TString text(L"abc");
    EXPECT_EQ(&text, &text.removeAt(1));
    EXPECT_EQ(L"ac", text);
    EXPECT_EQ(L"a", text.removeAt(1));
    EXPECT_EQ(L"", text.removeAt(0));
}

TEST(TString, RemoveAtOutsideChangesNothing) {
    TString text(L"abc");
    for (const int position : {-1, 3, INT_MAX, INT_MIN}) {
        EXPECT_EQ(L"abc", text.removeAt(position));
    }
}

TEST(TString, KnowsItsStartAndItsEnd) {
    const TString text(L"abc");
    EXPECT_TRUE(text.startsWith(L"ab"));
    EXPECT_FALSE(text.startsWith(L"bc"));
    EXPECT_TRUE(text.endsWith(L"bc"));
    EXPECT_FALSE(text.endsWith(L"xabc"));
    EXPECT_TRUE(text.startsWith(L"") && text.endsWith(L""));
}

}  // namespace
