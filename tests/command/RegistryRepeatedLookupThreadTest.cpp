// Look-ups on many threads while namespaces are filled, one after the other and several at once.
#include <qvpreslayer/ParametersRegistry.h>

#include <atomic>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"
#include "support/Race.h"

namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 20;
constexpr int kNamespaces = 60;
constexpr int kParameters = 20;
constexpr int kRange = 100;

// The identifiers first, first + 3, and so on; 0 is covered and not registered.
int FirstOf(int number) { return number * kRange - kNamespaces / 2 * kRange + 1; }

bool IsRight(const TestRegistry& registry, int id) {
    const ParameterInfo* const info = registry.FindInfo(id);
    return info != nullptr && info->id == id && info->kind == PTC_Text &&
           info->verboseName == L"p" + TString::number(id) && registry.FindInfo(id + 1) == nullptr;
}

}  // namespace

TEST(RegistryRepeatedLookupThread, NobodySeesAWrongOrHalfMadeRecord) {
    for (int round = 0; round < kRounds; ++round) {
        TestRegistry registry;
        for (int number = 0; number < kNamespaces; ++number) {
            const int first = FirstOf(number);
            registry.Add(L"n" + TString::number(number), first - 1, first + kRange - 2,
                         [first](AbstractParamAdder& adder) {
                             for (int i = 0; i < kParameters; ++i) {
                                 const std::wstring name = L"p" + std::to_wstring(first + 3 * i);
                                 adder.AddSimple(first + 3 * i, name.c_str(), TextSerializer());
                             }
                         });
        }
        std::atomic<int> wrong{0};
        Race(kThreads, [&](int thread) {
            for (int turn = 0; turn < kNamespaces; ++turn) {
                // Half of the threads fill upwards and half from places of their own; all look back at what is filled.
                const int number = thread % 2 == 0 ? turn : (turn * 7 + thread * 11) % kNamespaces;
                for (int i = 0; i < kParameters; ++i) {
                    wrong += !IsRight(registry, FirstOf(number) + 3 * i);
                    wrong += !IsRight(registry, FirstOf(turn / 2) + 3 * i);
                }
                wrong += registry.FindInfo(0) != nullptr;
            }
        });
        EXPECT_EQ(0, wrong);
    }
}
