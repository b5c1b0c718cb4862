// First lookups that race.
#include <qvpreslayer/ParametersRegistry.h>

#include <array>
#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"
#include "support/Race.h"

namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 50;
constexpr int kNamespaces = 40;

}  // namespace

TEST(RegistryFillingThread, EachFunctionRunsOnce) {
    for (int round = 0; round < kRounds; ++round) {
        TestRegistry registry;
        std::array<std::atomic<int>, 2> runs{};
        for (auto& count : runs) {
            registry.RegisterNamespacePart(
                L"n",
                [&](AbstractParamAdder& adder) {
                    ++count;
                    adder.AddSimple(1, L"title", L"ti", TextSerializer());
                },
                1, 9);
        }
        std::atomic<int> right{0};
        Race(kThreads, [&](int thread) {
            const bool byName = thread % 2 == 0;
            right += byName ? registry.GetID(L"n", L"title", true) == 1 : registry.GetName(1, true) == L"title";
        });
        EXPECT_EQ(kThreads, right);
        EXPECT_EQ(1, runs[0]);
        EXPECT_EQ(1, runs[1]);
    }
}

TEST(RegistryFillingThread, NobodySeesAHalfFilledNamespace) {
    constexpr int kParameters = 200;
    for (int round = 0; round < kRounds; ++round) {
        TestRegistry registry;
        registry.Add(L"n", 1, kParameters, [](AbstractParamAdder& adder) {
            for (int id = 1; id <= kParameters; ++id) {
                adder.AddSimple(id, (L"p" + std::to_wstring(id)).c_str(), TextSerializer());
            }
        });
        std::atomic<int> right{0};
        Race(kThreads, [&](int) { right += registry.GetType(kParameters) == PTC_Text; });
        EXPECT_EQ(kThreads, right);
    }
}

TEST(RegistryFillingThread, OneThreadGetsTheThrowAndTheNextFills) {
    for (int round = 0; round < kRounds; ++round) {
        TestRegistry registry;
        std::atomic<int> runs{0};
        registry.Add(L"n", 1, 9, [&](AbstractParamAdder& adder) {
            adder.AddBag(1, L"one");
            if (++runs == 1) {
                throw std::runtime_error("not yet");
            }
        });
        std::atomic<int> throws{0};
        std::atomic<int> right{0};
        Race(kThreads, [&](int) {
            try {
                right += registry.GetID(L"n", L"one", true) == 1;
            } catch (const std::runtime_error&) {
                ++throws;
            }
        });
        EXPECT_EQ(2, runs);
        EXPECT_EQ(1, throws);
        EXPECT_EQ(kThreads - 1, right);
    }
}

TEST(RegistryFillingThread, AFunctionThatLooksUpRunsOnceToo) {
    for (int round = 0; round < kRounds; ++round) {
        TestRegistry registry;
        std::atomic<int> runs{0};
        registry.Add(L"used", 11, 19, [&](AbstractParamAdder& adder) {
            ++runs;
            adder.AddBag(11, L"eleven");
        });
        registry.Add(L"user", 1, 9, [&](AbstractParamAdder& adder) {
            ++runs;
            adder.AddBag(1, L"one");
            adder.AddBag(registry.GetID(L"user", L"one", true) + 1, L"two");
            adder.AddBag(registry.GetID(L"used", L"eleven", true) - 8, L"three");
        });
        std::atomic<int> right{0};
        Race(kThreads, [&](int thread) {
            right += thread % 2 == 0 ? registry.GetType(3) == PTC_Bag : registry.GetType(11) == PTC_Bag;
        });
        EXPECT_EQ(kThreads, right);
        EXPECT_EQ(2, runs);
    }
}

TEST(RegistryFillingThread, ManyNamespacesAreFilledSideBySide) {
    TestRegistry registry;
    std::array<std::atomic<int>, kNamespaces> runs{};
    for (int i = 0; i < kNamespaces; ++i) {
        registry.Add(L"n" + TString::number(i), 10 * i, 10 * i + 9, [&runs, i](AbstractParamAdder& adder) {
            ++runs[static_cast<std::size_t>(i)];
            adder.AddSimple(10 * i + 1, L"title", TextSerializer());
        });
        if (i > 0) {
            registry.SetFallback(L"n" + TString::number(i), L"n" + TString::number(i - 1));
        }
    }
    std::atomic<int> right{0};
    Race(kThreads, [&](int thread) {
        for (int i = 0; i < kNamespaces; ++i) {
            const int at = (i * (2 * thread + 1)) % kNamespaces;
            right += registry.GetID(L"n" + TString::number(at), L"title", true) == 10 * at + 1;
            right += registry.GetType(10 * at + 1) == PTC_Text;
        }
        right += registry.GetNamespaceInfos().size() == static_cast<std::size_t>(kNamespaces);
    });
    EXPECT_EQ(kThreads * (2 * kNamespaces + 1), right);
    for (const auto& count : runs) {
        EXPECT_EQ(1, count);
    }
}

TEST(RegistryFillingThread, LookupsAfterTheFillingRunSideBySide) {
    TestRegistry registry;
    registry.Add(L"n", 1, 9, [](AbstractParamAdder& adder) {
        adder.AddSimple(1, L"title", L"ti", TextSerializer());
        adder.AddList(2, L"int-list", IntSerializer());
    });
    registry.AddUnserializable(2);
    std::atomic<int> right{0};
    Race(kThreads, [&](int) {
        const auto bag = MakeBag();
        for (int i = 0; i < 500; ++i) {
            registry.FromString(L"n", bag, L"title", L"x", true);
            right += registry.GetValueString(RefCntPtr<const IParameter>(&bag->GetParameter(1)), 1) == L"x" &&
                     registry.GetListSerializer(2) != nullptr && registry.IsUnserializable(2) &&
                     registry.FindInfo(3) == nullptr;
        }
    });
    EXPECT_EQ(500 * kThreads, right);
}
