#include <qvpreslayer/ParameterTypeSerializer.h>  // first: the header stands alone

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Failures.h"
#include "support/ListHost.h"
#include "support/Printing.h"

using BoolSerializer = ParameterTypeSerializer<bool>;

TEST(BoolSerializer, TwoWords) {
    EXPECT_EQ(L"true", BoolSerializer::TypeToString(true));
    EXPECT_EQ(L"false", BoolSerializer::TypeToString(false));
    EXPECT_TRUE(BoolSerializer::TypeFromString(L"true"));
    EXPECT_FALSE(BoolSerializer::TypeFromString(L"false"));
}

TEST(BoolSerializer, EveryOtherSpellingIsRefused) {
    const TString texts[] = {
        L"TRUE",  L"True",  L"FALSE",   L"False",   L"tRUE",
        L" true", L"true ", L"\tfalse", L"false\n", L"1",
        L"0",     L"",      L"yes",     L"no",      L"t",
        L"f",     L"truee", L"tru",     L"null",    TString(std::u16string_view(u"true\0", 5)),
    };
    for (const TString& text : texts) {
        EXPECT_THAT(Doing([&] { BoolSerializer::TypeFromString(text); }), ThrowsParseFailure())
            << '"' << text.ToUtf8() << '"';
    }
}

TEST(BoolSerializer, ListOfBools) {
    const std::vector<bool> values = {true, false, false, true};
    const std::vector<TString> texts = {L"true", L"false", L"false", L"true"};
    EXPECT_EQ(texts, BoolSerializer().ToStringList(Val<std::vector<bool>>(values)));
    EXPECT_EQ(values, GetParameterValue<std::vector<bool>>(BoolSerializer().FromStringList(texts, {}).Get()));
}

TEST(BoolSerializer, ListsAreNeverPacked) {
    ListHost<bool> host;
    EXPECT_EQ("values:3[true true true true true]", host.Packed({true, true, true, true, true}));
    EXPECT_EQ("values:3[true false]", host.Plain({true, false}));
    EXPECT_EQ("values:3[]", host.Packed({}));
}
