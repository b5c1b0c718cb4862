// A structure of the host's own class: how it is written, and made again from what was read.
//
// Prints:
//
//     {"margins":{"left": 4,"right": 8},"pages":[{"left": 1,"right": 2},{"left": 3,"right": 3}]}
//     margins 4 to 8, 2 pages, the second 3 to 3
//     A margin is missing or not of its type
#include <iostream>

#include <qvpreslayer/qvpreslayer.h>

namespace {

class PageBag final : public BaseParameters {
    RefCntPtr<BaseParameters> DoEmptyClone() override { return MakeRefCnt<PageBag>(); }
};

class PageRegistry final : public ParametersRegistry {
    RefCntPtr<IParameters> CreateParameters() override { return MakeRefCnt<PageBag>(); }
};

enum : int { kMargins = 1001, kPages, kLeft, kRight };

// The structure: any copyable class. A value is ValParameter<Margins>, a list ValParameter<std::vector<Margins>>, a map
// ValParameter<std::map<TString, Margins>>.
struct Margins {
    int left = 0;
    int right = 0;
};

// One serializer for the three kinds. It holds no state, so that one object serves every parameter and thread.
class MarginsSerializer final : public IStructureSerializer {
public:
    // Members go to the stream by identifier; the scope writes the braces and closes them also when something throws.
    void Serialize(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id,
                   bool ownComposite) const override {
        const auto& margins = GetParameterValue<Margins>(value.Get());
        if (ownComposite) {
            const CompositeStructure braces(id, stream);
            WriteMembers(margins, stream);
        } else {
            WriteMembers(margins, stream);
        }
    }

    // The reader has filled a bag with the members, each checked against its registered kind.
    RefCntPtr<IParameter> FromParameters(int /*id*/, RefCntPtr<IParameters> bag) const override {
        try {
            return Hold(Margins{GetParameterValue<int>(*bag, kLeft), GetParameterValue<int>(*bag, kRight)});
        } catch (const CommandException&) {
            throw QuorvelException(u"A margin is missing or not of its type");
        }
    }

    std::vector<RefCntPtr<const IParameter>> SplitList(RefCntPtr<const IParameter> value) const override {
        std::vector<RefCntPtr<const IParameter>> elements;
        for (const Margins& margins : GetParameterValue<std::vector<Margins>>(value.Get())) {
            elements.push_back(Hold(margins));
        }
        return elements;
    }
    RefCntPtr<IParameter> MakeList(const std::vector<RefCntPtr<IParameter>>& elements) const override {
        std::vector<Margins> list;
        for (const RefCntPtr<IParameter>& element : elements) {
            list.push_back(GetParameterValue<Margins>(element.Get()));
        }
        return MakeRefCnt<ValParameter<std::vector<Margins>>>(std::move(list));
    }

    std::map<TString, RefCntPtr<const IParameter>> SplitMap(RefCntPtr<const IParameter> value) const override {
        std::map<TString, RefCntPtr<const IParameter>> entries;
        for (const auto& [key, margins] : GetParameterValue<std::map<TString, Margins>>(value.Get())) {
            entries.emplace(key, Hold(margins));
        }
        return entries;
    }
    RefCntPtr<IParameter> MakeMap(const std::map<TString, RefCntPtr<IParameter>>& entries) const override {
        std::map<TString, Margins> map;
        for (const auto& [key, entry] : entries) {
            map.emplace(key, GetParameterValue<Margins>(entry.Get()));
        }
        return MakeRefCnt<ValParameter<std::map<TString, Margins>>>(std::move(map));
    }

    // Members with names, not a list of texts; elements need nothing from what is around them.
    bool IsListForm() const override { return false; }
    void PrepareElement(int, RefCntPtr<IParameters>, RefCntPtr<IParameters>) const override {}

private:
    static RefCntPtr<IParameter> Hold(const Margins& margins) { return MakeRefCnt<ValParameter<Margins>>(margins); }

    static void WriteMembers(const Margins& margins, SerializeStructure& stream) {
        stream.Parameter(kLeft, ParameterTypeSerializer<int>::TypeToString(margins.left));
        stream.Parameter(kRight, ParameterTypeSerializer<int>::TypeToString(margins.right));
    }
};

void RegisterPageParameters(AbstractParamAdder& adder) {
    adder.AddStructure(kMargins, L"margins", L"mg", new MarginsSerializer);
    adder.AddStructureList(kPages, L"pages", L"pg", new MarginsSerializer);
    adder.AddSimple(kLeft, L"left", L"le", new ParameterTypeSerializer<int>);
    adder.AddSimple(kRight, L"right", L"ri", new ParameterTypeSerializer<int>);
}

}  // namespace

int main() {
    PageRegistry registry;
    ParametersRegistry::SetInstance(&registry);
    registry.RegisterNamespace(L"page", RegisterPageParameters, 1000, 1999, false);

    const RefCntPtr<IParameters> bag = MakeRefCnt<PageBag>();
    SetParameterValue(*bag, kMargins, Margins{4, 8});
    SetParameterValue(*bag, kPages, std::vector<Margins>{{1, 2}, {3, 3}});

    const JSONSerializer json(L"page");
    const TString text = json.ToString(bag, JSONSerializer::Compact);
    std::cout << text.ToUtf8() << "\n";

    const RefCntPtr<IParameters> read = json.ToParameters(text);
    const auto& margins = GetParameterValue<Margins>(*read, kMargins);
    const auto& pages = GetParameterValue<std::vector<Margins>>(*read, kPages);
    std::cout << "margins " << margins.left << " to " << margins.right << ", " << pages.size() << " pages, the second "
              << pages[1].left << " to " << pages[1].right << "\n";

    try {
        json.ToParameters(LR"({"margins": {"left": 4}})");
    } catch (const QuorvelException& failure) {
        std::cout << failure.what() << "\n";
    }
}
