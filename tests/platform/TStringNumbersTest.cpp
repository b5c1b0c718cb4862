#include <qvcore/TString.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

#include <qvsys/LogicException.h>

#include "support/CommaLocale.h"
#include "support/Printing.h"

namespace {

using Limits = std::numeric_limits<double>;
using FloatLimits = std::numeric_limits<float>;

TEST(TStringNumbers, SignedIntegers) {
    const struct {
        TString text;
        int value;
    } cases[] = {
        {L"0", 0},
        {L"7", 7},
        {L"+7", 7},
        {L"-7", -7},
        {L"-0", 0},
        {L"007", 7},
        {L"-0000", 0},
        {L"0000000000000000000000000000042", 42},
        {L"2147483647", INT_MAX},
        {L"-2147483648", INT_MIN},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.text));
        bool ok = false;
        EXPECT_EQ(c.value, c.text.toInt(&ok));
        EXPECT_TRUE(ok);
        ok = false;
        EXPECT_EQ(c.value, c.text.toLongLong(&ok));
        EXPECT_TRUE(ok);
    }
}

TEST(TStringNumbers, NoIntegers) {
    const TString texts[] = {
        L"",
        L"+",
        L"-",
        L" 1",
        L"1 ",
        L"1\n",
        L"--1",
        L"+-1",
        L"-+1",
        L"1-",
        L"1,000",
        L"1.0",
        L"1e3",
        L"0x10",
        L"abc",
        L"1a",
        L"\uFF11",
        L"\u0661",  // digits, but none of ASCII
        TString(std::u16string_view(u"1\0", 2)),
    };
    for (const TString& text : texts) {
        SCOPED_TRACE(testing::PrintToString(text));
        bool ok = true;
        EXPECT_EQ(0, text.toInt(&ok));
        EXPECT_FALSE(ok);
        ok = true;
        EXPECT_EQ(0u, text.toUInt(&ok));
        EXPECT_FALSE(ok);
        ok = true;
        EXPECT_EQ(0, text.toLong(&ok));
        EXPECT_FALSE(ok);
        ok = true;
        EXPECT_EQ(0, text.toLongLong(&ok));
        EXPECT_FALSE(ok);
        ok = true;
        EXPECT_EQ(0u, text.toULongLong(&ok));
        EXPECT_FALSE(ok);
    }
}

TEST(TStringNumbers, IntegersOutOfRangeFail) {
    bool ok = true;
    for (const wchar_t* text : {L"2147483648", L"-2147483649", L"4294967296", L"99999999999999999999999"}) {
        EXPECT_EQ(0, TString(text).toInt(&ok));
        EXPECT_FALSE(ok);
    }
    for (const wchar_t* text : {L"9223372036854775808", L"-9223372036854775809", L"18446744073709551616"}) {
        EXPECT_EQ(0, TString(text).toLong(&ok));
        EXPECT_FALSE(ok);
        EXPECT_EQ(0, TString(text).toLongLong(&ok));
        EXPECT_FALSE(ok);
    }
    EXPECT_EQ(0u, TString(L"4294967296").toUInt(&ok));
    EXPECT_FALSE(ok);
    for (const wchar_t* text : {L"18446744073709551616", L"18446744073709551620", L"184467440737095516150"}) {
        EXPECT_EQ(0u, TString(text).toULongLong(&ok));
        EXPECT_FALSE(ok);
    }
}

TEST(TStringNumbers, ExtremeIntegers) {
    bool ok = false;
    EXPECT_EQ(UINT_MAX, TString(L"4294967295").toUInt(&ok));
    EXPECT_TRUE(ok);
    EXPECT_EQ(INT64_MAX, TString(L"9223372036854775807").toLong(&ok));
    EXPECT_TRUE(ok);
    EXPECT_EQ(INT64_MIN, TString(L"-9223372036854775808").toLongLong(&ok));
    EXPECT_TRUE(ok);
    EXPECT_EQ(UINT64_MAX, TString(L"+18446744073709551615").toULongLong(&ok));
    EXPECT_TRUE(ok);
}

TEST(TStringNumbers, UnsignedIntegersHaveNoMinus) {
    bool ok = true;
    EXPECT_EQ(0u, TString(L"-1").toUInt(&ok));
    EXPECT_FALSE(ok);
    ok = true;
    EXPECT_EQ(0u, TString(L"-0").toULongLong(&ok));
    EXPECT_FALSE(ok);
    EXPECT_EQ(1u, TString(L"+1").toUInt(&ok));
    EXPECT_TRUE(ok);
}

