#include "maskdatagenerator.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <tuple>
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

TEST(MaskDataGenerator, HandsOutColoursThenPositionsThenResolutionPasses)
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

TEST(MaskDataGenerator, ProducesEveryItemOnceForAnyCounts)
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

TEST(MaskDataGenerator, ProducesTheFirstItemEvenWhenThereAreNoColours)
{
    // The bounds are tested behind the push.
    CProducer producer(0, 3, 2, 12);
    EXPECT_EQ(producer.RunToState3(), (std::vector<CItem>{{0, 0, 0}}));
    EXPECT_TRUE(producer.Work().AddFinished_Get());
}

TEST(MaskDataGenerator, CountsOfZeroStillProduceTheFirstItemOfEachColour)
{
    EXPECT_EQ(CProducer(2, 0, 1, 12).RunToState3(), (std::vector<CItem>{{0, 0, 0}, {1, 0, 0}}));
    EXPECT_EQ(CProducer(1, 2, 0, 12).RunToState3(), (std::vector<CItem>{{0, 0, 0}, {0, 1, 0}}));
    EXPECT_EQ(CProducer(0, 0, 0, 12).RunToState3(), (std::vector<CItem>{{0, 0, 0}}));
}

TEST(MaskDataGenerator, StateOneStartsTheItemsOver)
{
    CProducer producer(2, 3, 2, 12);
    for (int i = 0; i < 6; ++i)
        EXPECT_TRUE(producer.peek.OneLoop());
    EXPECT_EQ(producer.Produced().size(), 5U);
    producer.peek.ProcessState() = 1;
    EXPECT_TRUE(producer.peek.OneLoop());
    EXPECT_EQ(producer.RunToState3().size(), 12U);
}

TEST(MaskDataGenerator, AFreeQueueThatStaysEmptyIsNoFailure)
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

TEST(MaskDataGenerator, AWorkQueueThatStaysFullFailsAndTakesTheItemOutOfCirculation)
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

TEST(MaskDataGenerator, AnUnknownStateIsLoggedAndStopsTheThread)
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

TEST(MaskDataGenerator, WithoutWorkersStateThreeEndsTheThreadAtOnce)
{
    CProducer producer(1, 1, 1, 1);
    producer.peek.ProcessState() = 3;
    const CLogCapture log;
    EXPECT_TRUE(producer.peek.OneLoop());
    EXPECT_TRUE(HasBeenStopped(producer.generator));
    EXPECT_TRUE(log.Records().empty());
}

TEST(MaskDataGenerator, StateThreeWaitsForAllWorkers)
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

TEST(MaskDataGenerator, OnlyTypeThreeBuildsASineMask)
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

TEST(MaskDataGenerator, TheFeatherRowsAreThePartOfABandThatOverlapsTheNext)
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

TEST(MaskDataGenerator, BuildsThePlainBytesWithSixWorkersWhateverIsAskedFor)
{
    SPlainMask mask = PlainMask_Sliding(24, 10);
    mask.colorCount = 2;
    mask.positionCount = 3;
    mask.xRes = 2;
    mask.yRes = 2;
    const std::vector<std::uint8_t> expected = Plain_Bytes(mask);
    for (const int workerCount : {1, 0, -3, 6, 100}) {
        SGeneratorJob job(mask);
        CMaskDataGenerator generator;
        SMaskDataGenerator_Peek peek{generator};
        EXPECT_EQ(peek.SubThreadCount(), 1); // until Create
        const CLogCapture log;
        ASSERT_TRUE(generator.Create(job.param, workerCount));
        EXPECT_EQ(peek.SubThreadCount(), 6);
        ASSERT_EQ(peek.SubThreads().size(), 6U);
        EXPECT_EQ(*peek.QueueBuffer()->m_name, "CMaskDataGenerator");
        EXPECT_TRUE(generator.Wait_Exit(NO_LIMIT_MS));
        EXPECT_EQ(job.Bytes(), expected);
        EXPECT_EQ(peek.QueueBuffer()->m_queue_Free->Count(), 12U); // all are home again
        EXPECT_EQ(peek.QueueBuffer()->m_queue_Work->Count(), 0U);
        for (const auto& worker : peek.SubThreads())
            EXPECT_TRUE(worker->Wait_Exit(0)); // the producer ends last
        EXPECT_TRUE(generator.Wait_Exit(0));
        EXPECT_TRUE(log.Records().empty());
    }
}

