#include "maskdatagenerator_sub.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "../support/generatorjob.h"
#include "../support/logcapture.h"
#include "../support/logscopes.h"
#include "../support/peek.h"
#include "../support/plainmask.h"
#include "../support/refusedrequest.h"

namespace {

constexpr unsigned int NO_LIMIT_MS = 0xFFFFFFFFU;

using CItemBuffer = CKelPtrQueueBuffer<SMaskDataGenerate_SubParam>;

/// A worker without its thread: the test calls its steps.
class CWorker {
public:
    explicit CWorker(const SPlainMask& mask, int poolSize = 12) : job(mask)
    {
        std::vector<SMaskDataGenerate_SubParam*> items;
        items.reserve(static_cast<std::size_t>(poolSize));
        for (int i = 0; i < poolSize; ++i)
            items.push_back(new SMaskDataGenerate_SubParam{}); // the queues' from here on
        buffer.Create(items, "pool");
        if (mask.isSine) {
            sine = std::make_unique<CSineMask>();
            sine->Create(Plain_FeatherRows(mask.height, mask.step), mask.matrixColumns, mask.bits,
                         SinMaskType_Stored);
        }
        peek.Inputs(&job.param, &buffer, sine.get());
        peek.ProcessState() = 1;
    }

    void Work_Push(int color, int position, int splitIndex_YRes)
    {
        SMaskDataGenerate_SubParam* item = nullptr;
        ASSERT_TRUE(buffer.m_queue_Free->TryPop(item));
        *item = {color, position, splitIndex_YRes};
        ASSERT_TRUE(buffer.m_queue_Work->TryPush(item));
    }

    /// Runs whole steps until the worker is in this state.
    void RunTo(int state)
    {
        for (int loop = 0; peek.ProcessState() != state && loop < 10; ++loop)
            ASSERT_TRUE(peek.OneLoop());
        ASSERT_EQ(peek.ProcessState(), state);
    }

    /// The dots of a block as 0 and 1. @return nothing when a byte is neither clear nor a full dot
    CPlainDots Dots(int blockIndex)
    {
        const CMaskBlock& block = peek.Blocks()[blockIndex];
        CPlainDots dots;
        for (int i = 0; i < block.MaskDataBytesCount(); ++i) {
            const int byte = block.MaskData_Const()[i];
            if (byte != 0 && byte != (1 << job.mask.bits) - 1)
                return {};
            dots.push_back(byte == 0 ? 0 : 1);
        }
        return dots;
    }

