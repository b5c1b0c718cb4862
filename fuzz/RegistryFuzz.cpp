// Registry scripts: registering, parts, fallbacks, marks, clearing and look-ups in any order, with registration
// functions that look up, add parts and throw. Promised: every answer and every failure is the model's, so that
// ranges may overlap, be empty or reach the ends of int, and a function that threw runs again.
#include <limits>

#include "fuzz/support/Bytes.h"
#include "fuzz/support/RegistryModel.h"
#include "support/TestHost.h"

using namespace fuzz;
using registry_model::Function;
using registry_model::LastOf;
using registry_model::Outcome;
using registry_model::Step;

namespace {

constexpr std::size_t kFunctions = 4;
constexpr std::size_t kMostOperations = 100;

TString Wide(const std::string& text) { return TString::FromUtf8(text); }

// The same operations on the library.
class Subject {
public:
    explicit Subject(const std::vector<Function>& functions) : m_functions(functions) {}

    std::string trace;

    void SetVerboseInForce(bool verbose) { m_session.Vars().shortNames = !verbose; }

    std::string Register(const std::string& name, int function, int first, int last, bool eager) {
        m_registry.RegisterNamespace(Wide(name), Filler(function), first, last, eager);
        return "ok";
    }
    std::string RegisterPart(const std::string& name, int function, int first, int last) {
        m_registry.RegisterNamespacePart(Wide(name), Filler(function), first, last);
        return "ok";
    }
    std::string SetFallback(const std::string& name, const std::string& fallback) {
        m_registry.SetFallback(Wide(name), Wide(fallback));
        return "ok";
    }
    std::string Clear(const std::string& name) {
        m_registry.Clear(Wide(name));
        return "ok";
    }
    std::string ClearAll() {
        m_registry.Clear();
        return "ok";
    }
    std::string AddUnserializable(int id) {
        m_registry.AddUnserializable(id);
        return "ok";
    }
    std::string IsUnserializable(int id) const { return m_registry.IsUnserializable(id) ? "yes" : "no"; }
    std::string HasNamespace(const std::string& name) const {
        return m_registry.HasNamespace(Wide(name)) ? "yes" : "no";
    }
    std::string GetID(const std::string& name, const std::string& parameter, bool verbose) {
        return std::to_string(m_registry.GetID(Wide(name), Wide(parameter), verbose));
    }
    std::string FromString(const std::string& name, const std::string& parameter, bool verbose) {
        const RefCntPtr<TestBag> bag = MakeBag();
        m_registry.FromString(Wide(name), bag, Wide(parameter), L"text", verbose);
        const int id = m_registry.GetID(Wide(name), Wide(parameter), verbose);
        return GetParameterValue<TString>(*bag, id).ToUtf8() + " under " + std::to_string(id);
    }
    std::string GetName(int id, bool verbose) { return m_registry.GetName(id, verbose).ToUtf8(); }
    std::string GetType(int id) { return std::to_string(m_registry.GetType(id)); }
    std::string GetSerializer(int id, ParameterTypeCategory kind) {
        const void* serializer = kind == PTC_List            ? Pointer(m_registry.GetListSerializer(id))
                                 : kind == PTC_Map           ? Pointer(m_registry.GetMapSerializer(id))
                                 : kind == PTC_Structure     ? Pointer(m_registry.GetStructureSerializer(id))
                                 : kind == PTC_StructureList ? Pointer(m_registry.GetStructureListSerializer(id))
                                                             : Pointer(m_registry.GetStructureMapSerializer(id));
        return serializer != nullptr ? "a serializer" : "null";
    }
    std::string GetValueSerializer(int id) {
        return m_registry.GetValueSerializer(id) != nullptr ? "a serializer" : "null";
    }
    std::string FindInfo(int id) {
        const ParameterInfo* info = m_registry.FindInfo(id);
        return info == nullptr
                   ? "null"
                   : std::to_string(info->id) + " " + std::to_string(info->kind) + " " + info->verboseName.ToUtf8() +
                         " " + info->shortName.ToUtf8() + " " + info->camelName.ToUtf8();
    }
    std::string GetNamespaceInfos() {
        std::string text;
        for (const auto& [name, rows] : m_registry.GetNamespaceInfos()) {
            text += name.ToUtf8() + ":";
            for (const ParameterRegistryinfo& row : rows) {
                text += " " + std::to_string(row.id) + " " + row.verboseName.ToUtf8() + " " + row.shortName.ToUtf8();
            }
            text += "\n";
        }
        return text;
    }

private:
    template <class T>
    static const void* Pointer(T* pointer) {
        return pointer;
    }

