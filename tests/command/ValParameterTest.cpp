#include <qvpreslayer/ValParameter.h>

#include <map>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

template <class T>
T Sample() {
    return T(5);
}
template <>
bool Sample<bool>() {
    return true;
}
template <>
TString Sample<TString>() {
    return L"text";
}
template <>
FieldName Sample<FieldName>() {
    return FieldName::ParseGlobal(L"[orders].[price]");
}
template <>
QualifiedName Sample<QualifiedName>() {
    return QualifiedName::ParseGlobal(L"[orders].[price]");
}
template <>
PasswordString Sample<PasswordString>() {
    return PasswordString(L"secret");
}
template <>
TUUID Sample<TUUID>() {
    return TUUID(L"01234567-89ab-cdef-0123-456789abcdef");
}
template <>
CoreParameterID Sample<CoreParameterID>() {
    return CoreParameterID::ParamType;
}

// A type of a host's own.
struct HostType {
    int number = 0;
    bool operator==(const HostType&) const = default;
};
template <>
HostType Sample<HostType>() {
    return {5};
}

// What every value of this library answers unless it is a bag or a model.
void ExpectPlain(const IParameter& value) {
    EXPECT_FALSE(value.IsNull());
    EXPECT_FALSE(value.IsMarked());
    EXPECT_FALSE(value.GetPresentationModel());
}

class BareParameter final : public IParameter {};

template <class T>
class ValParameterShapes : public testing::Test {};

using ValueTypes =
    testing::Types<int, unsigned int, float, double, Int64, UInt64, bool, TString, FieldName, QualifiedName,
                   PasswordString, TUUID, DataValue, HoursDuration, MinutesDuration, SecondsDuration,
                   MillisecondsDuration, MicrosecondsDuration, NanosecondsDuration, CoreParameterID, HostType,
                   // the presentation enumerations
                   AggType, BoxplotStyle, DataScaling, DataType, FontWeight, ForecastModelType, ForecastRangeType,
                   ForecastStatus, ParserMode, QuorvelFontStyle, StyleAttribute, StyleDataClass, StyleElement,
                   StyleFieldScope, StyleSwatch, TextAlign, TextBreakMode, TextDecoration, TextOrient,
                   TextWholeLineMode, TextWrapMode, WhiskerEnd>;
TYPED_TEST_SUITE(ValParameterShapes, ValueTypes);

}  // namespace

TYPED_TEST(ValParameterShapes, HoldsAValue) {
    const TypeParam sample = Sample<TypeParam>();
    const RefCntPtr<const ValParameter<TypeParam>> value(new ValParameter<TypeParam>(sample));
    EXPECT_TRUE(value->GetValue() == sample);
    EXPECT_FALSE(value->GetValue() == TypeParam());
    ExpectPlain(*value);
}

TYPED_TEST(ValParameterShapes, MakesAValueInPlace) {
    const TypeParam sample = Sample<TypeParam>();
    const ValParameter<TypeParam> value(std::in_place, sample);
    value.SetRefCountToOne();
    EXPECT_TRUE(value.GetValue() == sample);
    ExpectPlain(value);
}

TYPED_TEST(ValParameterShapes, HoldsAList) {
    const std::vector<TypeParam> sample{Sample<TypeParam>(), TypeParam(), Sample<TypeParam>()};
    const RefCntPtr<const ValParameter<std::vector<TypeParam>>> value(new ValParameter<std::vector<TypeParam>>(sample));
    EXPECT_TRUE(value->GetValue() == sample);
    ExpectPlain(*value);
}

TYPED_TEST(ValParameterShapes, HoldsAMapInKeyOrder) {
    using Map = std::map<TString, TypeParam>;
    const Map sample{{L"b", TypeParam()}, {L"a", Sample<TypeParam>()}};
    const RefCntPtr<const ValParameter<Map>> value(new ValParameter<Map>(sample));
    EXPECT_TRUE(value->GetValue() == sample);
    EXPECT_EQ(L"a", value->GetValue().begin()->first);
    ExpectPlain(*value);
}

TYPED_TEST(ValParameterShapes, AnEmptyListOrMapIsNotNull) {
    ExpectPlain(*Val(std::vector<TypeParam>()));
    ExpectPlain(*Val(std::map<TString, TypeParam>()));
}

TEST(IParameter, IsNeitherNullNorMarkedNorAModelByDefault) { ExpectPlain(*RefCntPtr<IParameter>(new BareParameter)); }

TEST(BagParameter, IsNullWhenItsPointerIs) {
    EXPECT_TRUE(BagVal(nullptr)->IsNull());
    EXPECT_FALSE(BagVal(MakeBag())->IsNull());
}

TEST(BagParameter, HoldsTheBagItself) {
    const auto bag = MakeBag();
    const RefCntPtr<BagParameter> value(new BagParameter(RefCntPtr<const IParameters>(bag)));
    EXPECT_EQ(bag.Get(), value->GetValue().Get());
    EXPECT_FALSE(value->IsMarked());
}

TEST(BagParameter, HasNoModelWhenTheBagIsNone) {
    EXPECT_FALSE(BagVal(MakeBag())->GetPresentationModel());
    EXPECT_FALSE(BagVal(nullptr)->GetPresentationModel());
}

TEST(BagParameter, AnswersABagThatIsAModel) {
    const RefCntPtr<BagModel> both(new BagModel);
    const auto value = BagVal(both);
    EXPECT_EQ(static_cast<const PresentationModel*>(both.Get()), value->GetPresentationModel().Get());
    EXPECT_FALSE(value->IsNull());
}

TEST(BagParameter, ABagThatIsAModelHasOneCount) {
    int alive = 0;
    RefCntPtr<const PresentationModel> model;
    {
        const auto value = BagVal(RefCntPtr<IParameters>(new BagModel(alive)));
        model = value->GetPresentationModel();
    }
    EXPECT_EQ(1, alive);
    model.Reset();
    EXPECT_EQ(0, alive);
    EXPECT_TRUE((std::is_convertible_v<BagModel*, RefCntObject*>)) << "the shared base is there once";
}

TEST(PresentationModelParameter, IsNullWhenItsPointerIs) {
    const RefCntPtr<IParameter> none(new PresentationModelParameter(nullptr));
    EXPECT_TRUE(none->IsNull());
    EXPECT_FALSE(none->GetPresentationModel());
    const RefCntPtr<IParameter> some(new PresentationModelParameter(RefCntPtr<const PresentationModel>(new TestModel)));
    EXPECT_FALSE(some->IsNull());
    EXPECT_FALSE(some->IsMarked());
}

TEST(PresentationModelParameter, AnswersItsModelWithAReferenceOfItsOwn) {
    int alive = 0;
    RefCntPtr<const PresentationModel> answer;
    {
        const RefCntPtr<const PresentationModel> model(new BagModel(alive));
        const RefCntPtr<PresentationModelParameter> value(new PresentationModelParameter(model));
        answer = value->GetPresentationModel();
        EXPECT_EQ(model.Get(), answer.Get());
        EXPECT_EQ(model.Get(), value->GetValue().Get());
    }
    EXPECT_EQ(1, alive);
    answer.Reset();
    EXPECT_EQ(0, alive);
}

TEST(ValParameter, BagAndModelHoldersAreTheirShapes) {
    EXPECT_TRUE((std::is_same_v<BagParameter, ValParameter<RefCntPtr<const IParameters>>>));
    EXPECT_TRUE((std::is_same_v<PresentationModelParameter, ValParameter<RefCntPtr<const PresentationModel>>>));
}
