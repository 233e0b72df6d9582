#include "dotweave/maskdata_base.h"

#include "logscopes.h"
#include "nozzlelayout.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

namespace {

using Records = std::vector<SLogRecord>;

} // namespace

TEST(MaskDataBaseGeometryFeather, WorkedSmooth2Layouts)
{
    const SSetUp plain = SetUp_Of(Feathered(FeatherNozzle_Smooth_2, 544, 4, 1, 1, 50.0F));
    EXPECT_TRUE(plain.isDone);
    EXPECT_EQ(plain.layout, (SLayout{126, 544, 504, 40, 86, 5 * 40, 4 * 86}));
    EXPECT_EQ(plain.records, Records());
    for (const auto& [x, y] : {std::pair(2, 2), std::pair(4, 1), std::pair(1, 4)}) {
        const SSetUp shared = SetUp_Of(Feathered(FeatherNozzle_Smooth_2, 544, 4, x, y, 50.0F));
        EXPECT_TRUE(shared.isDone);
        EXPECT_EQ(shared.layout, (SLayout{124, 544, 496, 48, 76, 5 * 48, 4 * 76}));
    }
}

TEST(MaskDataBaseGeometryFeather, WorkedSmooth3Layouts)
{
    for (const int type : {FeatherNozzle_Smooth_3, FeatherNozzle_Smooth_3_Sine}) {
        const SSetUp plain = SetUp_Of(Feathered(type, 544, 4, 1, 1, 50.0F));
        EXPECT_TRUE(plain.isDone);
        EXPECT_EQ(plain.layout, HardLayout(85, 544, 510));
        EXPECT_EQ(plain.featherNozzleType, type);
        EXPECT_EQ(plain.records, Records());
        const SSetUp shared = SetUp_Of(Feathered(type, 544, 4, 2, 2, 50.0F));
        EXPECT_TRUE(shared.isDone);
        EXPECT_EQ(shared.layout, HardLayout(84, 544, 504));
    }
}

TEST(MaskDataBaseGeometryFeather, WorkedHardLayout)
{
    const SSetUp hard = SetUp_Of(FeatherNone(544, 4, 1, 1));
    EXPECT_TRUE(hard.isDone);
    EXPECT_EQ(hard.layout, HardLayout(136, 544, 408));
    EXPECT_EQ(hard.featherMode, FeatherMode_None);
    EXPECT_EQ(hard.featherNozzleType, FeatherNozzle_Smooth_3);
    EXPECT_EQ(hard.records, Records());
}

TEST(MaskDataBaseGeometryFeather, RowsLeftOverBecomeFeatherZones)
{
    const SSetUp three = SetUp_Of(FeatherNone(544, 3, 1, 1));
    EXPECT_TRUE(three.isDone);
    EXPECT_EQ(three.layout, (SLayout{181, 544, 543, 1, 180, 4 * 1, 3 * 180}));
    EXPECT_EQ(three.featherMode, FeatherMode_Nozzle);
    EXPECT_EQ(three.featherNozzleType, FeatherNozzle_Smooth_2);
    EXPECT_EQ(three.records, Records());

    const SSetUp six = SetUp_Of(FeatherNone(544, 6, 1, 1));
    EXPECT_TRUE(six.isDone);
    EXPECT_EQ(six.layout, (SLayout{90, 544, 540, 4, 86, 7 * 4, 6 * 86}));
    EXPECT_EQ(six.featherNozzleType, FeatherNozzle_Smooth_2);
}

TEST(MaskDataBaseGeometryFeather, MoreRowsLeftOverThanAStepStayUnused)
{
    for (const auto& [x, y] : {std::pair(8, 1), std::pair(2, 4), std::pair(1, 8)}) {
        const SSetUp setUp = SetUp_Of(FeatherNone(100, 10, x, y));
        EXPECT_TRUE(setUp.isDone);
        EXPECT_EQ(setUp.layout, (SLayout{8, 88, 80, 8, 0, 11 * 8, 0}));
        EXPECT_EQ(setUp.featherMode, FeatherMode_Nozzle);
        EXPECT_EQ(setUp.featherNozzleType, FeatherNozzle_Smooth_2);
    }
    // And it can be built: 12 rows of the head print nothing.
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(FeatherNone(100, 10, 2, 4)));
    EXPECT_EQ(mask.MaskHeight_IncludeRes(), 88 * 4);
    EXPECT_EQ(mask.MaskParam_Current().featherMode, FeatherMode_Nozzle);
}

TEST(MaskDataBaseGeometryFeather, NoPercentTakesNoRowOff)
{
    EXPECT_EQ(SetUp_Of(Feathered(FeatherNozzle_Smooth_3, 180, 4, 1, 1, 0.0F)).layout,
              HardLayout(45, 180, 135));
    EXPECT_EQ(SetUp_Of(Feathered(FeatherNozzle_Smooth_3, 180, 4, 2, 2, 0.0F)).layout,
              HardLayout(44, 180, 176));
    // Smooth-2 then has no feather zone at all, which the resolution set-up refuses.
    EXPECT_EQ(SetUp_Of(Feathered(FeatherNozzle_Smooth_2, 544, 4, 1, 1, 0.0F)).layout,
              (SLayout{136, 544, 544, 0, 136, 0, 544}));
    EXPECT_TRUE(SetUp_Of(Feathered(FeatherNozzle_Smooth_2, 544, 4, 1, 1, 0.0F)).isDone);
}

