#include "maskregion.h"

#include <gtest/gtest.h>

using namespace dotweave;

namespace {

// Also usable where the compiler must know the value.
static_assert(MaskRegion_Row(2, 10, 1, 4) == 22);
static_assert(MaskRegion_Column(1, 544, 2) == 272);

TEST(MaskRegion, RowsAreStepsAndFractionsRoundedDown)
{
    EXPECT_EQ(MaskRegion_Row(3, 136, 0, 1), 408);
    EXPECT_EQ(MaskRegion_Row(5, 8, 1, 2), 44);
    EXPECT_EQ(MaskRegion_Row(7, 10, 1, 3), 73); // 10 / 3
    EXPECT_EQ(MaskRegion_Row(7, 10, 2, 3), 76); // 20 / 3, not 2 * 3.5
    EXPECT_EQ(MaskRegion_Row(0, 3, 3, 4), 2);   // 9 / 4
}

TEST(MaskRegion, ColumnsAreSharesOfThePlaneRoundedDown)
{
    EXPECT_EQ(MaskRegion_Column(0, 544, 3), 0);
    EXPECT_EQ(MaskRegion_Column(1, 544, 3), 181); // 544 / 3 = 181.3
    EXPECT_EQ(MaskRegion_Column(2, 544, 3), 362); // 1088 / 3 = 362.7
    EXPECT_EQ(MaskRegion_Column(4, 544, 5), 435); // 2176 / 5 = 435.2, not 4 * 108
}

} // namespace

TEST(MaskRegion, PositionsFollowOneAnotherInTheirColour)
{
    EXPECT_EQ(MaskRegion_FirstByte(0, 4000, 0, 1000), 0);
    EXPECT_EQ(MaskRegion_FirstByte(0, 4000, 3, 1000), 3000);
    EXPECT_EQ(MaskRegion_FirstByte(2, 4000, 1, 1000), 9000);
    EXPECT_EQ(MaskRegion_FirstByte(-1, 4000, 1, 1000), -3000); // deliberate: no check
}
