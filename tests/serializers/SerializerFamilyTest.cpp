#include <qvpreslayer/ParameterTypeSerializer.h>  // first: the header stands alone

#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "serializers/FamilySamples.h"
#include "support/Failures.h"
#include "support/ListHost.h"
#include "support/Printing.h"

namespace {

// The interface that hosts override: which operations are const is part of it.
using Serializer = IParameterSerializer;
using Value = RefCntPtr<const IParameter>;
using Runs = std::vector<std::pair<int, std::vector<TString>>>;
using Texts = std::vector<TString>;
using TextMap = std::map<TString, TString>;
static_assert(std::is_same_v<decltype(&Serializer::GetType), ParameterTypeCategory (Serializer::*)() const>);
static_assert(std::is_same_v<decltype(&Serializer::ToString), TString (Serializer::*)(Value)>);
static_assert(
    std::is_same_v<decltype(&Serializer::FromString), RefCntPtr<IParameter> (Serializer::*)(const TString&) const>);
static_assert(std::is_same_v<decltype(&Serializer::ToStringList), Texts (Serializer::*)(Value)>);
static_assert(std::is_same_v<decltype(&Serializer::FromStringList),
                             RefCntPtr<IParameter> (Serializer::*)(const Texts&, const Runs&) const>);
static_assert(
    std::is_same_v<decltype(&Serializer::SerializeList), void (Serializer::*)(Value, SerializeStructure&, int) const>);
static_assert(std::is_same_v<decltype(&Serializer::ToStringMap), TextMap (Serializer::*)(Value)>);
static_assert(
    std::is_same_v<decltype(&Serializer::FromStringMap), RefCntPtr<IParameter> (Serializer::*)(const TextMap&) const>);
static_assert(std::is_abstract_v<Serializer> && std::has_virtual_destructor_v<Serializer>);
static_assert(!std::is_destructible_v<Serializer>, "only its last reference destroys a serializer");
static_assert(std::is_base_of_v<RefCntObject, Serializer>);

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
    EXPECT_EQ(typeid(SerializerOf<TypeParam>), typeid(*first));
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
    EXPECT_EQ(typeid(ValParameter<TypeParam>), typeid(*first));
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
        EXPECT_THAT([&] { this->m_serializer.FromStringList(texts, runs); }, ThrowsParseFailure());
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
    EXPECT_THAT([&] { this->m_serializer.ToString(none); }, ThrowsMissing(0));
    EXPECT_THAT([&] { this->m_serializer.ToStringList(none); }, ThrowsMissing(0));
    EXPECT_THAT([&] { this->m_serializer.ToStringMap(none); }, ThrowsMissing(0));
    EXPECT_THAT([&] { this->m_serializer.SerializeList(none, stream, host.kListId); }, ThrowsMissing(0));
    EXPECT_EQ("", visitor.Text());
}

TYPED_TEST(SerializerFamily, AnotherTypeIsAMismatch) {
    const auto other = Val<TUUID*>(nullptr);  // a holder that no serializer of the family knows
    ListHost<TypeParam> host;
    ListTraceVisitor visitor;
    SerializeStructure stream(visitor, true, false);
    EXPECT_THAT([&] { this->m_serializer.ToString(other); }, ThrowsTypeMismatch(0));
    EXPECT_THAT([&] { this->m_serializer.ToStringList(other); }, ThrowsTypeMismatch(0));
    EXPECT_THAT([&] { this->m_serializer.ToStringMap(other); }, ThrowsTypeMismatch(0));
    EXPECT_THAT([&] { this->m_serializer.SerializeList(other, stream, host.kListId); }, ThrowsTypeMismatch(0));
    EXPECT_EQ("", visitor.Text());
}

