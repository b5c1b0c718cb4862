// The two spellings of names. Promised:
//
//   - DashedToCamel and CamelToDashed are what their rules say, and each undoes the other where docs say so;
//   - JSON shows a name in camel case, and a member leads to the parameter whose name is its dashed form, also where
//     several names look alike; no other member leads anywhere.
#include "fuzz/support/Bytes.h"
#include "fuzz/support/TextModels.h"
#include "support/TestHost.h"

using namespace fuzz;

namespace {

void CheckConversions(const TString& name) {
    const TString camel = DashedToCamel(name);
    const TString dashed = CamelToDashed(name);
    RequireEqual(text_model::CamelCase(name), camel, "DashedToCamel");
    RequireEqual(text_model::Dashed(name), dashed, "CamelToDashed");
    if (!text_model::HoldsCapital(name)) {
        RequireEqual(name, CamelToDashed(camel), "camel case leads back to a name without capitals");
    }
    if (text_model::CamelCase(name) == name) {  // no dash before a small letter
        RequireEqual(name, DashedToCamel(dashed), "dashes lead back to a name without them");
    }
}

// A member leads to the last parameter whose name is its dashed form, or nowhere.
void CheckMember(const JSONSerializer& json, const TString& member, const TString (&names)[3]) {
    const TString text = TString(L"{\"") + text_model::Escaped(member) + TString(L"\":1}");
    const TString sought = text_model::Dashed(text_model::AsReadBack(member));
    int id = 0;
    for (int i = 0; i < 3; ++i) {
        id = names[i] == sought ? i + 1 : id;
    }
    try {
        const RefCntPtr<IParameters> bag = json.ToParameters(text);
        Require(id != 0 && bag->HasParameter(id), "a member leads to the parameter of its dashed form");
    } catch (const ParameterNotFoundException& failure) {
        Require(id == 0, "a member leads to the parameter of its dashed form");
        RequireEqual(sought, failure.GetName(), "the name that was sought");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes(data, size);
    const TString names[3] = {bytes.Text(10), bytes.Text(10), bytes.Text(10)};
    const TString member = bytes.Text(10);
    for (const TString& name : {names[0], names[1], names[2], member, bytes.RestAsText(true)}) {
        CheckConversions(name);
    }

    TestRegistry registry;
    registry.Add(L"names", 1, 3, [&](AbstractParamAdder& adder) {
        for (int i = 0; i < 3; ++i) {
            adder.AddValueEntry(i + 1, names[i], L"", new ParameterTypeSerializer<int>, PTC_None);
        }
    });
    const JSONSerializer json(L"names");
    for (int i = 0; i < 3; ++i) {
        if (names[i].empty()) {
            continue;  // a parameter without a name is not written
        }
        const TString text = json.ToString(MakeBag({{i + 1, Val(1)}}), JSONSerializer::Compact);
        RequireEqual(TString(L"{\"") + text_model::CamelCase(names[i]) + TString(L"\": 1}"), text, "a written name");
        CheckMember(json, text_model::CamelCase(names[i]), names);
    }
    CheckMember(json, member, names);
    return 0;
}
