// Writing and reading JSON without memory: it is never mistaken for a text that is not JSON, and nothing is lost.
#include <qvpreslayer/JSONSerializer.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "faults/Subjects.h"
#include "hostile/NestedForms.h"
#include "json/JSONTestSupport.h"

namespace {

using enum Promise;

// The registry of the view, filled.
class FilledRegistry final : public ViewRegistry {
public:
    FilledRegistry() {
        GetType(view::kN);
        GetType(static_cast<int>(CoreParameterID::IntRLE));
    }
};

// Every construct once; values longer than what fits in place.
const TString kEveryKind =
    LR"({"maxCount":1,"text":"a text that is long enough for the heap, and its \"escapes\"",)"
    LR"("intList":[1,[5,4],[]],"textList":["a text that is long enough for the heap",null,[1]],)"
    LR"("myMap":{"k":"v"},"subBag":{"n":1},"myModel":{"aB":1},"items":[{"n":1},{}],)"
    LR"("byKey":{"a":null,"b":{}},"row":["a"],"rows":[["b"]],"real":0.5,"unsigned":1e2,)"
    LR"("uuid":"6f1c2a90-51d4-4e0b-9b7e-3a8d5c0f7e21","hoursList":["1","2"],"paramType":"int-rle"})";

// So many elements of each sort.
TString Large(int count) {
    TString items;
    TString numbers;
    TString entries;
    for (int i = 0; i < count; ++i) {
        const TString separator = i == 0 ? L"" : L",";
        items += separator + L"{\"n\":" + TString::number(i) + L"}";
        numbers += separator + TString::number(i % 7 * 1000);
        entries += separator + L"\"key " + TString::number(i) + L"\":\"" + kLong + L"\"";
    }
    return L"{\"items\":[" + items + L"],\"intList\":[" + numbers + L"],\"realList\":[" + numbers + L"],\"myMap\":{" +
           entries + L"}}";
}

TString Nested(const NestedForm& form, int levels) { return TString::FromUtf8(form.Text(levels)); }

Subject Reading(const TString& json) {
    return Nothing([json, reader = JSONSerializer(L"view")] { reader.ToParameters(json); });
}

Subject Writing(const RefCntPtr<IParameters>& bag, JSONSerializer::OutputType type) {
    return Nothing([bag, type, writer = JSONSerializer(L"view")] { writer.ToString(bag, type); });
}

class ViewModel final : public BaseParameters, public PresentationModel {
public:
    int GetDefaultParamID() const override { return view::kMyModel; }
    RefCntPtr<IParameters> AsIParameters() override {
        return MakeBag({{view::kMyModel, BagVal(RefCntPtr<IParameters>(this))}});
    }

protected:
    ~ViewModel() override = default;
    RefCntPtr<BaseParameters> DoEmptyClone() override { return RefCntPtr<BaseParameters>(new ViewModel); }
};

RefCntPtr<ViewModel> Model() {
    auto model = MakeRefCnt<ViewModel>();
    model->SetParameter(view::kText, Text(kLong));
    model->SetParameter(view::kIntList, Val(std::vector<int>(50, 12345)));
    return model;
}

// A writer and its text. What was written before a failure stays.
struct Writer {
    TString text;
    BuildParameterStrings visitor{text, JSONSerializer::Pretty, true, true, false};
};

template <class Operation>
Scenario OnWriter(const char* name, Operation operation) {
    return {name, Basic, [operation] {
                auto writer = std::make_shared<Writer>();
                return Subject{[=] { operation(writer->visitor); }, [=] { return writer->text.ToUtf8(); }};
            }};
}

constexpr JSONSerializer::OutputType kForms[] = {JSONSerializer::Pretty, JSONSerializer::Compact, JSONSerializer::Bare,
                                                 JSONSerializer::BareRawNames, JSONSerializer::UnquotedNames};

}  // namespace

