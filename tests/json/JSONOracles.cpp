#include "json/JSONOracles.h"

#include <algorithm>
#include <cstdlib>
#include <regex>
#include <stdexcept>
#include <string_view>

#include <boost/json/src.hpp>
#include <nlohmann/json.hpp>

// A broken precondition of RapidJSON is a refusal.
#define RAPIDJSON_ASSERT(condition)                     \
    do {                                                \
        if (!(condition)) {                             \
            throw std::logic_error("RAPIDJSON_ASSERT"); \
        }                                               \
    } while (false)
#define RAPIDJSON_NOEXCEPT_ASSERT(condition) static_cast<void>(condition)
#include <rapidjson/reader.h>

#include <qvcore/TString.h>

namespace json_oracles {

namespace {

// Builds a value from the events of a parser.
class Builder {
public:
    bool Add(Value value) {
        if (m_open.empty()) {
            m_root = std::move(value);
        } else {
            m_open.back()->elements.push_back(std::move(value));
        }
        return true;
    }
    bool Open(Value::Kind kind) {
        Value value;
        value.kind = kind;
        Add(std::move(value));
        m_open.push_back(m_open.empty() ? &m_root : &m_open.back()->elements.back());
        return true;
    }
    bool Close() {
        m_open.pop_back();
        return true;
    }
    bool Name(std::u16string name) {
        m_open.back()->names.push_back(std::move(name));
        return true;
    }
    bool AddBool(bool boolean) {
        Value value;
        value.kind = Value::Bool;
        value.boolean = boolean;
        return Add(std::move(value));
    }
    bool AddInteger(std::int64_t integer) {
        Value value;
        value.kind = Value::Integer;
        value.integer = integer;
        return Add(std::move(value));
    }
    bool AddReal(double real) {
        Value value;
        value.kind = Value::Real;
        value.real = real;
        return Add(std::move(value));
    }
    bool AddString(std::u16string text) {
        Value value;
        value.kind = Value::String;
        value.text = std::move(text);
        return Add(std::move(value));
    }

    Value Take() { return std::move(m_root); }

private:
    Value m_root;
    std::vector<Value*> m_open;  // a container does not move while it is the innermost open one
};

std::u16string Wide(std::string_view utf8) { return std::u16string(TString::FromUtf8(utf8).view()); }
std::string Narrow(const std::u16string& text) { return TString(text).ToUtf8(); }

// The end of the string or comment that starts at a place, else of the single unit there.
std::size_t EndOfToken(std::u16string_view text, std::size_t start) {
    std::size_t end = start + 1;
    if (text[start] == u'"') {
        while (end < text.size() && text[end] != u'"') {
            end += text[end] == u'\\' ? 2 : 1;
        }
        return std::min(end + 1, text.size());
    }
    if (text.substr(start, 2) == u"//") {
        return std::min(text.find(u'\n', start), text.size());
    }
    if (text.substr(start, 2) == u"/*" && text.find(u"*/", start + 2) != std::u16string_view::npos) {
        return text.find(u"*/", start + 2) + 2;
    }
    return end;
}

// The text with a blank for each comment, which is what a comment comes to. Boost.JSON overlooks the end of /***/ and
// lets a list end behind a comma and a comment; nlohmann/json ends comments behind "//" at a carriage return too.
std::u16string WithoutComments(std::u16string_view text) {
    std::u16string result;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t end = EndOfToken(text, i);
        const bool comment = text[i] == u'/' && end > i + 1;
        result += comment ? std::u16string_view(u" ") : text.substr(i, end - i);
        i = end;
    }
    return result;
}

// The text with every real that is zero, or too small for a double, written as 0.0. RapidJSON answers other numbers for
// some of those with an exponent, or refuses them; Boost.JSON answers a NaN for some, and refuses exponents that do not
// fit its counter.
std::u16string WithPlainZeros(std::u16string_view text) {
    constexpr std::u16string_view kOfNumbers = u"0123456789+-.eE";
    std::u16string result;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t end = EndOfToken(text, i);
        if (kOfNumbers.find(text[i]) != std::u16string_view::npos) {
            end = std::min(text.find_first_not_of(kOfNumbers, i), text.size());
            const std::string number(text.begin() + static_cast<std::ptrdiff_t>(i),
                                     text.begin() + static_cast<std::ptrdiff_t>(end));
            static const std::regex kReal("(-?)(0|[1-9][0-9]*)(\\.[0-9]+([eE][+-]?[0-9]+)?|[eE][+-]?[0-9]+)");
            std::smatch parts;
            if (std::regex_match(number, parts, kReal) && std::strtod(number.c_str(), nullptr) == 0) {
                result += parts[1].length() != 0 ? u"-0.0" : u"0.0";
                i = end;
                continue;
            }
        }
        result += text.substr(i, end - i);
        i = end;
    }
    return result;
}

