// The print law for every mode without the sine edge: whole sheets are printed, and every pixel is counted.

#include "dotweave/maskdata_base.h"

#include <map>
#include <ostream>
#include <vector>

#include <gtest/gtest.h>

#include "maskparams.h"
#include "peek.h"
#include "printlaw.h"

namespace {

/// Prints every colour in every resolution pass and checks each sheet against the law.
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

void ExpectLaw(const SMaskParam& param, const CLaw& law)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(param)) << param;
    ExpectLaw(mask, law);
}

SMaskParam MaskParam_FeatherNone(int nozzleCount, int basePass, int colorTimes = 1)
{
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = nozzleCount;
    param.basePass = basePass;
    param.colorTimes = colorTimes;
    return param;
}

SMaskParam MaskParam_SmoothTwo(int nozzleCount, int basePass, float featherPercent, int colorTimes = 1)
{
    SMaskParam param = MaskParam_Feathered(FeatherNozzle_Smooth_2, nozzleCount, basePass, featherPercent);
    param.colorTimes = colorTimes;
    return param;
}

SMaskParam InPasses(SMaskParam param, int xResPass, int yResPass)
{
    param.xResPass = xResPass;
    param.yResPass = yResPass;
    return param;
}

TEST(PrintLaw, HardEdgesPrintOnce)
{
    // A sheet row lies under one row of each of the basePass zones, and the zones share the scale.
    for (const SMaskParam& param :
         {MaskParam_FeatherNone(68, 2), MaskParam_FeatherNone(120, 4), MaskParam_FeatherNone(99, 3),
          MaskParam_FeatherNone(33, 1), MaskParam_FeatherNone(544, 4), MaskParam_FeatherNone(85, 5)})
        ExpectLaw(param, Law_Times(1));
}

TEST(PrintLaw, HardEdgesPrintColorTimes)
{
    // Each of the colorTimes groups of zones shares the whole scale, so each prints every pixel once.
    for (int basePass = 2; basePass <= 5; ++basePass) {
        for (int colorTimes = 2; colorTimes <= basePass; ++colorTimes)
            ExpectLaw(MaskParam_FeatherNone(34 * basePass, basePass, colorTimes), Law_Times(colorTimes));
    }
}

TEST(PrintLaw, SmoothTwoPrintsOnce)
{
    // Under a pass zone the basePass zones share the scale. Under a feather zone the basePass + 1 ranges of
    // rows at the same offset meet bound to bound from 0 to the top.
    for (const SMaskParam& param : {MaskParam_SmoothTwo(120, 4, 10.0F), MaskParam_SmoothTwo(120, 4, 50.0F),
                                    MaskParam_SmoothTwo(120, 4, 100.0F), MaskParam_SmoothTwo(100, 1, 50.0F)})
        ExpectLaw(param, Law_Times(1));
}

TEST(PrintLaw, HardEdgesSwitchedToSmoothTwoPrintOnce)
{
    for (const SMaskParam& param :
         {MaskParam_FeatherNone(100, 3), MaskParam_FeatherNone(65, 6), MaskParam_FeatherNone(127, 4)}) {
        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(param)) << param;
        ASSERT_EQ(mask.MaskParam_Current().featherMode, FeatherMode_Nozzle);
        ExpectLaw(mask, Law_Times(1));
    }
}

/// A smooth-2 mode whose colour prints several times, and how the rows of one step divide.
struct SStripes {
    const char* name;
    SMaskParam param;
    int onceRows;  ///< rows of a step under a feather zone
    int timesRows; ///< rows of a step under a pass zone
};

std::ostream& operator<<(std::ostream& stream, const SStripes& stripes)
{
    return stream << stripes.name;
}

class PrintLawStripes : public testing::TestWithParam<SStripes> {};

TEST_P(PrintLawStripes, RowsOfAStep)
{
    const SStripes& stripes = GetParam();
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(stripes.param));
    const int colorTimes = stripes.param.colorTimes;
    ExpectLaw(mask, Law_Zones(stripes.onceRows, colorTimes)); // a step begins with its feather zone
    std::map<int, int> rowsByPrints;
    if (stripes.timesRows > 0)
        rowsByPrints[colorTimes] = stripes.timesRows;
    rowsByPrints[1] += stripes.onceRows;
    CSheet sheet(mask, 0, 0, 0);
    sheet.Print();
    EXPECT_EQ(sheet.RowsOfAStepByPrints(), rowsByPrints);
}

