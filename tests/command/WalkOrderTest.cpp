// What a walk asks first: the registry, then the options, then the bag.
#include <qvpreslayer/VisitParametersStructure.h>

#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Failures.h"
#include "support/TestHost.h"
#include "support/TraceVisitor.h"

namespace {

// Options that cannot be told, from some question on.
class SilentVars final : public IBuilderVars {
public:
    bool UseShortNames() const override { return Answer(); }
    bool CompressArrays() const override { return Answer(); }
    bool LossyEncodeImages() const override { return false; }

    mutable int answers = 0;  // left

private:
    bool Answer() const {
        if (answers-- <= 0) {
            throw std::domain_error("no options");
        }
        return false;
    }
};

class SilentSession final : public SessionContext {
public:
    explicit SilentSession(int answers) : m_scope(*this) { m_vars->answers = answers; }
    RefCntPtr<const IBuilderVars> GetIBuilderVars() const override { return m_vars; }

private:
    RefCntPtr<SilentVars> m_vars{new SilentVars};
    SessionContextScope m_scope;
};

class WalkOrder : public testing::Test {
protected:
    WalkOrder() {
        m_registry.Add(L"ns", 1, 9, [](AbstractParamAdder& adder) {
            adder.AddBag(1, L"bag");
            adder.AddSimple(2, L"text", new TStringSerializer);
        });
    }

    void Walk(const RefCntPtr<const IParameters>& bag) { VisitParametersStructure(L"ns", bag, m_visitor); }

    TestRegistry m_registry;
    TraceVisitor m_visitor;
};

}  // namespace

TEST_F(WalkOrder, OptionsAreAskedBeforeTheBagIsLookedAt) {
    {
        const SilentSession none(0);
        EXPECT_THROW(Walk(nullptr), std::domain_error);
    }
    {
        const SilentSession namesOnly(1);
        EXPECT_THROW(Walk(nullptr), std::domain_error);
    }
    const SilentSession both(2);
    EXPECT_THAT(Doing([&] { Walk(nullptr); }), ThrowsLogicFailure("m_ptr"));
    EXPECT_EQ("", m_visitor.Text());
}

TEST_F(WalkOrder, TheRegistryIsAskedBeforeTheOptions) {
    ParametersRegistry::SetInstance(nullptr);
    const SilentSession none(0);
    EXPECT_THAT(Doing([&] { Walk(nullptr); }), ThrowsLogicFailure("gm_RegistryInstance != nullptr"));
}

// For a nested bag: its start is told, then its type is looked at, then the options are asked, then it is walked.
TEST_F(WalkOrder, NestedBagsAreStartedBeforeTheirOptionsAreAsked) {
    {
        const SilentSession outerOnly(2);
        EXPECT_THROW(Walk(MakeBag({{1, BagVal(nullptr)}})), std::domain_error);
        EXPECT_EQ("StartComposite(bag, false)\n", m_visitor.Text());
    }
    {
        const SilentSession outerOnly(2);
        EXPECT_THAT(Doing([&] { Walk(MakeBag({{1, Text(L"no bag")}})); }), ThrowsTypeMismatch(1));
    }
    const SilentSession all(4);
    EXPECT_THAT(Doing([&] { Walk(MakeBag({{1, BagVal(nullptr)}})); }), ThrowsLogicFailure("m_ptr"));
}

TEST_F(WalkOrder, NothingIsAskedForValuesThatAreNoBags) {
    const SilentSession outerOnly(2);
    Walk(MakeBag({{2, Text(L"t")}}));
    EXPECT_EQ("Parameter(text, t, 1)\n", m_visitor.Text());
}
