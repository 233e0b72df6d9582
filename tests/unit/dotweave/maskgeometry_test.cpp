#include "maskgeometry.h"

#include "maskparams.h"

#include <gtest/gtest.h>

namespace {

using namespace dotweave;

ELayout Layout(int featherMode, int featherNozzleType)
{
    SMaskParam param = MaskParam_Plain();
    param.featherMode = featherMode;
    param.featherNozzleType = featherNozzleType;
    return Layout_Of(param);
}

} // namespace

TEST(MaskGeometry, ProfilesCountInFeatheredModesAlone)
{
    for (const int type : {-1, 0, 1, 2, 3, 4, 5}) {
        EXPECT_EQ(Layout(FeatherMode_None, type), ELayout::None);
        EXPECT_EQ(Layout(2, type), ELayout::UnknownMode);
        EXPECT_EQ(Layout(-1, type), ELayout::UnknownMode);
    }
    EXPECT_EQ(Layout(FeatherMode_Nozzle, FeatherNozzle_Smooth_2), ELayout::Smooth_2);
    EXPECT_EQ(Layout(FeatherMode_Nozzle, FeatherNozzle_Smooth_3), ELayout::Smooth_3);
    EXPECT_EQ(Layout(FeatherMode_Nozzle, FeatherNozzle_Smooth_3_Sine), ELayout::Smooth_3);
    for (const int type : {-1, 0, static_cast<int>(FeatherNozzle_Reserved), 5})
        EXPECT_EQ(Layout(FeatherMode_Nozzle, type), ELayout::UnknownProfile);
}

TEST(MaskGeometry, FeatherRowsAreTheRestOrAWholeStep)
{
    EXPECT_EQ(FeatherRows(544, 85), 34);
    EXPECT_EQ(FeatherRows(544, 136), 136);
    EXPECT_EQ(FeatherRows(544, 600), 544);
    EXPECT_EQ(FeatherRows(1, 1), 1);
}

TEST(MaskGeometry, SineMaskTakesHalfTheFeatherRowsAtMost)
{
    EXPECT_EQ(SineMaskRows(20, 100), 10);
    EXPECT_EQ(SineMaskRows(200, 544), 54);
    EXPECT_EQ(SineMaskRows(1, 544), 0);
    EXPECT_EQ(SineMaskRows(20, 9), 0);
}

TEST(MaskGeometry, HardEdgesAddTheLastOffsetsToTheLead)
{
    SMaskGeometry geometry;
    geometry.param = MaskParam_Plain();
    geometry.param.xResPass = 4;
    geometry.param.yResPass = 2;
    geometry.lead = 100;
    geometry.step = 8;
    EXPECT_EQ(LeadBlank_IncludeRes(geometry), 200 + 8 + 3 * 2);
    geometry.param.featherMode = FeatherMode_Nozzle;
    EXPECT_EQ(LeadBlank_IncludeRes(geometry), 200);
}

TEST(MaskGeometry, NoStepHasNoPositions)
{
    for (const int step : {0, -1, -544}) {
        SMaskGeometry geometry;
        geometry.matrixHeight = 544;
        geometry.step = step;
        Geometry_MaskSize(geometry);
        EXPECT_EQ(geometry.positionCount, 0) << step;
    }
}
