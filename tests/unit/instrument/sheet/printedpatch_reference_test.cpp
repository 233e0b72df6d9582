// Printed patches against a slow model that knows circles and points, but neither cells nor stamps.

#include "sheet/printedpatch.h"

#include "sheet/dotplacement.h"

#include "plainpaper.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

using namespace dotweave;

namespace {

constexpr int LINES = 20;
constexpr int COLUMNS = 24;

/// 12 nozzle rows, 3 passes, each pixel twice.
constexpr SMaskParam TWICE = {12, 3, 1, 1, 1, 1, 0, 0, 0, 2, 100, 0};
constexpr SMaskParam RESOLUTION = {16, 2, 2, 2, 1, 2, 1, 40, FeatherNozzle_Smooth_3, 1, 100, 0};

SPatchOptions Options(const CMaskData_Base& mask, EOverlap overlap)
{
    SPatchOptions options;
    // Some steps into the steady state, so that errors carry no pass over the first line that has none.
    const CPassLayout layout(mask);
    options.window = {layout.SteadyLine_First() + 3 * layout.StepLines(), LINES, COLUMNS};
    options.overlap = overlap;
    options.threadCount = 1;
    return options;
}

/// The largest and the mean difference between the two models over all pixels, as shares of full ink.
void ExpectSame(const SMaskParam& param, const SSheetErrors& errors, const SPlainPress& press)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(param));
    for (const EOverlap overlap : {EOverlap::Union, EOverlap::Density}) {
        const SPatchOptions options = Options(mask, overlap);
        const double paper = options.paperReflectance;
        const double ink = options.inkReflectance;
        const auto reflected = [&](int layers) {
            const int counted = overlap == EOverlap::Union ? std::min(layers, 1) : layers;
            return paper * std::pow(ink / paper, counted);
        };
        const SPatch patch = Patch_Collect(mask, 0, nullptr, errors, options);
        const std::vector<SPlainDot> dots = Plain_Dots(
            mask, 0, press, static_cast<int>(options.window.firstLine), LINES, COLUMNS, options.dotDiameter);
        double sum = 0;
        for (int line = 0; line < LINES; ++line) {
            for (int column = 0; column < COLUMNS; ++column) {
                const double expected = Plain_Reflectance(dots, column, line, 16, reflected);
                const auto found =
                    static_cast<double>(patch.reflectance[static_cast<std::size_t>(line * COLUMNS + column)]);
                sum += found - expected;
                // Centres are rounded to a 32nd of a pixel, dots to one of 256 points of a pixel.
                ASSERT_NEAR(found, expected, 0.035) << "line " << line << ", column " << column;
            }
        }
        EXPECT_NEAR(sum / (LINES * COLUMNS), 0, 0.002);
    }
}

} // namespace

TEST(PrintedPatchReference, PrintsTheSameWithoutErrors)
{
    ExpectSame(TWICE, {}, {});
    ExpectSame(RESOLUTION, {}, {});
}

TEST(PrintedPatchReference, MovesThePaperTheSame)
{
    SSheetErrors errors;
    errors.advanceConstant = 0.125;
    errors.advancePeriodic = 0.25;
    errors.periodMoves = 3;
    errors.periodPhase = 0.25;
    SPlainPress press;
    press.passShift = [](std::int64_t pass) {
        double shift = 0;
        for (std::int64_t move = 1; move <= pass; ++move)
            shift += 0.125 + 0.25 * std::sin(2 * std::numbers::pi * (double(move) / 3 + 0.25));
        return shift;
    };
    ExpectSame(TWICE, errors, press);
    ExpectSame(RESOLUTION, errors, press);
}

TEST(PrintedPatchReference, TurnsTheHeadAndShiftsPasses)
{
    SSheetErrors errors;
    errors.tilt = -0.05;
    errors.bidirectional = 0.75;
    SPlainPress press;
    press.bidirectional = 0.75;
    press.rowX = [](int row) { return -0.05 * (row - 5.5); };
    ExpectSame(TWICE, errors, press);
}

TEST(PrintedPatchReference, WeakensAndLosesRows)
{
    SSheetErrors errors;
    errors.deadRows = {4, 9};
    errors.weakRows = {{2, 0.5}, {7, 1.75}};
    SPlainPress press;
    press.volume = [](std::int64_t, int row, int) {
        return row == 4 || row == 9 ? 0.0 : row == 2 ? 0.5 : row == 7 ? 1.75 : 1.0;
    };
    ExpectSame(TWICE, errors, press);
}

/// The random numbers come from the placement, whose tests are its own; what they do comes from the slow model.
TEST(PrintedPatchReference, ScattersMovesAndRowsTheSame)
{
    SSheetErrors errors;
    errors.advanceSigma = 0.2;
    errors.rowSigmaX = 0.3;
    errors.rowSigmaY = 0.3;
    errors.seed = 42;
    for (const SMaskParam& param : {TWICE, RESOLUTION}) {
        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(param));
        const CDotPlacement placement(CPassLayout(mask), errors);
        const auto row = [&placement](int y) { return placement.Row({placement.Layout().Pass(0), 0}, y); };
        SPlainPress press;
        press.rowX = [&row](int y) { return row(y).shiftX; };
        press.rowY = [&row](int y) { return row(y).shiftY; };
        press.passShift = [&placement](std::int64_t pass) {
            double shift = 0;
            for (std::int64_t move = 1; move <= pass; ++move)
                shift += placement.MoveError(move);
            return shift;
        };
        ExpectSame(param, errors, press);
    }
}
