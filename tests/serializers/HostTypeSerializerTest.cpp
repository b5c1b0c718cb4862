#include <qvpreslayer/ParameterTypeTraits.h>  // first: the header stands alone

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <qvpreslayer/ParameterTypeSerializer.h>

#include "support/Failures.h"
#include "support/ListHost.h"
#include "support/Printing.h"

namespace {

// Types of a host: an angle that is written as a number, and a flavour for which no value is a programming error.
struct Angle {
    int degrees = 0;
    friend bool operator==(const Angle&, const Angle&) = default;
};

enum class Flavour { Sweet, Sour };

}  // namespace

template <>
struct ParameterTypeTraits<Angle> : ParameterTypeTraitsBase {
    static constexpr ParameterTypeCategory kCategory = PTC_Number;
    static TString ToText(const Angle& value) { return TString::number(value.degrees); }
    static Angle FromText(const TString& text) {
        bool ok = true;
        const int degrees = text.toInt(&ok);
        if (!ok) {
            throw std::invalid_argument("no angle");
        }
        return Angle{degrees};
    }
};

template <>
struct ParameterTypeTraits<Flavour> : ParameterTypeTraitsBase {
    static constexpr bool kNullIsLogicError = true;
    static TString ToText(const Flavour& value) { return value == Flavour::Sweet ? L"sweet" : L"sour"; }
    static Flavour FromText(const TString& text) { return text == L"sour" ? Flavour::Sour : Flavour::Sweet; }
};

namespace {

using AngleSerializer = ParameterTypeSerializer<Angle>;
using FlavourSerializer = ParameterTypeSerializer<Flavour>;

}  // namespace

TEST(HostTypeSerializer, HabitsComeFromTheTraits) {
    EXPECT_EQ(PTC_Number, AngleSerializer().GetType());
    EXPECT_EQ(PTC_Text, FlavourSerializer().GetType());
}

TEST(HostTypeSerializer, OneManyAndKeyed) {
    AngleSerializer serializer;
    EXPECT_EQ(L"90", serializer.ToString(Val(Angle{90})));
    EXPECT_EQ(Angle{45}, GetParameterValue<Angle>(serializer.FromString(L"45").Get()));
    EXPECT_EQ((std::vector<TString>{L"1", L"2"}), serializer.ToStringList(Val<std::vector<Angle>>({{1}, {2}})));
    EXPECT_EQ((std::map<TString, TString>{{L"a", L"7"}}),
              serializer.ToStringMap(Val<std::map<TString, Angle>>({{L"a", Angle{7}}})));
}

TEST(HostTypeSerializer, ListsAreNotPackedUnlessTheTraitsSaySo) {
    ListHost<Angle> host;
    EXPECT_EQ("values:2[5 5 5 5 5]", host.Packed({{5}, {5}, {5}, {5}, {5}}));
    const auto read = AngleSerializer().FromStringList({L"1"}, {{1, {L"5", L"4"}}});
    EXPECT_EQ((std::vector<Angle>{{1}}), GetParameterValue<std::vector<Angle>>(read.Get()));
}

TEST(HostTypeSerializer, WhatTheTraitsThrowPasses) {
    EXPECT_THROW(AngleSerializer().FromString(L"x"), std::invalid_argument);
    EXPECT_THROW(AngleSerializer().FromStringList({L"1", L"x"}, {}), std::invalid_argument);
}

TEST(HostTypeSerializer, NoValueAsTheTraitsSay) {
    const RefCntPtr<const IParameter> none;
    EXPECT_THAT(Doing([&] { AngleSerializer().ToString(none); }), ThrowsMissing(0));
    ListHost<Flavour> host;
    ListTraceVisitor visitor;
    SerializeStructure stream(visitor, true, false);
    EXPECT_THAT(Doing([&] { FlavourSerializer().ToString(none); }), ThrowsLogicFailure("m_ptr"));
    EXPECT_THAT(Doing([&] { FlavourSerializer().ToStringList(none); }), ThrowsLogicFailure("m_ptr"));
    EXPECT_THAT(Doing([&] { FlavourSerializer().ToStringMap(none); }), ThrowsLogicFailure("m_ptr"));
    EXPECT_THAT(Doing([&] { FlavourSerializer().SerializeList(none, stream, host.kListId); }),
                ThrowsLogicFailure("m_ptr"));
    EXPECT_THAT(Doing([&] { FlavourSerializer().ToString(Val(5)); }), ThrowsTypeMismatch(0));
}

TEST(HostTypeSerializer, ThroughTheRegistry) {
    TestRegistry registry;
    registry.Add(L"host", 1, 9, [](AbstractParamAdder& adder) {
        adder.AddSimple(1, L"angle", new AngleSerializer);
        adder.AddSimple(2, L"flavour", new FlavourSerializer);
    });
    EXPECT_EQ(PTC_Number, registry.GetType(1));
    EXPECT_EQ(L"90", registry.GetValueString(Val(Angle{90}), 1));
    const auto bag = MakeBag();
    registry.FromString(L"host", RefCntPtr<IParameters>(bag), L"flavour", L"sour", true);
    EXPECT_EQ(Flavour::Sour, GetParameterValue<Flavour>(*bag, 2));
}
