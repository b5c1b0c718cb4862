// How JSON numbers become texts, and values.
#include <qvpreslayer/JSONSerializer.h>

#include <cmath>
#include <limits>

#include "json/JSONTestSupport.h"

namespace {

using JSONReaderNumbers = JSONTest;

struct NumberCase {
    std::string json;
    std::string text;
};

// 10 to the power of count, as digits.
std::string PowerOfTen(std::size_t count) { return "1" + std::string(count, '0'); }

}  // namespace

TEST_F(JSONReaderNumbers, IntegersKeepTheirLow32Bits) {
    const NumberCase cases[] = {
        {"0", "0"},
        {"-0", "0"},
        {"1", "1"},
        {"-1", "-1"},
        {"-5", "-5"},
        {"134217727", "134217727"},
        {"134217728", "134217728"},
        {"2147483647", "2147483647"},
        {"2147483648", "2147483648"},
        {"4294967295", "4294967295"},
        {"4294967296", "0"},
        {"4294967297", "1"},
        {"5000000000", "705032704"},
        {"6442450944", "2147483648"},  // never a negative text from a positive value
        {"9223372036854775807", "4294967295"},
        {"-2147483648", "-2147483648"},
        {"-2147483649", "2147483647"},
        {"-3000000000", "1294967296"},
        {"-4294967295", "1"},
        {"-4294967296", "0"},
        {"-4294967297", "-1"},
        {"-9223372036854775807", "1"},
        {"-9223372036854775808", "0"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ("text=" + c.text, Outcome("{\"text\":" + c.json + "}")) << c.json;
    }
}

TEST_F(JSONReaderNumbers, UnsignedIntegersBeyondTheSignedRangeAreReadAsSigned) {
    const NumberCase cases[] = {
        {"9223372036854775808", "0"},
        {"9223372036854775813", "5"},
        {"18446744073709551611", "-5"},
        {"18446744073709551615", "-1"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ("text=" + c.text, Outcome("{\"text\":" + c.json + "}")) << c.json;
    }
}

TEST_F(JSONReaderNumbers, IntegersThatFitNo64BitTypeAreReals) {
    const NumberCase cases[] = {
        {"18446744073709551616", "18446744073709551616"},
        {"-9223372036854775809", "-9223372036854775808"},  // the nearest double
        {"100000000000000000000", "100000000000000000000"},
        {"-100000000000000000000", "-100000000000000000000"},
        {"10000000000000000000000000000000000000", "9999999999999999538762658202121142272"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ("text=" + c.text, Outcome("{\"text\":" + c.json + "}")) << c.json;
    }
}

TEST_F(JSONReaderNumbers, RealsTakeTheTextOfTheDoubleSerializer) {
    const NumberCase cases[] = {
        {"0.0", "0"},
        {"-0.0", "0"},
        {"0.5", "0.5"},
        {"-0.25", "-0.25"},
        {"2.0", "2"},
        {"1e2", "100"},
        {"1E2", "100"},
        {"1e+2", "100"},
        {"1.5e1", "15"},
        {"100e-2", "1"},
        {"0.1", "0.1"},
        {"123456.789", "123456.78900000000431"},
        {"0.05", "0.05"},
        {"5000000000.5", "5000000000.5"},
        {"5000000000.0", "5000000000"},  // a real does not wrap
        {"4294967296e0", "4294967296"},
        {"9007199254740993.0", "9007199254740992"},  // halfway: to the even neighbour
        {"9007199254740993.0000000000000000001", "9007199254740994"},
        {"1e20", "100000000000000000000"},
        {"1e23", "99999999999999991611392"},
        {"4.9e-15", "0"},
        {"5e-15", "0.00000000000001"},
        {"1e-400", "0"},
        {"1e-999999999", "0"},
        {"0e999999999", "0"},
        {"0.0e-999999999", "0"},
        {"0.999999999999999", "1"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ("text=" + c.text, Outcome("{\"text\":" + c.json + "}")) << c.json;
    }
}

TEST_F(JSONReaderNumbers, TheGreatestDoubleIsReadAndWhatRoundsBeyondItIsNotValid) {
    const auto bag = Read(R"({"real":1.7976931348623157e308})");
    EXPECT_EQ(std::numeric_limits<double>::max(), GetParameterValue<double>(*bag, view::kReal));
    const std::string digits = "17976931348623157" + std::string(292, '0');
    EXPECT_EQ(std::numeric_limits<double>::max(),
              GetParameterValue<double>(*Read("{\"real\":" + digits + "}"), view::kReal));
    EXPECT_EQ("not valid", Outcome(R"({"real":1.7976931348623159e308})"));
}

TEST_F(JSONReaderNumbers, NumbersBeyondTheDoubleRangeAreNotValid) {
    const std::string cases[] = {
        "1e309",
        "-1e309",
        "1e400",
        "-1e400",
        "1e999999999",
        "-1e999999999",
        "1E+99999999999999999999",
        "0.00001e999999999",
        "1" + std::string(309, '0'),
        "-1" + std::string(400, '0'),
        std::string(400, '9'),
        std::string(400, '9') + ".5",
    };
    for (const auto& json : cases) {
        EXPECT_EQ("not valid", Outcome("{\"text\":" + json + "}")) << json;
        EXPECT_EQ("not valid", Outcome("{\"textList\":[" + json + "]}")) << json;
        EXPECT_EQ("not valid", Outcome("{\"subBag\":{\"real\":" + json + "}}")) << json;
    }
}

TEST_F(JSONReaderNumbers, LongNumbersInTheRangeAreRead) {
    EXPECT_EQ("text=1", Outcome("{\"text\":" + PowerOfTen(400) + "e-400}"));
    EXPECT_EQ("text=0.5", Outcome("{\"text\":0.5" + std::string(5000, '0') + "}"));
    EXPECT_EQ("text=0", Outcome("{\"text\":0." + std::string(5000, '0') + "1}"));
    EXPECT_EQ("text=" + PowerOfTen(22), Outcome("{\"text\":" + PowerOfTen(22) + "}"));
    EXPECT_EQ("text=100", Outcome("{\"text\":0." + std::string(400, '0') + "1e403}"));
}

TEST_F(JSONReaderNumbers, AMillionDigitsAreNotValidAndQuick) {
    EXPECT_EQ("not valid", Outcome("{\"text\":" + std::string(1000000, '7') + "}"));
}

TEST_F(JSONReaderNumbers, IntoEachNumberType) {
    const struct {
        const char* json;
        const char* outcome;
    } cases[] = {
        {R"({"maxCount":2147483647})", "max-count=2147483647"},
        {R"({"maxCount":2147483648})", "not parsed: 10"},
        {R"({"maxCount":-2147483648})", "max-count=-2147483648"},
        {R"({"maxCount":4294967297})", "max-count=1"},  // wraps before it is parsed
        {R"({"maxCount":1.0})", "max-count=1"},
        {R"({"maxCount":1.5})", "not parsed: 10"},
        {R"({"maxCount":1e2})", "max-count=100"},
        {R"({"unsigned":4294967295})", "unsigned=4294967295"},
        {R"({"unsigned":-1})", "not parsed: 11"},
        {R"({"unsigned":18446744073709551615})", "not parsed: 11"},  // -1
        {R"({"big":4294967295})", "big=4294967295"},
        {R"({"big":-2147483648})", "big=-2147483648"},
        {R"({"big":5000000000})", "big=705032704"},
        {R"({"big":5000000000.0})", "big=5000000000"},
        {R"({"big":"5000000000"})", "big=5000000000"},  // a text is taken as it is
        {R"({"bigUnsigned":"18446744073709551615"})", "big-unsigned=18446744073709551615"},
        {R"({"bigUnsigned":18446744073709551616})", "not parsed: 13"},
        {R"({"smallReal":0.1})", "small-real=0.1"},
        {R"({"smallReal":1e39})", "not parsed: 14"},
        {R"({"real":5000000000})", "real=705032704"},
        {R"({"real":5000000000.5})", "real=5000000000.5"},
        {R"({"seconds":5000000000})", "seconds=705032704"},
        {R"({"seconds":"5000000000"})", "seconds=5000000000"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.json);
        EXPECT_EQ(c.outcome, Outcome(c.json));
    }
}

TEST_F(JSONReaderNumbers, ListsAndMapsFollowTheSameRule) {
    EXPECT_EQ("text-list=[1,705032704,2147483647,-1,0.5,100000000000000000000]",
              Outcome("{\"textList\":[4294967297,5000000000,-2147483649,18446744073709551615,0.5,1e20]}"));
    EXPECT_EQ("my-map={a:1,b:2147483648}", Outcome(R"({"myMap":{"a":4294967297,"b":6442450944}})"));
    EXPECT_EQ("big-list=[0,4294967295]", Outcome(R"({"bigList":[4294967296,4294967295]})"));
    EXPECT_EQ("real-list=[705032704,5000000000.5]", Outcome(R"({"realList":[5000000000,5000000000.5]})"));
    EXPECT_EQ("row=(row=[1,2.5])", Outcome(R"({"row":[4294967297,2.5]})"));
}

TEST_F(JSONReaderNumbers, WholeDoublesFrom2To32OnDoNotComeBack) {
    const auto back = [&](double value) {
        return GetParameterValue<double>(*Read(Write(MakeBag({{view::kReal, Val(value)}}))), view::kReal);
    };
    EXPECT_EQ(4294967295.0, back(4294967295.0));
    EXPECT_EQ(705032704.0, back(5000000000.0));
    EXPECT_EQ(5000000000.5, back(5000000000.5));
    EXPECT_EQ(1e20, back(1e20));  // fits no 64-bit integer
    EXPECT_EQ(1e37, back(std::numeric_limits<double>::infinity()));
    EXPECT_EQ(-1e37, back(-std::numeric_limits<double>::infinity()));
}

TEST_F(JSONReaderNumbers, NaNIsSkippedAsAScalarAndFailsInAList) {
    EXPECT_EQ("", Outcome(Write(MakeBag({{view::kReal, Val(std::nan(""))}}))));
    EXPECT_EQ("not parsed: 0", Outcome(Write(MakeBag({{view::kRealList, Val(std::vector<double>{1, std::nan("")})}}))));
}
