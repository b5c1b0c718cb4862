#include <qvcore/IndirectString.h>

#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/Printing.h"

namespace {

const Collation& Root() {
    static const Collation s_root(u"root");
    return s_root;
}

TEST(IndirectString, AnswersTextAndCollation) {
    const IndirectString string = IndirectString::Lookup(Root(), u"a,b");
    EXPECT_EQ(TString(u"a,b"), string.GetText());
    EXPECT_EQ(Root(), string.GetCollation());
}

TEST(IndirectString, SharesOneTextPerPair) {
    const IndirectString first = IndirectString::Lookup(Root(), u"shared");
    const IndirectString second = IndirectString::Lookup(Collation(u"root"), u"shared");
    EXPECT_EQ(first, second);
    EXPECT_EQ(&first.GetText(), &second.GetText());
}

TEST(IndirectString, KeepsPairsApart) {
    const IndirectString string = IndirectString::Lookup(Root(), u"text");
    EXPECT_NE(string, IndirectString::Lookup(Root(), u"Text"));
    EXPECT_NE(string, IndirectString::Lookup(GetUnknownCollation(), u"text"));
    EXPECT_NE(string, IndirectString::Lookup(Collation(u"root", 1), u"text"));
}

TEST(IndirectString, HashesByText) {
    const IndirectString string = IndirectString::Lookup(Root(), u"text");
    EXPECT_EQ(string.GetTextHash(), IndirectString::Lookup(GetUnknownCollation(), u"text").GetTextHash());
    EXPECT_EQ(string.GetTextHash(), std::hash<IndirectString>()(string));
    EXPECT_EQ(IndirectString::Lookup(Root(), u"").GetTextHash(), IndirectString().GetTextHash());
}

TEST(IndirectString, DefaultIsTheEmptyTextOfTheUnknownCollation) {
    EXPECT_TRUE(IndirectString().GetText().empty());
    EXPECT_EQ(GetUnknownCollation(), IndirectString().GetCollation());
    EXPECT_EQ(IndirectString(), IndirectString::Lookup(GetUnknownCollation(), u""));
    EXPECT_NE(IndirectString(), IndirectString::Lookup(Root(), u""));
}

TEST(IndirectString, KeepsEveryCodeUnit) {
    const TString text(std::u16string_view(u"a\0b\xD800", 4));
    EXPECT_EQ(text, IndirectString::Lookup(Root(), text).GetText());
    EXPECT_NE(IndirectString::Lookup(Root(), u"a"), IndirectString::Lookup(Root(), text));
}

TEST(IndirectString, CountsASharedTextOnce) {
    const std::size_t before = IndirectString::GetTableSize();
    const IndirectString first = IndirectString::Lookup(Root(), u"counted once");
    const IndirectString second = IndirectString::Lookup(Root(), u"counted once");
    const IndirectString copy = first;
    EXPECT_EQ(before + 1, IndirectString::GetTableSize());
}

TEST(IndirectString, LeavesTheTableWithItsLastUser) {
    const std::size_t before = IndirectString::GetTableSize();
    {
        IndirectString last;
        {
            const IndirectString first = IndirectString::Lookup(Root(), u"leaves");
            last = first;
        }
        EXPECT_EQ(before + 1, IndirectString::GetTableSize());
        EXPECT_EQ(TString(u"leaves"), last.GetText());
    }
    EXPECT_EQ(before, IndirectString::GetTableSize());
}

TEST(IndirectString, ManyTextsLeaveNothingBehind) {
    const std::size_t before = IndirectString::GetTableSize();
    {
        std::vector<IndirectString> strings;
        for (int i = 0; i < 50'000; ++i) {
            strings.push_back(IndirectString::Lookup(Root(), TString::number(i)));
        }
        EXPECT_EQ(before + 50'000, IndirectString::GetTableSize());
        for (int i = 0; i < 50'000; ++i) {
            ASSERT_EQ(TString::number(i), strings[static_cast<std::size_t>(i)].GetText());
        }
    }
    EXPECT_EQ(before, IndirectString::GetTableSize());
    EXPECT_EQ(TString(u"7"), IndirectString::Lookup(Root(), u"7").GetText());
}

TEST(IndirectString, IsEmptyAfterItWasMovedFrom) {
    IndirectString source = IndirectString::Lookup(Root(), u"moved");
    const IndirectString target = std::move(source);
    EXPECT_EQ(TString(u"moved"), target.GetText());
    EXPECT_TRUE(source.GetText().empty());
}

}  // namespace
