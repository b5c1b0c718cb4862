#include <qvpreslayer/EnumTable.h>

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "serializers/EnumTestTypes.h"
#include "support/Printing.h"
#include "support/TestHost.h"

// An enumeration of a host. Besides the enumeration itself it takes a line for each enumerator and four more: seven.
// Numbers may be negative and have gaps.
enum class Season : int { Frost = -3, Dry = 1, Wet = 2000000000 };

inline constexpr EnumName<Season> kSeasonNames[] = {
    {Season::Frost, u"frost"},
    {Season::Dry, u"dry-season"},
    {Season::Wet, u"wet-season"},
};
template <>
struct ParameterTypeTraits<Season> : EnumTraits<kSeasonNames, Season::Dry> {};

namespace {

using qvpreslayer::detail::FindByName;
using qvpreslayer::detail::FindByValue;
using qvpreslayer::detail::HasUniqueNames;
using qvpreslayer::detail::IsAscending;
using qvpreslayer::detail::SlotsByName;
using qvpreslayer::detail::UnknownName;
using testing::ElementsAre;

using SeasonSerializer = ParameterTypeSerializer<Season>;

TEST(HostEnumeration, TravelsAsText) {
    EXPECT_EQ(TString(L"wet-season"), SeasonSerializer::TypeToString(Season::Wet));
    EXPECT_EQ(TString(L"frost"), SeasonSerializer::TypeToString(Season::Frost));
    EXPECT_EQ(Season::Frost, SeasonSerializer::TypeFromString(L"frost"));
    EXPECT_EQ(Season::Dry, SeasonSerializer::TypeFromString(L"Frost"));
    EXPECT_THAT(Doing([] { SeasonSerializer::TypeToString(Season{2}); }), ThrowsUnknownEnumValue());
}

TEST(HostEnumeration, ServesListsInJSON) {
    TestRegistry registry;
    registry.Add(L"climate", 1, 9,
                 [](AbstractParamAdder& adder) { adder.AddList(1, L"seasons", new SeasonSerializer); });
    const JSONSerializer json(L"climate");
    const auto bag = MakeBag({{1, Val(std::vector{Season::Wet, Season::Dry})}});
    EXPECT_EQ(TString(L"{\"seasons\":[\"wet-season\",\"dry-season\"]}"), json.ToString(bag, JSONSerializer::Compact));
    const auto read = json.ToParameters(L"{\"seasons\": [\"frost\", \"monsoon\"]}");
    EXPECT_THAT(GetParameterValue<std::vector<Season>>(*read, 1), ElementsAre(Season::Frost, Season::Dry));
}

TEST(HostEnumeration, IsListedLikeTheOthers) {
    std::string listing;
    for (const auto& [value, name] : GetEnumValues<Season>()) {
        listing += std::to_string(static_cast<int>(value)) + "=" + TString(name).ToUtf8() + " ";
    }
    EXPECT_EQ("-3=frost 1=dry-season 2000000000=wet-season ", listing);
    EXPECT_EQ(Season::Dry, GetEnumDefault<Season>());
}

// The listing can be used where the compiler needs a constant.
static_assert(GetEnumValues<WhiskerEnd>().size() == 3);
static_assert(GetEnumValues<WhiskerEnd>()[2].name == u"large");
static_assert(GetEnumDefault<WhiskerEnd>() == WhiskerEnd::Large);

TEST(EnumLookup, StrictModeRaisesWhatLenientModeReadsAsTheDefault) {
    using Traits = ParameterTypeTraits<Season>;
    EXPECT_EQ(Season::Wet, Traits::Lookup(u"wet-season", UnknownName::IsError));
    EXPECT_EQ(Season::Dry, Traits::Lookup(u"monsoon", UnknownName::IsDefault));
    EXPECT_THAT(Doing([] { Traits::Lookup(u"monsoon", UnknownName::IsError); }), ThrowsUnknownEnumValue());
    EXPECT_THAT(Doing([] { Traits::Lookup(u"", UnknownName::IsError); }), ThrowsUnknownEnumValue());
}

// Small tables, some of them wrong.
enum class Step : std::int8_t { Low = -128, Middle = 0, High = 127 };

constexpr EnumName<Step> kSteps[] = {{Step::Low, u"b"}, {Step::Middle, u"aa"}, {Step::High, u"a"}};
constexpr EnumName<Step> kDescending[] = {{Step::Middle, u"a"}, {Step::Low, u"b"}};
constexpr EnumName<Step> kTwice[] = {{Step::Low, u"a"}, {Step::High, u"b"}, {Step::High, u"c"}};
constexpr EnumName<Step> kSameName[] = {{Step::Low, u"a"}, {Step::Middle, u"bb"}, {Step::High, u"a"}};
constexpr EnumName<Step> kSingle[] = {{Step::High, u""}};

TEST(EnumTableChecks, ValuesAscend) {
    EXPECT_TRUE(IsAscending(kSteps));
    EXPECT_TRUE(IsAscending(kSingle));
    EXPECT_FALSE(IsAscending(kDescending));
    EXPECT_FALSE(IsAscending(kTwice));
}

TEST(EnumTableChecks, NamesAreUnique) {
    EXPECT_TRUE(HasUniqueNames(kSteps, SlotsByName(kSteps)));
    EXPECT_TRUE(HasUniqueNames(kSingle, SlotsByName(kSingle)));
    EXPECT_FALSE(HasUniqueNames(kSameName, SlotsByName(kSameName)));
}

TEST(EnumTableSearch, FindsValuesAcrossGapsAndBytes) {
    EXPECT_EQ(&kSteps[0], FindByValue(kSteps, Step::Low));
    EXPECT_EQ(&kSteps[1], FindByValue(kSteps, Step::Middle));
    EXPECT_EQ(&kSteps[2], FindByValue(kSteps, Step::High));
    EXPECT_EQ(nullptr, FindByValue(kSteps, Step{-127}));
    EXPECT_EQ(nullptr, FindByValue(kSteps, Step{1}));
    EXPECT_EQ(nullptr, FindByValue(kSingle, Step::Low));
}

TEST(EnumTableSearch, FindsNamesWhateverTheirOrder) {
    constexpr auto kSlots = SlotsByName(kSteps);
    EXPECT_EQ(&kSteps[2], FindByName(kSteps, kSlots, u"a"));
    EXPECT_EQ(&kSteps[1], FindByName(kSteps, kSlots, u"aa"));
    EXPECT_EQ(&kSteps[0], FindByName(kSteps, kSlots, u"b"));
    EXPECT_EQ(nullptr, FindByName(kSteps, kSlots, u""));
    EXPECT_EQ(nullptr, FindByName(kSteps, kSlots, u"ab"));
    EXPECT_EQ(nullptr, FindByName(kSteps, kSlots, u"c"));
    EXPECT_EQ(nullptr, FindByName(kSteps, kSlots, u"aaa"));
    EXPECT_EQ(&kSingle[0], FindByName(kSingle, SlotsByName(kSingle), u""));
}

}  // namespace
