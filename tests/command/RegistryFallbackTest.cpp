#include <qvpreslayer/ParametersRegistry.h>

#include <string>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

// Answers short names from the second question on.
class ChangingVars final : public TestBuilderVars {
public:
    bool UseShortNames() const override { return TestBuilderVars::UseShortNames() || nameQuestions > 1; }
};

// Namespaces "A", "B" and "C" of one parameter each: "a" is 1, "b" is 11, "c" is 21; short names "sa", "sb", "sc".
class RegistryFallback : public testing::Test {
protected:
    RegistryFallback() {
        AddNamespace(L"A", L"a", L"sa", 1);
        AddNamespace(L"B", L"b", L"sb", 11);
        AddNamespace(L"C", L"c", L"sc", 21);
    }

    void AddNamespace(const TString& name, const wchar_t* verboseName, const wchar_t* shortName, int id) {
        registry.Add(name, id, id + 9,
                     [=](AbstractParamAdder& adder) { adder.AddSimple(id, verboseName, shortName, TextSerializer()); });
    }

    // The namespace in the exception of a link that closes a loop, or that is there already.
    std::string LoopAt(const TString& name, const TString& fallback) {
        const auto error = Thrown<CyclicFallbacksException>([&] { registry.SetFallback(name, fallback); });
        return error ? error->GetName().ToUtf8() : "";
    }
    std::string LinkedAlready(const TString& name, const TString& fallback) {
        const auto error =
            Thrown<ParameterNamespaceAlreadyHasFallbackException>([&] { registry.SetFallback(name, fallback); });
        return error ? error->GetName().ToUtf8() : "";
    }

    TestRegistry registry;
};

}  // namespace

TEST_F(RegistryFallback, WithoutOneASearchEndsWhereItBegan) {
    EXPECT_EQ("b", NotFoundName([&] { registry.GetID(L"A", L"b", true); }));
}

TEST_F(RegistryFallback, ASearchGoesAlongTheChain) {
    registry.SetFallback(L"A", L"B");
    registry.SetFallback(L"B", L"C");
    EXPECT_EQ(1, registry.GetID(L"A", L"a", true));
    EXPECT_EQ(11, registry.GetID(L"A", L"b", true));
    EXPECT_EQ(21, registry.GetID(L"A", L"c", true));
    EXPECT_EQ(21, registry.GetID(L"B", L"c", true));
}

TEST_F(RegistryFallback, ASearchNeverGoesBackwards) {
    registry.SetFallback(L"A", L"B");
    EXPECT_EQ("a", NotFoundName([&] { registry.GetID(L"B", L"a", true); }));
}

TEST_F(RegistryFallback, TheNearestNamespaceWins) {
    AddNamespace(L"D", L"b", L"sd", 31);
    registry.SetFallback(L"D", L"B");
    EXPECT_EQ(31, registry.GetID(L"D", L"b", true));
}

TEST_F(RegistryFallback, ANameFoundNowhereIsNotFound) {
    registry.SetFallback(L"A", L"B");
    registry.SetFallback(L"B", L"C");
    const auto error = Thrown<ParameterNotFoundException>([&] { registry.GetID(L"A", L"Foo", true); });
    ASSERT_TRUE(error);
    EXPECT_STREQ("Error finding command parameter: Foo", error->what());
    EXPECT_EQ(L"Foo", error->GetName());
    EXPECT_EQ(0, error->GetID());
}

TEST_F(RegistryFallback, ASearchPassesOverIdentifierZero) {
    registry.Add(L"zeros", -5, 0, [](AbstractParamAdder& adder) { adder.AddSimple(0, L"b", TextSerializer()); });
    registry.SetFallback(L"zeros", L"B");
    EXPECT_EQ(11, registry.GetID(L"zeros", L"b", true));
}

TEST_F(RegistryFallback, TheNameOptionIsReadAnewAtEveryNamespace) {
    const RefCntPtr<ChangingVars> vars(new ChangingVars);
    const OptionsSession session{RefCntPtr<const IBuilderVars>(vars)};
    registry.SetFallback(L"A", L"B");
    EXPECT_EQ(11, registry.GetID(L"A", L"sb", false)) << "A is searched verbose, B short";
    EXPECT_EQ(2, vars->nameQuestions);
}

