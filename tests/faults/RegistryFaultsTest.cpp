// The registry without memory: registering, filling, looking up, clearing.
#include <qvpreslayer/ParametersRegistry.h>

#include "faults/Subjects.h"

namespace {

using enum Promise;

void AddFive(AbstractParamAdder& adder, int first) {
    adder.AddSimple(first, L"a-long-name-that-does-not-fit-in-place", L"a-long-short-name-that-does-not-either",
                    new TStringSerializer);
    adder.AddSimple(first + 1, L"number", L"nu", new ParameterTypeSerializer<int>);
    adder.AddList(first + 2, L"list", L"li", new ParameterTypeSerializer<double>);
    adder.AddMap(first + 3, L"map", L"ma", new TStringSerializer);
    adder.AddBag(first + 4, L"bag", L"ba");
    adder.AddStructure(first + 5, L"record", L"re", new BagStructureSerializer);
    adder.AddStructureList(first + 6, L"records", L"rs", new BagStructureSerializer);
    adder.AddStructureMap(first + 7, L"by-key", L"bk", new BagStructureSerializer);
}

ParametersRegistry::RegistrationFunction Five(int first) {
    return [first](AbstractParamAdder& adder) { AddFive(adder, first); };
}

void AddMany(AbstractParamAdder& adder) {
    for (int id = 1000; id < 1200; ++id) {
        const std::wstring name =
            L"parameter-number-" + std::to_wstring(id);  // before the serializer, which would leak
        adder.AddSimple(id, name.c_str(), new TStringSerializer);
    }
}

// A registry with the namespaces "one" (1 to 99), which falls back to "two" (100 to 199), "part" (200 to 299), and one
// more, so that the next one needs more room.
class Registry final : public TestRegistry {
public:
    Registry() {
        Add(L"one", 1, 99, Five(10));
        Add(L"two", 100, 199, Five(110));
        RegisterNamespacePart(L"part", Five(210), 200, 299);
        Add(L"full", 900, 949, Five(910));
        SetFallback(L"one", L"two");
        AddUnserializable(10);
        AddUnserializable(110);
    }
};

// Everything that lookups tell; fills what is not filled.
std::string Content(const ParametersRegistry& registry) {
    std::string text;
    for (const auto& [name, rows] : registry.GetNamespaceInfos()) {
        text += name.ToUtf8() + ":";
        for (const auto& row : rows) {
            text += " " + std::to_string(row.id) + row.verboseName.ToUtf8() + "/" + row.shortName.ToUtf8();
        }
        for (const wchar_t* sought : {L"number", L"bag"}) {
            try {
                text += " " + std::to_string(registry.GetID(name, sought, true));
            } catch (const ParameterNotFoundException&) {
                text += " -";
            }
        }
        text += "\n";
    }
    for (const int id : {0, 10, 11, 12, 15, 50, 110, 111, 150, 210, 250, 300, 310, 350, 1000, 1199}) {
        const ParameterInfo* info = registry.FindInfo(id);
        text += std::to_string(id) + (info == nullptr ? "?" : "=" + std::to_string(info->kind)) +
                (registry.IsUnserializable(id) ? "u " : " ");
    }
    return text;
}

template <class Operation>
Subject OnRegistry(Operation operation) {
    return On(std::make_shared<Registry>(), operation, Content);
}

// All is filled already.
template <class Operation>
Subject OnFilled(Operation operation) {
    auto registry = std::make_shared<Registry>();
    Content(*registry);
    return On(registry, operation, Content);
}

template <class Operation>
Subject OnFilledAndBag(Operation operation) {
    auto registry = std::make_shared<Registry>();
    Content(*registry);
    auto bag = MakeBag({{11, Val(7)}});
    return {[=] { operation(*registry, bag); }, [=] { return Content(*registry) + BagContent::Of(*bag); }};
}

}  // namespace

