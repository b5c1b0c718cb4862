#include <qvcore/DataType.h>

#include <gtest/gtest.h>

namespace {

TEST(DataType, HasTheNumbersOfStoredTexts) {
    EXPECT_EQ(0, static_cast<int>(DataType::Integer));
    EXPECT_EQ(1, static_cast<int>(DataType::Real));
    EXPECT_EQ(2, static_cast<int>(DataType::CString));
    EXPECT_EQ(3, static_cast<int>(DataType::DateTime));
    EXPECT_EQ(4, static_cast<int>(DataType::Boolean));
    EXPECT_EQ(5, static_cast<int>(DataType::Date));
    EXPECT_EQ(6, static_cast<int>(DataType::Tuple));
    EXPECT_EQ(7, static_cast<int>(DataType::Spatial));
    EXPECT_EQ(8, static_cast<int>(DataType::Unknown));
}

TEST(DataType, TakesOneByte) { EXPECT_EQ(1u, sizeof(DataType)); }

}  // namespace
