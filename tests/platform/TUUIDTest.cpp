#include <qvcore/TUUID.h>

#include <gtest/gtest.h>

#include <qvsys/QuorvelException.h>

#include "support/Printing.h"

namespace {

TEST(TUUID, TextIsLowerCaseWithDashes) {
    EXPECT_EQ(L"6ba7b810-9dad-11d1-80b4-00c04fd430c8", TUUID(L"6BA7B810-9DAD-11d1-80b4-00C04FD430C8").ToString(0));
    EXPECT_EQ(L"01234567-89ab-cdef-0123-456789abcdef", TUUID(L"01234567-89ab-cdef-0123-456789abcdef").ToString());
}

TEST(TUUID, IsNilAtFirst) {
    EXPECT_EQ(L"00000000-0000-0000-0000-000000000000", TUUID().ToString());
    EXPECT_EQ(TUUID(L"00000000-0000-0000-0000-000000000000"), TUUID());
}

TEST(TUUID, IsOrderedByItsText) {
    const TUUID low(L"00000000-0000-0000-0000-0000000000ff");
    const TUUID high(L"00000000-0000-0000-0000-000000000100");
    EXPECT_LT(low, high);
    EXPECT_GT(high, low);
    EXPECT_LE(low, low);
    EXPECT_GE(low, low);
}

TEST(TUUID, TextReadsBackToTheSameIdentifier) {
    const TUUID uuid(L"ffffffff-0000-8000-0001-00c04fd430c8");
    EXPECT_EQ(uuid, TUUID(uuid.ToString(0)));
}

TEST(TUUID, MalformedTextsAreNamed) {
    const wchar_t* const texts[] = {
        L"",
        L"{6ba7b810-9dad-11d1-80b4-00c04fd430c8}",  // braces
        L"6ba7b8109dad11d180b400c04fd430c8",        // no dashes
        L"6ba7b810-9dad-11d1-80b400c04fd430c8",     // a dash missing
        L"6ba7b810-9dad-11d1-80b4-00c04fd430c",     // a digit too few
        L"6ba7b810-9dad-11d1-80b4-00c04fd430c80",   // a digit too many
        L"6ba7b81-09dad-11d1-80b4-00c04fd430c8",    // a dash elsewhere
        L"6ba7b810+9dad-11d1-80b4-00c04fd430c8",
        L"6ba7b810-9dad-11d1-80b4-00c04fd430cg",
        L"6ba7b810-9dad-11d1-80b4-00c04fd430c\uFF18",  // a digit, but none of ASCII
        L" 6ba7b810-9dad-11d1-80b4-00c04fd430c",
        L"6ba7b810-9dad-11d1-80b4-00c04fd430c ",
        L"{6ba7b810-9dad-11d1-80b4-00c04fd43}",  // 36 with the braces
    };
    for (const wchar_t* const text : texts) {
        SCOPED_TRACE(testing::PrintToString(TString(text)));
        try {
            const TUUID uuid{TString(text)};
            FAIL() << "no exception";
        } catch (const QuorvelException& exception) {
            EXPECT_EQ(L"Malformed UUID: " + TString(text), exception.GetMessageText());
        }
    }
}

TEST(TUUID, NulsAreNoEndOfTheText) {
    TString text(L"6ba7b810-9dad-11d1-80b4-00c04fd430c8");
    text.push_back(u'\0');
    EXPECT_THROW(TUUID{text}, QuorvelException);
}

TEST(TUUID, OtherFormatsDoNotExist) {
    EXPECT_THROW(TUUID().ToString(1), QuorvelException);
    EXPECT_THROW(TUUID().ToString(-1), QuorvelException);
}

TEST(TUUID, OrdersAsItsText) {
    const TUUID low(L"00000000-0000-0000-0000-0000000000ff");
    const TUUID high(L"80000000-0000-0000-0000-000000000000");
    EXPECT_LT(low, high);
    EXPECT_NE(low, high);
    EXPECT_LT(TUUID(), low);
}

}  // namespace
