#include "dotweave/maskdata_base.h"

#include "masksize.h"
#include "peek.h"

#include <gtest/gtest.h>

namespace {

SMatrixRepeat InitMaskSize(int fullHeight, int step)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    peek.BaseMaskHeight() = fullHeight;
    peek.BaseMaskWidth() = 544;
    peek.StepHeight_NoneRes() = step;
    EXPECT_TRUE(peek.InitMaskSize());
    return {peek.BaseMaskHeight(), peek.PositionCount()};
}

int MaskLineBytes(int width, int bitsPerPixel, int xResPass)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    peek.BaseMaskHeight() = 544;
    peek.BaseMaskWidth() = width;
    peek.StepHeight_NoneRes() = 136;
    peek.Current().bitsPerPixel = bitsPerPixel;
    peek.Current().xResPass = xResPass;
    EXPECT_TRUE(peek.InitMaskSize());
    return mask.MaskLineBytes_OneColor();
}

} // namespace

TEST(MaskDataBaseGeometrySize, MatrixHeightIsGivenUpUntilPositionsRepeat)
{
    EXPECT_EQ(InitMaskSize(544, 136), (SMatrixRepeat{544, 4}));
    EXPECT_EQ(InitMaskSize(544, 128), (SMatrixRepeat{544, 17}));
    EXPECT_EQ(InitMaskSize(544, 100), (SMatrixRepeat{500, 5}));
    EXPECT_EQ(InitMaskSize(544, 120), (SMatrixRepeat{540, 9}));
    EXPECT_EQ(InitMaskSize(544, 33), (SMatrixRepeat{528, 16}));
    EXPECT_EQ(InitMaskSize(544, 544), (SMatrixRepeat{544, 1}));
    EXPECT_EQ(InitMaskSize(544, 1088), (SMatrixRepeat{544, 1}));
}

TEST(MaskDataBaseGeometrySize, WithoutAGoodHeightTheFewestPositionsWin)
{
    // A step without a divisor in common with any height repeats after as many positions as the height has
    // rows; the search ends at 273.
    EXPECT_EQ(InitMaskSize(544, 1), (SMatrixRepeat{273, 273}));
    EXPECT_EQ(InitMaskSize(544, 547), (SMatrixRepeat{273, 273}));
    EXPECT_EQ(InitMaskSize(544, 1009), (SMatrixRepeat{273, 273}));
    // Step 2 halves even heights: 274 rows repeat after 137 positions.
    EXPECT_EQ(InitMaskSize(544, 2), (SMatrixRepeat{274, 137}));
}

TEST(MaskDataBaseGeometrySize, TheLargestOfEquallyGoodHeightsWins)
{
    // 273 is 21 steps of 13, the least of all: heights within 20 steps would have to be 260 rows or less.
    EXPECT_EQ(InitMaskSize(544, 13), (SMatrixRepeat{273, 21}));
    // Two heights of 273 to 544 never tie beyond 20 positions. In a taller matrix 4011 = 21 * 191 and
    // 4053 = 21 * 193 rows both repeat after 21 steps of 191 * 193, and no height from 4000 up repeats
    // sooner.
    EXPECT_EQ(Steps_Until_Repeat(4011, 191 * 193), 21);
    EXPECT_EQ(Steps_Until_Repeat(4053, 191 * 193), 21);
    EXPECT_EQ(InitMaskSize(7998, 191 * 193), (SMatrixRepeat{4053, 21}));
}

TEST(MaskDataBaseGeometrySize, EveryStepFindsTheHeightThatCountingFinds)
{
    for (int step = 1; step <= 2000; ++step)
        EXPECT_EQ(InitMaskSize(544, step), MaskSize_ByCounting(544, step)) << "step " << step;
}

TEST(MaskDataBaseGeometrySize, TheSearchStartsFromTheHeightItIsGiven)
{
    for (const int fullHeight : {2, 3, 16, 101, 272, 1000}) {
        for (int step = 1; step <= 150; ++step)
            EXPECT_EQ(InitMaskSize(fullHeight, step), MaskSize_ByCounting(fullHeight, step))
                << "height " << fullHeight << ", step " << step;
    }
}

TEST(MaskDataBaseGeometrySize, ARepeatBeyondThirtyTwoBitsIsNoRepeat)
{
    // 15790321 is prime: even 273 rows repeat only after 4310757633 paper rows. The search then still stands at
    // 2147483647 rows, which are 135 steps and 11790312 rows.
    EXPECT_EQ(InitMaskSize(544, 15790321), (SMatrixRepeat{-1, 135}));
}

TEST(MaskDataBaseGeometrySize, MaskLinesAreRoundedUpToWholeBytes)
{
    EXPECT_EQ(MaskLineBytes(544, 1, 1), 68);
    EXPECT_EQ(MaskLineBytes(544, 2, 1), 136);
    EXPECT_EQ(MaskLineBytes(544, 2, 3), 408);
    EXPECT_EQ(MaskLineBytes(1, 1, 1), 1);
    EXPECT_EQ(MaskLineBytes(8, 1, 1), 1);
    EXPECT_EQ(MaskLineBytes(9, 1, 1), 2);
    EXPECT_EQ(MaskLineBytes(3, 2, 3), 3); // 18 bits
    EXPECT_EQ(MaskLineBytes(5, 1, 5), 4); // 25 bits
    EXPECT_EQ(MaskLineBytes(4, 2, 4), 4); // 32 bits
}