TEST(Faults, ReadingJSON) {
    const FilledRegistry registry;
    CheckUnderFaults({
        {"nothing", Strong, [] { return Reading(L"{}"); }},
        {"every kind", Strong, [] { return Reading(kEveryKind); }},
        {"much", Strong, [] { return Reading(Large(100)); }},
        {"bags in bags", Strong, [] { return Reading(Nested(kNestedForms[0], 200)); }},
        {"structures in structures", Strong, [] { return Reading(Nested(kNestedForms[1], 200)); }},
        {"lists in lists", Strong, [] { return Reading(Nested(kNestedForms[2], 100)); }},
        {"maps in maps", Strong, [] { return Reading(Nested(kNestedForms[3], 100)); }},
        {"names that come twice", Strong, [] { return Reading(L"{\"n\":1,\"c\":\"x\",\"n\":2,\"aB\":3}"); }},
        {"escaped names", Strong, [] { return Reading(L"{\"m\\u0061xCount\":1,\"myM\\u0061p\":{\"\\u0061\":1}}"); }},
    });
}

// Nothing is let pass unsaid for want of memory: of the text with every construct the null and the nested list among
// its texts are told, or the reading fails.
TEST(Faults, ReadingJSONWithDiagnostics) {
    class Counter final : public IReadingDiagnostics {
    public:
        void Report(Leniency, int, const TextLocation&) override { ++count; }
        int count = 0;
    };
    const auto watch = [](const TString& json, int expected) {
        return Nothing([json, expected] {
            Counter notes;
            JSONSerializer reader(L"view");
            reader.SetDiagnostics(&notes);
            reader.ToParameters(json);
            if (notes.count != expected) {
                throw std::logic_error("told " + std::to_string(notes.count));
            }
        });
    };
    const FilledRegistry registry;
    CheckUnderFaults({
        {"every kind, watched", Strong, [&] { return watch(kEveryKind, 2); }},
        {"leniencies, watched", Strong,
         [&] {
             return watch(
                 LR"({"max-count":1,"maxCount":2,"big":4294967296,"real":0.123456789012345678,"n":null,)"
                 LR"("n":null,"hours":"4294967297","bigList":[[5000000000,4],[]]} behind)",
                 8);
         }},
    });
}

TEST(Faults, TextsThatAreRefused) {
    const FilledRegistry registry;
    CheckUnderFaults({
        {"no text", Strong, [] { return Reading({}); }},
        {"not closed", Strong, [] { return Reading(kEveryKind.left(300)); }},
        {"deep inside", Strong, [] { return Reading(L"{\"subBag\":{\"subBag\":{\"items\":[{},{\"n\":+1}]}}}"); }},
        {"too deep", Strong, [] { return Reading(TString(2000, u'[')); }},
        {"no object", Strong, [] { return Reading(L"[]"); }},
        {"no element", Strong, [] { return Reading(L"{\"items\":[5]}"); }},
        {"an unknown name", Strong, [] { return Reading(L"{\"subBag\":{\"aNameThatNobodyHasRegisteredSoFar\":1}}"); }},
        {"another kind", Strong, [] { return Reading(L"{\"subBag\":{\"intList\":5}}"); }},
        {"another type", Strong, [] { return Reading(L"{\"subBag\":{\"maxCount\":\"five\"}}"); }},
        {"another type in a list", Strong, [] { return Reading(L"{\"subBag\":{\"intList\":[1,\"five\"]}}"); }},
        {"too many elements", Strong, [] { return Reading(L"{\"intList\":[[1,4000000000]]}"); }},
        {"an unknown namespace", Strong,
         [] { return Nothing([] { JSONSerializer(L"nowhere").ToParameters(L"{\"n\":1}"); }); }},
    });
}

