// One large block is kept for all threads: nobody is handed what another one has.
#include <qvsys/LargeBlocks.h>

#include <cstddef>

#include <gtest/gtest.h>

#include <qvsys/BlockPool.h>

#include "support/Race.h"

using namespace qvsys::detail;

namespace {

TEST(LargeBlocksThread, EachBlockBelongsToOneThread) {
    const int rounds = KeepsBlocks() ? 30000 : 300;  // under a sanitizer each one is the allocator's own
    constexpr std::size_t kBytes = kLeastLargeBlock;
    int broken[4] = {};
    Race(4, [&broken, rounds](int thread) {
        for (int round = 0; round < rounds; ++round) {
            const LargeBlock block = AllocateLargeBlock(kBytes, 2 * kBytes);
            auto* const mark = static_cast<volatile int*>(block.memory);
            *mark = thread;
            for (int look = 0; look < 20; ++look) {
                broken[thread] += *mark != thread ? 1 : 0;
            }
            ReleaseLargeBlock(block.memory, block.bytes);
        }
    });
    for (const int count : broken) {
        EXPECT_EQ(0, count);
    }
    ReleaseKeptLargeBlock();
}

}  // namespace