    ParametersRegistry::RegistrationFunction Filler(int function) {
        return [this, number = static_cast<std::size_t>(function), runs = std::make_shared<int>(0)](
                   AbstractParamAdder& adder) { Run(m_functions[number], (*runs)++, adder); };
    }

    void Run(const Function& function, int runs, AbstractParamAdder& adder) {
        if (++m_runs > registry_model::kMostRuns) {
            return;
        }
        const bool fails = runs < function.failures;
        for (std::size_t i = 0; i < function.steps.size(); ++i) {
            if (fails && i == function.failsBefore) {
                throw registry_model::FunctionFails();
            }
            Take(function.steps[i], adder);
        }
        if (fails) {
            throw registry_model::FunctionFails();
        }
    }

    void Take(const Step& step, AbstractParamAdder& adder) {
        const wchar_t* const name = step.name.c_str();
        const wchar_t* const shortName = step.shortName.c_str();
        IStructureSerializer* const structure = step.hasSerializer ? new BagStructureSerializer : nullptr;
        const RefCntPtr<IStructureSerializer> owner(structure);
        if (step.action == Step::LookUp) {
            trace += Outcome([&] { return GetID(step.space, registry_model::Narrow(step.name), true); }) + "\n";
            return;
        }
        if (step.action == Step::Part) {
            trace += Outcome([&] { return RegisterPart(step.space, step.function, step.id, LastOf(step.id)); }) + "\n";
            return;
        }
        switch (step.kind) {
            case PTC_Text:
                return adder.AddSimple(step.id, name, shortName, new TStringSerializer);
            case PTC_Number:
                return adder.AddSimple(step.id, name, shortName, new ParameterTypeSerializer<int>);
            case PTC_List:
                return adder.AddList(step.id, name, shortName, new TStringSerializer);
            case PTC_Map:
                return adder.AddMap(step.id, name, shortName, new TStringSerializer);
            case PTC_Structure:
                return adder.AddStructure(step.id, name, shortName, structure);
            case PTC_StructureList:
                return adder.AddStructureList(step.id, name, shortName, structure);
            case PTC_StructureMap:
                return adder.AddStructureMap(step.id, name, shortName, structure);
            default:
                return adder.AddBag(step.id, name, shortName);
        }
    }

