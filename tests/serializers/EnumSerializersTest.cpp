#include <qvpreslayer/Enumerations.h>

#include <map>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "serializers/EnumCase.h"
#include "serializers/EnumTestTypes.h"
#include "support/ListHost.h"
#include "support/Printing.h"
#include "support/TestHost.h"

namespace {

using testing::ElementsAre;
using testing::Pair;

constexpr int kOne = 1;
constexpr int kMany = 2;
constexpr int kNamed = 3;

// Every enumeration, with a published registry that holds a value, a list and a map of it.
class EnumSerializers : public testing::TestWithParam<EnumCase> {
protected:
    EnumSerializers() {
        m_registry.Add(L"style", 1, 9, [this](AbstractParamAdder& adder) {
            adder.AddSimple(kOne, L"one", m_serializer.Get());
            adder.AddList(kMany, L"many", m_serializer.Get());
            adder.AddMap(kNamed, L"named", m_serializer.Get());
        });
    }

    const EnumCase& m_enum = GetParam();
    const TString m_first = m_enum.first;
    const TString m_last = m_enum.last;
    RefCntPtr<IParameterSerializer> m_serializer = m_enum.createSerializer();
    TestRegistry m_registry;
    ListTraceVisitor m_visitor;
    SerializeStructure m_stream{m_visitor, true, false};
    SerializeStructure m_packingStream{m_visitor, true, true};
};

INSTANTIATE_TEST_SUITE_P(All, EnumSerializers, testing::ValuesIn(AllEnumCases()),
                         [](const auto& tested) { return tested.param.name; });

TEST_P(EnumSerializers, AreOfTheKindText) { EXPECT_EQ(PTC_Text, m_serializer->GetType()); }

TEST_P(EnumSerializers, ValuesTravelAsTexts) {
    EXPECT_EQ(m_last, m_serializer->ToString(m_enum.value(m_enum.lastNumber)));
    EXPECT_EQ(m_enum.lastNumber, m_enum.numberOf(*m_serializer->FromString(m_last)));
}

TEST_P(EnumSerializers, TextsThatAreNoNamesReadAsTheDefault) {
    TString capital = m_first;
    capital.mutable_data()[0] = static_cast<char16_t>(capital[0] - u'a' + u'A');
    const TString texts[] = {
        L"",
        L" ",
        L"no such name",
        capital,                             // case counts
        m_first + L" ",                      // nothing is trimmed
        TString(L" ") + m_first,             //
        m_first + m_first,                   // longer than a name
        m_first.left(m_first.length() - 1),  // a part of a name
        m_first + TString(1, char16_t{0}),   // NUL is a character like any other
        m_first + TString(1, char16_t{0xd800}),
        TString(100000, u'a'),
        TString::number(m_enum.firstNumber),  // numbers are no names
    };
    for (const TString& text : texts) {
        SCOPED_TRACE(text.left(40).ToUtf8());
        EXPECT_EQ(m_enum.defaultNumber, m_enum.typeFromString(text));
        EXPECT_EQ(m_enum.defaultNumber, m_enum.numberOf(*m_serializer->FromString(text)));
    }
}

TEST_P(EnumSerializers, ValuesWithoutANameAreNotWritten) {
    const int unnamed = m_enum.maximum;
    EXPECT_THAT(Doing([&] { m_enum.typeToString(unnamed); }), ThrowsUnknownEnumValue());
    EXPECT_THAT(Doing([&] { m_serializer->ToString(m_enum.value(unnamed)); }), ThrowsUnknownEnumValue());
    EXPECT_THAT(
        [&] {
            m_serializer->ToStringList(m_enum.list({m_enum.firstNumber, unnamed}));
        },
        ThrowsUnknownEnumValue());
    EXPECT_THAT(Doing([&] { m_serializer->ToStringMap(m_enum.map({{L"k", unnamed}})); }), ThrowsUnknownEnumValue());
    if (m_enum.minimum < 0) {
        EXPECT_THAT(Doing([&] { m_enum.typeToString(m_enum.minimum); }), ThrowsUnknownEnumValue());
        EXPECT_THAT(Doing([&] { m_enum.typeToString(-1); }), ThrowsUnknownEnumValue());
    }
}

TEST_P(EnumSerializers, ListsAreReadAndWrittenElementByElement) {
    const auto values = m_enum.list({m_enum.lastNumber, m_enum.firstNumber, m_enum.lastNumber});
    EXPECT_THAT(m_serializer->ToStringList(values), ElementsAre(m_last, m_first, m_last));
    EXPECT_THAT(m_serializer->ToStringList(m_enum.list({})), ElementsAre());

    const auto read = m_serializer->FromStringList({m_first, L"no such name", m_last}, {});
    EXPECT_THAT(m_enum.numbersOf(*read), ElementsAre(m_enum.firstNumber, m_enum.defaultNumber, m_enum.lastNumber));
    EXPECT_THAT(m_enum.numbersOf(*m_serializer->FromStringList({}, {})), ElementsAre());
}

// Enumerations are never packed: whatever nested lists hold, a run or nonsense, is passed over.
TEST_P(EnumSerializers, ListsIgnoreRuns) {
    const std::vector<RunRecord> runs{{1, {m_first, L"4", L"1"}}, {-7, {L"x", L"y"}}, {2, {}}};
    const auto read = m_serializer->FromStringList({m_last, m_first}, runs);
    EXPECT_THAT(m_enum.numbersOf(*read), ElementsAre(m_enum.lastNumber, m_enum.firstNumber));
}

TEST_P(EnumSerializers, MapsAreReadAndWrittenEntryByEntry) {
    const auto values = m_enum.map({{L"b", m_enum.firstNumber}, {L"a", m_enum.lastNumber}});
    EXPECT_THAT(m_serializer->ToStringMap(values),
                ElementsAre(Pair(TString(L"a"), m_last), Pair(TString(L"b"), m_first)));

    const auto read = m_serializer->FromStringMap({{L"b", L"no such name"}, {L"a", m_last}});
    EXPECT_THAT(m_enum.numberMapOf(*read),
                ElementsAre(Pair(TString(L"a"), m_enum.lastNumber), Pair(TString(L"b"), m_enum.defaultNumber)));
}

TEST_P(EnumSerializers, StreamedListsAreListsOfTexts) {
    m_serializer->SerializeList(m_enum.list({m_enum.firstNumber, m_enum.lastNumber}), m_stream, kMany);
    EXPECT_EQ("many:1[" + m_first.ToUtf8() + " " + m_last.ToUtf8() + "]", m_visitor.Text());
}

TEST_P(EnumSerializers, EmptyListsAreOpenedAndClosed) {
    m_enum.serializeVector(m_stream, kMany, {});
    EXPECT_EQ("many:1[]", m_visitor.Text());
}

TEST_P(EnumSerializers, ListsAreNotPacked) {
    m_enum.serializeVector(m_packingStream, kMany, std::vector<int>(5, m_enum.firstNumber));
    const std::string item = m_first.ToUtf8();
    EXPECT_EQ("many:1[" + item + " " + item + " " + item + " " + item + " " + item + "]", m_visitor.Text());
}

TEST_P(EnumSerializers, AnElementThatFailsClosesTheList) {
    EXPECT_THAT(
        [&] {
            m_enum.serializeVector(m_stream, kMany, {m_enum.lastNumber, m_enum.maximum, 1});
        },
        ThrowsUnknownEnumValue());
    EXPECT_EQ("many:1[" + m_last.ToUtf8() + "]", m_visitor.Text());
}

TEST_P(EnumSerializers, ANullValueIsALogicError) {
    const RefCntPtr<const IParameter> nothing{nullptr};
    EXPECT_THAT(Doing([&] { m_serializer->ToString(nothing); }), ThrowsLogicFailure("m_ptr"));
    EXPECT_THAT(Doing([&] { m_serializer->ToStringList(nothing); }), ThrowsLogicFailure("m_ptr"));
    EXPECT_THAT(Doing([&] { m_serializer->ToStringMap(nothing); }), ThrowsLogicFailure("m_ptr"));
    EXPECT_THAT(Doing([&] { m_serializer->SerializeList(nothing, m_stream, kMany); }), ThrowsLogicFailure("m_ptr"));
    EXPECT_EQ("", m_visitor.Text());
}

TEST_P(EnumSerializers, AValueOfAnotherTypeIsATypeMismatch) {
    for (const RefCntPtr<const IParameter> value : {Text(L"a text"), Val(m_enum.firstNumber)}) {
        EXPECT_THAT(Doing([&] { m_serializer->ToString(value); }), ThrowsTypeMismatch(0));
        EXPECT_THAT(Doing([&] { m_serializer->ToStringList(value); }), ThrowsTypeMismatch(0));
        EXPECT_THAT(Doing([&] { m_serializer->ToStringMap(value); }), ThrowsTypeMismatch(0));
        EXPECT_THAT(Doing([&] { m_serializer->SerializeList(value, m_stream, kMany); }), ThrowsTypeMismatch(0));
    }
    EXPECT_EQ("", m_visitor.Text());
}

TEST_P(EnumSerializers, TravelThroughJSONAloneInListsAndInMaps) {
    const int first = m_enum.firstNumber;
    const int last = m_enum.lastNumber;
    const auto bag = MakeBag(
        {{kOne, m_enum.value(last)}, {kMany, m_enum.list({first, last})}, {kNamed, m_enum.map({{L"k", first}})}});
    const JSONSerializer json(L"style");
    const TString text = json.ToString(bag, JSONSerializer::Compact);

    const std::string a = '"' + m_first.ToUtf8() + '"';
    const std::string b = '"' + m_last.ToUtf8() + '"';
    EXPECT_EQ("{\"one\": " + b + ",\"many\":[" + a + "," + b + "],\"named\":{\"k\":" + a + "}}", text.ToUtf8());

    const auto read = json.ToParameters(text);
    EXPECT_EQ(last, m_enum.numberOf(read->GetParameter(kOne)));
    EXPECT_THAT(m_enum.numbersOf(read->GetParameter(kMany)), ElementsAre(first, last));
    EXPECT_THAT(m_enum.numberMapOf(read->GetParameter(kNamed)), ElementsAre(Pair(TString(L"k"), first)));
}

// One word may stand in several tables.
TEST(EnumNames, BelongToTheirOwnTable) {
    EXPECT_EQ(AggType(12), ParameterTypeSerializer<AggType>::TypeFromString(L"none"));
    EXPECT_EQ(WhiskerEnd(0), ParameterTypeSerializer<WhiskerEnd>::TypeFromString(L"none"));
    EXPECT_EQ(DataScaling(0), ParameterTypeSerializer<DataScaling>::TypeFromString(L"none"));
}

TEST(EnumNames, UnknownTextsReadAsTheDefaultOfTheirTable) {
    EXPECT_EQ(AggType(12), ParameterTypeSerializer<AggType>::TypeFromString(L"NONE"));  // which is "none" by chance
    EXPECT_EQ(WhiskerEnd(2), ParameterTypeSerializer<WhiskerEnd>::TypeFromString(L"NONE"));
    EXPECT_EQ(BoxplotStyle(3), ParameterTypeSerializer<BoxplotStyle>::TypeFromString(L"modern "));
    EXPECT_EQ(BoxplotStyle(3), ParameterTypeSerializer<BoxplotStyle>::TypeFromString(L"glass "));
    EXPECT_EQ(BoxplotStyle(3), ParameterTypeSerializer<BoxplotStyle>::TypeFromString(L""));
    EXPECT_EQ(TextAlign(1), ParameterTypeSerializer<TextAlign>::TypeFromString(L""));
}

TEST(EnumNames, GapsInATableHaveNone) {
    for (const int number : {0, 2, 5, 8}) {
        EXPECT_THAT(Doing([&] { ParameterTypeSerializer<BoxplotStyle>::TypeToString(BoxplotStyle(number)); }),
                    ThrowsUnknownEnumValue())
            << number;
    }
}

}  // namespace
