#include <qvpreslayer/BaseParameters.h>

#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

// Writes what it is shown, in the order in which it is shown: "-3=b 7=a".
class EntryWriter final : public IParameterVisitor {
public:
    void VisitParameter(int id, const RefCntPtr<IParameter>& value) override {
        m_text +=
            (m_text.empty() ? "" : " ") + std::to_string(id) + "=" + GetParameterValue<TString>(value.Get()).ToUtf8();
    }
    const std::string& Text() const { return m_text; }

private:
    std::string m_text;
};

std::string EntriesOf(const IParameters& bag) {
    EntryWriter writer;
    bag.Accept(writer);
    return writer.Text();
}

// A class that cannot be cloned.
class UnclonableBag final : public BaseParameters {
protected:
    ~UnclonableBag() override = default;
    RefCntPtr<BaseParameters> DoEmptyClone() override { return {}; }
};

class BagOfATest final : public BaseParameters {
public:
    bool IsTestParameters() const override { return true; }

protected:
    ~BagOfATest() override = default;
    RefCntPtr<BaseParameters> DoEmptyClone() override { return RefCntPtr<BaseParameters>(new BagOfATest); }
};

}  // namespace

TEST(BaseParameters, IsEmptyAtFirst) {
    const auto bag = MakeBag();
    EXPECT_EQ("", EntriesOf(*bag));
    EXPECT_FALSE(bag->HasParameter(0));
    EXPECT_FALSE(bag->HasCacheParameter(0));
}

TEST(BaseParameters, StoresTheValueObjectItself) {
    const auto bag = MakeBag();
    const auto value = Text(L"a");
    bag->SetParameter(7, value);
    EXPECT_TRUE(bag->HasParameter(7));
    EXPECT_EQ(value.Get(), &bag->GetParameter(7));
    const TestBag& readOnly = *bag;
    EXPECT_EQ(value.Get(), &readOnly.GetParameter(7));
}

TEST(BaseParameters, StoringAgainReplacesAndLetsGoOfTheOldValue) {
    int alive = 0;
    const auto bag = MakeBag();
    bag->SetParameter(1, RefCntPtr<IParameter>(new CountedValue(alive)));
    ASSERT_EQ(1, alive);
    const auto value = Text(L"new");
    bag->SetParameter(1, value);
    EXPECT_EQ(0, alive);
    EXPECT_EQ(value.Get(), &bag->GetParameter(1));
}

TEST(BaseParameters, StoringTheSameValueAgainKeepsIt) {
    int alive = 0;
    const auto bag = MakeBag();
    bag->SetParameter(1, RefCntPtr<IParameter>(new CountedValue(alive)));
    bag->SetParameter(1, RefCntPtr<IParameter>(&bag->GetParameter(1)));
    EXPECT_EQ(1, alive);
    EXPECT_TRUE(bag->HasParameter(1));
}

TEST(BaseParameters, StoringNullRemoves) {
    int alive = 0;
    const auto bag = MakeBag({{1, RefCntPtr<IParameter>(new CountedValue(alive))}});
    bag->SetParameter(1, nullptr);
    EXPECT_FALSE(bag->HasParameter(1));
    EXPECT_EQ(0, alive);
    EXPECT_EQ(1, MissingId([&] { bag->GetParameter(1); }));
}

TEST(BaseParameters, StoringNullWhereNothingIsDoesNothing) {
    const auto bag = MakeBag({{2, Text(L"b")}});
    EXPECT_NO_THROW(bag->SetParameter(9, nullptr));
    EXPECT_FALSE(bag->HasParameter(9));
    EXPECT_EQ("2=b", EntriesOf(*bag));
}

TEST(BaseParameters, AnAbsentValueIsMissing) {
    const auto bag = MakeBag({{2, Text(L"b")}});
    const TestBag& readOnly = *bag;
    EXPECT_EQ(1, MissingId([&] { bag->GetParameter(1); }));
    EXPECT_EQ(-1, MissingId([&] { readOnly.GetParameter(-1); }));
    EXPECT_EQ("2=b", EntriesOf(*bag));
}

TEST(BaseParameters, TheMissingIdentifierIsTheOnlyComplaint) {
    const auto error = Thrown<MissingParameterCommandException>([] { MakeBag()->GetParameter(42); });
    ASSERT_TRUE(error);
    EXPECT_EQ(std::vector<int>{42}, error->GetMissing());
    EXPECT_TRUE(error->GetWrongType().empty());
    EXPECT_STREQ("Error in command parameters", error->what());
}

TEST(BaseParameters, RemoveTakesTheEntryAway) {
    const auto bag = MakeBag({{1, Text(L"a")}, {2, Text(L"b")}});
    bag->RemoveParameter(1);
    EXPECT_EQ("2=b", EntriesOf(*bag));
    bag->RemoveOptionalParameter(2);
    EXPECT_EQ("", EntriesOf(*bag));
}

