// Identifiers of many namespaces, in ranges of any size, registered in any order, against a plain list of ranges.
#include <algorithm>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "support/TestHost.h"

namespace {

struct Range {
    int first;
    int last;
};

TString NameOf(const Range& range) { return TString(L"from-") + TString::number(range.first); }

// Each namespace gives names to the ends of its range.
void Register(TestRegistry& registry, const Range& range) {
    registry.Add(NameOf(range), range.first, range.last, [range](AbstractParamAdder& adder) {
        adder.AddSimple(range.first, NameOf(range).ToStdWString().c_str(), new ParameterTypeSerializer<int>);
        if (range.first != range.last) {
            const std::wstring last = NameOf(range).ToStdWString() + L"-last";
            adder.AddSimple(range.last, last.c_str(), new ParameterTypeSerializer<int>);
        }
    });
}

void ExpectKnown(const TestRegistry& registry, int id, const Range* range) {
    const ParameterInfo* info = registry.FindInfo(id);
    const bool isEnd = range != nullptr && (id == range->first || id == range->last);
    ASSERT_EQ(isEnd, info != nullptr) << id;
    if (isEnd) {
        EXPECT_EQ(id, info->id);
    }
}

// Every end of a range, its neighbours, and the ends of all identifiers.
void ExpectOnly(const TestRegistry& registry, std::vector<Range> ranges) {
    std::sort(ranges.begin(), ranges.end(), [](const Range& a, const Range& b) { return a.first < b.first; });
    std::vector<int> ids = {std::numeric_limits<int>::min(), -1, 0, 1, std::numeric_limits<int>::max()};
    for (const Range& range : ranges) {
        for (const int end : {range.first, range.last}) {
            ids.push_back(end);
            ids.push_back(end == std::numeric_limits<int>::min() ? end : end - 1);
            ids.push_back(end == std::numeric_limits<int>::max() ? end : end + 1);
        }
    }
    for (const int id : ids) {
        const auto range =
            std::find_if(ranges.begin(), ranges.end(), [id](const Range& r) { return r.first <= id && id <= r.last; });
        ExpectKnown(registry, id, range == ranges.end() ? nullptr : &*range);
    }
}

// Disjoint ranges of very different sizes, upwards.
std::vector<Range> MakeRanges(std::size_t count, std::int64_t begin, std::int64_t widest, std::mt19937_64& random) {
    std::vector<Range> ranges;
    for (std::int64_t at = begin; ranges.size() < count;) {
        const auto size =
            static_cast<std::int64_t>(random() % 4 == 0 ? random() % static_cast<std::uint64_t>(widest) : random() % 8);
        if (at + size > std::numeric_limits<int>::max()) {
            break;
        }
        ranges.push_back({static_cast<int>(at), static_cast<int>(at + size)});
        at +=
            size + 1 + static_cast<std::int64_t>(random() % 3 == 0 ? random() % static_cast<std::uint64_t>(widest) : 0);
    }
    return ranges;
}

}  // namespace

TEST(ManyNamespaces, RegisteredUpwards) {
    std::mt19937_64 random(1);
    TestRegistry registry;
    std::vector<Range> registered;
    for (const Range& range : MakeRanges(300, -5000, 1000, random)) {
        Register(registry, range);
        registered.push_back(range);
        if (registered.size() < 40 || registered.size() % 37 == 0) {
            ExpectOnly(registry, registered);
        }
    }
    ExpectOnly(registry, registered);
}

TEST(ManyNamespaces, RegisteredInAnyOrder) {
    std::mt19937_64 random(2);
    std::vector<Range> ranges = MakeRanges(300, std::numeric_limits<int>::min(), 20'000'000, random);
    std::shuffle(ranges.begin(), ranges.end(), random);
    TestRegistry registry;
    std::vector<Range> registered;
    for (const Range& range : ranges) {
        Register(registry, range);
        registered.push_back(range);
        if (registered.size() < 20 || registered.size() % 61 == 0) {
            ExpectOnly(registry, registered);
        }
    }
    ExpectOnly(registry, registered);
}

TEST(ManyNamespaces, AtTheEndsOfAllIdentifiers) {
    constexpr int kMin = std::numeric_limits<int>::min();
    constexpr int kMax = std::numeric_limits<int>::max();
    TestRegistry registry;
    std::vector<Range> registered;
    for (const Range& range : {Range{kMax, kMax}, Range{kMin, kMin}, Range{kMin + 1, -2}, Range{2, kMax - 1},
                               Range{0, 0}, Range{-1, -1}, Range{1, 1}}) {
        Register(registry, range);
        registered.push_back(range);
        ExpectOnly(registry, registered);
    }
}

TEST(ManyNamespaces, SomeAreCleared) {
    std::mt19937_64 random(3);
    std::vector<Range> ranges = MakeRanges(60, 1, 500, random);
    TestRegistry registry;
    for (const Range& range : ranges) {
        Register(registry, range);
    }
    while (!ranges.empty()) {
        const std::size_t cleared = random() % ranges.size();
        registry.Clear(NameOf(ranges[cleared]));
        ranges.erase(ranges.begin() + static_cast<std::ptrdiff_t>(cleared));
        ExpectOnly(registry, ranges);
    }
}
