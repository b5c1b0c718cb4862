#include <qvcore/TextNumbers.h>

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <ctime>
#include <random>
#include <string>

#include "support/Printing.h"
#include "support/Sanitized.h"

namespace {

constexpr std::size_t kMillion = 1000000;

// Processor time that anything linear stays far below: 50 ms; more where the library counts its lines.
constexpr std::clock_t kSoon = CLOCKS_PER_SEC / (QV_TEST_COUNTED ? 2 : 20);

// count times the same unit.
std::u16string Repeat(std::size_t count, char16_t unit) { return std::u16string(count, unit); }

// What ParseDouble makes of the text, soon; NaN when it is no number.
double ParseQuickly(const std::u16string& text) {
    double value = std::nan("");
    const std::clock_t start = std::clock();
    const bool read = ParseDouble(text, value);
    EXPECT_LT(std::clock() - start, kSoon);
    EXPECT_EQ(read, !std::isnan(value));
    return value;
}

TEST(TextNumbers, ReadsPartsOfALongerText) {
    const std::u16string_view text = u"[12,-34,5.5]";
    int first = 0;
    Int64 second = 0;
    double third = 0;
    EXPECT_TRUE(ParseInt32(text.substr(1, 2), first));
    EXPECT_TRUE(ParseInt64(text.substr(4, 3), second));
    EXPECT_TRUE(ParseDouble(text.substr(8, 3), third));
    EXPECT_EQ(12, first);
    EXPECT_EQ(-34, second);
    EXPECT_EQ(5.5, third);
}

TEST(TextNumbers, ReadsEveryType) {
    unsigned int unsignedInt = 0;
    UInt64 unsignedLong = 0;
    float single = 0;
    EXPECT_TRUE(ParseUInt32(u"+4294967295", unsignedInt));
    EXPECT_TRUE(ParseUInt64(u"18446744073709551615", unsignedLong));
    EXPECT_TRUE(ParseFloat(u"-2.5e1", single));
    EXPECT_EQ(4294967295u, unsignedInt);
    EXPECT_EQ(18446744073709551615u, unsignedLong);
    EXPECT_EQ(-25.0F, single);
}

TEST(TextNumbers, FailureLeavesTheValueAlone) {
    int int32 = 5;
    unsigned int uint32 = 5;
    Int64 int64 = 5;
    UInt64 uint64 = 5;
    float single = 5;
    double real = 5;
    EXPECT_FALSE(ParseInt32(u"2147483648", int32));
    EXPECT_FALSE(ParseUInt32(u"-1", uint32));
    EXPECT_FALSE(ParseInt64(u"12x", int64));
    EXPECT_FALSE(ParseUInt64(u"18446744073709551616", uint64));
    EXPECT_FALSE(ParseFloat(u"1e39", single));
    EXPECT_FALSE(ParseDouble(u"1e309", real));
    EXPECT_FALSE(ParseDouble(u"12x", real));
    EXPECT_EQ(5, int32);
    EXPECT_EQ(5u, uint32);
    EXPECT_EQ(5, int64);
    EXPECT_EQ(5u, uint64);
    EXPECT_EQ(5.0F, single);
    EXPECT_EQ(5.0, real);
}

TEST(TextNumbers, EmptyTextsAreNoNumbers) {
    int int32 = 0;
    double real = 0;
    EXPECT_FALSE(ParseInt32({}, int32));
    EXPECT_FALSE(ParseDouble({}, real));
}

TEST(TextNumbers, PointAndExponentOutweighEachOther) {
    EXPECT_EQ(1e99, ParseQuickly(u"0." + Repeat(400, u'0') + u"1e500"));
    EXPECT_EQ(1.0, ParseQuickly(u"1" + Repeat(400, u'0') + u"e-400"));
    EXPECT_EQ(1.0, ParseQuickly(u"0." + Repeat(kMillion, u'0') + u"1e1000001"));
    EXPECT_EQ(25.0, ParseQuickly(u"25" + Repeat(kMillion, u'0') + u"e-1000000"));
    EXPECT_EQ(0.0, ParseQuickly(u"0." + Repeat(400, u'0') + u"e500"));
}

TEST(TextNumbers, DigitsFarBehindDecideATie) {
    // 2^53 + 1 is half-way between two doubles.
    EXPECT_EQ(9007199254740992.0, ParseQuickly(u"9007199254740993." + Repeat(2000, u'0')));
    EXPECT_EQ(9007199254740994.0, ParseQuickly(u"9007199254740993." + Repeat(2000, u'0') + u"1"));
    EXPECT_EQ(9007199254740994.0, ParseQuickly(u"9007199254740993." + Repeat(kMillion, u'0') + u"1"));
    EXPECT_EQ(9007199254740994.0, ParseQuickly(u"9007199254740993" + Repeat(2000, u'0') + u".1e-2000"));
    EXPECT_EQ(9007199254740992.0, ParseQuickly(u"9007199254740992." + Repeat(kMillion, u'9')));
}

TEST(TextNumbers, MillionsOfDigitsAreReadQuickly) {
    EXPECT_EQ(1.0 / 3.0, ParseQuickly(u"0." + Repeat(kMillion, u'3')));
    EXPECT_EQ(5.0, ParseQuickly(Repeat(kMillion, u'0') + u"5"));
    EXPECT_EQ(1e5, ParseQuickly(u"1e" + Repeat(kMillion, u'0') + u"5"));
    EXPECT_EQ(0.0, ParseQuickly(u"1e-" + Repeat(kMillion, u'9')));
    EXPECT_EQ(0.0, ParseQuickly(u"0e" + Repeat(kMillion, u'9')));
}

// Of 900 digits and a fraction more follow than can decide.
TEST(TextNumbers, AFractionBehindMoreDigitsThanCount) {
    EXPECT_EQ(1.1111111111111111111111111e199, ParseQuickly(Repeat(900, u'1') + u".5e-700"));
    EXPECT_EQ(1e199, ParseQuickly(u"1" + Repeat(899, u'0') + u".5e-700"));
}

TEST(TextNumbers, MillionsOfDigitsFailQuickly) {
    EXPECT_TRUE(std::isnan(ParseQuickly(Repeat(kMillion, u'1'))));
    EXPECT_TRUE(std::isnan(ParseQuickly(u"1e" + Repeat(kMillion, u'9'))));
    EXPECT_TRUE(std::isnan(ParseQuickly(u"0." + Repeat(kMillion, u'3') + u"x")));

    const std::u16string digits = Repeat(kMillion, u'9');
    const std::u16string zeros = Repeat(kMillion, u'0');
    Int64 value = 0;
    const std::clock_t start = std::clock();
    EXPECT_FALSE(ParseInt64(digits, value));
    EXPECT_FALSE(ParseInt64(zeros + u"x", value));
    EXPECT_TRUE(ParseInt64(zeros + u"7", value));
    EXPECT_LT(std::clock() - start, kSoon);
    EXPECT_EQ(7, value);
}

// The value written in its shortest form reads back bit by bit.
template <class Real>
void ExpectReadsBack(Real value, bool (*parse)(std::u16string_view, Real&) noexcept) {
    char text[64];
    const char* const end = std::to_chars(text, std::end(text), value).ptr;
    Real read = 0;
    ASSERT_TRUE(parse(std::u16string(static_cast<const char*>(text), end), read));
    ASSERT_EQ(value, read);
    ASSERT_EQ(std::signbit(value), std::signbit(read));
}

TEST(TextNumbers, EveryFiniteNumberReadsBack) {
    std::mt19937_64 random(20240229);
    for (int i = 0; i < 20000; ++i) {
        const auto real = std::bit_cast<double>(random());
        if (std::isfinite(real)) {
            ExpectReadsBack(real, &ParseDouble);
        }
        const auto single = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (std::isfinite(single)) {
            ExpectReadsBack(single, &ParseFloat);
        }
    }
}

TEST(TextNumbers, EveryIntegerReadsBack) {
    std::mt19937_64 random(20240301);
    for (int i = 0; i < 20000; ++i) {
        const UInt64 magnitude = random() >> (random() % 64);
        UInt64 value = 0;
        ASSERT_TRUE(ParseUInt64(TString::number(magnitude), value));
        ASSERT_EQ(magnitude, value);
        Int64 signedValue = 0;
        ASSERT_TRUE(ParseInt64(TString::number(static_cast<Int64>(magnitude)), signedValue));
        ASSERT_EQ(static_cast<Int64>(magnitude), signedValue);
    }
}

}  // namespace