TEST(TStringNumbers, IntegersInOtherBases) {
    bool ok = false;
    EXPECT_EQ(-255, TString(L"-fF").toInt(&ok, 16));
    EXPECT_TRUE(ok);
    EXPECT_EQ(5, TString(L"101").toInt(&ok, 2));
    EXPECT_TRUE(ok);
    EXPECT_EQ(35, TString(L"z").toInt(&ok, 36));
    EXPECT_TRUE(ok);
    EXPECT_EQ(UINT64_MAX, TString(L"ffffffffffffffff").toULongLong(&ok, 16));
    EXPECT_TRUE(ok);
    EXPECT_EQ(0, TString(L"12").toInt(&ok, 2));
    EXPECT_FALSE(ok);
    for (const int base : {-1, 0, 1, 37}) {
        EXPECT_EQ(0, TString(L"1").toInt(&ok, base));
        EXPECT_FALSE(ok);
    }
}

TEST(TStringNumbers, SuccessNeedsNotBeAskedFor) {
    EXPECT_EQ(12, TString(L"12").toInt());
    EXPECT_EQ(0, TString(L"x").toInt(nullptr));
    EXPECT_EQ(0.5, TString(L"0.5").toDouble());
    EXPECT_EQ(0.0F, TString(L"x").toFloat());
}

TEST(TStringNumbers, Reals) {
    const struct {
        TString text;
        double value;
    } cases[] = {
        {L"0", 0.0},         {L"1.5", 1.5},      {L"+1.5", 1.5},      {L"-.5", -0.5},        {L"1.", 1.0},
        {L"1.e3", 1000.0},   {L"1E2", 100.0},    {L"-25e-2", -0.25},  {L"007.50", 7.5},      {L".25e+1", 2.5},
        {L"1e0000002", 100}, {L"0.0001e4", 1.0}, {L"000.000e9", 0.0}, {L"0e999999999", 0.0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.text));
        bool ok = false;
        EXPECT_EQ(c.value, c.text.toDouble(&ok));
        EXPECT_TRUE(ok);
        ok = false;
        EXPECT_EQ(static_cast<float>(c.value), c.text.toFloat(&ok));
        EXPECT_TRUE(ok);
    }
}

TEST(TStringNumbers, NoReals) {
    const TString texts[] = {
        L"",         L"+",        L"-",
        L".",        L"e5",       L"-.",
        L"1e",       L"1e+",      L"1e5.0",
        L"1.5.2",    L" 1",       L"1 ",
        L"1,5",      L"--1",      L"+-1",
        L"0x10",     L"0x1p3",    L"nan",
        L"-nan",     L"inf",      L"INF",
        L"infinity", L"1f",       L"1d2",
        L"null",     L"1e5e5",    L"1_0",
        L"\uFF11",   L"1\u066B5", L".e1",
        L"1e 5",     L"nan(1)",   TString(std::u16string_view(u"1\0", 2)),
    };
    for (const TString& text : texts) {
        SCOPED_TRACE(testing::PrintToString(text));
        bool ok = true;
        EXPECT_EQ(0.0, text.toDouble(&ok));
        EXPECT_FALSE(ok);
        ok = true;
        EXPECT_EQ(0.0F, text.toFloat(&ok));
        EXPECT_FALSE(ok);
    }
}

TEST(TStringNumbers, ZerosKeepTheirSign) {
    for (const wchar_t* text : {L"-0", L"-0.0e5", L"-1e-400"}) {
        bool ok = false;
        const double value = TString(text).toDouble(&ok);
        EXPECT_TRUE(ok);
        EXPECT_EQ(0.0, value);
        EXPECT_TRUE(std::signbit(value));
    }
    EXPECT_FALSE(std::signbit(TString(L"0").toDouble()));
}

TEST(TStringNumbers, DoublesAreRoundedToTheNearest) {
    const struct {
        TString text;
        double value;
    } cases[] = {
        {L"9007199254740993", 9007199254740992.0},  // half-way, to the even one
        {L"9007199254740995", 9007199254740996.0},  // half-way, to the even one
        {L"9007199254740993.0001", 9007199254740994.0},
        {L"0.1", 0x1.999999999999ap-4},
        {L"1.7976931348623157e308", Limits::max()},
        {L"1.7976931348623158e308", Limits::max()},  // below the middle to what would come next
        {L"2.2250738585072014e-308", Limits::min()},
        {L"2.2250738585072012e-308", Limits::min()},
        {L"2.2250738585072011e-308", 0x0.fffffffffffffp-1022},  // the largest denormal number
        {L"5e-324", Limits::denorm_min()},
        {L"4.9e-324", Limits::denorm_min()},
        {L"1e-323", 2 * Limits::denorm_min()},
        {L"2.4703282292062328e-324", Limits::denorm_min()},  // above half of it
        {L"2.4703282292062327e-324", 0.0},                   // below
        {L"2e-324", 0.0},
        {L"1e-400", 0.0},
        {L"1e-999999999999999999999999", 0.0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.text));
        bool ok = false;
        EXPECT_EQ(c.value, c.text.toDouble(&ok));
        EXPECT_TRUE(ok);
        EXPECT_EQ(-c.value, (L"-" + c.text).toDouble(&ok));
        EXPECT_TRUE(ok);
    }
}

