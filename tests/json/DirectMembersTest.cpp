// How members begin and where texts end: names of every length, first and later members, the last units of a text; and
// lists of integers that share digits with their neighbours.
#include <qvpreslayer/qvpreslayer.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/EventsOnly.h"
#include "support/TestHost.h"

namespace {

constexpr int kFirst = 1000;
constexpr int kNames = 60;
constexpr int kBag = kFirst + kNames;

// Names of one to sixty letters, which camel case leaves as they are; short names too.
std::wstring NameOf(int index) { return std::wstring(static_cast<std::size_t>(index) + 1, L'a'); }
std::wstring ShortNameOf(int index) { return L"s" + NameOf(index); }

class DirectMembers : public testing::Test {
protected:
    DirectMembers() {
        m_registry.Add(L"view", kFirst, kBag, [](AbstractParamAdder& adder) {
            for (int i = 0; i < kNames; ++i) {
                adder.AddSimple(kFirst + i, NameOf(i).c_str(), ShortNameOf(i).c_str(),
                                i % 2 == 0 ? static_cast<IParameterSerializer*>(new ParameterTypeSerializer<int>)
                                           : new TStringSerializer);
            }
            adder.AddBag(kBag, L"zz", L"zz");
        });
        RegisterCoreNamespaceParameters(m_registry, L"qvcore");
    }

    static void Set(IParameters& bag, int index) {
        if (index % 2 == 0) {
            SetParameterValue<int>(bag, kFirst + index, -index);
        } else {
            SetParameterValue<TString>(bag, kFirst + index, TString(NameOf(index)));
        }
    }

    // A member as the compact form spells it.
    static std::wstring MemberOf(int index, bool shortName) {
        const std::wstring name = shortName ? ShortNameOf(index) : NameOf(index);
        const std::wstring value = index % 2 == 0 ? std::to_wstring(-index) : L'"' + NameOf(index) + L'"';
        return L'"' + name + L"\": " + value;
    }

    static void ExpectValue(const IParameters& bag, int index) {
        if (index % 2 == 0) {
            EXPECT_EQ(-index, GetParameterValue<int>(bag, kFirst + index));
        } else {
            EXPECT_EQ(TString(NameOf(index)), GetParameterValue<TString>(bag, kFirst + index));
        }
    }

    void ExpectBothWays(bool shortNames) {
        m_session.Vars().shortNames = shortNames;
        for (int first = 0; first < kNames; ++first) {
            // The last member ends close to the end of the text, whatever the length of its name.
            const int second = (first + 7) % kNames;
            const auto bag = MakeBag();
            Set(*bag, first);
            Set(*bag, second);
            const std::wstring lower = MemberOf(std::min(first, second), shortNames);
            const std::wstring upper = MemberOf(std::max(first, second), shortNames);
            const TString text = L'{' + lower + L',' + upper + L'}';
            EXPECT_EQ(text, m_json.ToString(bag, JSONSerializer::Compact));

            for (const TString& read :
                 {text, TString(L'{' + upper + L',' + lower + L'}'), TString(L"{ " + lower + L" , " + upper + L" }")}) {
                const auto made = m_json.ToParameters(read);
                ExpectValue(*made, first);
                ExpectValue(*made, second);
            }
        }
    }

