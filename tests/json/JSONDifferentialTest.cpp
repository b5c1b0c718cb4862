// The reader beside three other JSON parsers, on made-up texts and on texts with a few characters changed: both accept
// or both refuse, and what both accept has the same values.
//
// Where the reader is meant to differ from a plain parser, docs/json.md says so, and a rule below has its name. A rule
// is a change of what the other parser is given or what it answers. With all rules in force there is no difference on
// any text; and every rule is needed by some texts, so that the list holds nothing that is not true any more.
//
// Values differ by rule too: numbers reach parameters as texts, integers with their low 32 bits, null members are
// passed over, nulls and objects in lists count as empty texts, arrays in lists are runs, which lists of texts do not
// have.
#include <qvpreslayer/JSONSerializer.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "json/JSONOracles.h"
#include "json/JSONTestSupport.h"
#include "json/JSONTexts.h"
#include "support/RealTextModel.h"
#include "support/Rounds.h"

namespace {

using json_oracles::Oracle;
using json_oracles::Value;
using json_texts::Extras;
using json_texts::GeneratedRegistry;
using json_texts::TextGenerator;

enum Rule : unsigned {
    kComments = 1,        // comments are blanks
    kTextBehind = 2,      // what follows the first complete value is not looked at
    kRawNUL = 4,          // U+0000 may stand in a string as it is
    kLoneSurrogates = 8,  // so may surrogates without a partner, also escaped
    kLastName = 16,       // of members of one name the last one counts
    kBeyondDouble = 32,   // numbers beyond the range of double are refused
    kByteOrderMark = 64,  // so is a byte-order mark
    kAllRules = 127,
};
constexpr int kRuleCount = 7;
const char* const kRuleNames[kRuleCount] = {"comments",  "text behind",   "raw NUL",        "lone surrogates",
                                            "last name", "beyond double", "byte-order mark"};

// --- what the other parser is given ---

bool IsSurrogate(unsigned unit) { return unit >= 0xD800 && unit <= 0xDFFF; }
bool IsLead(unsigned unit) { return unit >= 0xD800 && unit <= 0xDBFF; }

// The unit of an escape at this place, or none.
std::optional<unsigned> EscapedUnitAt(std::u16string_view text, std::size_t place) {
    if (place + 6 > text.size() || text.substr(place, 2) != u"\\u") {
        return std::nullopt;
    }
    unsigned unit = 0;
    for (const char16_t digit : text.substr(place + 2, 4)) {
        const std::size_t value = std::u16string_view(u"0123456789abcdefABCDEF").find(digit);
        if (value == std::u16string_view::npos) {
            return std::nullopt;
        }
        unit = unit * 16 + static_cast<unsigned>(value < 16 ? value : value - 6);
    }
    return unit;
}

// Calls use(place, length, unit, escaped) for every unit of the text, escapes taken as the units that they stand for.
template <class Use>
void ForEachUnit(std::u16string_view text, Use&& use) {
    for (std::size_t i = 0; i < text.size();) {
        const std::optional<unsigned> escaped = EscapedUnitAt(text, i);
        // Of any other escape the letter is passed over too, so that a doubled backslash starts none.
        const std::size_t length = escaped ? 6 : (text[i] == u'\\' ? 2 : 1);
        use(i, std::min(length, text.size() - i), escaped.value_or(text[i]), escaped.has_value());
        i += length;
    }
}

// Whether some surrogate has no partner of its own kind: raw beside raw, escaped beside escaped.
bool HasLoneSurrogate(std::u16string_view text) {
    bool lead = false;
    bool leadEscaped = false;
    bool lone = false;
    ForEachUnit(text, [&](std::size_t, std::size_t, unsigned unit, bool escaped) {
        const bool trail = IsSurrogate(unit) && !IsLead(unit);
        const bool pair = lead && trail && leadEscaped == escaped;
        lone = lone || (lead && !pair) || (trail && !pair);
        lead = IsLead(unit);
        leadEscaped = escaped;
    });
    return lone || lead;
}

// Every surrogate becomes a private character of its own, so that none needs a partner.
constexpr unsigned kPrivate = 0xE000;
std::u16string WithoutSurrogates(std::u16string_view text) {
    std::u16string result;
    ForEachUnit(text, [&](std::size_t place, std::size_t length, unsigned unit, bool) {
        if (IsSurrogate(unit)) {
            result += static_cast<char16_t>(unit - 0xD800 + kPrivate);
        } else {
            result += text.substr(place, length);
        }
    });
    return result;
}

// U+0000 is escaped, but for one behind a backslash, which is no escape either way.
std::u16string WithoutNUL(std::u16string_view text) {
    std::u16string result;
    ForEachUnit(text, [&](std::size_t place, std::size_t length, unsigned unit, bool escaped) {
        if (unit == 0 && !escaped) {
            result += u"\\u0000";
        } else {
            result += text.substr(place, length);
        }
    });
    return result;
}

// --- what it answers ---

// The other parser's answer under some of the rules.
std::optional<Value> Answer(const Oracle& oracle, std::u16string text, unsigned rules) {
    if ((rules & kByteOrderMark) != 0 && text.starts_with(u'\uFEFF')) {
        return std::nullopt;
    }
    if ((rules & kRawNUL) != 0) {
        text = WithoutNUL(text);
    }
    if ((rules & kLoneSurrogates) != 0 && HasLoneSurrogate(text)) {
        text = WithoutSurrogates(text);
    }
    return oracle.Parse(text, {(rules & kComments) != 0, (rules & kTextBehind) != 0});
}

// --- whether it is what the reader says ---

class Comparison {
public:
    Comparison(const std::u16string& text, unsigned rules, double tolerance)
        : m_mapSurrogates((rules & kLoneSurrogates) != 0 && HasLoneSurrogate(text)),
          m_lastName((rules & kLastName) != 0),
          m_tolerance(tolerance) {}

