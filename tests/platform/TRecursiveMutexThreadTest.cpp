#include <qvsys/TRecursiveMutex.h>

#include <gtest/gtest.h>

#include <mutex>
#include <thread>
#include <vector>

#include "support/Printing.h"

namespace {

TEST(TRecursiveMutexThread, MakesChangesOneAfterTheOther) {
    TRecursiveMutex mutex;
    int count = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 1000; ++round) {
                const std::lock_guard<TRecursiveMutex> outer(mutex);
                const std::lock_guard<TRecursiveMutex> inner(mutex);
                ++count;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(4000, count);
}

}  // namespace
