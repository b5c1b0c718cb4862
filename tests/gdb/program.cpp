// Values for gdb to print; commands.gdb says which, expected.txt what it answers. Run by scripts/check-gdb.
#include <algorithm>

#include <qvpreslayer/qvpreslayer.h>

namespace {

constexpr int kTitle = 1001;
constexpr int kSizes = 1002;
constexpr int kStyle = 1003;
constexpr int kUnregistered = 7000;

class ChartBag final : public BaseParameters {
    RefCntPtr<BaseParameters> DoEmptyClone() override { return MakeRefCnt<ChartBag>(); }
};

class ChartRegistry final : public ParametersRegistry {
    RefCntPtr<IParameters> CreateParameters() override { return MakeRefCnt<ChartBag>(); }
};

void RegisterChartParameters(AbstractParamAdder& adder) {
    adder.AddSimple(kTitle, L"title", L"ti", new TStringSerializer);
    adder.AddList(kSizes, L"mark-sizes", L"ms", new ParameterTypeSerializer<double>);
    adder.AddBag(kStyle, L"style", L"st");
    for (int id = 1010; id < 1020; ++id) {  // more records than one block of the registry's table holds
        adder.AddSimple(id, TString(L"more-").ToStdWString().append(std::to_wstring(id)).c_str(), L"",
                        new ParameterTypeSerializer<int>);
    }
}

// Filled downwards, so that the entries move into a tree.
RefCntPtr<IParameters> MakeLargeBag() {
    const RefCntPtr<IParameters> bag = MakeRefCnt<ChartBag>();
    for (int id = 5000; id > 3000; --id) {
        SetParameterValue<int>(*bag, id, -id);
    }
    return bag;
}

template <class... Things>
void Stop(const Things&...) {}

}  // namespace

int main() {
    ChartRegistry registry;

    const TString empty;
    const TString inPlace(L"Sales");
    const TString longest(L"14 units long.");
    const TString onHeap(L"fifteen units !");
    const TString special(std::u16string(u"\"\u00e9\n\0z", 5));

    const RefCntPtr<IParameters> none;
    const RefCntPtr<IParameters> style = MakeRefCnt<ChartBag>();
    SetParameterValue<bool>(*style, 1012, true);
    const RefCntPtr<IParameters> bag = MakeRefCnt<ChartBag>();
    SetParameterValue<std::vector<double>>(*bag, kSizes, {2, 4.5});
    SetParameterValue<TString>(*bag, kTitle, L"Sales");
    SetParameterValue<RefCntPtr<const IParameters>>(*bag, kStyle, style);
    SetParameterValue<PasswordString>(*bag, kUnregistered, PasswordString(L"secret"));
    bag->SetCacheParameter(9, MakeRefCnt<ValParameter<int>>(5));
    const IParameters& reference = *bag;
    const RefCntPtr<IParameters> large = MakeLargeBag();
    const ValParameter<std::map<TString, int>> holder(std::map<TString, int>{{L"a", 1}, {L"b", 2}});
    holder.SetRefCountToOne();

    const Date leapDay{std::chrono::year(2024), std::chrono::month(2), std::chrono::day(29)};
    const std::vector<DataValue> values{
        DataValue(42),
        DataValue(0.5, 3, 1),
        DataValue(true),
        DataValue(IndirectString::Lookup(Collation(L"root"), L"text")),
        DataValue(leapDay),
        DataValue(DateTime(leapDay, std::chrono::milliseconds(86399500))),
        DataValue::Null(DataType::Real),
        DataValue(),
        DataValue(MakeRefCnt<Tuple>(std::vector<DataValue>{DataValue(1), DataValue(2)})),
    };
    const QualifiedName name = QualifiedName::ParseGlobal(L"[orders].[price]");
    const TUUID uuid(L"6f1c2a90-51d4-4e0b-9b7e-3a8d5c0f7e21");

    alignas(TString) unsigned char raw[sizeof(TString)];
    std::fill_n(raw, sizeof(raw), static_cast<unsigned char>(0x77));
    const TString& nothing = *reinterpret_cast<const TString*>(raw);  // no text has been made here

    Stop(empty, reference, nothing);  // no registry yet
    ParametersRegistry::SetInstance(&registry);
    registry.RegisterNamespace(L"chart", RegisterChartParameters, 1000, 1999, true);
    Stop(empty, reference, nothing);  // names are known
    ParametersRegistry::SetInstance(nullptr);
    return inPlace.empty() || longest.empty() || onHeap.empty() || special.empty() || none || !large ||
           uuid == TUUID() || name == QualifiedName() || values.empty();
}