TEST(MaskDataGenerator, MovesTheDotsOfTypeThreeAlongTheSine)
{
    SPlainMask mask = PlainMask_Sliding(66, 44);
    mask.positionCount = 2;
    mask.yRes = 3;
    mask.bits = 2;
    const std::vector<std::uint8_t> plain = Plain_Bytes(mask);
    mask.isSine = true;
    const std::vector<std::uint8_t> expected = Plain_Bytes(mask);
    ASSERT_NE(expected, plain);
    SGeneratorJob job(mask);
    CMaskDataGenerator generator;
    ASSERT_TRUE(generator.Create(job.param, 6));
    ASSERT_TRUE(generator.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(job.Bytes(), expected);
}

TEST(MaskDataGenerator, ManySmallRunsAllEndAndLoseNothing)
{
    // Fewer items than workers, as many, and a few more: where the end meets the sleepers.
    for (int run = 0; run < 150; ++run) {
        SPlainMask mask = PlainMask_Sliding(4, 2);
        mask.matrixColumns = 16;
        mask.matrixRows = 8;
        mask.positionCount = 1 + run % 14;
        SGeneratorJob job(mask);
        CMaskDataGenerator generator;
        ASSERT_TRUE(generator.Create(job.param, 6));
        ASSERT_TRUE(generator.Wait_Exit(60000)) << "run " << run;
        ASSERT_EQ(job.Bytes(), Plain_Bytes(mask)) << "run " << run;
    }
}

TEST(MaskDataGenerator, AnExpiredWaitIsLoggedAndFalseAndTheRunGoesOn)
{
    SGeneratorJob job(PlainMask_Large());
    CMaskDataGenerator generator;
    ASSERT_TRUE(generator.Create(job.param, 6));
    const CLogCapture log;
    EXPECT_FALSE(generator.Wait_Exit(0));
    EXPECT_EQ(log.Records(), (std::vector<SLogRecord>{Failure(UNIT_GENERATOR, SCOPE_GENERATOR_WAIT)}));
    generator.Stop();
    EXPECT_TRUE(generator.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(log.Records().size(), 1U);
}

TEST(MaskDataGenerator, DestructionStopsARunningGeneratorBeforeAnythingItUsesGoes)
{
    const CLogCapture log;
    for (int run = 0; run < 15; ++run) {
        SPlainMask mask = PlainMask_Large();
        mask.isSine = true;
        SGeneratorJob job(mask); // goes right behind the generator
        CMaskDataGenerator generator;
        ASSERT_TRUE(generator.Create(job.param, 6));
    }
    EXPECT_TRUE(log.Records().empty());
}

TEST(MaskDataGenerator, StopFromAnotherThreadEndsTheRun)
{
    for (int run = 0; run < 5; ++run) {
        SGeneratorJob job(PlainMask_Large());
        CMaskDataGenerator generator;
        SMaskDataGenerator_Peek peek{generator};
        ASSERT_TRUE(generator.Create(job.param, 6));
        std::thread stopper([&generator] { generator.Stop(); });
        EXPECT_TRUE(generator.Wait_Exit(NO_LIMIT_MS));
        stopper.join();
        for (const auto& worker : peek.SubThreads())
            EXPECT_TRUE(worker->Wait_Exit(0));
    }
}

TEST(MaskDataGenerator, StopsFromAllSidesAtOnceEndTheRun)
{
    SGeneratorJob job(PlainMask_Large());
    CMaskDataGenerator generator;
    ASSERT_TRUE(generator.Create(job.param, 6));
    std::vector<std::thread> stoppers;
    stoppers.reserve(4);
    for (int i = 0; i < 4; ++i)
        stoppers.emplace_back([&generator] { generator.Stop(); });
    for (std::thread& stopper : stoppers)
        stopper.join();
    EXPECT_TRUE(generator.Wait_Exit(NO_LIMIT_MS));
    generator.Stop(); // and once more behind the end
    EXPECT_TRUE(generator.Wait_Exit(0));
}

TEST(MaskDataGenerator, MayBeStoppedAndDestroyedWithoutEverBeingCreated)
{
    CMaskDataGenerator generator;
    generator.Stop();
    EXPECT_TRUE(generator.Wait_Exit(0)); // no thread, nothing to wait for
}

/// A generator that the platform refuses its thread.
class CRefusedGenerator : public CMaskDataGenerator {
public:
    bool Start(const char* name) override
    {
        m_name = name;
        return false;
    }
    std::string m_name;
};

TEST(MaskDataGenerator, AThreadThatDoesNotStartFailsCreateAndDestructionEndsTheWorkers)
{
    SGeneratorJob job(PlainMask_Sliding(8, 4));
    CRefusedGenerator generator;
    SMaskDataGenerator_Peek peek{generator};
    const CLogCapture log;
    EXPECT_FALSE(generator.Create(job.param, 6));
    EXPECT_EQ(generator.m_name, "CMaskDataGenerator");
    EXPECT_EQ(log.Records(), (std::vector<SLogRecord>{Failure(UNIT_GENERATOR, SCOPE_GENERATOR_CREATE)}));
    ASSERT_EQ(peek.SubThreads().size(), 6U);
    for (const auto& worker : peek.SubThreads())
        EXPECT_FALSE(worker->Wait_Exit(0)); // they run and wait for work
}

TEST(MaskDataGenerator, ItemsOfWorkersThatAllFailedLeaveBlankLines)
{
    if (REFUSED_REQUEST_IS_FATAL)
        GTEST_SKIP() << "the sanitizer does not let the allocation fail";
    SPlainMask mask = PlainMask_Sliding(7, 3);
    mask.positionCount = 3;
    mask.yRes = 2;
    SGeneratorJob job(mask);
    std::fill_n(job.block.MaskData(), job.block.MaskDataBytesCount(), std::uint8_t{0x5A});
    job.param.splitCount_XRes = -1; // as many blocks as no memory holds: every worker ends in its first state
    const CLogCapture quiet;
    CMaskDataGenerator generator;
    ASSERT_TRUE(generator.Create(job.param, 0));
    ASSERT_TRUE(generator.Wait_Exit(0xFFFFFFFFU));
    EXPECT_EQ(job.Bytes(), std::vector<std::uint8_t>(job.Bytes().size(), 0));
}

} // namespace
