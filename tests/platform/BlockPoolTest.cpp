#include <qvsys/BlockPool.h>  // first: the header stands alone

#include <malloc.h>

#include <cstdint>
#include <cstring>
#include <future>
#include <new>
#include <random>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

using namespace qvsys::detail;

namespace {

// A block whose every byte holds a mark while it is in use: blocks that overlap show.
class Block {
public:
    Block(std::size_t bytes, unsigned char mark) : m_bytes(bytes), m_mark(mark), m_at(AllocateBlock(bytes)) {
        std::memset(m_at, mark, bytes);
    }
    Block(Block&& other) noexcept
        : m_bytes(other.m_bytes), m_mark(other.m_mark), m_at(std::exchange(other.m_at, nullptr)) {}
    Block& operator=(Block&& other) noexcept {
        std::swap(m_bytes, other.m_bytes);
        std::swap(m_mark, other.m_mark);
        std::swap(m_at, other.m_at);
        return *this;
    }
    ~Block() { Release(); }

    void* At() const { return m_at; }
    bool IsIntact() const {
        const auto* byte = static_cast<const unsigned char*>(m_at);
        for (std::size_t i = 0; i < m_bytes; ++i) {
            if (byte[i] != m_mark) {
                return false;
            }
        }
        return true;
    }
    void Release() {
        if (m_at != nullptr) {
            EXPECT_TRUE(IsIntact());
            ReleaseBlock(std::exchange(m_at, nullptr), m_bytes);
        }
    }

private:
    std::size_t m_bytes;
    unsigned char m_mark;
    void* m_at;
};

std::vector<Block> Blocks(std::size_t count, std::size_t bytes) {
    std::vector<Block> blocks;
    blocks.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        blocks.emplace_back(bytes, static_cast<unsigned char>(i));
    }
    return blocks;
}

template <class Work>
auto OnAnotherThread(Work work) {
    return std::async(std::launch::async, std::move(work)).get();
}

std::size_t BytesInUse() { return mallinfo2().uordblks + mallinfo2().hblkhd; }

}  // namespace

TEST(BlockPool, BlocksOfEverySizeAreApartAndAligned) {
    std::vector<Block> blocks;
    for (std::size_t bytes = 1; bytes <= kLargestKeptBlock + 100; ++bytes) {
        for (int i = 0; i < 3; ++i) {
            blocks.emplace_back(bytes, static_cast<unsigned char>(bytes + static_cast<std::size_t>(i)));
            EXPECT_EQ(0U, reinterpret_cast<std::uintptr_t>(blocks.back().At()) % 16) << bytes;
        }
    }
    for (const Block& block : blocks) {
        EXPECT_TRUE(block.IsIntact());
    }
}

TEST(BlockPool, NothingIsReleasedAsNothing) { ReleaseBlock(nullptr, 40); }

TEST(BlockPool, WhatIsAllocatedTogetherLiesTogether) {
    if (!KeepsBlocks()) {
        GTEST_SKIP() << "under a sanitizer every block is the allocator's own";
    }
    const std::vector<Block> blocks = OnAnotherThread([] { return Blocks(1000, 48); });
    int neighbours = 0;
    for (std::size_t i = 1; i < blocks.size(); ++i) {
        neighbours += static_cast<char*>(blocks[i].At()) - static_cast<char*>(blocks[i - 1].At()) == 48 ? 1 : 0;
    }
    EXPECT_GE(neighbours, 950);
}

TEST(BlockPool, AReleasedBlockIsTheNextOne) {
    if (!KeepsBlocks()) {
        GTEST_SKIP() << "under a sanitizer every block is the allocator's own";
    }
    Block first(40, 1);
    void* const at = first.At();
    first.Release();
    const Block second(33, 2);
    EXPECT_EQ(at, second.At());
}

TEST(BlockPool, BlocksInUseStayWhenKeptOnesAreFreed) {
    std::vector<Block> blocks;
    for (const std::size_t bytes : {std::size_t{24}, std::size_t{200}, kLargestKeptBlock}) {
        blocks.emplace_back(bytes, static_cast<unsigned char>(bytes));
    }
    ReleaseKeptBlocks();
    for (const Block& block : blocks) {
        EXPECT_TRUE(block.IsIntact());
    }
    const Block next(24, 9);
    EXPECT_NE(blocks.front().At(), next.At());
}

// Whether a thread ends in the middle of a slab or with a full one, its blocks stay until they are released.
TEST(BlockPool, BlocksStayWhenTheirThreadHasEnded) {
    for (std::size_t count = 1; count <= 700; ++count) {
        const std::vector<Block> blocks = OnAnotherThread([count] { return Blocks(count, 48); });
        for (const Block& block : blocks) {
            ASSERT_TRUE(block.IsIntact()) << count;
        }
    }
}

TEST(BlockPool, RandomOrderOfRandomSizes) {
    std::mt19937 random(7);
    std::vector<Block> blocks;
    for (int step = 0; step < 200'000; ++step) {
        if (blocks.size() < 3000 && random() % 2 == 0) {
            blocks.emplace_back(1 + random() % 600, static_cast<unsigned char>(random()));
        } else if (!blocks.empty()) {
            std::swap(blocks[random() % blocks.size()], blocks.back());
            blocks.pop_back();
        }
    }
}

