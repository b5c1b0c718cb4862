// What comes back from its text, as properties of random values and texts. Random seeds; a failure prints how to
// repeat it.
#include <qvpreslayer/DataValueSerializer.h>

#include <bit>
#include <cstdint>
#include <map>
#include <ostream>
#include <stdexcept>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>  // which the next ones build on
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "support/Printing.h"
#include "support/TestHost.h"
#include "support/TypedValues.h"

// How a failed property shows its texts and values; global, as the types are.
void showValue(const TString& text, std::ostream& stream) { PrintTo(text, &stream); }
void showValue(const DataValue& value, std::ostream& stream) { PrintTo(value, &stream); }

namespace {

using Serializer = ParameterTypeSerializer<DataValue>;

// Every delimiter of the text, blanks, and words that mean something at some place.
const std::vector<TString> kPieces = {L":",   L",",  L"[",  L"]",   L"%",   L"#",     L"\"",     L"\\",
                                      L"a",   L"b",  L" ",  L"\t",  L"",    L"1",     L"%null%", L"null",
                                      L"],[", L"s:", L"i:", L"\\%", L"\\#", L"\u00e4"};

TString Join(const std::vector<TString>& pieces) {
    TString text;
    for (const TString& piece : pieces) {
        text += piece;
    }
    return text;
}

rc::Gen<TString> AnyString() {
    return rc::gen::map(rc::gen::container<std::vector<TString>>(rc::gen::elementOf(kPieces)), Join);
}

bool Contains(const TString& text, const wchar_t* part) { return text.indexOf(part) >= 0; }

// A string comes back unless it reads as null, and from inside a tuple unless it closes its bracket before a comma.
bool StringComesBack(const TString& text) { return text != DataValueFormatter::valueNull; }
bool StringComesBackFromATuple(const TString& text) { return StringComesBack(text) && !Contains(text, L"],"); }

rc::Gen<TString> CollationName() {
    return rc::gen::element<TString>(L"root", L"unknown", L"", L"null", L"a-B_9", TString(64, u'z'));
}

rc::Gen<DataValue> StringOf(rc::Gen<TString> texts) {
    return rc::gen::apply([](const TString& text, const TString& collation) { return typed::String(text, collation); },
                          texts, CollationName());
}

// Days from 0001-01-01 to 9999-12-31.
rc::Gen<Date> AnyDay() {
    return rc::gen::map(rc::gen::inRange(0, 3652059), [](int days) {
        return Date(std::chrono::sys_days(typed::Day(1, 1, 1)) + std::chrono::days(days));
    });
}

rc::Gen<DataValue> AnyDateTime() {
    constexpr Int64 kDay = Int64{24} * 3600 * 1000000000;
    const auto anyTime = rc::gen::oneOf(
        rc::gen::inRange<Int64>(0, kDay),
        rc::gen::map(rc::gen::inRange<Int64>(0, 24 * 3600), [](Int64 seconds) { return seconds * 1000000000; }));
    return rc::gen::apply(
        [](const Date& day, Int64 time) { return DataValue(DateTime(day, std::chrono::nanoseconds(time))); }, AnyDay(),
        anyTime);
}

// Any bits at all, and numbers with few digits; labels from 0 to 255, which stands for none.
rc::Gen<DataValue> AnyReal() {
    const auto anyNumber = rc::gen::oneOf(
        rc::gen::map(rc::gen::arbitrary<std::uint64_t>(),
                     [](std::uint64_t bits) { return std::bit_cast<double>(bits); }),
        rc::gen::map(rc::gen::inRange(-100000, 100000), [](int thousandths) { return thousandths / 1000.0; }),
        rc::gen::element(0.0, -0.0, 1e300, 5e-324, 0.1));
    return rc::gen::apply(
        [](double number, std::uint8_t precision, std::uint8_t scale) { return DataValue(number, precision, scale); },
        anyNumber, rc::gen::arbitrary<std::uint8_t>(), rc::gen::arbitrary<std::uint8_t>());
}

// Every type that is read back but tuples; the nulls among them.
rc::Gen<DataValue> AnyScalar(rc::Gen<TString> texts) {
    return rc::gen::oneOf(rc::gen::map(rc::gen::arbitrary<Int64>(), [](Int64 value) { return DataValue(value); }),
                          AnyReal(), StringOf(texts), StringOf(texts), AnyDateTime(),
                          rc::gen::map(AnyDay(), [](const Date& day) { return DataValue(day); }),
                          rc::gen::map(rc::gen::arbitrary<bool>(), [](bool value) { return DataValue(value); }),
                          rc::gen::map(rc::gen::element(DataType::Integer, DataType::Real, DataType::DateTime,
                                                        DataType::Boolean, DataType::Date, DataType::Unknown),
                                       [](DataType type) { return DataValue::Null(type); }),
                          rc::gen::map(CollationName(), [](const TString& name) { return typed::NullString(name); }));
}

rc::Gen<TString> Promised(bool (*comesBack)(const TString&)) {
    return rc::gen::map(AnyString(), [=](const TString& text) { return comesBack(text) ? text : TString(L",a"); });
}

// A scalar, or one without commas inside up to three tuples of one element: what an element of a tuple may be.
rc::Gen<DataValue> AnyElement() {
    return rc::gen::apply(
        [](const DataValue& scalar, int levels) {
            if (Contains(Serializer::TypeToString(scalar), L",")) {
                return scalar;
            }
            DataValue value = scalar;
            for (; levels > 0; --levels) {
                value = typed::TupleOf({value});
            }
            return value;
        },
        AnyScalar(Promised(StringComesBackFromATuple)), rc::gen::inRange(0, 4));
}

rc::Gen<DataValue> AnyTuple() {
    return rc::gen::map(rc::gen::nonEmpty(rc::gen::container<std::vector<DataValue>>(AnyElement())), typed::TupleOf);
}

rc::Gen<DataValue> AnyValue() { return rc::gen::oneOf(AnyScalar(Promised(StringComesBack)), AnyTuple()); }

// The text of a value with up to three places where something is cut out or put in.
rc::Gen<TString> DamagedText() {
    static const std::vector<TString> kParts = {L"i:", L"r:", L"s:",  L"t:",     L"[i:1]", L"[s:root:", L"[t:[",
                                                L"]",  L",",  L"],[", L"root:",  L"null",  L"%null%",   L"[",
                                                L":",  L"1",  L"",    L"r:::.5", L"#",     L"\\%"};
    using Edit = std::tuple<int, int, TString>;  // position, units cut out, what is put in
    const auto edits = rc::gen::resize(
        3, rc::gen::container<std::vector<Edit>>(rc::gen::tuple(rc::gen::resize(100, rc::gen::inRange(0, 40)),
                                                                rc::gen::inRange(0, 4), rc::gen::elementOf(kParts))));
    return rc::gen::apply(
        [](const DataValue& value, const std::vector<Edit>& damage) {
            TString text = Serializer::TypeToString(value);
            for (const auto& [position, cut, part] : damage) {
                text = text.left(position) + part + text.mid(position + cut);
            }
            return text;
        },
        AnyValue(), edits);
}

// Reads the text of a value, and writes that again.
void ExpectComesBack(const DataValue& value) {
    const TString text = Serializer::TypeToString(value);
    const DataValue read = Serializer::TypeFromString(text);
    RC_LOG() << text.ToUtf8() << '\n';
    RC_ASSERT(read == value);
    RC_ASSERT(typed::Identical(value, read));
    RC_ASSERT(Serializer::TypeToString(read) == text);
}

bool ComesBack(const DataValue& value) {
    try {
        return typed::Identical(value, Serializer::TypeFromString(Serializer::TypeToString(value)));
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

RC_GTEST_PROP(DataValueTextProperty, EveryStringComesBack, ()) {
    ExpectComesBack(*StringOf(Promised(StringComesBack)));
}

RC_GTEST_PROP(DataValueTextProperty, EveryScalarComesBack, ()) {
    ExpectComesBack(*AnyScalar(Promised(StringComesBack)));
}

RC_GTEST_PROP(DataValueTextProperty, TuplesOfPromisedValuesComeBack, ()) { ExpectComesBack(*AnyTuple()); }

RC_GTEST_PROP(DataValueTextProperty, TupleTextsComeBack, ()) {
    const DataValue tuple = *AnyTuple();
    const TString text = TupleDataValueSerializer::ToString(tuple.GetTuple());
    RC_ASSERT(Serializer::TypeToString(tuple) == TString(L"t:") + text);
    RC_ASSERT(typed::Identical(tuple, DataValue(TupleDataValueSerializer::FromString(text))));
}

RC_GTEST_PROP(DataValueTextProperty, ListsAndMapsComeBack, ()) {
    const auto values = *rc::gen::container<std::vector<DataValue>>(AnyValue());
    Serializer serializer;
    const auto list = serializer.FromStringList(serializer.ToStringList(Val(values)), {});
    RC_ASSERT(GetParameterValue<std::vector<DataValue>>(list.Get()) == values);
    std::map<TString, DataValue> keyed;
    for (const DataValue& value : values) {
        keyed.emplace(*AnyString(), value);
    }
    const auto map = serializer.FromStringMap(serializer.ToStringMap(Val(keyed)));
    RC_ASSERT((GetParameterValue<std::map<TString, DataValue>>(map.Get()) == keyed));
}

// The text of a string is its content behind its collation, whatever the content.
RC_GTEST_PROP(DataValueTextProperty, StringsAreNotEscaped, ()) {
    const TString text = *AnyString();
    const TString name = *CollationName();
    RC_ASSERT(Serializer::TypeToString(typed::String(text, name)) == TString(L"s:") + name + L":" + text);
    RC_ASSERT(ContextualDataValueSerializerCore::ToString(typed::String(text, name)) == text);
}

// Any text is read, or fails in one of the three ways; what was read comes back from its own text.
RC_GTEST_PROP(DataValueTextProperty, WhateverIsReadComesBack, ()) {
    const TString text = *DamagedText();
    RC_LOG() << text.ToUtf8() << '\n';
    DataValue value;
    try {
        value = Serializer::TypeFromString(text);
    } catch (const QuorvelException&) {
        return;
    } catch (const LogicException&) {
        return;
    } catch (const std::out_of_range&) {
        return;
    }
    RC_TAG(static_cast<int>(value.GetDataType()));
    ExpectComesBack(value);
}

// Every string of up to five of the characters that mean something: alone it comes back, and from a tuple exactly when
// it is told to.
TEST(DataValueTextProperty, AllShortStrings) {
    const std::u16string_view letters = u":,[]%#\"\\a ";
    std::size_t count = 1;
    for (int length = 0; length <= 5; ++length, count *= letters.size()) {
        for (std::size_t number = 0; number < count; ++number) {
            TString text;
            for (std::size_t rest = number; text.length() < length; rest /= letters.size()) {
                text.push_back(letters[rest % letters.size()]);
            }
            const DataValue value = typed::String(text);
            ASSERT_EQ(value, Serializer::TypeFromString(Serializer::TypeToString(value)));
            const DataValue tuple = typed::TupleOf({value, 1});
            ASSERT_EQ(StringComesBackFromATuple(text), ComesBack(tuple)) << text.ToUtf8();
        }
    }
}

// What does not come back, each case on its own: the promise ends here and nowhere else.
TEST(DataValueTextProperty, WhatIsNotPromised) {
    EXPECT_FALSE(ComesBack(typed::String(L"%null%")));
    EXPECT_FALSE(ComesBack(typed::TupleOf({typed::String(L"%null%")})));
    EXPECT_FALSE(ComesBack(typed::TupleOf({typed::String(L"a],b")})));
    EXPECT_FALSE(ComesBack(typed::TupleOf({typed::String(L"x],[i:1")})));
    EXPECT_FALSE(ComesBack(typed::TupleOf({})));
    EXPECT_FALSE(ComesBack(typed::TupleOf({typed::TupleOf({})})));
    EXPECT_FALSE(ComesBack(typed::TupleOf({typed::TupleOf({1, 2})})));
    EXPECT_FALSE(ComesBack(typed::TupleOf({typed::TupleOf({typed::String(L"a,b")})})));
    EXPECT_FALSE(ComesBack(typed::Null(DataType::Tuple)));
    EXPECT_FALSE(ComesBack(typed::TupleOf({typed::Null(DataType::Tuple)})));
    EXPECT_FALSE(ComesBack(Spatial(L"POINT (1 2)")));
    EXPECT_FALSE(ComesBack(typed::Null(DataType::Spatial)));
}