    TestRegistry m_registry;
    TestSession m_session;
    JSONSerializer m_json{L"view"};
};

TEST_F(DirectMembers, NamesOfEveryLength) { ExpectBothWays(false); }
TEST_F(DirectMembers, ShortNamesOfEveryLength) { ExpectBothWays(true); }

// "aaaaa" begins as "aaa" does: neither is taken for the other, in any order.
TEST_F(DirectMembers, NamesThatBeginAlike) {
    std::wstring all;
    for (int i = kNames - 1; i >= 0; --i) {
        all += (all.empty() ? L"{" : L",") + MemberOf(i, false);
    }
    const auto bag = m_json.ToParameters(TString(all + L'}'));
    for (int i = 0; i < kNames; ++i) {
        ExpectValue(*bag, i);
    }
}

// Nothing of a bag is lost where what is inside it holds nothing.
TEST_F(DirectMembers, EmptyBagBesideValues) {
    const auto bag = m_json.ToParameters(u"{\"a\": 5,\"aaa\": 7,\"zz\":{}}");
    EXPECT_EQ(5, GetParameterValue<int>(*bag, kFirst));
    EXPECT_EQ(7, GetParameterValue<int>(*bag, kFirst + 2));
    const auto inside = GetParameterValue<RefCntPtr<const IParameters>>(*bag, kBag);
    ASSERT_TRUE(inside);
    EXPECT_EQ(u"{}", m_json.ToString(inside, JSONSerializer::Compact));
}

TEST_F(DirectMembers, NullBesideValues) {
    const auto bag = m_json.ToParameters(u"{\"a\": 5,\"aaa\": null,\"aaaaa\": 7}");
    EXPECT_EQ(u"{\"a\": 5,\"aaaaa\": 7}", m_json.ToString(bag, JSONSerializer::Compact));
}

// A bag that a factory fills in advance keeps what it has.
TEST_F(DirectMembers, FactoryThatFillsItsBags) {
    class FillingRegistry final : public TestRegistry {
    public:
        RefCntPtr<IParameters> CreateParameters() override {
            const RefCntPtr<IParameters> bag = MakeBag();
            SetParameterValue<int>(*bag, kFirst + 4, 1);
            return bag;
        }
    };
    FillingRegistry registry;
    registry.Add(L"filled", kFirst, kFirst + 9, [](AbstractParamAdder& adder) {
        adder.AddSimple(kFirst, L"a", L"a", new ParameterTypeSerializer<int>);
        adder.AddSimple(kFirst + 4, L"e", L"e", new ParameterTypeSerializer<int>);
        adder.AddSimple(kFirst + 8, L"i", L"i", new ParameterTypeSerializer<int>);
    });
    const JSONSerializer json(L"filled");
    EXPECT_EQ(u"{\"a\": 2,\"e\": 1,\"i\": 3}",
              json.ToString(json.ToParameters(u"{\"a\": 2,\"i\": 3}"), JSONSerializer::Compact));
    EXPECT_EQ(u"{\"e\": 6,\"i\": 3}",
              json.ToString(json.ToParameters(u"{\"e\": 6,\"i\": 3}"), JSONSerializer::Compact));
}

template <class T>
class NearIntegerLists : public testing::Test {
protected:
    NearIntegerLists() {
        m_registry.Add(L"view", 1, 9, [](AbstractParamAdder& adder) {
            adder.AddList(1, L"list", L"l", new ParameterTypeSerializer<T>);
        });
        RegisterCoreNamespaceParameters(m_registry, L"qvcore");
    }

    void ExpectTextsOfEach(const std::vector<T>& values) {
        std::wstring expected = L"{\"list\":[";
        for (std::size_t i = 0; i < values.size(); ++i) {
            expected += (i == 0 ? L"" : L",") + std::to_wstring(values[i]);
        }
        const auto bag = MakeBag();
        SetParameterValue(*bag, 1, values);
        EXPECT_EQ(TString(expected + L"]}"), JSONSerializer(L"view").ToString(bag, JSONSerializer::Compact));
    }

    TestRegistry m_registry;
};

using IntegerTypes = testing::Types<int, unsigned int, Int64, UInt64>;
TYPED_TEST_SUITE(NearIntegerLists, IntegerTypes);

// Steps of one over every power of ten, over both ends of the type, and over zero; one block and several.
TYPED_TEST(NearIntegerLists, AcrossPowersOfTen) {
    using Limits = std::numeric_limits<TypeParam>;
    for (const int size : {7, 8, 9, 127, 128, 129, 300}) {
        std::vector<TypeParam> starts = {0, Limits::min(), static_cast<TypeParam>(Limits::max() - size)};
        TypeParam power = 1;
        for (int digit = 0; digit < Limits::digits10; ++digit) {
            power = static_cast<TypeParam>(power * 10);
            starts.push_back(static_cast<TypeParam>(power - static_cast<TypeParam>(size / 2)));
        }
        for (const TypeParam start : starts) {
            std::vector<TypeParam> values;
            std::vector<TypeParam> negative;
            for (int i = 0; i < size; ++i) {
                values.push_back(static_cast<TypeParam>(start + static_cast<TypeParam>(i)));
                negative.push_back(static_cast<TypeParam>(TypeParam{0} - values.back()));
            }
            this->ExpectTextsOfEach(values);
            this->ExpectTextsOfEach(negative);
        }
    }
}

// Neighbours far from each other between near ones, also such that differ by whole powers of two of their type.
TYPED_TEST(NearIntegerLists, WithOthersBetween) {
    std::vector<TypeParam> values;
    for (int i = 0; i < 400; ++i) {
        const auto near = static_cast<TypeParam>(123450000 + i * 10);
        values.push_back(i % 9 == 4    ? static_cast<TypeParam>(std::uint64_t{0x80000000} * static_cast<unsigned>(i))
                         : i % 31 == 7 ? static_cast<TypeParam>(i)
                                       : near);
    }
    this->ExpectTextsOfEach(values);
    for (TypeParam& value : values) {
        value = static_cast<TypeParam>(value / 10000);
    }
    this->ExpectTextsOfEach(values);
}

}  // namespace
