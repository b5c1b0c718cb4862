// Every UTF-16 unit through escaping and back: as a value, as a key, as an element, and as an escape of another writer.
#include <qvpreslayer/JSONSerializer.h>

#include <map>
#include <string>
#include <vector>

#include "json/JSONOracles.h"
#include "json/JSONTestSupport.h"

namespace {

constexpr unsigned kUnits = 0x10000;

// What a text of this unit comes back as: itself, but for the controls that have no short escape, which become four
// characters.
std::u16string ComesBack(char16_t unit) {
    const bool shortEscape = unit == 8 || unit == 9 || unit == 10 || unit == 12 || unit == 13;
    if ((unit >= 1 && unit < 0x20 && !shortEscape) || unit == 0x7F) {
        const char16_t* const digits = u"0123456789abcdef";
        return std::u16string(u"\\x") + (unit < 0x10 ? u"" : std::u16string(1, digits[unit / 16])) + digits[unit % 16];
    }
    return std::u16string(1, unit);
}

char16_t Unit(unsigned number) { return static_cast<char16_t>(number); }

std::u16string Hex(unsigned unit, const char16_t* digits) {
    return {digits[unit >> 12], digits[(unit >> 8) & 15], digits[(unit >> 4) & 15], digits[unit & 15]};
}

class EscapingRoundTrip : public JSONTest {
protected:
    RefCntPtr<IParameters> Back(const RefCntPtr<TestBag>& bag, JSONSerializer::OutputType type) const {
        return m_json.ToParameters(m_json.ToString(bag, type));
    }
};

}  // namespace

TEST_F(EscapingRoundTrip, EveryUnitAsAValueAloneAndAmongOthers) {
    for (unsigned number = 0; number < kUnits; ++number) {
        const std::u16string unit(1, Unit(number));
        const std::u16string back = ComesBack(Unit(number));
        const auto bag = MakeBag({{view::kText, Text(unit)},
                                  {view::kC, Text(u"a" + unit + u"f" + unit)},
                                  {view::kTextList, Val<std::vector<TString>>({unit, u"x" + unit})}});
        const auto read = Back(bag, number % 2 == 0 ? JSONSerializer::Compact : JSONSerializer::Pretty);
        ASSERT_EQ(TString(back), GetParameterValue<TString>(*read, view::kText)) << std::hex << number;
        ASSERT_EQ(TString(u"a" + back + u"f" + back), GetParameterValue<TString>(*read, view::kC))
            << std::hex << number;
        ASSERT_EQ((std::vector<TString>{back, u"x" + back}),
                  GetParameterValue<std::vector<TString>>(*read, view::kTextList))
            << std::hex << number;
    }
}

TEST_F(EscapingRoundTrip, EveryUnitInOneText) {
    std::u16string all;
    std::u16string back;
    for (unsigned number = 0; number < kUnits; ++number) {
        all += Unit(number);
        back += ComesBack(Unit(number));
    }
    const auto read = Back(MakeBag({{view::kText, Text(all)}}), JSONSerializer::Compact);
    EXPECT_TRUE(TString(back) == GetParameterValue<TString>(*read, view::kText));
}

// Under short names keys of maps are escaped, those of structure maps always.
TEST_F(EscapingRoundTrip, EveryUnitAsAKey) {
    const TestSession session(true);
    for (unsigned number = 0; number < kUnits; ++number) {
        const std::u16string key = u"k" + std::u16string(1, Unit(number));
        const TString back = u"k" + ComesBack(Unit(number));
        using BagMap = BagStructureSerializer::BagMap;
        const auto bag = MakeBag({{view::kIntMap, Val<std::map<TString, int>>({{key, 1}})},
                                  {view::kByKey, Val<BagMap>({{key, BagStructureSerializer::Bag(MakeBag())}})}});
        const auto read = Back(bag, JSONSerializer::Compact);
        ASSERT_EQ((std::map<TString, int>{{back, 1}}),
                  (GetParameterValue<std::map<TString, int>>(*read, view::kIntMap)))
            << std::hex << number;
        ASSERT_EQ(1U, GetParameterValue<BagMap>(*read, view::kByKey).count(back)) << std::hex << number;
    }
}

// What other writers escape comes in as the unit, whatever the case of the digits and whatever stands beside it.
TEST_F(EscapingRoundTrip, EveryEscapeOfAnotherWriter) {
    for (unsigned number = 0; number < kUnits; ++number) {
        const std::u16string lower = u"\\u" + Hex(number, u"0123456789abcdef");
        const std::u16string upper = u"\\u" + Hex(number, u"0123456789ABCDEF");
        const auto read =
            m_json.ToParameters(u"{\"text\":\"" + lower + u"\",\"c\":\"-" + upper + u"1" + lower + u"\"}");
        const std::u16string unit(1, Unit(number));
        ASSERT_EQ(TString(unit), GetParameterValue<TString>(*read, view::kText)) << std::hex << number;
        ASSERT_EQ(TString(u"-" + unit + u"1" + unit), GetParameterValue<TString>(*read, view::kC))
            << std::hex << number;
    }
}

// Other readers see the same text, but for what they refuse: U+0000 as it is, and surrogates without a partner.
TEST_F(EscapingRoundTrip, EveryUnitAsOtherReadersSeeIt) {
    const json_oracles::Oracle* const oracles[] = {&json_oracles::BoostJSON(), &json_oracles::RapidJSON(),
                                                   &json_oracles::Nlohmann()};
    std::u16string all;
    std::u16string back;
    for (unsigned number = 1; number < kUnits; ++number) {
        const bool surrogate = number >= 0xD800 && number <= 0xDFFF;
        if (!surrogate) {
            all += Unit(number);
            back += ComesBack(Unit(number));
        }
    }
    for (unsigned pair = 0; pair < 0x400; ++pair) {
        const std::u16string units{Unit(0xD800 + pair), Unit(0xDC00 + pair)};
        all += units;
        back += units;
    }
    const TString text = m_json.ToString(MakeBag({{view::kText, Text(all)}}), JSONSerializer::Compact);
    for (const json_oracles::Oracle* oracle : oracles) {
        const auto value = oracle->Parse(std::u16string(text.view()), {});
        ASSERT_TRUE(value) << oracle->Name();
        ASSERT_EQ(1U, value->elements.size());
        EXPECT_TRUE(back == value->elements[0].text) << oracle->Name();
    }
}
