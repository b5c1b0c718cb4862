// What reading lets pass without an exception: told as a compiler tells warnings, or refused.
//
// Prints:
//
//     chart.json:2:3: duplicate member (at /title)
//     chart.json:4:14: null member (at /opacity)
//     chart.json:5:20: lost digits (at /markSizes/1)
//     chart.json:6:27: unknown name (at /style/fontWeight)
//     chart.json:7:17: wrapped integer (at /totalCents)
//     chart.json:8:3: text after the value
//     title: Sales of 2024, total: 705032704
//     refused: duplicate member
#include <algorithm>
#include <iostream>
#include <stdexcept>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

namespace {

class ChartBag final : public BaseParameters {
    RefCntPtr<BaseParameters> DoEmptyClone() override { return MakeRefCnt<ChartBag>(); }
};

class ChartRegistry final : public ParametersRegistry {
    RefCntPtr<IParameters> CreateParameters() override { return MakeRefCnt<ChartBag>(); }
};

enum : int { kTitle = 1001, kMarkSizes, kStyle, kOpacity, kFontWeight, kTotalCents };

void RegisterChartParameters(AbstractParamAdder& adder) {
    adder.AddSimple(kTitle, L"title", L"ti", new TStringSerializer);
    adder.AddList(kMarkSizes, L"mark-sizes", L"ms", new ParameterTypeSerializer<double>);
    adder.AddBag(kStyle, L"style", L"st");
    adder.AddSimple(kOpacity, L"opacity", L"op", new ParameterTypeSerializer<double>);
    adder.AddSimple(kFontWeight, L"font-weight", L"fw", new ParameterTypeSerializer<FontWeight>);
    adder.AddSimple(kTotalCents, L"total-cents", L"tc", new ParameterTypeSerializer<Int64>);
}

// Keeps what it is told. Reading makes objects one after the other, so that what is told need not come in the order of
// the text.
class Warnings final : public IReadingDiagnostics {
public:
    void Report(Leniency leniency, int, const TextLocation& place) override { m_warnings.push_back({leniency, place}); }

    void Print() {
        std::sort(m_warnings.begin(), m_warnings.end(),
                  [](const Warning& left, const Warning& right) { return left.place.offset < right.place.offset; });
        for (const Warning& warning : m_warnings) {
            const TextLocation& place = warning.place;
            std::cout << "chart.json:" << place.line << ":" << place.column << ": "
                      << GetLeniencyText(warning.leniency);
            std::cout << (place.path.empty() ? "" : " (at " + place.path.ToUtf8() + ")") << "\n";
        }
    }

private:
    struct Warning {
        Leniency leniency;
        TextLocation place;
    };

    std::vector<Warning> m_warnings;
};

// Takes nothing but what is read as it stands: what a sink throws ends the reading, and no bag is answered.
class Refusal final : public IReadingDiagnostics {
public:
    void Report(Leniency leniency, int, const TextLocation&) override {
        throw std::runtime_error(GetLeniencyText(leniency));
    }
};

}  // namespace

int main() {
    ChartRegistry registry;
    ParametersRegistry::SetInstance(&registry);
    registry.RegisterNamespace(L"chart", RegisterChartParameters, 1000, 1999, false);

    const TString text =
        LR"({
  "title": "Sales",
  "title": "Sales of 2024",
  "opacity": null,
  "markSizes": [2, 0.1234567890123456789],
  "style": {"fontWeight": "heavy"},
  "totalCents": 5000000000
} and so on)";

    JSONSerializer json(L"chart");
    Warnings warnings;
    json.SetDiagnostics(&warnings);
    const RefCntPtr<IParameters> bag = json.ToParameters(text);
    warnings.Print();
    std::cout << "title: " << GetParameterValue<TString>(*bag, kTitle).ToUtf8()
              << ", total: " << GetParameterValue<Int64>(*bag, kTotalCents) << "\n";

    Refusal refusal;
    json.SetDiagnostics(&refusal);
    try {
        json.ToParameters(LR"({"title": "Sales", "title": "Sales of 2024"})");
    } catch (const std::runtime_error& reason) {
        std::cout << "refused: " << reason.what() << "\n";
    }
}
