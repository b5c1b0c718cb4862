// Types, exceptions and registries across modules that are loaded at run time and see nothing of each other.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "modules/LoadedModule.h"
#include "modules/ModuleInterface.h"
#include "support/TestHost.h"

namespace {

using modules::Failure;
using modules::Money;
using modules::Season;
using modules::Shape;

// What a handler of every type says of a failure, in the order of the enumeration.
const char* const kCaught[modules::kFailures] = {"missing 7",          "type 7",           "bad value 7",
                                                 "not found 7",        "not found 0seven", "parse 7",
                                                 "no namespace seven", "exists seven",     "has fallback seven",
                                                 "cyclic seven",       "json not valid",   "json mismatch",
                                                 "quorvel seven",      "logic seven",      "runtime",
                                                 "out of range"};

// Those that carry a place in a text.
bool CarriesLocation(Failure failure) {
    return failure == Failure::NotFoundByID || failure == Failure::NotFoundByName || failure == Failure::Parse ||
           failure == Failure::NoNamespace || failure == Failure::NotValid || failure == Failure::KindMismatch;
}

void RaiseHere(Failure failure) { modules::Raise(failure); }

class EmptyBag final : public BaseParameters {
    RefCntPtr<BaseParameters> DoEmptyClone() override { return {}; }
};

// Throws it from inside the libraries. Requires: a published registry with the namespaces "a", "b" and "texts".
void RaiseInLibrary(Failure failure) {
    ParametersRegistry& registry = ParametersRegistry::Get();
    const RefCntPtr<IParameters> bag = MakeRefCnt<EmptyBag>();
    switch (failure) {
        case Failure::Missing:
            bag->GetParameter(7);
            break;
        case Failure::TypeMismatch:
            ThrowTypeMismatchCommandException(7);
            break;
        case Failure::NotFoundByID:
            registry.GetName(7, true);
            break;
        case Failure::NotFoundByName:
            registry.GetID(L"a", L"seven", true);
            break;
        case Failure::Parse:
            registry.FromString(L"texts", bag, L"flag", L"neither", true);
            break;
        case Failure::NoNamespace:
            registry.GetID(L"seven", L"x", true);
            break;
        case Failure::NamespaceExists:
            registry.RegisterNamespace(
                L"seven", [](AbstractParamAdder&) {}, 900, 901, false);
            registry.RegisterNamespace(
                L"seven", [](AbstractParamAdder&) {}, 900, 901, false);
            break;
        case Failure::HasFallback:
            registry.RegisterNamespace(
                L"seven", [](AbstractParamAdder&) {}, 900, 901, false);
            registry.SetFallback(L"seven", L"a");
            registry.SetFallback(L"seven", L"b");
            break;
        case Failure::Cyclic:
            registry.RegisterNamespace(
                L"seven", [](AbstractParamAdder&) {}, 900, 901, false);
            registry.SetFallback(L"seven", L"seven");
            break;
        case Failure::NotValid:
            JSONSerializer(L"texts").ToParameters(L"{");
            break;
        case Failure::KindMismatch:
            JSONSerializer(L"texts").ToParameters(L"{\"flag\": []}");
            break;
        case Failure::Quorvel:
            Collation(L"not a name");
            break;
        case Failure::Logic:
            *RefCntPtr<IParameters>();
            break;
        case Failure::Runtime:
            JSONSerializer(L"texts").ToParameters(L"[]");
            break;
        case Failure::OutOfRange:
            ParameterTypeSerializer<DataValue>().FromString(L"?:1");
            break;
        default:
            ADD_FAILURE() << "the library does not throw this one by itself";
    }
}

// A registry for RaiseInLibrary, new for each failure.
class FailuresRegistry : public TestRegistry {
public:
    FailuresRegistry() {
        Add(L"a", 100, 109, [](AbstractParamAdder&) {});
        Add(L"b", 110, 119, [](AbstractParamAdder&) {});
        Add(L"texts", 200, 209,
            [](AbstractParamAdder& adder) { adder.AddSimple(207, L"flag", L"f", new ParameterTypeSerializer<bool>); });
    }
};

class ModulesTest : public testing::Test {
protected:
    LoadedModule m_alpha{"alpha"};
    LoadedModule m_beta{"beta"};
};

}  // namespace

TEST_F(ModulesTest, ModulesHaveTheirOwnCode) {
    EXPECT_NE(m_alpha->makeValue, m_beta->makeValue);
    EXPECT_EQ(nullptr, dlsym(RTLD_DEFAULT, modules::kEntryPoint)) << "the modules see nothing of each other";
}

