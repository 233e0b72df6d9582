// The print law of the sine edge. docs/cut-tables.md, "What the sine edge loses on the sheet", has the
// argument.

#include "dotweave/maskdata_base.h"

#include <cstddef>
#include <ostream>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "cuttables.h"
#include "maskdots.h"
#include "maskparams.h"
#include "peek.h"
#include "plainmask.h"
#include "printlaw.h"

namespace {

constexpr int WIDTH = CSheet::WIDTH;

bool Holds(const SRange& range, int threshold)
{
    return range.lower < threshold && threshold <= range.upper;
}

/// The geometry of a sine mode, and its cut table by the formulas of the pages, not by the library's
/// builders.
struct SSineLayout {
    int height;
    int step;
    int featherRows;
    int sineRows;
    CRanges table;

    SSineLayout(int bandRows, int stepRows, CRanges ranges)
        : height(bandRows), step(stepRows), featherRows(Plain_FeatherRows(bandRows, stepRows)),
          sineRows(Plain_SineRows(featherRows, WIDTH)), table(std::move(ranges))
    {}

    /// Rows from a place in the band's first feather rows to the same place in its last. A multiple of the
    /// step.
    [[nodiscard]] int Distance() const { return height - featherRows; }
    [[nodiscard]] const SRange& Range(int row) const { return table[static_cast<std::size_t>(row)]; }
    [[nodiscard]] bool IsHandedOver(int sineRow, int x) const
    {
        return sineRow >= 0 && sineRow < sineRows && !Plain_IsUnderSine(sineRow, x, sineRows, WIDTH);
    }
    /// Share of a row's pixels that its range prints, for a row of the sine part of the band's last rows.
    [[nodiscard]] double BottomShare(int sineRow) const
    {
        const SRange& range = Range(height - sineRows + sineRow);
        return (range.upper - range.lower) / 65535.0;
    }
};

/// Prints of a pixel. A bottom row prints no dots outside the curve. The top row of the band that lies there
/// prints its own dots, and those that this band's own bottom row, Distance() rows further down, gave it.
CPixelLaw Law_Sine(const SSineLayout& layout, const CSheet& sheet)
{
    return [&layout, &sheet](int sheetRow, int x) {
        const int threshold = sheet.Threshold(sheetRow, x);
        int count = 0;
        for (int row = sheetRow % layout.step; row < layout.height; row += layout.step) {
            if (layout.IsHandedOver(row - (layout.height - layout.sineRows), x))
                continue;
            bool isPrinted = Holds(layout.Range(row), threshold);
            if (layout.IsHandedOver(row - (layout.featherRows - layout.sineRows), x))
                isPrinted = isPrinted || Holds(layout.Range(row + layout.Distance()),
                                               sheet.Threshold(sheetRow + layout.Distance(), x));
            count += isPrinted ? 1 : 0;
        }
        return count;
    };
}

/// A mode and what its sheet shows, in percent of all pixels.
struct SSineCase {
    const char* name;
    SMaskParam param;
    SSineLayout layout;
    double neverPercent;
    double twicePercent;
};

std::ostream& operator<<(std::ostream& stream, const SSineCase& sineCase)
{
    return stream << sineCase.name;
}

SSineCase Smooth(const char* name, int nozzleCount, int basePass, float featherPercent, int step,
                 double never, double twice)
{
    return {name, MaskParam_Feathered(FeatherNozzle_Smooth_3_Sine, nozzleCount, basePass, featherPercent),
            SSineLayout(nozzleCount, step, RampByFormula(nozzleCount, step, 65535)), never, twice};
}

SSineCase Hard(const char* name, int nozzleCount, int basePass, double never, double twice)
{
    SMaskParam param = MaskParam_Feathered(FeatherNozzle_Smooth_3_Sine, nozzleCount, basePass, 0.0F);
    param.featherMode = FeatherMode_None; // the sine edge does not ask for the mode
    const int step = nozzleCount / basePass;
    return {name, param, SSineLayout(nozzleCount, step, HardZones(basePass, 1, step)), never, twice};
}

SSineCase In2x2(const char* name, SSineCase sineCase)
{
    sineCase.name = name;
    sineCase.param.xResPass = 2;
    sineCase.param.yResPass = 2;
    return sineCase;
}

class PrintLawSine : public testing::TestWithParam<SSineCase> {};

TEST_P(PrintLawSine, HandsOver)
{
    const SSineCase& c = GetParam();
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(c.param));
    SMaskData_Base_Peek peek{mask};
    ASSERT_EQ(peek.StepHeight_NoneRes(), c.layout.step);
    for (int pass = 0; pass < c.param.xResPass * c.param.yResPass; ++pass) {
        CSheet sheet(mask, 0, pass / c.param.xResPass, pass % c.param.xResPass);
        sheet.Print();
        const SWrongPixels byLaw = sheet.Compare(Law_Sine(c.layout, sheet));
        EXPECT_EQ(byLaw.fewer + byLaw.more, 0) << "resolution pass " << pass;
    }

