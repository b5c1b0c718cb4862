// A visitor of the host's own: the same walk that writes JSON, told as YAML-like text.
//
// Prints:
//
//     title: "Sales \"2024\""
//     mark-sizes:
//       - 2
//       - 4.5
//     colors:
//       rain: "blue"
//       sun: "gold"
//     style:
//       opacity: 0.85
//       bold: true
//     series:
//       -
//         title: "North"
//       -
//         title: "South"
#include <iostream>

#include <qvpreslayer/qvpreslayer.h>

namespace {

// Events arrive in the order of the walk; starts and ends pair up. Texts are those of the serializers, not escaped.
class YAMLWriter final : public IStructuredParameterVisitor {
public:
    explicit YAMLWriter(TString& out) : m_out(out) {}

    void Parameter(const TString& name, const TString& valueText, ParameterTypeCategory kind) override {
        Line(name, u": ", Spell(valueText, kind));
    }

    void StartList(const TString& name, ParameterTypeCategory elementKind) override { Open(name, elementKind); }
    void ListItem(const TString& valueText) override { Line(L"- ", u"", Spell(valueText, m_kinds.back())); }
    void EndList(const TString&) override { Close(); }

    void StartMap(const TString& name, ParameterTypeCategory valueKind) override { Open(name, valueKind); }
    void MapItem(const TString& key, const TString& valueText, bool) override {
        Line(key, u": ", Spell(valueText, m_kinds.back()));
    }
    void EndMap(const TString&) override { Close(); }

    // An element of a structure list has no name of its own to show.
    void StartComposite(const TString& name, bool) override {
        if (!m_kinds.empty() && m_kinds.back() == PTC_Structure) {
            Line(L"-", u"", L"");
            m_kinds.push_back(PTC_None);
        } else {
            Open(name, PTC_None);
        }
    }
    void EndComposite(const TString&) override { Close(); }
    void NullMapItem(const TString& key, bool) override { Line(key, u": ", L"null"); }

    // Nothing is kept: every model is written anew.
    void StartCapture() override {}
    TString EndCapture() override { return {}; }
    void WriteCaptured(const TString&) override {}

private:
    static TString Spell(TString text, ParameterTypeCategory kind) {
        if (kind == PTC_Number || kind == PTC_Bool) {
            return text;
        }
        text.replace(L"\\", L"\\\\").replace(L"\"", L"\\\"").replace(L"\n", L"\\n");
        return L"\"" + text + L"\"";
    }

    void Line(const TString& start, std::u16string_view separator, const TString& rest) {
        m_out.append(2 * m_kinds.size(), u' ');
        m_out += start;
        m_out += separator;
        m_out += rest;
        m_out += u'\n';
    }
    void Open(const TString& name, ParameterTypeCategory kind) {
        Line(name, u":", L"");
        m_kinds.push_back(kind);
    }
    void Close() { m_kinds.pop_back(); }

    TString& m_out;
    std::vector<ParameterTypeCategory> m_kinds;  // of the elements, one for each level that is open
};

class ChartBag final : public BaseParameters {
    RefCntPtr<BaseParameters> DoEmptyClone() override { return MakeRefCnt<ChartBag>(); }
};

class ChartRegistry final : public ParametersRegistry {
    RefCntPtr<IParameters> CreateParameters() override { return MakeRefCnt<ChartBag>(); }
};

enum : int { kTitle = 1001, kMarkSizes, kColors, kStyle, kOpacity, kBold, kSeries };

void RegisterChartParameters(AbstractParamAdder& adder) {
    adder.AddSimple(kTitle, L"title", L"ti", new TStringSerializer);
    adder.AddList(kMarkSizes, L"mark-sizes", L"ms", new ParameterTypeSerializer<double>);
    adder.AddMap(kColors, L"colors", L"cl", new TStringSerializer);
    adder.AddBag(kStyle, L"style", L"st");
    adder.AddSimple(kOpacity, L"opacity", L"op", new ParameterTypeSerializer<double>);
    adder.AddSimple(kBold, L"bold", L"bo", new ParameterTypeSerializer<bool>);
    adder.AddStructureList(kSeries, L"series", L"sr", new BagStructureSerializer);
}

using Bag = RefCntPtr<const IParameters>;

Bag MakeSeries(const wchar_t* title) {
    const RefCntPtr<IParameters> series = MakeRefCnt<ChartBag>();
    SetParameterValue<TString>(*series, kTitle, title);
    return series;
}

}  // namespace

int main() {
    ChartRegistry registry;
    ParametersRegistry::SetInstance(&registry);
    registry.RegisterNamespace(L"chart", RegisterChartParameters, 1000, 1999, false);

    const RefCntPtr<IParameters> style = MakeRefCnt<ChartBag>();
    SetParameterValue<double>(*style, kOpacity, 0.85);
    SetParameterValue<bool>(*style, kBold, true);

    const RefCntPtr<IParameters> bag = MakeRefCnt<ChartBag>();
    SetParameterValue<TString>(*bag, kTitle, L"Sales \"2024\"");
    SetParameterValue<std::vector<double>>(*bag, kMarkSizes, {2, 4.5});
    SetParameterValue(*bag, kColors, std::map<TString, TString>{{L"rain", L"blue"}, {L"sun", L"gold"}});
    SetParameterValue<Bag>(*bag, kStyle, style);
    SetParameterValue(*bag, kSeries, std::vector<Bag>{MakeSeries(L"North"), MakeSeries(L"South")});

    TString text;
    YAMLWriter writer(text);
    VisitParametersStructure(L"", bag, writer);
    std::cout << text.ToUtf8();
}
