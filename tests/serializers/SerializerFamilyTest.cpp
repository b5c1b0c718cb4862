#include <qvpreslayer/ParameterTypeSerializer.h>  // first: the header stands alone

#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "serializers/FamilySamples.h"
#include "support/Failures.h"
#include "support/ListHost.h"
#include "support/Printing.h"

namespace {

template <class T>
class SerializerFamily : public testing::Test {
protected:
    using List = std::vector<T>;
    using Map = std::map<TString, T>;

    // What stands in a value that was read.
    static const T& One(const RefCntPtr<IParameter>& value) { return GetParameterValue<T>(value.Get()); }
    static const List& Many(const RefCntPtr<IParameter>& value) { return GetParameterValue<List>(value.Get()); }
    static const Map& Keys(const RefCntPtr<IParameter>& value) { return GetParameterValue<Map>(value.Get()); }

    // The trace of the sample list, written plainly.
    static std::string SampleTrace() {
        std::string trace = "values:" + std::to_string(Sample<T>::kKind) + "[";
        bool first = true;
        for (const TString& text : Sample<T>::Texts()) {
            trace += (first ? "" : " ") + text.ToUtf8();
            first = false;
        }
        return trace + "]";
    }

    SerializerOf<T> m_serializer;
};

TYPED_TEST_SUITE(SerializerFamily, FamilyTypes);

}  // namespace

TYPED_TEST(SerializerFamily, HoldsNoState) { EXPECT_EQ(sizeof(IParameterSerializer), sizeof(SerializerOf<TypeParam>)); }

TYPED_TEST(SerializerFamily, Kind) { EXPECT_EQ(Sample<TypeParam>::kKind, this->m_serializer.GetType()); }

TYPED_TEST(SerializerFamily, CreateMakesANewOneEachTime) {
    const auto first = CreateParameterSerializer<SerializerOf<TypeParam>>();
    const auto second = CreateParameterSerializer<SerializerOf<TypeParam>>();
    EXPECT_NE(first.Get(), second.Get());
    const IParameterSerializer& serializer = *first;
    EXPECT_EQ(typeid(SerializerOf<TypeParam>), typeid(serializer));
    EXPECT_EQ(Sample<TypeParam>::kKind, second->GetType());
}

TYPED_TEST(SerializerFamily, OneValue) {
    const auto values = Sample<TypeParam>::Values();
    const auto texts = Sample<TypeParam>::Texts();
    const auto toRead = TextsToRead<TypeParam>();
    for (std::size_t i = 0; i < values.size(); ++i) {
        const TypeParam value = values[i];
        EXPECT_EQ(texts[i], this->m_serializer.ToString(Val<TypeParam>(value)));
        EXPECT_EQ(value, this->One(this->m_serializer.FromString(toRead[i])));
    }
}

TYPED_TEST(SerializerFamily, FromStringMakesANewValueEachTime) {
    const TString text = TextsToRead<TypeParam>().front();
    const auto first = this->m_serializer.FromString(text);
    const auto second = this->m_serializer.FromString(text);
    EXPECT_NE(first.Get(), second.Get());
    const IParameter& value = *first;
    EXPECT_EQ(typeid(ValParameter<TypeParam>), typeid(value));
}

TYPED_TEST(SerializerFamily, List) {
    EXPECT_EQ(Sample<TypeParam>::Texts(),
              this->m_serializer.ToStringList(Val<std::vector<TypeParam>>(Sample<TypeParam>::Values())));
    EXPECT_EQ(Sample<TypeParam>::Values(), this->Many(this->m_serializer.FromStringList(TextsToRead<TypeParam>(), {})));
}

TYPED_TEST(SerializerFamily, EmptyList) {
    EXPECT_TRUE(this->m_serializer.ToStringList(Val<std::vector<TypeParam>>({})).empty());
    EXPECT_TRUE(this->Many(this->m_serializer.FromStringList({}, {})).empty());
}

TYPED_TEST(SerializerFamily, OnlyNumbersExpandRuns) {
    const std::vector<TString> texts = {TextsToRead<TypeParam>().front()};
    const std::vector<RunRecord> runs = {{1, {L"5", L"4"}}, {2, {}}};
    const auto values = this->Many(this->m_serializer.FromStringList(texts, runs));
    if constexpr (Sample<TypeParam>::kExpandsRuns) {
        const TypeParam first = Sample<TypeParam>::Values().front();
        const TypeParam five(5);
        EXPECT_EQ((std::vector<TypeParam>{first, five, five, five, five}), values);
    } else {
        EXPECT_EQ((std::vector<TypeParam>{Sample<TypeParam>::Values().front()}), values);
    }
}

// Serializers that expand no runs do not look at them either.
TYPED_TEST(SerializerFamily, BrokenRunsMatterToNumbersOnly) {
    const std::vector<TString> texts = {TextsToRead<TypeParam>().front()};
    const std::vector<RunRecord> runs = {{1, {L"nonsense", L"nonsense"}}};
    if constexpr (Sample<TypeParam>::kExpandsRuns) {
        EXPECT_THAT(Doing([&] { this->m_serializer.FromStringList(texts, runs); }), ThrowsParseFailure());
    } else {
        EXPECT_EQ(1U, this->Many(this->m_serializer.FromStringList(texts, runs)).size());
    }
}

