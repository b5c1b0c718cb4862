#include <qvpreslayer/ParameterTypeSerializer.h>  // first: the header stands alone

#include <limits>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Failures.h"
#include "support/Printing.h"

namespace {

template <class T>
struct NumberCase {
    T value;
    const wchar_t* text;
};

template <class T, std::size_t N>
void ExpectBothWays(const NumberCase<T> (&cases)[N]) {
    for (const auto& c : cases) {
        SCOPED_TRACE(TString(c.text).ToUtf8());
        EXPECT_EQ(c.text, ParameterTypeSerializer<T>::TypeToString(c.value));
        EXPECT_EQ(c.value, ParameterTypeSerializer<T>::TypeFromString(c.text));
    }
}

template <class T>
class IntegerSerializers : public testing::Test {};

using IntegerTypes = testing::Types<int, unsigned int, Int64, UInt64>;
TYPED_TEST_SUITE(IntegerSerializers, IntegerTypes);

}  // namespace

TEST(IntegerSerializer, IntBothWays) {
    ExpectBothWays<int>({{0, L"0"},
                         {1, L"1"},
                         {-1, L"-1"},
                         {-5, L"-5"},
                         {1000000, L"1000000"},
                         {2147483647, L"2147483647"},
                         {std::numeric_limits<int>::min(), L"-2147483648"}});
}

TEST(IntegerSerializer, UnsignedIntBothWays) {
    ExpectBothWays<unsigned int>({{0, L"0"}, {7, L"7"}, {2147483648U, L"2147483648"}, {4294967295U, L"4294967295"}});
}

TEST(IntegerSerializer, SixtyFourBitBothWays) {
    ExpectBothWays<Int64>({{0, L"0"},
                           {-1, L"-1"},
                           {4294967296, L"4294967296"},
                           {9223372036854775807, L"9223372036854775807"},
                           {std::numeric_limits<Int64>::min(), L"-9223372036854775808"}});
}

TEST(IntegerSerializer, UnsignedSixtyFourBitBothWays) {
    ExpectBothWays<UInt64>(
        {{0U, L"0"}, {9223372036854775808U, L"9223372036854775808"}, {18446744073709551615U, L"18446744073709551615"}});
}

TEST(IntegerSerializer, OutOfRangeIsNoNumber) {
    for (const wchar_t* text : {L"2147483648", L"-2147483649", L"4294967296", L"99999999999999999999"}) {
        EXPECT_THAT(Doing([&] { ParameterTypeSerializer<int>::TypeFromString(text); }), ThrowsParseFailure()) << text;
    }
    for (const wchar_t* text : {L"4294967296", L"-1", L"18446744073709551616"}) {
        EXPECT_THAT(Doing([&] { ParameterTypeSerializer<unsigned int>::TypeFromString(text); }), ThrowsParseFailure())
            << text;
    }
    for (const wchar_t* text : {L"9223372036854775808", L"-9223372036854775809"}) {
        EXPECT_THAT(Doing([&] { ParameterTypeSerializer<Int64>::TypeFromString(text); }), ThrowsParseFailure()) << text;
    }
    for (const wchar_t* text : {L"18446744073709551616", L"-1", L"-18446744073709551615"}) {
        EXPECT_THAT(Doing([&] { ParameterTypeSerializer<UInt64>::TypeFromString(text); }), ThrowsParseFailure())
            << text;
    }
}

TEST(IntegerSerializer, MinusBelongsToSignedTypesOnly) {
    EXPECT_EQ(0, ParameterTypeSerializer<int>::TypeFromString(L"-0"));
    EXPECT_EQ(-12, ParameterTypeSerializer<Int64>::TypeFromString(L"-0012"));
    EXPECT_THAT(Doing([] { ParameterTypeSerializer<unsigned int>::TypeFromString(L"-0"); }), ThrowsParseFailure());
    EXPECT_THAT(Doing([] { ParameterTypeSerializer<UInt64>::TypeFromString(L"-0"); }), ThrowsParseFailure());
}

TYPED_TEST(IntegerSerializers, PlusAndLeadingZerosAreRead) {
    EXPECT_EQ(TypeParam{5}, ParameterTypeSerializer<TypeParam>::TypeFromString(L"+5"));
    EXPECT_EQ(TypeParam{12}, ParameterTypeSerializer<TypeParam>::TypeFromString(L"00012"));
    EXPECT_EQ(TypeParam{0}, ParameterTypeSerializer<TypeParam>::TypeFromString(L"0000"));
}

TYPED_TEST(IntegerSerializers, OtherTextsAreNoNumbers) {
    const TString texts[] = {
        L"",
        L"x",
        L"1.0",
        L"1.",
        L"1e3",
        L" 1",
        L"1 ",
        L"\t1",
        L"1\n",
        L"1,000",
        L"1 000",
        L"0x10",
        L"1a",
        L"+",
        L"-",
        L"+-1",
        L"--1",
        L"null",
        L"true",
        L"1_0",
        L"\u0661",                                // an Arabic one
        L"\uff11",                                // a full-width one
        TString(std::u16string_view(u"1\0", 2)),  // a NUL behind
    };
    for (const TString& text : texts) {
        EXPECT_THAT(Doing([&] { ParameterTypeSerializer<TypeParam>::TypeFromString(text); }), ThrowsParseFailure())
            << '"' << text.ToUtf8() << '"';
    }
}

TYPED_TEST(IntegerSerializers, MillionDigits) {
    EXPECT_THAT(Doing([] { ParameterTypeSerializer<TypeParam>::TypeFromString(TString(1000000, u'7')); }),
                ThrowsParseFailure());
    TString padded(1000000, u'0');
    padded += L"7";
    EXPECT_EQ(TypeParam{7}, ParameterTypeSerializer<TypeParam>::TypeFromString(padded));
}