TEST(BaseParameters, RemovingAnAbsentEntryThrowsAndChangesNothing) {
    const auto bag = MakeBag({{1, Text(L"a")}});
    EXPECT_EQ(3, MissingId([&] { bag->RemoveParameter(3); }));
    EXPECT_EQ("1=a", EntriesOf(*bag));
}

TEST(BaseParameters, RemovingAnAbsentOptionalEntryIsSilent) {
    const auto bag = MakeBag({{1, Text(L"a")}});
    EXPECT_NO_THROW(bag->RemoveOptionalParameter(3));
    EXPECT_EQ("1=a", EntriesOf(*bag));
}

TEST(BaseParameters, ACacheEntryCanBeStoredInAConstBag) {
    const RefCntPtr<const TestBag> bag(MakeBag());
    const auto value = Text(L"kept");
    bag->SetCacheParameter(1, value);
    EXPECT_TRUE(bag->HasCacheParameter(1));
    EXPECT_EQ(value.Get(), &bag->GetCacheParameter(1));
}

TEST(BaseParameters, StoringNullInTheCacheRemoves) {
    int alive = 0;
    const auto bag = MakeBag();
    bag->SetCacheParameter(1, RefCntPtr<IParameter>(new CountedValue(alive)));
    ASSERT_EQ(1, alive);
    bag->SetCacheParameter(1, nullptr);
    EXPECT_FALSE(bag->HasCacheParameter(1));
    EXPECT_EQ(0, alive);
    EXPECT_NO_THROW(bag->SetCacheParameter(1, nullptr));
}

TEST(BaseParameters, AnAbsentCacheEntryIsMissing) {
    const auto bag = MakeBag({{5, Text(L"no cache entry")}});
    EXPECT_EQ(5, MissingId([&] { bag->GetCacheParameter(5); }));
}

TEST(BaseParameters, CacheAndParametersKeepOutOfEachOthersWay) {
    const auto bag = MakeBag({{1, Text(L"a")}});
    bag->SetCacheParameter(2, Text(L"cached"));
    EXPECT_FALSE(bag->HasCacheParameter(1));
    EXPECT_FALSE(bag->HasParameter(2));
    EXPECT_EQ(2, MissingId([&] { bag->RemoveParameter(2); }));
    bag->RemoveOptionalParameter(2);
    EXPECT_TRUE(bag->HasCacheParameter(2));
    bag->SetCacheParameter(1, nullptr);
    EXPECT_TRUE(bag->HasParameter(1));
}

TEST(BaseParameters, AcceptGoesUpBySignedIdentifier) {
    const auto bag = MakeBag({{7, Text(L"a")},
                              {-3, Text(L"b")},
                              {12, Text(L"c")},
                              {std::numeric_limits<int>::min(), Text(L"d")},
                              {std::numeric_limits<int>::max(), Text(L"e")}});
    EXPECT_EQ("-2147483648=d -3=b 7=a 12=c 2147483647=e", EntriesOf(*bag));
}

TEST(BaseParameters, AcceptLeavesOutTheCache) {
    const auto bag = MakeBag({{7, Text(L"a")}});
    bag->SetCacheParameter(1, Text(L"hidden"));
    bag->SetCacheParameter(7, Text(L"hidden too"));
    EXPECT_EQ("7=a", EntriesOf(*bag));
}

TEST(BaseParameters, IsNoBagOfATestUnlessItSaysSo) {
    EXPECT_FALSE(MakeBag()->IsTestParameters());
    EXPECT_TRUE(RefCntPtr<IParameters>(new BagOfATest)->IsTestParameters());
}

TEST(BaseParameters, EmptyCloneIsAnEmptyBagOfTheSameClass) {
    const auto bag = MakeBag({{1, Text(L"a")}});
    bag->SetCacheParameter(2, Text(L"b"));
    const auto clone = bag->EmptyClone();
    EXPECT_TRUE(DynamicPtrCast<TestBag>(clone));
    EXPECT_NE(bag.Get(), clone.Get());
    EXPECT_EQ("", EntriesOf(*clone));
    EXPECT_FALSE(clone->HasCacheParameter(2));
}

TEST(BaseParameters, ACloneSharesParametersAndCacheEntries) {
    const auto bag = MakeBag({{1, Text(L"a")}});
    bag->SetCacheParameter(2, Text(L"b"));
    const auto clone = bag->Clone();
    EXPECT_TRUE(DynamicPtrCast<TestBag>(clone));
    EXPECT_EQ("1=a", EntriesOf(*clone));
    EXPECT_EQ(&bag->GetParameter(1), &clone->GetParameter(1));
    EXPECT_EQ(&bag->GetCacheParameter(2), &clone->GetCacheParameter(2));
}

