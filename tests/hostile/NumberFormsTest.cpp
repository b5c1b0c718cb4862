// Numbers around the places where something changes: 2^27, 2^31, 2^32, 2^53, 2^63, 2^64 and the ends of double; in
// every spelling, for every type of number, alone and in lists and maps. What is expected comes from a model of the
// rules that works with wide integers and the C library.
#include <qvpreslayer/JSONSerializer.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "json/JSONTestSupport.h"
#include "support/RealTextModel.h"

namespace {

using NumberForms = JSONTest;
__extension__ typedef __int128 Wide;

std::string Decimal(Wide value) {
    const bool negative = value < 0;
    std::string text;
    for (Wide rest = negative ? -value : value; rest != 0 || text.empty(); rest /= 10) {
        text.insert(text.begin(), static_cast<char>('0' + static_cast<int>(rest % 10)));
    }
    return negative ? "-" + text : text;
}

// The number of a text of digits with an optional minus; nothing when it is another text or a huge number.
std::optional<Wide> WholeNumber(const std::string& text) {
    const std::size_t start = text.starts_with("-") ? 1 : 0;
    if (text.size() == start || text.size() > start + 30 ||
        text.find_first_not_of("0123456789", start) != std::string::npos) {
        return std::nullopt;
    }
    Wide value = 0;
    for (std::size_t i = start; i < text.size(); ++i) {
        value = value * 10 + (text[i] - '0');
    }
    return start == 0 ? value : -value;
}

constexpr Wide Power(int exponent) { return Wide{1} << exponent; }

// The text that a JSON number reaches serializers as; nothing when it is beyond the range of double.
std::optional<std::string> TravellingText(const std::string& number) {
    const std::optional<Wide> whole = WholeNumber(number);
    if (whole && *whole >= -Power(63) && *whole < Power(64)) {
        const Wide asSigned = *whole >= Power(63) ? *whole - Power(64) : *whole;
        const Wide low = ((*whole % Power(32)) + Power(32)) % Power(32);
        return Decimal(asSigned < Power(27) && low >= Power(31) ? low - Power(32) : low);
    }
    const double real = std::strtod(number.c_str(), nullptr);
    return std::isinf(real) ? std::nullopt : std::optional<std::string>(RealTextModel(real, 14));
}

// What a parameter of each type makes of a text; nothing when it refuses it.
std::optional<std::string> InRange(const std::string& text, Wide least, Wide greatest) {
    const std::optional<Wide> whole = WholeNumber(text);
    return whole && *whole >= least && *whole <= greatest ? std::optional<std::string>(Decimal(*whole)) : std::nullopt;
}
template <class T>
std::optional<std::string> AsInteger(const std::string& text) {
    return InRange(text, std::numeric_limits<T>::min(), std::numeric_limits<T>::max());
}
std::optional<std::string> AsDouble(const std::string& text) {
    return RealTextModel(std::strtod(text.c_str(), nullptr), 14);
}
std::optional<std::string> AsFloat(const std::string& text) {
    const float value = std::strtof(text.c_str(), nullptr);
    return std::isinf(value) ? std::nullopt : std::optional<std::string>(RealTextModel(value, 7));
}
// A count of 64 bits is read, and its low 32 bits are kept.
std::optional<std::string> AsHours(const std::string& text) {
    const std::optional<std::string> count = AsInteger<Int64>(text);
    return count ? std::optional<std::string>(std::to_string(static_cast<std::int32_t>(std::stoll(*count))))
                 : std::nullopt;
}
std::optional<std::string> AsText(const std::string& text) { return text; }
std::optional<std::string> AsBool(const std::string&) { return std::nullopt; }

struct NumberType {
    const char* member;  // of single values
    const char* name;
    int id;
    const char* list;  // null without one
    const char* listName;
    std::optional<std::string> (*read)(const std::string& text);
};

constexpr NumberType kTypes[] = {
    {"text", "text", view::kText, "textList", "text-list", AsText},
    {"maxCount", "max-count", view::kMaxCount, "intList", "int-list", AsInteger<int>},
    {"unsigned", "unsigned", view::kUnsigned, "unsignedList", "unsigned-list", AsInteger<unsigned int>},
    {"big", "big", view::kInt64, "bigList", "big-list", AsInteger<Int64>},
    {"bigUnsigned", "big-unsigned", view::kUInt64, "bigUnsignedList", "big-unsigned-list", AsInteger<UInt64>},
    {"smallReal", "small-real", view::kFloat, "smallRealList", "small-real-list", AsFloat},
    {"real", "real", view::kReal, "realList", "real-list", AsDouble},
    {"flag", "flag", view::kFlag, "flagList", "flag-list", AsBool},
    {"hours", "hours", view::kHours, nullptr, nullptr, AsHours},
};

// All spellings of a number that JSON knows, from its digits.
std::vector<std::string> SpellingsOf(const std::string& digits) {
    std::vector<std::string> spellings;
    for (const std::string& number : {digits, "-" + digits}) {
        for (const char* end : {"", ".0", ".5", ".25", ".000000000000000000001", "e0", "E0", "e+0", "E-0", "0e-1",
                                "00E-2", ".0e0", "e1", "e-1", "e-20"}) {
            if (digits != "0" || *end != '0') {  // JSON knows no zeros in front
                spellings.push_back(number + end);
            }
        }
    }
    return spellings;
}

std::vector<std::string> Numbers() {
    std::vector<std::string> numbers;
    for (const int exponent : {0, 27, 31, 32, 53, 63, 64}) {
        for (int distance = -2; distance <= 2; ++distance) {
            const Wide value = Power(exponent) + distance;
            if (value >= 0) {
                const auto spellings = SpellingsOf(Decimal(value));
                numbers.insert(numbers.end(), spellings.begin(), spellings.end());
            }
        }
    }
    const std::string zeros(308, '0');
    for (const std::string& number : std::vector<std::string>{"1e308",
                                                              "1E+308",
                                                              "1" + zeros,
                                                              "1" + zeros + ".0",
                                                              "1" + zeros + "e0",
                                                              "0.1e309",
                                                              "10e307",
                                                              "1e309",
                                                              "1" + zeros + "0",
                                                              "1.7976931348623157e308",
                                                              "1.7976931348623158e308",
                                                              "1.7976931348623159e308",
                                                              "17976931348623157" + std::string(292, '0'),
                                                              "17976931348623159" + std::string(292, '0'),
                                                              "2e308",
                                                              "1e-308",
                                                              "2.2250738585072014e-308",
                                                              "2.2250738585072011e-308",
                                                              "4.9e-324",
                                                              "2.5e-324",
                                                              "2.4e-324",
                                                              "1e-400",
                                                              "3.4028234663852886e38",
                                                              "3.4028235677973366e38",
                                                              "3.4028235677973365e38",
                                                              "1e38",
                                                              "1e39"}) {
        numbers.push_back(number);
        numbers.push_back("-" + number);
    }
    return numbers;
}

}  // namespace