TEST(MaskDataBaseGeometryFeather, FeatherAmountIsTruncatedBeforeItIsShared)
{
    // 100 rows, 33.3 %: 24.975 rows, truncated to 24.
    EXPECT_EQ(SetUp_Of(Feathered(FeatherNozzle_Smooth_3, 100, 1, 1, 1, 33.3F)).layout,
              HardLayout(76, 100, 76));
    // Among 5 zones 24 rows are 4 each; 25 would have been 5.
    EXPECT_EQ(SetUp_Of(Feathered(FeatherNozzle_Smooth_2, 100, 4, 1, 1, 33.3F)).layout,
              (SLayout{24, 100, 96, 4, 20, 20, 80}));
}

TEST(MaskDataBaseGeometryFeather, FeatherAmountRoundsInTheAgreedOrder)
{
    // 84 % of 75 rows is 63, but the agreed single-precision order ends just below and truncates to 62.
    EXPECT_EQ(SetUp_Of(Feathered(FeatherNozzle_Smooth_3, 100, 1, 1, 1, 84.0F)).layout,
              HardLayout(38, 100, 76));
    // 62 rows in 3 zones are 20 each; 63 would be 21 and lower the step to 39.
    EXPECT_EQ(SetUp_Of(Feathered(FeatherNozzle_Smooth_2, 100, 2, 1, 1, 84.0F)).layout,
              (SLayout{40, 100, 80, 20, 20, 60, 40}));
}

TEST(MaskDataBaseGeometryFeather, UnknownFeatherModesSetNothing)
{
    for (const int mode : {2, 3, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        SMaskParam param = FeatherNone(544, 3, 1, 1);
        param.featherMode = mode;
        const SSetUp setUp = SetUp_Of(param);
        EXPECT_FALSE(setUp.isDone);
        EXPECT_EQ(setUp.layout, SLayout());
        EXPECT_EQ(setUp.featherMode, mode);
        EXPECT_EQ(setUp.records, Records({Failure(UNIT_MASK, SCOPE_INIT_NONE_RES, 163)}));
    }
}

TEST(MaskDataBaseGeometryFeather, UnknownFeatherProfilesSetNothing)
{
    for (const int type : {static_cast<int>(FeatherNozzle_Reserved), 0, 5, -1,
                           std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        const SSetUp setUp = SetUp_Of(Feathered(type, 544, 4, 1, 1, 50.0F));
        EXPECT_FALSE(setUp.isDone);
        EXPECT_EQ(setUp.layout, SLayout());
        EXPECT_EQ(setUp.featherNozzleType, type);
        EXPECT_EQ(setUp.records, Records({Failure(UNIT_MASK, SCOPE_FEATHER_NOZZLE, 182)}));
    }
}

TEST(MaskDataBaseGeometryFeather, StepsOfNoRowAreRefused)
{
    const SSetUp none = SetUp_Of(FeatherNone(15, 4, 2, 2));
    EXPECT_FALSE(none.isDone);
    EXPECT_EQ(none.layout.step, 0);
    EXPECT_EQ(none.records, Records({Failure(UNIT_MASK, SCOPE_FEATHER_NONE, 237)}));

    const SSetUp smooth2 = SetUp_Of(Feathered(FeatherNozzle_Smooth_2, 15, 4, 2, 2, 50.0F));
    EXPECT_FALSE(smooth2.isDone);
    EXPECT_EQ(smooth2.records, Records({Failure(UNIT_MASK, SCOPE_SMOOTH_2, 205)}));

    const SSetUp smooth3 = SetUp_Of(Feathered(FeatherNozzle_Smooth_3, 15, 4, 2, 2, 50.0F));
    EXPECT_FALSE(smooth3.isDone);
    EXPECT_EQ(smooth3.layout.step, 0);
    EXPECT_EQ(smooth3.records, Records({Failure(UNIT_MASK, SCOPE_SMOOTH_3)}));
}

TEST(MaskDataBaseGeometryFeather, MorePassesThanRowsAreRefused)
{
    constexpr int MOST = std::numeric_limits<int>::max();
    for (const auto& [rows, passes] :
         {std::pair(1, 2), std::pair(4, 5), std::pair(544, MOST), std::pair(MOST - 1, MOST)}) {
        for (const int type : {FeatherNozzle_Smooth_2, FeatherNozzle_Smooth_3}) {
            const SSetUp setUp = SetUp_Of(Feathered(type, rows, passes, 1, 1, 50.0F));
            EXPECT_FALSE(setUp.isDone);
            EXPECT_EQ(setUp.records.size(), 1U);
        }
        EXPECT_FALSE(SetUp_Of(FeatherNone(rows, passes, 1, 1)).isDone);
    }
}
