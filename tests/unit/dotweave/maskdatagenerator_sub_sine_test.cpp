// The rows whose dots a worker moves along the sine mask.

#include "maskdatagenerator_sub.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "generatorjob.h"
#include "plainmask.h"
#include "worker.h"

namespace {

/// A band with sine rows: 17 feather rows of 37 in steps of 20, the sine in 8 of them at either end.
SPlainMask PlainMask_Sine(int xRes, int yRes, int bits)
{
    SPlainMask mask = PlainMask_Sliding(37, 20);
    mask.matrixColumns = 131;
    mask.matrixRows = 41;
    mask.isSine = true;
    return PlainMask_Resolved(mask, xRes, yRes, bits);
}

/// The dots of the rows that the sine mask moves dots between: those of the top, then those of the bottom.
CPlainDots SineRowsOf(const CPlainDots& dots, const SPlainMask& mask)
{
    const int featherRows = Plain_FeatherRows(mask.height, mask.step);
    const int sineRows = Plain_SineRows(featherRows, mask.matrixColumns);
    const auto row = [&](int y) {
        return dots.begin() + static_cast<std::ptrdiff_t>(y) * mask.matrixColumns;
    };
    CPlainDots rows(row(featherRows - sineRows), row(featherRows));
    rows.insert(rows.end(), row(std::max(mask.height - sineRows, featherRows)), row(mask.height));
    return rows;
}

TEST(WorkerSine, BlockOfTheSineRowsPerPass)
{
    CWorker worker(PlainMask_Sine(3, 2, 1));
    EXPECT_TRUE(worker.peek.OneLoop());
    EXPECT_EQ(worker.peek.ProcessState(), 2);
    ASSERT_NE(worker.peek.Blocks(), nullptr);
    for (int j = 0; j < 3; ++j) {
        EXPECT_EQ(worker.peek.Blocks()[j].Width(), 131);
        EXPECT_EQ(worker.peek.Blocks()[j].Height(), 16); // 8 at the top, 8 at the bottom
        EXPECT_EQ(worker.Dots(j), CPlainDots(std::size_t{16} * 131, 0));
    }
}

TEST(WorkerSine, NoBytesWithoutASineMask)
{
    CWorker worker(PlainMask_Small(3, 2, 1));
    EXPECT_TRUE(worker.peek.OneLoop());
    EXPECT_EQ(worker.peek.ProcessState(), 2);
    for (int j = 0; j < 3; ++j)
        EXPECT_EQ(worker.peek.Blocks()[j].MaskDataBytesCount(), 0);
}

TEST(WorkerSine, EveryBlockIsCutFromItsRegion)
{
    for (int bits = 1; bits <= 2; ++bits) {
        for (int xRes = 1; xRes <= 4; ++xRes) {
            for (int yRes = 1; yRes <= 3; ++yRes) {
                CWorker worker(PlainMask_Sine(xRes, yRes, bits));
                worker.RunTo(2);
                // The second item finds the dots of the first in the blocks.
                for (const int position : {0, 3}) {
                    const int color = position == 0 ? 0 : 2;
                    SCOPED_TRACE(testing::Message()
                                 << bits << " bits, " << xRes << " x " << yRes << ", position " << position);
                    worker.Work_Push(color, position, yRes - 1);
                    worker.RunTo(3);
                    EXPECT_TRUE(worker.peek.OneLoop());
                    EXPECT_EQ(worker.peek.ProcessState(), 4);
                    for (int k = 0; k < xRes; ++k)
                        EXPECT_EQ(worker.Dots(k),
                                  SineRowsOf(Plain_Dots(worker.job.mask, color, position, yRes - 1, k),
                                             worker.job.mask));
                    worker.RunTo(2);
                }
            }
        }
    }
}

TEST(WorkerSine, NothingMovesWithoutASineMask)
{
    CWorker worker(PlainMask_Small(2, 2, 1));
    worker.RunTo(2);
    worker.Work_Push(1, 1, 1);
    worker.RunTo(4);
    const std::vector<std::uint8_t> before = worker.job.Bytes();
    EXPECT_TRUE(worker.peek.OneLoop());
    EXPECT_EQ(worker.peek.ProcessState(), 5);
    EXPECT_EQ(worker.job.Bytes(), before);
}

TEST(WorkerSine, DotsOutsideTheSineMoveToTheTop)
{
    struct SCase {
        int height;
        int step;
        int width;
    };
    // Feather rows 12 of 132, a whole step, the whole band, odd numbers, and a mask without rows.
    for (const SCase& c : {SCase{132, 120, 544}, SCase{48, 24, 100}, SCase{24, 24, 61}, SCase{37, 20, 544},
                           SCase{21, 20, 544}, SCase{40, 20, 9}}) {
        for (int bits = 1; bits <= 2; ++bits) {
            SCOPED_TRACE(testing::Message() << c.height << " rows in steps of " << c.step << ", " << c.width
                                            << " columns, " << bits << " bits");
            SPlainMask mask = PlainMask_Sliding(c.height, c.step);
            mask.matrixColumns = c.width;
            mask.bits = bits;
            mask.xRes = 2;
            mask.isSine = true;
            CWorker worker(mask);
            worker.RunTo(2);
            worker.Work_Push(0, 0, 0);
            worker.RunTo(4);
            CPlainDots expected[2];
            for (int k = 0; k < 2; ++k) {
                CPlainDots dots = Plain_Dots(mask, 0, 0, 0, k);
                Plain_MoveDots(dots, c.width, c.height, Plain_FeatherRows(c.height, c.step));
                expected[k] = SineRowsOf(dots, mask);
            }
            EXPECT_TRUE(worker.peek.OneLoop());
            EXPECT_EQ(worker.peek.ProcessState(), 5);
            EXPECT_EQ(worker.Dots(0), expected[0]);
            EXPECT_EQ(worker.Dots(1), expected[1]);
        }
    }
}

TEST(WorkerSine, FirstColumnKeepsItsFirstRow)
{
    // 40 feather rows, 544 columns: min(20, 54) = 20 sine rows, rows 20 to 39 of the top and 60 to 79 of the
    // bottom. Column 0 is under the curve in its first row alone, column 272 in all of them.
    SPlainMask mask = PlainMask_Sliding(80, 40);
    mask.isSine = true;
    CWorker worker(mask);
    worker.RunTo(2);
    worker.Work_Push(0, 0, 0);
    worker.RunTo(4);
    CMaskBlock& block = worker.peek.Blocks()[0]; // rows 0 to 19: the top; rows 20 to 39: the bottom
    ASSERT_EQ(block.Height(), 40);
    block.ClearMaskData();
    for (std::ptrdiff_t y = 20; y < 40; ++y) {
        block.MaskData()[y * 544] = 1;
        block.MaskData()[y * 544 + 272] = 1;
    }
    EXPECT_TRUE(worker.peek.OneLoop());
    for (std::ptrdiff_t y = 0; y < 40; ++y) {
        EXPECT_EQ(block.MaskData()[y * 544], (y >= 1 && y < 20) || y == 20 ? 1 : 0) << y;
        EXPECT_EQ(block.MaskData()[y * 544 + 272], y >= 20 ? 1 : 0) << y;
    }
}

TEST(WorkerSine, AllItemsMakeThePlainBytes)
{
    for (int bits = 1; bits <= 2; ++bits) {
        for (int xRes = 1; xRes <= 3; ++xRes) {
            CWorker worker(PlainMask_Sine(xRes, 2, bits));
            worker.RunTo(2);
            for (int color = 0; color < 3; ++color) {
                for (int position = 0; position < 4; ++position) {
                    for (int r = 0; r < 2; ++r) {
                        worker.Work_Push(color, position, r);
                        worker.RunTo(6);
                        worker.RunTo(2);
                    }
                }
            }
            EXPECT_EQ(worker.job.Bytes(), Plain_Bytes(worker.job.mask)) << bits << " bits, " << xRes;
        }
    }
}

} // namespace
