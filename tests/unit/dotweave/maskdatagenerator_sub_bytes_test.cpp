// Which bytes of the mask a worker writes, and what they are.

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

TEST(WorkerBytes, BoundsAreOpenBelowAndClosedAbove)
{
    SPlainMask mask = PlainMask_Small(1, 1, 1);
    mask.positionCount = 1;
    CWorker worker(mask);
    std::uint16_t* plane = worker.job.planes.MaskData(0);
    std::fill_n(plane, 13 * 5, std::uint16_t{0});
    plane[0] = 100;
    plane[1] = 101;
    plane[2] = 200;
    plane[3] = 201;
    std::fill(worker.job.mask.table.begin(), worker.job.mask.table.end(), SCutTable{200, 100});
    worker.RunTo(2);
    worker.Work_Push(0, 0, 0);
    worker.RunTo(6);
    std::vector<std::uint8_t> bytes = worker.job.Bytes();
    bytes.resize(14); // colour 0: 7 lines of 13 pixels, 2 bytes each
    EXPECT_EQ(bytes, (std::vector<std::uint8_t>{0x60, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x60, 0, 0, 0}))
        << "columns 1 and 2 of rows 0 and 5, which is plane row 0 again";
}

/// One row of thresholds of which a single column lies inside the range. @return the bytes of its line
std::vector<unsigned int> LineOfColumn(int xRes, int bits, int columns, int column)
{
    SPlainMask mask = PlainMask_Sliding(1, 1);
    mask.matrixColumns = columns;
    mask.matrixRows = 1;
    mask.xRes = xRes;
    mask.bits = bits;
    CWorker worker(mask);
    std::fill_n(worker.job.planes.MaskData(0), columns, std::uint16_t{0});
    worker.job.planes.MaskData(0)[column] = 1;
    worker.RunTo(2);
    worker.Work_Push(0, 0, 0);
    worker.RunTo(6);
    const std::vector<std::uint8_t> bytes = worker.job.Bytes();
    return {bytes.begin(), bytes.end()};
}

TEST(WorkerBytes, TwoPassesOfOneBitAlternate)
{
    using CBytes = std::vector<unsigned int>;
    // Of four columns, pass 1 reads from column 2 on: column c is x = c of pass 0 and x = c + 2 of pass 1.
    EXPECT_EQ(LineOfColumn(2, 1, 4, 0), CBytes{0x84}); // x0 of pass 0: bit 7; x2 of pass 1: bit 2
    EXPECT_EQ(LineOfColumn(2, 1, 4, 1), CBytes{0x21}); // x1: bit 5; x3: bit 0
    EXPECT_EQ(LineOfColumn(2, 1, 4, 2), CBytes{0x48}); // x2: bit 3; x0: bit 6
    EXPECT_EQ(LineOfColumn(2, 1, 4, 3), CBytes{0x12}); // x3: bit 1; x1: bit 4
    // Of five columns too (5 / 2 is 2): x4 of pass 0 opens the second byte, x2 of pass 1 is bit 2 of the
    // first.
    EXPECT_EQ(LineOfColumn(2, 1, 5, 4), (CBytes{0x04, 0x80}));
}

TEST(WorkerBytes, FourDotsOfTwoBitsShareAByte)
{
    using CBytes = std::vector<unsigned int>;
    EXPECT_EQ(LineOfColumn(1, 2, 4, 0), CBytes{0xC0});
    EXPECT_EQ(LineOfColumn(1, 2, 4, 1), CBytes{0x30});
    EXPECT_EQ(LineOfColumn(1, 2, 4, 2), CBytes{0x0C});
    EXPECT_EQ(LineOfColumn(1, 2, 4, 3), CBytes{0x03});
    // Three passes of three columns read from columns 0, 1 and 2: column 0 is x0, x2 and x1, dots 0, 7 and 5
    // of nine.
    EXPECT_EQ(LineOfColumn(3, 2, 3, 0), (CBytes{0xC0, 0x33, 0x00}));
}

TEST(WorkerBytes, WritesTheItemsOwnLinesAlone)
{
    SPlainMask mask = PlainMask_Small(2, 3, 1);
    CWorker worker(mask);
    std::fill(worker.job.mask.table.begin(), worker.job.mask.table.end(), SCutTable{65535, 0}); // all dots
    std::fill_n(worker.job.planes.MaskData(1), 13 * 5, std::uint16_t{1});
    worker.RunTo(2);
    worker.Work_Push(1, 2, 1);
    worker.RunTo(6);
    const std::vector<std::uint8_t> bytes = worker.job.Bytes();
    // 26 pixels: 4 bytes a line. Color 1, position 2, lines 1, 4, 7, ... of 21.
    ASSERT_EQ(bytes.size(), 3U * 4U * 21U * 4U);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::size_t line = i / 4;
        const bool isOwn = line / 21 == 1 * 4 + 2 && line % 21 % 3 == 1;
        const unsigned int full = i % 4 == 3 ? 0xC0U : 0xFFU;
        EXPECT_EQ(bytes[i], isOwn ? full : 0U) << i;
    }
}

TEST(WorkerBytes, AllItemsMakeThePlainBytes)
{
    for (int bits = 1; bits <= 2; ++bits) {
        for (int xRes = 1; xRes <= 4; ++xRes) {
            for (int yRes = 1; yRes <= 4; ++yRes) {
                CWorker worker(PlainMask_Small(xRes, yRes, bits));
                worker.RunTo(2);
                for (int color = 2; color >= 0; --color) { // any order gives the same bytes
                    for (int position = 0; position < 4; ++position) {
                        for (int r = yRes - 1; r >= 0; --r) {
                            worker.Work_Push(color, position, r);
                            worker.RunTo(6);
                            worker.RunTo(2);
                        }
                    }
                }
                EXPECT_EQ(worker.job.Bytes(), Plain_Bytes(worker.job.mask))
                    << bits << " bits, " << xRes << " x " << yRes;
            }
        }
    }
}

TEST(WorkerBytes, NoResolutionPassesWriteNothing)
{
    struct SPasses {
        int xRes;
        int yRes;
    };
    for (const SPasses& passes : {SPasses{0, 2}, SPasses{1, 0}, SPasses{0, 0}}) {
        SCOPED_TRACE(testing::Message() << passes.xRes << " x " << passes.yRes);
        CWorker worker(PlainMask_Small(1, 2, 1));
        worker.job.param.splitCount_XRes = passes.xRes;
        worker.job.param.splitCount_YRes = passes.yRes; // a divisor of the item's threshold row
        worker.RunTo(2);
        worker.Work_Push(2, 1, 1);
        worker.RunTo(6);
        worker.RunTo(2);
        EXPECT_EQ(worker.job.Bytes(), std::vector<std::uint8_t>(worker.job.Bytes().size(), 0));
    }
}

TEST(WorkerBytes, ItemCountsWhenItsLinesAreWritten)
{
    CWorker worker(PlainMask_Small(2, 2, 1));
    worker.RunTo(2);
    for (int items = 0; items < 3; ++items) {
        worker.Work_Push(0, items, 1);
        worker.RunTo(5);
        EXPECT_EQ(worker.worker.ItemsWritten(), items);
        worker.RunTo(6);
        EXPECT_EQ(worker.worker.ItemsWritten(), items + 1);
        worker.RunTo(2);
    }
}

} // namespace
