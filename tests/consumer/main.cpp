// The example of README.md as a program; the part between the markers stands there word for word.
// [example]
#include <iostream>

#include <qvpreslayer/qvpreslayer.h>

constexpr int kTitle = 1001;
constexpr int kMarkSizes = 1002;

// What a host brings along: a class of bags, and the registry that makes them.
class ChartBag final : public BaseParameters {
    RefCntPtr<BaseParameters> DoEmptyClone() override { return MakeRefCnt<ChartBag>(); }
};

class ChartRegistry final : public ParametersRegistry {
    RefCntPtr<IParameters> CreateParameters() override { return MakeRefCnt<ChartBag>(); }
};

// The parameters of a namespace: identifier, verbose name, short name, serializer.
void RegisterChartParameters(AbstractParamAdder& adder) {
    adder.AddSimple(kTitle, L"title", L"ti", new TStringSerializer);
    adder.AddList(kMarkSizes, L"mark-sizes", L"ms", new ParameterTypeSerializer<double>);
}

int main() {
    ChartRegistry registry;
    ParametersRegistry::SetInstance(&registry);
    registry.RegisterNamespace(L"chart", RegisterChartParameters, 1000, 1999, false);

    const RefCntPtr<IParameters> bag = MakeRefCnt<ChartBag>();
    SetParameterValue<TString>(*bag, kTitle, L"Sales");
    SetParameterValue<std::vector<double>>(*bag, kMarkSizes, {2, 4.5});

    const JSONSerializer json(L"chart");
    const TString text = json.ToString(bag, JSONSerializer::Compact);
    std::cout << text.ToUtf8() << "\n";  // {"title": "Sales","markSizes":[2,4.5]}

    const RefCntPtr<IParameters> copy = json.ToParameters(text);
    std::cout << GetParameterValue<TString>(*copy, kTitle).ToUtf8() << "\n";  // Sales

    try {
        json.ToParameters(L"{\"title\": \"Sales\", \"markSizes\": 7}");
    } catch (const JSONParseException& failure) {
        std::cout << failure.what() << " " << failure.GetLocation().path.ToUtf8() << "\n";
    }
}
// [end of example]
