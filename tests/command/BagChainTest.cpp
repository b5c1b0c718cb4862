#include <qvpreslayer/BaseParameters.h>

#include <vector>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"
#include "support/SmallStack.h"

namespace {

constexpr int kLength = 1'000'000;
constexpr int kInner = 1;
constexpr int kCounted = 2;

// A bag in a bag in a bag, and so on; add puts the bag so far into the next one.
template <class Add>
RefCntPtr<TestBag> Chain(int length, Add add) {
    auto outer = MakeBag();
    for (int i = 1; i < length; ++i) {
        auto next = MakeBag();
        add(*next, outer);
        outer = next;
    }
    return outer;
}

void AddAsParameter(TestBag& next, const RefCntPtr<TestBag>& bag) { next.SetParameter(kInner, BagVal(bag)); }

}  // namespace

TEST(BagChain, ALongOneIsFreed) {
    int alive = 0;
    auto chain = Chain(kLength, [&](TestBag& next, const RefCntPtr<TestBag>& bag) {
        AddAsParameter(next, bag);
        next.SetParameter(kCounted, RefCntPtr<IParameter>(new CountedValue(alive)));
    });
    ASSERT_EQ(kLength - 1, alive);
    chain.Reset();
    EXPECT_EQ(0, alive);
}

TEST(BagChain, ALongOneThroughTheCacheIsFreed) {
    int alive = 0;
    auto chain = Chain(kLength, [&](TestBag& next, const RefCntPtr<TestBag>& bag) {
        next.SetCacheParameter(kInner, BagVal(bag));
        next.SetCacheParameter(kCounted, RefCntPtr<IParameter>(new CountedValue(alive)));
    });
    chain.Reset();
    EXPECT_EQ(0, alive);
}

TEST(BagChain, ALongOneThroughListsIsFreed) {
    int alive = 0;
    auto chain = Chain(kLength / 10, [&](TestBag& next, const RefCntPtr<TestBag>& bag) {
        using Bags = std::vector<RefCntPtr<const IParameters>>;
        next.SetParameter(kInner, Val(Bags{RefCntPtr<const IParameters>(bag)}));
        next.SetParameter(kCounted, RefCntPtr<IParameter>(new CountedValue(alive)));
    });
    chain.Reset();
    EXPECT_EQ(0, alive);
}

TEST(BagChain, ALongOneIsFreedOnASmallStack) {
    int alive = 0;
    auto chain = Chain(kLength / 10, [&](TestBag& next, const RefCntPtr<TestBag>& bag) {
        AddAsParameter(next, bag);
        next.SetParameter(kCounted, RefCntPtr<IParameter>(new CountedValue(alive)));
    });
    OnSmallStack([&] { chain.Reset(); });
    EXPECT_EQ(0, alive);
}

TEST(BagChain, APartThatSomebodyHoldsStays) {
    auto held = MakeBag({{kCounted, Text(L"kept")}});
    auto chain = Chain(10'000, [&](TestBag& next, const RefCntPtr<TestBag>& bag) { AddAsParameter(next, bag); });
    chain->SetParameter(kCounted, BagVal(held));
    chain.Reset();
    EXPECT_EQ(L"kept", GetParameterValue<TString>(*held, kCounted));
}

TEST(BagChain, ReplacingTheInnerBagFreesTheOldChain) {
    int alive = 0;
    auto chain = Chain(1'000, [&](TestBag& next, const RefCntPtr<TestBag>& bag) {
        AddAsParameter(next, bag);
        next.SetParameter(kCounted, RefCntPtr<IParameter>(new CountedValue(alive)));
    });
    ASSERT_EQ(999, alive);
    chain->SetParameter(kInner, nullptr);
    EXPECT_EQ(1, alive);
}