    CSheet sheet(mask, 0, 0, 0);
    sheet.Print();
    const CLaw once = Law_Times(1);
    const SWrongPixels wrong =
        sheet.Compare([&](int row, int x) { return once(sheet.Threshold(row, x), row % c.layout.step); });
    const double pixels = sheet.PixelCount();
    EXPECT_NEAR(100.0 * wrong.fewer / pixels, c.neverPercent, 0.005);
    EXPECT_NEAR(100.0 * wrong.more / pixels, c.twicePercent, 0.005);

    // A pixel outside the curve has a share b of being the bottom row's to print. The top row prints it when
    // the threshold Distance() rows away is in the range too: always where the matrix repeats in that
    // distance, never where there is no other row, else with the chance b, the two thresholds having nothing
    // to do with each other.
    double expected = 0.0;
    for (int row = 0; row < c.layout.sineRows; ++row) {
        const double share = c.layout.BottomShare(row);
        double chance = 1.0 - share;
        if (c.layout.Distance() == 0)
            chance = 1.0;
        else if (c.layout.Distance() % peek.BaseMaskHeight() == 0)
            chance = 0.0;
        for (int x = 0; x < WIDTH; ++x)
            expected += c.layout.IsHandedOver(row, x) ? share * chance : 0.0;
    }
    const double expectedPercent = 100.0 * expected / (c.layout.step * WIDTH);
    EXPECT_NEAR(c.neverPercent, expectedPercent, 0.05 * expectedPercent);
}

// The table of docs/cut-tables.md. The percentages were counted from the base matrices by a separate program.
INSTANTIATE_TEST_SUITE_P(
    Modes, PrintLawSine,
    testing::Values(Hard("HardOnePass", 544, 1, 4.791, 0.0), // top and bottom rows are the same rows
                    Hard("HardTwoPasses", 544, 2, 2.383, 0.0), Hard("HardFourPasses", 544, 4, 3.584, 2.396),
                    Hard("HardEightPasses", 544, 8, 2.588, 2.217),
                    In2x2("HardFourPasses2x2", Hard("", 544, 4, 3.584, 2.396)),
                    Hard("HardMatrixSteps", 1088, 2, 0.0, 0.0), // the step is the matrix
                    Smooth("RampOnePass", 544, 1, 50.0F, 340, 0.656, 0.0),
                    Smooth("RampTwoPasses", 544, 2, 50.0F, 170, 0.077, 0.070),
                    Smooth("RampWholeSteps", 544, 4, 0.0F, 136, 0.881, 0.633),
                    Smooth("RampFourPasses", 544, 4, 50.0F, 85, 0.0,
                           0.0), // 6 steps are the 510 matrix rows in use
                    Smooth("RampAllFeather", 544, 4, 100.0F, 34, 0.285, 0.268),
                    Smooth("RampEightPasses", 544, 8, 50.0F, 42, 0.0, 0.0),
                    Smooth("RampShortHead", 100, 3, 50.0F, 21, 0.562, 0.469)),
    [](const testing::TestParamInfo<SSineCase>& test) { return test.param.name; });

TEST(PrintLaw, SineMovesDotsWithinEachMask)
{
    // Two masks of one mode, with and without the sine. A dot of the bottom rows either stays or goes to the
    // same place of the top rows of its own mask. Only a dot whose new place is taken is lost.
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
                    wrong += isMoving || after[index] == before[index] ? 0 : 1; // no other row changes
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