TEST(BaseParameters, ACloneGoesItsOwnWay) {
    const auto bag = MakeBag({{1, Text(L"a")}});
    const auto clone = bag->Clone();
    bag->SetParameter(1, Text(L"changed"));
    clone->SetParameter(2, Text(L"added"));
    clone->SetCacheParameter(3, Text(L"cached"));
    EXPECT_EQ("1=changed", EntriesOf(*bag));
    EXPECT_FALSE(bag->HasCacheParameter(3));
    EXPECT_EQ("1=a 2=added", EntriesOf(*clone));
}

TEST(BaseParameters, AClassThatMakesNoEmptyBagCannotBeCloned) {
    const RefCntPtr<BaseParameters> bag(new UnclonableBag);
    EXPECT_EQ("m_ptr", LogicErrorOf([&] { bag->Clone(); }));
    EXPECT_FALSE(bag->EmptyClone());
}

TEST(BaseParameters, CopyMergesAndOverwrites) {
    const auto from = MakeBag({{2, Text(L"c")}, {3, Text(L"d")}});
    const auto to = MakeBag({{1, Text(L"a")}, {2, Text(L"b")}});
    BaseParameters::Copy(RefCntPtr<const BaseParameters>(from), to);
    EXPECT_EQ("1=a 2=c 3=d", EntriesOf(*to));
    EXPECT_EQ(&from->GetParameter(2), &to->GetParameter(2));
    EXPECT_EQ(&from->GetParameter(3), &to->GetParameter(3));
    EXPECT_EQ("2=c 3=d", EntriesOf(*from));
}

TEST(BaseParameters, CopyMergesTheCacheIntoTheCache) {
    const auto from = MakeBag();
    const auto to = MakeBag();
    from->SetCacheParameter(2, Text(L"c"));
    to->SetCacheParameter(1, Text(L"a"));
    to->SetCacheParameter(2, Text(L"b"));
    BaseParameters::Copy(RefCntPtr<const BaseParameters>(from), to);
    EXPECT_TRUE(to->HasCacheParameter(1));
    EXPECT_EQ(&from->GetCacheParameter(2), &to->GetCacheParameter(2));
    EXPECT_EQ("", EntriesOf(*to));
}

TEST(BaseParameters, CopyNeedsBothBags) {
    const auto bag = MakeBag({{1, Text(L"a")}});
    EXPECT_EQ("m_ptr", LogicErrorOf([&] { BaseParameters::Copy(nullptr, bag); }));
    EXPECT_EQ("m_ptr", LogicErrorOf([&] { BaseParameters::Copy(RefCntPtr<const BaseParameters>(bag), nullptr); }));
    EXPECT_EQ("m_ptr",
              LogicErrorOf([&] { BaseParameters::Copy(RefCntPtr<const BaseParameters>(MakeBag()), nullptr); }));
    EXPECT_EQ("1=a", EntriesOf(*bag));
}

TEST(BaseParameters, CopyOntoItselfChangesNothing) {
    const auto bag = MakeBag({{1, Text(L"a")}, {2, Text(L"b")}});
    bag->SetCacheParameter(3, Text(L"c"));
    const IParameter* value = &bag->GetParameter(1);
    BaseParameters::Copy(RefCntPtr<const BaseParameters>(bag), bag);
    EXPECT_EQ("1=a 2=b", EntriesOf(*bag));
    EXPECT_EQ(value, &bag->GetParameter(1));
    EXPECT_TRUE(bag->HasCacheParameter(3));
}

TEST(BaseParameters, GoingLetsGoOfTheValuesOfBothMaps) {
    int alive = 0;
    auto bag = MakeBag({{1, RefCntPtr<IParameter>(new CountedValue(alive))}});
    bag->SetCacheParameter(1, RefCntPtr<IParameter>(new CountedValue(alive)));
    ASSERT_EQ(2, alive);
    bag.Reset();
    EXPECT_EQ(0, alive);
}

TEST(BaseParameters, AValueOutlivesOneOfItsBags) {
    int alive = 0;
    auto one = MakeBag({{1, RefCntPtr<IParameter>(new CountedValue(alive))}});
    auto other = MakeBag({{9, RefCntPtr<IParameter>(&one->GetParameter(1))}});
    one.Reset();
    EXPECT_EQ(1, alive);
    EXPECT_TRUE(other->HasParameter(9));
    other.Reset();
    EXPECT_EQ(0, alive);
}

TEST(BaseParameters, NeedsNoRegistry) {
    ASSERT_EQ(nullptr, ParametersRegistry::GetInstance());
    const auto bag = MakeBag({{123456, Text(L"a")}});
    EXPECT_EQ("123456=a", EntriesOf(*bag->Clone()));
}

TEST(BaseParameters, VisitorsAreNeverDeletedThroughTheirInterface) {
    EXPECT_FALSE(std::has_virtual_destructor_v<IParameterVisitor>);
    EXPECT_FALSE(std::is_destructible_v<IParameterVisitor>);
    EXPECT_FALSE(std::is_destructible_v<BaseParameters>);
}
