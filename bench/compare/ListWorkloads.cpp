// One long list in one bag: numbers with and without runs, and strings.
#include <algorithm>
#include <random>
#include <utility>

#include "BenchHost.h"
#include "Workload.h"

namespace compare {

namespace {

using Random = std::mt19937_64;

constexpr int kListFirst = 20000;

// A workload of one list; number tells the workloads of this file apart.
template <class T>
Workload MakeListWorkload(ParametersRegistry& registry, int number, const char* name, const char* title,
                          std::vector<T> values) {
    const int firstId = kListFirst + number * kFieldRange;
    Workload workload{name, title, {}, {}, {}, 0};
    workload.fields.push_back(MakeList<T>(firstId, L"column-values", L"cv"));
    const auto bag = MakeRefCnt<BenchBag>();
    SetParameterValue(*bag, firstId, std::move(values));
    workload.bags.push_back(bag);
    Complete(workload, registry, firstId);
    return workload;
}

// Fills in runs of 10 to 90 elements; startRun(random) answers what makes the elements of one run.
template <class T, class StartRun>
std::vector<T> MakeRuns(std::size_t count, Random& random, StartRun startRun) {
    std::vector<T> values;
    values.reserve(count);
    while (values.size() < count) {
        auto next = startRun(random);
        const std::size_t length = std::min<std::size_t>(10 + random() % 81, count - values.size());
        for (std::size_t i = 0; i < length; ++i) {
            values.push_back(next());
        }
    }
    return values;
}

char16_t MakeLetter(Random& random) {
    static constexpr std::u16string_view kLetters = u"abcdefghijklmnopqrstuvwxyz     ABCDEFGHIJ0123456789.,-";
    return kLetters[random() % kLetters.size()];
}

// 5 to 200 units; two in a hundred have escapes, five in a hundred are not ASCII.
TString MakeString(Random& random) {
    static constexpr std::u16string_view kEscaped = u"\"\\\n\t";
    const std::size_t length = 5 + random() % 196;
    const bool hasEscapes = random() % 100 < 2;
    const bool isForeign = random() % 100 < 5;
    std::u16string text;
    while (text.size() < length) {
        if (hasEscapes && random() % 16 == 0) {
            text += kEscaped[random() % kEscaped.size()];
        } else if (isForeign && random() % 4 != 0) {
            text += static_cast<char16_t>(random() % 2 == 0 ? 0x0430 + random() % 32 : 0x4E00 + random() % 5000);
        } else {
            text += MakeLetter(random);
        }
    }
    return text;
}

}  // namespace

Workload MakeIntegerRuns(ParametersRegistry& registry, Scale scale) {
    Random random(41);
    const auto startRun = [](Random& source) {
        return [value = static_cast<int>(source() % 100000), step = static_cast<int>(source() % 7) - 3]() mutable {
            return std::exchange(value, value + step);
        };
    };
    return MakeListWorkload(registry, 0, "W4a", "1,000,000 integers in runs",
                            MakeRuns<int>(GetCount(scale, 1000000, 10000), random, startRun));
}

Workload MakeConstantDoubles(ParametersRegistry& registry, Scale scale) {
    Random random(42);
    const auto startRun = [](Random& source) {
        return [value = static_cast<double>(source() % 10000) / 10]() { return value; };
    };
    return MakeListWorkload(registry, 1, "W4b", "1,000,000 doubles, constant runs",
                            MakeRuns<double>(GetCount(scale, 1000000, 10000), random, startRun));
}

Workload MakeRandomIntegers(ParametersRegistry& registry, Scale scale) {
    Random random(43);
    std::vector<int> values(GetCount(scale, 1000000, 10000));
    std::generate(values.begin(), values.end(), [&random] { return static_cast<int>(random()); });
    return MakeListWorkload(registry, 2, "W4c", "1,000,000 random integers", std::move(values));
}

Workload MakeStrings(ParametersRegistry& registry, Scale scale) {
    Random random(5);
    std::vector<TString> values(GetCount(scale, 20000, 500));
    std::generate(values.begin(), values.end(), [&random] { return MakeString(random); });
    return MakeListWorkload(registry, 3, "W5", "20,000 strings", std::move(values));
}

}  // namespace compare