    SGeneratorJob job;
    CItemBuffer buffer;
    std::unique_ptr<CSineMask> sine;
    CMaskDataGenerator_Sub worker;
    SMaskDataGenerator_Sub_Peek peek{worker};
};

/// A thread that has been stopped never starts.
bool HasBeenStopped(CMaskDataGenerator_Sub& worker)
{
    return !worker.Start("stopped");
}

/// Three colours of four positions.
SPlainMask PlainMask_Resolved(SPlainMask mask, int xRes, int yRes, int bits)
{
    mask.colorCount = 3;
    mask.positionCount = 4;
    mask.xRes = xRes;
    mask.yRes = yRes;
    mask.bits = bits;
    return mask;
}

/// Small odd numbers: everything wraps and nothing is aligned.
SPlainMask PlainMask_Small(int xRes, int yRes, int bits)
{
    SPlainMask mask = PlainMask_Sliding(7, 3);
    mask.matrixColumns = 13;
    mask.matrixRows = 5;
    return PlainMask_Resolved(mask, xRes, yRes, bits);
}

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

TEST(MaskDataGeneratorSub, StateOneAllocatesABlockOfTheSineRowsPerXResolutionPass)
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

TEST(MaskDataGeneratorSub, StateOneAllocatesNoBytesForDotsThatNoSineMaskMoves)
{
    CWorker worker(PlainMask_Small(3, 2, 1));
    EXPECT_TRUE(worker.peek.OneLoop());
    EXPECT_EQ(worker.peek.ProcessState(), 2);
    for (int j = 0; j < 3; ++j)
        EXPECT_EQ(worker.peek.Blocks()[j].MaskDataBytesCount(), 0);
}

TEST(MaskDataGeneratorSub, StateTwoTakesTheNextItem)
{
    CWorker worker(PlainMask_Small(1, 2, 1));
    worker.RunTo(2);
    worker.Work_Push(2, 3, 1);
    EXPECT_TRUE(worker.peek.OneLoop());
    EXPECT_EQ(worker.peek.ProcessState(), 3);
    ASSERT_NE(worker.peek.SourceData(), nullptr);
    EXPECT_EQ(worker.peek.SourceData()->color, 2);
    EXPECT_EQ(worker.peek.SourceData()->position, 3);
    EXPECT_EQ(worker.peek.SourceData()->splitIndex_YRes, 1);
    EXPECT_EQ(worker.buffer.m_queue_Work->Count(), 0U);
}

TEST(MaskDataGeneratorSub, ANullItemLeavesTheWorkerWaiting)
{
    CWorker worker(PlainMask_Small(1, 1, 1));
    worker.RunTo(2);
    ASSERT_TRUE(worker.buffer.m_queue_Work->TryPush(nullptr));
    EXPECT_TRUE(worker.peek.OneLoop());
    EXPECT_EQ(worker.peek.ProcessState(), 2);
    EXPECT_EQ(worker.buffer.m_queue_Work->Count(), 0U);
    worker.Work_Push(0, 0, 0);
    EXPECT_TRUE(worker.peek.OneLoop());
    EXPECT_EQ(worker.peek.ProcessState(), 3);
}

TEST(MaskDataGeneratorSub, AnEmptyQueueDoesNotEndTheWorkerBeforeTheProducerHasFinished)
{
    CWorker worker(PlainMask_Small(1, 1, 1));
    worker.RunTo(2);
    EXPECT_TRUE(worker.peek.OneLoop());
    EXPECT_TRUE(worker.peek.OneLoop());
    EXPECT_EQ(worker.peek.ProcessState(), 2);
    EXPECT_EQ(worker.peek.SourceData(), nullptr);
    worker.Work_Push(0, 0, 0); // still at work
    worker.RunTo(6);
    worker.RunTo(2);
    EXPECT_FALSE(HasBeenStopped(worker.worker)); // it starts, and so it has not been stopped
    worker.buffer.m_queue_Work->AddFinished_Set();
    EXPECT_TRUE(worker.worker.Wait_Exit(NO_LIMIT_MS));
}

TEST(MaskDataGeneratorSub, ItemsThatWaitWhenTheProducerHasFinishedAreStillDone)
{
    CWorker worker(PlainMask_Small(1, 1, 1));
    worker.RunTo(2);
    worker.Work_Push(0, 0, 0);
    worker.Work_Push(0, 1, 0);
    worker.buffer.m_queue_Work->AddFinished_Set();
    for (int item = 0; item < 2; ++item) {
        worker.RunTo(6);
        worker.RunTo(2);
    }
    EXPECT_EQ(worker.buffer.m_queue_Free->Count(), 12U);
    EXPECT_TRUE(worker.peek.OneLoop()); // now there is nothing left
    EXPECT_EQ(worker.peek.ProcessState(), 2);
    EXPECT_TRUE(HasBeenStopped(worker.worker));
}

TEST(MaskDataGeneratorSub, TakingTheLastItemWakesTheOthersThatWaitForTheEnd)
{
    CWorker worker(PlainMask_Small(1, 1, 1));
    worker.RunTo(2);
    worker.Work_Push(0, 0, 0);
    worker.buffer.m_queue_Work->AddFinished_Set();
    EXPECT_TRUE(worker.peek.OneLoop()); // takes the last item, which resets the event
    EXPECT_EQ(worker.buffer.m_queue_Work->Count(), 0U);
    EXPECT_TRUE(worker.buffer.m_queue_Work->NotEmpty_Test());
}

TEST(MaskDataGeneratorSub, AFinishedProducerAndAnEmptyQueueEndTheWorkerWithoutALogRecord)
{
    CWorker worker(PlainMask_Small(1, 1, 1));
    worker.RunTo(2);
    worker.buffer.m_queue_Work->AddFinished_Set();
    const CLogCapture log;
    EXPECT_TRUE(worker.peek.OneLoop());
    EXPECT_EQ(worker.peek.ProcessState(), 2);
    EXPECT_TRUE(HasBeenStopped(worker.worker));
    EXPECT_TRUE(log.Records().empty());
}

TEST(MaskDataGeneratorSub, StateThreeCutsTheSineRowsOfEveryBlockFromItsOwnRegion)
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

TEST(MaskDataGeneratorSub, BoundsAreExclusiveBelowAndInclusiveAbove)
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

TEST(MaskDataGeneratorSub, WithoutASineMaskStateFourChangesNothing)
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

TEST(MaskDataGeneratorSub, StateFourMovesTheDotsOutsideTheSineFromTheBottomToTheTop)
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

TEST(MaskDataGeneratorSub, InTheFirstColumnOnlyTheFirstSineRowKeepsItsDots)
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

TEST(MaskDataGeneratorSub, StateFivePacksTwoPassesOfOneBitAlternately)
{
    using CBytes = std::vector<unsigned int>;
    // Of four columns, pass 1 reads from column 2 on: column c is x = c of pass 0 and x = c + 2 of pass 1.
    EXPECT_EQ(LineOfColumn(2, 1, 4, 0), CBytes{0x84}); // x0 of pass 0: bit 7; x2 of pass 1: bit 2
    EXPECT_EQ(LineOfColumn(2, 1, 4, 1), CBytes{0x21}); // x1: bit 5; x3: bit 0
    EXPECT_EQ(LineOfColumn(2, 1, 4, 2), CBytes{0x48}); // x2: bit 3; x0: bit 6
    EXPECT_EQ(LineOfColumn(2, 1, 4, 3), CBytes{0x12}); // x3: bit 1; x1: bit 4
    // Of five columns too (5 / 2 is 2): x4 of pass 0 opens the second byte, x2 of pass 1 is bit 2 of the first.
    EXPECT_EQ(LineOfColumn(2, 1, 5, 4), (CBytes{0x04, 0x80}));
}

TEST(MaskDataGeneratorSub, StateFivePacksFourDotsOfTwoBitsIntoAByte)
{
    using CBytes = std::vector<unsigned int>;
    EXPECT_EQ(LineOfColumn(1, 2, 4, 0), CBytes{0xC0});
    EXPECT_EQ(LineOfColumn(1, 2, 4, 1), CBytes{0x30});
    EXPECT_EQ(LineOfColumn(1, 2, 4, 2), CBytes{0x0C});
    EXPECT_EQ(LineOfColumn(1, 2, 4, 3), CBytes{0x03});
    // Three passes of three columns read from columns 0, 1 and 2: column 0 is x0, x2 and x1, dots 0, 7 and 5 of nine.
    EXPECT_EQ(LineOfColumn(3, 2, 3, 0), (CBytes{0xC0, 0x33, 0x00}));
}

TEST(MaskDataGeneratorSub, StateFiveWritesTheItemsOwnLinesAlone)
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

TEST(MaskDataGeneratorSub, AllItemsTogetherMakeThePlainBytes)
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

TEST(MaskDataGeneratorSub, AllItemsTogetherMakeThePlainBytesWithASineMaskToo)
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

TEST(MaskDataGeneratorSub, StateSixHandsTheItemBack)
{
    CWorker worker(PlainMask_Small(1, 1, 1));
    worker.RunTo(2);
    worker.Work_Push(0, 0, 0);
    worker.RunTo(6);
    EXPECT_EQ(worker.buffer.m_queue_Free->Count(), 11U);
    EXPECT_TRUE(worker.peek.OneLoop());
    EXPECT_EQ(worker.peek.ProcessState(), 2);
    EXPECT_EQ(worker.peek.SourceData(), nullptr);
    EXPECT_EQ(worker.buffer.m_queue_Free->Count(), 12U);
}

TEST(MaskDataGeneratorSub, AFreeQueueThatTakesNothingBackStopsTheWorkerWhichThenFreesTheItem)
{
    CWorker worker(PlainMask_Small(1, 1, 1), 1);
    worker.RunTo(2);
    worker.Work_Push(0, 0, 0);
    worker.RunTo(6);
    auto other = std::make_unique<SMaskDataGenerate_SubParam>();
    ASSERT_TRUE(worker.buffer.m_queue_Free->TryPush(other.get())); // full now
    static_cast<void>(other.release()); // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the queue's now
    const CLogCapture log;
    EXPECT_FALSE(worker.peek.OneLoop());
    EXPECT_EQ(log.Records(),
              (std::vector<SLogRecord>{Failure(UNIT_WORKER, SCOPE_WORKER_COMPLETE),
                                       {SCOPE_WORKER_LOOP, UNIT_WORKER, LINE_ANY, 2, "m_processState = 6"}}));
    EXPECT_NE(worker.peek.SourceData(), nullptr); // goes with the worker; the leak check would see it
    EXPECT_TRUE(HasBeenStopped(worker.worker));
}

TEST(MaskDataGeneratorSub, AnUnknownStateIsLoggedAndStopsTheWorkerWhichFreesTheItemItHolds)
{
    for (const int state : {0, 7, -1, 100}) {
        CWorker worker(PlainMask_Small(1, 1, 1));
        worker.RunTo(2);
        worker.Work_Push(0, 0, 0);
        worker.RunTo(3);
        worker.peek.ProcessState() = state;
        const CLogCapture log;
        EXPECT_FALSE(worker.peek.OneLoop());
        EXPECT_EQ(log.Records(), (std::vector<SLogRecord>{{SCOPE_WORKER_LOOP, UNIT_WORKER, LINE_ANY, 2,
                                                           "m_processState = " + std::to_string(state)}}));
        EXPECT_TRUE(HasBeenStopped(worker.worker));
        EXPECT_EQ(worker.buffer.m_queue_Free->Count(), 11U);
    }
}

TEST(MaskDataGeneratorSub, WithoutXResolutionPassesAnItemGoesThroughAndWritesNothing)
{
    CWorker worker(PlainMask_Small(1, 2, 1));
    worker.job.param.splitCount_XRes = 0;
    worker.RunTo(2);
    worker.Work_Push(2, 1, 1);
    worker.RunTo(6);
    worker.RunTo(2);
    const std::vector<std::uint8_t> bytes = worker.job.Bytes();
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), 0), static_cast<std::ptrdiff_t>(bytes.size()));
}

