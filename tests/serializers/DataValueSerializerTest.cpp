#include <qvpreslayer/DataValueSerializer.h>  // first: the header stands alone

#include <map>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "support/Failures.h"
#include "support/ListHost.h"
#include "support/Printing.h"
#include "support/TypedValues.h"

using typed::Identical;
using typed::Null;
using typed::NullString;
using typed::String;
using typed::TupleOf;

namespace {

using Serializer = ParameterTypeSerializer<DataValue>;
using Values = std::vector<DataValue>;
using Map = std::map<TString, DataValue>;
using Texts = std::vector<TString>;
using TextMap = std::map<TString, TString>;

static_assert(std::is_base_of_v<IParameterSerializer, Serializer>);
static_assert(std::is_same_v<decltype(&Serializer::SerializeVector),
                             void (Serializer::*)(SerializeStructure&, int, const Values&) const>);
static_assert(sizeof(Serializer) == sizeof(IParameterSerializer), "a serializer holds no state");

// What stands in a value that was read.
const DataValue& One(const RefCntPtr<IParameter>& value) { return GetParameterValue<DataValue>(value.Get()); }
const Values& Many(const RefCntPtr<IParameter>& value) { return GetParameterValue<Values>(value.Get()); }
const Map& Keys(const RefCntPtr<IParameter>& value) { return GetParameterValue<Map>(value.Get()); }

// Whether the object is a T and nothing derived from it.
template <class T, class Pointer>
bool IsExactly(const Pointer& pointer) {
    const auto& object = *pointer;
    return typeid(object) == typeid(T);
}

Values SampleValues() {
    return {42,
            DataValue(12.5, 2, 1),
            String(L"a:b,c%#\""),
            typed::LeapEvening(5),
            true,
            typed::Day(2024, 2, 29),
            TupleOf({1, String(L"x,y")}),
            Null(DataType::Integer),
            NullString(),
            DataValue()};
}
Texts SampleTexts() {
    return {L"i:42",          L"r:2:1:12.5",   L"s:root:a:b,c%#\"",     L"c:2024-02-29 23:59:58.000000005",
            L"b:true",        L"d:2024-02-29", L"t:[i:1],[s:root:x,y]", L"i:null",
            L"s:root:%null%", L"u:null"};
}

template <class V>
std::map<TString, typename V::value_type> Keyed(const V& values) {
    std::map<TString, typename V::value_type> keyed;
    for (const auto& value : values) {
        keyed.emplace(TString(L"k") + TString::number(static_cast<int>(keyed.size())), value);
    }
    return keyed;
}

void ExpectSame(const Values& expected, const Values& values) {
    ASSERT_EQ(expected, values);
    for (std::size_t i = 0; i < values.size(); ++i) {
        EXPECT_TRUE(Identical(expected[i], values[i])) << i;
    }
}

constexpr const char* kNotDelimited = "Serialized DataValue is not properly delimited";

// "one" is a typed value, "map" a map of them.
class TypedRegistry : public TestRegistry {
public:
    TypedRegistry() {
        Add(L"typed", 1, 9, [](AbstractParamAdder& adder) {
            adder.AddSimple(1, L"one", L"o", new Serializer);
            adder.AddMap(2, L"map", L"m", new Serializer);
        });
    }
};

}  // namespace

TEST(DataValueSerializer, KindIsText) { EXPECT_EQ(PTC_Text, Serializer().GetType()); }

TEST(DataValueSerializer, CreateMakesANewOneEachTime) {
    const auto first = CreateParameterSerializer<Serializer>();
    const auto second = CreateParameterSerializer<Serializer>();
    EXPECT_NE(first.Get(), second.Get());
    EXPECT_TRUE(IsExactly<Serializer>(first));
}

TEST(DataValueSerializer, OneValue) {
    const Values values = SampleValues();
    const Texts texts = SampleTexts();
    for (std::size_t i = 0; i < values.size(); ++i) {
        EXPECT_EQ(texts[i], Serializer().ToString(Val(values[i])));
        const auto read = Serializer().FromString(texts[i]);
        EXPECT_TRUE(IsExactly<ValParameter<DataValue>>(read));
        EXPECT_TRUE(Identical(values[i], One(read))) << texts[i].ToUtf8();
    }
}

TEST(DataValueSerializer, FromStringMakesANewValueEachTime) {
    EXPECT_NE(Serializer().FromString(L"i:1").Get(), Serializer().FromString(L"i:1").Get());
}

TEST(DataValueSerializer, ListsOfTextsKeepTheirLetters) {
    EXPECT_EQ(SampleTexts(), Serializer().ToStringList(Val(SampleValues())));
    const auto read = Serializer().FromStringList(SampleTexts(), {});
    EXPECT_TRUE(IsExactly<ValParameter<Values>>(read));
    ExpectSame(SampleValues(), Many(read));
    EXPECT_TRUE(Serializer().ToStringList(Val(Values())).empty());
    EXPECT_TRUE(Many(Serializer().FromStringList({}, {})).empty());
}