    bool IsBagOf(const IParameters& bag, const Value& object) const {
        const auto members = Members(object);
        return std::all_of(members.begin(), members.end(), [&](const auto& member) {
            const Value& value = *member.second;
            const std::size_t name = std::u16string_view(u"tuolm").find(member.first);
            if (member.first.size() != 1 || name == std::u16string_view::npos) {
                return false;
            }
            const int id = static_cast<int>(name) + 1;
            if (value.kind == Value::Null || !bag.HasParameter(id)) {
                return value.kind == Value::Null && !bag.HasParameter(id);
            }
            switch (id) {
                case json_texts::kBag:
                    return IsBagOf(*GetParameterValue<RefCntPtr<const IParameters>>(bag, id), value);
                case json_texts::kList:
                    return IsListOf(GetParameterValue<std::vector<TString>>(bag, id), value);
                case json_texts::kMap:
                    return IsMapOf(GetParameterValue<std::map<TString, TString>>(bag, id), value);
                default:
                    return IsTextOf(GetParameterValue<TString>(bag, id), value);
            }
        });
    }

private:
    // By name, each once.
    std::map<std::u16string, const Value*> Members(const Value& object) const {
        std::map<std::u16string, const Value*> members;
        for (std::size_t i = 0; i < object.names.size(); ++i) {
            if (m_lastName) {
                members.insert_or_assign(object.names[i], &object.elements[i]);
            } else {
                members.emplace(object.names[i], &object.elements[i]);
            }
        }
        return members;
    }

    std::u16string Mapped(const TString& text) const {
        return m_mapSurrogates ? WithoutRawSurrogates(text.view()) : std::u16string(text.view());
    }
    static std::u16string WithoutRawSurrogates(std::u16string_view text) {
        std::u16string result(text);
        for (char16_t& unit : result) {
            unit = IsSurrogate(unit) ? static_cast<char16_t>(unit - 0xD800 + kPrivate) : unit;
        }
        return result;
    }

    // The text of a 64-bit integer: its low 32 bits, signed below 2^27. Unsigned 64-bit integers too large for the
    // signed type are negative as such.
    static std::string IntegerText(std::int64_t value) {
        const auto low = static_cast<std::uint32_t>(static_cast<std::uint64_t>(value));
        return value < 134217728 ? std::to_string(static_cast<std::int32_t>(low)) : std::to_string(low);
    }

    bool IsTextOf(const TString& text, const Value& value) const {
        switch (value.kind) {
            case Value::String:
                return Mapped(text) == value.text;
            case Value::Bool:
                return text.ToUtf8() == (value.boolean ? "true" : "false");
            case Value::Integer:
                return text.ToUtf8() == IntegerText(value.integer);
            case Value::Real: {
                if (m_tolerance == 0) {
                    return text.ToUtf8() == RealTextModel(value.real, 14);
                }
                bool read = false;
                const double mine = text.toDouble(&read);
                return read && std::abs(mine - value.real) <= m_tolerance * (1 + std::abs(value.real));
            }
            default:
                return text.empty();
        }
    }