TEST(MaskDataGeneratorSub, NoMemoryForTheBlocksEndsTheWorkerWithItsState)
{
    if (REFUSED_REQUEST_IS_FATAL)
        GTEST_SKIP() << "the sanitizer does not let the allocation fail";
    CWorker worker(PlainMask_Small(1, 1, 1));
    worker.job.param.splitCount_XRes = -1; // as many blocks as no allocator has
    const CLogCapture log;
    EXPECT_FALSE(worker.peek.OneLoop());
    EXPECT_EQ(log.Records(),
              (std::vector<SLogRecord>{{SCOPE_WORKER_LOOP, UNIT_WORKER, LINE_ANY, 2, "m_processState = 1"}}));
    EXPECT_TRUE(HasBeenStopped(worker.worker));
}

TEST(MaskDataGeneratorSub, OnItsThreadTheWorkerDoesAllItemsAndEndsByItself)
{
    CWorker worker(PlainMask_Small(2, 2, 2));
    ASSERT_TRUE(worker.worker.Create(&worker.job.param, &worker.buffer, nullptr));
    for (int color = 0; color < 3; ++color) {
        for (int position = 0; position < 4; ++position) {
            for (int r = 0; r < 2; ++r) {
                SMaskDataGenerate_SubParam* item = nullptr;
                while (!worker.buffer.m_queue_Free->Pop(item, NO_LIMIT_MS)) {
                }
                *item = {color, position, r};
                ASSERT_TRUE(worker.buffer.m_queue_Work->Push(item));
            }
        }
    }
    worker.buffer.m_queue_Work->AddFinished_Set();
    EXPECT_TRUE(worker.worker.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(worker.buffer.m_queue_Free->Count(), 12U);
    EXPECT_EQ(worker.job.Bytes(), Plain_Bytes(worker.job.mask));
}

/// A worker that the platform refuses its thread.
class CRefusedWorker : public CMaskDataGenerator_Sub {
public:
    bool Start(const char* name) override
    {
        m_name = name;
        return false;
    }
    std::string m_name;
};

TEST(MaskDataGeneratorSub, AThreadThatDoesNotStartFailsCreate)
{
    CRefusedWorker worker;
    CItemBuffer buffer;
    const SMaskDataGenerate_Param param = {};
    const CLogCapture log;
    EXPECT_FALSE(worker.Create(&param, &buffer, nullptr));
    EXPECT_EQ(worker.m_name, "CMaskDataGenerator_Position");
    EXPECT_EQ(log.Records(), (std::vector<SLogRecord>{Failure(UNIT_WORKER, SCOPE_WORKER_CREATE)}));
}

TEST(MaskDataGeneratorSub, AWorkerThatIsStoppedInTheMiddleFreesItsItem)
{
    SPlainMask mask = PlainMask_Sliding(544, 136);
    mask.xRes = 4;
    CWorker worker(mask);
    worker.Work_Push(0, 0, 0);
    ASSERT_TRUE(worker.worker.Create(&worker.job.param, &worker.buffer, nullptr));
    worker.worker.Stop(); // wherever it is; the leak check sees what became of the item
    EXPECT_TRUE(worker.worker.Wait_Exit(NO_LIMIT_MS));
}

TEST(MaskDataGeneratorSub, AWorkerThatEndsWithAnItemInHandBlanksItsLines)
{
    // States 3 to 5: the lines are still to be written. Before and after, they are nobody's or done.
    for (int state = 1; state <= 6; ++state) {
        SCOPED_TRACE(state);
        CWorker test(PlainMask_Small(2, 2, 1));
        const CMaskBlock& block = test.job.block;
        std::fill_n(test.job.block.MaskData(), block.MaskDataBytesCount(), std::uint8_t{0xFF});
        test.peek.SourceData() = new SMaskDataGenerate_SubParam{1, 2, 1}; // the worker's from here on
        test.peek.ProcessState() = state;
        test.peek.Finally();
        const int line = test.job.param.maskLineBytes;
        const int lines = block.MaskDataBytesCount() / line;
        const int first = (1 * 4 + 2) * 7 * 2 + 1; // colour 1 of 4 positions of 7 rows in two passes; pass 1
        for (int at = 0; at < lines; ++at) {
            const bool isOwn = at >= first && at < first + 14 && (at - first) % 2 == 0;
            const int expected = isOwn && state >= 3 && state <= 5 ? 0 : 0xFF;
            EXPECT_EQ(block.MaskData_Const()[at * line], expected) << "line " << at;
            EXPECT_EQ(block.MaskData_Const()[at * line + line - 1], expected) << "line " << at;
        }
    }
}

} // namespace
