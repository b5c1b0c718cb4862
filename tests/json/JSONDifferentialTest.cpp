// The reader beside another JSON parser, on generated texts and on texts with a few characters changed: both accept or
// both refuse, and what both accept has the same values.
//
// Differences that are meant, and left out or allowed for: the reader ignores what follows the first value; accepts
// escaped surrogates without a partner; refuses numbers beyond the range of a double; rounds reals correctly, where the
// other parser may be off by a few units in the last place. Comments become blanks for the other parser, which has a
// mind of its own about some of them: it overlooks the end of /***/ and lets a list end behind a comma and a comment.
// (The reader also accepts NUL in strings: no text here has one.)
#include <qvpreslayer/JSONSerializer.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <random>
#include <string>

#include <boost/json/src.hpp>

#include "json/JSONTestSupport.h"

namespace {

namespace json = boost::json;

constexpr int kText = 1;
constexpr int kOtherText = 2;
constexpr int kBag = 3;
constexpr int kList = 4;
constexpr int kMap = 5;

class GeneratedRegistry : public TestRegistry {
public:
    GeneratedRegistry() {
        Add(L"generated", 1, 9, [](AbstractParamAdder& adder) {
            adder.AddSimple(kText, L"t", new TStringSerializer);
            adder.AddSimple(kOtherText, L"u", new TStringSerializer);
            adder.AddBag(kBag, L"o");
            adder.AddList(kList, L"l", new TStringSerializer);
            adder.AddMap(kMap, L"m", new TStringSerializer);
        });
    }
};

// Makes texts of the namespace "generated"; the same ones at every run.
class TextGenerator {
public:
    explicit TextGenerator(unsigned seed) : m_engine(seed) {}

    std::string Document() {
        std::string text = Blank();
        AppendBag(text, 4);
        return text + Blank();
    }

    // The text with one to three characters replaced, removed or added.
    std::string Changed(std::string text) {
        static constexpr std::string_view kAlphabet =
            "{}[]{}[],:,:\"\"\\\\//**--++..eE00123456789 \t\n\rtrufalsn\x01\x7F";
        for (std::size_t changes = 1 + Below(3); changes > 0 && !text.empty(); --changes) {
            const std::size_t place = Below(text.size());
            const char character = kAlphabet[Below(kAlphabet.size())];
            switch (Below(4)) {
                case 0:
                    text.erase(place, 1);
                    break;
                case 1:
                    text.insert(place, 1, character);
                    break;
                case 2:
                    text[place] = text[Below(text.size())];
                    break;
                default:
                    text[place] = character;
            }
        }
        return text;
    }

private:
    std::size_t Below(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_engine); }

    // Mostly nothing; else blanks and comments.
    std::string Blank() {
        static constexpr std::string_view kBlanks[] = {" ",    "\n",      "\t",    "\r\n",       "  ",
                                                       "/**/", "/* * */", "//x\n", "/*\"{[\n*/", "// /*\n"};
        std::string text;
        while (Below(4) == 0) {
            text += kBlanks[Below(std::size(kBlanks))];
        }
        return text;
    }

    template <class Element>
    void AppendSequence(std::string& text, char opening, char closing, Element&& appendElement) {
        text += opening;
        const std::size_t count = Below(4);
        for (std::size_t i = 0; i < count; ++i) {
            text += (i == 0 ? "" : ",") + Blank();
            appendElement();
            text += Blank();
        }
        text += (count == 0 ? Blank() : "") + closing;
    }

    void AppendBag(std::string& text, int depth) {
        AppendSequence(text, '{', '}', [&] {
            const char* const names[] = {"t", "u", "o", "l", "m", "\\u0074", "\\u006D"};
            const std::size_t name = Below(depth > 0 ? std::size(names) : 2);
            text += "\"" + std::string(names[name]) + "\"" + Blank() + ":" + Blank();
            switch (name) {
                case 2:
                    AppendBag(text, depth - 1);
                    break;
                case 3:
                    AppendSequence(text, '[', ']', [&] { AppendAny(text, depth - 1); });
                    break;
                case 4:
                case 6:
                    AppendObject(text, depth - 1);
                    break;
                default:
                    AppendScalar(text);
            }
        });
    }

    void AppendObject(std::string& text, int depth) {
        AppendSequence(text, '{', '}', [&] {
            AppendString(text);
            text += Blank() + ":" + Blank();
            AppendAny(text, depth - 1);
        });
    }

    void AppendAny(std::string& text, int depth) {
        if (depth > 0 && Below(5) == 0) {
            AppendObject(text, depth);
        } else if (depth > 0 && Below(4) == 0) {
            AppendSequence(text, '[', ']', [&] { AppendAny(text, depth - 1); });
        } else {
            AppendScalar(text);
        }
    }

    void AppendScalar(std::string& text) {
        static constexpr std::string_view kWords[] = {"true", "false", "null"};
        switch (Below(4)) {
            case 0:
                text += kWords[Below(3)];
                break;
            case 1:
                AppendString(text);
                break;
            default:
                AppendNumber(text);
        }
    }