TEST(BlockPool, KeepsNoMoreThanItsCap) {
    if (!KeepsBlocks()) {
        GTEST_SKIP() << "under a sanitizer every block is the allocator's own";
    }
    constexpr std::size_t kMiB = 1024 * 1024;
    ReleaseKeptBlocks();
    const std::size_t before = BytesInUse();
    {
        const std::vector<Block> blocks = Blocks(kMiB, 48);
        EXPECT_GE(BytesInUse(), before + 48 * kMiB);
    }
    EXPECT_LE(BytesInUse(), before + 10 * kMiB);
    ReleaseKeptBlocks();
    EXPECT_LE(BytesInUse(), before + kMiB / 2);
}

TEST(BlockPool, ASizeThatIsDoneGivesItsRoomToAnother) {
    if (!KeepsBlocks()) {
        GTEST_SKIP() << "under a sanitizer every block is the allocator's own";
    }
    ReleaseKeptBlocks();
    { const std::vector<Block> blocks = Blocks(50'000, 64); }
    const std::size_t kept = BytesInUse();
    const std::vector<Block> blocks = Blocks(25'000, 112);
    EXPECT_LE(BytesInUse(), kept + 25'000 * sizeof(Block) + 200'000);
}

// The owner finds what others released when it needs more.
TEST(BlockPool, BlocksThatAnotherThreadReleasedAreUsedAgain) {
    if (!KeepsBlocks()) {
        GTEST_SKIP() << "under a sanitizer every block is the allocator's own";
    }
    std::vector<Block> blocks = Blocks(20'000, 80);
    std::set<void*> known;
    for (const Block& block : blocks) {
        known.insert(block.At());
    }
    OnAnotherThread([&] { blocks.clear(); });
    blocks = Blocks(20'000, 80);
    std::size_t again = 0;
    for (const Block& block : blocks) {
        again += known.count(block.At());
    }
    EXPECT_GE(again, 19'000U);
}

TEST(BlockPool, BlocksOutliveTheirThread) {
    std::vector<Block> blocks = OnAnotherThread([] { return Blocks(5000, 32); });
    for (const Block& block : blocks) {
        EXPECT_TRUE(block.IsIntact());
    }
    // The next thread takes over what the first one left, while this one releases.
    std::promise<void> begun;
    std::thread next([&] {
        std::vector<Block> more = Blocks(2000, 32);
        begun.set_value();
        for (int round = 0; round < 50; ++round) {
            more = Blocks(2000, 32);
        }
    });
    begun.get_future().get();
    blocks.clear();
    next.join();
}

TEST(BlockPool, WhatAnEndedThreadLeftIsFreedBlockByBlock) {
    if (!KeepsBlocks()) {
        GTEST_SKIP() << "under a sanitizer every block is the allocator's own";
    }
    const std::size_t before = BytesInUse();
    std::vector<Block> blocks = OnAnotherThread([] { return Blocks(200'000, 48); });
    EXPECT_GE(BytesInUse(), before + 200'000 * 48);
    std::vector<Block>().swap(blocks);
    EXPECT_LE(BytesInUse(), before + 300'000);
}

TEST(BlockPool, BlocksPassBetweenManyThreads) {
    std::vector<Block> blocks;
    for (int round = 0; round < 20; ++round) {
        std::vector<std::future<std::vector<Block>>> results;
        std::vector<std::vector<Block>> parts(4);
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            parts[i % 4].push_back(std::move(blocks[i]));
        }
        blocks.clear();
        for (std::vector<Block>& part : parts) {
            results.push_back(std::async(std::launch::async, [&part] {
                std::vector<Block> made = Blocks(500, 48);
                part.clear();
                std::vector<Block> more = Blocks(500, 96);
                std::move(more.begin(), more.end(), std::back_inserter(made));
                return made;
            }));
        }
        for (auto& result : results) {
            std::vector<Block> made = result.get();
            std::move(made.begin(), made.end(), std::back_inserter(blocks));
        }
    }
    for (const Block& block : blocks) {
        EXPECT_TRUE(block.IsIntact());
    }
}

class Refusing {
public:
    QVSYS_USE_BLOCK_POOL
    Refusing() { throw 1; }
    Refusing(const Refusing&) = delete;
    Refusing& operator=(const Refusing&) = delete;
    virtual ~Refusing() = default;
};

// The memory goes back to where it came from when there is no object, also with blocks that are not kept about.
TEST(BlockPool, ObjectsThatAreNotMade) {
    const auto refuse = [] {
        EXPECT_THROW(new Refusing, int);
        EXPECT_THROW(new (std::nothrow) Refusing, int);
    };
    refuse();
    const std::vector<Block> blocks = Blocks(1000, sizeof(Refusing));
    {
        const KeepNoBlocks none;
        refuse();
    }
    refuse();
    for (const Block& block : blocks) {
        EXPECT_TRUE(block.IsIntact());
    }
}

TEST(BlockPool, KeptBlocksAndOthersMix) {
    std::vector<Block> before = Blocks(1000, 48);
    std::vector<Block> meanwhile;
    {
        const KeepNoBlocks none;
        EXPECT_FALSE(KeepsBlocks());
        meanwhile = Blocks(1000, 48);
        before.erase(before.begin() + 500, before.end());
    }
    std::vector<Block> after = Blocks(1000, 48);
    for (const auto* blocks : {&before, &meanwhile, &after}) {
        for (const Block& block : *blocks) {
            EXPECT_TRUE(block.IsIntact());
        }
    }
}