TEST(DataValueSerializer, Maps) {
    EXPECT_EQ(Keyed(SampleTexts()), Serializer().ToStringMap(Val(Keyed(SampleValues()))));
    const auto read = Serializer().FromStringMap(Keyed(SampleTexts()));
    EXPECT_TRUE(IsExactly<ValParameter<Map>>(read));
    const Map& map = Keys(read);
    ASSERT_EQ(Keyed(SampleValues()), map);
    for (const auto& [key, value] : Keyed(SampleValues())) {
        EXPECT_TRUE(Identical(value, map.at(key))) << key.ToUtf8();
    }
    EXPECT_TRUE(Serializer().ToStringMap(Val(Map())).empty());
    EXPECT_TRUE(Keys(Serializer().FromStringMap({})).empty());
}

TEST(DataValueSerializer, MapKeysAreAnyText) {
    const Map values = {{L"", 1}, {L"a:b", 2}, {L"%null%", 3}, {L"\"", 4}};
    const TextMap texts = {{L"", L"i:1"}, {L"a:b", L"i:2"}, {L"%null%", L"i:3"}, {L"\"", L"i:4"}};
    EXPECT_EQ(texts, Serializer().ToStringMap(Val(values)));
    EXPECT_EQ(values, Keys(Serializer().FromStringMap(texts)));
}

TEST(DataValueSerializer, ListsOnTheStreamAreBare) {
    ListHost<DataValue> host;
    EXPECT_EQ("values:2[1 2]", host.Plain({1, 2}));
    EXPECT_EQ("values:1[42 12.5 a:b,c%#\" 2024-02-29 23:59:58.000000005 true 2024-02-29 1,x,y null %null% null]",
              host.Plain(SampleValues()));
    EXPECT_EQ("v:2[1 2]", host.Trace({1, 2}, ListForm::Plain, false));
}

// Bare texts lack what the reader needs.
TEST(DataValueSerializer, ListsFromTheStreamAreNotReadBack) {
    EXPECT_THAT(Doing([] { Serializer().FromStringList({L"1"}, {}); }), ThrowsSerializerCheck(kNotDelimited));
    EXPECT_THAT(Doing([] { Serializer().FromStringList({L"null"}, {}); }), ThrowsSerializerCheck(kNotDelimited));
}

TEST(DataValueSerializer, RunsExpandAmongLetteredTexts) {
    EXPECT_EQ((Values{1, 5, 7, 9, 11}),
              Many(Serializer().FromStringList({L"i:1"}, {{1, {L"i:5", L"4", L"2"}}, {2, {}}})));
}

TEST(DataValueSerializer, NoValueIsAMissingParameter) {
    const RefCntPtr<const IParameter> none;
    ListHost<DataValue> host;
    ListTraceVisitor visitor;
    SerializeStructure stream(visitor, true, true);
    EXPECT_THAT(Doing([&] { Serializer().ToString(none); }), ThrowsMissing(0));
    EXPECT_THAT(Doing([&] { Serializer().ToStringList(none); }), ThrowsMissing(0));
    EXPECT_THAT(Doing([&] { Serializer().ToStringMap(none); }), ThrowsMissing(0));
    EXPECT_THAT(Doing([&] { Serializer().SerializeList(none, stream, host.kListId); }), ThrowsMissing(0));
    EXPECT_EQ("", visitor.Text());
}

TEST(DataValueSerializer, AnotherTypeIsAMismatch) {
    ListHost<DataValue> host;
    ListTraceVisitor visitor;
    SerializeStructure stream(visitor, true, true);
    const auto one = Val(DataValue(1));
    const auto many = Val(Values{1});
    const auto keyed = Val(Map{{L"k", 1}});
    for (const auto& other : {Val(Int64{1}), Val(TString(L"i:1")), many, keyed}) {
        EXPECT_THAT(Doing([&] { Serializer().ToString(other); }), ThrowsTypeMismatch(0));
    }
    for (const auto& other : {Val(std::vector<Int64>{1}), one, keyed}) {
        EXPECT_THAT(Doing([&] { Serializer().ToStringList(other); }), ThrowsTypeMismatch(0));
        EXPECT_THAT(Doing([&] { Serializer().SerializeList(other, stream, host.kListId); }), ThrowsTypeMismatch(0));
    }
    for (const auto& other : {Val(TextMap{{L"k", L"i:1"}}), one, many}) {
        EXPECT_THAT(Doing([&] { Serializer().ToStringMap(other); }), ThrowsTypeMismatch(0));
    }
    EXPECT_EQ("", visitor.Text());
}

