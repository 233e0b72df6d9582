#include "sheet/idealsheet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

using namespace dotweave;

namespace {

/// 8 nozzle rows, 2 passes, 2 x 2 resolution passes, hard edges: steps of 8 lines.
constexpr SMaskParam SMALL = {8, 2, 2, 2, 1, 1, 0, 0, 0, 1, 100, 0};
/// 16 nozzle rows, 4 passes, each pixel printed three times.
constexpr SMaskParam THRICE = {16, 4, 1, 1, 1, 1, 0, 0, 0, 3, 100, 0};

class IdealSheet : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(small.Create(SMALL));
        ASSERT_TRUE(thrice.Create(THRICE));
    }
    static SSheetWindow Cycle(const CMaskData_Base& mask) { return SheetWindow_Cycle(CPassLayout(mask)); }

    CMaskData_Base small, thrice;
};

std::int64_t Dots(const CIdealSheet& sheet)
{
    std::int64_t dots = 0;
    for (const std::uint8_t count : sheet.Counts())
        dots += count;
    return dots;
}

} // namespace

TEST_F(IdealSheet, ShowsOneStepForEachPosition)
{
    const SSheetWindow window = Cycle(small);
    EXPECT_EQ(window.firstLine, 14);
    EXPECT_EQ(window.lineCount, 8 * CPassLayout(small).PositionCount());
    EXPECT_EQ(window.columnCount, 1088);
}

TEST_F(IdealSheet, RepeatsAfterItsWindow)
{
    SSheetWindow next = Cycle(small);
    const CIdealSheet sheet(small, 0, next);
    next.firstLine += next.lineCount;
    const CIdealSheet below(small, 0, next);
    EXPECT_TRUE(std::ranges::equal(sheet.Counts(), below.Counts()));
}

TEST_F(IdealSheet, NamesEveryPrintOfAPixel)
{
    for (CMaskData_Base* mask : {&small, &thrice}) {
        SSheetWindow window = Cycle(*mask);
        window.lineCount = std::min(window.lineCount, 40);
        window.columnCount = 64;
        const CIdealSheet sheet(*mask, 0, window);
        for (int line = 0; line < sheet.LineCount(); ++line) {
            for (int column = 0; column < sheet.ColumnCount(); ++column) {
                const std::vector<SPixelPrint> prints = sheet.Prints(line, column);
                ASSERT_EQ(static_cast<int>(prints.size()), sheet.Count(line, column));
                if (prints.empty()) {
                    EXPECT_EQ(sheet.FirstPass(line, column), -1);
                    EXPECT_EQ(sheet.FirstRow(line, column), -1);
                    EXPECT_EQ(sheet.FirstTurn(line, column), -1);
                    continue;
                }
                const auto first = static_cast<std::size_t>(sheet.FirstPass(line, column));
                EXPECT_EQ(sheet.Passes()[first].number, prints[0].pass.number);
                EXPECT_EQ(sheet.FirstRow(line, column), prints[0].row);
            }
        }
    }
}

/// In this mode each line meets four rows, two of each X resolution pass: turns 0 to 3.
TEST_F(IdealSheet, CountsTurnsByThePassesOverTheLine)
{
    SSheetWindow window = Cycle(small);
    const CIdealSheet sheet(small, 0, window);
    const CPassLayout& layout = sheet.Layout();
    for (int line = 0; line < sheet.LineCount(); ++line) {
        for (int column = 0; column < sheet.ColumnCount(); column += 7) {
            if (sheet.Count(line, column) == 0)
                continue;
            const std::vector<SHeadPass> meeting = layout.Passes(window.firstLine + line, 1);
            ASSERT_EQ(meeting.size(), 4U);
            const auto turn = static_cast<std::size_t>(sheet.FirstTurn(line, column));
            ASSERT_EQ(meeting[turn].number, sheet.Prints(line, column)[0].pass.number);
        }
    }
}

TEST_F(IdealSheet, PrintsOnlyWhatTheImageAsksFor)
{
    CBitImage image(100, 30, EImageEdge::Blank);
    for (int y = 0; y < 30; ++y) {
        for (int x = y % 3; x < 100; x += 3)
            image.Pixel_Set(x, y);
    }
    const SSheetWindow window = Cycle(thrice);
    const CIdealSheet full(thrice, 0, window);
    const CIdealSheet sheet(thrice, 0, window, &image);
    for (int line = 0; line < sheet.LineCount(); ++line) {
        for (int column = 0; column < sheet.ColumnCount(); ++column)
            ASSERT_EQ(sheet.Count(line, column), image.Pixel(column, line) ? full.Count(line, column) : 0);
    }
}

TEST_F(IdealSheet, LosesWhatADeadRowWouldPrint)
{
    const SSheetWindow window = Cycle(thrice);
    const CIdealSheet full(thrice, 0, window);
    const std::vector<int> deadRows = {5, -1, 16, 5}; // only row 5 exists
    const CIdealSheet sheet(thrice, 0, window, nullptr, deadRows);
    std::int64_t lost = 0;
    for (int line = 0; line < full.LineCount(); ++line) {
        for (int column = 0; column < full.ColumnCount(); ++column) {
            for (const SPixelPrint& print : full.Prints(line, column))
                lost += print.row == 5 ? 1 : 0;
        }
    }
    EXPECT_GT(lost, 0);
    EXPECT_EQ(Dots(sheet), Dots(full) - lost);
}

TEST_F(IdealSheet, RefusesAWindowWithoutPixels)
{
    EXPECT_THROW(CIdealSheet(small, 0, SSheetWindow{0, 0, 8}), std::invalid_argument);
    EXPECT_THROW(CIdealSheet(small, 0, SSheetWindow{0, 8, 0}), std::invalid_argument);
}
