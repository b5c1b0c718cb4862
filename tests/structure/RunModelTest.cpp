#include "structure/RunModel.h"

#include <limits>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "support/Dice.h"
#include "support/ListHost.h"
#include "support/Rounds.h"

namespace {

constexpr int kLists = 15000;  // for each type, in an ordinary run

// Few values, so that runs, breaks and shared elements abound; and the ends of the type, where steps are too long.
template <class T>
std::vector<T> Alphabet(Dice& dice) {
    if constexpr (std::is_floating_point_v<T>) {
        const T nan = std::numeric_limits<T>::quiet_NaN();
        const T infinity = std::numeric_limits<T>::infinity();
        switch (dice.Below(3)) {
            case 0:
                return {T(0.0), T(-0.0), T(1)};
            case 1:
                return {T(0.1), T(-2.5), nan, infinity};
            default:
                return {T(1e-30), T(2e-30), T(0), T(1e20), -infinity};
        }
    } else {
        constexpr T kMin = std::numeric_limits<T>::min();
        constexpr T kMax = std::numeric_limits<T>::max();
        const T bound = static_cast<T>(run_model::StepBound<T>());
        switch (dice.Below(4)) {
            case 0:
                return {T(0), T(1), T(2)};
            case 1:
                return {T(5), T(7), T(9), T(10), T(11)};
            case 2:
                return {kMin, T(kMin + 1), T(kMin + 2), kMax, T(kMax - 1), T(kMax - 2)};
            default:
                return {T(0), T(1), bound, T(bound - 1), T(bound + 1), T(2 * (bound - 1)), T(2 * (bound - 1) + 1),
                        kMax};
        }
    }
}

// Steps of progressions, among them those next to the bound.
template <class T>
std::vector<run_model::Wide> Steps() {
    const run_model::Wide bound = run_model::StepBound<T>();
    return {0,
            0,
            1,
            -1,
            2,
            -2,
            3,
            -7,
            1000,
            2 * bound - 3,
            2 * bound - 2,
            2 * bound - 1,
            2 * bound,
            2 - 2 * bound,
            1 - 2 * bound};
}

// Letters of an alphabet, and between them progressions from wherever the list stands.
template <class T>
std::vector<T> RandomList(Dice& dice) {
    const std::vector<T> alphabet = Alphabet<T>(dice);
    const std::size_t size = dice.Below(dice.Below(25) == 0 ? 400 : 30);  // mostly short, some of many blocks
    std::vector<T> values;
    while (values.size() < size) {
        const T letter = dice.Of(alphabet);
        if (dice.Below(3) == 0) {
            values.insert(values.end(), 1 + dice.Below(6), letter);
        } else if constexpr (std::is_integral_v<T>) {
            const run_model::Wide step = dice.Of(Steps<T>());
            run_model::Wide next{dice.Below(2) == 0 || values.empty() ? letter : values.back()};
            for (std::size_t i = 1 + dice.Below(6); i > 0; --i, next += step) {
                if (next < run_model::Wide{std::numeric_limits<T>::min()} ||
                    next > run_model::Wide{std::numeric_limits<T>::max()}) {
                    break;
                }
                values.push_back(static_cast<T>(next));
            }
        } else {
            values.push_back(letter);
        }
    }
    return values;
}

template <class T>
class RunModelTest : public testing::Test {};

using NumericTypes = testing::Types<int, unsigned int, Int64, UInt64, float, double>;
TYPED_TEST_SUITE(RunModelTest, NumericTypes);

template <class T>
class RunModelExpansionTest : public testing::Test {};

using IntegerTypes = testing::Types<int, unsigned int, Int64, UInt64>;
TYPED_TEST_SUITE(RunModelExpansionTest, IntegerTypes);

template <class T>
std::vector<PackedItem> PackedByTheLibrary(ListHost<T>& host, const std::vector<T>& values) {
    PackedItemsVisitor visitor;
    host.Send(values, ListForm::Packed, visitor);
    return visitor.Items();
}

template <class T>
std::vector<T> ReadByTheLibrary(const std::vector<TString>& texts, const std::vector<RunRecord>& records) {
    const auto list = ParameterTypeSerializer<T>().FromStringList(texts, records);
    return GetParameterValue<std::vector<T>>(list.Get());
}

// What a real reads back as from its own text; integers read back as themselves.
template <class T>
T AfterItsText(T value) {
    return ParameterTypeSerializer<T>::TypeFromString(ParameterTypeSerializer<T>::TypeToString(value));
}

// A list with nested lists at random places, as texts; the records in any order.
template <class T>
struct RandomRecords {
    std::vector<T> values;
    std::vector<TString> texts;
    std::vector<RunRecord> records;