TEST(TStringNumbers, DoublesTooLargeFail) {
    for (const wchar_t* text : {L"1.7976931348623159e308", L"1e309", L"-1e400", L"1e99999999999999999999999"}) {
        bool ok = true;
        EXPECT_EQ(0.0, TString(text).toDouble(&ok));
        EXPECT_FALSE(ok);
    }
}

TEST(TStringNumbers, FloatsAreRoundedOnce) {
    const struct {
        TString text;
        float value;
    } cases[] = {
        {L"1.000000059604644775390625", 1.0F},  // half-way, to the even one
        // Just above; rounded to a double first, it would be half-way again.
        {L"1.00000005960464477539062500000001", 0x1.000002p0F},
        {L"3.4028235e38", FloatLimits::max()},
        {L"1.17549435e-38", FloatLimits::min()},
        {L"1.4e-45", FloatLimits::denorm_min()},
        {L"7.1e-46", FloatLimits::denorm_min()},  // above half of it
        {L"7e-46", 0.0F},                         // below
        {L"1e-50", 0.0F},
        {L"16777217", 16777216.0F},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.text));
        bool ok = false;
        EXPECT_EQ(c.value, c.text.toFloat(&ok));
        EXPECT_TRUE(ok);
    }
}

TEST(TStringNumbers, FloatsTooLargeFail) {
    // The second is the middle between the largest number and what would come next.
    for (const wchar_t* text : {L"3.4028236e38", L"340282356779733661637539395458142568448", L"1e39", L"-1e400"}) {
        bool ok = true;
        EXPECT_EQ(0.0F, TString(text).toFloat(&ok));
        EXPECT_FALSE(ok);
    }
}

TEST(TStringNumbers, IntegersOut) {
    EXPECT_EQ(L"0", TString::number(0));
    EXPECT_EQ(L"-42", TString::number(-42));
    EXPECT_EQ(L"-2147483648", TString::number(INT_MIN));
    EXPECT_EQ(L"4294967295", TString::number(UINT_MAX));
    EXPECT_EQ(L"-9223372036854775808", TString::number(Int64{INT64_MIN}));
    EXPECT_EQ(L"18446744073709551615", TString::number(UInt64{UINT64_MAX}));
}

TEST(TStringNumbers, IntegersOutInOtherBases) {
    EXPECT_EQ(L"ff", TString::number(255, 16));
    EXPECT_EQ(L"-ff", TString::number(-255, 16));
    EXPECT_EQ(L"z", TString::number(35u, 36));
    EXPECT_EQ(L"1" + TString(63, u'0'), TString::number(UInt64{1} << 63, 2));
    EXPECT_EQ(L"-1" + TString(63, u'0'), TString::number(Int64{INT64_MIN}, 2));
    EXPECT_THROW(TString::number(1, 1), LogicException);
    EXPECT_THROW(TString::number(1, 37), LogicException);
}

TEST(TStringNumbers, IntegersOutAreFilledOnTheLeft) {
    EXPECT_EQ(L"   42", TString::number(42, 10, 5));
    EXPECT_EQ(L"00042", TString::number(42, 10, 5, u'0'));
    EXPECT_EQ(L"**-42", TString::number(-42, 10, 5, u'*'));
    EXPECT_EQ(L"12345", TString::number(12345, 10, 5));  // nothing is cut off
    EXPECT_EQ(L"12345", TString::number(12345, 10, 2));
    EXPECT_EQ(L"7", TString::number(7, 10, -3));
}

TEST(TStringNumbers, NoLocaleCounts) {
    const CommaLocale comma;
    bool ok = false;
    EXPECT_EQ(1.5, TString(L"1.5").toDouble(&ok));
    EXPECT_TRUE(ok);
    EXPECT_EQ(1.5F, TString(L"1.5").toFloat(&ok));
    EXPECT_TRUE(ok);
    TString(L"1,5").toDouble(&ok);
    EXPECT_FALSE(ok);
    TString(L"1.000").toInt(&ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(L"1234567", TString::number(1234567));
}

}  // namespace
