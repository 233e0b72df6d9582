#include "sheet/tint.h"

#include "sheet/idealsheet.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <stdexcept>
#include <vector>

using namespace dotweave;

namespace {

std::int64_t InkedPixels(const CBitImage& image)
{
    std::int64_t count = 0;
    for (int y = 0; y < image.Height(); ++y) {
        for (int x = 0; x < image.Width(); ++x)
            count += image.Pixel(x, y) ? 1 : 0;
    }
    return count;
}

} // namespace

/// A matrix has four or five cells of every level, so a share is met to within five cells.
TEST(Tint, InksTheShareThatIsAskedFor)
{
    constexpr double CELLS = 544 * 544;
    EXPECT_EQ(InkedPixels(Tint_Make(0, 2)), 0);
    EXPECT_EQ(InkedPixels(Tint_Make(1, 2)), 544 * 544);
    for (const int matrix : {0, 1, 2, 3, 15}) {
        for (const double share : {0.01, 0.25, 0.4, 0.9})
            EXPECT_NEAR(static_cast<double>(InkedPixels(Tint_Make(share, matrix))), share * CELLS, 30)
                << matrix << ' ' << share;
    }
}

TEST(Tint, RefusesWhatIsNoShareOrNoMatrix)
{
    for (const double share : {-0.001, 1.001, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_THROW(Tint_Make(share, 0), std::invalid_argument);
    EXPECT_THROW(Tint_Make(0.5, -1), std::invalid_argument);
    EXPECT_THROW(Tint_Make(0.5, 16), std::invalid_argument);
}

/// The passes of a plane share its tint evenly: each of four prints a quarter. From the plane's own matrix one
/// pass would print all of a 25 % tint and another one nothing.
TEST(Tint, IsSharedEvenlyByThePasses)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create({544, 4, 1, 1, 16, 1, 0, 0, 0, 1, 100, 0}));
    const SSheetWindow window = SheetWindow_Cycle(CPassLayout(mask));
    for (int color = 0; color < 16; ++color) {
        const CBitImage tint = Tint_Make(0.25, Tint_Matrix(color));
        const CIdealSheet sheet(mask, color, window, &tint);
        std::vector<double> shares(sheet.Passes().size());
        double dots = 0;
        for (int line = 0; line < 136; ++line) { // under the same four passes
            for (int column = 0; column < sheet.ColumnCount(); ++column) {
                const int pass = sheet.FirstPass(line, column);
                if (pass < 0)
                    continue;
                ++shares[static_cast<std::size_t>(pass)];
                ++dots;
            }
        }
        for (std::size_t pass = 0; pass < 4; ++pass)
            EXPECT_NEAR(shares[pass] / dots, 0.25, 0.01) << "colour " << color << ", pass " << pass;
    }
}
