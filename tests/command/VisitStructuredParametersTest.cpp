// The walker itself, and how deep it goes.
#include <qvpreslayer/VisitParametersStructure.h>

#include <string>

#include <gtest/gtest.h>

#include "command/VisitTestSupport.h"

namespace {

using Walker = VisitTest;

// Puts the limit back.
class BagDepthScope {
public:
    explicit BagDepthScope(int levels) { PresLayerLimits::SetBagDepth(levels); }
    ~BagDepthScope() { PresLayerLimits::SetBagDepth(m_before); }

private:
    int m_before = PresLayerLimits::GetBagDepth();
};

// So many bags, each in the next one, with a text in the innermost.
RefCntPtr<TestBag> Nested(int bags) {
    auto outer = MakeBag({{PTC_Text, Text(L"innermost")}});
    for (int i = 1; i < bags; ++i) {
        outer = MakeBag({{PTC_Bag, BagVal(outer)}});
    }
    return outer;
}

std::string NestedTrace(int bags) {
    std::string text = "Parameter(title, innermost, 1)\n";
    for (int i = 1; i < bags; ++i) {
        text = "StartComposite(sub-bag, false)\n" + text + "EndComposite(sub-bag)\n";
    }
    return text;
}

// A bag that holds itself; the knot has to be untied for it to go.
class KnottedBag {
public:
    KnottedBag() { bag->SetParameter(PTC_Bag, BagVal(bag)); }
    ~KnottedBag() { bag->SetParameter(PTC_Bag, nullptr); }

    const RefCntPtr<TestBag> bag = MakeBag();
};

template <class Action>
void ExpectTooDeep(Action action) {
    const auto error = Thrown<QuorvelException>(action);
    ASSERT_TRUE(error);
    EXPECT_STREQ("Parameter bags are nested too deeply", error->what());
}

}  // namespace

TEST_F(Walker, TakesTheOptionsWhenItIsMade) {
    TestSession session(true);
    TraceVisitor visitor;
    const auto bag = MakeBag({{kText, Text(L"Sales")}});
    VisitStructuredParameters walker(registry, RefCntPtr<const IParameters>(bag), visitor);
    session.Vars().shortNames = false;
    walker.Walk();
    EXPECT_EQ("Parameter(ti, Sales, 1)\n", visitor.Text());
}

TEST_F(Walker, MayHaveOptionsOfItsOwn) {
    const TestSession session(false, false);
    TraceVisitor visitor;
    const auto bag = MakeBag({{kText, Text(L"Sales")}, {kStructure, Val(5)}});
    VisitStructuredParameters(registry, RefCntPtr<const IParameters>(bag), visitor, false, true).Walk();
    EXPECT_EQ(
        "Parameter(ti, Sales, 1)\n"
        "ListItem(Serialize 5 for 6 own short packed)\n",
        visitor.Text());
}

TEST_F(Walker, GivesNestedBagsTheOptionsOfTheSession) {
    const TestSession session(false, false);
    TraceVisitor visitor;
    const auto bag = MakeBag({{kBag, BagVal(MakeBag({{kText, Text(L"Sales")}, {kStructure, Val(5)}}))}});
    VisitStructuredParameters(registry, RefCntPtr<const IParameters>(bag), visitor, false, true).Walk();
    EXPECT_EQ(
        "StartComposite(sb, false)\n"
        "Parameter(title, Sales, 1)\n"
        "ListItem(Serialize 5 for 6 own verbose plain)\n"
        "EndComposite(sb)\n",
        visitor.Text());
}

TEST_F(Walker, WalksNoNullBag) {
    TraceVisitor visitor;
    VisitStructuredParameters walker(registry, nullptr, visitor);
    EXPECT_EQ("m_ptr", LogicErrorOf([&] { walker.Walk(); }));
}

TEST_F(Walker, FetchesNestedBagsFromTheBagItself) {
    TraceVisitor visitor;
    const auto bag = MakeBag({{kBag, BagVal(MakeBag({{kText, Text(L"in the bag")}}))}});
    VisitStructuredParameters walker(registry, RefCntPtr<const IParameters>(bag), visitor);
    walker.VisitParameter(kBag, Text(L"something else"));
    EXPECT_EQ(
        "StartComposite(sub-bag, false)\n"
        "Parameter(title, in the bag, 1)\n"
        "EndComposite(sub-bag)\n",
        visitor.Text());
}

TEST_F(Walker, UsesTheRegistryItIsGiven) {
    TraceVisitor visitor;
    const auto bag = MakeBag({{kText, Text(L"Sales")}});
    ParametersRegistry::SetInstance(nullptr);
    VisitStructuredParameters(registry, RefCntPtr<const IParameters>(bag), visitor, true, false).Walk();
    EXPECT_EQ("Parameter(title, Sales, 1)\n", visitor.Text());
}

TEST_F(Walker, GoesAsDeepAsTheLimit) {
    ASSERT_EQ(1000, PresLayerLimits::GetBagDepth());
    EXPECT_EQ(NestedTrace(1000), Trace(Nested(1000)));
    ExpectTooDeep([] { Trace(Nested(1001)); });
}

TEST_F(Walker, StopsAtABagThatHoldsItself) {
    const KnottedBag knot;
    ExpectTooDeep([&] { Trace(knot.bag); });
}

TEST_F(Walker, HasALimitThatTheHostSets) {
    const BagDepthScope scope(5);
    EXPECT_EQ(NestedTrace(5), Trace(Nested(5)));
    ExpectTooDeep([] { Trace(Nested(6)); });
}

TEST_F(Walker, StartsAfreshAfterAFailure) {
    const BagDepthScope scope(5);
    for (int i = 0; i < 10; ++i) {
        ExpectTooDeep([] { Trace(Nested(9)); });
        EXPECT_EQ(NestedTrace(5), Trace(Nested(5)));
    }
}

TEST_F(Walker, CountsDepthAndNotBags) {
    const BagDepthScope scope(3);
    registry.Add(L"bags", 100, 199, [](AbstractParamAdder& adder) {
        for (int id = 100; id <= 199; ++id) {
            adder.AddBag(id, (L"bag-" + std::to_wstring(id)).c_str());
        }
    });
    const auto bag = MakeBag();
    std::string expected;
    for (int id = 100; id <= 199; ++id) {
        bag->SetParameter(id, BagVal(MakeBag()));
        const std::string name = "bag-" + std::to_string(id);
        expected += "StartComposite(" + name + ", false)\nEndComposite(" + name + ")\n";
    }
    EXPECT_EQ(expected, Trace(bag));
}
