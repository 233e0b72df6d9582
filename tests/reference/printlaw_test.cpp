// The law of every mask: lay the bands on a sheet as the press does, each one step further down than the one
// before, and count how often every pixel is printed.

#include "dotweave/maskdata_base.h"

#include <cstddef>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "maskdots.h"
#include "maskparams.h"
#include "peek.h"
#include "plainmask.h"
#include "printlaw.h"

namespace {

constexpr int WIDTH = 544;

/// Prints every colour in every resolution pass and holds each sheet against the law.
void ExpectLaw(CMaskData_Base& mask, const CLaw& law)
{
    const SMaskParam& param = mask.MaskParam_Current();
    for (int color = 0; color < param.colorCount; ++color) {
        for (int r = 0; r < param.yResPass; ++r) {
            for (int k = 0; k < param.xResPass; ++k) {
                CSheet sheet(mask, color, r, k);
                sheet.Print();
                EXPECT_EQ(sheet.WrongPixels(law), 0)
                    << param << ", colour " << color << ", passes " << r << " and " << k;
            }
        }
    }
}

SMaskParam MaskParam_FeatherNone(int nozzleCount, int basePass)
{
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = nozzleCount;
    param.basePass = basePass;
    return param;
}

TEST(PrintLaw, HardEdgesPrintEveryPixelOnce)
{
    // A sheet row lies under one row of each of the basePass zones, and the zones share the scale.
    for (const auto& [nozzleCount, basePass] : {std::pair{68, 2}, std::pair{120, 4}, std::pair{99, 3},
                                                std::pair{33, 1}, std::pair{544, 4}, std::pair{85, 5}}) {
        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(MaskParam_FeatherNone(nozzleCount, basePass)));
        ExpectLaw(mask, Law_Times(1));
    }
}

TEST(PrintLaw, HardEdgesPrintEveryPixelAsOftenAsAskedFor)
{
    // Each of the colorTimes groups of zones shares the whole scale, so each prints every pixel once.
    for (int basePass = 2; basePass <= 5; ++basePass) {
        for (int colorTimes = 2; colorTimes <= basePass; ++colorTimes) {
            SMaskParam param = MaskParam_FeatherNone(34 * basePass, basePass);
            param.colorTimes = colorTimes;
            CMaskData_Base mask;
            ASSERT_TRUE(mask.Create(param));
            ExpectLaw(mask, Law_Times(colorTimes));
        }
    }
}

TEST(PrintLaw, SmoothTwoPrintsEveryPixelOnce)
{
    // Under a pass zone the basePass zones share the scale; under a feather zone the basePass + 1 ranges of
    // rows at the same offset meet bound to bound from 0 to the top.
    for (const float percent : {10.0F, 50.0F, 100.0F}) {
        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(MaskParam_Feathered(FeatherNozzle_Smooth_2, 120, 4, percent)));
        ExpectLaw(mask, Law_Times(1));
    }
    CMaskData_Base onePass;
    ASSERT_TRUE(onePass.Create(MaskParam_Feathered(FeatherNozzle_Smooth_2, 100, 1, 50.0F)));
    ExpectLaw(onePass, Law_Times(1));
}

TEST(PrintLaw, HardEdgesThatTurnIntoSmoothTwoPrintEveryPixelOnceToo)
{
    for (const auto& [nozzleCount, basePass] : {std::pair{100, 3}, std::pair{65, 6}, std::pair{127, 4}}) {
        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(MaskParam_FeatherNone(nozzleCount, basePass)));
        ASSERT_EQ(mask.MaskParam_Current().featherMode, FeatherMode_Nozzle);
        ExpectLaw(mask, Law_Times(1));
    }
}

TEST(PrintLaw, SmoothTwoPrintsPassRowsAsOftenAsAskedForAndFeatherRowsOnce)
{
    // 120 rows, 4 passes, 50 percent: 45 rows of feathering, step (120 - 45 / 5) / 4 = 27, feather zones of
    // 120 - 4 * 27 = 12 rows. A step begins with its feather zone.
    constexpr int FEATHER_ROWS = 12;
    for (int colorTimes = 2; colorTimes <= 4; ++colorTimes) {
        SMaskParam param = MaskParam_Feathered(FeatherNozzle_Smooth_2, 120, 4, 50.0F);
        param.colorTimes = colorTimes;
        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(param));
        ASSERT_EQ(SMaskData_Base_Peek{mask}.StepHeight_NoneRes(), 27);
        ExpectLaw(mask, Law_Zones(FEATHER_ROWS, colorTimes));
    }
}

