#include <qvpreslayer/ParametersRegistry.h>

#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

// A registry that nobody publishes.
class QuietRegistry final : public ParametersRegistry {
public:
    RefCntPtr<IParameters> CreateParameters() override { return RefCntPtr<IParameters>(new TestBag); }
};

void FillNothing(AbstractParamAdder&) {}

std::string NamespacesOf(const ParametersRegistry& registry) {
    std::string names;
    for (const auto& [name, rows] : registry.GetNamespaceInfos()) {
        names += (names.empty() ? "" : " ") + name.ToUtf8();
    }
    return names;
}

}  // namespace

TEST(ParametersRegistry, NoneIsPublishedAtFirst) {
    EXPECT_EQ(nullptr, ParametersRegistry::GetInstance());
    const QuietRegistry registry;
    EXPECT_EQ(nullptr, ParametersRegistry::GetInstance());
}

TEST(ParametersRegistry, GetNeedsAPublishedOne) {
    EXPECT_EQ("gm_RegistryInstance != nullptr", LogicErrorOf([] { ParametersRegistry::Get(); }));
    EXPECT_EQ("main/command/ParametersRegistry", LogicFileOf([] { ParametersRegistry::Get(); }));
}

TEST(ParametersRegistry, ThePublishedOneIsAnsweredAndNotOwned) {
    {
        QuietRegistry first;
        QuietRegistry second;
        ParametersRegistry::SetInstance(&first);
        EXPECT_EQ(&first, &ParametersRegistry::Get());
        EXPECT_EQ(&first, ParametersRegistry::GetInstance());
        ParametersRegistry::SetInstance(&second);
        EXPECT_EQ(&second, &ParametersRegistry::Get());
        first.RegisterNamespace(L"alive", FillNothing, 1, 2, false);
        EXPECT_TRUE(first.HasNamespace(L"alive"));
        ParametersRegistry::SetInstance(nullptr);
    }
    EXPECT_EQ(nullptr, ParametersRegistry::GetInstance());
}

TEST(ParametersRegistry, TakingBackNothingIsAllowed) {
    ParametersRegistry::SetInstance(nullptr);
    ParametersRegistry::SetInstance(nullptr);
    EXPECT_EQ(nullptr, ParametersRegistry::GetInstance());
}

TEST(ParametersRegistry, HostsSupplyTheBagsAndOwnTheObject) {
    EXPECT_TRUE(std::is_abstract_v<ParametersRegistry>);
    EXPECT_FALSE(std::has_virtual_destructor_v<ParametersRegistry>);
    EXPECT_FALSE(std::is_destructible_v<ParametersRegistry>);
    EXPECT_FALSE(std::is_copy_constructible_v<QuietRegistry>);
}

TEST(ParametersRegistry, TheNumbersOfTheKindsAreFixed) {
    EXPECT_EQ(0, PTC_None);
    EXPECT_EQ(1, PTC_Text);
    EXPECT_EQ(2, PTC_Number);
    EXPECT_EQ(3, PTC_Bool);
    EXPECT_EQ(4, PTC_List);
    EXPECT_EQ(5, PTC_Bag);
    EXPECT_EQ(6, PTC_Structure);
    EXPECT_EQ(7, PTC_StructureList);
    EXPECT_EQ(8, PTC_Map);
    EXPECT_EQ(9, PTC_StructureMap);
}

TEST(ParametersRegistry, IsEmptyAtFirst) {
    const QuietRegistry registry;
    EXPECT_FALSE(registry.HasNamespace(L"view"));
    EXPECT_FALSE(registry.HasNamespace(L""));
    EXPECT_FALSE(registry.IsUnserializable(0));
    EXPECT_TRUE(registry.GetNamespaceInfos().empty());
}

TEST(ParametersRegistry, ANamespaceIsRegisteredByName) {
    QuietRegistry registry;
    registry.RegisterNamespace(L"view", FillNothing, 1, 9, false);
    EXPECT_TRUE(registry.HasNamespace(L"view"));
    EXPECT_FALSE(registry.HasNamespace(L"View"));
    EXPECT_FALSE(registry.HasNamespace(L"vie"));
}

TEST(ParametersRegistry, ANameIsRegisteredOnce) {
    QuietRegistry registry;
    bool ran = false;
    registry.RegisterNamespace(L"view", FillNothing, 1, 9, false);
    const auto error = Thrown<ParameterNamespaceAlreadyExistsException>([&] {
        registry.RegisterNamespace(
            L"view", [&](AbstractParamAdder&) { ran = true; }, 100, 200, true);
    });
    ASSERT_TRUE(error);
    EXPECT_EQ(L"view", error->GetName());
    EXPECT_FALSE(ran);
    EXPECT_EQ("view", NamespacesOf(registry));
}

TEST(ParametersRegistry, AnEmptyNameIsAName) {
    QuietRegistry registry;
    registry.RegisterNamespace(
        L"", [](AbstractParamAdder& adder) { adder.AddSimple(1, L"title", TextSerializer()); }, 1, 9, false);
    EXPECT_TRUE(registry.HasNamespace(L""));
    EXPECT_EQ(1, registry.GetID(L"", L"title", true));
}

TEST(ParametersRegistry, ListsNamespacesInNameOrder) {
    QuietRegistry registry;
    for (const wchar_t* name : {L"b", L"a", L"B", L"-", L"ab"}) {
        registry.RegisterNamespace(name, FillNothing, 1, 9, false);
    }
    EXPECT_EQ("- B a ab b", NamespacesOf(registry));
}

TEST(ParametersRegistry, ListsIdentifiersThatHaveBothNames) {
    QuietRegistry registry;
    registry.RegisterNamespace(
        L"view",
        [](AbstractParamAdder& adder) {
            adder.AddSimple(9, L"title", L"ti", TextSerializer());
            adder.AddSimple(5, L"verbose-only", L"", TextSerializer());
            adder.AddSimple(3, L"", L"short-only", TextSerializer());  // an empty verbose name is a name here
            adder.AddBag(4, L"style");
        },
        1, 9, false);
    const auto infos = registry.GetNamespaceInfos();
    ASSERT_EQ(1U, infos.size());
    EXPECT_EQ(L"view", infos[0].first);
    std::string rows;
    for (const ParameterRegistryinfo& row : infos[0].second) {
        rows += std::to_string(row.id) + "," + row.verboseName.ToUtf8() + "," + row.shortName.ToUtf8() + ";";
    }
    EXPECT_EQ("9,title,ti;3,,short-only;4,style,style;", rows);
}

TEST(ParametersRegistry, AnyIdentifierMayBeUnserializable) {
    QuietRegistry registry;
    for (const int id : {0, -7, 123456}) {
        SCOPED_TRACE(id);
        EXPECT_FALSE(registry.IsUnserializable(id));
        registry.AddUnserializable(id);
        registry.AddUnserializable(id);
        EXPECT_TRUE(registry.IsUnserializable(id));
    }
    EXPECT_FALSE(registry.IsUnserializable(1));
}
