// Whole runs on threads of their own: what they build, how they are stopped and how they fail.

#include "maskdatagenerator.h"

#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "generatorjob.h"
#include "logcapture.h"
#include "logscopes.h"
#include "nolimit.h"
#include "peek.h"
#include "plainmask.h"
#include "refusedrequest.h"

namespace {

TEST(Generator, BuildsThePlainBytesWithSixWorkers)
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

TEST(Generator, MovesTheDotsAlongTheSine)
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

TEST(Generator, ManySmallRunsLoseNothing)
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

TEST(Generator, RunGoesOnAfterAnExpiredWait)
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

TEST(Generator, DestructionStopsTheRun)
{
    const CLogCapture log;
    for (int run = 0; run < 15; ++run) {
        SPlainMask mask = PlainMask_Large();
        mask.isSine = true;
        SGeneratorJob job(mask); // destroyed right after the generator
        CMaskDataGenerator generator;
        ASSERT_TRUE(generator.Create(job.param, 6));
    }
    EXPECT_TRUE(log.Records().empty());
}

TEST(Generator, StopFromAnotherThreadEndsTheRun)
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

TEST(Generator, StopsFromAllSidesEndTheRun)
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
    generator.Stop(); // and once more after the end
    EXPECT_TRUE(generator.Wait_Exit(0));
}

TEST(Generator, StopsWithoutCreate)
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

TEST(Generator, RefusedThreadFailsCreate)
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

TEST(Generator, RunWithoutWorkersIsIncomplete)
{
    if (REFUSED_REQUEST_IS_FATAL)
        GTEST_SKIP() << "the sanitizer does not let the allocation fail";
    for (const int positionCount : {1, 3, 6, 7, 40}) { // up to 12 items go round at once
        SCOPED_TRACE(positionCount);
        SPlainMask mask = PlainMask_Sliding(7, 3);
        mask.positionCount = positionCount;
        mask.yRes = 2;
        SGeneratorJob job(mask);
        job.param.splitCount_XRes =
            -1; // as many blocks as no memory has: every worker ends in its first state
        const CLogCapture log;
        CMaskDataGenerator generator;
        ASSERT_TRUE(generator.Create(job.param, 0));
        EXPECT_TRUE(generator.Wait_Exit(1000)); // the producer need not wait for anything
        EXPECT_FALSE(generator.IsOutputComplete());
        EXPECT_EQ(log.Records(), std::vector<SLogRecord>(
                                     6, FailureValue(UNIT_WORKER, SCOPE_WORKER_LOOP, "m_processState = 1")));
    }
}

TEST(Generator, OnlyAWholeRunIsComplete)
{
    SGeneratorJob small(PlainMask_Sliding(8, 4));
    CMaskDataGenerator whole;
    ASSERT_TRUE(whole.Create(small.param, 0));
    ASSERT_TRUE(whole.Wait_Exit(NO_LIMIT_MS));
    EXPECT_TRUE(whole.IsOutputComplete());
    SGeneratorJob large(PlainMask_Large());
    CMaskDataGenerator stopped;
    ASSERT_TRUE(stopped.Create(large.param, 0));
    stopped.Stop();
    ASSERT_TRUE(stopped.Wait_Exit(NO_LIMIT_MS));
    EXPECT_FALSE(stopped.IsOutputComplete());
}

} // namespace
