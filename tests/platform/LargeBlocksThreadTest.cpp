// One large block is kept for all threads: nobody is handed what another one has.
#include <qvsys/LargeBlocks.h>

#include <cstring>

#include <gtest/gtest.h>

#include "support/Race.h"

using namespace qvsys::detail;

namespace {

TEST(LargeBlocksThread, EachBlockBelongsToOneThread) {
    constexpr int kRounds = 400;
    constexpr std::size_t kBytes = kLeastLargeBlock;
    int broken[4] = {};
    Race(4, [&broken](int thread) {
        for (int round = 0; round < kRounds; ++round) {
            const LargeBlock block = AllocateLargeBlock(kBytes, 2 * kBytes);
            auto* const bytes = static_cast<unsigned char*>(block.memory);
            const int mark = thread * 50 + round % 50;
            std::memset(bytes, mark, 4096);
            bytes[kBytes - 1] = static_cast<unsigned char>(mark);
            for (std::size_t at = 0; at < 4096; ++at) {
                broken[thread] += bytes[at] != mark ? 1 : 0;
            }
            broken[thread] += bytes[kBytes - 1] != mark ? 1 : 0;
            ReleaseLargeBlock(block.memory, block.bytes);
        }
    });
    for (const int count : broken) {
        EXPECT_EQ(0, count);
    }
    ReleaseKeptLargeBlock();
}

}  // namespace
