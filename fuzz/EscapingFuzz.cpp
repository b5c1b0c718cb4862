// Texts inside quotation marks, both ways. Promised:
//
//   - any text is written with the escapes of docs/json.md, as a value, an item, a key and a name, and comes back with
//     its long escapes as they stand;
//   - any characters between quotation marks are read as RFC 8259 says (with U+0000 and lone surrogates allowed), or
//     refused at the first character that cannot stand.
//
// The last byte tells which of the two, and whether the rest is UTF-8 or units.
#include <map>
#include <string>

#include "fuzz/support/Bytes.h"
#include "fuzz/support/TextModels.h"
#include "support/TestHost.h"

using namespace fuzz;

namespace {

constexpr int kText = 1;
constexpr int kList = 2;
constexpr int kMap = 3;

struct Host {
    TestRegistry registry;
    TestSession session{true};  // short names: keys are escaped
    JSONSerializer json{L"texts"};

    Host() {
        registry.Add(L"texts", 1, 9, [](AbstractParamAdder& adder) {
            adder.AddSimple(kText, L"t", new TStringSerializer);
            adder.AddList(kList, L"l", new TStringSerializer);
            adder.AddMap(kMap, L"m", new TStringSerializer);
        });
    }
};

void CheckWriting(const Host& host, const TString& text) {
    const RefCntPtr<TestBag> bag = MakeBag({{kText, Text(text)},
                                            {kList, Val(std::vector<TString>{text, text})},
                                            {kMap, Val(std::map<TString, TString>{{text, text}})}});
    const TString quoted = TString(L"\"") + text_model::Escaped(text) + TString(L"\"");
    const TString written = host.json.ToString(bag, JSONSerializer::Compact);
    RequireEqual(TString(L"{\"t\": ") + quoted + TString(L",\"l\":[") + quoted + TString(L",") + quoted +
                     TString(L"],\"m\":{") + quoted + TString(L":") + quoted + TString(L"}}"),
                 written, "a written text");
    const RefCntPtr<IParameters> back = host.json.ToParameters(written);
    const TString expected = text_model::AsReadBack(text);
    RequireEqual(expected, GetParameterValue<TString>(*back, kText), "a text that was read back");
    Require(std::vector<TString>{expected, expected} == GetParameterValue<std::vector<TString>>(*back, kList),
            "a list of texts that was read back");
    Require(
        std::map<TString, TString>{{expected, expected}} == GetParameterValue<std::map<TString, TString>>(*back, kMap),
        "a map of texts that was read back");
}

// What stands behind an opening quotation mark, unit by unit.
struct Quoted {
    enum End { Closed, Refused, Open };
    End end = Open;
    std::size_t at = 0;  // of the closing mark, of the first unit that cannot stand, or behind the last one
    TString text;
};

bool IsHexDigit(char16_t unit) {
    return (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'f') || (unit >= u'A' && unit <= u'F');
}

Quoted ReadQuoted(std::u16string_view units) {
    static const std::map<char16_t, char16_t> kEscapes = {{u'"', u'"'},  {u'\\', u'\\'}, {u'/', u'/'},  {u'b', u'\b'},
                                                          {u'f', u'\f'}, {u'n', u'\n'},  {u'r', u'\r'}, {u't', u'\t'}};
    Quoted quoted;
    std::size_t& at = quoted.at;
    for (; at < units.size(); ++at) {
        if (units[at] == u'"') {
            quoted.end = Quoted::Closed;
            return quoted;
        }
        if (units[at] != 0 && units[at] < 0x20) {
            quoted.end = Quoted::Refused;
            return quoted;
        }
        if (units[at] != u'\\') {
            quoted.text += units[at];
            continue;
        }
        if (++at == units.size()) {
            return quoted;
        }
        if (kEscapes.contains(units[at])) {
            quoted.text += kEscapes.at(units[at]);
            continue;
        }
        if (units[at] != u'u') {
            quoted.end = Quoted::Refused;
            return quoted;
        }
        std::string digits;
        while (digits.size() < 4) {
            if (++at == units.size()) {
                return quoted;
            }
            if (!IsHexDigit(units[at])) {
                quoted.end = Quoted::Refused;
                return quoted;
            }
            digits += static_cast<char>(units[at]);
        }
        quoted.text += static_cast<char16_t>(std::stoul(digits, nullptr, 16));
    }
    return quoted;
}

void CheckReading(const Host& host, const TString& units) {
    const TString opening(L"{\"t\":\"");
    const TString text = opening + units + TString(L"\"}");
    const Quoted expected = ReadQuoted(text.view().substr(opening.size()));
    try {
        const RefCntPtr<IParameters> bag = host.json.ToParameters(text);
        Require(expected.end == Quoted::Closed, "a text that breaks the rules is refused");
        RequireEqual(expected.text, GetParameterValue<TString>(*bag, kText), "a text that was read");
    } catch (const JSONParseException& failure) {
        Require(failure.GetStringId() == Messages::kJSONNotValid, "a text is text or not valid");
        if (expected.end == Quoted::Closed) {  // what stands behind the mark is to blame
            Require(failure.GetLocation().offset > opening.size() + expected.at, "a text that keeps the rules is read");
        } else {
            Require(failure.GetLocation().offset == opening.size() + expected.at,
                    "the place is that of the first unit that cannot stand");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Host s_host;
    Bytes bytes(data, size);
    const unsigned switches = bytes.LastByte();
    const TString text = bytes.RestAsText((switches & 2) == 0);
    if ((switches & 1) != 0) {
        CheckWriting(s_host, text);
    } else {
        CheckReading(s_host, text);
    }
    return 0;
}