TYPED_TEST(SerializerFamily, OneManyAndKeyedAreDifferentTypes) {
    const auto one = Val<TypeParam>(Sample<TypeParam>::Values().front());
    const auto many = Val<std::vector<TypeParam>>(Sample<TypeParam>::Values());
    const auto keyed = Val<std::map<TString, TypeParam>>(Keyed(Sample<TypeParam>::Values()));
    EXPECT_THAT([&] { this->m_serializer.ToString(many); }, ThrowsTypeMismatch(0));
    EXPECT_THAT([&] { this->m_serializer.ToString(keyed); }, ThrowsTypeMismatch(0));
    EXPECT_THAT([&] { this->m_serializer.ToStringList(one); }, ThrowsTypeMismatch(0));
    EXPECT_THAT([&] { this->m_serializer.ToStringList(keyed); }, ThrowsTypeMismatch(0));
    EXPECT_THAT([&] { this->m_serializer.ToStringMap(one); }, ThrowsTypeMismatch(0));
    EXPECT_THAT([&] { this->m_serializer.ToStringMap(many); }, ThrowsTypeMismatch(0));
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

namespace {

// Tells when it goes.
class WatchedSerializer : public ParameterTypeSerializer<int> {
public:
    static inline int s_alive = 0;
    WatchedSerializer() { ++s_alive; }

protected:
    ~WatchedSerializer() override { --s_alive; }
};

// Notes what SerializeList hands on.
template <class T>
class NotingSerializer : public ParameterTypeSerializer<T> {
public:
    mutable SerializeStructure* stream = nullptr;
    mutable int id = 0;
    mutable std::vector<T> values;

    void SerializeVector(SerializeStructure& toStream, int listId, const std::vector<T>& listValues) const override {
        stream = &toStream;
        id = listId;
        values = listValues;
    }
};

// A holder that a host derived.
class NamedInt : public ValParameter<int> {
public:
    using ValParameter<int>::ValParameter;
};

template <class T>
void ExpectHandedOn() {
    ListHost<T> host;
    ListTraceVisitor visitor;
    SerializeStructure stream(visitor, true, true);
    NotingSerializer<T> serializer;
    serializer.SerializeList(Val<std::vector<T>>(Sample<T>::Values()), stream, 42);
    EXPECT_EQ(&stream, serializer.stream);
    EXPECT_EQ(42, serializer.id);
    EXPECT_EQ(Sample<T>::Values(), serializer.values);
    EXPECT_EQ("", visitor.Text());
}

}  // namespace

TEST(CreateParameterSerializer, AnswersTheOnlyReference) {
    {
        const auto serializer = CreateParameterSerializer<WatchedSerializer>();
        EXPECT_EQ(1, WatchedSerializer::s_alive);
    }
    EXPECT_EQ(0, WatchedSerializer::s_alive);
}

TEST(ParameterTypeSerializer, SerializeListHandsOnToSerializeVector) {
    ExpectHandedOn<int>();
    ExpectHandedOn<bool>();
    ExpectHandedOn<FieldName>();
    ExpectHandedOn<NanosecondsDuration>();
}

TEST(ParameterTypeSerializer, HoldersThatHostsDeriveAreAccepted) {
    const RefCntPtr<IParameter> value(new NamedInt(5));
    EXPECT_EQ(L"5", ParameterTypeSerializer<int>().ToString(value));
}

// Not the kind of the serializer that writes: the one that is registered for the list.
TEST(ParameterTypeSerializer, ElementKindComesFromTheRegistry) {
    ListHost<TString> host;
    ListTraceVisitor visitor;
    SerializeStructure stream(visitor, true, false);
    ParameterTypeSerializer<bool>().SerializeList(Val<std::vector<bool>>({true}), stream, host.kListId);
    ParameterTypeSerializer<int>().SerializeList(Val<std::vector<int>>({5}), stream, host.kListId);
    EXPECT_EQ("values:1[true] values:1[5]", visitor.Text());
}

TEST(ParameterTypeSerializer, ShortNamesOnTheStream) {
    ListHost<bool> host;
    EXPECT_EQ("v:3[true]", host.Trace({true}, ListForm::Plain, false));
}
