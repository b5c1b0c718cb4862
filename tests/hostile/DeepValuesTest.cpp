// Values that hold values that hold values: tuples around their limit, and chains of a million that are freed, copied
// and compared, within 2 seconds, from 512 MiB of memory and a stack of 256 KiB.
#include <qvpreslayer/DataValueSerializer.h>

#include <memory>
#include <stdexcept>
#include <utility>

#include "hostile/NestedForms.h"
#include "support/Confined.h"
#include "support/TypedValues.h"

namespace {

constexpr std::size_t kLimit = PresLayerLimits::kDefaultTupleDepth;
constexpr std::size_t kMillion = 1'000'000;
const char* const kMalformed = "Malformed serialization of a tuple element";

void Require(bool holds, const char* what) {
    if (!holds) {
        throw std::runtime_error(what);
    }
}

std::string OutcomeOfReading(std::size_t levels) {
    return OutcomeConfined([&] {
        const DataValue value = ParameterTypeSerializer<DataValue>::TypeFromString(typed::NestedText(levels));
        Require(value == typed::Nested(levels), "another value");
    });
}

std::string OutcomeOfWriting(std::size_t levels) {
    return OutcomeConfined([&] {
        const TString text = ParameterTypeSerializer<DataValue>::TypeToString(typed::Nested(levels));
        Require(text == typed::NestedText(levels), "another text");
    });
}

// A bag in a bag in a bag, and so on, put there by put.
template <class Put>
std::string OutcomeOfFreeing(std::size_t length, const Put& put) {
    return OutcomeConfined([&] {
        auto chain = MakeBag();
        for (std::size_t i = 1; i < length; ++i) {
            auto next = MakeBag();
            put(*next, chain);
            chain = next;
        }
    });
}

// A value of the host's that holds bags in a way of its own.
class HostHolder final : public IParameter {
public:
    explicit HostHolder(RefCntPtr<const IParameters> bag) : m_bags{std::move(bag), nullptr} {}

private:
    RefCntPtr<const IParameters> m_bags[2];
};

}  // namespace

TEST(DeepValues, TuplesAroundTheLimit) {
    EXPECT_EQ("done", OutcomeOfReading(kLimit));
    EXPECT_EQ(kMalformed, OutcomeOfReading(kLimit + 1));
    EXPECT_EQ(kMalformed, OutcomeOfReading(kMillion));
    EXPECT_EQ("done", OutcomeOfWriting(kLimit));
    EXPECT_EQ(kMalformed, OutcomeOfWriting(kLimit + 1));
    EXPECT_EQ(kMalformed, OutcomeOfWriting(kMillion));
}

// Tuples are written by calls inside calls: a limit that the stack does not hold is out of reach then.
TEST(DeepValues, HostsSetTheLimitOfTuples) {
    const LimitsScope scope;
    for (const int limit : {0, 1, 16, 17}) {
        PresLayerLimits::SetTupleDepth(limit);
        EXPECT_EQ("done", OutcomeOfReading(static_cast<std::size_t>(limit)));
        EXPECT_EQ(kMalformed, OutcomeOfReading(static_cast<std::size_t>(limit) + 1));
        EXPECT_EQ("done", OutcomeOfWriting(static_cast<std::size_t>(limit)));
        EXPECT_EQ(kMalformed, OutcomeOfWriting(static_cast<std::size_t>(limit) + 1));
    }
    PresLayerLimits::SetTupleDepth(kMillion);
    EXPECT_EQ("done", OutcomeOfReading(kMillion / 10));
    EXPECT_EQ(kMalformed, OutcomeOfWriting(kMillion / 10));
}

TEST(DeepValues, TuplesInTheDeepestBag) {
    const LimitsScope scope;
    TestRegistry registry;
    registry.Add(L"typed", 1, 9, [](AbstractParamAdder& adder) {
        adder.AddSimple(1, L"value", new ParameterTypeSerializer<DataValue>);
        adder.AddBag(2, L"bag");
        adder.AddStructure(3, L"record", new BagStructureSerializer);
    });
    for (const int id : {2, 3}) {
        EXPECT_EQ("done", OutcomeConfined([&] {
                      auto bag = MakeBag({{1, Val(typed::Nested(kLimit))}});
                      for (int level = 1; level < PresLayerLimits::GetBagDepth(); ++level) {
                          bag = MakeBag({{id, BagVal(bag)}});
                      }
                      JSONSerializer(L"typed").ToString(bag, JSONSerializer::Compact);
                  }));
    }
}

TEST(DeepValues, AMillionTuplesAreComparedHashedAndFreed) {
    // Made outside: it is what becomes of them that is confined.
    DataValue one = typed::Nested(kMillion);
    DataValue other = typed::Nested(kMillion);
    EXPECT_EQ("done", OutcomeConfined([&] {
                  const DataValue value = std::move(one);
                  const DataValue same = std::move(other);
                  const DataValue longer = typed::TupleOf({same});
                  Require(value == same && value.GetHash() == same.GetHash(), "not equal");
                  Require(value != longer && (value <=> longer) != 0, "equal");
              }));
}

TEST(DeepValues, AMillionBagsAreFreed) {
    using Bags = BagStructureSerializer::Bags;
    using BagMap = BagStructureSerializer::BagMap;
    EXPECT_EQ("done", OutcomeOfFreeing(kMillion, [](TestBag& next, auto& bag) { next.SetParameter(1, BagVal(bag)); }));
    EXPECT_EQ("done",
              OutcomeOfFreeing(kMillion / 5, [](TestBag& next, auto& bag) { next.SetCacheParameter(1, BagVal(bag)); }));
    EXPECT_EQ("done",
              OutcomeOfFreeing(kMillion / 5, [](TestBag& next, auto& bag) { next.SetParameter(1, Val(Bags{bag})); }));
    EXPECT_EQ("done", OutcomeOfFreeing(kMillion / 5, [](TestBag& next, auto& bag) {
                  next.SetParameter(1, Val(BagMap{{L"k", bag}}));
              }));
    EXPECT_EQ("done", OutcomeOfFreeing(kMillion / 5, [](TestBag& next, auto& bag) {
                  next.SetParameter(1, MakeRefCnt<HostHolder>(bag));
              }));
}

// Two values beside the chain in every bag, one before and one behind it.
TEST(DeepValues, AChainOfFullBagsIsFreed) {
    const auto text = Text(L"shared");
    EXPECT_EQ("done", OutcomeOfFreeing(kMillion / 5, [&](TestBag& next, auto& bag) {
                  next.SetParameter(1, text);
                  next.SetParameter(2, BagVal(bag));
                  next.SetParameter(3, BagVal(MakeBag()));
                  next.SetCacheParameter(1, text);
              }));
}
