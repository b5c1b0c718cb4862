// Filled bags read from many threads, and values shared among them.
#include <qvpreslayer/BaseParameters.h>

#include <atomic>
#include <vector>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"
#include "support/Race.h"

namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 2'000;

class Counter final : public IParameterVisitor {
public:
    void VisitParameter(int, const RefCntPtr<IParameter>& value) override { m_count += value->IsNull() ? 0 : 1; }
    int Count() const { return m_count; }

private:
    int m_count = 0;
};

// A value whose end may come on any thread.
class SharedValue final : public IParameter {
public:
    explicit SharedValue(std::atomic<int>& ends) : m_ends(ends) {}
    ~SharedValue() override { ++m_ends; }

private:
    std::atomic<int>& m_ends;
};

}  // namespace

TEST(BaseParametersThread, AFilledBagIsReadFromManyThreads) {
    const auto filled = MakeBag({{1, Text(L"a")}, {2, Val(5)}, {-1, BagVal(MakeBag({{1, Text(L"inner")}}))}});
    filled->SetCacheParameter(9, Text(L"cached"));
    const RefCntPtr<const TestBag> bag(filled);
    std::atomic<int> right{0};
    Race(kThreads, [&](int) {
        for (int i = 0; i < kRounds; ++i) {
            Counter counter;
            bag->Accept(counter);
            right += counter.Count() == 3 && bag->HasParameter(2) && !bag->HasParameter(9) &&
                     GetParameterValue<int>(*bag, 2) == 5 &&
                     GetParameterValue<TString>(&bag->GetCacheParameter(9)) == L"cached";
        }
    });
    EXPECT_EQ(kThreads * kRounds, right);
}

TEST(BaseParametersThread, ManyThreadsCloneOneBag) {
    const RefCntPtr<const TestBag> bag(MakeBag({{1, Text(L"a")}, {2, Val(5)}}));
    std::atomic<int> right{0};
    Race(kThreads, [&](int thread) {
        for (int i = 0; i < kRounds; ++i) {
            const auto clone = bag->Clone();
            clone->SetParameter(3, Val(thread));
            right += GetParameterValue<int>(*clone, 3) == thread && &clone->GetParameter(1) == &bag->GetParameter(1);
        }
    });
    EXPECT_EQ(kThreads * kRounds, right);
    EXPECT_FALSE(bag->HasParameter(3));
}

TEST(BaseParametersThread, ASharedValueEndsOnceWhoeverHoldsItLast) {
    for (int round = 0; round < 200; ++round) {
        std::atomic<int> ends{0};
        std::vector<RefCntPtr<TestBag>> bags;
        {
            const RefCntPtr<IParameter> value(new SharedValue(ends));
            for (int i = 0; i < kThreads; ++i) {
                bags.push_back(MakeBag({{i, value}}));
            }
        }
        Race(kThreads, [&](int thread) {
            auto& bag = bags[static_cast<std::size_t>(thread)];
            auto copy = bag->Clone();
            bag.Reset();
            copy->RemoveParameter(thread);
        });
        EXPECT_EQ(1, ends);
    }
}

TEST(BaseParametersThread, LongChainsAreFreedSideBySide) {
    std::atomic<int> ends{0};
    Race(kThreads, [&](int) {
        auto chain = MakeBag();
        for (int i = 0; i < kRounds; ++i) {
            chain = MakeBag({{1, BagVal(chain)}, {2, RefCntPtr<IParameter>(new SharedValue(ends))}});
        }
        chain.Reset();
    });
    EXPECT_EQ(kThreads * kRounds, ends);
}
