#include <qvpreslayer/ParameterTypeSerializer.h>  // first: the header stands alone

#include <atomic>
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "serializers/FamilySamples.h"
#include "support/Failures.h"
#include "support/ListHost.h"
#include "support/Printing.h"
#include "support/Race.h"

namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 200;

// Runs work on all threads at once and answers how often it said no.
int CountFailures(const std::function<bool()>& work) {
    std::atomic<int> failures{0};
    Race(kThreads, [&](int) {
        for (int round = 0; round < kRounds; ++round) {
            failures += work() ? 0 : 1;
        }
    });
    return failures;
}

template <class T>
class SerializersThread : public testing::Test {};

TYPED_TEST_SUITE(SerializersThread, FamilyTypes);

}  // namespace

TYPED_TEST(SerializersThread, OneSerializerForAllThreads) {
    using List = std::vector<TypeParam>;
    const auto serializer = CreateParameterSerializer<SerializerOf<TypeParam>>();
    const List values = Sample<TypeParam>::Values();
    const auto shared = Val<List>(values);
    const auto texts = Sample<TypeParam>::Texts();
    const auto toRead = TextsToRead<TypeParam>();
    EXPECT_EQ(0, CountFailures([&] {
                  const auto read = serializer->FromStringList(toRead, {});
                  return serializer->ToStringList(shared) == texts && GetParameterValue<List>(read.Get()) == values;
              }));
}

TYPED_TEST(SerializersThread, StreamsOfTheirOwnOverOneRegistry) {
    ListHost<TypeParam> host;  // filled by whoever looks first
    const auto write = [&] { return host.Trace(Sample<TypeParam>::Values(), ListForm::Packed); };
    std::string expected = "values:" + std::to_string(Sample<TypeParam>::kKind) + "[";
    for (const TString& text : Sample<TypeParam>::Texts()) {
        expected += (expected.back() == '[' ? "" : " ") + text.ToUtf8();
    }
    expected += "]";
    EXPECT_EQ(0, CountFailures([&] { return write() == expected; }));
}

// The budget of expanded bytes belongs to the thread that reads.
TEST(SerializersThreads, ExpansionBudgetsAreSeparate) {
    const std::size_t before = DataSerializerHelpers::GetExpansionLimit();
    DataSerializerHelpers::SetExpansionLimit(100 * sizeof(int));
    EXPECT_EQ(0, CountFailures([] {
                  const PresLayerLimits::ExpansionBudgetScope scope;
                  const auto read = ParameterTypeSerializer<int>().FromStringList({}, {{0, {L"1", L"100"}}});
                  return GetParameterValue<std::vector<int>>(read.Get()).size() == 100;
              }));
    DataSerializerHelpers::SetExpansionLimit(before);
}
