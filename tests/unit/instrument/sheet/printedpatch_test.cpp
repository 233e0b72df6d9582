#include "sheet/printedpatch.h"

#include "sheet/tint.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <numeric>
#include <stdexcept>
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
            sum += (PaperLight() - static_cast<double>(reflectance)) /
                   (options.paperReflectance - options.inkReflectance);
        return sum;
    }
    /// Where the ink of a patch is, in pixels.
    struct SCentre {
        double x, y;
    };
    /// Weighs cells of an eighth of a pixel, which is fine enough for the middle of a dot.
    SCentre Centre(const CBitImage& image, const SSheetErrors& errors) const
    {
        SPatchOptions fineOptions = options;
        fineOptions.supersample = 8;
        fineOptions.wantsCells = true;
        SCentre centre = {0, 0};
        double sum = 0;
        Patch_Print(mask, 0, &image, errors, fineOptions, [&](const SPatchLines& lines) {
            const float* cell = lines.cells;
            for (int y = lines.firstLine * 8; y < (lines.firstLine + lines.lineCount) * 8; ++y) {
                for (int x = 0; x < lines.width * 8; ++x, ++cell) {
                    const double ink = PaperLight() - static_cast<double>(*cell);
                    sum += ink;
                    centre.x += ink * (x + 0.5) / 8;
                    centre.y += ink * (y + 0.5) / 8;
                }
            }
        });
        return {centre.x / sum, centre.y / sum};
    }
    /// What blank pixels have.
    double PaperLight() const { return static_cast<double>(static_cast<float>(options.paperReflectance)); }

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
            for (const int supersample : {1, 3}) {
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
    const SCentre centre = Centre(dot, {});
    EXPECT_NEAR(centre.x, 20.5, 0.005);
    EXPECT_NEAR(centre.y, 12.5, 0.005);
}

TEST_F(PrintedPatch, CoversPaperWhollyWithWideDots)
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

/// Each error moves the ink of one dot as far as its number says.
TEST_F(PrintedPatch, MovesADotAsFarAsTheErrorSays)
{
    const CIdealSheet ideal(mask, 0, options.window);
    int tested = 0;
    for (const int x : {12, 17, 20, 25}) {
        for (const int y : {6, 9, 13, 16}) {
            if (ideal.Count(y, x) != 1)
                continue;
            ++tested;
            const SPixelPrint print = ideal.Prints(y, x)[0];
            const CBitImage dot = OneDot(x, y);
            const auto shifted = [&](const SSheetErrors& errors) {
                const SCentre centre = Centre(dot, errors);
                return SCentre{centre.x - x - 0.5, centre.y - y - 0.5};
            };
            SSheetErrors errors;
            errors.advanceConstant = 0.25;
            EXPECT_NEAR(shifted(errors).y, 0.25 * static_cast<double>(print.pass.number), 0.02);
            EXPECT_NEAR(shifted(errors).x, 0, 0.01);
            errors = {};
            errors.tilt = 0.1;
            EXPECT_NEAR(shifted(errors).x, 0.1 * (print.row - 7.5), 0.02);
            EXPECT_NEAR(shifted(errors).y, 0, 0.01);
            errors = {};
            errors.bidirectional = 2.25;
            EXPECT_NEAR(shifted(errors).x, print.pass.number % 2 == 1 ? 2.25 : 0, 0.01);
        }
    }
    EXPECT_GT(tested, 8);
}

TEST_F(PrintedPatch, LaysAsMuchInkAsARowHas)
{
    const CIdealSheet ideal(mask, 0, options.window);
    const int row = ideal.FirstRow(12, 20);
    ASSERT_GE(row, 0);
    const CBitImage dot = OneDot();
    const double full = Coverage(Patch_Collect(mask, 0, &dot, {}, options));
    for (const double volume : {0.0, 0.25, 0.5, 1.0, 2.0}) {
        SSheetErrors errors;
        errors.weakRows = {{row, volume}};
        EXPECT_NEAR(Coverage(Patch_Collect(mask, 0, &dot, errors, options)), volume * full, 0.005) << volume;
    }
    SSheetErrors errors;
    errors.deadRows = {row};
    EXPECT_NEAR(Coverage(Patch_Collect(mask, 0, &dot, errors, options)), 0, 1e-6);
    errors.deadRows = {row == 0 ? 1 : 0};
    EXPECT_NEAR(Coverage(Patch_Collect(mask, 0, &dot, errors, options)), full, 1e-6);
}

