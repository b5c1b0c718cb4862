// The smallest host: a class of bags, a registry that makes them, one parameter, and a text there and back.
//
// Prints:
//
//     {"title": "Sales"}
//     Sales
#include <iostream>

#include <qvpreslayer/qvpreslayer.h>

namespace {

constexpr int kTitle = 1001;

// A bag class only says how to make an empty bag of its own kind.
class ChartBag final : public BaseParameters {
    RefCntPtr<BaseParameters> DoEmptyClone() override { return MakeRefCnt<ChartBag>(); }
};

// The library asks the registry for an empty bag wherever it needs one, for example when it reads a text.
class ChartRegistry final : public ParametersRegistry {
    RefCntPtr<IParameters> CreateParameters() override { return MakeRefCnt<ChartBag>(); }
};

void RegisterChartParameters(AbstractParamAdder& adder) {
    adder.AddSimple(kTitle, L"title", L"ti", new TStringSerializer);
}

}  // namespace

int main() {
    // Start-up: publish a registry, then register the namespaces.
    ChartRegistry registry;
    ParametersRegistry::SetInstance(&registry);
    registry.RegisterNamespace(L"chart", RegisterChartParameters, 1000, 1999, false);

    const RefCntPtr<IParameters> bag = MakeRefCnt<ChartBag>();
    SetParameterValue<TString>(*bag, kTitle, L"Sales");

    const JSONSerializer json(L"chart");
    const TString text = json.ToString(bag, JSONSerializer::Compact);
    std::cout << text.ToUtf8() << "\n";

    const RefCntPtr<IParameters> copy = json.ToParameters(text);
    std::cout << GetParameterValue<TString>(*copy, kTitle).ToUtf8() << "\n";
}
