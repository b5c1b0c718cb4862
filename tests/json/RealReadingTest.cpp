// Numbers of JSON texts and of other texts, as reals: rounded correctly, as integer arithmetic says, and on the way
// into a bag by way of their own text.
#include <qvpreslayer/JSONSerializer.h>

#include <bit>
#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "json/JSONTestSupport.h"
#include "support/Dice.h"
#include "support/NearestReal.h"
#include "support/RealTextExact.h"
#include "support/Rounds.h"

namespace {

using nearest_real::Big;
using nearest_real::NearestTo;

std::string Digits(Dice& dice, std::size_t count) {
    std::string digits;
    while (digits.size() < count) {
        digits += static_cast<char>('0' + dice.Below(10));
    }
    return digits;
}

// A number without an exponent that is not too large for a whole one to keep its value: what most texts hold.
std::string PlainNumber(Dice& dice) {
    const std::size_t all = 1 + dice.Below(22);
    const std::size_t fraction = dice.Below(all + 1);
    std::string whole = Digits(dice, std::min<std::size_t>(all - fraction, 9));
    whole.erase(0, whole.find_first_not_of('0'));
    return (dice.Below(3) == 0 ? "-" : "") + (whole.empty() ? "0" : whole) + "." + Digits(dice, fraction + 1);
}

std::string AnyNumber(Dice& dice) {
    std::string text = (dice.Below(2) == 0 ? "-" : "") + Digits(dice, 1 + dice.Below(22));
    if (dice.Below(2) == 0) {
        text += "." + Digits(dice, dice.Below(25));
    }
    if (dice.Below(2) == 0) {
        text += "e" + std::to_string(static_cast<int>(dice.Below(660)) - 345);
    }
    return text;
}

// The middle between two doubles of moderate size, or a number next to it: cut off, or one more in the last place.
std::string HardNumber(Dice& dice) {
    const std::uint64_t mantissa = (std::uint64_t{1} << 52) + dice.Bits() % (std::uint64_t{1} << 52);
    const int places = 1 + static_cast<int>(dice.Below(70));
    // (2 * mantissa + 1) * 2^-places, of which one half is 5^places units behind a point.
    Big digits = (Big(mantissa) * 2 + 1) * boost::multiprecision::pow(Big(5), static_cast<unsigned>(places));
    std::string text = digits.str();
    if (text.size() <= static_cast<std::size_t>(places)) {
        text.insert(0, static_cast<std::size_t>(places) + 1 - text.size(), '0');
    }
    text.insert(text.size() - static_cast<std::size_t>(places), ".");
    switch (dice.Below(4)) {
        case 0:
            return text;
        case 1:
            return text + "1";
        default: {
            const std::size_t kept = text.find('.') + 1 + dice.Below(static_cast<std::size_t>(places));
            text.resize(std::max<std::size_t>(kept, 2));
            if (text.back() != '.' && text.back() != '9' && dice.Below(2) == 0) {
                ++text.back();
            }
            return text.back() == '.' ? text + "0" : text;
        }
    }
}

template <class T>
void ExpectRead(const std::string& text, T read, bool ok) {
    const T expected = NearestTo<T>(text);
    if (std::isinf(expected)) {
        ASSERT_FALSE(ok) << text;
    } else {
        ASSERT_TRUE(ok) << text;
        ASSERT_EQ(expected, read) << text;
    }
}

void ExpectReadAsNumbers(const std::string& text) {
    const TString wide = TString::FromUtf8(text);
    bool ok = false;
    const double asDouble = wide.toDouble(&ok);
    ExpectRead<double>(text, asDouble, ok);
    const float asFloat = wide.toFloat(&ok);
    ExpectRead<float>(text, asFloat, ok);
}

// What a number with a point or an exponent is in a bag: its double's own text of 14 digits, read as the type.
template <class T>
T InBag(const std::string& number) {
    return NearestTo<T>(real_text_exact::TextOf(NearestTo<double>(number), 14));
}

class RealReading : public JSONTest {
protected:
    void ExpectInBag(const std::vector<std::string>& numbers) const {
        std::string list;
        for (const std::string& number : numbers) {
            list += (list.empty() ? "" : ",") + number;
        }
        const auto bag = Read("{\"real\":" + numbers[0] + ",\"smallReal\":" + numbers[0] + ",\"realList\":[" + list +
                              "],\"smallRealList\":[" + list + "]}");
        ASSERT_EQ(InBag<double>(numbers[0]), GetParameterValue<double>(*bag, view::kReal)) << numbers[0];
        ASSERT_EQ(InBag<float>(numbers[0]), GetParameterValue<float>(*bag, view::kFloat)) << numbers[0];
        const auto& reals = GetParameterValue<std::vector<double>>(*bag, view::kRealList);
        const auto& smallReals = GetParameterValue<std::vector<float>>(*bag, view::kFloatList);
        ASSERT_EQ(numbers.size(), reals.size());
        ASSERT_EQ(numbers.size(), smallReals.size());
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            ASSERT_EQ(InBag<double>(numbers[i]), reals[i]) << numbers[i];
            ASSERT_EQ(InBag<float>(numbers[i]), smallReals[i]) << numbers[i];
        }
    }
};

}  // namespace

