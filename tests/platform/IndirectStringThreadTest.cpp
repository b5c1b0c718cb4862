#include <qvcore/IndirectString.h>

#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "support/Printing.h"

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 3'000;

// Runs work(thread number) on several threads that start together.
template <class Work>
void RunTogether(Work work) {
    std::atomic<bool> go = false;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&go, work, i] {
            while (!go) {
                std::this_thread::yield();
            }
            work(i);
        });
    }
    go = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
}

// Texts come and go while other threads look the same ones up: every answer holds the right text all the same.
TEST(IndirectStringThread, TextsMayComeAndGoOnSeveralThreads) {
    const std::size_t before = IndirectString::GetTableSize();
    std::atomic<int> wrong = 0;
    RunTogether([&wrong](int) {
        const Collation root(u"root");
        for (int i = 0; i < kRounds; ++i) {
            const TString text = TString::number(i % 3);
            const IndirectString string = IndirectString::Lookup(root, text);
            const IndirectString copy = string;
            if (copy.GetText() != text || copy.GetCollation() != root) {
                ++wrong;
            }
        }
    });
    EXPECT_EQ(0, wrong);
    EXPECT_EQ(before, IndirectString::GetTableSize());
}

TEST(IndirectStringThread, ThreadsShareOneText) {
    std::vector<IndirectString> strings(kThreads);
    RunTogether([&strings](int thread) {
        strings[static_cast<std::size_t>(thread)] = IndirectString::Lookup(Collation(u"root"), u"one for all");
    });
    for (const IndirectString& string : strings) {
        EXPECT_EQ(&strings.front().GetText(), &string.GetText());
    }
    EXPECT_EQ(TString(u"one for all"), strings.front().GetText());
}

TEST(IndirectStringThread, CopiesOfOneStringMayGoOnSeveralThreads) {
    const std::size_t before = IndirectString::GetTableSize();
    {
        IndirectString source = IndirectString::Lookup(Collation(u"root"), u"copied everywhere");
        RunTogether([source](int) {
            for (int i = 0; i < kRounds; ++i) {
                IndirectString copy = source;
                IndirectString next = copy;
            }
        });
        EXPECT_EQ(before + 1, IndirectString::GetTableSize());
    }
    EXPECT_EQ(before, IndirectString::GetTableSize());
}

TEST(IndirectStringThread, CollationsMayComeAndGoOnSeveralThreads) {
    std::atomic<int> wrong = 0;
    RunTogether([&wrong](int) {
        for (int i = 0; i < kRounds; ++i) {
            const Collation collation(u"comes-and-goes", i % 2);
            if (collation != Collation(u"comes-and-goes", i % 2) || collation.GetFlags() != i % 2) {
                ++wrong;
            }
        }
    });
    EXPECT_EQ(0, wrong);
}

}  // namespace
