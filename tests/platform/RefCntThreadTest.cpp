#include <qvsys/RefCntPtr.h>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "support/Printing.h"

namespace {

class Value : public RefCntObject {
public:
    explicit Value(int& destroyed) : m_destroyed(destroyed) {}
    ~Value() override { ++m_destroyed; }

    const int content = 17;

private:
    int& m_destroyed;
};

TEST(RefCntPtrThread, EightThreadsShareOneObject) {
    int destroyed = 0;
    RefCntPtr<Value> shared(new Value(destroyed));
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([mine = shared] {
            for (int round = 0; round < 1000; ++round) {
                const RefCntPtr<Value> copy(mine);
                EXPECT_EQ(17, copy->content);
            }
        });
    }
    shared.Reset();
    for (std::thread& thread : threads) {
        thread.join();
    }
    threads.clear();
    EXPECT_EQ(1, destroyed);
}

}  // namespace
