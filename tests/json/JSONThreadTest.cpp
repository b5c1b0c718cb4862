// One serializer on several threads at once. Also run under the thread sanitizer.
#include <qvpreslayer/JSONSerializer.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "json/JSONTestSupport.h"

namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 50;

// Runs work on all threads at once, with the thread's number.
void OnAllThreads(const std::function<void(int)>& work) {
    std::atomic<int> ready{0};
    std::vector<std::thread> threads;
    for (int number = 0; number < kThreads; ++number) {
        threads.emplace_back([&, number] {
            ++ready;
            while (ready < kThreads) {
                std::this_thread::yield();
            }
            work(number);
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
}

const std::string kJSON = R"({"maxCount": 3,"text": "a\n\"b","intList":[1,2,3,4,5],"myMap":{"k":"v"},)"
                          R"("subBag":{"real": 0.5},"myModel":{"aB": 1},"items":[{"n": 1},{}],"byKey":{"x":null}})";

// The same bag under short names, its list packed.
const std::string kShortJSON = R"({"mc": 3,"tx": "a\n\"b","il":[[1,5,1],[]],"mm":{"k":"v"},)"
                               R"("sb":{"re": 0.5},"mo":{"ab": 1},"it":[{"nn": 1},{}],"bk":{"x":null}})";

}  // namespace

TEST(JSONThreads, FirstReadsRaceForTheNamespace) {
    const ViewRegistry registry;  // not filled yet
    const JSONSerializer json(L"view");
    std::atomic<int> same{0};
    OnAllThreads([&](int) {
        const auto bag = json.ToParameters(TString::FromUtf8(kJSON));
        same += json.ToString(bag, JSONSerializer::Compact).ToUtf8() == kJSON ? 1 : 0;
    });
    EXPECT_EQ(kThreads, same);
}

TEST(JSONThreads, OneSerializerWritesOneBagOnAllThreads) {
    const ViewRegistry registry;
    const JSONSerializer json(L"view");
    const RefCntPtr<const IParameters> bag = json.ToParameters(TString::FromUtf8(kJSON));
    const TString pretty = json.ToString(bag, JSONSerializer::Pretty);
    std::atomic<int> same{0};
    OnAllThreads([&](int number) {
        for (int round = 0; round < kRounds; ++round) {
            const bool asPretty = (number + round) % 2 == 0;
            const TString text = json.ToString(bag, asPretty ? JSONSerializer::Pretty : JSONSerializer::Compact);
            same += (asPretty ? text == pretty : text.ToUtf8() == kJSON) ? 1 : 0;
        }
    });
    EXPECT_EQ(kThreads * kRounds, same);
}

TEST(JSONThreads, OneSerializerReadsAndFailsOnAllThreads) {
    const ViewRegistry registry;
    const JSONSerializer json(L"view");
    const TString good = TString::FromUtf8(kJSON);
    std::atomic<int> right{0};
    OnAllThreads([&](int number) {
        for (int round = 0; round < kRounds; ++round) {
            switch ((number + round) % 4) {
                case 0:
                    right += OutcomeOf([&] { return json.ToParameters(L"{"); }) == "not valid" ? 1 : 0;
                    break;
                case 1:
                    right +=
                        OutcomeOf([&] { return json.ToParameters(LR"({"maxCount":[]})"); }) == Mismatch("max-count")
                            ? 1
                            : 0;
                    break;
                case 2:
                    right += OutcomeOf([&] { return json.ToParameters(LR"({"zzz":1})"); }) == "not found: zzz" ? 1 : 0;
                    break;
                default:
                    right += json.ToString(json.ToParameters(good), JSONSerializer::Compact).ToUtf8() == kJSON ? 1 : 0;
            }
        }
    });
    EXPECT_EQ(kThreads * kRounds, right);
}

TEST(JSONThreads, EachThreadKeepsToItsOwnOptions) {
    const ViewRegistry registry;
    const JSONSerializer json(L"view");
    const RefCntPtr<const IParameters> bag = json.ToParameters(TString::FromUtf8(kJSON));
    std::atomic<int> same{0};
    OnAllThreads([&](int number) {
        const bool special = number % 2 == 0;
        const TestSession session(special, special);
        for (int round = 0; round < kRounds; ++round) {
            const std::string text = json.ToString(bag, JSONSerializer::Compact).ToUtf8();
            same += text == (special ? kShortJSON : kJSON) ? 1 : 0;
            const auto back = json.ToParameters(TString::FromUtf8(text));
            same += BagDescription::Of(*back) == BagDescription::Of(*bag) ? 1 : 0;
        }
    });
    EXPECT_EQ(2 * kThreads * kRounds, same);
}

TEST(JSONThreads, LimitsOfExpansionAreEachThreadsOwn) {
    const ViewRegistry registry;
    const JSONSerializer json(L"view");
    const std::size_t earlier = PresLayerLimits::GetExpansionBytes();
    PresLayerLimits::SetExpansionBytes(1000 * sizeof(int));
    std::atomic<int> read{0};
    OnAllThreads([&](int) {
        for (int round = 0; round < kRounds; ++round) {
            read +=
                OutcomeOf([&] { return json.ToParameters(LR"({"intList":[[1,1001]]})"); }) == "not parsed: 0" ? 1 : 0;
            read += json.ToParameters(LR"({"intList":[[1,1000]]})")->HasParameter(view::kIntList) ? 1 : 0;
        }
    });
    PresLayerLimits::SetExpansionBytes(earlier);
    EXPECT_EQ(2 * kThreads * kRounds, read);
}
