#include <qvcore/Tuple.h>

#include <pthread.h>

#include <atomic>
#include <functional>
#include <utility>

#include <gtest/gtest.h>

#include "support/Printing.h"

namespace {

constexpr int kDepth = 1'000'000;
constexpr std::size_t kSmallStack = 256 * 1024;

RefCntPtr<Tuple> MakeTuple(std::vector<DataValue> values) { return MakeRefCnt<Tuple>(std::move(values)); }

// A tuple in a tuple, depth times, around innermost.
RefCntPtr<Tuple> MakeChain(int depth, const DataValue& innermost) {
    RefCntPtr<Tuple> tuple = MakeTuple({innermost});
    for (int i = 1; i < depth; ++i) {
        tuple = MakeTuple({std::move(tuple)});
    }
    return tuple;
}

void* RunWork(void* work) {
    (*static_cast<std::function<void()>*>(work))();
    return nullptr;
}

// Runs work to its end on a stack of 256 KiB.
void RunOnSmallStack(std::function<void()> work) {
    pthread_attr_t attributes;
    ASSERT_EQ(0, pthread_attr_init(&attributes));
    ASSERT_EQ(0, pthread_attr_setstacksize(&attributes, kSmallStack));
    pthread_t thread;
    ASSERT_EQ(0, pthread_create(&thread, &attributes, RunWork, &work));
    ASSERT_EQ(0, pthread_join(thread, nullptr));
    pthread_attr_destroy(&attributes);
}

// Tells when it is destroyed.
class WatchedTuple : public Tuple {
public:
    WatchedTuple(std::vector<DataValue> values, int& destroyed) : Tuple(std::move(values)), m_destroyed(destroyed) {}
    ~WatchedTuple() override { ++m_destroyed; }

private:
    int& m_destroyed;
};

TEST(Tuple, KeepsValuesInOrder) {
    const RefCntPtr<Tuple> tuple = MakeTuple({3, 1.5, true, DataValue()});
    ASSERT_EQ(4u, tuple->GetValues().size());
    EXPECT_EQ(DataValue(3), tuple->GetValues()[0]);
    EXPECT_EQ(DataValue(1.5), tuple->GetValues()[1]);
    EXPECT_EQ(DataValue(true), tuple->GetValues()[2]);
    EXPECT_EQ(DataValue(), tuple->GetValues()[3]);
}

TEST(Tuple, MayBeEmpty) { EXPECT_TRUE(MakeTuple({})->GetValues().empty()); }

TEST(Tuple, IsSharedByCopiesOfItsValue) {
    int destroyed = 0;
    {
        DataValue copy;
        {
            const DataValue value(RefCntPtr<Tuple>(new WatchedTuple({1}, destroyed)));
            copy = value;
            EXPECT_EQ(value.GetTuple(), copy.GetTuple());
        }
        EXPECT_EQ(0, destroyed);
        EXPECT_EQ(DataValue(1), copy.GetTuple()->GetValues()[0]);
    }
    EXPECT_EQ(1, destroyed);
}

TEST(Tuple, IsDestroyedBeforeItsHolderIsGone) {
    constexpr int kLevels = 1'000;  // deep enough that some are put aside
    int destroyed = 0;
    RefCntPtr<Tuple> tuple(new WatchedTuple({}, destroyed));
    for (int i = 1; i < kLevels; ++i) {
        tuple = RefCntPtr<Tuple>(new WatchedTuple({std::move(tuple), i}, destroyed));
    }
    EXPECT_EQ(0, destroyed);
    tuple.Reset();
    EXPECT_EQ(kLevels, destroyed);
}

TEST(Tuple, SharedInnerTupleOutlivesADeepOuterOne) {
    const RefCntPtr<Tuple> inner = MakeTuple({7});
    RefCntPtr<Tuple> outer = MakeTuple({inner});
    for (int i = 0; i < 200; ++i) {
        outer = MakeTuple({outer, inner});
    }
    outer.Reset();
    EXPECT_EQ(DataValue(7), inner->GetValues()[0]);
}

TEST(Tuple, DeepChainIsFreedOnASmallStack) {
    std::atomic<bool> done = false;
    RunOnSmallStack([&done] {
        RefCntPtr<Tuple> chain = MakeChain(kDepth, 1);
        chain.Reset();
        done = true;
    });
    EXPECT_TRUE(done);
}

TEST(Tuple, DeepChainsCompareAndHashOnASmallStack) {
    std::atomic<bool> equal = false;
    std::atomic<bool> different = false;
    std::atomic<bool> less = false;
    std::atomic<bool> sameHash = false;
    RunOnSmallStack([&] {
        const DataValue one(MakeChain(kDepth / 4, 1));
        const DataValue otherOne(MakeChain(kDepth / 4, 1));
        const DataValue two(MakeChain(kDepth / 4, 2));
        equal = one == otherOne;
        different = one != two;
        less = one < two;
        sameHash = std::hash<DataValue>()(one) == std::hash<DataValue>()(otherOne);
    });
    EXPECT_TRUE(equal);
    EXPECT_TRUE(different);
    EXPECT_TRUE(less);
    EXPECT_TRUE(sameHash);
}

TEST(Tuple, ComparesByValues) {
    EXPECT_EQ(DataValue(MakeTuple({1, 2})), DataValue(MakeTuple({1, 2})));
    EXPECT_NE(DataValue(MakeTuple({1, 2})), DataValue(MakeTuple({2, 1})));
    EXPECT_NE(DataValue(MakeTuple({1})), DataValue(MakeTuple({1, 1})));
    EXPECT_NE(DataValue(MakeTuple({1})), DataValue(MakeTuple({1.0})));
    EXPECT_EQ(DataValue(MakeTuple({})), DataValue(MakeTuple({})));
    EXPECT_EQ(DataValue(MakeTuple({0.0})), DataValue(MakeTuple({-0.0})));
}

TEST(Tuple, OrdersByTheFirstDifferenceThenByLength) {
    const RefCntPtr<Tuple> ascending[] = {
        MakeTuple({}),
        MakeTuple({1}),
        MakeTuple({1, MakeTuple({})}),
        MakeTuple({1, MakeTuple({5, 9})}),
        MakeTuple({1, MakeTuple({6})}),
        MakeTuple({1, MakeTuple({6}), 0}),
        MakeTuple({2}),
    };
    for (std::size_t i = 0; i < std::size(ascending); ++i) {
        for (std::size_t j = 0; j < std::size(ascending); ++j) {
            SCOPED_TRACE(i * 100 + j);
            EXPECT_EQ(i < j, DataValue(ascending[i]) < DataValue(ascending[j]));
        }
    }
}

TEST(Tuple, EqualTuplesHashAlike) {
    EXPECT_EQ(MakeTuple({1, MakeTuple({0.0})})->GetHash(), MakeTuple({1, MakeTuple({-0.0})})->GetHash());
    EXPECT_NE(MakeTuple({1, 2})->GetHash(), MakeTuple({2, 1})->GetHash());
}

}  // namespace
