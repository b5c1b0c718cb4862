// Two threads write the same bag at once, each under options of its own.
//
// Prints:
//
//     the program: {"title": "Sales","days":[1,2,3,4,5,6,7]}
//     the first thread: {"ti": "Sales","da":[1,2,3,4,5,6,7]}
//     the second thread: {"title": "Sales","days":[[1,7,1],[]]}
#include <iostream>
#include <thread>

#include <qvpreslayer/qvpreslayer.h>

namespace {

class ChartBag final : public BaseParameters {
    RefCntPtr<BaseParameters> DoEmptyClone() override { return MakeRefCnt<ChartBag>(); }
};

class ChartRegistry final : public ParametersRegistry {
    RefCntPtr<IParameters> CreateParameters() override { return MakeRefCnt<ChartBag>(); }
};

enum : int { kTitle = 1001, kDays };

void RegisterChartParameters(AbstractParamAdder& adder) {
    adder.AddSimple(kTitle, L"title", L"ti", new TStringSerializer);
    adder.AddList(kDays, L"days", L"da", new ParameterTypeSerializer<int>);
}

// The options of one session. They are asked for at every use, so they may also change.
class Options final : public IBuilderVars {
public:
    Options(bool shortNames, bool packedLists) : m_shortNames(shortNames), m_packedLists(packedLists) {}

    bool UseShortNames() const override { return m_shortNames; }
    bool CompressArrays() const override { return m_packedLists; }
    bool LossyEncodeImages() const override { return false; }

private:
    bool m_shortNames;
    bool m_packedLists;
};

// A session that offers them, in force as long as it lives: for the thread that made it, or for every thread that has
// none of its own.
class Session final : public SessionContext {
public:
    Session(bool shortNames, bool packedLists, SessionContextScope::Scope scope = SessionContextScope::Thread)
        : m_options(MakeRefCnt<Options>(shortNames, packedLists)), m_scope(*this, scope) {}

    RefCntPtr<const IBuilderVars> GetIBuilderVars() const override { return m_options; }

private:
    RefCntPtr<const IBuilderVars> m_options;
    SessionContextScope m_scope;
};

}  // namespace

int main() {
    // All of registration is done before the threads start. Packed lists need the core namespace, which holds the names
    // of their runs.
    ChartRegistry registry;
    ParametersRegistry::SetInstance(&registry);
    RegisterCoreNamespaceParameters(L"qvcore");
    registry.RegisterNamespace(L"chart", RegisterChartParameters, 1000, 1999, false);
    const Session forAll(false, false, SessionContextScope::Process);

    // From here on the bag is only read, so the threads may share it, and the serializer as well.
    const RefCntPtr<IParameters> bag = MakeRefCnt<ChartBag>();
    SetParameterValue<TString>(*bag, kTitle, L"Sales");
    SetParameterValue<std::vector<int>>(*bag, kDays, {1, 2, 3, 4, 5, 6, 7});
    const JSONSerializer json(L"chart");

    TString first;
    TString second;
    std::thread one([&] {
        const Session session(true, false);
        first = json.ToString(bag, JSONSerializer::Compact);
    });
    std::thread other([&] {
        const Session session(false, true);
        second = json.ToString(bag, JSONSerializer::Compact);
    });
    const TString own = json.ToString(bag, JSONSerializer::Compact);
    one.join();
    other.join();

    std::cout << "the program: " << own.ToUtf8() << "\n";
    std::cout << "the first thread: " << first.ToUtf8() << "\n";
    std::cout << "the second thread: " << second.ToUtf8() << "\n";
}
