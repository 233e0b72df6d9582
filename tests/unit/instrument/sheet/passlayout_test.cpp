#include "sheet/passlayout.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace dotweave;

namespace {

/// The mode that docs/host.md draws: 8 nozzle rows, 2 passes, 2 x 2 resolution passes, hard edges.
class PassLayout : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(mask.Create({8, 2, 2, 2, 1, 1, 0, 0, 0, 1, 100, 0})); }

    CMaskData_Base mask;
};

/// The nozzle rows over one line in the first twelve passes, a dot for none.
std::string Rows_OverLine(const CPassLayout& layout, int line)
{
    std::string rows;
    for (int number = 0; number < 12; ++number) {
        const int row = layout.Row(layout.Pass(number), line);
        rows += row < 0 ? "." : std::to_string(row);
    }
    return rows;
}

} // namespace

TEST_F(PassLayout, PutsRowsWhereTheHostGuideDrawsThem)
{
    const std::vector<std::string> drawn = {
        "0...........", "............", "10..........", "............", "21..........",
        "..0.........", "32..........", "..10........", "43..0.......", "..21........",
        "54..10......", "..32........", "65..21......", "..43..0.....", "76..32......",
        "..54..10....", ".7..43..0...", "..65..21....", "....54..10..", "..76..32....",
        "....65..21..", "...7..43..0.", "....76..32..", "......54..10", ".....7..43.."};
    const CPassLayout layout(mask);
    for (int line = 0; line < static_cast<int>(drawn.size()); ++line)
        EXPECT_EQ(Rows_OverLine(layout, line), drawn[static_cast<std::size_t>(line)]) << "line " << line;
}

TEST_F(PassLayout, IsSteadyWhereTheLeadBlankEnds)
{
    EXPECT_EQ(CPassLayout(mask).SteadyLine_First(), 14);
    EXPECT_EQ(mask.LeadBlankHeight_IncludeRes(), 14);
}

TEST_F(PassLayout, GoesOnAboveBandZero)
{
    const CPassLayout layout(mask);
    const SHeadPass last = layout.Pass(-1); // band -1, r1k1: 7 lines below -8
    EXPECT_EQ(last.band, -1);
    EXPECT_EQ(last.position, layout.PositionCount() - 1);
    EXPECT_EQ(last.yPass, 1);
    EXPECT_EQ(last.xPass, 1);
    EXPECT_EQ(last.firstLine, -1);
    EXPECT_EQ(layout.Pass(0).firstLine, 0);
    EXPECT_EQ(layout.Pass(4).firstLine, 8);
}

TEST_F(PassLayout, ListsJustThePassesThatMeetTheLines)
{
    const CPassLayout layout(mask);
    for (int firstLine = -20; firstLine < 40; ++firstLine) {
        for (int lineCount = 1; lineCount < 12; ++lineCount) {
            std::vector<std::int64_t> expected, listed;
            for (std::int64_t number = -60; number < 60; ++number) {
                bool meets = false;
                for (int line = firstLine; line < firstLine + lineCount; ++line)
                    meets = meets || layout.Row(layout.Pass(number), line) >= 0;
                if (meets)
                    expected.push_back(number);
            }
            for (const SHeadPass& pass : layout.Passes(firstLine, lineCount))
                listed.push_back(pass.number);
            EXPECT_EQ(listed, expected) << lineCount << " lines from " << firstLine;
        }
    }
    EXPECT_TRUE(layout.Passes(14, 0).empty());
}

TEST_F(PassLayout, RepeatsAfterOneStepForEachPosition)
{
    const CPassLayout layout(mask);
    EXPECT_EQ(layout.CycleLines(), std::int64_t{8} * layout.PositionCount());
    const SHeadPass pass = layout.Pass(5);
    const SHeadPass later = layout.Pass(5 + 4 * layout.PositionCount());
    EXPECT_EQ(later.position, pass.position);
    EXPECT_EQ(later.firstLine, pass.firstLine + layout.CycleLines());
}
