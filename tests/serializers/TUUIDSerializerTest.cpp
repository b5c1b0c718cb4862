#include <qvpreslayer/ParameterTypeSerializer.h>  // first: the header stands alone

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Failures.h"
#include "support/ListHost.h"
#include "support/Printing.h"

namespace {

using TUUIDSerializer = ParameterTypeSerializer<TUUID>;

constexpr const wchar_t* kText = L"00112233-4455-6677-8899-aabbccddeeff";

}  // namespace

TEST(TUUIDSerializer, TextIsFormatZero) {
    const TUUID uuid{TString(kText)};
    EXPECT_EQ(kText, TUUIDSerializer::TypeToString(uuid));
    EXPECT_EQ(uuid.ToString(0), TUUIDSerializer::TypeToString(uuid));
    EXPECT_EQ(L"00000000-0000-0000-0000-000000000000", TUUIDSerializer::TypeToString(TUUID()));
}

TEST(TUUIDSerializer, RoundTrip) {
    for (const wchar_t* text :
         {kText, L"ffffffff-ffff-ffff-ffff-ffffffffffff", L"00000000-0000-0000-0000-000000000000"}) {
        EXPECT_EQ(text, TUUIDSerializer::TypeToString(TUUIDSerializer::TypeFromString(text)));
    }
}

TEST(TUUIDSerializer, UpperCaseIsReadAndWrittenLower) {
    EXPECT_EQ(TUUID(TString(kText)), TUUIDSerializer::TypeFromString(L"00112233-4455-6677-8899-AABBCCDDEEFF"));
    EXPECT_EQ(kText,
              TUUIDSerializer::TypeToString(TUUIDSerializer::TypeFromString(L"00112233-4455-6677-8899-AaBbCcDdEeFf")));
}

TEST(TUUIDSerializer, FailuresOfTheIdentifierPass) {
    for (const wchar_t* text : {L"x", L"{00112233-4455-6677-8899-aabbccddeeff}", L"00112233-4455-6677-8899-aabbccddeef",
                                L"00112233-4455-6677-8899-aabbccddeeff0", L"00112233445566778899aabbccddeeff",
                                L"00112233-4455-6677-8899-aabbccddeefg", L" 00112233-4455-6677-8899-aabbccddeef",
                                L"0011223-34455-6677-8899-aabbccddeeff"}) {
        EXPECT_THAT(Doing([&] { TUUIDSerializer::TypeFromString(text); }), ThrowsNaming(text)) << text;
    }
    EXPECT_THROW(TUUIDSerializer::TypeFromString(L""), QuorvelException);
}

TEST(TUUIDSerializer, ListsAreNeverPacked) {
    ListHost<TUUID> host;
    EXPECT_EQ(
        "values:1[00000000-0000-0000-0000-000000000000 00000000-0000-0000-0000-000000000000 "
        "00000000-0000-0000-0000-000000000000 00000000-0000-0000-0000-000000000000]",
        host.Packed({TUUID(), TUUID(), TUUID(), TUUID()}));
}
