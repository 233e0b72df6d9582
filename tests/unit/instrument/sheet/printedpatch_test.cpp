#include "sheet/printedpatch.h"

#include "sheet/tint.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <numeric>
#include <string>
#include <vector>

using namespace dotweave;

namespace {

/// 16 nozzle rows, 2 passes: steps of 8 lines.
constexpr SMaskParam TWO_PASSES = {16, 2, 1, 1, 1, 1, 0, 0, 0, 1, 100, 0};
constexpr SMaskParam TWICE = {16, 2, 1, 1, 1, 1, 0, 0, 0, 2, 100, 0};
constexpr SMaskParam RESOLUTION = {16, 2, 2, 3, 1, 2, 0, 0, 0, 1, 100, 0};

class PrintedPatch : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(mask.Create(TWO_PASSES));
        ASSERT_TRUE(twice.Create(TWICE));
        ASSERT_TRUE(fine.Create(RESOLUTION));
        options.window = {16, 24, 40};
        options.threadCount = 2;
    }
    /// A single dot wanted in the middle of the patch.
    static CBitImage OneDot(int x = 20, int y = 12)
    {
        CBitImage image(40, 24, EImageEdge::Blank);
        image.Pixel_Set(x, y);
        return image;
    }
    double Coverage(const SPatch& patch) const
    {
        double sum = 0;
        for (const float reflectance : patch.reflectance)
            sum += (options.paperReflectance - static_cast<double>(reflectance)) /
                   (options.paperReflectance - options.inkReflectance);
        return sum;
    }
    /// Where the ink of a patch is, in pixels.
    struct SCentre {
        double x, y;
    };
    SCentre Centre(const SPatch& patch) const
    {
        SCentre centre = {0, 0};
        double sum = 0;
        for (int y = 0; y < patch.height; ++y) {
            for (int x = 0; x < patch.width; ++x) {
                const double ink =
                    options.paperReflectance -
                    static_cast<double>(patch.reflectance[static_cast<std::size_t>(y * patch.width + x)]);
                sum += ink;
                centre.x += ink * (x + 0.5);
                centre.y += ink * (y + 0.5);
            }
        }
        return {centre.x / sum, centre.y / sum};
    }

    CMaskData_Base mask, twice, fine;
    SPatchOptions options;
};

/// All lines of a patch in one piece.
struct SWholePatch {
    std::vector<float> reflectance, cells;
    void operator()(const SPatchLines& lines)
    {
        EXPECT_EQ(static_cast<std::size_t>(lines.firstLine) * static_cast<std::size_t>(lines.width),
                  reflectance.size());
        const auto count = static_cast<std::size_t>(lines.lineCount * lines.width);
        reflectance.insert(reflectance.end(), lines.reflectance, lines.reflectance + count);
        if (lines.cells != nullptr)
            cells.insert(cells.end(), lines.cells,
                         lines.cells +
                             count * static_cast<std::size_t>(lines.supersample * lines.supersample));
    }
};

SSheetErrors AllErrors()
{
    SSheetErrors errors;
    errors.advanceConstant = 0.3;
    errors.advanceSigma = 0.1;
    errors.advancePeriodic = 0.2;
    errors.rowSigmaX = 0.2;
    errors.rowSigmaY = 0.3;
    errors.tilt = 0.02;
    errors.bidirectional = 1.3;
    errors.volumeSigma = 0.2;
    errors.deadRows = {3};
    errors.weakRows = {{7, 0.4}, {8, 1.9}};
    return errors;
}

} // namespace

TEST_F(PrintedPatch, IsWhatThePlainLoopsPrint)
{
    const CBitImage tint = Tint_Make(0.6, 2);
    options.window = {16, 10, 24};
    const std::vector<SSheetErrors> errorCases = {SSheetErrors(), AllErrors()};
    for (const CMaskData_Base* one : {&mask, &twice, &fine}) {
        for (const EOverlap overlap : {EOverlap::Union, EOverlap::Density}) {
            for (const int supersample : {1, 3, 4}) {
                for (std::size_t i = 0; i < errorCases.size(); ++i) {
                    options.overlap = overlap;
                    options.supersample = supersample;
                    options.dotDiameter = i == 0 ? 1.5 : 2.3;
                    options.wantsCells = i == 1;
                    SWholePatch fast, plain;
                    Patch_Print(*one, 0, &tint, errorCases[i], options, std::ref(fast));
                    Patch_PrintPlain(*one, 0, &tint, errorCases[i], options, std::ref(plain));
                    EXPECT_EQ(fast.reflectance, plain.reflectance) << "supersample " << supersample;
                    EXPECT_EQ(fast.cells, plain.cells) << "supersample " << supersample;
                }
            }
        }
    }
}

TEST_F(PrintedPatch, IsTheSameInAnyNumberOfThreads)
{
    options.window = {16, 400, 300};
    options.threadCount = 1;
    const SPatch one = Patch_Collect(mask, 0, nullptr, AllErrors(), options);
    for (const int threadCount : {0, 2, 5}) {
        options.threadCount = threadCount;
        EXPECT_EQ(Patch_Collect(mask, 0, nullptr, AllErrors(), options).reflectance, one.reflectance);
    }
}

TEST_F(PrintedPatch, CoversTheAreaOfADisc)
{
    for (const double diameter : {0.5, 1.0, 1.5, 4.0}) {
        options.dotDiameter = diameter;
        const CBitImage dot = OneDot();
        const double area = std::numbers::pi / 4 * diameter * diameter;
        // Rounded to one of 256 sample points of a pixel.
        EXPECT_NEAR(Coverage(Patch_Collect(mask, 0, &dot, {}, options)), area, 0.5 / 256 + 1e-5);
    }
}

TEST_F(PrintedPatch, PutsADotInTheMiddleOfItsPixel)
{
    const CBitImage dot = OneDot();
    const SCentre centre = Centre(Patch_Collect(mask, 0, &dot, {}, options));
    EXPECT_NEAR(centre.x, 20.5, 0.005);
    EXPECT_NEAR(centre.y, 12.5, 0.005);
}

TEST_F(PrintedPatch, CoversPaperWhollyWhereDotsAreWideEnough)
{
    // A disc of the pixel's diagonal reaches its corners.
    options.dotDiameter = 1.5;
    const SPatch patch = Patch_Collect(mask, 0, nullptr, {}, options);
    const auto [darkest, lightest] = std::ranges::minmax(patch.reflectance);
    EXPECT_FLOAT_EQ(darkest, static_cast<float>(INK_REFLECTANCE));
    EXPECT_LT(lightest, 0.05F); // threshold 0 is never printed: a cell here and there
    EXPECT_EQ(std::ranges::count(patch.reflectance, darkest),
              static_cast<std::ptrdiff_t>(patch.reflectance.size()));
}