TYPED_TEST(SerializerFamily, Map) {
    const auto values = Keyed(Sample<TypeParam>::Values());
    EXPECT_EQ(Keyed(Sample<TypeParam>::Texts()),
              this->m_serializer.ToStringMap(Val<std::map<TString, TypeParam>>(values)));
    EXPECT_EQ(values, this->Keys(this->m_serializer.FromStringMap(Keyed(TextsToRead<TypeParam>()))));
}

TYPED_TEST(SerializerFamily, EmptyMap) {
    EXPECT_TRUE(this->m_serializer.ToStringMap(Val<std::map<TString, TypeParam>>({})).empty());
    EXPECT_TRUE(this->Keys(this->m_serializer.FromStringMap({})).empty());
}

TYPED_TEST(SerializerFamily, MapKeysAreAnyText) {
    const TypeParam value = Sample<TypeParam>::Values().front();
    const std::map<TString, TypeParam> values = {{L"", value}, {L"a b", value}, {L"\"", value}, {L"aB-c", value}};
    const auto texts = this->m_serializer.ToStringMap(Val<std::map<TString, TypeParam>>(values));
    ASSERT_EQ(4U, texts.size());
    for (const auto& [key, element] : values) {
        EXPECT_EQ(1U, texts.count(key));
    }
}

TYPED_TEST(SerializerFamily, ListOnTheStream) {
    ListHost<TypeParam> host;
    EXPECT_EQ(this->SampleTrace(), host.Plain(Sample<TypeParam>::Values()));
    EXPECT_EQ(this->SampleTrace(), host.Packed(Sample<TypeParam>::Values()));
}

TYPED_TEST(SerializerFamily, EmptyListOnTheStream) {
    ListHost<TypeParam> host;
    const std::string trace = "values:" + std::to_string(Sample<TypeParam>::kKind) + "[]";
    EXPECT_EQ(trace, host.Plain({}));
    EXPECT_EQ(trace, host.Packed({}));
}

TYPED_TEST(SerializerFamily, NoValueIsAMissingParameter) {
    const RefCntPtr<const IParameter> none;
    ListHost<TypeParam> host;
    ListTraceVisitor visitor;
    SerializeStructure stream(visitor, true, false);
    EXPECT_THAT(Doing([&] { this->m_serializer.ToString(none); }), ThrowsMissing(0));
    EXPECT_THAT(Doing([&] { this->m_serializer.ToStringList(none); }), ThrowsMissing(0));
    EXPECT_THAT(Doing([&] { this->m_serializer.ToStringMap(none); }), ThrowsMissing(0));
    EXPECT_THAT(Doing([&] { this->m_serializer.SerializeList(none, stream, host.kListId); }), ThrowsMissing(0));
    EXPECT_EQ("", visitor.Text());
}

TYPED_TEST(SerializerFamily, AnotherTypeIsAMismatch) {
    const auto other = Val<TUUID*>(nullptr);  // a holder that no serializer of the family knows
    ListHost<TypeParam> host;
    ListTraceVisitor visitor;
    SerializeStructure stream(visitor, true, false);
    EXPECT_THAT(Doing([&] { this->m_serializer.ToString(other); }), ThrowsTypeMismatch(0));
    EXPECT_THAT(Doing([&] { this->m_serializer.ToStringList(other); }), ThrowsTypeMismatch(0));
    EXPECT_THAT(Doing([&] { this->m_serializer.ToStringMap(other); }), ThrowsTypeMismatch(0));
    EXPECT_THAT(Doing([&] { this->m_serializer.SerializeList(other, stream, host.kListId); }), ThrowsTypeMismatch(0));
    EXPECT_EQ("", visitor.Text());
}

TYPED_TEST(SerializerFamily, OneManyAndKeyedAreDifferentTypes) {
    const auto one = Val<TypeParam>(Sample<TypeParam>::Values().front());
    const auto many = Val<std::vector<TypeParam>>(Sample<TypeParam>::Values());
    const auto keyed = Val<std::map<TString, TypeParam>>(Keyed(Sample<TypeParam>::Values()));
    EXPECT_THAT(Doing([&] { this->m_serializer.ToString(many); }), ThrowsTypeMismatch(0));
    EXPECT_THAT(Doing([&] { this->m_serializer.ToString(keyed); }), ThrowsTypeMismatch(0));
    EXPECT_THAT(Doing([&] { this->m_serializer.ToStringList(one); }), ThrowsTypeMismatch(0));
    EXPECT_THAT(Doing([&] { this->m_serializer.ToStringList(keyed); }), ThrowsTypeMismatch(0));
    EXPECT_THAT(Doing([&] { this->m_serializer.ToStringMap(one); }), ThrowsTypeMismatch(0));
    EXPECT_THAT(Doing([&] { this->m_serializer.ToStringMap(many); }), ThrowsTypeMismatch(0));
}

TYPED_TEST(SerializerFamily, FirstBadElementEndsTheWhole) {
    if constexpr (Sample<TypeParam>::kReadsAnything) {
        EXPECT_NO_THROW(this->m_serializer.FromString(Sample<TypeParam>::BadText()));
    } else {
        const TString good = TextsToRead<TypeParam>().front();
        const TString bad = Sample<TypeParam>::BadText();
        EXPECT_THROW(this->m_serializer.FromString(bad), QuorvelException);
        EXPECT_THROW(this->m_serializer.FromStringList({good, bad, good}, {}), QuorvelException);
        EXPECT_THROW(this->m_serializer.FromStringMap({{L"a", good}, {L"b", bad}}), QuorvelException);
    }
}
