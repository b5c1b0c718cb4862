// Registry scripts: registering, parts, fallbacks, marks, clearing and look-ups in any order, with registration
// functions that look up, add parts and throw. Promised: every answer and every failure is the model's, so that
// ranges may overlap, be empty or reach the ends of int, and a function that threw runs again.
#include "fuzz/support/RegistryModel.h"
#include "fuzz/support/RegistrySubject.h"

using namespace fuzz;
using namespace registry_script;

namespace {

constexpr std::size_t kMostOperations = 100;

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
    registry_subject::Subject subject(functions);
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
