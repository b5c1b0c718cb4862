// Bags beyond the size at which entries move from the sorted vector into a tree behave as small ones do.
#include <qvpreslayer/BaseParameters.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"
#include "support/TestHost.h"

namespace {

constexpr int kCount = 5000;

class Ids final : public IParameterVisitor {
public:
    void VisitParameter(int id, const RefCntPtr<IParameter>& value) override {
        EXPECT_EQ(id, GetParameterValue<int>(value.Get()));
        seen.push_back(id);
    }
    std::vector<int> seen;
};

std::vector<int> IdsOf(const BaseParameters& bag) {
    Ids ids;
    bag.Accept(ids);
    return ids.seen;
}

std::vector<int> Upwards(int count) {
    std::vector<int> ids(static_cast<std::size_t>(count));
    std::iota(ids.begin(), ids.end(), -count / 2);
    return ids;
}

RefCntPtr<TestBag> Filled(const std::vector<int>& order) {
    RefCntPtr<TestBag> bag = MakeBag();
    for (const int id : order) {
        bag->SetParameter(id, Val(id));
    }
    return bag;
}

std::vector<int> Shuffled() {
    std::vector<int> ids = Upwards(kCount);
    std::shuffle(ids.begin(), ids.end(), std::mt19937(7));
    return ids;
}

TEST(LargeBags, AreVisitedUpwardsHoweverTheyWereFilled) {
    std::vector<int> downwards = Upwards(kCount);
    std::reverse(downwards.begin(), downwards.end());
    EXPECT_EQ(Upwards(kCount), IdsOf(*Filled(Upwards(kCount))));
    EXPECT_EQ(Upwards(kCount), IdsOf(*Filled(downwards)));
    EXPECT_EQ(Upwards(kCount), IdsOf(*Filled(Shuffled())));
}

TEST(LargeBags, FindWhatTheyHoldAndNothingElse) {
    const auto bag = Filled(Shuffled());
    for (const int id : Upwards(kCount)) {
        ASSERT_EQ(id, GetParameterValue<int>(*bag, id));
    }
    EXPECT_FALSE(bag->HasParameter(kCount));
    EXPECT_THROW(bag->GetParameter(-kCount), MissingParameterCommandException);
}

TEST(LargeBags, ReplaceAndRemove) {
    for (const auto& order : {Upwards(kCount), Shuffled()}) {
        const auto bag = Filled(order);
        const RefCntPtr<IParameter> other = Val(7);
        bag->SetParameter(7, other);
        EXPECT_EQ(other.Get(), &bag->GetParameter(7));
        for (int id = -kCount / 2; id < kCount / 2; id += 2) {
            bag->RemoveParameter(id);
        }
        EXPECT_EQ(static_cast<std::size_t>(kCount / 2), IdsOf(*bag).size());
        EXPECT_THROW(bag->RemoveParameter(-kCount / 2), MissingParameterCommandException);
        EXPECT_TRUE(bag->HasParameter(7));
        bag->SetParameter(7, nullptr);
        EXPECT_FALSE(bag->HasParameter(7));
        bag->SetParameter(-kCount / 2, Val(-kCount / 2));
        EXPECT_EQ(-kCount / 2, IdsOf(*bag).front());
    }
}

TEST(LargeBags, RemoveFromTheEndAndFromTheMiddle) {
    const auto bag = Filled(Upwards(kCount));
    std::vector<int> left = Upwards(kCount);
    for (int i = 0; i < 100; ++i) {  // the last one each time
        bag->RemoveParameter(left.back());
        left.pop_back();
    }
    EXPECT_EQ(left, IdsOf(*bag));
    bag->RemoveParameter(left[100]);
    left.erase(left.begin() + 100);
    EXPECT_EQ(left, IdsOf(*bag));
}

TEST(LargeBags, CloneWithTheSameObjects) {
    const auto bag = Filled(Shuffled());
    const RefCntPtr<BaseParameters> clone = bag->Clone();
    EXPECT_EQ(Upwards(kCount), IdsOf(*clone));
    EXPECT_EQ(&bag->GetParameter(11), &clone->GetParameter(11));
}

TEST(LargeBags, LetGoOfAllTheyHold) {
    int alive = 0;
    {
        const auto bag = MakeBag();
        for (int id = kCount; id > 0; --id) {
            bag->SetParameter(id, RefCntPtr<IParameter>(new CountedValue(alive)));
            bag->SetCacheParameter(id, RefCntPtr<IParameter>(new CountedValue(alive)));
        }
        EXPECT_EQ(2 * kCount, alive);
    }
    EXPECT_EQ(0, alive);
}

}  // namespace
