#include <qvsys/LargeBlocks.h>  // first: the header stands alone

#include <cstdlib>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <qvcore/TString.h>

#include <qvsys/BlockPool.h>

using namespace qvsys::detail;

namespace {

constexpr std::size_t kMegabyte = std::size_t{1} << 20;

class LargeBlocks : public testing::Test {
protected:
    LargeBlocks() { ReleaseKeptLargeBlock(); }
    ~LargeBlocks() override { ReleaseKeptLargeBlock(); }

    void SetUp() override {
        if (!KeepsBlocks()) {
            GTEST_SKIP() << "sanitizers are to see every block";
        }
    }

    // What was asked for is what there is: nothing that was kept was at hand.
    static void ExpectNoneKept(std::size_t bytes) {
        const LargeBlock block = AllocateLargeBlock(bytes, bytes + bytes / 4);
        EXPECT_EQ(bytes, block.bytes);
        std::free(block.memory);
    }

    // The block that is kept has so many bytes more than are asked for.
    static void ExpectKept(std::size_t bytes, std::size_t more) {
        const LargeBlock block = AllocateLargeBlock(bytes, bytes + bytes / 4);
        EXPECT_EQ(bytes + more, block.bytes);
        std::free(block.memory);
    }

    static void Keep(std::size_t bytes) { ReleaseLargeBlock(std::malloc(bytes), bytes); }
};

TEST_F(LargeBlocks, HandsOutWhatIsAskedFor) { ExpectNoneKept(2 * kMegabyte); }

TEST_F(LargeBlocks, KeepsTheLastOne) {
    Keep(2 * kMegabyte);
    const LargeBlock second = AllocateLargeBlock(3 * kMegabyte, 3 * kMegabyte);
    const LargeBlock first = AllocateLargeBlock(2 * kMegabyte, 2 * kMegabyte);
    ReleaseLargeBlock(first.memory, first.bytes);
    ReleaseLargeBlock(second.memory, second.bytes);
    const LargeBlock third = AllocateLargeBlock(3 * kMegabyte, 3 * kMegabyte);
    EXPECT_EQ(second.memory, third.memory);
    EXPECT_EQ(3 * kMegabyte, third.bytes);
    std::free(third.memory);
    ExpectNoneKept(2 * kMegabyte);
}

TEST_F(LargeBlocks, GivesNoMoreThanWasAllowed) {
    Keep(5 * kMegabyte);
    ExpectKept(4 * kMegabyte, kMegabyte);
    Keep(5 * kMegabyte);
    ExpectNoneKept(4 * kMegabyte - 1);
    ExpectKept(5 * kMegabyte - 1, 1);  // which was kept all the same
}

TEST_F(LargeBlocks, GivesNothingThatIsTooSmall) {
    Keep(2 * kMegabyte);
    ExpectNoneKept(2 * kMegabyte + 1);
    ExpectKept(2 * kMegabyte, 0);
}

TEST_F(LargeBlocks, KeepsNeitherSmallOnesNorHugeOnes) {
    Keep(2 * kMegabyte + 1);
    Keep(kLeastLargeBlock - 1);
    ExpectNoneKept(kLeastLargeBlock - 2);
    Keep(kMostLargeBlock + 1);
    ExpectNoneKept(kMostLargeBlock);
    ExpectKept(2 * kMegabyte, 1);  // still there
    Keep(kLeastLargeBlock);
    ExpectKept(kLeastLargeBlock, 0);
    Keep(kMostLargeBlock);
    ExpectKept(kMostLargeBlock - 1, 1);
}

TEST_F(LargeBlocks, LetsGoWhenAsked) {
    Keep(2 * kMegabyte + 1);
    ReleaseKeptLargeBlock();
    ExpectNoneKept(2 * kMegabyte);
    Keep(2 * kMegabyte + 1);
    ReleaseKeptBlocks();
    ExpectNoneKept(2 * kMegabyte);
}

TEST_F(LargeBlocks, KeepsNoneForAThreadThatKeepsNoBlocks) {
    const KeepNoBlocks none;
    Keep(2 * kMegabyte + 1);
    ExpectNoneKept(2 * kMegabyte);
}

TEST_F(LargeBlocks, ReleasingNothingKeepsNothing) {
    Keep(2 * kMegabyte + 1);
    ReleaseLargeBlock(nullptr, 3 * kMegabyte);
    ExpectKept(2 * kMegabyte, 1);
}

// The memory of one text becomes that of the next, which holds what was written into it and nothing else.
TEST_F(LargeBlocks, TextsTakeThem) {
    const char16_t* memory = nullptr;
    {
        const TString text(std::u16string(kMegabyte, u'a'));
        memory = text.data();
    }
    TString other(std::u16string(kMegabyte - 100, u'b'));
    EXPECT_EQ(memory, other.data());
    EXPECT_EQ(std::u16string(kMegabyte - 100, u'b'), std::u16string(other.view()));
    // All of the memory is the text's, but for the NUL behind it.
    EXPECT_EQ(kMegabyte + 15, other.capacity());
    other.append(other.capacity() - other.size(), u'c');
    EXPECT_EQ(memory, other.data());
    EXPECT_EQ(u'\0', other.data()[other.size()]);
    EXPECT_EQ(std::u16string(kMegabyte - 100, u'b') + std::u16string(115, u'c'), std::u16string(other.view()));
}

// Nobody asked for four times as much.
TEST_F(LargeBlocks, ShortTextsLeaveThem) {
    { const TString text(std::u16string(4 * kMegabyte, u'a')); }
    const TString copy(std::u16string(kMegabyte, u'b'));
    TString grown;
    grown.reserve(kMegabyte);
    EXPECT_EQ(kMegabyte + 15, copy.capacity());
    EXPECT_EQ(kMegabyte + 15, grown.capacity());
}

// From a block of the allocator's that is too small to be kept.
TEST_F(LargeBlocks, LongerTextsGrowIntoThem) {
    const char16_t* memory = nullptr;
    {
        TString text;
        text.reserve(kMegabyte);
        memory = text.data();
    }
    TString grown(std::u16string(100000, u'g'));
    grown.reserve(kMegabyte);
    EXPECT_EQ(memory, grown.data());
    EXPECT_EQ(std::u16string(100000, u'g'), std::u16string(grown.view()));
}

TEST_F(LargeBlocks, TextsGrowIntoThem) {
    const char16_t* memory = nullptr;
    {
        TString text;
        text.reserve(kMegabyte);
        memory = text.data();
    }
    TString grown(u"beginning of a text that has its memory for itself");
    const std::u16string beginning(grown.view());
    grown.reserve(kMegabyte);
    EXPECT_EQ(memory, grown.data());
    EXPECT_EQ(beginning, std::u16string(grown.view()));
    // From there on it is lengthened.
    grown.append(3 * kMegabyte, u'x');
    EXPECT_EQ(beginning + std::u16string(3 * kMegabyte, u'x'), std::u16string(grown.view()));
}

}  // namespace