// --- Boost.JSON ---

namespace json = boost::json;

void Convert(const json::value& value, Builder& to) {
    switch (value.kind()) {
        case json::kind::null:
            to.Add({});
            break;
        case json::kind::bool_:
            to.AddBool(value.get_bool());
            break;
        case json::kind::int64:
            to.AddInteger(value.get_int64());
            break;
        case json::kind::uint64:
            to.AddInteger(static_cast<std::int64_t>(value.get_uint64()));
            break;
        case json::kind::double_:
            to.AddReal(value.get_double());
            break;
        case json::kind::string:
            to.AddString(Wide({value.get_string().data(), value.get_string().size()}));
            break;
        case json::kind::array:
            to.Open(Value::Array);
            for (const auto& element : value.get_array()) {
                Convert(element, to);
            }
            to.Close();
            break;
        default:
            to.Open(Value::Object);
            for (const auto& member : value.get_object()) {
                to.Name(Wide({member.key().data(), member.key().size()}));
                Convert(member.value(), to);
            }
            to.Close();
    }
}

class BoostJSONOracle final : public Oracle {
public:
    const char* Name() const override { return "Boost.JSON"; }

    std::optional<Value> Parse(const std::u16string& text, Leniency leniency) const override {
        json::parse_options options;
        options.max_depth = 512;
        json::error_code error;
        std::string bare = Narrow(WithPlainZeros(leniency.comments ? WithoutComments(text) : text));
        Builder builder;
        if (leniency.textBehind) {
            bare += '\n';  // a number is complete only when something follows
            json::parser parser({}, options);
            parser.write_some(bare.data(), bare.size(), error);
            if (!error) {
                Convert(parser.release(), builder);
            }
        } else {
            const json::value value = json::parse(bare, error, {}, options);
            Convert(value, builder);
        }
        if (error) {
            return std::nullopt;
        }
        return builder.Take();
    }

    double RealTolerance() const override { return 1e-14; }
};

// --- RapidJSON ---

struct RapidJSONHandler : Builder {
    using Unit = char16_t;
    bool Null() { return Add({}); }
    bool Bool(bool value) { return AddBool(value); }
    bool Int(int value) { return AddInteger(value); }
    bool Uint(unsigned value) { return AddInteger(value); }
    bool Int64(std::int64_t value) { return AddInteger(value); }
    bool Uint64(std::uint64_t value) { return AddInteger(static_cast<std::int64_t>(value)); }
    bool Double(double value) { return AddReal(value); }
    bool RawNumber(const Unit*, rapidjson::SizeType, bool) { return false; }
    bool String(const Unit* text, rapidjson::SizeType size, bool) { return AddString({text, size}); }
    bool StartObject() { return Open(Value::Object); }
    bool Key(const Unit* text, rapidjson::SizeType size, bool) { return Name({text, size}); }
    bool EndObject(rapidjson::SizeType) { return Close(); }
    bool StartArray() { return Open(Value::Array); }
    bool EndArray(rapidjson::SizeType) { return Close(); }
};

