#include "dotweave/maskparam_refusal.h"

#include "maskparams.h"
#include "rawmaskdata_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace {

using namespace dotweave;

using Texts = std::vector<std::string>;

Texts Warnings(SMaskParam param, const std::function<void(SMaskParam&)>& change)
{
    change(param);
    return MaskParam_Warnings(param);
}

Texts Feathered(int type, const std::function<void(SMaskParam&)>& change)
{
    return Warnings(MaskParam_Feathered(type, 544, 4, 50.0F), change);
}

} // namespace

TEST(MaskParamWarnings, MostModesHaveNone)
{
    EXPECT_EQ(MaskParam_Warnings(MaskParam_Plain()), Texts());
    const auto asTheyAre = [](SMaskParam&) {};
    EXPECT_EQ(Feathered(FeatherNozzle_Smooth_2, asTheyAre), Texts());
    EXPECT_EQ(Feathered(FeatherNozzle_Smooth_3, asTheyAre), Texts());
    EXPECT_EQ(Feathered(FeatherNozzle_Smooth_3, [](SMaskParam& p) { p.colorTimes = 2, p.colorCount = 8; }),
              Texts());
    // A mode that cannot be built has a reason, and no warnings beside it.
    EXPECT_EQ(Feathered(FeatherNozzle_Smooth_3_Sine, [](SMaskParam& p) { p.colorTimes = 0; }), Texts());
}

TEST(MaskParamWarnings, HardEdgesThatBecomeFeathered)
{
    EXPECT_EQ(
        Warnings(MaskParam_Plain(), [](SMaskParam& p) { p.basePass = 3; }),
        Texts({"featherMode 0 becomes smooth-2: nozzleCount 544 leaves 1 row after 3 steps of 181 rows, so "
               "feather zones of 1 row blend the edges"}));
    EXPECT_EQ(
        Warnings(MaskParam_Plain(),
                 [](SMaskParam& p) { p.nozzleCount = 100, p.basePass = 10, p.yResPass = 8; }),
        Texts({"featherMode 0 becomes smooth-2: nozzleCount 100 leaves 20 rows after 10 steps of 8 rows, so "
               "feather zones of 8 rows blend the edges; the head has 12 rows unused"}));
    EXPECT_EQ(Warnings(MaskParam_Plain(), [](SMaskParam& p) { p.nozzleCount = 5, p.yResPass = 4; }),
              Texts({"featherMode 0 becomes smooth-2: nozzleCount 5 leaves 1 row after 1 step of 4 rows, so "
                     "feather zones of 1 row blend the edges"}));
}

TEST(MaskParamWarnings, PlanesThatShareThresholds)
{
    const auto colours = [](int count) {
        return Warnings(MaskParam_Plain(), [count](SMaskParam& p) { p.colorCount = count; });
    };
    EXPECT_EQ(colours(8), Texts());
    EXPECT_EQ(colours(9),
              Texts({"colorCount 9: colour planes share thresholds, so their dots coincide: plane 8 as 4"}));
    EXPECT_EQ(colours(17).at(0),
              "colorCount 17: colour planes share thresholds, so their dots coincide: plane 8 as 4, "
              "9 as 5, 10 as 6, 11 as 7, 12 as 4, 13 as 5, 14 as 6, 15 as 7, 16 as 0");
    EXPECT_TRUE(colours(18).at(0).ends_with(", 16 as 0 and so on"));
}

TEST(MaskParamWarnings, PlanesShareWhereTheTableRepeats)
{
    for (int plane = 0; plane < 40; ++plane) {
        int first = 0;
        while (!std::equal(Matrix_OfPlane(first), Matrix_OfPlane(first) + THRESHOLD_MATRIX_CELLS,
                           Matrix_OfPlane(plane)))
            ++first;
        EXPECT_EQ(Plane_WithSameMatrix(plane), first) << plane;
    }
}

TEST(MaskParamWarnings, LevelThatPrintsNothing)
{
    const Texts blank = {"featherLevelPercent 0 builds a blank mask: no row prints anything"};
    for (const int type : {FeatherNozzle_Smooth_3, FeatherNozzle_Smooth_3_Sine})
        EXPECT_EQ(Feathered(type, [](SMaskParam& p) { p.featherLevelPercent = 0, p.colorTimes = 2; }), blank);
    // Smooth-2 never reads the level.
    EXPECT_EQ(Feathered(FeatherNozzle_Smooth_2, [](SMaskParam& p) { p.featherLevelPercent = 0; }), Texts());
}

TEST(MaskParamWarnings, FeatherZonesThatPrintOnce)
{
    EXPECT_EQ(Feathered(FeatherNozzle_Smooth_2, [](SMaskParam& p) { p.colorTimes = 3; }),
              Texts({"colorTimes 3 with smooth-2 zones: of every step of 126 rows, 40 print once and 86 "
                     "print 3 times"}));
    const Texts switched =
        Warnings(MaskParam_Plain(), [](SMaskParam& p) { p.basePass = 3, p.colorTimes = 2; });
    ASSERT_EQ(switched.size(), 2U);
    EXPECT_EQ(
        switched[1],
        "colorTimes 2 with smooth-2 zones: of every step of 181 rows, 1 prints once and 180 print 2 times");
}

TEST(MaskParamWarnings, SineEdgeThatLosesPixels)
{
    const auto hard = [](int nozzleCount, int basePass) {
        return Warnings(MaskParam_Plain(), [&](SMaskParam& p) {
            p.nozzleCount = nozzleCount, p.basePass = basePass;
            p.featherNozzleType = FeatherNozzle_Smooth_3_Sine;
        });
    };
    // The modes of the table in docs/cut-tables.md. A tenth of 544 columns are 54 rows.
    EXPECT_EQ(
        hard(544, 1),
        Texts{"featherNozzleType 3 moves dots of the last 54 rows into the same rows, where they are lost"});
    EXPECT_EQ(
        hard(544, 2),
        Texts{"featherNozzleType 3 moves dots of the last 54 rows to the first feather rows, where other "
              "thresholds apply: some pixels of every step of 272 rows lose a print, and others may print "
              "once too often"});
    EXPECT_EQ(
        hard(544, 4),
        Texts{"featherNozzleType 3 moves dots of the last 54 rows to the first feather rows, where other "
              "thresholds apply: some pixels of every step of 136 rows lose a print, and others may print "
              "once too often"});
    EXPECT_EQ(hard(1088, 2), Texts()); // a step is the whole matrix
    EXPECT_EQ(hard(4, 4), Texts());    // a single feather row has no room for it
    EXPECT_EQ(hard(6, 2), Texts());    // the curve covers the only sine row of 3 feather rows
    // 544 rows in 4 passes over 50 percent: 6 steps of 85 rows are the 510 matrix rows in use.
    EXPECT_EQ(Feathered(FeatherNozzle_Smooth_3_Sine, [](SMaskParam&) {}), Texts());
    EXPECT_EQ(Feathered(FeatherNozzle_Smooth_3_Sine, [](SMaskParam& p) { p.colorTimes = 2; }),
              Texts{"featherNozzleType 3 moves dots of the last 17 rows to the first feather rows, where a "
                    "dot that finds its place taken is lost"});
}