TEST(PrintLaw, SmoothThreePrintsEveryPixelUpToItsLevelOnce)
{
    // The upper bound of a row is the lower bound of the row one step before it; the first of them is the
    // level.
    for (const int level : {100, 99, 50, 1, 0}) {
        for (const auto& [nozzleCount, basePass] : {std::pair{120, 4}, std::pair{100, 3}, std::pair{47, 1}}) {
            SMaskParam param = MaskParam_Feathered(FeatherNozzle_Smooth_3, nozzleCount, basePass, 50.0F);
            param.featherLevelPercent = level;
            CMaskData_Base mask;
            ASSERT_TRUE(mask.Create(param));
            ExpectLaw(mask, Law_Level(level));
        }
    }
}

TEST(PrintLaw, SmoothThreeWithoutFeatherRowsPrintsEveryPixelOnce)
{
    CMaskData_Base mask; // 120 rows in 4 whole steps
    ASSERT_TRUE(mask.Create(MaskParam_Feathered(FeatherNozzle_Smooth_3, 120, 4, 0.0F)));
    ExpectLaw(mask, Law_Times(1));
}

TEST(PrintLaw, HoldsInEveryResolutionPassOfEveryColour)
{
    struct SResolution {
        int xRes;
        int yRes;
        int bits;
    };
    for (const SResolution& resolution : {SResolution{2, 1, 1}, SResolution{1, 2, 2}, SResolution{3, 2, 1},
                                          SResolution{2, 3, 2}, SResolution{1, 4, 1}}) {
        std::vector<SMaskParam> modes = {MaskParam_FeatherNone(144, 3),
                                         MaskParam_FeatherNone(150, 3), // turns into smooth-2
                                         MaskParam_Feathered(FeatherNozzle_Smooth_2, 145, 3, 60.0F),
                                         MaskParam_Feathered(FeatherNozzle_Smooth_3, 145, 3, 60.0F)};
        for (SMaskParam& param : modes) {
            param.xResPass = resolution.xRes;
            param.yResPass = resolution.yRes;
            param.bitsPerPixel = resolution.bits;
            param.colorCount = 2;
            CMaskData_Base mask;
            ASSERT_TRUE(mask.Create(param)) << param;
            ExpectLaw(mask, Law_Times(1));
        }
    }
}

TEST(PrintLaw, TheSineKeepsEveryDotButThoseThatFindTheirPlaceTaken)
{
    // Two masks of one mode, with and without the sine. A dot of the bottom edge either stays or goes to the
    // same place of the top edge, k steps further up, where a dot may stand already.
    SMaskParam param =
        MaskParam_Feathered(FeatherNozzle_Smooth_3, 132, 1, 12.5F); // step 120: 12 feather rows
    param.yResPass = 2;
    param.xResPass = 2;
    CMaskData_Base plain;
    ASSERT_TRUE(plain.Create(param));
    ASSERT_EQ(SMaskData_Base_Peek{plain}.StepHeight_NoneRes(), 120);
    param.featherNozzleType = FeatherNozzle_Smooth_3_Sine;
    CMaskData_Base sine;
    ASSERT_TRUE(sine.Create(param));
    const int positionCount = SMaskData_Base_Peek{sine}.PositionCount();
    constexpr int HEIGHT = 132;
    constexpr int SINE_ROWS = 6; // half of 12
    constexpr int TOP = 6;       // the lower half of the first 12 rows
    constexpr int BOTTOM = 126;  // and of the last 12
    int movedCount = 0;
    for (int position = 0; position < positionCount; ++position) {
        for (int pass = 0; pass < 4; ++pass) {
            const CPlainDots before = Dots(plain, 0, position, pass / 2, pass % 2);
            const CPlainDots after = Dots(sine, 0, position, pass / 2, pass % 2);
            int dotsBefore = 0;
            int dotsAfter = 0;
            int taken = 0;
            int wrong = 0;
            for (int y = 0; y < HEIGHT; ++y) {
                for (int x = 0; x < WIDTH; ++x) {
                    const auto index = static_cast<std::size_t>(y) * WIDTH + static_cast<std::size_t>(x);
                    const bool isMoving = (y >= TOP && y < TOP + SINE_ROWS) || y >= BOTTOM;
                    wrong += isMoving || after[index] == before[index] ? 0 : 1; // all other rows stay
                    if (y < BOTTOM)
                        continue;
                    const std::size_t above = index - static_cast<std::size_t>(BOTTOM - TOP) * WIDTH;
                    dotsBefore += before[index] + before[above];
                    dotsAfter += after[index] + after[above];
                    const bool isLeaving = before[index] == 1 && after[index] == 0;
                    wrong += isLeaving && Plain_IsUnderSine(y - BOTTOM, x, SINE_ROWS, WIDTH) ? 1 : 0;
                    movedCount += isLeaving ? 1 : 0;
                    taken += isLeaving && before[above] == 1 ? 1 : 0;
                }
            }
            EXPECT_EQ(wrong, 0) << position << ", " << pass;
            EXPECT_EQ(dotsAfter, dotsBefore - taken) << position << ", " << pass;
        }
    }
    EXPECT_GT(movedCount, 0);
}

} // namespace