TEST_F(ModulesTest, ValuesAreWhatTheyAreInEveryModule) {
    for (const Shape shape : modules::kShapes) {
        SCOPED_TRACE(static_cast<int>(shape));
        const RefCntPtr<IParameter> value(m_alpha->makeValue(shape));
        value->RemoveReference();  // the caller's, now that value has its own
        const int expected = static_cast<int>(shape);
        EXPECT_EQ(expected, modules::ShapeOf(*value)) << "made in a module, cast in the program";
        EXPECT_EQ(expected, m_alpha->shapeOf(*value));
        EXPECT_EQ(expected, m_beta->shapeOf(*value)) << "made in one module, cast in another";
    }
}

TEST_F(ModulesTest, ValuesOfTheProgramAreKnownInModules) {
    EXPECT_EQ(static_cast<int>(Shape::Integer), m_beta->shapeOf(*Val<int>(1)));
    EXPECT_EQ(static_cast<int>(Shape::Reals), m_beta->shapeOf(*Val<std::vector<double>>({1})));
    EXPECT_EQ(static_cast<int>(Shape::Money), m_beta->shapeOf(*Val<Money>({1})));
    EXPECT_EQ(static_cast<int>(Shape::Bag), m_beta->shapeOf(*BagVal(MakeBag())));
    EXPECT_EQ(-1, m_beta->shapeOf(*Val<unsigned int>(1)));
}

// Values that the library itself made by reading, and values that it takes apart by writing.
TEST_F(ModulesTest, LibraryAndModulesAgreeOnTypes) {
    const TestRegistry registry;
    ParametersRegistry::Get().RegisterNamespace(
        L"shapes",
        [](AbstractParamAdder& adder) {
            adder.AddSimple(1, L"integer", new ParameterTypeSerializer<int>);
            adder.AddSimple(2, L"text", new TStringSerializer);
            adder.AddList(3, L"reals", new ParameterTypeSerializer<double>);
            adder.AddMap(4, L"text-map", new TStringSerializer);
            adder.AddBag(5, L"bag");
        },
        1, 9, false);
    const std::pair<int, Shape> members[] = {
        {1, Shape::Integer}, {2, Shape::Text}, {3, Shape::Reals}, {4, Shape::TextMap}, {5, Shape::Bag}};
    const RefCntPtr<TestBag> bag = MakeBag();
    for (const auto& [id, shape] : members) {
        bag->SetParameter(id, RefCntPtr<IParameter>(m_alpha->makeValue(shape)));
        bag->GetParameter(id).RemoveReference();
    }
    const std::string text =
        "{\"integer\": 42,\"text\": \"a text that is too long to be kept in place\",\"reals\":[1.5,-2],"
        "\"textMap\":{\"k\":\"v\"},\"bag\":{}}";
    EXPECT_EQ(text, m_beta->write(bag, L"shapes"));
    const RefCntPtr<IParameters> copy(m_beta->read(text.c_str(), L"shapes"));
    copy->RemoveReference();
    for (const auto& [id, shape] : members) {
        EXPECT_EQ(static_cast<int>(shape), m_alpha->shapeOf(copy->GetParameter(id)));
    }
    EXPECT_EQ(text, m_alpha->write(copy, L"shapes"));
}

TEST_F(ModulesTest, ExceptionsOfModulesAreCaughtByTypeEverywhere) {
    for (int i = 0; i < modules::kFailures; ++i) {
        const auto failure = static_cast<Failure>(i);
        SCOPED_TRACE(i);
        EXPECT_EQ(kCaught[i], modules::CaughtFrom([&] { m_alpha->raise(failure); }));
        EXPECT_EQ(kCaught[i], m_beta->catchFrom(m_alpha->raise, failure));
        EXPECT_EQ(kCaught[i], m_beta->catchFrom(RaiseHere, failure));
        EXPECT_EQ(CarriesLocation(failure),
                  i < static_cast<int>(Failure::Logic) && m_beta->hasLocation(m_alpha->raise, failure));
    }
}

TEST_F(ModulesTest, ExceptionsOfTheLibraryAreCaughtByTypeEverywhere) {
    const std::pair<Failure, std::string> failures[] = {
        {Failure::Missing, "missing 7"},
        {Failure::TypeMismatch, "type 7"},
        {Failure::NotFoundByID, "not found 7"},
        {Failure::NotFoundByName, "not found 0seven"},
        {Failure::Parse, "parse 207"},
        {Failure::NoNamespace, "no namespace seven"},
        {Failure::NamespaceExists, "exists seven"},
        {Failure::HasFallback, "has fallback seven"},
        {Failure::Cyclic, "cyclic seven"},
        {Failure::NotValid, "json not valid"},
        {Failure::KindMismatch, "json mismatch"},
        {Failure::Quorvel, "quorvel Collation name is not valid"},
        {Failure::Logic, "logic m_ptr"},
        {Failure::Runtime, "runtime"},
        {Failure::OutOfRange, "out of range"},
    };
    for (const auto& [failure, caught] : failures) {
        SCOPED_TRACE(caught);
        for (const LoadedModule* module : {&m_alpha, &m_beta}) {
            const FailuresRegistry registry;
            EXPECT_EQ(caught, (*module)->catchFrom(RaiseInLibrary, failure));
        }
        const FailuresRegistry registry;
        EXPECT_EQ(caught, modules::CaughtFrom([&, which = failure] { RaiseInLibrary(which); }));
        const FailuresRegistry another;
        EXPECT_EQ(CarriesLocation(failure), failure < Failure::Logic && m_beta->hasLocation(RaiseInLibrary, failure));
    }
}