    bool IsListOf(const std::vector<TString>& texts, const Value& array) const {
        std::size_t next = 0;
        for (const Value& element : array.elements) {
            if (element.kind != Value::Array && (next == texts.size() || !IsTextOf(texts[next++], element))) {
                return false;
            }
        }
        return next == texts.size();
    }

    bool IsMapOf(const std::map<TString, TString>& map, const Value& object) const {
        std::map<std::u16string, TString> mapped;
        for (const auto& [key, text] : map) {
            mapped.emplace(Mapped(key), text);
        }
        const auto members = Members(object);
        return mapped.size() == members.size() && std::all_of(members.begin(), members.end(), [&](const auto& member) {
                   const auto found = mapped.find(member.first);
                   return found != mapped.end() && IsTextOf(found->second, *member.second);
               });
    }

    bool m_mapSurrogates;
    bool m_lastName;
    double m_tolerance;
};

// How the comparisons with one parser went.
struct Tally {
    int read = 0;       // both accept, values compared
    int accepted = 0;   // both accept, the text is not one of this namespace
    int refused = 0;    // both refuse
    int differing = 0;  // before any rule
    int needed[kRuleCount] = {};
};

// What the reader makes of a text.
struct Reading {
    Reading(const JSONSerializer& reader, const std::u16string& text) {
        outcome = OutcomeOf([&] {
            try {
                return bag = reader.ToParameters(TString(text), true, true);
            } catch (const JSONParseException& failure) {
                place = failure.GetLocation().offset;
                throw;
            }
        });
    }
    bool Accepted() const { return outcome != "not valid"; }

    RefCntPtr<IParameters> bag;
    std::string outcome;
    std::size_t place = 0;  // where it refused
};

// Whether a number starts here that no double can hold.
bool IsBeyondDouble(std::u16string_view text, std::size_t place) {
    const std::u16string_view rest = text.substr(std::min(place, text.size()));
    std::string number;
    for (const char16_t unit : rest.substr(0, rest.find_first_not_of(u"0123456789+-.eE"))) {
        number += static_cast<char>(unit);
    }
    double value = 0;
    return std::from_chars(number.data(), number.data() + number.size(), value).ec == std::errc::result_out_of_range;
}

// Empty when both agree under these rules.
std::string Disagreement(const Reading& reading, const Oracle& oracle, const std::u16string& text, unsigned rules) {
    if ((rules & kBeyondDouble) != 0 && !reading.Accepted() && IsBeyondDouble(text, reading.place)) {
        return {};
    }
    const std::optional<Value> answer = Answer(oracle, text, rules);
    if (reading.Accepted() != answer.has_value()) {
        return reading.Accepted() ? "the reader alone accepts" : "the reader alone refuses";
    }
    if (!reading.bag) {
        return {};
    }
    const Comparison comparison(text, rules, oracle.RealTolerance());
    return answer->kind == Value::Object && comparison.IsBagOf(*reading.bag, *answer)
               ? ""
               : "other values: " + reading.outcome;
}

std::string Compare(const Reading& reading, const Oracle& oracle, const std::u16string& text, Tally& tally) {
    const std::string disagreement = Disagreement(reading, oracle, text, kAllRules);
    if (!disagreement.empty()) {
        return disagreement;
    }
    ++(!reading.Accepted() ? tally.refused : reading.bag ? tally.read : tally.accepted);
    if (Disagreement(reading, oracle, text, 0).empty()) {
        return {};
    }
    ++tally.differing;
    for (int i = 0; i < kRuleCount; ++i) {
        tally.needed[i] += Disagreement(reading, oracle, text, kAllRules & ~(1U << i)).empty() ? 0 : 1;
    }
    return {};
}

const Oracle* const kOracles[] = {&json_oracles::BoostJSON(), &json_oracles::RapidJSON(), &json_oracles::Nlohmann()};

class JSONDifferential : public testing::Test {
protected:
    void CompareAll(const std::u16string& text) {
        const Reading reading(m_reader, text);
        for (std::size_t i = 0; i < std::size(kOracles); ++i) {
            ASSERT_EQ("", Compare(reading, *kOracles[i], text, m_tallies[i]))
                << kOracles[i]->Name() << ", " << testing::PrintToString(TString(text));
        }
    }

