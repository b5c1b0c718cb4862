#include <qvpreslayer/ParameterTypeSerializer.h>  // first: the header stands alone

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Failures.h"
#include "support/Printing.h"
#include "support/RealTextExact.h"
#include "support/RealTextModel.h"
#include "support/Rounds.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr float kFloatInfinity = std::numeric_limits<float>::infinity();

std::string DoubleText(double value) { return ParameterTypeSerializer<double>::TypeToString(value).ToUtf8(); }
std::string FloatText(float value) { return ParameterTypeSerializer<float>::TypeToString(value).ToUtf8(); }
double ToDouble(const TString& text) { return ParameterTypeSerializer<double>::TypeFromString(text); }
float ToFloat(const TString& text) { return ParameterTypeSerializer<float>::TypeFromString(text); }

// The text of a number by the library, by the steps of the rule in floating-point arithmetic, by the same steps in
// integers; and how far it is from the number.
void ExpectText(double value, int digits, const std::string& text) {
    ASSERT_EQ(RealTextModel(value, digits), text);
    ASSERT_EQ(real_text_exact::TextOf(value, digits), text);
    if (std::isfinite(value)) {
        ASSERT_TRUE(real_text_exact::AreExact(real_text_exact::DigitsOf(value, digits), digits)) << text;
    }
}

template <class T>
class RealSerializers : public testing::Test {};

using RealTypes = testing::Types<float, double>;
TYPED_TEST_SUITE(RealSerializers, RealTypes);

}  // namespace

TEST(RealSerializer, DoubleTexts) {
    const struct {
        double value;
        const char* text;
    } cases[] = {
        {0.0, "0"},
        {-0.0, "0"},
        {0.1, "0.1"},
        {2.0, "2"},
        {-2.5, "-2.5"},
        {0.05, "0.05"},
        {-0.05, "-0.05"},
        {1.0 / 3, "0.33333333333333"},
        {1234.5678901234567, "1234.56789012345666"},
        {123456.789, "123456.78900000000431"},  // neither the shortest digits nor 17 significant ones
        {1e20, "100000000000000000000"},
        {1e22, "10000000000000000000000"},
        {1e23, "99999999999999991611392"},  // every digit of the number that it is
        {1e37, "9999999999999999538762658202121142272"},
        {0.999999999999999, "1"},  // fifteen nines: carried into the whole part
        {9.999999999999999, "10"},
        {99.99999999999999, "99.99999999999999"},
        {-0.999999999999999, "-1"},
        {5e-15, "0.00000000000001"},
        {4.9e-15, "0"},
        {4.999999999999999e-15, "0.00000000000001"},  // adding one half rounds up to 1 already
        {-4e-15, "0"},                                // no sign on what rounds to zero
        {-6e-15, "-0.00000000000001"},
        {5e-324, "0"},
        {-5e-324, "0"},
        {4503599627370495.5, "4503599627370495.5"},
        {9007199254740993.0, "9007199254740992"},
        {5000000000.0, "5000000000"},
        {5000000000.5, "5000000000.5"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.text, DoubleText(c.value));
    }
}

TEST(RealSerializer, LargestDoubleHasAllItsDigits) {
    const std::string text =
        "179769313486231570814527423731704356798070567525844996598917476803157260780028538760589558632766878171540458"
        "953514382464234321326889464182768467546703537516986049910576551282076245490090389328944075868508455133942304"
        "583236903222948165808559332123348274797826204144723168738177180919299881250404026184124858368";
    ASSERT_EQ(309U, text.size());
    EXPECT_EQ(text, DoubleText(std::numeric_limits<double>::max()));
    EXPECT_EQ("-" + text, DoubleText(std::numeric_limits<double>::lowest()));
}

