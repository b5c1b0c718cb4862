#include <qvpreslayer/ParameterTypeSerializer.h>  // first: the header stands alone

#include <gtest/gtest.h>

#include "support/ListHost.h"
#include "support/Printing.h"

namespace {

using PasswordSerializer = ParameterTypeSerializer<PasswordString>;

std::vector<PasswordString> Passwords() {
    return {PasswordString(L"x"), PasswordString(L""), PasswordString(L"a very long secret")};
}

}  // namespace

TEST(PasswordSerializer, TextIsTheMask) {
    for (const PasswordString& password : Passwords()) {
        EXPECT_EQ(PasswordString::s_Mask, PasswordSerializer::TypeToString(password));
        EXPECT_EQ(L"********", PasswordSerializer().ToString(Val(password)));
    }
}

TEST(PasswordSerializer, ListTextsAreMasks) {
    const std::vector<TString> masks(3, PasswordString::s_Mask);
    EXPECT_EQ(masks, PasswordSerializer().ToStringList(Val(Passwords())));
}

TEST(PasswordSerializer, MapTextsAreMasks) {
    const std::map<TString, PasswordString> passwords = {{L"a", PasswordString(L"x")}, {L"b", PasswordString(L"y")}};
    const std::map<TString, TString> masks = {{L"a", PasswordString::s_Mask}, {L"b", PasswordString::s_Mask}};
    EXPECT_EQ(masks, PasswordSerializer().ToStringMap(Val(passwords)));
}

TEST(PasswordSerializer, StreamItemsAreMasks) {
    ListHost<PasswordString> host;
    EXPECT_EQ("values:1[******** ******** ********]", host.Plain(Passwords()));
    EXPECT_EQ("values:1[******** ******** ********]", host.Packed(Passwords()));
}

TEST(PasswordSerializer, ReadingTakesTheTextAsThePassword) {
    EXPECT_EQ(L"s3cret", PasswordSerializer::TypeFromString(L"s3cret").Reveal());
    EXPECT_EQ(L"", PasswordSerializer::TypeFromString(L"").Reveal());
    const auto value = PasswordSerializer().FromString(L"from outside");
    EXPECT_EQ(L"from outside", GetParameterValue<PasswordString>(value.Get()).Reveal());
}

// What was written does not come back: the mask itself becomes the password.
TEST(PasswordSerializer, MaskReadsBackAsItself) {
    const TString text = PasswordSerializer::TypeToString(PasswordString(L"secret"));
    EXPECT_EQ(PasswordString(PasswordString::s_Mask), PasswordSerializer::TypeFromString(text));
}
