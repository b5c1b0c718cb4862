#include "tools/vocabulary/NearestNames.h"

#include <gtest/gtest.h>

#include "support/Printing.h"

using qvpres::NearestNames;
using qvpres::NearestNamesHint;

namespace {

const std::vector<TString> kKnown = {L"title", L"mark-sizes", L"mark-size", L"color", L"id"};

}  // namespace

TEST(NearestNames, TheNearestComesFirst) {
    EXPECT_EQ((std::vector<TString>{L"mark-sizes", L"mark-size"}), NearestNames(u"mark-sizess", kKnown));
    EXPECT_EQ((std::vector<TString>{L"mark-size"}), NearestNames(u"marksize", kKnown, 1));
}

TEST(NearestNames, SwappedNeighboursAreOneError) {
    EXPECT_EQ((std::vector<TString>{L"id"}), NearestNames(u"di", kKnown));
}

TEST(NearestNames, CaseAndJointsDoNotCount) { EXPECT_EQ(L"mark-sizes", NearestNames(u"MARK_SIZES", kKnown).at(0)); }

TEST(NearestNames, WhatIsFarIsNotNamed) {
    EXPECT_TRUE(NearestNames(u"background", kKnown).empty());
    EXPECT_TRUE(NearestNames(std::u16string(100000, u'x'), kKnown).empty());
    EXPECT_TRUE(NearestNames(u"title", {TString(std::size_t{1000000}, u'x')}).empty());
}

TEST(NearestNames, TheHintReadsAsASentence) {
    EXPECT_EQ(L"", NearestNamesHint(u"zzz", kKnown));
    EXPECT_EQ(L"; did you mean \"title\"?", NearestNamesHint(u"tilte", kKnown));
    EXPECT_EQ(L"; did you mean \"mark-size\" or \"mark-sizes\"?", NearestNamesHint(u"mark-siz", kKnown));
    EXPECT_EQ(L"; did you mean \"ab\", \"ac\" or \"ad\"?", NearestNamesHint(u"aa", {L"ab", L"ac", L"ad", L"ae"}));
}
