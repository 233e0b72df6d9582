#include "figures/printshare.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

using namespace dotweave;

namespace {

/// 16 nozzle rows, 2 passes; smooth-2 feathering, printed twice: its feather zones print once.
constexpr SMaskParam HARD = {16, 2, 1, 1, 1, 1, 0, 0, 0, 1, 100, 0};

class PrintShare : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(mask.Create(HARD)); }
    CIdealSheet Sheet(std::vector<int> deadRows = {}) const
    {
        return {mask, 0, {16, 32, 544}, nullptr, deadRows};
    }

    CMaskData_Base mask;
};

} // namespace

TEST_F(PrintShare, CountsPixelsAndLinesThatDiffer)
{
    const CIdealSheet sheet = Sheet();
    // Wanted is what is printed but for three pixels on two lines.
    const SPrintShare share = dotweave::PrintShare(sheet, [&sheet](int line, int column) {
        int wanted = sheet.Count(line, column);
        if ((line == 3 && (column == 5 || column == 9)))
            wanted += 1;
        if (line == 30 && column == 0)
            wanted -= 1;
        return wanted;
    });
    EXPECT_EQ(share.pixelCount, 32 * 544);
    EXPECT_EQ(share.lineCount, 32);
    EXPECT_EQ(share.fewerCount, 2);
    EXPECT_EQ(share.moreCount, 1);
    EXPECT_EQ(share.wrongLineCount, 2);
    EXPECT_DOUBLE_EQ(share.WrongShare(), 3.0 / (32 * 544));
    EXPECT_DOUBLE_EQ(share.WrongLineShare(), 2.0 / 32);
}

/// Of 295,936 cells the few of threshold 0 are never printed; asked for twice, every pixel is wrong.
TEST_F(PrintShare, OfHardEdgesIsNextToNothing)
{
    EXPECT_LT(PrintShare_Uniform(Sheet(), 1).WrongShare(), 1e-3);
    EXPECT_EQ(PrintShare_Uniform(Sheet(), 2).WrongShare(), 1);
    EXPECT_EQ(PrintShare_Uniform(Sheet(), 2).fewerCount, 32 * 544);
}

/// A dead row takes half of the pixels of every eighth line: two passes share each line.
TEST_F(PrintShare, OfADeadRowIsOneSixteenth)
{
    const SPrintShare share = PrintShare_Ideal(Sheet({3}), Sheet());
    EXPECT_NEAR(share.WrongShare(), 1.0 / 16, 0.01);
    EXPECT_EQ(share.WrongLineShare(), 1.0 / 8);
    EXPECT_EQ(share.moreCount, 0);
    EXPECT_THROW(PrintShare_Ideal(Sheet(), CIdealSheet(mask, 0, {16, 31, 544})), std::invalid_argument);
}
