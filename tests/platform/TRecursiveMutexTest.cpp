#include <qvsys/TRecursiveMutex.h>

#include <gtest/gtest.h>

#include <future>
#include <mutex>
#include <type_traits>

#include "support/Printing.h"

namespace {

// Whether another thread could have the mutex now.
bool IsFree(TRecursiveMutex& mutex) {
    return std::async(std::launch::async,
                      [&] {
                          const std::unique_lock<TRecursiveMutex> lock(mutex, std::try_to_lock);
                          return lock.owns_lock();
                      })
        .get();
}

TEST(TRecursiveMutex, KeepsOthersOutWhileLocked) {
    TRecursiveMutex mutex;
    EXPECT_TRUE(IsFree(mutex));
    mutex.Lock();
    EXPECT_FALSE(IsFree(mutex));
    mutex.Unlock();
    EXPECT_TRUE(IsFree(mutex));
}

TEST(TRecursiveMutex, IsFreeAfterAsManyUnlocksAsLocks) {
    TRecursiveMutex mutex;
    mutex.Lock();
    mutex.Lock();
    EXPECT_TRUE(mutex.try_lock());
    mutex.Unlock();
    mutex.Unlock();
    EXPECT_FALSE(IsFree(mutex));
    mutex.Unlock();
    EXPECT_TRUE(IsFree(mutex));
}

TEST(TRecursiveMutex, WorksWithStandardGuards) {
    TRecursiveMutex mutex;
    {
        const std::lock_guard<TRecursiveMutex> guard(mutex);
        const std::unique_lock<TRecursiveMutex> again(mutex);
        EXPECT_FALSE(IsFree(mutex));
    }
    EXPECT_TRUE(IsFree(mutex));
}

TEST(TRecursiveMutex, IsNotCopyable) {
    EXPECT_FALSE(std::is_copy_constructible_v<TRecursiveMutex>);
    EXPECT_FALSE(std::is_copy_assignable_v<TRecursiveMutex>);
}

}  // namespace