TEST(Faults, Registering) {
    CheckUnderFaults({
        {"a registry", Strong, [] { return Nothing([] { Registry(); }); }},
        {"a namespace", Strong, [] { return OnRegistry([](Registry& r) { r.Add(L"new", 300, 399, Five(310)); }); }},
        {"a namespace of a long name", Strong,
         [] { return OnRegistry([](Registry& r) { r.Add(kLong, 300, 399, Five(310)); }); }},
        {"an eager namespace", Strong,
         [] { return OnRegistry([](Registry& r) { r.RegisterNamespace(L"new", Five(310), 300, 399, true); }); }},
        {"a large eager namespace", Strong,
         [] { return OnRegistry([](Registry& r) { r.RegisterNamespace(L"new", AddMany, 1000, 1999, true); }); }},
        {"a namespace that others overlap", Strong,
         [] { return OnRegistry([](Registry& r) { r.Add(L"zero", 50, 350, Five(310)); }); }},
        {"a namespace that overlaps others", Strong,
         [] { return OnRegistry([](Registry& r) { r.Add(L"a", 50, 350, Five(310)); }); }},
        {"a namespace without identifiers", Strong,
         [] { return OnRegistry([](Registry& r) { r.Add(L"a", 5, 4, [](AbstractParamAdder&) {}); }); }},
        {"a namespace that is there", Strong,
         [] { return OnRegistry([](Registry& r) { r.Add(L"one", 300, 399, Five(310)); }); }},
        {"a part", Strong,
         [] {
             return OnRegistry([](Registry& r) {
                 r.RegisterNamespacePart(
                     L"part", [](AbstractParamAdder& a) { a.AddBag(290, L"late"); }, 200, 299);
             });
         }},
        {"the first part", Strong,
         [] { return OnRegistry([](Registry& r) { r.RegisterNamespacePart(L"new", Five(310), 300, 399); }); }},
        {"a part of another range", Strong,
         [] { return OnRegistry([](Registry& r) { r.RegisterNamespacePart(L"part", Five(310), 300, 399); }); }},
        {"a part that is late", Strong,
         [] { return OnFilled([](Registry& r) { r.RegisterNamespacePart(L"part", Five(210), 200, 299); }); }},
        {"a fallback", Strong, [] { return OnRegistry([](Registry& r) { r.SetFallback(L"two", L"part"); }); }},
        {"a second fallback", Strong, [] { return OnRegistry([](Registry& r) { r.SetFallback(L"one", L"part"); }); }},
        {"a fallback in a circle", Strong,
         [] { return OnRegistry([](Registry& r) { r.SetFallback(L"two", L"one"); }); }},
        {"a fallback of nothing", Strong,
         [] { return OnRegistry([](Registry& r) { r.SetFallback(L"none", L"one"); }); }},
        {"a mark", Strong, [] { return OnRegistry([](Registry& r) { r.AddUnserializable(350); }); }},
        {"a mark that is there", NoFail, [] { return OnRegistry([](Registry& r) { r.AddUnserializable(10); }); }},
        {"many marks", Basic,
         [] {
             return OnRegistry([](Registry& r) {
                 for (int id = 300; id < 400; ++id) {
                     r.AddUnserializable(id);
                 }
             });
         }},
        {"the core namespace", Strong,
         [] { return OnRegistry([](Registry& r) { RegisterCoreNamespaceParameters(r, L"qvcore"); }); }},
        {"the core namespace, by name alone", Strong,
         [] { return OnRegistry([](Registry&) { RegisterCoreNamespaceParameters(L"qvcore"); }); }},
        {"clearing a namespace that is not filled", Strong,
         [] { return OnRegistry([](Registry& r) { r.Clear(L"one"); }); }},
        {"clearing a namespace", Strong, [] { return OnFilled([](Registry& r) { r.Clear(L"two"); }); }},
        {"clearing nothing", Strong, [] { return OnFilled([](Registry& r) { r.Clear(L"none"); }); }},
        {"clearing all", NoFail, [] { return OnFilled([](Registry& r) { r.Clear(); }); }},
    });
}