    void AppendString(std::string& text) {
        static constexpr std::string_view kParts[] = {
            "a",   "key", " ", "/",       "\\\"",    "\\\\",           "\\/",     "\\n", "\\t", "\\b", "\\f",
            "\\r", "{",   "]", "\\u00e9", "\\u0000", "\\uD83D\\ude00", "\\u20AC", "//",  "/*",  "'",   "\x7F"};
        text += '"';
        while (Below(3) != 0) {
            text += kParts[Below(std::size(kParts))];
        }
        text += '"';
    }

    void AppendDigits(std::string& text, std::size_t most) {
        for (std::size_t count = 1 + Below(most); count > 0; --count) {
            text += static_cast<char>('0' + Below(10));
        }
    }

    void AppendNumber(std::string& text) {
        static constexpr std::string_view kEdges[] = {"0",
                                                      "-0",
                                                      "134217727",
                                                      "134217728",
                                                      "2147483648",
                                                      "4294967295",
                                                      "4294967296",
                                                      "-2147483649",
                                                      "9223372036854775807",
                                                      "9223372036854775808",
                                                      "-9223372036854775808",
                                                      "-9223372036854775809",
                                                      "18446744073709551615",
                                                      "18446744073709551616"};
        if (Below(4) == 0) {
            text += kEdges[Below(std::size(kEdges))];
            return;
        }
        text += Below(3) == 0 ? "-" : "";
        if (Below(4) == 0) {
            text += '0';
        } else {
            text += static_cast<char>('1' + Below(9));
            AppendDigits(text, 22);
        }
        if (Below(3) == 0) {
            text += '.';
            AppendDigits(text, 20);
        }
        if (Below(4) == 0) {
            static constexpr std::string_view kExponents[] = {"e", "E", "e+", "E-", "e-"};
            text += kExponents[Below(std::size(kExponents))];
            AppendDigits(text, 2);
        }
    }

    std::mt19937 m_engine;
};

// The text with a blank for each comment, which is what a comment comes to.
std::string WithoutComments(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::size_t end = i + 1;
        if (text[i] == '"') {
            while (end < text.size() && text[end] != '"') {
                end += text[end] == '\\' ? 2 : 1;
            }
            end = std::min(end + 1, text.size());
        } else if (text.substr(i, 2) == "//") {
            end = std::min(text.find('\n', i), text.size());
        } else if (text.substr(i, 2) == "/*" && text.find("*/", i + 2) != std::string_view::npos) {
            end = text.find("*/", i + 2) + 2;
        }
        const bool comment = text[i] == '/' && end > i + 1;
        result += comment ? " " : text.substr(i, end - i);
        i = end - 1;
    }
    return result;
}

// The first value of a text, as the other parser has it; nothing when it refuses.
std::optional<json::value> Parsed(std::string_view text) {
    json::parse_options options;
    options.max_depth = 512;
    json::parser parser({}, options);
    json::error_code error;
    const std::string bare = WithoutComments(text);
    parser.write_some(bare.data(), bare.size(), error);
    if (error) {
        return std::nullopt;
    }
    return parser.release();
}

// The unit that an escape at this place stands for, when it is a surrogate.
std::optional<unsigned long> SurrogateAt(std::string_view text, std::size_t place) {
    if (place + 6 > text.size() || text.substr(place, 2) != "\\u") {
        return std::nullopt;
    }
    const unsigned long unit = std::strtoul(std::string(text.substr(place + 2, 4)).c_str(), nullptr, 16);
    return unit >= 0xD800 && unit <= 0xDFFF ? std::optional(unit) : std::nullopt;
}

// Whether an escaped surrogate stands without its partner.
bool HasLonelySurrogate(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto first = SurrogateAt(text, i);
        if (first) {
            const auto second = SurrogateAt(text, i + 6);
            if (*first >= 0xDC00 || !second || *second < 0xDC00) {
                return true;
            }
            i += 11;
        } else if (text[i] == '\\') {
            ++i;
        }
    }
    return false;
}

// Whether a number may have an exponent of three digits or more, and so be beyond the range of a double.
bool MayBeOutOfRange(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == 'e' || text[i] == 'E') {
            const bool sign = i + 1 < text.size() && (text[i + 1] == '+' || text[i + 1] == '-');
            const std::size_t digits = i + (sign ? 2 : 1);
            if (std::min(text.find_first_not_of("0123456789", digits), text.size()) > digits + 2) {
                return true;
            }
        }
    }
    return false;
}

// The text of a 64-bit integer: its low 32 bits, signed below 2^27.
std::string IntegerText(std::int64_t value) {
    const auto low = static_cast<std::uint32_t>(static_cast<std::uint64_t>(value));
    return value < 134217728 ? std::to_string(static_cast<std::int32_t>(low)) : std::to_string(low);
}

