// The numbers of docs/on-paper.md.

#include "figures/banding.h"
#include "figures/contrastsensitivity.h"
#include "figures/lightness.h"
#include "sheet/dotplacement.h"
#include "sheet/idealsheet.h"
#include "sheet/printedpatch.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

using namespace dotweave;

namespace {

/// "Eight nozzle rows, 2 passes, no resolution passes, hard edges."
class OnPaper : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(mask.Create({8, 2, 1, 1, 1, 1, 0, 0, 0, 1, 100, 0})); }
    SRowPlace Place(std::int64_t number, int row) const
    {
        const CDotPlacement placement(CPassLayout(mask), errors);
        for (const SPlacedPass& pass : placement.Passes(4 * number + 4, 1)) {
            if (pass.pass.number == number)
                return placement.Row(pass, row);
        }
        ADD_FAILURE() << "no pass " << number;
        return {};
    }

    CMaskData_Base mask;
    SSheetErrors errors;
};

constexpr double PITCH_MM = 25.4 / 600;

SBanding Seen(const std::vector<double>& profile)
{
    return Banding({profile, PITCH_MM, PITCH_MM, 350});
}

SBanding Seen_Wave(int period)
{
    std::vector<double> profile;
    for (int line = 0; line < 480; ++line)
        profile.push_back(60 + std::cos(2 * std::numbers::pi * line / period));
    return Seen(profile);
}

} // namespace

TEST_F(OnPaper, LaysRowsAsThePageDrawsThem)
{
    const CPassLayout layout(mask);
    EXPECT_EQ(layout.StepLines(), 4);
    EXPECT_EQ(layout.SteadyLine_First(), 4);
    for (int pass = 0; pass < 4; ++pass) {
        for (int row = 0; row < 8; ++row)
            EXPECT_EQ(layout.Line(layout.Pass(pass), row), 4 * pass + row);
    }
    EXPECT_EQ(layout.Row(layout.Pass(1), 8), 4);
    EXPECT_EQ(layout.Row(layout.Pass(2), 8), 0);
    EXPECT_EQ(layout.Passes(8, 1).size(), 2U);
}

TEST_F(OnPaper, MovesTheDotOfLineEight)
{
    errors.advanceConstant = 0.25;
    EXPECT_DOUBLE_EQ(Place(1, 4).shiftY, 0.25);
    EXPECT_DOUBLE_EQ(Place(2, 0).shiftY, 0.5);
    errors = {};
    errors.advancePeriodic = 0.5;
    errors.periodMoves = 4;
    EXPECT_NEAR(Place(1, 4).shiftY, 0.5, 1e-12);
    EXPECT_NEAR(Place(2, 0).shiftY, 0.5, 1e-12);
    EXPECT_NEAR(Place(3, 0).shiftY, 0, 1e-12);
    errors = {};
    errors.tilt = 0.1;
    EXPECT_NEAR(Place(1, 4).shiftX, 0.05, 1e-12);
    errors = {};
    errors.bidirectional = 2.25;
    EXPECT_EQ(Place(1, 4).shiftX, 2.25);
    EXPECT_EQ(Place(2, 0).shiftX, 0);
}

TEST_F(OnPaper, LosesHalfOfALineWithItsDeadRow)
{
    const SSheetWindow line = {8, 1, 544};
    const std::vector<int> deadRows = {4};
    int left = 0;
    const CIdealSheet sheet(mask, 0, line, nullptr, deadRows);
    for (const std::uint8_t count : sheet.Counts())
        left += count;
    EXPECT_NEAR(left / 544.0, 0.5, 0.03);
}

/// Two pixels wanted side by side, on 5 x 4 pixels of paper.
TEST_F(OnPaper, CoversPaperWithTwoDots)
{
    CBitImage image(5, 4, EImageEdge::Blank);
    image.Pixel_Set(1, 1);
    image.Pixel_Set(2, 1);
    SPatchOptions options;
    options.window = {8, 4, 5};
    options.supersample = 16;
    for (const bool isUnion : {true, false}) {
        options.overlap = isUnion ? EOverlap::Union : EOverlap::Density;
        double mean = 0;
        for (const float reflectance : Patch_Collect(mask, 0, &image, {}, options).reflectance)
            mean += static_cast<double>(reflectance) / 20;
        EXPECT_NEAR(mean, isUnion ? 0.7415 : 0.7411, 0.0001);
        EXPECT_NEAR(Lightness(mean), 89.0, 0.05);
    }
}

TEST_F(OnPaper, SeesTheFiguresToRemember)
{
    EXPECT_NEAR(CyclesPerDegree(1 / (48 * PITCH_MM), 350), 3.0, 0.05);
    EXPECT_NEAR(Seen_Wave(48).rms, 0.707, 0.0005);
    EXPECT_NEAR(Seen_Wave(48).peakAmplitude, 1, 1e-9);
    EXPECT_NEAR(CyclesPerDegree(1 / (8 * PITCH_MM), 350), 18.0, 0.05);
    EXPECT_NEAR(Seen_Wave(8).rms, 0.384, 0.0005);
    EXPECT_NEAR(Seen_Wave(8).peakAmplitude, 0.543, 0.0005);
    EXPECT_NEAR(CyclesPerDegree(2, 350), 12.2, 0.05);
    EXPECT_NEAR(ContrastSensitivity(CyclesPerDegree(2, 350)), 0.826, 0.0005);
    std::vector<double> line(480, 60);
    line[100] -= 1;
    EXPECT_NEAR(Seen(line).plainRms, 0.0456, 0.00005);
}

TEST_F(OnPaper, PrintsOnPaperOfLightness95)
{
    EXPECT_NEAR(Lightness(PAPER_REFLECTANCE), 95, 0.05);
    EXPECT_NEAR(Lightness(INK_REFLECTANCE), 16, 0.05);
}