// A text as the parser reads it, with NUL at its end.
class UnitStream {
public:
    using Ch = char16_t;
    explicit UnitStream(const std::u16string& text) : m_text(text) {}
    Ch Peek() const { return m_at < m_text.size() ? m_text[m_at] : u'\0'; }
    Ch Take() { return m_at < m_text.size() ? m_text[m_at++] : u'\0'; }
    std::size_t Tell() const { return m_at; }
    Ch* PutBegin() { return nullptr; }
    void Put(Ch) {}
    void Flush() {}
    std::size_t PutEnd(Ch*) { return 0; }

private:
    const std::u16string& m_text;
    std::size_t m_at = 0;
};

class RapidJSONOracle final : public Oracle {
public:
    const char* Name() const override { return "RapidJSON"; }

    std::optional<Value> Parse(const std::u16string& text, Leniency leniency) const override {
        using rapidjson::kParseCommentsFlag;
        using rapidjson::kParseStopWhenDoneFlag;
        if (leniency.comments) {
            return leniency.textBehind ? ParseAs<kParseCommentsFlag | kParseStopWhenDoneFlag>(text)
                                       : ParseAs<kParseCommentsFlag>(text);
        }
        return leniency.textBehind ? ParseAs<kParseStopWhenDoneFlag>(text) : ParseAs<0>(text);
    }

private:
    template <unsigned Flags>
    static std::optional<Value> ParseAs(const std::u16string& text) {
        using Encoding = rapidjson::UTF16<char16_t>;
        rapidjson::GenericReader<Encoding, Encoding> reader;
        RapidJSONHandler handler;
        const std::u16string plain = WithPlainZeros(text);
        UnitStream stream(plain);
        try {
            if (reader.Parse<Flags | rapidjson::kParseFullPrecisionFlag | rapidjson::kParseIterativeFlag>(stream,
                                                                                                          handler)) {
                return handler.Take();
            }
        } catch (const std::logic_error&) {
        }
        return std::nullopt;
    }
};

// --- nlohmann/json ---

struct NlohmannHandler : nlohmann::json_sax<nlohmann::json>, Builder {
    bool null() override { return Add({}); }
    bool boolean(bool value) override { return AddBool(value); }
    bool number_integer(number_integer_t value) override { return AddInteger(value); }
    bool number_unsigned(number_unsigned_t value) override { return AddInteger(static_cast<std::int64_t>(value)); }
    bool number_float(number_float_t value, const string_t&) override { return AddReal(value); }
    bool string(string_t& value) override { return AddString(Wide(value)); }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return Open(Value::Object); }
    bool key(string_t& name) override { return Name(Wide(name)); }
    bool end_object() override { return Close(); }
    bool start_array(std::size_t) override { return Open(Value::Array); }
    bool end_array() override { return Close(); }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }
};

class NlohmannOracle final : public Oracle {
public:
    const char* Name() const override { return "nlohmann/json"; }

    std::optional<Value> Parse(const std::u16string& text, Leniency leniency) const override {
        NlohmannHandler handler;
        const bool takeOut = leniency.comments && text.find(u'\r') != text.npos;
        const std::string utf8 = Narrow(takeOut ? WithoutComments(text) : text);
        if (!nlohmann::json::sax_parse(utf8, &handler, nlohmann::json::input_format_t::json, !leniency.textBehind,
                                       leniency.comments)) {
            return std::nullopt;
        }
        return handler.Take();
    }
};

}  // namespace

const Oracle& BoostJSON() {
    static const BoostJSONOracle oracle;
    return oracle;
}

const Oracle& RapidJSON() {
    static const RapidJSONOracle oracle;
    return oracle;
}

const Oracle& Nlohmann() {
    static const NlohmannOracle oracle;
    return oracle;
}

}  // namespace json_oracles
