#include <qvpreslayer/ParameterTypeSerializer.h>  // first: the header stands alone

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Failures.h"
#include "support/ListHost.h"
#include "support/Printing.h"

namespace {

template <class N>
class NameSerializers : public testing::Test {};

using NameTypes = testing::Types<FieldName, QualifiedName>;
TYPED_TEST_SUITE(NameSerializers, NameTypes);

}  // namespace

static_assert(std::is_convertible_v<FieldName, QualifiedName>, "both are written as qualified names");

TYPED_TEST(NameSerializers, TextIsTheFullValue) {
    for (const wchar_t* text : {L"[price]", L"[orders].[price]", L"[a]]b].[c]", L"[a.b]", L"[ ]", L"[ä].[\u4e2d]",
                                L"[1].[2].[3].[4].[5].[6].[7].[8]"}) {
        const TypeParam name = TypeParam::ParseGlobal(text);
        EXPECT_EQ(text, ParameterTypeSerializer<TypeParam>::TypeToString(name));
        EXPECT_EQ(name.GetFullValue(), ParameterTypeSerializer<TypeParam>::TypeToString(name));
    }
}

TYPED_TEST(NameSerializers, TextIsParsed) {
    EXPECT_EQ(TypeParam::ParseGlobal(L"[orders].[price]"),
              ParameterTypeSerializer<TypeParam>::TypeFromString(L"[orders].[price]"));
    EXPECT_EQ(L"[price]", ParameterTypeSerializer<TypeParam>::TypeFromString(L"price").GetFullValue());
    EXPECT_EQ(L"[a.b]", ParameterTypeSerializer<TypeParam>::TypeFromString(L"a.b").GetFullValue());
}

TYPED_TEST(NameSerializers, RoundTrip) {
    for (const wchar_t* text :
         {L"price", L"[price]", L"[orders].[price]", L"[a]]b].[c]", L"[]]]", L"[a].[b].[c].[d]"}) {
        const TypeParam name = ParameterTypeSerializer<TypeParam>::TypeFromString(text);
        const TString written = ParameterTypeSerializer<TypeParam>::TypeToString(name);
        EXPECT_EQ(name, ParameterTypeSerializer<TypeParam>::TypeFromString(written)) << text;
    }
}

TYPED_TEST(NameSerializers, FailuresOfParsingPass) {
    for (const wchar_t* text : {L"[", L"[a", L"[]", L"[a].[]", L"[a].", L"[a][b]", L"[a]b", L".[a]",
                                L"[1].[2].[3].[4].[5].[6].[7].[8].[9]"}) {
        EXPECT_THAT(Doing([&] { ParameterTypeSerializer<TypeParam>::TypeFromString(text); }), ThrowsNaming(text))
            << text;
    }
    EXPECT_THROW(ParameterTypeSerializer<TypeParam>::TypeFromString(L""), QuorvelException);
}

TYPED_TEST(NameSerializers, ListsAreNeverPacked) {
    ListHost<TypeParam> host;
    const TypeParam name = TypeParam::ParseGlobal(L"[a]");
    EXPECT_EQ("values:1[[a] [a] [a] [a]]", host.Packed({name, name, name, name}));
}
