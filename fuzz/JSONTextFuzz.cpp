// Any text as JSON, up to a bag or to one of the failures that docs/json.md names. Promised beyond "no crash":
//
//   - the short way and the long way of reading come to the same bag or failure, place included;
//   - a place lies in the text, and its line and column are those of its offset;
//   - blanks and comments before the text, and anything behind the value, change nothing but places;
//   - what was read can be written, and read back with nothing changed but what docs/json.md lists.
//
// The last byte holds the settings, from the lowest bit: short names in force, packed lists, the lookup flag, the form
// of the way back, units instead of UTF-8, and names read in the other form than that in force.
#include <stdexcept>
#include <typeinfo>

#include "fuzz/support/Bytes.h"
#include "fuzz/support/EventTree.h"
#include "fuzz/support/ViewHost.h"

using namespace fuzz;

namespace {

struct Settings {
    bool shortNames;
    bool lookupFlag;
};

// A reading of one namespace: its bag, or its failure.
struct Outcome {
    RefCntPtr<IParameters> bag;
    std::string failure;
};

Outcome Read(const TString& text, const wchar_t* space, const Settings& settings) {
    Outcome outcome;
    outcome.failure = FailureOf(
        [&] { outcome.bag = JSONSerializer(space).ToParameters(text, settings.shortNames, settings.lookupFlag); });
    return outcome;
}

void CheckPlace(const TString& text, const Settings& settings) {
    try {
        JSONSerializer(L"view").ToParameters(text, settings.shortNames, settings.lookupFlag);
    } catch (const QuorvelException& failure) {
        const auto* located = dynamic_cast<const TextLocated*>(&failure);
        if (located == nullptr || !located->GetLocation().IsKnown()) {
            Require(typeid(failure) == typeid(QuorvelException), "failures that can tell their place do");
            return;
        }
        const TextLocation& place = located->GetLocation();
        Require(place.offset <= text.size(), "a place lies in the text");
        std::size_t line = 1;
        std::size_t column = 1;
        for (std::size_t i = 0; i < place.offset; ++i) {
            column = text[i] == u'\n' ? 1 : column + 1;
            line += text[i] == u'\n' ? 1 : 0;
        }
        Require(place.line == line && place.column == column, "line and column are those of the offset");
    } catch (const std::exception&) {  // their kinds were looked at before
    }
}

// The type and the message, without the place.
std::string WithoutPlace(const std::string& failure) { return failure.substr(0, failure.find(" at ")); }

void CheckSurroundings(const TString& text, const Settings& settings, const Outcome& plain) {
    const Outcome surrounded = Read(TString(u" /* { */\n// [\n") + text, L"view", settings);
    RequireEqual(WithoutPlace(plain.failure), WithoutPlace(surrounded.failure), "blanks before change nothing");
    if (plain.bag) {
        const Outcome followed = Read(text + TString(u"\n]\u0001"), L"view", settings);
        RequireEqual(std::string(), followed.failure, "what follows the value is not looked at");
        Require(TreeOf(plain.bag) == TreeOf(followed.bag), "what follows the value changes nothing");
    }
}

void CheckTrip(const RefCntPtr<IParameters>& bag, bool pretty) {
    TestBuilderVars& options = View().Options();
    const JSONSerializer json(L"view");
    const Node tree = TreeOf(bag);
    const TString written = json.ToString(bag, pretty ? JSONSerializer::Pretty : JSONSerializer::Compact);
    options.compressArrays = false;
    try {
        const Node expected = JSONTrip(L"view", options.shortNames).Members(tree);
        RequireEqual(expected, TreeOf(json.ToParameters(written)), "what was read comes back");
    } catch (const JSONTrip::ReadingFails&) {
        Require(!FailureOf([&] { json.ToParameters(written); }).empty(), "what cannot come back is refused");
    } catch (const JSONTrip::NotTold&) {
        FailureOf([&] { json.ToParameters(written); });
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes(data, size);
    const unsigned switches = bytes.LastByte();
    TestBuilderVars& options = View().Options();
    options.shortNames = (switches & 1) != 0;
    options.compressArrays = (switches & 2) != 0;
    const Settings settings{options.shortNames != ((switches & 32) != 0), (switches & 4) != 0};
    const TString text = bytes.RestAsText((switches & 16) == 0);

    PresLayerLimits::SetExpansionBytes(std::size_t{64} * 1024);
    const Outcome plain = Read(text, L"view", settings);
    const Outcome longWay = Read(text, L"long", settings);
    RequireEqual(longWay.failure, plain.failure, "both ways of reading fail alike");
    if (!plain.bag) {
        CheckPlace(text, settings);
        CheckSurroundings(text, settings, plain);
        return 0;
    }
    Node tree;
    Node longTree;
    const std::string walkFailure = FailureOf([&] { tree = TreeOf(plain.bag); });
    FailureOf([&] { longTree = TreeOf(longWay.bag); });
    RequireEqual(longTree, tree, "both ways of reading come to the same");
    if (walkFailure.empty()) {  // else it holds a parameter that cannot be written
        CheckSurroundings(text, settings, plain);
        PresLayerLimits::SetExpansionBytes(std::size_t{1024} * 1024);
        CheckTrip(plain.bag, (switches & 8) != 0);
    }
    return 0;
}
