#include "dotweave/maskdata_base.h"

#include "matrixrepeat.h"
#include "peek.h"

#include <gtest/gtest.h>

namespace {

SMatrixRepeat SizeOf(int fullHeight, int step)
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

TEST(MaskSize, SearchesAsWorkedByHand)
{
    struct SCase {
        int fullHeight, step;
        SMatrixRepeat size;
    };
    const SCase cases[] = {
        {544, 136, {544, 4}},
        {544, 128, {544, 17}},
        {544, 100, {500, 5}},
        {544, 120, {540, 9}},
        {544, 33, {528, 16}},
        {544, 1088, {544, 1}},
        // no common divisor with any height: as many positions as rows, so the search ends at the least
        // height
        {544, 547, {273, 273}},
        // 15790321 is prime and 273 times it beyond 32 bits: the best stays 2147483647, which are 135 steps
        {544, 15790321, {-1, 135}},
        // Two heights never tie beyond 20 positions in 544 rows. In a taller matrix 4011 = 21 * 191 and 4053
        // = 21 * 193 rows both repeat after 21 steps of 191 * 193, and no height from 4000 up repeats sooner:
        // the larger wins.
        {7998, 191 * 193, {4053, 21}},
    };
    for (const SCase& c : cases)
        EXPECT_EQ(SizeOf(c.fullHeight, c.step), c.size) << c.fullHeight << " rows, step " << c.step;
}

TEST(MaskSize, EverySearchFindsWhatCountingFinds)
{
    for (const int fullHeight : {544, 2, 3, 16, 101, 272, 1000})
        for (int step = 1; step <= (fullHeight == 544 ? 2000 : 150); ++step)
            EXPECT_EQ(SizeOf(fullHeight, step), MaskSize_ByCounting(fullHeight, step))
                << fullHeight << " rows, step " << step;
}

TEST(MaskSize, LinesAreTheFewestWholeBytes)
{
    EXPECT_EQ(MaskLineBytes(544, 1, 1), 68);
    EXPECT_EQ(MaskLineBytes(544, 2, 3), 408);
    for (int width = 1; width <= 40; ++width)
        for (int bits = 1; bits <= 2; ++bits)
            for (int xResPass = 1; xResPass <= 5; ++xResPass) {
                const int bytes = MaskLineBytes(width, bits, xResPass);
                EXPECT_GE(8 * bytes, width * bits * xResPass);
                EXPECT_LT(8 * (bytes - 1), width * bits * xResPass);
            }
}