TEST(Faults, FillingNamespaces) {
    CheckUnderFaults({
        {"by a name", Strong, [] { return OnRegistry([](Registry& r) { r.GetID(L"one", L"number", true); }); }},
        {"by a name of the fallback", Strong,
         [] { return OnRegistry([](Registry& r) { r.GetID(L"one", L"nowhere", true); }); }},
        {"by an identifier", Strong, [] { return OnRegistry([](Registry& r) { r.GetType(11); }); }},
        {"by a list of all", Strong, [] { return OnRegistry([](Registry& r) { r.GetNamespaceInfos(); }); }},
        {"a large one", Strong,
         [] {
             const auto registry = std::make_shared<Registry>();
             registry->Add(L"many", 1000, 1999, AddMany);
             return On(
                 registry, [](Registry& r) { r.GetType(1001); }, Content);
         }},
        {"one that fills another", Strong,
         [] {
             const auto registry = std::make_shared<Registry>();
             registry->Add(L"user", 300, 399, [r = registry.get()](AbstractParamAdder& adder) {
                 adder.AddBag(r->GetID(L"one", L"number", true) + 300, L"eleven");
             });
             return On(
                 registry, [](Registry& r) { r.GetType(311); }, Content);
         }},
    });
}

TEST(Faults, LookingUp) {
    CheckUnderFaults({
        {"an identifier", NoFail,
         [] {
             return OnFilled([](Registry& r) {
                 static const TString space = L"one";
                 static const TString name = L"number";
                 r.GetID(space, name, true);
             });
         }},
        {"an identifier that is not there", Strong,
         [] { return OnFilled([](Registry& r) { r.GetID(L"one", kLong, true); }); }},
        {"a namespace that is not there", Strong,
         [] { return OnFilled([](Registry& r) { r.GetID(kLong, L"x", true); }); }},
        {"a name", NoFail, [] { return OnFilled([](Registry& r) { r.GetName(11, false); }); }},
        {"a name that is not there", Strong, [] { return OnFilled([](Registry& r) { r.GetName(12345, true); }); }},
        {"a kind that is not there", Strong, [] { return OnFilled([](Registry& r) { r.GetType(50); }); }},
        {"a serializer of another kind", Strong, [] { return OnFilled([](Registry& r) { r.GetListSerializer(11); }); }},
        {"each serializer", NoFail,
         [] {
             return OnFilled([](Registry& r) {
                 r.GetValueSerializer(11);
                 r.GetListSerializer(12);
                 r.GetMapSerializer(13);
                 r.GetStructureSerializer(15);
                 r.GetStructureListSerializer(16);
                 r.GetStructureMapSerializer(17);
                 r.FindInfo(11);
                 r.IsUnserializable(11);
             });
         }},
        {"a list of all", Strong, [] { return OnFilled([](Registry& r) { r.GetNamespaceInfos(); }); }},
        {"a value's text", Strong,
         [] {
             return OnFilledAndBag([](Registry& r, const RefCntPtr<TestBag>& bag) {
                 r.GetValueString(RefCntPtr<const IParameter>(&bag->GetParameter(11)), 11);
             });
         }},
        {"the text of a bag", Strong,
         [] {
             return OnFilledAndBag(
                 [](Registry& r, const RefCntPtr<TestBag>& bag) { r.GetValueString(BagVal(bag), 14); });
         }},
        {"a value from text", Strong,
         [] {
             return OnFilledAndBag(
                 [](Registry& r, const RefCntPtr<TestBag>& bag) { r.FromString(L"one", bag, L"number", L"5", true); });
         }},
        {"a long value from text", Strong,
         [] {
             return OnFilledAndBag([](Registry& r, const RefCntPtr<TestBag>& bag) { r.SetFromString(10, bag, kLong); });
         }},
        {"no value from text", Strong,
         [] {
             return OnFilledAndBag([](Registry& r, const RefCntPtr<TestBag>& bag) { r.SetFromString(11, bag, kLong); });
         }},
    });
}