TEST(RealSerializer, FloatTexts) {
    const struct {
        float value;
        const char* text;
    } cases[] = {
        {0.0F, "0"},
        {-0.0F, "0"},
        {1.0F / 3, "0.3333333"},
        {0.1F, "0.1"},
        {-0.1F, "-0.1"},
        {2.0F, "2"},
        {16777216.0F, "16777216"},
        {123456.789F, "123456.7890625"},
        {0.9999999F, "0.9999999"},
        {5e-8F, "0.0000001"},
        {4e-8F, "0"},
        {-1e-8F, "0"},
        {1e37F, "9999999933815812510711506376257961984"},
        {std::numeric_limits<float>::max(), "340282346638528859811704183484516925440"},
        {std::numeric_limits<float>::lowest(), "-340282346638528859811704183484516925440"},
        {std::numeric_limits<float>::denorm_min(), "0"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.text, FloatText(c.value));
    }
}

TEST(RealSerializer, InfinitiesAreLargeNumbers) {
    EXPECT_EQ("1" + std::string(37, '0'), DoubleText(kInfinity));
    EXPECT_EQ("-1" + std::string(37, '0'), DoubleText(-kInfinity));
    EXPECT_EQ("1" + std::string(37, '0'), FloatText(kFloatInfinity));
    EXPECT_EQ("-1" + std::string(37, '0'), FloatText(-kFloatInfinity));
}

TEST(RealSerializer, InfinityTextsReadAsFiniteNumbers) {
    EXPECT_EQ(1e37, ToDouble(ParameterTypeSerializer<double>::TypeToString(kInfinity)));
    EXPECT_EQ(-1e37, ToDouble(ParameterTypeSerializer<double>::TypeToString(-kInfinity)));
    EXPECT_EQ(1e37F, ToFloat(ParameterTypeSerializer<float>::TypeToString(kFloatInfinity)));
    EXPECT_EQ(-1e37F, ToFloat(ParameterTypeSerializer<float>::TypeToString(-kFloatInfinity)));
}

TYPED_TEST(RealSerializers, NotANumberIsNull) {
    using Serializer = ParameterTypeSerializer<TypeParam>;
    EXPECT_EQ(L"null", Serializer::TypeToString(std::numeric_limits<TypeParam>::quiet_NaN()));
    EXPECT_EQ(L"null", Serializer::TypeToString(-std::numeric_limits<TypeParam>::quiet_NaN()));
    EXPECT_TRUE(std::isnan(Serializer::TypeFromString(L"null")));
}

TEST(RealSerializer, NullReadsAsAQuietNaN) {
    EXPECT_NE(0U, std::bit_cast<std::uint64_t>(ToDouble(L"null")) & 0x0008000000000000U);
    EXPECT_NE(0U, std::bit_cast<std::uint32_t>(ToFloat(L"null")) & 0x00400000U);
}

TYPED_TEST(RealSerializers, TextsThatAreRead) {
    const struct {
        const wchar_t* text;
        TypeParam value;
    } cases[] = {
        {L"0", TypeParam(0)},
        {L"1", TypeParam(1)},
        {L"-1", TypeParam(-1)},
        {L"+1.5", TypeParam(1.5)},
        {L".5", TypeParam(0.5)},
        {L"5.", TypeParam(5)},
        {L"-.25", TypeParam(-0.25)},
        {L"1e3", TypeParam(1000)},
        {L"1E+3", TypeParam(1000)},
        {L"125e-3", TypeParam(0.125)},
        {L"007.50", TypeParam(7.5)},
        {L"0.1", TypeParam(0.1)},
        {L"1e-999", TypeParam(0)},  // too small for the type: the nearest number
        {L"0e999999999999", TypeParam(0)},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.value, ParameterTypeSerializer<TypeParam>::TypeFromString(c.text)) << c.text;
    }
    EXPECT_TRUE(std::signbit(ParameterTypeSerializer<TypeParam>::TypeFromString(L"-0")));
}

