#include "view/cuttableview.h"

#include "temporarydirectory.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using namespace dotweave;

namespace {

SCutTableView View(const SMaskParam& param)
{
    CMaskData_Base mask;
    EXPECT_TRUE(mask.Create(param));
    return CutTable_View(mask);
}

} // namespace

TEST(CutTableView, HasARowPerNozzleRow)
{
    const SCutTableView view = View({544, 4, 1, 1, 4, 1, 0, 50.0F, 1, 1, 100, 0});
    EXPECT_EQ(view.stepRows, 136);
    ASSERT_EQ(view.rows.size(), 544U);
    for (std::size_t row = 0; row < view.rows.size(); ++row) { // pass i has i * 65535 / 4, truncated
        const std::size_t pass = row / 136;
        EXPECT_EQ(view.rows[row].lowerLimit, pass * 65535 / 4);
        EXPECT_EQ(view.rows[row].upperLimit, (pass + 1) * 65535 / 4);
    }
}

TEST(CutTableView, CountsRowsBeforeResolution)
{
    const SCutTableView plain = View({544, 4, 1, 1, 1, 1, 0, 50.0F, 2, 1, 80, 0});
    const SCutTableView tall = View({544, 4, 1, 2, 1, 1, 0, 50.0F, 2, 1, 80, 0});
    EXPECT_EQ(plain.stepRows, tall.stepRows);
    EXPECT_TRUE(CutTable_Text(plain) == CutTable_Text(tall));
}

TEST(CutTableView, TextIsTheDumpOfTheLibrary)
{
    const CTemporaryDirectory directory;
    std::mt19937 random(20240607); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same tables in every run
    std::vector<SCutTable> rows = {{0, 65535}, {65535, 0}, {0, 0}, {39321, 13107}, {9, 99}};
    for (int i = 0; i < 1000; ++i)
        rows.push_back(
            {static_cast<std::uint16_t>(random()), static_cast<std::uint16_t>(random() >> i % 16)});
    ASSERT_TRUE(
        CMaskData_Base::OutputCutTable(rows.data(), static_cast<int>(rows.size()), directory.Sub("dump")));
    EXPECT_EQ(CutTable_Text({rows, 1}), File_Read(directory.Sub("dump")));
}

TEST(CutRange, SizeIsTheThresholdsThatPrint)
{
    EXPECT_EQ(CutRange_Size({65535, 0}), 65535);
    EXPECT_EQ(CutRange_Size({39321, 13107}), 26214);
    EXPECT_EQ(CutRange_Size({7, 7}), 0);
    EXPECT_EQ(CutRange_Size({100, 200}), 0);
}