// The oracle itself, on numbers that are known.
TEST(NearestReal, KnownNumbers) {
    EXPECT_EQ(0.1, NearestTo<double>("0.1"));
    EXPECT_EQ(-2.5F, NearestTo<float>("-2.5"));
    EXPECT_EQ(9007199254740992.0, NearestTo<double>("9007199254740993"));  // the middle: to the even one
    EXPECT_EQ(9007199254740996.0, NearestTo<double>("9007199254740995"));
    EXPECT_EQ(9007199254740994.0, NearestTo<double>("9007199254740993.0000000000000000001"));
    EXPECT_EQ(5e-324, NearestTo<double>("4.9e-324"));
    EXPECT_EQ(0.0, NearestTo<double>("2.4e-324"));
    EXPECT_EQ(std::numeric_limits<double>::max(), NearestTo<double>("1.7976931348623158e308"));
    EXPECT_TRUE(std::isinf(NearestTo<double>("1.7976931348623159e308")));
    EXPECT_EQ(std::nextafter(1.0F, 2.0F), NearestTo<float>("1.0000000596046447753906250000000001"));
    EXPECT_EQ(1.0F, NearestTo<float>("1.000000059604644775390625"));
}

TEST(RealTexts, AreRoundedCorrectly) {
    Dice dice(Seed(31));
    for (int i = 0; i < Rounds(10000); ++i) {
        ExpectReadAsNumbers(PlainNumber(dice));
        ExpectReadAsNumbers(AnyNumber(dice));
        ExpectReadAsNumbers(HardNumber(dice));
        ASSERT_FALSE(testing::Test::HasFatalFailure());
    }
}

TEST_F(RealReading, NumbersInBagsAreThoseOfTheirTexts) {
    Dice dice(Seed(32));
    for (int i = 0; i < Rounds(2500); ++i) {
        std::vector<std::string> numbers;
        for (std::size_t count = 1 + dice.Below(12); count > 0; --count) {
            numbers.push_back(dice.Below(3) == 0 ? HardNumber(dice) : PlainNumber(dice));
        }
        ExpectInBag(numbers);
        ASSERT_FALSE(HasFatalFailure());
    }
}

// Nineteen digits and a few more or less, where whole digits and fractions meet the bounds of 64 bits.
TEST_F(RealReading, NumbersOfAboutNineteenDigits) {
    std::vector<std::string> numbers;
    for (const std::string digits : {"1844674407370955161", "18446744073709551615", "18446744073709551616",
                                     "9223372036854775807", "9223372036854775808", "9007199254740993",
                                     "99999999999999999999", "1000000000000000000", "9999999999999999999"}) {
        for (std::size_t point = 1; point < digits.size(); ++point) {
            numbers.push_back(digits.substr(0, point) + "." + digits.substr(point));
            numbers.push_back("-0." + std::string(point, '0') + digits);
        }
    }
    ExpectInBag(numbers);
}
