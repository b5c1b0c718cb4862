#include <qvpreslayer/Enumerations.h>

#include <iterator>
#include <type_traits>

#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "serializers/EnumTablesData.h"
#include "serializers/EnumTestTypes.h"
#include "support/Printing.h"

namespace {

template <class E>
class EnumTables : public testing::Test {};

TYPED_TEST_SUITE(EnumTables, AllEnumerations);

TYPED_TEST(EnumTables, EnumeratorsHaveTheirNumbers) {
    for (const auto& row : EnumRows<TypeParam>::kRows) {
        EXPECT_EQ(row.number, static_cast<int>(row.value)) << TString(row.name).ToUtf8();
    }
}

TYPED_TEST(EnumTables, EveryValueIsWrittenAsItsName) {
    for (const auto& row : EnumRows<TypeParam>::kRows) {
        EXPECT_EQ(TString(row.name), ParameterTypeSerializer<TypeParam>::TypeToString(row.value)) << row.number;
    }
}

TYPED_TEST(EnumTables, EveryNameIsReadAsItsValue) {
    for (const auto& row : EnumRows<TypeParam>::kRows) {
        EXPECT_EQ(row.value, ParameterTypeSerializer<TypeParam>::TypeFromString(row.name))
            << TString(row.name).ToUtf8();
    }
}

// Names count to the last character, in every place: one that differs, one more or one less is another name.
TYPED_TEST(EnumTables, TextsThatAreNearlyNamesAreNone) {
    const auto isName = [](const std::u16string& text) {
        return std::any_of(std::begin(EnumRows<TypeParam>::kRows), std::end(EnumRows<TypeParam>::kRows),
                           [&text](const auto& row) { return TString(row.name) == TString(text); });
    };
    const auto expectDefault = [&](const std::u16string& text) {
        if (!isName(text)) {
            EXPECT_EQ(EnumRows<TypeParam>::kDefault, ParameterTypeSerializer<TypeParam>::TypeFromString(text))
                << TString(text).ToUtf8();
        }
    };
    for (const auto& row : EnumRows<TypeParam>::kRows) {
        const std::u16string name(TString(row.name).view());
        for (std::size_t place = 0; place < name.size(); ++place) {
            std::u16string other = name;
            other[place] = static_cast<char16_t>(other[place] ^ 1);
            expectDefault(other);
        }
        expectDefault(name + u"x");
        expectDefault(name.substr(0, name.size() - 1));
        expectDefault(name.substr(1));
    }
}

TYPED_TEST(EnumTables, TheListingHoldsTheseRowsAndNoOthersInOrder) {
    const auto listed = GetEnumValues<TypeParam>();
    const auto& rows = EnumRows<TypeParam>::kRows;
    ASSERT_EQ(std::size(rows), listed.size());
    for (std::size_t i = 0; i < listed.size(); ++i) {
        EXPECT_EQ(rows[i].value, listed[i].value) << i;
        EXPECT_EQ(TString(rows[i].name), TString(listed[i].name)) << i;
    }
}

TYPED_TEST(EnumTables, TheDefaultIsAsAgreed) {
    EXPECT_EQ(EnumRows<TypeParam>::kDefault, GetEnumDefault<TypeParam>());
    EXPECT_EQ(EnumRows<TypeParam>::kDefault, ParameterTypeSerializer<TypeParam>::TypeFromString(L"no such name"));
}

// Wherever a number has no row, around the table and in its gaps, there is nothing to write.
TYPED_TEST(EnumTables, NumbersWithoutARowHaveNoName) {
    const auto& rows = EnumRows<TypeParam>::kRows;
    const auto* row = std::begin(rows);
    for (int number = 0; number <= 200; ++number) {
        if (row != std::end(rows) && row->number == number) {
            ++row;
        } else {
            EXPECT_THAT(Doing([&] { ParameterTypeSerializer<TypeParam>::TypeToString(TypeParam(number)); }),
                        ThrowsUnknownEnumValue())
                << number;
        }
    }
    EXPECT_EQ(std::end(rows), row);
}

TEST(EnumTableSizes, AreAsAgreed) {
    EXPECT_EQ(45u, GetEnumValues<AggType>().size());
    EXPECT_EQ(5u, GetEnumValues<BoxplotStyle>().size());
    EXPECT_EQ(3u, GetEnumValues<DataScaling>().size());
    EXPECT_EQ(9u, GetEnumValues<DataType>().size());
    EXPECT_EQ(2u, GetEnumValues<FontWeight>().size());
    EXPECT_EQ(3u, GetEnumValues<ForecastModelType>().size());
    EXPECT_EQ(3u, GetEnumValues<ForecastRangeType>().size());
    EXPECT_EQ(26u, GetEnumValues<ForecastStatus>().size());
    EXPECT_EQ(2u, GetEnumValues<ParserMode>().size());
    EXPECT_EQ(164u, GetEnumValues<StyleAttribute>().size());
    EXPECT_EQ(4u, GetEnumValues<StyleDataClass>().size());
    EXPECT_EQ(59u, GetEnumValues<StyleElement>().size());
    EXPECT_EQ(3u, GetEnumValues<StyleFieldScope>().size());
    EXPECT_EQ(3u, GetEnumValues<StyleSwatch>().size());
    EXPECT_EQ(2u, GetEnumValues<QuorvelFontStyle>().size());
    EXPECT_EQ(3u, GetEnumValues<TextAlign>().size());
    EXPECT_EQ(2u, GetEnumValues<TextBreakMode>().size());
    EXPECT_EQ(4u, GetEnumValues<TextDecoration>().size());
    EXPECT_EQ(4u, GetEnumValues<TextOrient>().size());
    EXPECT_EQ(3u, GetEnumValues<TextWholeLineMode>().size());
    EXPECT_EQ(4u, GetEnumValues<TextWrapMode>().size());
    EXPECT_EQ(3u, GetEnumValues<WhiskerEnd>().size());
}

TEST(EnumTableTypes, AreThirtyTwoBitsWideExceptForDataTypes) {
    EXPECT_TRUE((std::is_same_v<int, std::underlying_type_t<StyleAttribute>>));
    EXPECT_TRUE((std::is_same_v<int, std::underlying_type_t<WhiskerEnd>>));
    EXPECT_EQ(1u, sizeof(DataType));
}

}  // namespace