// Whether this is the text that a value of the other parser has here.
bool IsTextOf(const TString& text, const json::value& value) {
    switch (value.kind()) {
        case json::kind::string:
            return text == TString::FromUtf8(std::string_view(value.get_string().data(), value.get_string().size()));
        case json::kind::bool_:
            return text.ToUtf8() == (value.get_bool() ? "true" : "false");
        case json::kind::int64:
            return text.ToUtf8() == IntegerText(value.get_int64());
        case json::kind::uint64:
            return text.ToUtf8() == IntegerText(static_cast<std::int64_t>(value.get_uint64()));
        case json::kind::double_: {
            bool read = false;
            const double mine = text.toDouble(&read);
            const double theirs = value.get_double();
            return read && std::abs(mine - theirs) <= 1e-14 + 1e-14 * std::abs(theirs);
        }
        default:
            return text.empty();
    }
}

bool IsListOf(const std::vector<TString>& texts, const json::array& array) {
    std::size_t next = 0;
    for (const auto& element : array) {
        if (!element.is_array() && (next == texts.size() || !IsTextOf(texts[next++], element))) {
            return false;
        }
    }
    return next == texts.size();
}

bool IsMapOf(const std::map<TString, TString>& map, const json::object& object) {
    return map.size() == object.size() && std::all_of(object.begin(), object.end(), [&](const auto& member) {
               const auto found =
                   map.find(TString::FromUtf8(std::string_view(member.key().data(), member.key().size())));
               return found != map.end() && IsTextOf(found->second, member.value());
           });
}

// Whether a bag holds what the other parser's object says.
bool IsBagOf(const IParameters& bag, const json::object& object) {
    return std::all_of(object.begin(), object.end(), [&](const auto& member) {
        const std::string name(member.key().data(), member.key().size());
        const json::value& value = member.value();
        const int id = ParametersRegistry::Get().GetID(L"generated", TString::FromUtf8(name), true);
        if (value.is_null() || !bag.HasParameter(id)) {
            return value.is_null() && !bag.HasParameter(id);
        }
        switch (id) {
            case kBag:
                return IsBagOf(*GetParameterValue<RefCntPtr<const IParameters>>(bag, id), value.get_object());
            case kList:
                return IsListOf(GetParameterValue<std::vector<TString>>(bag, id), value.get_array());
            case kMap:
                return IsMapOf(GetParameterValue<std::map<TString, TString>>(bag, id), value.get_object());
            default:
                return IsTextOf(GetParameterValue<TString>(bag, id), value);
        }
    });
}

// How the comparisons went.
struct Tally {
    int read = 0;      // both accept, values compared
    int accepted = 0;  // both accept, the text is not one of this namespace
    int refused = 0;   // both refuse
    int leftOut = 0;
};

// Empty when both agree.
std::string Disagreement(const JSONSerializer& reader, const std::string& text, Tally& tally) {
    const std::optional<json::value> other = Parsed(text);
    RefCntPtr<IParameters> bag;
    const std::string outcome =
        OutcomeOf([&] { return bag = reader.ToParameters(TString::FromUtf8(text), true, true); });
    const bool scalarRoot =
        outcome.starts_with("runtime: the JSON root is") && !outcome.starts_with("runtime: the JSON root is array");
    if (scalarRoot || HasLonelySurrogate(text) || MayBeOutOfRange(text)) {
        ++tally.leftOut;
        return {};
    }
    const bool accepted = outcome != "not valid";
    if (accepted != other.has_value()) {
        return accepted ? "accepted" : "refused";
    }
    if (!accepted) {
        ++tally.refused;
    } else if (!bag) {
        ++tally.accepted;
    } else {
        ++tally.read;
        return other->is_object() && IsBagOf(*bag, other->get_object()) ? "" : "other values: " + outcome;
    }
    return {};
}

}  // namespace

TEST(JSONDifferential, GeneratedTexts) {
    const GeneratedRegistry registry;
    const JSONSerializer reader(L"generated");
    TextGenerator generator(20240517);
    Tally tally;
    for (int i = 0; i < 5000; ++i) {
        const std::string text = generator.Document();
        ASSERT_EQ("", Disagreement(reader, text, tally)) << text;
    }
    EXPECT_EQ(5000, tally.read);
}

TEST(JSONDifferential, ChangedTexts) {
    const GeneratedRegistry registry;
    const JSONSerializer reader(L"generated");
    TextGenerator generator(7);
    Tally tally;
    for (int i = 0; i < 3000; ++i) {
        const std::string text = generator.Document();
        for (int change = 0; change < 12; ++change) {
            const std::string changed = generator.Changed(text);
            ASSERT_EQ("", Disagreement(reader, changed, tally)) << changed;
        }
    }
    // Each sort of text came up often enough to mean something.
    EXPECT_GT(tally.read, 1000);
    EXPECT_GT(tally.accepted, 100);
    EXPECT_GT(tally.refused, 5000);
    EXPECT_LT(tally.leftOut, 5000);
}