TEST_F(NumberForms, AloneInEveryParameter) {
    for (const std::string& number : Numbers()) {
        const std::optional<std::string> text = TravellingText(number);
        for (const NumberType& type : kTypes) {
            const std::string outcome = Outcome("{\"" + std::string(type.member) + "\":" + number + "}");
            if (!text) {
                ASSERT_EQ("not valid", outcome) << number << " for " << type.name;
                continue;
            }
            const std::optional<std::string> value = type.read(*text);
            ASSERT_EQ(value ? type.name + ("=" + *value) : "not parsed: " + std::to_string(type.id), outcome)
                << number << " for " << type.name;
        }
    }
}

TEST_F(NumberForms, InEveryList) {
    for (const std::string& number : Numbers()) {
        const std::optional<std::string> text = TravellingText(number);
        for (const NumberType& type : kTypes) {
            if (type.list == nullptr) {
                continue;
            }
            const std::string outcome = Outcome("{\"" + std::string(type.list) + "\":[1," + number + "]}");
            if (!text) {
                ASSERT_EQ("not valid", outcome) << number << " for " << type.listName;
                continue;
            }
            const std::optional<std::string> value = type.read(*text);
            const bool first = type.read("1").has_value();  // the other element
            ASSERT_EQ(value && first ? type.listName + ("=[1," + *value + "]") : "not parsed: 0", outcome)
                << number << " for " << type.listName;
        }
    }
}

TEST_F(NumberForms, InMapsAndInRuns) {
    for (const std::string& number : Numbers()) {
        const std::optional<std::string> text = TravellingText(number);
        const std::string map = Outcome("{\"intMap\":{\"k\":" + number + "}}");
        const std::string run = Outcome("{\"intList\":[[" + number + ",2],[]]}");
        if (!text) {
            ASSERT_EQ("not valid", map) << number;
            ASSERT_EQ("not valid", run) << number;
            continue;
        }
        const std::optional<std::string> value = AsInteger<int>(*text);
        ASSERT_EQ(value ? "int-map={k:" + *value + "}" : "not parsed: 0", map) << number;
        ASSERT_EQ(value ? "int-list=[" + *value + "," + *value + "]" : "not parsed: 0", run) << number;
    }
}

// The same digits in quotes are a text, which reaches the serializer as it stands.
TEST_F(NumberForms, InQuotes) {
    for (const int exponent : {27, 31, 32, 53, 63, 64}) {
        for (int distance = -2; distance <= 2; ++distance) {
            for (const Wide value : {Power(exponent) + distance, -Power(exponent) - distance}) {
                const std::string digits = Decimal(value);
                for (const NumberType& type : kTypes) {
                    const std::optional<std::string> expected = type.read(digits);
                    ASSERT_EQ(expected ? type.name + ("=" + *expected) : "not parsed: " + std::to_string(type.id),
                              Outcome("{\"" + std::string(type.member) + "\":\"" + digits + "\"}"))
                        << digits;
                }
            }
        }
    }
}

TEST_F(NumberForms, SpellingsThatAreNoJSON) {
    for (const int exponent : {0, 27, 31, 32, 53, 63, 64}) {
        const std::string digits = Decimal(Power(exponent));
        for (const std::string& number : std::vector<std::string>{
                 "+" + digits,   "0" + digits,  "-0" + digits, digits + ".",    "." + digits,    "-." + digits,
                 digits + ".e1", digits + "e",  digits + "E",  digits + "e+",   digits + "e-",   digits + "e1.0",
                 "--" + digits,  "-",           digits + "-",  digits + "f",    digits + "L",    digits + "_0",
                 digits + ",0",  "0x" + digits, digits + " 0", digits + ".0.0", digits + "e1e1", "- " + digits,
                 "Infinity",     "-Infinity",   "NaN",         "\xEF\xBC\x91"}) {
            for (const char* member : {"maxCount", "real", "text"}) {
                EXPECT_EQ("not valid", Outcome("{\"" + std::string(member) + "\":" + number + "}")) << number;
            }
            EXPECT_EQ("not valid", Outcome("{\"intMap\":{\"k\":" + number + "}}")) << number;
        }
    }
}
