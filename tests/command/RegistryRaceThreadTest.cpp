// First lookups raced by 2 to 64 threads. scripts/soak runs 10,000 rounds.
#include <qvpreslayer/ParametersRegistry.h>

#include <array>
#include <atomic>
#include <memory>
#include <stdexcept>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"
#include "support/Races.h"

namespace {

constexpr int kThreadCounts[] = {2, 3, 4, 8, 16, 32, 64};
constexpr int kParts = 2;

int RoundsFor(int threads) {
    const int all = NumberFrom("QVPRESLAYER_SOAK_ROUNDS", 2100);
    return all / static_cast<int>(std::size(kThreadCounts)) + (threads == 2 ? all % 7 : 0);
}

// Two namespaces in two parts each, one falling back to the other, which looks the first one up while it is filled.
class RacedRegistry final : public TestRegistry {
public:
    explicit RacedRegistry(bool failsFirst = false) : m_mayFail(failsFirst) {
        AddParts(L"one", 1);
        AddParts(L"two", 101);
        RegisterNamespacePart(
            L"two",
            [this](AbstractParamAdder& adder) {
                if (m_mayFail.exchange(false)) {
                    throw std::runtime_error("not yet");
                }
                adder.AddBag(150 + GetID(L"one", L"first", true), L"follows");
            },
            101, 200);
        SetFallback(L"one", L"two");
    }

    // What every thread must find, by a way of its own.
    bool FindsEverything(int thread) const {
        switch (thread % 6) {
            case 0:
                return GetID(L"one", L"first", true) == 1 && GetID(L"one", L"follows", true) == 151;
            case 1:
                return GetType(102) == PTC_List && GetName(102, true) == L"second" && GetType(1) == PTC_Text;
            case 2:
                return FindInfo(151) != nullptr && FindInfo(2) != nullptr && FindInfo(3) == nullptr;
            case 3:
                return GetListSerializer(2) != nullptr && GetValueString(Text(L"x"), 101) == L"x";
            case 4:
                return GetNamespaceInfos().at(1).second.size() == 3 && FindNames(L"one", true) != nullptr;
            default: {
                const auto bag = MakeBag();
                FromString(L"one", bag, L"first", L"x", true);
                return GetParameterValue<TString>(*bag, 1) == L"x" && GetType(151) == PTC_Bag;
            }
        }
    }

    std::array<std::atomic<int>, 2 * kParts> runs{};

private:
    void AddParts(const TString& name, int first) {
        auto* const counts = &runs[first == 1 ? 0 : kParts];
        RegisterNamespacePart(
            name,
            [=](AbstractParamAdder& adder) {
                ++counts[0];
                adder.AddSimple(first, L"first", TextSerializer());
            },
            first, first + 99);
        RegisterNamespacePart(
            name,
            [=](AbstractParamAdder& adder) {
                ++counts[1];
                adder.AddList(first + 1, L"second", IntSerializer());
            },
            first, first + 99);
    }

    std::atomic<bool> m_mayFail;
};

}  // namespace

TEST(RegistryRaceThread, EachFunctionRunsOnceAndAllSeeItsEntries) {
    for (const int threads : kThreadCounts) {
        std::unique_ptr<RacedRegistry> registry;
        std::atomic<int> right{0};
        int rounds = 0;
        RaceRounds(
            threads, RoundsFor(threads),
            [&](int) {
                registry.reset();  // before the next one publishes itself
                registry = std::make_unique<RacedRegistry>();
                right = 0;
            },
            [&](int thread) { right += registry->FindsEverything(thread); },
            [&](int) {
                ++rounds;
                EXPECT_EQ(threads, right);
                for (const auto& count : registry->runs) {
                    EXPECT_EQ(1, count);
                }
            });
        EXPECT_EQ(RoundsFor(threads), rounds);
    }
}

// One thread gets the failure; of the others, those whose way leads there fill the namespace once more, together.
TEST(RegistryRaceThread, AFailedFillingIsRepeatedOnce) {
    for (const int threads : kThreadCounts) {
        std::unique_ptr<RacedRegistry> registry;
        std::atomic<int> right{0};
        std::atomic<int> failures{0};
        RaceRounds(
            threads, RoundsFor(threads) / 4,
            [&](int) {
                registry.reset();
                registry = std::make_unique<RacedRegistry>(true);
                right = 0;
                failures = 0;
            },
            [&](int thread) {
                try {
                    right += registry->FindsEverything(thread);
                } catch (const std::runtime_error&) {
                    ++failures;
                }
            },
            [&](int) {
                EXPECT_EQ(1, failures);
                EXPECT_EQ(threads - 1, right);
                EXPECT_TRUE(registry->FindsEverything(0));
                EXPECT_EQ(1, registry->runs[0]);
                EXPECT_EQ(2, registry->runs[kParts]);
            });
    }
}
