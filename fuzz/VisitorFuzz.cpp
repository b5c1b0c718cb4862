// The visitor that spells JSON, fed with any events in any order, balanced or not. Promised: after every event its text
// is the model's, and so is every captured text.
//
// The first byte chooses the form, the second short names and captures.
#include "fuzz/support/Bytes.h"
#include "fuzz/support/WriterModel.h"

using namespace fuzz;

namespace {

constexpr std::size_t kMostEvents = 100;
constexpr std::size_t kMostCaptured = 100;  // texts that hold one another would grow without end

ParameterTypeCategory RandomKind(Bytes& bytes) { return static_cast<ParameterTypeCategory>(bytes.Below(10)); }

// Tells both visitors the same event; captured is the last text that a capture gave.
template <class Left, class Right>
void TellBoth(Bytes& bytes, Left& left, Right& right, TString& captured) {
    const auto tell = [&](auto&& event) {
        event(left);
        event(right);
    };
    const std::size_t event = bytes.Below(14);
    const TString name = event == 1 || event > 9 ? TString() : bytes.Text(5);
    const ParameterTypeCategory kind = RandomKind(bytes);
    const bool raw = bytes.Coin();
    switch (event) {
        case 0:
            return tell([&](auto& visitor) { visitor.Parameter(name, captured, kind); });
        case 1: {
            const TString text = bytes.Text(5);
            return tell([&](auto& visitor) { visitor.ListItem(text); });
        }
        case 2:
            return tell([&](auto& visitor) { visitor.StartList(name, kind); });
        case 3:
            return tell([&](auto& visitor) { visitor.EndList(name); });
        case 4:
            return tell([&](auto& visitor) { visitor.StartMap(name, kind); });
        case 5:
            return tell([&](auto& visitor) { visitor.MapItem(name, name, raw); });
        case 6:
            return tell([&](auto& visitor) { visitor.EndMap(name); });
        case 7:
            return tell([&](auto& visitor) { visitor.StartComposite(name, raw); });
        case 8:
            return tell([&](auto& visitor) { visitor.EndComposite(name); });
        case 9:
            return tell([&](auto& visitor) { visitor.NullMapItem(name, raw); });
        case 10:
            return tell([&](auto& visitor) { visitor.StartCapture(); });
        case 11: {
            const TString expected = left.EndCapture();
            captured = right.EndCapture();
            RequireEqual(expected, captured, "a captured text is what was written since");
            captured = captured.view().substr(0, kMostCaptured);
            return;
        }
        default: {
            const TString text = event == 12 ? captured : bytes.Text(8);
            return tell([&](auto& visitor) { visitor.WriteCaptured(text); });
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes(data, size);
    const auto form = static_cast<JSONSerializer::OutputType>(bytes.Below(5));
    const unsigned switches = bytes.Byte();
    const bool shortNames = (switches & 1) != 0;
    const bool capture = (switches & 2) != 0;
    const bool nested = (switches & 4) != 0;

    TString text(L"before ");  // a visitor appends to what is there
    BuildParameterStrings visitor(text, form, capture, nested, shortNames);
    WriterModel model(form, capture, nested, shortNames);
    TString captured;
    for (std::size_t events = 0; events < kMostEvents && !bytes.AtEnd(); ++events) {
        TellBoth(bytes, model, visitor, captured);
        RequireEqual(TString(L"before ") + model.Text(), text, "the text of an event is what the rules spell");
    }
    model.Finish();
    visitor.Finish();
    RequireEqual(TString(L"before ") + model.Text(), text, "the end of a text is what the rules spell");
    return 0;
}