TEST(Faults, WritingJSON) {
    const FilledRegistry registry;
    const JSONSerializer reader(L"view");
    std::vector<Scenario> scenarios = {
        {"nothing", Strong, [] { return Writing(MakeBag(), JSONSerializer::Compact); }},
        {"null", Strong, [] { return Writing(nullptr, JSONSerializer::Compact); }},
        {"an identifier that is not registered", Strong,
         [] {
             return Writing(MakeBag({{9999, Val(1)}}), JSONSerializer::Compact);
         }},
        {"much", Strong, [=] { return Writing(reader.ToParameters(Large(100)), JSONSerializer::Pretty); }},
        {"much, packed", Strong,
         [=] {
             const auto bag = reader.ToParameters(Large(100));
             return Nothing([=] {
                 const TestSession session(false, true);
                 reader.ToString(bag, JSONSerializer::Compact);
             });
         }},
        {"short names", Strong,
         [=] {
             const auto bag = MakeBag({{view::kText, Text(kLong)}, {view::kUuid, Val(TUUID())}});
             return Nothing([=] {
                 const TestSession session(true, false);
                 reader.ToString(bag, JSONSerializer::Compact);
             });
         }},
    };
    for (const auto form : kForms) {
        scenarios.push_back({"every kind", Strong, [=] { return Writing(reader.ToParameters(kEveryKind), form); }});
    }
    for (const NestedForm& form : kNestedForms) {
        scenarios.push_back({form.name, Strong, [&form] { return Writing(form.Bags(60), JSONSerializer::Pretty); }});
    }
    CheckUnderFaults(scenarios);
}

TEST(Faults, WritingModels) {
    const FilledRegistry registry;
    const JSONSerializer writer(L"view");
    CheckUnderFaults({
        {"a model", Strong,
         [=] { return Nothing([=, model = Model()] { writer.PresModelToString(model, JSONSerializer::Pretty); }); }},
        {"a model behind a text", Basic,
         [=] {
             return OnText(kLong, [=, model = Model()](TString& text) {
                 writer.PresModelToString(model, true, JSONSerializer::Compact, text);
             });
         }},
        {"no model", Strong,
         [=] { return Nothing([=] { writer.PresModelToString(nullptr, JSONSerializer::Pretty); }); }},
    });
}

TEST(Faults, EventsOfTheWriter) {
    const FilledRegistry registry;
    CheckUnderFaults({
        OnWriter("a parameter", [](auto& v) { v.Parameter(kLong, kLong, PTC_Text); }),
        OnWriter("a list",
                 [](auto& v) {
                     v.StartList(kLong, PTC_Text);
                     for (int i = 0; i < 100; ++i) {
                         v.ListItem(kLong);
                     }
                     v.EndList(kLong);
                 }),
        OnWriter("a map",
                 [](auto& v) {
                     v.StartMap(kLong, PTC_Text);
                     v.MapItem(kLong, kLong, true);
                     v.NullMapItem(kLong, false);
                     v.EndMap(kLong);
                 }),
        OnWriter("many structures",
                 [](auto& v) {
                     for (int i = 0; i < 100; ++i) {
                         v.StartComposite(kLong, false);
                     }
                     for (int i = 0; i < 100; ++i) {
                         v.EndComposite(kLong);
                     }
                 }),
        OnWriter("captures",
                 [](auto& v) {
                     for (int i = 0; i < 5; ++i) {
                         v.StartCapture();
                         v.Parameter(kLong, kLong, PTC_Text);
                     }
                     for (int i = 0; i < 5; ++i) {
                         v.WriteCaptured(v.EndCapture());
                     }
                 }),
        OnWriter("an end", [](auto& v) { v.Finish(); }),
    });
}

TEST(Faults, Serializers) {
    const FilledRegistry registry;
    const auto name = [](const JSONSerializer& serializer) {
        try {
            serializer.ToParameters(L"{\"n\":1}");
        } catch (const ParameterNamespaceNotFoundException& e) {
            return e.GetName().ToUtf8();
        }
        return std::string("view");
    };
    CheckUnderFaults({
        {"a serializer", Strong, [] { return Nothing([] { JSONSerializer serializer(kLong); }); }},
        {"copying", Strong,
         [=] {
             return On(
                 std::make_shared<JSONSerializer>(kLong), [](auto& s) { JSONSerializer copy(s); }, name);
         }},
        {"assigning", Strong,
         [=] {
             static const JSONSerializer other(kLong);
             return On(
                 std::make_shared<JSONSerializer>(L"view"), [](auto& s) { s = other; }, name);
         }},
        {"capture", NoFail,
         [=] {
             return On(
                 std::make_shared<JSONSerializer>(L"view"), [](auto& s) { s.EnableCapture(true, true); }, name);
         }},
    });
}
