#include <qvcore/Collation.h>

#include <utility>

#include <gtest/gtest.h>

#include <qvsys/QuorvelException.h>

#include "support/Printing.h"

namespace {

TEST(Collation, KeepsNameAndFlags) {
    const Collation collation(u"LEN_RUS_S2-a9", 3);
    EXPECT_EQ(TString(u"LEN_RUS_S2-a9"), collation.GetName());
    EXPECT_EQ(3, collation.GetFlags());
    EXPECT_EQ(0, Collation(u"root").GetFlags());
}

TEST(Collation, EqualsBySameNameAndFlags) {
    EXPECT_EQ(Collation(u"root", 1), Collation(u"root", 1));
    EXPECT_NE(Collation(u"root", 1), Collation(u"root", 2));
    EXPECT_NE(Collation(u"root", 1), Collation(u"Root", 1));
    EXPECT_EQ(std::hash<Collation>()(Collation(u"root", 1)), std::hash<Collation>()(Collation(u"root", 1)));
}

TEST(Collation, UnknownIsTheOneNamedUnknown) {
    EXPECT_EQ(TString(u"unknown"), GetUnknownCollation().GetName());
    EXPECT_EQ(0, GetUnknownCollation().GetFlags());
    EXPECT_EQ(GetUnknownCollation(), Collation(u"unknown", 0));
    EXPECT_EQ(GetUnknownCollation(), Collation());
    EXPECT_NE(GetUnknownCollation(), Collation(u"unknown", 1));
}

TEST(Collation, TakesTheEmptyNameAsANameOfItsOwn) {
    EXPECT_TRUE(Collation(u"").GetName().empty());
    EXPECT_EQ(Collation(u""), Collation(u""));
    EXPECT_NE(GetUnknownCollation(), Collation(u""));
}

TEST(Collation, TakesNamesUpTo64Characters) {
    EXPECT_EQ(64, Collation(TString(64, u'z')).GetName().length());
    EXPECT_THROW(Collation(TString(65, u'z')), QuorvelException);
}

TEST(Collation, RefusesEveryOtherCharacter) {
    for (char16_t unit = 0; unit < 0x200; ++unit) {
        const bool allowed = (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'Z') ||
                             (unit >= u'a' && unit <= u'z') || unit == u'_' || unit == u'-';
        SCOPED_TRACE(static_cast<int>(unit));
        const TString name = TString(u"a") + TString(1, unit);
        if (allowed) {
            EXPECT_EQ(name, Collation(name).GetName());
        } else {
            EXPECT_THROW(Collation{name}, QuorvelException);
        }
    }
}

TEST(Collation, StaysWithItsCopyWhenTheSourceGoes) {
    Collation copy;
    {
        const Collation source(u"short-lived");
        copy = source;
    }
    EXPECT_EQ(TString(u"short-lived"), copy.GetName());
    EXPECT_EQ(Collation(u"short-lived"), copy);
}

TEST(Collation, IsUnknownAfterItWasMovedFrom) {
    Collation source(u"moved");
    const Collation target(std::move(source));
    EXPECT_EQ(TString(u"moved"), target.GetName());
    EXPECT_EQ(GetUnknownCollation(), source);
}

TEST(Collation, IsOnePointerWide) { EXPECT_EQ(sizeof(void*), sizeof(Collation)); }

}  // namespace
