// Values are found by position where identifiers follow each other, and by search elsewhere.
#include <qvpreslayer/BaseParameters.h>

#include <limits>
#include <map>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include <qvpreslayer/detail/PlainBags.h>

#include "command/CommandTestSupport.h"
#include "support/TestHost.h"

namespace {

constexpr int kMin = std::numeric_limits<int>::min();
constexpr int kMax = std::numeric_limits<int>::max();

RefCntPtr<TestBag> BagOf(const std::vector<int>& ids) {
    RefCntPtr<TestBag> bag = MakeBag();
    for (const int id : ids) {
        bag->SetParameter(id, Val(id));
        bag->SetCacheParameter(id, Val(id));
    }
    return bag;
}

// By all ways of asking.
void ExpectThere(TestBag& bag, int id) {
    ASSERT_TRUE(bag.HasParameter(id)) << id;
    ASSERT_TRUE(bag.HasCacheParameter(id)) << id;
    const TestBag& constBag = bag;
    const IParameters& anyBag = bag;
    EXPECT_EQ(id, GetParameterValue<int>(&bag.GetParameter(id)));
    EXPECT_EQ(id, GetParameterValue<int>(&constBag.GetParameter(id)));
    EXPECT_EQ(id, GetParameterValue<int>(&bag.GetCacheParameter(id)));
    EXPECT_EQ(&bag.GetParameter(id), &anyBag.GetParameter(id));
}

void ExpectMissing(TestBag& bag, int id) {
    const TestBag& constBag = bag;
    EXPECT_FALSE(bag.HasParameter(id)) << id;
    EXPECT_FALSE(bag.HasCacheParameter(id)) << id;
    EXPECT_EQ(id, MissingId([&] { bag.GetParameter(id); }));
    EXPECT_EQ(id, MissingId([&] { constBag.GetParameter(id); }));
    EXPECT_EQ(id, MissingId([&] { bag.GetCacheParameter(id); }));
}

void Remove(TestBag& bag, int id) {
    bag.RemoveParameter(id);
    bag.SetCacheParameter(id, nullptr);
}

class LabelledBag final : public BaseParameters {
public:
    explicit LabelledBag(RefCntPtr<IParameter> label) : m_label(std::move(label)) {}
    IParameter& GetParameter(int id) override { return id == 0 ? *m_label : BaseParameters::GetParameter(id); }
    const IParameter& GetParameter(int id) const override {
        return id == 0 ? *m_label : BaseParameters::GetParameter(id);
    }

protected:
    RefCntPtr<BaseParameters> DoEmptyClone() override { return RefCntPtr<BaseParameters>(new LabelledBag(m_label)); }

private:
    RefCntPtr<IParameter> m_label;
};

}  // namespace

TEST(BagLookUp, AnEmptyBagHasNothing) {
    const auto bag = MakeBag();
    for (const int id : {kMin, -1, 0, 1, kMax}) {
        ExpectMissing(*bag, id);
    }
    bag->SetParameter(0, Val(0));
    bag->SetCacheParameter(0, Val(0));
    ExpectThere(*bag, 0);
    Remove(*bag, 0);
    ExpectMissing(*bag, 0);
}

TEST(BagLookUp, NeighboursOfARangeAreMissing) {
    for (const int first : {-2, -1, 0, 1, 100}) {
        const auto bag = BagOf({first, first + 1, first + 2});
        for (int id = first; id < first + 3; ++id) {
            ExpectThere(*bag, id);
        }
        for (const int id : {first - 1, first + 3, first + 4, kMin, kMax}) {
            ExpectMissing(*bag, id);
        }
    }
}

