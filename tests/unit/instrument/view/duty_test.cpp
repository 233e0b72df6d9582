#include "view/duty.h"

#include "picture/dutyplot.h"
#include "record/recordfields.h"
#include "view/cuttableview.h"
#include "view/maskview.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

using namespace dotweave;

namespace {

SMaskParam Mode(int nozzleCount, int basePass, int xResPass, int yResPass)
{
    SMaskParam param = RECORD_DEFAULT;
    param.nozzleCount = nozzleCount;
    param.basePass = basePass;
    param.xResPass = xResPass;
    param.yResPass = yResPass;
    param.colorCount = 2;
    return param;
}

} // namespace

/// The dots of all rows are the bits of the mask bytes; with 1 bit a pixel nothing else is set.
TEST(Duty, CountsEveryDotOnce)
{
    for (const SMaskParam& param : {Mode(48, 4, 1, 1), Mode(48, 2, 3, 2), Mode(50, 3, 1, 4)}) {
        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(param));
        for (int color = 0; color < 2; ++color) {
            const SColorDuty duty = Duty_Count(mask, color);
            std::int64_t dots = 0;
            for (const SRowDuty& row : duty.rows)
                dots += row.dotCount;
            int position = 0;
            const std::uint8_t* bytes = mask.MaskData_Get(color, position = -1);
            std::int64_t bits = 0;
            for (int i = 0; i < mask.MaskBytes_OneColor(); ++i)
                for (int bit = 0; bit < 8; ++bit)
                    bits += bytes[i] >> bit & 1;
            EXPECT_EQ(dots, bits);
            EXPECT_EQ(duty.rows.size(),
                      static_cast<std::size_t>(mask.MaskHeight_IncludeRes() / param.yResPass));
        }
    }
}

/// One pass prints everything: every row fires at every pixel, all at once, without an end.
TEST(Duty, OfASinglePassIsFull)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(Mode(24, 1, 2, 2)));
    const SColorDuty duty = Duty_Count(mask, 0);
    EXPECT_EQ(duty.IdleCount(), 0);
    EXPECT_DOUBLE_EQ(duty.MeanShare(), 1.0);
    EXPECT_DOUBLE_EQ(duty.Evenness(), 1.0);
    EXPECT_DOUBLE_EQ(duty.TogetherShare(), 1.0);
    EXPECT_EQ(duty.LongestRun(), mask.MaskWidth() / 2); // columns of one of two X resolution passes
    EXPECT_EQ(duty.rows.back().togetherCount, 0);       // there is no next row
}

/// Hard edges: every row prints a quarter, but for what rounding of the matrix leaves.
TEST(Duty, OfHardEdgesIsEven)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(RECORD_DEFAULT));
    const SColorDuty duty = Duty_Count(mask, 3);
    EXPECT_NEAR(duty.MeanShare(), 0.25, 0.001);
    EXPECT_GT(duty.Evenness(), 0.9);
    EXPECT_EQ(duty.IdleCount(), 0);
}

/// A row's share is the share of thresholds in its range of the cut table.
TEST(Duty, FollowsTheCutTable)
{
    SMaskParam param = RECORD_DEFAULT;
    param.featherMode = FeatherMode_Nozzle;
    param.featherNozzleType = FeatherNozzle_Smooth_3;
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(param));
    const SColorDuty duty = Duty_Count(mask, 0);
    const SCutTableView table = CutTable_View(mask);
    ASSERT_EQ(duty.rows.size(), table.rows.size());
    for (std::size_t y = 0; y < table.rows.size(); ++y)
        EXPECT_NEAR(duty.Share(duty.rows[y]), CutRange_Size(table.rows[y]) / 65535.0, 0.02) << y;
}

/// Counted again pixel by pixel, from the definitions.
TEST(Duty, RunsAndNeighboursAreCountedByTheirWords)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(Mode(20, 2, 2, 3)));
    const SColorDuty duty = Duty_Count(mask, 1);
    const CMaskView view(mask);
    const int columns = mask.MaskWidth() / 2;
    const int rowCount = static_cast<int>(duty.rows.size());
    for (int row = 0; row < rowCount; ++row) {
        int longest = 0;
        std::int64_t together = 0;
        for (int position = 0; position < view.PositionCount(); ++position)
            for (int pass = 0; pass < 6; ++pass) { // 3 Y and 2 X resolution passes
                const auto fires = [&](int y, int column) {
                    return view.Lines(1, position).Pixel(column % columns * 2 + pass % 2, y * 3 + pass / 2) !=
                           0;
                };
                for (int start = 0; start < columns; ++start) {
                    int run = 0;
                    while (run < columns && fires(row, start + run))
                        ++run;
                    longest = std::max(longest, run);
                    together += row + 1 < rowCount && fires(row, start) && fires(row + 1, start) ? 1 : 0;
                }
            }
        EXPECT_EQ(duty.rows[static_cast<std::size_t>(row)].longestRun, longest) << row;
        EXPECT_EQ(duty.rows[static_cast<std::size_t>(row)].togetherCount, together) << row;
    }
}

TEST(Duty, OfNothingIsZero)
{
    const SColorDuty none;
    EXPECT_EQ(
        none.MeanShare() + none.Evenness() + none.TogetherShare() + none.IdleCount() + none.LongestRun(), 0);
    SColorDuty idle;
    idle.rows.resize(3);
    idle.chanceCount = 8;
    idle.rows[1].dotCount = 4;
    EXPECT_EQ(idle.IdleCount(), 2);
    EXPECT_DOUBLE_EQ(idle.MeanShare(), 1.0 / 6.0);
    EXPECT_DOUBLE_EQ(idle.Evenness(), 1.0 / 3.0);
}

TEST(DutyPlot, HasAPanelForEachColour)
{
    SColorDuty color;
    color.chanceCount = 100;
    color.rows = {{25, 0, 0}, {50, 0, 0}};
    const std::vector<SColorDuty> two(2, color);
    const std::string svg = DutyPlot_Svg(two);
    // Panels of 220 pixels from 70 and 304 on; the scale ends at 50 percent, so 25 percent are 110 pixels.
    EXPECT_NE(svg.find("d='M70 46H180V286H290V526H70Z'"), std::string::npos) << svg;
    EXPECT_NE(svg.find("d='M304 46H414V286H524V526H304Z'"), std::string::npos);
    EXPECT_NE(svg.find(">colour 1<"), std::string::npos);
    EXPECT_EQ(svg.find(">colour 2<"), std::string::npos);
    EXPECT_NE(svg.find(">50 %<"), std::string::npos);
    const std::vector<SColorDuty> many(30, color);
    EXPECT_NE(DutyPlot_Svg(many).find("; 6 more colours"), std::string::npos);
    EXPECT_NE(DutyPlot_Svg({}).find("</svg>"), std::string::npos);
}
