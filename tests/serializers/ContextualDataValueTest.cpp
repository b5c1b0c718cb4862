#include <qvpreslayer/DataValueSerializer.h>  // first: the header stands alone

#include <limits>

#include <gtest/gtest.h>

#include "support/CommaLocale.h"
#include "support/Printing.h"
#include "support/TypedValues.h"

using typed::Null;
using typed::NullString;
using typed::String;
using typed::TupleOf;

namespace {

TString Text(const DataValue& value) { return ContextualDataValueSerializerCore::ToString(value); }

}  // namespace

TEST(ContextualDataValue, Numbers) {
    EXPECT_EQ(L"42", Text(42));
    EXPECT_EQ(L"-1234567", Text(-1234567));
    EXPECT_EQ(L"-9223372036854775808", Text(std::numeric_limits<Int64>::min()));
    EXPECT_EQ(L"12.5", Text(12.5));
    EXPECT_EQ(L"12.5", Text(DataValue(12.5, 2, 0)));  // labels leave no trace
    EXPECT_EQ(L"12", Text(12.0));
    EXPECT_EQ(L"-0", Text(-0.0));
    EXPECT_EQ(L"1e+300", Text(1e300));
    EXPECT_EQ(L"0.30000000000000004", Text(0.1 + 0.2));
}

TEST(ContextualDataValue, StringsWithoutCollationOrQuotes) {
    EXPECT_EQ(L"a:b,c", Text(String(L"a:b,c")));
    EXPECT_EQ(L"", Text(String(L"")));
    EXPECT_EQ(L"\"%#\\", Text(String(L"\"%#\\")));
    EXPECT_EQ(L"null", Text(String(L"null")));
}

TEST(ContextualDataValue, DatesAndTruthValues) {
    EXPECT_EQ(L"true", Text(true));
    EXPECT_EQ(L"false", Text(false));
    EXPECT_EQ(L"2024-02-29", Text(typed::Day(2024, 2, 29)));
    EXPECT_EQ(L"2024-02-29 23:59:58", Text(typed::LeapEvening()));
    EXPECT_EQ(L"2024-02-29 23:59:58.5", Text(typed::LeapEvening(500000000)));
}

// Unlike the typed text, it has a form for geometries.
TEST(ContextualDataValue, Geometries) { EXPECT_EQ(L"POINT (1 2)", Text(Spatial(L"POINT (1 2)"))); }

TEST(ContextualDataValue, TuplesWithoutBrackets) {
    EXPECT_EQ(L"1,a,b,true", Text(TupleOf({1, String(L"a,b"), true})));
    EXPECT_EQ(L"1,2,3", Text(TupleOf({TupleOf({1, 2}), 3})));
    EXPECT_EQ(L"", Text(TupleOf({})));
    EXPECT_EQ(L"%null%,%null%", Text(TupleOf({Null(DataType::Integer), NullString()})));
}

TEST(ContextualDataValue, TuplesOfAnyDepth) { EXPECT_EQ(L"1", Text(typed::Nested(1000000))); }

TEST(ContextualDataValue, NullOfEachType) {
    for (const DataType type : {DataType::Integer, DataType::Real, DataType::DateTime, DataType::Boolean,
                                DataType::Date, DataType::Tuple, DataType::Spatial, DataType::Unknown}) {
        EXPECT_EQ(L"null", Text(Null(type))) << static_cast<int>(type);
    }
    EXPECT_EQ(L"%null%", Text(NullString()));
    EXPECT_EQ(L"%null%", Text(NullString(L"unknown")));
}

TEST(ContextualDataValue, NoLocaleMatters) {
    const CommaLocale locale;
    EXPECT_EQ(L"1234567", Text(1234567));
    EXPECT_EQ(L"1234.5", Text(1234.5));
}
