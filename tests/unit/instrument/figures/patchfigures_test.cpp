#include "figures/patchfigures.h"

#include "figures/graininess.h"
#include "figures/lightness.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <numbers>
#include <stdexcept>
#include <vector>

using namespace dotweave;

namespace {

/// 48 nozzle rows, 3 passes: steps of 16 lines.
constexpr SMaskParam MODE = {48, 3, 1, 1, 1, 1, 0, 0, 0, 1, 100, 0};

class PatchFigures : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(mask.Create(MODE));
        options.window = {CPassLayout(mask).SteadyLine_First(), 160, 136};
        options.threadCount = 2;
    }
    SPatchFigures Figures() const
    {
        return dotweave::PatchFigures(mask, 0, nullptr, errors, options, viewing);
    }

    CMaskData_Base mask;
    SPatchOptions options;
    SSheetErrors errors;
    SViewing viewing;
};

} // namespace

/// Rings of reflectance made by hand: a cosine down the lines and another one along the columns.
TEST_F(PatchFigures, SortWavesIntoBandsAndStreaks)
{
    constexpr int LINES = 160, COLUMNS = 120;
    std::vector<float> reflectance;
    for (int y = 0; y < LINES; ++y) {
        for (int x = 0; x < COLUMNS; ++x)
            reflectance.push_back(static_cast<float>(0.5 + 0.004 * std::cos(2 * std::numbers::pi * y / 32) +
                                                     0.002 * std::cos(2 * std::numbers::pi * x / 20)));
    }
    CFigureCollector collector(CPassLayout(mask), {0, LINES, COLUMNS}, viewing);
    for (int y = 0; y < LINES; y += 40)
        collector({y, 40, COLUMNS, 4, reflectance.data() + std::ptrdiff_t{y} * COLUMNS, nullptr});
    const SPatchFigures figures = collector.Figures();
    const double slope = 116 / (3 * std::cbrt(0.25)); // of L* at a reflectance of a half
    const double pitchMm = 25.4 / 600;
    EXPECT_NEAR(figures.meanLightness, 116 * std::cbrt(0.5) - 16, 1e-4);
    const auto weight = [&](int period) {
        return ContrastSensitivity(CyclesPerDegree(1 / (period * pitchMm), 350));
    };
    EXPECT_NEAR(figures.banding.rms, 0.004 * slope * weight(32) / std::numbers::sqrt2, 1e-3);
    EXPECT_NEAR(figures.banding.peakPeriodMm, 32 * pitchMm, 1e-9);
    EXPECT_NEAR(figures.banding.peakPeriodSteps, 2, 1e-9);
    EXPECT_NEAR(figures.streaks.rms, 0.002 * slope * weight(20) / std::numbers::sqrt2, 1e-3);
    EXPECT_NEAR(figures.streaks.peakPeriodMm, 20 * pitchMm, 1e-9);
    EXPECT_NEAR(figures.graininess, 0, 1e-4);
    EXPECT_EQ(figures.lines.size(), 160U);
    EXPECT_EQ(figures.columns.size(), 120U);
    EXPECT_NEAR(figures.lines[0], Lightness(0.504), 1e-3);
}

/// Noise made by hand, which is grain: the slope of L* turns the deviation of light into one of lightness.
TEST_F(PatchFigures, TurnLightIntoLightnessAtTheMean)
{
    std::vector<float> reflectance;
    for (int i = 0; i < 64 * 64; ++i)
        reflectance.push_back(i * 2654435761U >> 31U != 0U ? 0.3F : 0.2F);
    CFigureCollector collector(CPassLayout(mask), {0, 64, 64}, viewing);
    collector({0, 64, 64, 4, reflectance.data(), nullptr});
    const std::vector<double> light(reflectance.begin(), reflectance.end());
    const double pitchMm = 25.4 / 600;
    const SPatchFigures figures = collector.Figures();
    EXPECT_NEAR(figures.graininess,
                Graininess({light, 64, 64, pitchMm, pitchMm, 350}) * Lightness_Slope(figures.meanReflectance),
                1e-9);
    EXPECT_GT(figures.graininess, 0.1);
}

TEST_F(PatchFigures, SeeNoBandsOnAPerfectSheet)
{
    const SPatchFigures figures = Figures();
    EXPECT_LT(figures.banding.rms, 0.01);
    EXPECT_LT(figures.streaks.rms, 0.01);
    EXPECT_EQ(figures.printShare.WrongShare(), 0);
}

TEST_F(PatchFigures, SeeTheStepWhenThePaperGoesTooFar)
{
    errors.advanceConstant = 0.5;
    options.window.lineCount = 165; // ten steps of 16.5 pitches
    const SPatchFigures figures = Figures();
    EXPECT_GT(figures.banding.rms, 0.5);
    const double steps = figures.banding.peakPeriodSteps * 16 / 16.5; // a whole step, or a part of one
    EXPECT_NEAR(1 / steps, std::round(1 / steps), 0.1);
}

TEST_F(PatchFigures, FindTheLinesOfADeadRow)
{
    errors.deadRows = {20};
    const SPatchFigures figures = Figures();
    EXPECT_GT(figures.banding.worstDifference, 0.1); // lighter
    // Row 20 of pass p prints line 16 p + 20; the window begins at a multiple of 16.
    ASSERT_EQ(options.window.firstLine % 16, 0);
    EXPECT_EQ(figures.banding.worstLine % 16, 4);
    EXPECT_NEAR(figures.printShare.WrongLineShare(), 1.0 / 16, 1e-9);
    EXPECT_NEAR(figures.printShare.WrongShare(), 1.0 / 48, 0.005);
}

TEST_F(PatchFigures, NeedAViewerAndAPress)
{
    EXPECT_EQ(Viewing_Refusal({}), "");
    EXPECT_EQ(Viewing_Refusal({5, 350}), "rowsPerInch 5 is not from 10 to 10000");
    EXPECT_EQ(Viewing_Refusal({600, 10}), "distanceMm 10 is not from 50 to 100000");
    viewing.distanceMm = 0;
    EXPECT_THROW(Figures(), std::invalid_argument);
}
