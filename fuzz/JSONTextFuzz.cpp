// Any text as JSON, up to a bag or to one of the failures that docs/json.md names. Promised beyond "no crash":
//
//   - the bag, or the failure with its place, is that of the slow model (ReaderModel), and the same by the short way of
//     reading and by the long one;
//   - blanks and comments before the text, and anything behind the value, change nothing but places;
//   - what was read can be written, and read back with nothing changed but what docs/json.md lists (JSONTrip).
//
// The last byte holds the settings, from the lowest bit: short names in force, packed lists, the lookup flag, the form
// of the way back, units instead of UTF-8, and names read in the other form than that in force.
#include <cstdio>
#include <string>
#include <vector>

#include "fuzz/support/Bytes.h"
#include "fuzz/support/EventTree.h"
#include "fuzz/support/Failures.h"
#include "fuzz/support/ReaderModel.h"
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

Outcome ReadByModel(const TString& text, const Settings& settings) {
    Outcome outcome;
    outcome.failure = FailureOf(
        [&] { outcome.bag = reader_model::Reader(text, L"view", settings.shortNames, settings.lookupFlag).Read(); });
    return outcome;
}

Outcome Read(const TString& text, const wchar_t* space, const Settings& settings) {
    Outcome outcome;
    outcome.failure = FailureOf(
        [&] { outcome.bag = JSONSerializer(space).ToParameters(text, settings.shortNames, settings.lookupFlag); });
    return outcome;
}

// The reals of a bag, bit by bit: texts do not show the sign of zero.
class RealBits final : public IParameterVisitor {
public:
    static std::string Of(const IParameters& bag) {
        RealBits bits;
        bag.Accept(bits);
        return bits.m_text;
    }

    void VisitParameter(int, const RefCntPtr<IParameter>& value) override {
        if (const auto* real = dynamic_cast<const ValParameter<double>*>(value.Get())) {
            Add(real->GetValue());
        } else if (const auto* reals = dynamic_cast<const ValParameter<std::vector<double>>*>(value.Get())) {
            for (const double element : reals->GetValue()) {
                Add(element);
            }
        } else if (const auto* bag = dynamic_cast<const BagParameter*>(value.Get())) {
            m_text += "{" + Of(*bag->GetValue()) + "}";
        }
    }

private:
    void Add(double real) {
        char text[64];
        std::snprintf(text, sizeof(text), "%a ", real);
        m_text += text;
    }

    std::string m_text;
};

void CheckReading(const Outcome& expected, const Outcome& plain, const Outcome& longWay) {
    RequireEqual(longWay.failure, plain.failure, "both ways of reading fail alike");
    RequireEqual(WithoutPath(expected.failure), WithoutPath(plain.failure), "reading fails as the model does");
    if (!plain.bag) {
        return;
    }
    Node expectedTree;
    Node tree;
    Node longTree;
    FailureOf([&] { expectedTree = TreeOf(expected.bag); });  // a bag that cannot be written has none
    FailureOf([&] { tree = TreeOf(plain.bag); });
    FailureOf([&] { longTree = TreeOf(longWay.bag); });
    RequireEqual(expectedTree, tree, "a text is read as the model reads it");
    RequireEqual(longTree, tree, "both ways of reading come to the same");
    RequireEqual(RealBits::Of(*expected.bag), RealBits::Of(*plain.bag), "the reals of the model");
    RequireEqual(RealBits::Of(*longWay.bag), RealBits::Of(*plain.bag), "the reals of both ways");
}

void CheckSurroundings(const TString& text, const Settings& settings, const Outcome& plain) {
    const Outcome surrounded = Read(TString(u" /* { */\n// [\n") + text, L"view", settings);
    RequireEqual(WithoutPlace(plain.failure), WithoutPlace(surrounded.failure), "blanks before change nothing");
    if (plain.bag) {
        const Outcome followed = Read(text + TString(u"\n]\u0001"), L"view", settings);
        RequireEqual(std::string(), followed.failure, "what follows the value is not looked at");
        Require(RealBits::Of(*plain.bag) == RealBits::Of(*followed.bag), "what follows the value changes nothing");
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
    CheckReading(ReadByModel(text, settings), plain, Read(text, L"long", settings));
    CheckSurroundings(text, settings, plain);
    if (plain.bag && FailureOf([&] { TreeOf(plain.bag); }).empty()) {  // else it cannot be written
        PresLayerLimits::SetExpansionBytes(std::size_t{1024} * 1024);
        CheckTrip(plain.bag, (switches & 8) != 0);
    }
    return 0;
}
