// A presentation model that is written again from its kept text as long as it does not change.
//
// Prints:
//
//     {"legend":{"entries":["rain","snow","sun"],"columns": 2}}
//     members written: 1
//     {"legend":{"entries":["rain","snow","sun"],"columns": 2}}
//     members written: 1
//     {"legend":{"entries":["rain","snow","sun"],"columns": 3}}
//     members written: 2
//     {"lg":{"en":["rain","snow","sun"],"co": 3}}
//     members written: 3
#include <iostream>

#include <qvpreslayer/qvpreslayer.h>

namespace {

class ViewBag final : public BaseParameters {
    RefCntPtr<BaseParameters> DoEmptyClone() override { return MakeRefCnt<ViewBag>(); }
};

class ViewRegistry final : public ParametersRegistry {
    RefCntPtr<IParameters> CreateParameters() override { return MakeRefCnt<ViewBag>(); }
};

enum : int { kLegend = 1001, kEntries, kColumns };

// A model that counts its changes.
class Legend final : public PresentationModel {
public:
    Legend(std::vector<TString> entries, int columns) : m_entries(std::move(entries)), m_columns(columns) {}

    int GetDefaultParamID() const override { return kLegend; }

    const std::vector<TString>& GetEntries() const { return m_entries; }
    int GetColumns() const { return m_columns; }
    void SetColumns(int columns) {
        m_columns = columns;
        ++m_changes;
    }
    UInt64 GetChanges() const { return m_changes; }

private:
    std::vector<TString> m_entries;
    int m_columns;
    UInt64 m_changes = 1;
};

int s_membersWritten = 0;  // for this example's output only: a serializer holds no state

// Writes and keeps the text between the model's braces. Lists and maps of models are not registered, so the rest stays
// as BagStructureSerializer has it.
class LegendSerializer final : public BagStructureSerializer {
public:
    void Serialize(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id,
                   bool /*ownComposite*/) const override {
        const auto legend = DynamicPtrCast<const Legend>(value->GetPresentationModel());
        if (!legend) {
            ThrowTypeMismatchCommandException(id);
        }
        const CompositeStructure braces(id, stream);
        IStructuredParameterVisitor& visitor = stream.GetVisitor();
        if (legend->GetHash() == StateOf(*legend, stream) && !legend->GetSerializedVal().empty()) {
            visitor.WriteCaptured(legend->GetSerializedVal());
            return;
        }
        visitor.StartCapture();
        WriteMembers(*legend, stream);
        legend->SetSerializedVal(visitor.EndCapture());  // empty where capture is off
        legend->SetHash(StateOf(*legend, stream));
    }

    RefCntPtr<IParameter> FromParameters(int /*id*/, RefCntPtr<IParameters> bag) const override {
        return MakeRefCnt<PresentationModelParameter>(MakeRefCnt<Legend>(
            GetParameterValue<std::vector<TString>>(*bag, kEntries), GetParameterValue<int>(*bag, kColumns)));
    }

private:
    // The text depends on the names and on packing as well. Its layout is not known here: keep texts of one form only.
    static UInt64 StateOf(const Legend& legend, const SerializeStructure& stream) {
        return legend.GetChanges() * 4 + (stream.GetUseVerboseNames() ? 2 : 0) + (stream.GetCompressArrays() ? 1 : 0);
    }

    static void WriteMembers(const Legend& legend, SerializeStructure& stream) {
        ++s_membersWritten;
        {
            const ListStructure entries(kEntries, stream, PTC_None);
            for (const TString& entry : legend.GetEntries()) {
                stream.ListItem(entry);
            }
        }
        stream.Parameter(kColumns, ParameterTypeSerializer<int>::TypeToString(legend.GetColumns()));
    }
};

void RegisterViewParameters(AbstractParamAdder& adder) {
    adder.AddStructure(kLegend, L"legend", L"lg", new LegendSerializer);
    adder.AddList(kEntries, L"entries", L"en", new TStringSerializer);
    adder.AddSimple(kColumns, L"columns", L"co", new ParameterTypeSerializer<int>);
}

}  // namespace

int main() {
    ViewRegistry registry;
    ParametersRegistry::SetInstance(&registry);
    registry.RegisterNamespace(L"view", RegisterViewParameters, 1000, 1999, false);

    JSONSerializer json(L"view");
    json.EnableCapture(true, false);

    const auto legend = MakeRefCnt<Legend>(std::vector<TString>{L"rain", L"snow", L"sun"}, 2);
    const auto write = [&](bool verboseNames) {
        TString text;
        json.PresModelToString(legend, verboseNames, JSONSerializer::Compact, text);
        std::cout << text.ToUtf8() << "\nmembers written: " << s_membersWritten << "\n";
    };
    write(true);
    write(true);  // from the kept text
    legend->SetColumns(3);
    write(true);   // changed
    write(false);  // other names
}