// The table of docs/cut-tables.md, "Stripes". By hand, 544 rows, 4 passes, 50 percent: 204 rows for
// feathering, a fifth of them is 40, step (544 - 40) / 4 = 126, zone 544 - 4 * 126 = 40. In 2 x 2 resolution
// passes the step is 124, the zone 48. 120 rows: 45, 9, step 27, zone 12. Hard edges: step 544 / 3 = 181, 1
// row over; 544 / 6 = 90, 4 over. 100 rows, 10 passes, 2 x 4 resolution passes: step 10 rounded to 8, 20 rows
// over, at most a step of them.
INSTANTIATE_TEST_SUITE_P(
    Modes, PrintLawStripes,
    testing::Values(SStripes{"HalfTwice", MaskParam_SmoothTwo(544, 4, 50.0F, 2), 40, 86},
                    SStripes{"HalfTwice2x2", InPasses(MaskParam_SmoothTwo(544, 4, 50.0F, 2), 2, 2), 48, 76},
                    SStripes{"HalfTwiceShort", MaskParam_SmoothTwo(120, 4, 50.0F, 2), 12, 15},
                    SStripes{"HalfThriceShort", MaskParam_SmoothTwo(120, 4, 50.0F, 3), 12, 15},
                    SStripes{"HalfFourTimesShort", MaskParam_SmoothTwo(120, 4, 50.0F, 4), 12, 15},
                    SStripes{"SwitchThreePasses", MaskParam_FeatherNone(544, 3, 2), 1, 180},
                    SStripes{"SwitchSixPasses", MaskParam_FeatherNone(544, 6, 3), 4, 86},
                    SStripes{"SwitchNoPassZone", InPasses(MaskParam_FeatherNone(100, 10, 5), 2, 4), 8, 0}),
    [](const testing::TestParamInfo<SStripes>& test) { return test.param.name; });

TEST(PrintLaw, SmoothThreePrintsUpToItsLevelOnce)
{
    // The upper bound of a row is the lower bound of the row one step before it. The topmost upper bound is
    // the level.
    for (const int level : {100, 99, 50, 1, 0}) {
        for (SMaskParam param : {MaskParam_Feathered(FeatherNozzle_Smooth_3, 120, 4, 50.0F),
                                 MaskParam_Feathered(FeatherNozzle_Smooth_3, 100, 3, 50.0F),
                                 MaskParam_Feathered(FeatherNozzle_Smooth_3, 47, 1, 50.0F)}) {
            param.featherLevelPercent = level;
            ExpectLaw(param, Law_Level(level));
        }
    }
}

TEST(PrintLaw, SmoothThreeOfWholeStepsPrintsOnce)
{
    ExpectLaw(MaskParam_Feathered(FeatherNozzle_Smooth_3, 120, 4, 0.0F), Law_Times(1));
}

TEST(PrintLaw, EveryResolutionPassOfAColourPrintsOnce)
{
    struct SResolution {
        int xRes;
        int yRes;
        int bits;
    };
    for (const SResolution& resolution : {SResolution{2, 1, 1}, SResolution{1, 2, 2}, SResolution{3, 2, 1},
                                          SResolution{2, 3, 2}, SResolution{1, 4, 1}}) {
        std::vector<SMaskParam> modes = {
            MaskParam_FeatherNone(144, 3), MaskParam_FeatherNone(150, 3), // switched to smooth-2
            MaskParam_SmoothTwo(145, 3, 60.0F), MaskParam_Feathered(FeatherNozzle_Smooth_3, 145, 3, 60.0F)};
        for (SMaskParam param : modes) {
            param = InPasses(param, resolution.xRes, resolution.yRes);
            param.bitsPerPixel = resolution.bits;
            param.colorCount = 2;
            ExpectLaw(param, Law_Times(1));
        }
    }
}

} // namespace
