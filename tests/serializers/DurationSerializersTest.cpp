#include <qvpreslayer/ParameterTypeSerializer.h>  // first: the header stands alone

#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Failures.h"
#include "support/Printing.h"

namespace {

static_assert(std::is_same_v<SecondsDuration, std::chrono::seconds>);
static_assert(std::is_same_v<MillisecondsDuration, std::chrono::milliseconds>);
static_assert(std::is_same_v<MicrosecondsDuration, std::chrono::microseconds>);
static_assert(std::is_same_v<NanosecondsDuration, std::chrono::nanoseconds>);
static_assert(std::is_same_v<HoursDuration::rep, int> && std::is_same_v<HoursDuration::period, std::ratio<3600, 1>>);
static_assert(std::is_same_v<MinutesDuration::rep, int> && std::is_same_v<MinutesDuration::period, std::ratio<60, 1>>);

template <class D>
TString TextOf(typename D::rep ticks) {
    return ParameterTypeSerializer<D>::TypeToString(D(ticks));
}

template <class D>
typename D::rep TicksOf(const TString& text) {
    return ParameterTypeSerializer<D>::TypeFromString(text).count();
}

template <class D>
class DurationSerializers : public testing::Test {};

using DurationTypes = testing::Types<HoursDuration, MinutesDuration, SecondsDuration, MillisecondsDuration,
                                     MicrosecondsDuration, NanosecondsDuration>;
TYPED_TEST_SUITE(DurationSerializers, DurationTypes);

template <class D>
class WideDurationSerializers : public testing::Test {};

using WideDurationTypes =
    testing::Types<SecondsDuration, MillisecondsDuration, MicrosecondsDuration, NanosecondsDuration>;
TYPED_TEST_SUITE(WideDurationSerializers, WideDurationTypes);

template <class D>
class NarrowDurationSerializers : public testing::Test {};

using NarrowDurationTypes = testing::Types<HoursDuration, MinutesDuration>;
TYPED_TEST_SUITE(NarrowDurationSerializers, NarrowDurationTypes);

}  // namespace

TYPED_TEST(DurationSerializers, TicksInTheirOwnUnit) {
    EXPECT_EQ(L"90", TextOf<TypeParam>(90));
    EXPECT_EQ(L"0", TextOf<TypeParam>(0));
    EXPECT_EQ(L"-5", TextOf<TypeParam>(-5));
    EXPECT_EQ(L"1000000", TextOf<TypeParam>(1000000));
    EXPECT_EQ(90, TicksOf<TypeParam>(L"90"));
    EXPECT_EQ(0, TicksOf<TypeParam>(L"0"));
    EXPECT_EQ(-5, TicksOf<TypeParam>(L"-5"));
    EXPECT_EQ(12, TicksOf<TypeParam>(L"+012"));
}

// Not the failure of numbers: the plain exception.
TYPED_TEST(DurationSerializers, OtherTextsAreRefused) {
    for (const wchar_t* text : {L"x", L"", L"1.5", L" 5", L"5 ", L"5h", L"90s", L"1e3", L"null", L"-", L"1,000", L"0x5",
                                L"9223372036854775808", L"-9223372036854775809", L"99999999999999999999999"}) {
        EXPECT_THAT(Doing([&] { TicksOf<TypeParam>(text); }), ThrowsMessageText(L"Data serialization error")) << text;
    }
}

TYPED_TEST(WideDurationSerializers, SixtyFourBits) {
    EXPECT_EQ(L"9223372036854775807", TextOf<TypeParam>(9223372036854775807));
    EXPECT_EQ(L"-9223372036854775808", TextOf<TypeParam>(std::numeric_limits<Int64>::min()));
    EXPECT_EQ(9223372036854775807, TicksOf<TypeParam>(L"9223372036854775807"));
    EXPECT_EQ(std::numeric_limits<Int64>::min(), TicksOf<TypeParam>(L"-9223372036854775808"));
    EXPECT_EQ(4294967297, TicksOf<TypeParam>(L"4294967297"));
}

TYPED_TEST(NarrowDurationSerializers, ThirtyTwoBitExtremes) {
    EXPECT_EQ(L"2147483647", TextOf<TypeParam>(2147483647));
    EXPECT_EQ(L"-2147483648", TextOf<TypeParam>(std::numeric_limits<int>::min()));
    EXPECT_EQ(2147483647, TicksOf<TypeParam>(L"2147483647"));
    EXPECT_EQ(std::numeric_limits<int>::min(), TicksOf<TypeParam>(L"-2147483648"));
}

// Hours and minutes are read with 64 bits and keep the low 32 of them.
TYPED_TEST(NarrowDurationSerializers, KeepTheLowBits) {
    const struct {
        const wchar_t* text;
        int ticks;
    } cases[] = {
        {L"4294967297", 1},           {L"4294967296", 0},
        {L"4294967295", -1},          {L"2147483648", std::numeric_limits<int>::min()},
        {L"-2147483649", 2147483647}, {L"9223372036854775807", -1},
        {L"-9223372036854775808", 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.ticks, TicksOf<TypeParam>(c.text)) << c.text;
    }
}