TEST(DataValueSerializer, FirstBadElementEndsTheWhole) {
    EXPECT_THAT(Doing([] { Serializer().FromStringList({L"i:1", L"x:1", L"2"}, {}); }), ThrowsUnknownLetter());
    EXPECT_THAT(Doing([] {
                    Serializer().FromStringList({L"i:1", L"2", L"x:1"}, {});
                }),
                ThrowsSerializerCheck(kNotDelimited));
    EXPECT_THAT(
        [] {
            Serializer().FromStringMap({{L"a", L"i:1"}, {L"b", L"x:1"}, {L"c", L"2"}});
        },
        ThrowsUnknownLetter());
    EXPECT_THAT(Doing([] { Serializer().ToStringList(Val(Values{1, Spatial(L"x")})); }), ThrowsUnknownLetter());
    EXPECT_THAT(
        [] {
            Serializer().ToStringMap(Val(Map{{L"a", 1}, {L"b", Null(DataType::Spatial)}}));
        },
        ThrowsUnknownLetter());
}

// All items, then the runs from the last one on.
TEST(DataValueSerializer, OrderOfFailuresInAList) {
    const RunRecord badFirst{1, {L"5", L"4"}};
    const RunRecord badLength{1, {L"i:5", L"x"}};
    const RunRecord outside{99, {L"i:5", L"4"}};
    const auto read = [](const Texts& texts, const std::vector<RunRecord>& runs) {
        return [=] { Serializer().FromStringList(texts, runs); };
    };
    EXPECT_THAT(read({L"x:1"}, {badFirst}), ThrowsUnknownLetter());
    EXPECT_THAT(read({L"x:1"}, {badLength}), ThrowsUnknownLetter());
    EXPECT_THAT(read({L"i:x"}, {outside}), ThrowsMessageText(L"Data value parse error"));
    EXPECT_THAT(read({L"i:1"}, {badFirst}), ThrowsSerializerCheck(kNotDelimited));
    EXPECT_THAT(read({L"i:1"}, {badLength}), ThrowsParseFailure());
    EXPECT_THAT(read({L"i:1"}, {badFirst, {2, {L"i:5", L"x"}}}), ThrowsParseFailure());
    EXPECT_THAT(read({L"i:1"}, {{2, {L"i:5", L"x"}}, badFirst}), ThrowsParseFailure());
    EXPECT_THAT(read({L"i:1"}, {badLength, {2, {L"5", L"4"}}}), ThrowsSerializerCheck(kNotDelimited));
}

// What was read before the failure is gone with its texts.
TEST(DataValueSerializer, FailureLeavesNothingBehind) {
    const std::size_t before = IndirectString::GetTableSize();
    EXPECT_THROW(Serializer().FromStringList({L"s:root:one", L"s:root:two", L"i:x"}, {}), QuorvelException);
    EXPECT_THROW(Serializer().FromStringMap({{L"a", L"s:root:one"}, {L"b", L"i:x"}}), QuorvelException);
    EXPECT_THROW(Serializer().FromStringList({L"s:root:one"}, {{1, {L"s:root:two", L"x"}}}), QuorvelException);
    EXPECT_EQ(before, IndirectString::GetTableSize());
}

TEST(DataValueSerializer, ThroughTheRegistry) {
    TypedRegistry registry;
    EXPECT_EQ(L"r:2::0.5", registry.GetValueString(Val(DataValue(0.5, 2)), 1));
    const auto bag = MakeBag();
    registry.FromString(L"typed", bag, L"one", L"s:root:a:b", true);
    EXPECT_EQ(String(L"a:b"), One(RefCntPtr<IParameter>(&bag->GetParameter(1))));
    // A value that cannot be read is told by its parameter, whatever the serializer threw.
    for (const wchar_t* text : {L"x", L"x:1", L"i:x"}) {
        EXPECT_THAT(Doing([&] { registry.FromString(L"typed", bag, L"one", text, true); }),
                    ThrowsExactly<ParameterParseException>(testing::Property(&ParameterParseException::GetID, 1)));
    }
    EXPECT_EQ(String(L"a:b"), One(RefCntPtr<IParameter>(&bag->GetParameter(1))));
}

TEST(DataValueSerializer, SingleValuesAndMapsComeBackFromJSON) {
    const TypedRegistry registry;
    const JSONSerializer json(L"typed");
    for (const DataValue& value : SampleValues()) {
        const auto bag = MakeBag({{1, Val(value)}, {2, Val(Map{{L"a", value}, {L"b", 1}})}});
        const auto read = json.ToParameters(json.ToString(bag, JSONSerializer::Compact));
        EXPECT_TRUE(Identical(value, GetParameterValue<DataValue>(&read->GetParameter(1))));
        EXPECT_EQ((Map{{L"a", value}, {L"b", 1}}), GetParameterValue<Map>(&read->GetParameter(2)));
    }
    EXPECT_EQ(L"{\"one\": \"s:root:\\\"x\\\"\",\"map\":{\"a\":\"i:1\"}}",
              json.ToString(MakeBag({{1, Val(String(L"\"x\""))}, {2, Val(Map{{L"a", 1}})}}), JSONSerializer::Compact));
}
