// What reading says about texts that cannot be read: what is wrong, and where.
//
// Prints:
//
//     chart.json:3:24: The text is not valid JSON. (at /markSizes/2)
//       "markSizes": [2, 4.5,]
//                            ^
//     chart.json:2:3: Error finding command parameter: titel (at /titel)
//       "titel": "Sales"
//       ^
//     chart.json:3:16: The value of member "mark-sizes" does not fit its parameter. (at /markSizes)
//       "markSizes": 7
//                    ^
//     chart.json:2:24: Error parsing command parameter value string (at /style/opacity)
//       "style": {"opacity": "high"}
//                            ^
//     chart.json: the JSON root is array, not object
#include <iostream>
#include <stdexcept>

#include <qvpreslayer/qvpreslayer.h>

namespace {

class ChartBag final : public BaseParameters {
    RefCntPtr<BaseParameters> DoEmptyClone() override { return MakeRefCnt<ChartBag>(); }
};

class ChartRegistry final : public ParametersRegistry {
    RefCntPtr<IParameters> CreateParameters() override { return MakeRefCnt<ChartBag>(); }
};

enum : int { kTitle = 1001, kMarkSizes, kStyle, kOpacity };

void RegisterChartParameters(AbstractParamAdder& adder) {
    adder.AddSimple(kTitle, L"title", L"ti", new TStringSerializer);
    adder.AddList(kMarkSizes, L"mark-sizes", L"ms", new ParameterTypeSerializer<double>);
    adder.AddBag(kStyle, L"style", L"st");
    adder.AddSimple(kOpacity, L"opacity", L"op", new ParameterTypeSerializer<double>);
}

// The line of a text that a place lies in.
TString LineOf(const TString& text, const TextLocation& place) { return text.split(L"\n")[place.line - 1]; }

// As compilers say it. Exceptions that come out of reading a text derive from TextLocated, beside their own base.
void Report(const TString& text, const std::exception& failure) {
    const auto* located = dynamic_cast<const TextLocated*>(&failure);
    if (located == nullptr || !located->GetLocation().IsKnown()) {
        std::cout << "chart.json: " << failure.what() << "\n";
        return;
    }
    const TextLocation& place = located->GetLocation();
    std::cout << "chart.json:" << place.line << ":" << place.column << ": " << failure.what();
    if (!place.path.empty()) {
        std::cout << " (at " << place.path.ToUtf8() << ")";
    }
    std::cout << "\n" << LineOf(text, place).ToUtf8() << "\n" << std::string(place.column - 1, ' ') << "^\n";
}

}  // namespace

int main() {
    ChartRegistry registry;
    ParametersRegistry::SetInstance(&registry);
    registry.RegisterNamespace(L"chart", RegisterChartParameters, 1000, 1999, false);

    const wchar_t* const texts[] = {
        L"{\n  \"title\": \"Sales\",\n  \"markSizes\": [2, 4.5,]\n}",
        L"{\n  \"titel\": \"Sales\"\n}",
        L"{\n  \"title\": \"Sales\",\n  \"markSizes\": 7\n}",
        L"{\n  \"style\": {\"opacity\": \"high\"}\n}",
        L"[1, 2]",
    };
    for (const TString text : texts) {
        try {
            JSONSerializer(L"chart").ToParameters(text);
        } catch (const std::exception& failure) {
            Report(text, failure);
        }
    }
}
