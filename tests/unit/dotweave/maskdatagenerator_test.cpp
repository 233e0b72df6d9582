// The producer: its items, its states and its sine mask.

#include "maskdatagenerator.h"

#include <cstddef>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "generatorjob.h"
#include "logcapture.h"
#include "logscopes.h"
#include "nolimit.h"
#include "peek.h"
#include "plainmask.h"

namespace {

using CItem = std::tuple<int, int, int>; // color, position, splitIndex_YRes
using CItemBuffer = CKelPtrQueueBuffer<SMaskDataGenerate_SubParam>;

/// A producer without its threads: the test calls its steps.
class CProducer {
public:
    CProducer(int colorCount, int positionCount, int splitCount_YRes, int poolSize)
    {
        peek.Param().colorCount = colorCount;
        peek.Param().positionCount = positionCount;
        peek.Param().splitCount_YRes = splitCount_YRes;
        peek.QueueBuffer() = std::make_unique<CItemBuffer>();
        std::vector<SMaskDataGenerate_SubParam*> items;
        items.reserve(static_cast<std::size_t>(poolSize));
        for (int i = 0; i < poolSize; ++i)
            items.push_back(new SMaskDataGenerate_SubParam{-1, -1, -1}); // the queues' from here on
        peek.QueueBuffer()->Create(items, "pool");
        peek.ProcessState() = 1;
    }

    CKelPtrQueue<SMaskDataGenerate_SubParam>& Free() { return *peek.QueueBuffer()->m_queue_Free; }
    CKelPtrQueue<SMaskDataGenerate_SubParam>& Work() { return *peek.QueueBuffer()->m_queue_Work; }

    /// Takes out what has been produced, as workers would, and gives the items back to the pool.
    std::vector<CItem> Produced()
    {
        std::vector<CItem> produced;
        for (SMaskDataGenerate_SubParam* item = nullptr; Work().TryPop(item);) {
            produced.emplace_back(item->color, item->position, item->splitIndex_YRes);
            EXPECT_TRUE(Free().TryPush(item));
        }
        return produced;
    }

    /// Runs the loop until all items have been produced. @return the items in order
    std::vector<CItem> RunToState3()
    {
        std::vector<CItem> produced;
        for (int loop = 0; peek.ProcessState() != 3 && loop < 1000; ++loop) {
            EXPECT_TRUE(peek.OneLoop());
            for (const CItem& item : Produced())
                produced.push_back(item);
        }
        EXPECT_EQ(peek.ProcessState(), 3);
        return produced;
    }

