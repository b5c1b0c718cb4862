#include <qvcore/Messages.h>

#include <gtest/gtest.h>

#include "support/Printing.h"

namespace {

TEST(Messages, KnownTexts) {
    EXPECT_EQ(L"The text is not valid JSON.", LookupTStr(1732813050));
    EXPECT_EQ(L"The value of member \"%1\" does not fit its parameter.", LookupTStr(178195976));
    EXPECT_EQ(L"The enumeration value is not recognised.", LookupTStr(1237050406));
}

TEST(Messages, UnknownNumbersAreNamed) {
    for (const StringId id : {0u, 42u, 4294967295u}) {
        EXPECT_NE(-1, LookupTStr(id).indexOf(TString::number(id)));
        EXPECT_EQ(LookupTStr(id), LookupTFmtStr(id, {L"argument"}));
    }
}

TEST(Messages, ArgumentTakesItsPlace) {
    EXPECT_EQ(L"The value of member \"foo-bar\" does not fit its parameter.",
              LookupTFmtStr(Messages::kJSONKindMismatch, {L"foo-bar"}));
    EXPECT_EQ(L"The value of member \"\" does not fit its parameter.", LookupTFmtStr(178195976, {L""}));
}

TEST(Messages, ArgumentsAreNotExpandedAgain) {
    EXPECT_EQ(L"The value of member \"%1%1\" does not fit its parameter.", LookupTFmtStr(178195976, {L"%1%1"}));
    EXPECT_EQ(L"The value of member \"%2\" does not fit its parameter.", LookupTFmtStr(178195976, {L"%2", L"x"}));
}

TEST(Messages, PlacesWithoutArgumentStay) { EXPECT_EQ(LookupTStr(178195976), LookupTFmtStr(178195976, {})); }

TEST(Messages, ArgumentsWithoutPlaceAreDropped) {
    EXPECT_EQ(L"The text is not valid JSON.", LookupTFmtStr(Messages::kJSONNotValid, {L"a", L"b"}));
}

}  // namespace
