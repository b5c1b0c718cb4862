#include <cstring>
#include <map>
#include <random>
#include <thread>

#include <qvpreslayer/detail/RunDetection.h>

#include "BenchHost.h"
#include "Figures.h"

namespace figures {

namespace {

RefCntPtr<BenchBag> MakeNumbers(int count) {
    const auto bag = MakeRefCnt<BenchBag>();
    for (int id = 1; id <= count; ++id) {
        bag->SetParameter(id, MakeRefCnt<ValParameter<int>>(id));
    }
    return bag;
}

constexpr int kListId = 1;

void RegisterLists(AbstractParamAdder& adder) {
    adder.AddList(kListId, L"list", L"l", new ParameterTypeSerializer<int>);
    for (int i = 0; i < 100; ++i) {
        const std::wstring name = L"parameter-" + std::to_wstring(i);
        adder.AddSimple(100 + i, name.c_str(), new ParameterTypeSerializer<int>);
    }
}

class ListRegistry {
public:
    ListRegistry() {
        RegisterCoreNamespaceParameters(m_registry, L"qvcore");
        m_registry.RegisterNamespace(L"lists", RegisterLists, 1, 999, true);
        m_registry.SetFallback(L"lists", L"qvcore");
    }

private:
    BenchRegistry m_registry;
};

// A million integers in runs of so many.
std::vector<int> MakeRuns(int length) {
    std::vector<int> values;
    for (int i = 0; i < 1000000; ++i) {
        values.push_back(i / length * 7919 % 100000 + i % length * 3);
    }
    return values;
}

RefCntPtr<IParameters> BagOf(std::vector<int> values) {
    const auto bag = MakeRefCnt<BenchBag>();
    bag->SetParameter(kListId, MakeRefCnt<ValParameter<std::vector<int>>>(std::move(values)));
    return bag;
}

std::size_t CountRuns(const std::vector<int>& values) {
    std::size_t runs = 0;
    qvpreslayer::detail::ForEachRun(values, [&](const auto&) { ++runs; });
    return runs;
}

TString Text(const RefCntPtr<IParameters>& bag, bool packed) {
    const BenchSession session(false, packed);
    return JSONSerializer(L"lists").ToString(bag, JSONSerializer::Compact);
}

std::size_t Read(const TString& text) {
    return static_cast<std::size_t>(JSONSerializer(L"lists").ToParameters(text).Get() != nullptr);
}

// Wall-clock nanoseconds for one document that is written and read, on so many threads at once.
double TimeOnThreads(int threads, int documents) {
    const auto work = [documents] {
        const auto bag = MakeRefCnt<BenchBag>();
        for (int i = 0; i < 100; ++i) {
            bag->SetParameter(100 + i, MakeRefCnt<ValParameter<int>>(i * 37));
        }
        const JSONSerializer json(L"lists");
        std::size_t sum = 0;
        for (int i = 0; i < documents; ++i) {
            const TString text = json.ToString(bag, JSONSerializer::Compact);
            sum += json.ToParameters(text).Get() != nullptr ? text.size() : 0;
        }
        s_sink = sum;
    };
    timespec begin{};
    timespec end{};
    clock_gettime(CLOCK_MONOTONIC, &begin);
    std::vector<std::thread> running;
    for (int i = 0; i < threads; ++i) {
        running.emplace_back(work);
    }
    for (std::thread& thread : running) {
        thread.join();
    }
    clock_gettime(CLOCK_MONOTONIC, &end);
    const double taken =
        static_cast<double>(end.tv_sec - begin.tv_sec) * 1e9 + static_cast<double>(end.tv_nsec - begin.tv_nsec);
    return taken / documents / threads;
}

}  // namespace

void AddBags(Figures& figures) {
    const auto bag = MakeNumbers(30);
    std::map<int, RefCntPtr<IParameter>> map;
    std::vector<int> questions;
    std::mt19937 random(4);
    for (int i = 0; i < 4096; ++i) {
        questions.push_back(1 + static_cast<int>(random() % 30));
    }
    for (int id = 1; id <= 30; ++id) {
        map.emplace(id, MakeRefCnt<ValParameter<int>>(id));
    }
    figures.push_back({"a value in a bag of 30 (`GetParameter`)", "`std::map::find`",
                       Duel(
                           questions.size(),
                           [&] {
                               std::size_t sum = 0;
                               for (const int id : questions) {
                                   sum += reinterpret_cast<std::uintptr_t>(&bag->GetParameter(id));
                               }
                               return sum;
                           },
                           [&] {
                               std::size_t sum = 0;
                               for (const int id : questions) {
                                   sum += reinterpret_cast<std::uintptr_t>(map.find(id)->second.Get());
                               }
                               return sum;
                           }),
                       0.25});

    const auto large = MakeNumbers(300);
    std::vector<RefCntPtr<IParameter>> pointers;
    for (int id = 1; id <= 300; ++id) {
        pointers.emplace_back(MakeRefCnt<ValParameter<int>>(id));
    }
    figures.push_back({"`Clone` of 300 parameters", "a copied vector of 300 counted pointers",
                       Duel(
                           1, [&] { return reinterpret_cast<std::uintptr_t>(large->Clone().Get()); },
                           [&] {
                               const std::vector<RefCntPtr<IParameter>> copy(pointers);
                               return reinterpret_cast<std::uintptr_t>(copy.data());
                           }),
                       3});
}

void AddRuns(Figures& figures) {
    const ListRegistry registry;
    constexpr std::size_t kElements = 1000000;
    const std::vector<int> runs = MakeRuns(50);
    std::vector<int> copy(kElements);
    const auto copied = [&] {
        std::memcpy(copy.data(), runs.data(), kElements * sizeof(int));
        return static_cast<std::size_t>(copy[s_sink % kElements]);
    };
    figures.push_back({"finding runs of 50 among integers, an element", "`memcpy` of them",
                       Duel(
                           kElements, [&] { return CountRuns(runs); }, copied),
                       0});
    const RefCntPtr<IParameters> longRuns = BagOf(MakeRuns(1000));
    figures.push_back(
        {"writing runs of 1,000 packed, an element", "plain",
         Duel(
             kElements, [&] { return Text(longRuns, true).size(); }, [&] { return Text(longRuns, false).size(); }),
         0.1});
    const TString oneRun = Text(BagOf(MakeRuns(1000000)), true);
    figures.push_back({"reading one packed run, an element", "`memcpy` of the list",
                       Duel(
                           kElements, [&] { return Read(oneRun); }, copied),
                       2});
    const TString manyRuns = Text(BagOf(MakeRuns(10)), true);
    figures.push_back({"reading 100,000 packed runs, an element", "one run of the same elements",
                       Duel(
                           kElements, [&] { return Read(manyRuns); }, [&] { return Read(oneRun); }),
                       10});
}

void AddThreads(Figures& figures) {
    const ListRegistry registry;
    constexpr int kDocuments = 20000;
    TimeOnThreads(2, kDocuments / 10);
    std::vector<double> one;
    std::vector<double> two;
    std::vector<double> ratios;
    for (int round = 0; round < 9; ++round) {
        one.push_back(TimeOnThreads(1, kDocuments));
        two.push_back(TimeOnThreads(2, kDocuments));
        ratios.push_back(two.back() / one.back());
    }
    figures.push_back({"a document of 100 values written and read, on 2 threads at once",
                       "on 1 thread",
                       {detail::Median(two), detail::Median(one), detail::Median(ratios)},
                       1 / 1.9});
}

}  // namespace figures