TEST_F(ModulesTest, CopiesAreThrownAsTheirOwnTypeAcrossModules) {
    for (int i = 0; i < static_cast<int>(Failure::Logic); ++i) {
        const auto failure = static_cast<Failure>(i);
        EXPECT_EQ(kCaught[i], m_beta->catchClonedFrom(m_alpha->raise, failure));
        EXPECT_EQ(kCaught[i], m_beta->catchClonedFrom(RaiseHere, failure));
    }
    const FailuresRegistry registry;
    EXPECT_EQ("parse 207", m_beta->catchClonedFrom(RaiseInLibrary, Failure::Parse));
}

TEST_F(ModulesTest, ModulesRegisterNamespacesSideBySide) {
    TestRegistry registry;
    m_alpha->registerNamespace(registry, L"alpha", 100);
    m_beta->registerNamespace(registry, L"beta", 200);
    registry.SetFallback(L"alpha", L"beta");

    const RefCntPtr<TestBag> bag = MakeBag();
    bag->SetParameter(100, Val(Season::Wet));
    bag->SetParameter(201, Val<std::vector<Money>>({{5}, {-7}}));
    const std::string text = "{\"alphaSeason\": \"wet-season\",\"betaAmounts\":[5,-7]}";
    EXPECT_EQ(text, m_alpha->write(bag, L"alpha"));
    EXPECT_EQ(text, m_beta->write(bag, L"alpha"));

    const RefCntPtr<IParameters> copy(m_beta->read(text.c_str(), L"alpha"));
    copy->RemoveReference();
    EXPECT_EQ(Season::Wet, GetParameterValue<Season>(*copy, 100));
    EXPECT_EQ((std::vector<Money>{{5}, {-7}}), GetParameterValue<std::vector<Money>>(*copy, 201));
    EXPECT_EQ("not found 0alpha-season",
              modules::CaughtFrom([] { JSONSerializer(L"beta").ToParameters(L"{\"alphaSeason\": \"wet-season\"}"); }));
    EXPECT_EQ("exists alpha", modules::CaughtFrom([&] { m_beta->registerNamespace(registry, L"alpha", 300); }));
    EXPECT_EQ("parse 0",
              modules::CaughtFrom([] { JSONSerializer(L"beta").ToParameters(L"{\"betaAmounts\": [\"five\"]}"); }));
}

// A namespace is cleared before the module goes whose serializers it holds; the other one is not touched, and the same
// name can be registered again by the module when it is back.
TEST(Modules, ComeAndGoWithTheirNamespaces) {
    const LoadedModule alpha("alpha");  // outlives the registry, which holds serializers of it
    TestRegistry registry;
    alpha->registerNamespace(registry, L"alpha", 100);
    const RefCntPtr<TestBag> bag = MakeBag({{100, Val(Season::Dry)}});
    for (int round = 0; round < 3; ++round) {
        SCOPED_TRACE(round);
        {
            const LoadedModule beta("beta");
            beta->registerNamespace(registry, L"beta", 200);
            registry.SetFallback(L"alpha", L"beta");
            EXPECT_EQ(200, registry.GetID(L"alpha", L"beta-season", true));
            EXPECT_EQ("{\"alphaSeason\": \"dry-season\"}", beta->write(bag, L"alpha"));
            registry.Clear(L"beta");
        }
        EXPECT_FALSE(registry.HasNamespace(L"beta"));
        EXPECT_EQ("not found 0beta-season",
                  modules::CaughtFrom([&] { registry.GetID(L"alpha", L"beta-season", true); }));
        EXPECT_EQ("{\"alphaSeason\": \"dry-season\"}", alpha->write(bag, L"alpha"));
    }
}

TEST(Modules, GlobalModulesWorkAsLocalOnes) {
    const LoadedModule alpha("alpha", RTLD_GLOBAL);
    const LoadedModule beta("beta", RTLD_GLOBAL);
    for (const Shape shape : modules::kShapes) {
        const RefCntPtr<IParameter> value(beta->makeValue(shape));
        value->RemoveReference();
        EXPECT_EQ(static_cast<int>(shape), alpha->shapeOf(*value));
    }
    for (int i = 0; i < modules::kFailures; ++i) {
        EXPECT_EQ(kCaught[i], beta->catchFrom(alpha->raise, static_cast<Failure>(i)));
    }
}