    const std::vector<Function>& m_functions;
    int m_runs = 0;
    TestRegistry m_registry;
    TestSession m_session;
};

std::string RandomSpace(Bytes& bytes) { return std::string(1, static_cast<char>('m' + bytes.Below(5))); }

std::string RandomName(Bytes& bytes) {
    constexpr const char* kNames[] = {"a", "b", "c-d", "cD", "e-1", "s"};
    return bytes.Of(kNames);
}

int RandomID(Bytes& bytes) {
    constexpr int kEnds[] = {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
    const auto near = static_cast<int>(bytes.Below(16));
    return near == 15 ? bytes.Of(kEnds) : near - 3;
}

Step RandomStep(Bytes& bytes, std::size_t function) {
    constexpr ParameterTypeCategory kKinds[] = {PTC_Text,      PTC_Number,        PTC_List, PTC_Bag,
                                                PTC_Structure, PTC_StructureList, PTC_Map,  PTC_StructureMap};
    Step step;
    const std::size_t action = bytes.Below(8);
    step.action = action == 0 ? Step::LookUp : action == 1 && function + 1 < kFunctions ? Step::Part : Step::Add;
    step.id = RandomID(bytes);
    step.name = Wide(RandomName(bytes)).ToStdWString();
    step.shortName = bytes.Coin() ? Wide(RandomName(bytes)).ToStdWString() : L"";
    step.kind = bytes.Of(kKinds);
    step.hasSerializer = step.kind != PTC_Bag && (step.kind < PTC_Structure || step.kind == PTC_Map || bytes.Coin());
    step.space = RandomSpace(bytes);
    step.function = static_cast<int>(function) + 1;  // a part of its own would never end
    return step;
}

Function RandomFunction(Bytes& bytes, std::size_t number) {
    Function function;
    std::size_t parts = 0;
    for (std::size_t steps = bytes.Below(6); steps > 0; --steps) {
        const Step step = RandomStep(bytes, number);
        parts += step.action == Step::Part ? 1 : 0;
        if (step.action != Step::Part || parts == 1) {
            function.steps.push_back(step);
        }
    }
    function.failures = static_cast<int>(bytes.Below(4)) % 3;  // mostly none
    function.failsBefore = bytes.Below(6);
    return function;
}

// One operation on either; the same bytes give the same operation.
template <class Registry>
std::string Operate(Bytes& bytes, Registry& registry) {
    const std::size_t operation = bytes.Below(20);
    const std::string space = RandomSpace(bytes);
    const std::string name = RandomName(bytes);
    const int id = RandomID(bytes);
    const bool flag = bytes.Coin();
    const int last = bytes.Coin() ? RandomID(bytes) : LastOf(id);
    const int function = static_cast<int>(bytes.Below(kFunctions));
    switch (operation) {
        case 0:
        case 1:
            return registry.Register(space, function, id, last, flag);
        case 2:
            return registry.RegisterPart(space, function, id, last);
        case 3:
            return registry.SetFallback(space, RandomSpace(bytes));
        case 4:
            return registry.Clear(space);
        case 5:
            return flag ? registry.ClearAll() : registry.HasNamespace(space);
        case 6:
            return registry.AddUnserializable(id);
        case 7:
            return registry.IsUnserializable(id);
        case 8:
            return registry.GetName(id, flag);
        case 9:
            return registry.GetType(id);
        case 10:
            return registry.GetSerializer(id, flag ? PTC_List : PTC_Map);
        case 11:
            return registry.GetSerializer(id, flag ? PTC_Structure : PTC_StructureList);
        case 12:
            return registry.GetSerializer(id, PTC_StructureMap);
        case 13:
            return registry.GetValueSerializer(id);
        case 14:
            return registry.FindInfo(id);
        case 15:
            return registry.GetNamespaceInfos();
        case 16:
            return registry.FromString(space, name, flag);
        default:
            return registry.GetID(space, name, flag);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes(data, size);
    std::vector<Function> functions;
    for (std::size_t i = 0; i < kFunctions; ++i) {
        functions.push_back(RandomFunction(bytes, i));
    }
    registry_model::Model model(functions);
    Subject subject(functions);
    for (std::size_t operations = 0; operations < kMostOperations && !bytes.AtEnd(); ++operations) {
        model.verboseInForce = bytes.Coin();
        subject.SetVerboseInForce(model.verboseInForce);
        Bytes same = bytes;
        const std::string expected = Outcome([&] { return Operate(same, model); });
        RequireEqual(expected, Outcome([&] { return Operate(bytes, subject); }), "an answer of the registry");
        RequireEqual(model.trace, subject.trace, "the answers to registration functions");
        model.trace.clear();
        subject.trace.clear();
    }
    return 0;
}
