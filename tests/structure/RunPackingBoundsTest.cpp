#include <qvpreslayer/DataSerializerHelpers.h>  // first: the header stands alone

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "structure/PackingCases.h"

namespace {

template <class T>
class PackingBounds : public testing::Test {};

using SteppedTypes = testing::Types<int, unsigned int, Int64, UInt64>;
TYPED_TEST_SUITE(PackingBounds, SteppedTypes);

}  // namespace

// Steps are usable while the halves of two neighbours, each cut towards zero, differ by less than 500,000,000.
TEST(RunPackingBounds, LargestStepsOfInt) {
    ExpectPacked<int>({
        {{-1999999996, -999999998, 0, 999999998}, "int-rle:2[-1999999996 4 999999998] int-rle:2[]"},
        {{1999999996, 999999998, 0, -999999998}, "int-rle:2[1999999996 4 -999999998] int-rle:2[]"},
        // The halves of two odd or two even neighbours decide alike; of one each, by where they stand.
        {{-1999999998, -999999999, 0, 999999999}, "-1999999998 -999999999 0 999999999"},
        {{-2000000000, -1000000000, 0, 1000000000}, "-2000000000 -1000000000 0 1000000000"},
        {{-1, 999999999}, "-1 999999999"},
        {{0, 999999999}, "0 999999999"},
        {{0, 1000000000}, "0 1000000000"},
    });
}

TEST(RunPackingBounds, UnusableStepOpensARunOfOne) {
    ExpectPacked<int>({
        {{0, 2000000000, 2000000000, 2000000000, 2000000000}, "0 int-rle:2[2000000000 4] int-rle:2[]"},
        {{1, 2, 3, 4, 2000000000}, "int-rle:2[1 4 1] 2000000000 int-rle:2[]"},
        {{1, 2, 3, 2000000000, 2000000001, 2000000002, 2000000003}, "1 2 3 int-rle:2[2000000000 4 1] int-rle:2[]"},
        {{0, 2000000000, 0, 2000000000}, "0 2000000000 0 2000000000"},
    });
}

TEST(RunPackingBounds, LargestStepsOfUnsignedInt) {
    ExpectPacked<unsigned int>({
        {{0U, 999999998U, 1999999996U, 2999999994U}, "uint-rle:2[0 4 999999998] uint-rle:2[]"},
        {{2999999994U, 1999999996U, 999999998U, 0U}, "uint-rle:2[2999999994 4 -999999998] uint-rle:2[]"},
        {{0U, 999999999U, 1999999998U, 2999999997U}, "0 999999999 1999999998 2999999997"},
        {{0U, 1000000000U, 2000000000U, 3000000000U}, "0 1000000000 2000000000 3000000000"},
    });
}

// Here the halves differ by less than 500,000,000,000,000,000.
TEST(RunPackingBounds, LargestStepsOfSixtyFourBits) {
    ExpectPacked<Int64>({
        {{0, 999999999999999998, 1999999999999999996, 2999999999999999994},
         "int-rle:2[0 4 999999999999999998] int-rle:2[]"},
        {{999999999999999998, 0, -999999999999999998, -1999999999999999996},
         "int-rle:2[999999999999999998 4 -999999999999999998] int-rle:2[]"},
        {{0, 999999999999999999, 1999999999999999998, 2999999999999999997},
         "0 999999999999999999 1999999999999999998 2999999999999999997"},
        {{0, 1000000000000000000, 2000000000000000000, 3000000000000000000},
         "0 1000000000000000000 2000000000000000000 3000000000000000000"},
        {{0, 2000000000, 4000000000, 6000000000}, "int-rle:2[0 4 2000000000] int-rle:2[]"},
    });
}

// The bound of unsigned 64-bit halves lies beyond every step that fits four times into the type.
TEST(RunPackingBounds, LargestStepsOfUnsignedSixtyFourBits) {
    ExpectPacked<UInt64>({
        {{0U, 6148914691236517205U, 12297829382473034410U, 18446744073709551615U},
         "uint-rle:2[0 4 6148914691236517205] uint-rle:2[]"},
        {{18446744073709551615U, 12297829382473034410U, 6148914691236517205U, 0U},
         "uint-rle:2[18446744073709551615 4 -6148914691236517205] uint-rle:2[]"},
        {{0U, 9999999999999999998U}, "0 9999999999999999998"},
        {{18446744073709551614U, 8446744073709551616U, 1U}, "18446744073709551614 8446744073709551616 1"},
        {{0U, 10000000000000000000U, 10000000000000000000U, 10000000000000000000U, 10000000000000000000U},
         "0 uint-rle:2[10000000000000000000 4] uint-rle:2[]"},
    });
}

TYPED_TEST(PackingBounds, ExtremesSideBySideStayPlain) {
    constexpr TypeParam kMin = std::numeric_limits<TypeParam>::min();
    constexpr TypeParam kMax = std::numeric_limits<TypeParam>::max();
    const std::string low = std::to_string(kMin);
    const std::string high = std::to_string(kMax);
    ExpectPacked<TypeParam>({
        {{kMin, kMax}, low + " " + high},
        {{kMax, kMin}, high + " " + low},
        {{kMin, kMax, kMin, kMax, kMin}, low + " " + high + " " + low + " " + high + " " + low},
    });
}

TYPED_TEST(PackingBounds, RunsAtTheExtremes) {
    constexpr TypeParam kMin = std::numeric_limits<TypeParam>::min();
    constexpr TypeParam kMax = std::numeric_limits<TypeParam>::max();
    const std::string marker = Run<TypeParam>("");
    const std::string low = std::to_string(kMin);
    const std::string high = std::to_string(kMax);
    ExpectPacked<TypeParam>({
        {{kMin, kMin, kMin, kMin}, Run<TypeParam>(low + " 4") + " " + marker},
        {{kMax, kMax, kMax, kMax}, Run<TypeParam>(high + " 4") + " " + marker},
        {{kMax, kMax - 1, kMax - 2, kMax - 3}, Run<TypeParam>(high + " 4 -1") + " " + marker},
        {{kMin, kMin + 1, kMin + 2, kMin + 3}, Run<TypeParam>(low + " 4 1") + " " + marker},
        {{kMin, kMin, kMin, kMin, kMax, kMax, kMax, kMax},
         Run<TypeParam>(low + " 4") + " " + Run<TypeParam>(high + " 4") + " " + marker},
    });
}
