#include <qvcore/DataValue.h>

#include <cmath>
#include <limits>
#include <string>
#include <type_traits>
#include <unordered_set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <qvsys/QuorvelException.h>

#include "support/Printing.h"

namespace {

constexpr Int64 kLargest = std::numeric_limits<Int64>::max();
constexpr Int64 kSmallest = std::numeric_limits<Int64>::min();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

constexpr DataType kAllTypes[] = {DataType::Integer,  DataType::Real,    DataType::CString,
                                  DataType::DateTime, DataType::Boolean, DataType::Date,
                                  DataType::Tuple,    DataType::Spatial, DataType::Unknown};

Date Day(int year, unsigned month, unsigned day) {
    return {std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
}

DataValue Text(const TString& text, const Collation& collation = Collation(u"root")) {
    return IndirectString::Lookup(collation, text);
}

DataValue MakeTuple(std::vector<DataValue> values) { return MakeRefCnt<Tuple>(std::move(values)); }

// Values in ascending order, no two of them equal.
std::vector<DataValue> MakeAscending() {
    return {
        DataValue::Null(DataType::Integer),
        kSmallest,
        -1,
        0,
        kLargest,
        DataValue::Null(DataType::Real),
        -1e300,
        -5e-324,
        0.0,
        5e-324,
        0.1,
        DataValue::Null(DataType::CString),
        Text(u""),
        Text(u"A"),
        Text(u"a"),
        Text(u"a "),
        Text(u"b"),
        DataValue::Null(DataType::DateTime),
        DateTime(Day(2024, 2, 29), std::chrono::hours(23)),
        DateTime(Day(2024, 3, 1)),
        DateTime(Day(2024, 3, 1), std::chrono::nanoseconds(1)),
        DataValue::Null(DataType::Boolean),
        false,
        true,
        DataValue::Null(DataType::Date),
        Day(1, 1, 1),
        Day(2024, 2, 28),
        Day(2024, 2, 29),
        Day(9999, 12, 31),
        DataValue::Null(DataType::Tuple),
        MakeTuple({}),
        MakeTuple({1}),
        MakeTuple({1, 2}),
        MakeTuple({2}),
        MakeTuple({DataValue::Null(DataType::Tuple)}),  // after every integer, by its type
        MakeTuple({MakeTuple({1})}),
        DataValue::Null(DataType::Spatial),
        Spatial(u""),
        Spatial(u"POINT(1 2)"),
        DataValue(),
    };
}

TEST(DataValue, DefaultIsTheNullOfTypeUnknown) {
    const DataValue value;
    EXPECT_EQ(DataType::Unknown, value.GetDataType());
    EXPECT_TRUE(value.IsSpecial());
    EXPECT_EQ(GetUnknownCollation(), value.GetCollation());
    EXPECT_EQ(255, value.GetPrecision());
    EXPECT_EQ(255, value.GetScale());
}

TEST(DataValue, EveryTypeHasANull) {
    for (const DataType type : kAllTypes) {
        SCOPED_TRACE(static_cast<int>(type));
        const DataValue null = DataValue::Null(type);
        EXPECT_EQ(type, null.GetDataType());
        EXPECT_TRUE(null.IsSpecial());
    }
}

TEST(DataValue, NullTextAloneKeepsItsCollation) {
    for (const DataType type : kAllTypes) {
        SCOPED_TRACE(static_cast<int>(type));
        const Collation expected = type == DataType::CString ? Collation(u"root") : GetUnknownCollation();
        EXPECT_EQ(expected, DataValue::Null(type, Collation(u"root")).GetCollation());
    }
}

TEST(DataValue, NullRefusesANumberThatIsNoType) {
    EXPECT_THROW(DataValue::Null(static_cast<DataType>(9)), QuorvelException);
}

TEST(DataValue, TakesIntegersOfEveryWidth) {
    EXPECT_EQ(DataType::Integer, DataValue(5).GetDataType());
    EXPECT_EQ(5, DataValue(5).GetInteger());
    EXPECT_EQ(-5, DataValue(static_cast<short>(-5)).GetInteger());
    EXPECT_EQ(4'294'967'295, DataValue(4'294'967'295u).GetInteger());
    EXPECT_EQ(kSmallest, DataValue(kSmallest).GetInteger());
    EXPECT_EQ(kLargest, DataValue(static_cast<long long>(kLargest)).GetInteger());
    EXPECT_FALSE(DataValue(0).IsSpecial());
}

TEST(DataValue, DoesNotTakeWhatWouldChangeInSilence) {
    EXPECT_FALSE((std::is_constructible_v<DataValue, UInt64>));
    EXPECT_FALSE((std::is_constructible_v<DataValue, char16_t>));
    EXPECT_FALSE((std::is_constructible_v<DataValue, const char*>));
    EXPECT_FALSE((std::is_constructible_v<DataValue, const wchar_t*>));
    EXPECT_FALSE((std::is_constructible_v<DataValue, TString>));
}

TEST(DataValue, TakesRealsWithLabels) {
    const DataValue plain(12.5);
    EXPECT_EQ(DataType::Real, plain.GetDataType());
    EXPECT_EQ(12.5, plain.GetReal());
    EXPECT_EQ(255, plain.GetPrecision());
    EXPECT_EQ(255, plain.GetScale());

    const DataValue labelled(12.5, 2, 0);
    EXPECT_EQ(12.5, labelled.GetReal());
    EXPECT_EQ(2, labelled.GetPrecision());
    EXPECT_EQ(0, labelled.GetScale());
}

TEST(DataValue, RealsThatAreNotFiniteAreNull) {
    for (const double number : {std::numeric_limits<double>::quiet_NaN(), kInfinity, -kInfinity}) {
        const DataValue value(number, 2, 1);
        EXPECT_EQ(DataType::Real, value.GetDataType());
        EXPECT_TRUE(value.IsSpecial());
        EXPECT_EQ(255, value.GetPrecision());
        EXPECT_EQ(255, value.GetScale());
    }
}

TEST(DataValue, KeepsTheSignOfZero) { EXPECT_TRUE(std::signbit(DataValue(-0.0).GetReal())); }

TEST(DataValue, TakesTextsWithTheirCollation) {
    const DataValue value = Text(u"a:b", Collation(u"german", 1));
    EXPECT_EQ(DataType::CString, value.GetDataType());
    EXPECT_EQ(TString(u"a:b"), value.GetString().GetText());
    EXPECT_EQ(Collation(u"german", 1), value.GetCollation());
    EXPECT_FALSE(value.IsSpecial());
}

TEST(DataValue, TakesBooleans) {
    EXPECT_EQ(DataType::Boolean, DataValue(true).GetDataType());
    EXPECT_TRUE(DataValue(true).GetBoolean());
    EXPECT_FALSE(DataValue(false).GetBoolean());
}

TEST(DataValue, TakesDatesThatExist) {
    EXPECT_EQ(DataType::Date, DataValue(Day(2024, 2, 29)).GetDataType());
    EXPECT_EQ(Day(2024, 2, 29), DataValue(Day(2024, 2, 29)).GetDate());
    EXPECT_THROW(DataValue{Day(2023, 2, 29)}, QuorvelException);
    EXPECT_THROW(DataValue{Day(10000, 1, 1)}, QuorvelException);
}

TEST(DataValue, TakesDateTimes) {
    const DateTime dateTime(Day(2024, 2, 29), std::chrono::hours(1));
    EXPECT_EQ(DataType::DateTime, DataValue(dateTime).GetDataType());
    EXPECT_EQ(dateTime, DataValue(dateTime).GetDateTime());
}

TEST(DataValue, TakesTuplesAndMakesNoneNull) {
    const RefCntPtr<Tuple> tuple = MakeRefCnt<Tuple>(std::vector<DataValue>{1});
    EXPECT_EQ(DataType::Tuple, DataValue(tuple).GetDataType());
    EXPECT_EQ(tuple, DataValue(tuple).GetTuple());
    EXPECT_EQ(DataType::Tuple, DataValue(RefCntPtr<Tuple>()).GetDataType());
    EXPECT_TRUE(DataValue(RefCntPtr<Tuple>()).IsSpecial());
}

TEST(DataValue, TakesSpatials) {
    const DataValue value{Spatial(u"POINT(1 2)")};
    EXPECT_EQ(DataType::Spatial, value.GetDataType());
    EXPECT_EQ(TString(u"POINT(1 2)"), value.GetSpatial().GetText());
}

TEST(DataValue, AnswersTheContentOfItsOwnTypeOnly) {
    for (const DataValue& value : MakeAscending()) {
        SCOPED_TRACE(static_cast<int>(value.GetDataType()));
        const auto answers = [&value](DataType type, auto get) {
            if (value.GetDataType() == type && !value.IsSpecial()) {
                EXPECT_NO_THROW(get());
            } else {
                EXPECT_THROW(get(), QuorvelException);
            }
        };
        answers(DataType::Integer, [&value] { (void)value.GetInteger(); });
        answers(DataType::Real, [&value] { (void)value.GetReal(); });
        answers(DataType::CString, [&value] { (void)value.GetString(); });
        answers(DataType::DateTime, [&value] { (void)value.GetDateTime(); });
        answers(DataType::Boolean, [&value] { (void)value.GetBoolean(); });
        answers(DataType::Date, [&value] { (void)value.GetDate(); });
        answers(DataType::Tuple, [&value] { (void)value.GetTuple(); });
        answers(DataType::Spatial, [&value] { (void)value.GetSpatial(); });
    }
}

TEST(DataValue, EqualityAndOrderAgree) {
    const std::vector<DataValue> left = MakeAscending();
    const std::vector<DataValue> right = MakeAscending();
    for (std::size_t i = 0; i < left.size(); ++i) {
        for (std::size_t j = 0; j < right.size(); ++j) {
            SCOPED_TRACE(i * 1000 + j);
            EXPECT_EQ(i == j, left[i] == right[j]);
            EXPECT_EQ(i < j, left[i] < right[j]);
            EXPECT_EQ(i > j, left[i] > right[j]);
        }
    }
}

TEST(DataValue, EqualValuesHashAlike) {
    const std::vector<DataValue> left = MakeAscending();
    const std::vector<DataValue> right = MakeAscending();
    for (std::size_t i = 0; i < left.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(std::hash<DataValue>()(left[i]), std::hash<DataValue>()(right[i]));
    }
    EXPECT_EQ(left.size(), std::unordered_set<DataValue>(left.begin(), left.end()).size());
}

TEST(DataValue, BothZerosAreEqual) {
    EXPECT_EQ(DataValue(0.0), DataValue(-0.0));
    EXPECT_FALSE(DataValue(-0.0) < DataValue(0.0));
    EXPECT_EQ(std::hash<DataValue>()(DataValue(0.0)), std::hash<DataValue>()(DataValue(-0.0)));
}

TEST(DataValue, LabelsAndCollationsDoNotCount) {
    EXPECT_EQ(DataValue(1.5, 2, 1), DataValue(1.5));
    EXPECT_EQ(std::hash<DataValue>()(DataValue(1.5, 2, 1)), std::hash<DataValue>()(DataValue(1.5)));
    EXPECT_EQ(Text(u"a", Collation(u"root")), Text(u"a", Collation(u"german")));
    EXPECT_EQ(std::hash<DataValue>()(Text(u"a", Collation(u"root"))),
              std::hash<DataValue>()(Text(u"a", Collation(u"german"))));
    EXPECT_EQ(DataValue::Null(DataType::CString, Collation(u"root")), DataValue::Null(DataType::CString));
}

TEST(DataValue, NullTextIsNotTheTextOfNull) { EXPECT_NE(DataValue::Null(DataType::CString), Text(u"%null%")); }

TEST(DataValue, IntegerArithmeticWraps) {
    EXPECT_EQ(DataValue(5), DataValue(2) + DataValue(3));
    EXPECT_EQ(DataValue(-1), DataValue(2) - DataValue(3));
    EXPECT_EQ(DataValue(kSmallest), DataValue(kLargest) + DataValue(1));
    EXPECT_EQ(DataValue(kLargest), DataValue(kSmallest) - DataValue(1));
}

TEST(DataValue, ARealMakesTheResultReal) {
    EXPECT_EQ(DataValue(1.5), DataValue(1) + DataValue(0.5));
    EXPECT_EQ(DataValue(-0.5), DataValue(0.5) - DataValue(1));
    EXPECT_EQ(DataValue(0.75), DataValue(0.5) + DataValue(0.25));
    EXPECT_EQ(255, (DataValue(0.5, 2, 1) + DataValue(0.25, 2, 1)).GetPrecision());
    EXPECT_EQ(DataValue::Null(DataType::Real), DataValue(1.7e308) + DataValue(1.7e308));
}

TEST(DataValue, OnlyNumbersCanBeAdded) {
    for (const DataValue& value : MakeAscending()) {
        const bool number =
            !value.IsSpecial() && (value.GetDataType() == DataType::Integer || value.GetDataType() == DataType::Real);
        if (number) {
            continue;
        }
        SCOPED_TRACE(static_cast<int>(value.GetDataType()));
        EXPECT_THROW(value + DataValue(1), QuorvelException);
        EXPECT_THROW(DataValue(1) + value, QuorvelException);
        EXPECT_THROW(value - DataValue(1.5), QuorvelException);
        EXPECT_THROW(DataValue(1.5) - value, QuorvelException);
    }
}

TEST(DataValue, CopiesAreIndependentOfTheSource) {
    DataValue source = Text(u"kept");
    const DataValue copy = source;
    source = 7;
    EXPECT_EQ(Text(u"kept"), copy);
    EXPECT_EQ(DataValue(7), source);
}

TEST(DataValue, MayBeUsedAfterItWasMovedFrom) {
    DataValue source = MakeTuple({1});
    const DataValue target = std::move(source);
    EXPECT_EQ(MakeTuple({1}), target);
    EXPECT_NE(source, target);
    EXPECT_NE(source < target, target < source);
    (void)std::hash<DataValue>()(source);
    source = 7;
    EXPECT_EQ(DataValue(7), source);
}

TEST(DataValue, TakesAtMost40Bytes) { EXPECT_LE(sizeof(DataValue), 40u); }

}  // namespace
