// Texts inside quotation marks, both ways. Promised:
//
//   - any text is written with the escapes of docs/json.md, as a value, an item and a key, and comes back with its
//     long escapes as they stand;
//   - any characters between quotation marks are read as the slow reader reads them (ReaderModel), or refused at the
//     first character that cannot stand.
//
// The last byte tells which of the two, and whether the rest is UTF-8 or units.
#include <map>
#include <vector>

#include "fuzz/support/Bytes.h"
#include "fuzz/support/Failures.h"
#include "fuzz/support/ReaderModel.h"
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

void CheckReading(const Host& host, const TString& units) {
    const TString text = TString(L"{\"t\":\"") + units + TString(L"\"}");
    TString expected;
    TString got;
    const std::string failure = FailureOf([&] {
        expected = GetParameterValue<TString>(*reader_model::Reader(text, L"texts", true, false).Read(), kText);
    });
    RequireEqual(
        WithoutPath(failure),
        WithoutPath(FailureOf([&] { got = GetParameterValue<TString>(*host.json.ToParameters(text), kText); })),
        "the failure of characters that cannot stand");
    RequireEqual(expected, got, "a text that was read");
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