    CMaskDataGenerator generator;
    SMaskDataGenerator_Peek peek{generator};
};

/// A thread that has been stopped never starts.
bool HasBeenStopped(CMaskDataGenerator& generator)
{
    return !generator.Start("stopped");
}

TEST(Producer, ColoursThenPositionsThenPasses)
{
    CProducer producer(2, 3, 2, 12);
    EXPECT_TRUE(producer.peek.OneLoop());
    EXPECT_EQ(producer.peek.ProcessState(), 2);
    for (int i = 0; i < 11; ++i) {
        EXPECT_TRUE(producer.peek.OneLoop());
        EXPECT_EQ(producer.peek.ProcessState(), 2) << i;
        EXPECT_FALSE(producer.Work().AddFinished_Get()) << i;
    }
    EXPECT_TRUE(producer.peek.OneLoop());
    EXPECT_EQ(producer.peek.ProcessState(), 3);
    EXPECT_TRUE(producer.Work().AddFinished_Get());
    const std::vector<CItem> expected = {{0, 0, 0}, {0, 0, 1}, {0, 1, 0}, {0, 1, 1}, {0, 2, 0}, {0, 2, 1},
                                         {1, 0, 0}, {1, 0, 1}, {1, 1, 0}, {1, 1, 1}, {1, 2, 0}, {1, 2, 1}};
    EXPECT_EQ(producer.Produced(), expected);
    EXPECT_EQ(producer.Free().Count(), 12U);
}

TEST(Producer, EveryItemOnceForAnyCounts)
{
    for (int colors = 1; colors <= 3; ++colors) {
        for (int positions = 1; positions <= 4; ++positions) {
            for (int splits = 1; splits <= 3; ++splits) {
                std::vector<CItem> expected;
                for (int color = 0; color < colors; ++color) {
                    for (int position = 0; position < positions; ++position) {
                        for (int split = 0; split < splits; ++split)
                            expected.emplace_back(color, position, split);
                    }
                }
                CProducer producer(colors, positions, splits, 12);
                EXPECT_EQ(producer.RunToState3(), expected);
            }
        }
    }
}

TEST(Producer, FirstItemEvenWithoutColours)
{
    // The bounds are tested after the push.
    CProducer producer(0, 3, 2, 12);
    EXPECT_EQ(producer.RunToState3(), (std::vector<CItem>{{0, 0, 0}}));
    EXPECT_TRUE(producer.Work().AddFinished_Get());
}

TEST(Producer, CountsOfZeroGiveTheFirstItems)
{
    EXPECT_EQ(CProducer(2, 0, 1, 12).RunToState3(), (std::vector<CItem>{{0, 0, 0}, {1, 0, 0}}));
    EXPECT_EQ(CProducer(1, 2, 0, 12).RunToState3(), (std::vector<CItem>{{0, 0, 0}, {0, 1, 0}}));
    EXPECT_EQ(CProducer(0, 0, 0, 12).RunToState3(), (std::vector<CItem>{{0, 0, 0}}));
}

TEST(Producer, StateOneStartsTheItemsOver)
{
    CProducer producer(2, 3, 2, 12);
    for (int i = 0; i < 6; ++i)
        EXPECT_TRUE(producer.peek.OneLoop());
    EXPECT_EQ(producer.Produced().size(), 5U);
    producer.peek.ProcessState() = 1;
    EXPECT_TRUE(producer.peek.OneLoop());
    EXPECT_EQ(producer.RunToState3().size(), 12U);
}

TEST(Producer, EmptyFreeQueueIsNoFailure)
{
    CProducer producer(2, 3, 2, 2);
    EXPECT_TRUE(producer.peek.OneLoop());
    EXPECT_TRUE(producer.peek.AddSourceData());
    EXPECT_TRUE(producer.peek.AddSourceData());
    EXPECT_TRUE(producer.peek.AddSourceData()); // no free item for its whole wait
    EXPECT_EQ(producer.peek.ProcessState(), 2);
    EXPECT_EQ(producer.Produced(), (std::vector<CItem>{{0, 0, 0}, {0, 0, 1}}));
    EXPECT_TRUE(producer.peek.AddSourceData()); // goes on where it was
    EXPECT_EQ(producer.Produced(), (std::vector<CItem>{{0, 1, 0}}));
}

TEST(Producer, FullWorkQueueTakesTheItemOut)
{
    CProducer producer(2, 3, 2, 1);
    auto other = std::make_unique<SMaskDataGenerate_SubParam>();
    ASSERT_TRUE(producer.Work().TryPush(other.get()));
    static_cast<void>(other.release()); // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the queue's now
    EXPECT_TRUE(producer.peek.OneLoop());
    const CLogCapture log;
    EXPECT_FALSE(producer.peek.OneLoop());
    EXPECT_EQ(log.Records(), (std::vector<SLogRecord>{
                                 Failure(UNIT_GENERATOR, SCOPE_GENERATOR_ADD),
                                 {SCOPE_GENERATOR_LOOP, UNIT_GENERATOR, LINE_ANY, 2, "m_processState = 2"}}));
    EXPECT_EQ(producer.Free().Count(), 0U);
    EXPECT_EQ(producer.Work().Count(), 1U);
    EXPECT_TRUE(HasBeenStopped(producer.generator));
}

TEST(Producer, UnknownStateStopsTheThread)
{
    for (const int state : {0, 4, -1, 2147483647}) {
        CProducer producer(1, 1, 1, 1);
        producer.peek.ProcessState() = state;
        const CLogCapture log;
        EXPECT_FALSE(producer.peek.OneLoop());
        EXPECT_EQ(log.Records(), (std::vector<SLogRecord>{{SCOPE_GENERATOR_LOOP, UNIT_GENERATOR, LINE_ANY, 2,
                                                           "m_processState = " + std::to_string(state)}}));
        EXPECT_TRUE(HasBeenStopped(producer.generator));
    }
}

TEST(Producer, StateThreeEndsWithoutWorkers)
{
    CProducer producer(1, 1, 1, 1);
    producer.peek.ProcessState() = 3;
    const CLogCapture log;
    EXPECT_TRUE(producer.peek.OneLoop());
    EXPECT_TRUE(HasBeenStopped(producer.generator));
    EXPECT_TRUE(log.Records().empty());
}

TEST(Producer, StateThreeWaitsForAllWorkers)
{
    const SGeneratorJob job(PlainMask_Sliding(8, 4));
    CProducer producer(1, 1, 1, 12);
    producer.peek.Param() = job.param;
    for (int i = 0; i < 2; ++i) {
        producer.peek.SubThreads().push_back(std::make_unique<CMaskDataGenerator_Sub>());
        ASSERT_TRUE(producer.peek.SubThreads().back()->Create(&producer.peek.Param(),
                                                              producer.peek.QueueBuffer().get(), nullptr));
    }
    producer.peek.ProcessState() = 3;
    EXPECT_TRUE(producer.peek.OneLoop());
    EXPECT_EQ(producer.peek.ProcessState(), 3);
    // Nobody has announced the end, so the workers still poll the empty queue.
    EXPECT_FALSE(producer.peek.SubThreads()[0]->Wait_Exit(0));
    EXPECT_FALSE(producer.peek.SubThreads()[1]->Wait_Exit(0));
    producer.Work().AddFinished_Set();
    EXPECT_TRUE(producer.peek.SubThreads()[0]->Wait_Exit(NO_LIMIT_MS));
    EXPECT_TRUE(producer.peek.SubThreads()[1]->Wait_Exit(NO_LIMIT_MS));
    EXPECT_TRUE(producer.peek.OneLoop());
    EXPECT_TRUE(HasBeenStopped(producer.generator));
}

TEST(Producer, OnlyTypeThreeBuildsASineMask)
{
    for (const int type : {-1, 0, 1, 2, 4, 5}) {
        CMaskDataGenerator generator;
        SMaskDataGenerator_Peek peek{generator};
        peek.Param().featherNozzleType = type;
        peek.Param().rowStep = 0; // not even looked at
        EXPECT_TRUE(peek.Init_SinMask()) << type;
        EXPECT_EQ(peek.SineMask(), nullptr) << type;
    }
}

TEST(Producer, FeatherRowsOverlapTheNextBand)
{
    struct SCase {
        int blockHeight;
        int rowStep;
        int featherHeight;
    };
    for (const SCase& c : {SCase{132, 120, 12}, SCase{240, 120, 120}, SCase{120, 120, 120},
                           SCase{119, 120, 119}, SCase{544, 85, 34}}) {
        CMaskDataGenerator generator;
        SMaskDataGenerator_Peek peek{generator};
        peek.Param().featherNozzleType = 3;
        peek.Param().blockHeight = c.blockHeight;
        peek.Param().rowStep = c.rowStep;
        peek.Param().thresholdWidth = 544;
        peek.Param().dotBits = 2;
        ASSERT_TRUE(peek.Init_SinMask());
        ASSERT_NE(peek.SineMask(), nullptr);
        EXPECT_EQ(peek.SineMask()->FeatherHeight_Get(), c.featherHeight);
        EXPECT_EQ(peek.SineMask()->MaskWidth_Get(), 544);
        ASSERT_NE(peek.SineMask()->MaskBuffer_Down_Get(), nullptr); // the stored kind
        EXPECT_EQ(peek.SineMask()->MaskBuffer_Down_Get()[0], 3);    // of two bits per dot
    }
}

} // namespace