/// Dots that do not touch: no error of place changes how much ink is on the paper.
TEST_F(PrintedPatch, KeepsTheInkWhenDotsMove)
{
    options.window = {160, 300, 300};
    options.dotDiameter = 0.4;
    options.supersample = 8;
    const CBitImage tint = Tint_Make(0.2, 2);
    const double ideal = Coverage(Patch_Collect(mask, 0, &tint, {}, options));
    SSheetErrors errors = AllErrors();
    errors.deadRows = {};
    errors.weakRows = {};
    errors.volumeSigma = 0;
    errors.advanceConstant = 0; // which stretches the paper, and so would thin the ink
    errors.rowSigmaX = errors.rowSigmaY = 0.02;
    const double moved = Coverage(Patch_Collect(mask, 0, &tint, errors, options));
    EXPECT_NEAR(moved / ideal, 1, 0.01); // what crosses the sides of the patch
    errors.volumeSigma = 0.3;
    const double scattered = Coverage(Patch_Collect(mask, 0, &tint, errors, options));
    // 18,000 dots of 30 % scatter: a standard deviation of 0.2 %.
    EXPECT_NEAR(scattered / moved, 1, 0.01);
}

/// With a constant error of e on moves of m pitches the paper is longer by 1 + e / m, and the ink thinner.
TEST_F(PrintedPatch, StretchesThePaperByTheConstantError)
{
    options.window = {160, 400, 200};
    options.dotDiameter = 0.4;
    const CBitImage tint = Tint_Make(0.3, 2);
    const double ideal = Coverage(Patch_Collect(mask, 0, &tint, {}, options));
    SSheetErrors errors;
    errors.advanceConstant = 0.5; // dots of the next pass go between those of this one and touch none
    EXPECT_NEAR(Coverage(Patch_Collect(mask, 0, &tint, errors, options)) / ideal, 8.0 / 8.5, 0.01);
}

TEST_F(PrintedPatch, DarkensByLayersWhereDensitiesAdd)
{
    // Every pixel twice, by dots that cover their pixel wholly: at least two layers everywhere.
    options.overlap = EOverlap::Density;
    options.inkReflectance = 0.4;
    options.paperReflectance = 0.8;
    options.dotDiameter = 0.5;
    const CBitImage dot = OneDot();
    const double area = std::numbers::pi / 16;
    const int prints = CIdealSheet(twice, 0, options.window).Count(12, 20);
    ASSERT_EQ(prints, 2);
    const SPatch patch = Patch_Collect(twice, 0, &dot, {}, options);
    // Two layers reflect 0.8 * (1/2)^2 = 0.2 on the area of the dot.
    EXPECT_NEAR(static_cast<double>(patch.reflectance[12 * 40 + 20]), 0.8 - area * (0.8 - 0.2), 0.002);
    options.overlap = EOverlap::Union;
    const SPatch once = Patch_Collect(twice, 0, &dot, {}, options);
    EXPECT_NEAR(static_cast<double>(once.reflectance[12 * 40 + 20]), 0.8 - area * (0.8 - 0.4), 0.002);
}

/// Sixteen layers and more count as fifteen: white ink of 1 % each would tell them apart.
TEST_F(PrintedPatch, CountsUpToFifteenLayers)
{
    options.overlap = EOverlap::Density;
    options.dotDiameter = 6; // 28 dots on every point
    options.paperReflectance = 0.9;
    options.inkReflectance = 0.9 * 0.99;
    const SPatch patch = Patch_Collect(mask, 0, nullptr, {}, options);
    for (const float reflectance : patch.reflectance)
        ASSERT_NEAR(static_cast<double>(reflectance), 0.9 * std::pow(0.99, 15), 1e-6);
}

TEST_F(PrintedPatch, RefusesOptionsBesideTheirRanges)
{
    EXPECT_EQ(PatchOptions_Refusal(options), "");
    const auto refused = [this](const std::function<void(SPatchOptions&)>& change) {
        SPatchOptions changed = options;
        change(changed);
        EXPECT_THROW(Patch_Print(mask, 0, nullptr, {}, changed, [](const SPatchLines&) {}),
                     std::invalid_argument);
        return PatchOptions_Refusal(changed);
    };
    EXPECT_EQ(refused([](auto& o) { o.supersample = 17; }), "supersample 17 is not from 1 to 16");
    EXPECT_EQ(refused([](auto& o) { o.dotDiameter = 0; }), "dotDiameter 0 is not from 0.1 to 8");
    EXPECT_EQ(refused([](auto& o) { o.dotDiameter = std::numeric_limits<double>::quiet_NaN(); }),
              "dotDiameter nan is not from 0.1 to 8");
    EXPECT_EQ(refused([](auto& o) { o.inkReflectance = 0.9; }),
              "inkReflectance 0.9 is not from 0.0001 to 0.876");
    EXPECT_EQ(refused([](auto& o) { o.window.lineCount = 0; }),
              "window.lineCount 0 is not from 1 to 1.67772e+07");
    EXPECT_EQ(refused([](auto& o) { o.threadCount = -1; }), "threadCount -1 is not from 0 to 1024");
}

TEST_F(PrintedPatch, EndsWithTheExceptionOfItsSink)
{
    EXPECT_THROW(Patch_Print(mask, 0, nullptr, {}, options,
                             [](const SPatchLines&) { throw std::runtime_error("full"); }),
                 std::runtime_error);
}
