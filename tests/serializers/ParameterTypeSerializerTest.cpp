#include <qvpreslayer/IParameterSerializer.h>  // first: the header stands alone

#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "serializers/FamilySamples.h"
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
