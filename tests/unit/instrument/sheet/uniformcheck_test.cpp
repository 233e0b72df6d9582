#include "sheet/uniformcheck.h"

#include "maskparams.h"
#include "peek.h"
#include "printlaw.h"
#include "view/maskview.h"

#include <gtest/gtest.h>

using namespace dotweave;

namespace {

SUniformCheck Sheet_Check(CMaskData_Base& mask)
{
    const CMaskLaw law(mask);
    return Uniform_Check(mask, law, 0, law.Layout().SteadyLine_First(),
                         static_cast<int>(law.Layout().CycleLines()));
}

SUniformCheck Sheet_Check(const SMaskParam& param)
{
    CMaskData_Base mask;
    EXPECT_TRUE(mask.Create(param)) << param;
    return Sheet_Check(mask);
}

double PixelShare(const SUniformCheck& check, EUnevenCause cause)
{
    return static_cast<double>(check.Cause(cause).pixelCount) / static_cast<double>(check.all.pixelCount);
}

SMaskParam HardEdges(int basePass, int featherNozzleType)
{
    SMaskParam param = MaskParam_Plain();
    param.basePass = basePass;
    param.featherNozzleType = featherNozzleType;
    return param;
}

SMaskParam Smooth3(int colorTimes, int featherLevelPercent)
{
    SMaskParam param = MaskParam_Feathered(FeatherNozzle_Smooth_3, 544, 4, 50.0F);
    param.colorTimes = colorTimes;
    param.featherLevelPercent = featherLevelPercent;
    return param;
}

} // namespace

TEST(UniformCheck, OfHardEdgesMissesThresholdZeroOnly)
{
    // One sheet of 544 lines shows each cell of the matrix once, and a matrix has five of level 0 at most.
    const SUniformCheck check = Sheet_Check(HardEdges(4, FeatherNozzle_Smooth_2));
    EXPECT_TRUE(check.IsUniform());
    EXPECT_EQ(check.all.pixelCount, 544 * 544);
    EXPECT_EQ(check.all.lineCount, 544);
    int zeros = 0;
    for (int cell = 0; cell < 544 * 544; ++cell)
        zeros += CRawMaskData::RawData(0)[cell] == 0 ? 1 : 0;
    EXPECT_EQ(check.uneven.pixelCount, zeros);
    EXPECT_EQ(check.Cause(EUnevenCause::ThresholdZero).pixelCount, zeros);
}

TEST(UniformCheck, NamesZonesThatPrintOnce)
{
    // 40 rows of every step of 126 are a feather zone: docs/cut-tables.md, "Stripes".
    SMaskParam param = MaskParam_Feathered(FeatherNozzle_Smooth_2, 544, 4, 50.0F);
    param.colorTimes = 2;
    const SUniformCheck check = Sheet_Check(param);
    EXPECT_FALSE(check.IsUniform());
    EXPECT_EQ(check.Cause(EUnevenCause::FeatherZone).lineCount * 126, check.all.lineCount * 40);
    EXPECT_NEAR(PixelShare(check, EUnevenCause::FeatherZone), 40.0 / 126.0, 1e-4);
    EXPECT_EQ(check.Cause(EUnevenCause::NotAsBuilt).pixelCount, 0);
}

TEST(UniformCheck, NamesTheFeatherLevel)
{
    const SUniformCheck check = Sheet_Check(Smooth3(1, 75)); // a quarter of the scale never prints
    EXPECT_FALSE(check.IsUniform());
    EXPECT_NEAR(PixelShare(check, EUnevenCause::FeatherLevel), 0.25, 1e-3);
    EXPECT_EQ(check.Cause(EUnevenCause::FeatherLevel).pixelCount +
                  check.Cause(EUnevenCause::ThresholdZero).pixelCount,
              check.uneven.pixelCount);
}

TEST(UniformCheck, NamesTheSineEdge)
{
    // docs/cut-tables.md: 3.58 % of the pixels are never printed, 2.40 % twice, all in 54 of 136 rows.
    const SUniformCheck check = Sheet_Check(HardEdges(4, FeatherNozzle_Smooth_3_Sine));
    EXPECT_NEAR(PixelShare(check, EUnevenCause::SineEdge), 0.0358 + 0.0240, 1e-4);
    EXPECT_LE(check.Cause(EUnevenCause::SineEdge).lineCount * 136, check.all.lineCount * 54);
    EXPECT_EQ(check.Cause(EUnevenCause::NotAsBuilt).pixelCount, 0);
}

TEST(UniformCheck, FindsAFlippedBit)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(HardEdges(4, FeatherNozzle_Smooth_2)));
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): the bytes belong to the object
    const_cast<std::uint8_t*>(CMaskView(mask).Lines(0, 1).bytes)[68 * 200 + 30] ^= 4U;
    const SUniformCheck check = Sheet_Check(mask);
    EXPECT_EQ(check.Cause(EUnevenCause::NotAsBuilt).pixelCount, 1);
    EXPECT_EQ(check.Cause(EUnevenCause::NotAsBuilt).lineCount, 1);
    EXPECT_FALSE(check.IsUniform());
}

TEST(UniformCheck, AddsUpFromParts)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(Smooth3(2, 80)));
    const CMaskLaw law(mask);
    const auto lines = static_cast<int>(law.Layout().CycleLines());
    const std::int64_t first = law.Layout().SteadyLine_First();
    SUniformCheck sum = Uniform_Check(mask, law, 0, first, 100);
    sum.Add(Uniform_Check(mask, law, 0, first + 100, lines - 100));
    const SUniformCheck whole = Sheet_Check(mask);
    EXPECT_EQ(sum.all.pixelCount, whole.all.pixelCount);
    EXPECT_EQ(sum.uneven.lineCount, whole.uneven.lineCount);
    for (std::size_t cause = 0; cause < UNEVEN_CAUSE_COUNT; ++cause)
        EXPECT_EQ(sum.causes[cause].pixelCount, whole.causes[cause].pixelCount);
}

TEST(UniformCheckReference, CountsWhatTheSlowSheetCounts)
{
    SMaskParam stripes = MaskParam_Feathered(FeatherNozzle_Smooth_2, 120, 4, 50.0F);
    stripes.colorTimes = 3;
    for (const SMaskParam& param :
         {Smooth3(2, 100), Smooth3(3, 100), Smooth3(1, 60), Smooth3(2, 60), stripes,
          HardEdges(2, FeatherNozzle_Smooth_3_Sine), HardEdges(8, FeatherNozzle_Smooth_3_Sine),
          MaskParam_Feathered(FeatherNozzle_Smooth_3_Sine, 100, 3, 50.0F)}) {
        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(param)) << param;
        CSheet slow(mask, 0, 0, 0);
        slow.Print();
        const SUniformCheck check = Sheet_Check(mask);
        EXPECT_EQ(check.all.pixelCount, slow.PixelCount());
        EXPECT_EQ(check.uneven.pixelCount - check.Cause(EUnevenCause::ThresholdZero).pixelCount,
                  slow.WrongPixels(Law_Times(param.colorTimes)))
            << param;
    }
}