    const GeneratedRegistry m_registry;
    const JSONSerializer m_reader{L"generated"};
    Tally m_tallies[std::size(kOracles)];
};

}  // namespace

TEST_F(JSONDifferential, PlainTextsAreReadAlike) {
    TextGenerator generator(Seed(20240517));
    for (int i = 0; i < Rounds(3000); ++i) {
        CompareAll(generator.Document(Extras::None));
        ASSERT_FALSE(HasFatalFailure());
    }
    for (const Tally& tally : m_tallies) {
        EXPECT_EQ(Rounds(3000), tally.read);
    }
}

// Numbers that no double is near enough to are zero, with exponents of any length.
TEST_F(JSONDifferential, TooSmallNumbersAreZeroForAll) {
    for (const char16_t* number : {u"2.4703282292062327e-326", u"-2.4703282292062327e-326", u"1e-324", u"2e-400",
                                   u"1e-400132915048565909742598", u"-0.5E-99999999999999999999"}) {
        CompareAll(u"{\"u\" :true,\"t\":" + std::u16string(number) + u"}");
    }
}

TEST_F(JSONDifferential, DifferencesAreByRule) {
    TextGenerator generator(Seed(20240518));
    for (int i = 0; i < Rounds(3000); ++i) {
        CompareAll(generator.Document(Extras::WhatTheReaderAccepts));
        ASSERT_FALSE(HasFatalFailure());
    }
    for (const Tally& tally : m_tallies) {
        EXPECT_EQ(Rounds(3000), tally.read);
        EXPECT_GT(tally.differing, 1000);
    }
}

TEST_F(JSONDifferential, ChangedTextsAreReadOrRefusedAlike) {
    TextGenerator generator(Seed(7));
    for (int i = 0; i < Rounds(2000); ++i) {
        const std::u16string text = generator.Document(i % 2 == 0 ? Extras::None : Extras::WhatTheReaderAccepts);
        for (int change = 0; change < 10; ++change) {
            CompareAll(generator.Changed(text));
            ASSERT_FALSE(HasFatalFailure());
        }
    }
    // Each sort of text came up often enough to mean something.
    for (const Tally& tally : m_tallies) {
        EXPECT_GT(tally.read, 1000);
        EXPECT_GT(tally.accepted, 100);
        EXPECT_GT(tally.refused, 5000);
    }
}

// Texts for each rule, with the parsers that it sets the reader apart from.
TEST_F(JSONDifferential, EveryRuleIsNeeded) {
    const std::u16string nul(1, u'\0');
    const struct {
        Rule rule;
        std::u16string text;
        bool boost;
        bool rapid;
        bool nlohmann;
    } cases[] = {
        {kComments, u"{\"t\": /* one */ 1}", true, true, true},
        {kComments, u"// one\n{}", true, true, true},
        {kTextBehind, u"{\"t\": 1} and more", true, true, true},
        {kTextBehind, u"{}}", true, true, true},
        {kRawNUL, u"{\"t\":\"a" + nul + u"b\"}", true, true, true},
        {kLoneSurrogates, u"{\"t\":\"\\ud800\"}", true, true, true},
        {kLoneSurrogates, u"{\"t\":\"\\udfff\\ud800\"}", true, true, true},
        {kLoneSurrogates, u"{\"t\":\"" + std::u16string(1, static_cast<char16_t>(0xD800)) + u"\"}", true, false, true},
        {kLastName, u"{\"t\":1,\"t\":2}", false, true, true},
        {kBeyondDouble, u"{\"t\":1e400}", true, false, false},
        {kBeyondDouble, u"{\"t\":[1,-41e308]}", true, true, false},
        {kByteOrderMark, u"\uFEFF{}", false, false, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(TString(c.text)));
        const Reading reading(m_reader, c.text);
        const bool needed[] = {c.boost, c.rapid, c.nlohmann};
        for (std::size_t i = 0; i < std::size(kOracles); ++i) {
            EXPECT_EQ("", Disagreement(reading, *kOracles[i], c.text, kAllRules)) << kOracles[i]->Name();
            EXPECT_EQ(needed[i], !Disagreement(reading, *kOracles[i], c.text, kAllRules & ~c.rule).empty())
                << kOracles[i]->Name();
        }
    }
}