TEST(BagLookUp, TheOutermostIdentifiers) {
    const auto low = BagOf({kMin, kMin + 1});
    ExpectThere(*low, kMin);
    ExpectThere(*low, kMin + 1);
    ExpectMissing(*low, kMin + 2);
    ExpectMissing(*low, kMax);
    const auto high = BagOf({kMax - 1, kMax});
    ExpectThere(*high, kMax - 1);
    ExpectThere(*high, kMax);
    ExpectMissing(*high, kMax - 2);
    ExpectMissing(*high, kMin);
    const auto both = BagOf({kMin, kMax});
    ExpectThere(*both, kMin);
    ExpectThere(*both, kMax);
    ExpectMissing(*both, kMin + 1);
    ExpectMissing(*both, 0);
    ExpectMissing(*both, -1);
}

TEST(BagLookUp, ARemovedIdentifierLeavesAGap) {
    const auto bag = BagOf({1, 2, 3, 4, 5});
    Remove(*bag, 3);
    ExpectMissing(*bag, 3);
    for (const int id : {1, 2, 4, 5}) {
        ExpectThere(*bag, id);
    }
    Remove(*bag, 1);
    ExpectMissing(*bag, 1);
    for (const int id : {2, 4, 5}) {
        ExpectThere(*bag, id);
    }
}

TEST(BagLookUp, WithoutGapsAgain) {
    const auto bag = BagOf({1, 2, 3, 4, 5});
    for (const int id : {2, 4}) {
        Remove(*bag, id);
    }
    bag->SetParameter(-7, Val(-7));
    bag->SetCacheParameter(-7, Val(-7));
    for (const int id : {-7, 1, 3, 5}) {
        ExpectThere(*bag, id);
    }
    ExpectMissing(*bag, -6);
    Remove(*bag, -7);
    for (const int id : {4, 2}) {
        bag->SetParameter(id, Val(id));
        bag->SetCacheParameter(id, Val(id));
    }
    for (const int id : {1, 2, 3, 4, 5}) {
        ExpectThere(*bag, id);
    }
    ExpectMissing(*bag, 0);
    ExpectMissing(*bag, 6);
}

TEST(BagLookUp, AgreesWithAMapWhileEntriesComeAndGo) {
    std::mt19937 random(5);
    for (const int base : {-10, 0, kMin, kMax - 19}) {
        const auto bag = MakeBag();
        std::map<int, int> model;
        for (int step = 0; step < 400; ++step) {
            const int id = base + static_cast<int>(random() % 20);
            // At first more come than go, then the other way round.
            if (random() % 4 < (step < 200 ? 3u : 1u)) {
                bag->SetParameter(id, Val(step));
                model[id] = step;
            } else {
                bag->RemoveOptionalParameter(id);
                model.erase(id);
            }
            for (int offset = 0; offset < 20; ++offset) {
                const auto known = model.find(base + offset);
                ASSERT_EQ(known != model.end(), bag->HasParameter(base + offset));
                if (known != model.end()) {
                    ASSERT_EQ(known->second, GetParameterValue<int>(&bag->GetParameter(base + offset)));
                }
            }
        }
    }
}

TEST(BagLookUp, AClassMayAnswerOtherwise) {
    const RefCntPtr<BaseParameters> bag(new LabelledBag(Val(42)));
    bag->SetParameter(1, Val(1));
    const BaseParameters& constBag = *bag;
    EXPECT_EQ(42, GetParameterValue<int>(&bag->GetParameter(0)));
    EXPECT_EQ(42, GetParameterValue<int>(&constBag.GetParameter(0)));
    EXPECT_EQ(1, GetParameterValue<int>(&bag->GetParameter(1)));
    EXPECT_EQ(2, MissingId([&] { constBag.GetParameter(2); }));
}

// The place of a function in a host's class must be that of the library's own, or its bags go the long way.
#if defined(__GXX_ABI_VERSION) && defined(__x86_64__)
TEST(BagLookUp, OnlyAClassThatAnswersOtherwiseIsNotPlain) {
    using qvpreslayer::detail::PlainBags;
    const RefCntPtr<BaseParameters> labelled(new LabelledBag(Val(42)));
    EXPECT_NE(nullptr, PlainBags::Find(*MakeBag()));
    EXPECT_EQ(nullptr, PlainBags::Find(*labelled));
}
#endif