    explicit RandomRecords(Dice& dice) {
        const std::vector<TString> steps = {L"1", L"-1", L"0", L"2147483647", L"-2147483648", L"7", L"-1000000007"};
        const std::size_t size = dice.Below(20);
        for (std::size_t position = 0; position < size; ++position) {
            const T value = static_cast<T>(dice.Below(2) == 0 ? dice.Bits() : dice.Below(4));
            const TString text = TString::number(value);
            if (dice.Below(2) == 0) {
                values.push_back(value);
                texts.push_back(text);
                continue;
            }
            std::vector<TString> record = {text, TString::number(static_cast<int>(dice.Below(7))), dice.Of(steps),
                                           L"x"};
            record.resize(dice.Below(5));  // 2 and 3 are runs
            records.emplace_back(static_cast<int>(position), record);
        }
        for (std::size_t i = records.size(); i > 1; --i) {
            std::swap(records[i - 1], records[dice.Below(i)]);
        }
    }
};

}  // namespace

TYPED_TEST(RunModelTest, LibraryPacksAsTheModel) {
    Dice dice(Seed(11));
    ListHost<TypeParam> host;
    int listsWithRuns = 0;
    for (int i = 0; i < Rounds(kLists); ++i) {
        const std::vector<TypeParam> values = RandomList<TypeParam>(dice);
        const std::vector<PackedItem> expected = run_model::Pack(values);
        listsWithRuns += !expected.empty() && expected.back().nested ? 1 : 0;
        ASSERT_EQ(expected, PackedByTheLibrary(host, values)) << "list " << i;
    }
    EXPECT_GT(listsWithRuns, Rounds(kLists) / 4);  // else the lists test nothing
    EXPECT_LT(listsWithRuns, Rounds(kLists));
}

// Runs of every length up to several blocks of whatever is compared at once, each ended in every place of a block by an
// element that is another one, by the end of the list, or by a second run; up to the ends of the type.
TYPED_TEST(RunModelTest, LongRunsEndAnywhere) {
    ListHost<TypeParam> host;
    std::vector<int> steps = {0};
    std::vector<TypeParam> starts = {TypeParam(100000)};
    if constexpr (std::is_integral_v<TypeParam>) {
        steps = {0, 1, -3, 1000, -1000};
        starts.push_back(std::numeric_limits<TypeParam>::max());
        starts.push_back(std::numeric_limits<TypeParam>::min());
    }
    const auto append = [](std::vector<TypeParam>& values, TypeParam start, int step, int length) {
        // Runs that would leave the type wrap around there, as the list's own arithmetic does.
        for (int i = 0; i < length; ++i) {
            if constexpr (std::is_integral_v<TypeParam>) {
                using Magnitude = std::make_unsigned_t<TypeParam>;
                values.push_back(static_cast<TypeParam>(static_cast<Magnitude>(start) +
                                                        static_cast<Magnitude>(step) * static_cast<Magnitude>(i)));
            } else {
                values.push_back(start);
            }
        }
    };
    for (const TypeParam start : starts) {
        for (const int step : steps) {
            for (int length = 1; length <= 120; ++length) {
                std::vector<TypeParam> values;
                append(values, start, step, length);
                ASSERT_EQ(run_model::Pack(values), PackedByTheLibrary(host, values)) << step << ' ' << length;
                for (const int behind : {1, 4, 17}) {
                    std::vector<TypeParam> others = values;
                    append(others, TypeParam(7), step == 0 ? 0 : 2, behind);
                    append(others, TypeParam(5), 0, 90);
                    ASSERT_EQ(run_model::Pack(others), PackedByTheLibrary(host, others))
                        << step << ' ' << length << ' ' << behind;
                }
            }
        }
    }
}

TYPED_TEST(RunModelTest, PackedListsReadBack) {
    Dice dice(Seed(12));
    ListHost<TypeParam> host;
    for (int i = 0; i < Rounds(kLists); ++i) {
        const std::vector<TypeParam> values = RandomList<TypeParam>(dice);
        const std::vector<PackedItem> items = PackedByTheLibrary(host, values);
        const auto read = ReadByTheLibrary<TypeParam>(PlainTexts(items), NestedLists(items));
        ASSERT_EQ(values.size(), read.size()) << "list " << i;
        for (std::size_t j = 0; j < values.size(); ++j) {
            const TypeParam expected = AfterItsText(values[j]);
            ASSERT_TRUE(expected == read[j] || (expected != expected && read[j] != read[j]))
                << "list " << i << ", element " << j;
        }
    }
}

TYPED_TEST(RunModelTest, PlainListsReadBack) {
    Dice dice(Seed(13));
    ListHost<TypeParam> host;
    for (int i = 0; i < Rounds(kLists / 10); ++i) {
        const std::vector<TypeParam> values = RandomList<TypeParam>(dice);
        PackedItemsVisitor visitor;
        host.Send(values, ListForm::Plain, visitor);
        ASSERT_TRUE(NestedLists(visitor.Items()).empty());
        ASSERT_EQ(ParameterTypeSerializer<TypeParam>().ToStringList(Val(values)), PlainTexts(visitor.Items()));
    }
}

TYPED_TEST(RunModelExpansionTest, LibraryExpandsAsTheModel) {
    Dice dice(Seed(14));
    for (int i = 0; i < Rounds(kLists); ++i) {
        const RandomRecords<TypeParam> list(dice);
        ASSERT_EQ(run_model::Expand(list.values, list.records), ReadByTheLibrary<TypeParam>(list.texts, list.records))
            << "list " << i;
    }
}
