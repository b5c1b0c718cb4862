// A bag made from the bytes, as JSON in every form under either kind of names, and back. Promised:
//
//   - in every form the text is what the rules spell out of the events of the walk (WriterModel);
//   - the short way of writing gives what the long way gives;
//   - from Pretty and Compact comes back what docs/json.md says, no more and no less (JSONTrip);
//   - the forms made for other readers are read or refused, with nothing worse.
//
// The last byte holds the settings: short names, packed lists.
#include "fuzz/support/EventTree.h"
#include "fuzz/support/Failures.h"
#include "fuzz/support/RandomBag.h"
#include "fuzz/support/ViewHost.h"
#include "fuzz/support/WriterModel.h"

using namespace fuzz;

namespace {

constexpr int kDepth = 3;

void CheckText(const RefCntPtr<const IParameters>& bag, const TString& text, JSONSerializer::OutputType form) {
    WriterModel model(form, false, false, View().Options().shortNames);
    VisitParametersStructure(L"", bag, model);
    model.Finish();
    RequireEqual(model.Text(), text, "a text is what the rules spell");
}

void CheckTrip(const Node& tree, const TString& text) {
    const TestBuilderVars& options = View().Options();
    const auto read = [&] { return JSONSerializer(L"view").ToParameters(text); };
    Node expected;
    try {
        expected = JSONTrip(L"view", options.shortNames).Members(tree);
    } catch (const JSONTrip::ReadingFails&) {
        Require(!FailureOf(read).empty(), "what cannot come back is refused");
        return;
    } catch (const JSONTrip::NotTold&) {
        FailureOf(read);
        return;
    }
    RequireEqual(expected, TreeOf(read()), "what was written comes back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes(data, size);
    const unsigned switches = bytes.LastByte();
    TestBuilderVars& options = View().Options();
    options.shortNames = (switches & 1) != 0;
    options.compressArrays = (switches & 2) != 0;
    PresLayerLimits::SetExpansionBytes(std::size_t{1024} * 1024);

    Bytes again = bytes;
    const RefCntPtr<IParameters> bag = BagMaker(bytes, 0).Bag(kDepth);
    const RefCntPtr<IParameters> longBag = BagMaker(again, kLong).Bag(kDepth);
    const Node tree = TreeOf(bag);
    for (const auto form : {JSONSerializer::Pretty, JSONSerializer::Compact, JSONSerializer::Bare,
                            JSONSerializer::BareRawNames, JSONSerializer::UnquotedNames}) {
        options.compressArrays = (switches & 2) != 0;
        const TString text = JSONSerializer(L"view").ToString(bag, form);
        CheckText(bag, text, form);
        RequireEqual(JSONSerializer(L"long").ToString(longBag, form), text, "both ways of writing give one text");
        options.compressArrays = false;  // bags are compared element by element
        if (form == JSONSerializer::Pretty || form == JSONSerializer::Compact) {
            CheckTrip(tree, text);
        } else {
            FailureOf([&] { JSONSerializer(L"view").ToParameters(text); });
        }
    }
    return 0;
}
