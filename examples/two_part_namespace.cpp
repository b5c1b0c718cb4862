// A namespace that two modules fill, with a fallback to a namespace that they share with others.
//
// Prints:
//
//     style: 3001 opacity op
//     view: 2001 title ti, 2002 mark-color mc
//     {"title": "Sales","markColor": "blue","opacity": 0.5}
//     in "view", "opacity" is 3001
//     in "style", "title" is nothing: Error finding command parameter: title
#include <iostream>

#include <qvpreslayer/qvpreslayer.h>

namespace {

class ViewBag final : public BaseParameters {
    RefCntPtr<BaseParameters> DoEmptyClone() override { return MakeRefCnt<ViewBag>(); }
};

class ViewRegistry final : public ParametersRegistry {
    RefCntPtr<IParameters> CreateParameters() override { return MakeRefCnt<ViewBag>(); }
};

constexpr int kFirstViewID = 2000;
constexpr int kLastViewID = 2999;

// The module of labels: its parameters, and the part of "view" that it fills.
namespace labels {

constexpr int kTitle = 2001;

void Fill(AbstractParamAdder& adder) { adder.AddSimple(kTitle, L"title", L"ti", new TStringSerializer); }

void Register(ParametersRegistry& registry) {
    registry.RegisterNamespacePart(L"view", Fill, kFirstViewID, kLastViewID);
}

}  // namespace labels

// The module of marks. Neither module knows the other; the first one that comes registers the namespace, and both name
// the same range.
namespace marks {

constexpr int kColor = 2002;

void Fill(AbstractParamAdder& adder) { adder.AddSimple(kColor, L"mark-color", L"mc", new TStringSerializer); }

void Register(ParametersRegistry& registry) {
    registry.RegisterNamespacePart(L"view", Fill, kFirstViewID, kLastViewID);
}

}  // namespace marks

// What every kind of view may use.
constexpr int kOpacity = 3001;

void FillStyle(AbstractParamAdder& adder) {
    adder.AddSimple(kOpacity, L"opacity", L"op", new ParameterTypeSerializer<double>);
}

void PrintNamespaces(const ParametersRegistry& registry) {
    for (const auto& [name, parameters] : registry.GetNamespaceInfos()) {
        std::cout << name.ToUtf8() << ":";
        const char* separator = " ";
        for (const ParameterRegistryinfo& row : parameters) {
            std::cout << separator << row.id << " " << row.verboseName.ToUtf8() << " " << row.shortName.ToUtf8();
            separator = ", ";
        }
        std::cout << "\n";
    }
}

}  // namespace

int main() {
    ViewRegistry registry;
    ParametersRegistry::SetInstance(&registry);
    labels::Register(registry);
    marks::Register(registry);
    registry.RegisterNamespace(L"style", FillStyle, 3000, 3999, false);
    registry.SetFallback(L"view", L"style");
    PrintNamespaces(registry);

    const RefCntPtr<IParameters> bag = MakeRefCnt<ViewBag>();
    SetParameterValue<TString>(*bag, labels::kTitle, L"Sales");
    SetParameterValue<TString>(*bag, marks::kColor, L"blue");
    SetParameterValue<double>(*bag, kOpacity, 0.5);

    // Writing needs no fallback: an identifier leads to its namespace by the range. Reading starts from names.
    const JSONSerializer json(L"view");
    const TString text = json.ToString(bag, JSONSerializer::Compact);
    std::cout << text.ToUtf8() << "\n";
    json.ToParameters(text);

    std::cout << "in \"view\", \"opacity\" is " << registry.GetID(L"view", L"opacity", true) << "\n";
    try {
        registry.GetID(L"style", L"title", true);
    } catch (const ParameterNotFoundException& failure) {
        std::cout << "in \"style\", \"title\" is nothing: " << failure.what() << "\n";
    }
}
