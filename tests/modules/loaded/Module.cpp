// A module that the test program loads at run time. It is built twice, under two names.
#include "modules/ModuleInterface.h"

#include <memory>
#include <string>

namespace {

using modules::Failure;
using modules::Money;
using modules::Season;
using modules::Shape;

class ModuleBag final : public BaseParameters {
    RefCntPtr<BaseParameters> DoEmptyClone() override { return MakeRefCnt<ModuleBag>(); }
};

RefCntPtr<IParameter> ValueOf(Shape shape) {
    switch (shape) {
        case Shape::Integer:
            return MakeRefCnt<ValParameter<int>>(42);
        case Shape::Text:
            return MakeRefCnt<ValParameter<TString>>(L"a text that is too long to be kept in place");
        case Shape::Reals:
            return MakeRefCnt<ValParameter<std::vector<double>>>(std::vector<double>{1.5, -2});
        case Shape::TextMap:
            return MakeRefCnt<ValParameter<std::map<TString, TString>>>(std::map<TString, TString>{{L"k", L"v"}});
        case Shape::Typed:
            return MakeRefCnt<ValParameter<std::vector<DataValue>>>(std::vector<DataValue>{DataValue(1)});
        case Shape::Season:
            return MakeRefCnt<ValParameter<Season>>(Season::Wet);
        case Shape::Money:
            return MakeRefCnt<ValParameter<Money>>(Money{995});
        default:
            return MakeRefCnt<BagParameter>(RefCntPtr<const IParameters>(MakeRefCnt<ModuleBag>()));
    }
}

IParameter* MakeValue(Shape shape) { return ValueOf(shape).Detach(); }

int ShapeOf(const IParameter& value) { return modules::ShapeOf(value); }

void Raise(Failure failure) { modules::Raise(failure); }

std::string CatchFrom(void (*raise)(Failure), Failure failure) {
    return modules::CaughtFrom([&] { raise(failure); });
}

std::string CatchClonedFrom(void (*raise)(Failure), Failure failure) {
    std::unique_ptr<const QuorvelException> copy;
    try {
        raise(failure);
    } catch (const QuorvelException& e) {
        copy.reset(e.Clone());
    }
    return modules::CaughtFrom([&] { copy->Throw(); });
}

bool HasLocation(void (*raise)(Failure), Failure failure) {
    return modules::HasLocation([&] { raise(failure); });
}

void RegisterNamespace(ParametersRegistry& registry, const wchar_t* name, int first) {
    const auto fill = [first, prefix = std::wstring(name)](AbstractParamAdder& adder) {
        adder.AddSimple(first, (prefix + L"-season").c_str(), new ParameterTypeSerializer<Season>);
        adder.AddList(first + 1, (prefix + L"-amounts").c_str(), new ParameterTypeSerializer<Money>);
    };
    registry.RegisterNamespace(name, fill, first, first + 9, false);
}

std::string Write(const RefCntPtr<const IParameters>& bag, const wchar_t* namespaceName) {
    return JSONSerializer(namespaceName).ToString(bag, JSONSerializer::Compact).ToUtf8();
}

IParameters* Read(const char* json, const wchar_t* namespaceName) {
    return JSONSerializer(namespaceName).ToParameters(TString::FromUtf8(json)).Detach();
}

class ModuleRegistry final : public ParametersRegistry {
    RefCntPtr<IParameters> CreateParameters() override { return MakeRefCnt<ModuleBag>(); }
};

// Takes whatever the libraries keep for later: tables of texts and collations, blocks of the thread, camel-case names.
bool WritesAndReads() {
    ModuleRegistry registry;
    ParametersRegistry::SetInstance(&registry);
    registry.RegisterNamespace(
        L"own",
        [](AbstractParamAdder& adder) {
            adder.AddList(1, L"some-texts", new TStringSerializer);
            adder.AddSimple(2, L"typed", new ParameterTypeSerializer<DataValue>);
        },
        1, 9, false);
    const JSONSerializer json(L"own");
    const TString text = u"{\"someTexts\":[\"a text that is kept in a block of its own\"],\"typed\": \"s:root:x\"}";
    const bool same = json.ToString(json.ToParameters(text), JSONSerializer::Compact) == text;
    const bool refused = modules::CaughtFrom([&] { json.ToParameters(L"{"); }) == "json not valid";
    ParametersRegistry::SetInstance(nullptr);
    return same && refused;
}

}  // namespace

// For a program that knows nothing of the libraries: 1 when a text was written and read as it should be.
extern "C" __attribute__((visibility("default"))) int WorkInTestModule() { return WritesAndReads() ? 1 : 0; }

extern "C" __attribute__((visibility("default"))) const modules::Module* GetTestModule() {
    static constexpr modules::Module kModule{MakeValue,   ShapeOf,           Raise, CatchFrom, CatchClonedFrom,
                                             HasLocation, RegisterNamespace, Write, Read};
    return &kModule;
}