TYPED_TEST(RealSerializers, OtherTextsAreNoNumbers) {
    for (const wchar_t* text :
         {L"",         L"x",     L"NULL", L"Null", L"null ", L" null", L"nan",    L"NaN",  L"inf",   L"-inf", L"INF",
          L"infinity", L"-null", L" 1",   L"1 ",   L"1,5",   L"0x10",  L"1e",     L"1e+",  L".",     L"-",    L"e5",
          L"+-1",      L"1.5.2", L"1_0",  L"1f",   L"1.0f",  L"1e400", L"-1e400", L"true", L"\u0661"}) {
        EXPECT_THAT(Doing([&] { ParameterTypeSerializer<TypeParam>::TypeFromString(text); }), ThrowsParseFailure())
            << text;
    }
}

TEST(RealSerializer, FloatsAreReadAsFloats) {
    EXPECT_THAT(Doing([] { ToFloat(L"3.5e38"); }), ThrowsParseFailure());  // a double, but no float
    EXPECT_EQ(3.5e38, ToDouble(L"3.5e38"));
    // A hair above the middle between two floats; by way of a double it would fall on the middle and go down.
    EXPECT_EQ(std::nextafter(1.0F, 2.0F), ToFloat(L"1.0000000596046447753906250000000001"));
    EXPECT_EQ(1.0F, ToFloat(L"1.000000059604644775390625"));
}

TYPED_TEST(RealSerializers, MillionDigits) {
    EXPECT_THAT(Doing([] { ParameterTypeSerializer<TypeParam>::TypeFromString(TString(1000000, u'7')); }),
                ThrowsParseFailure());
    TString text = L"0.";
    text.append(1000000, u'3');
    EXPECT_EQ(TypeParam(1.0L / 3), ParameterTypeSerializer<TypeParam>::TypeFromString(text));
}

TEST(RealSerializer, AnyDoubleAsItsStepsSay) {
    std::mt19937_64 random(Seed(20240611));
    const auto expect = [](double value) { ExpectText(value, 14, DoubleText(value)); };
    for (int i = 0; i < Rounds(20000); ++i) {
        const std::uint64_t bits = random();
        const double unit = std::ldexp(static_cast<double>(bits >> 11), -53);
        expect(std::bit_cast<double>(bits));                        // any pattern: huge, tiny, NaN
        expect(std::bit_cast<double>(bits & 0x800fffffffffffffU));  // below the normal range
        expect(unit);
        expect(-unit * 1000);
        expect(static_cast<double>(static_cast<std::int64_t>(bits)) / 1e14);  // 14 decimals, up to five whole digits
        // The middle between two texts, and its neighbours.
        const double middle = (static_cast<double>(bits % 100000) + 0.5) / 1e14 + static_cast<double>(bits >> 60);
        expect(middle);
        expect(std::nextafter(middle, kInfinity));
        expect(std::nextafter(middle, -kInfinity));
        // Just below a whole number: carries or not.
        expect(static_cast<double>(bits % 64) + 1 - static_cast<double>(bits >> 58) * 1e-16);
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST(RealSerializer, AnyFloatAsItsStepsSay) {
    std::mt19937_64 random(Seed(20240612));
    const auto expect = [](float value) { ExpectText(static_cast<double>(value), 7, FloatText(value)); };
    for (int i = 0; i < Rounds(20000); ++i) {
        const auto bits = static_cast<std::uint32_t>(random());
        const float unit = std::ldexp(static_cast<float>(bits >> 8), -24);
        expect(std::bit_cast<float>(bits));                // any pattern: huge, tiny, NaN
        expect(std::bit_cast<float>(bits & 0x807fffffU));  // below the normal range
        expect(unit);
        expect(-unit * 100);
        // The middle between two texts, and its neighbours.
        const float middle = (static_cast<float>(bits % 100000) + 0.5F) / 1e7F;
        expect(middle);
        expect(std::nextafter(middle, kFloatInfinity));
        expect(std::nextafter(middle, -kFloatInfinity));
        if (HasFatalFailure()) {
            return;
        }
    }
}