TEST_F(RegistryFallback, TheNameOptionIsReadOncePerNamespaceVisited) {
    TestSession session;
    const TestBuilderVars& vars = session.Vars();
    registry.SetFallback(L"A", L"B");
    registry.SetFallback(L"B", L"C");
    EXPECT_EQ(1, registry.GetID(L"A", L"a", false));
    EXPECT_EQ(1, vars.nameQuestions);
    EXPECT_EQ(21, registry.GetID(L"A", L"c", false));
    EXPECT_EQ(4, vars.nameQuestions);
}

TEST_F(RegistryFallback, AVerboseSearchNeverReadsTheOption) {
    TestSession session(true);
    registry.SetFallback(L"A", L"B");
    EXPECT_EQ(11, registry.GetID(L"A", L"b", true));
    EXPECT_EQ("sb", NotFoundName([&] { registry.GetID(L"A", L"sb", true); }));
    EXPECT_EQ(0, session.Vars().nameQuestions);
}

TEST_F(RegistryFallback, LookupsByIdentifierDoNotFollowIt) {
    registry.SetFallback(L"A", L"B");
    EXPECT_EQ(2, NotFoundId([&] { registry.GetName(2, true); }));
    EXPECT_EQ(L"b", registry.GetName(11, true));
}

TEST_F(RegistryFallback, BothNamespacesMustBeThere) {
    EXPECT_EQ("X", UnknownNamespace([&] { registry.SetFallback(L"X", L"A"); }));
    EXPECT_EQ("X", UnknownNamespace([&] { registry.SetFallback(L"A", L"X"); }));
    EXPECT_EQ("X", UnknownNamespace([&] { registry.SetFallback(L"X", L"Y"); })) << "the name is checked first";
}

TEST_F(RegistryFallback, ThereIsOnlyOne) {
    registry.SetFallback(L"A", L"B");
    EXPECT_EQ("A", LinkedAlready(L"A", L"C"));
    EXPECT_EQ("A", LinkedAlready(L"A", L"B")) << "the same again is refused too";
    EXPECT_EQ("c", NotFoundName([&] { registry.GetID(L"A", L"c", true); }));
}

TEST_F(RegistryFallback, ALoopIsRefused) {
    registry.SetFallback(L"A", L"B");
    registry.SetFallback(L"B", L"C");
    EXPECT_EQ("C", LoopAt(L"C", L"A"));
    EXPECT_EQ("C", LoopAt(L"C", L"B"));
    EXPECT_EQ("C", LoopAt(L"C", L"C"));
}

TEST_F(RegistryFallback, ANamespaceIsNoFallbackOfItself) { EXPECT_EQ("A", LoopAt(L"A", L"A")); }

TEST_F(RegistryFallback, HavingOneIsToldBeforeALoop) {
    registry.SetFallback(L"A", L"B");
    EXPECT_EQ("A", LinkedAlready(L"A", L"A"));
}

TEST_F(RegistryFallback, AnUnknownFallbackIsToldBeforeHavingOne) {
    registry.SetFallback(L"A", L"B");
    EXPECT_EQ("X", UnknownNamespace([&] { registry.SetFallback(L"A", L"X"); }));
}

TEST_F(RegistryFallback, AFailureLinksNothing) {
    registry.SetFallback(L"A", L"B");
    EXPECT_EQ("B", LoopAt(L"B", L"A"));
    EXPECT_EQ("X", UnknownNamespace([&] { registry.SetFallback(L"B", L"X"); }));
    EXPECT_EQ("c", NotFoundName([&] { registry.GetID(L"B", L"c", true); }));
    EXPECT_NO_THROW(registry.SetFallback(L"B", L"C"));
    EXPECT_EQ(21, registry.GetID(L"A", L"c", true));
}

TEST_F(RegistryFallback, SeveralNamespacesMayShareOne) {
    registry.SetFallback(L"A", L"C");
    registry.SetFallback(L"B", L"C");
    EXPECT_EQ(21, registry.GetID(L"A", L"c", true));
    EXPECT_EQ(21, registry.GetID(L"B", L"c", true));
}
