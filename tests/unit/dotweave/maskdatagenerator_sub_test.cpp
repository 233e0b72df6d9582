// What a worker takes, hands back and ends with: its states, its queues and its thread.

#include "maskdatagenerator_sub.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "generatorjob.h"
#include "logcapture.h"
#include "logscopes.h"
#include "nolimit.h"
#include "plainmask.h"
#include "refusedrequest.h"
#include "worker.h"

namespace {

/// A thread that has been stopped never starts.
bool HasBeenStopped(CMaskDataGenerator_Sub& worker)
{
    return !worker.Start("stopped");
}

TEST(Worker, StateTwoTakesTheNextItem)
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

TEST(Worker, NullItemLetsItWaitOn)
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

TEST(Worker, WaitsOnUntilTheProducerHasFinished)
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

TEST(Worker, DoesItemsThatWaitAtTheEnd)
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

TEST(Worker, WakesTheOthersWithTheLastItem)
{
    CWorker worker(PlainMask_Small(1, 1, 1));
    worker.RunTo(2);
    worker.Work_Push(0, 0, 0);
    worker.buffer.m_queue_Work->AddFinished_Set();
    EXPECT_TRUE(worker.peek.OneLoop()); // takes the last item, which resets the event
    EXPECT_EQ(worker.buffer.m_queue_Work->Count(), 0U);
    EXPECT_TRUE(worker.buffer.m_queue_Work->NotEmpty_Test());
}

TEST(Worker, EndsSilentlyAfterTheLastItem)
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

TEST(Worker, StateSixHandsTheItemBack)
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

TEST(Worker, FullFreeQueueStopsIt)
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

TEST(Worker, UnknownStateStopsIt)
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

TEST(Worker, NoMemoryEndsItWithItsState)
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

TEST(Worker, DoesAllItemsAndEndsByItself)
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

TEST(Worker, RefusedThreadFailsCreate)
{
    CRefusedWorker worker;
    CItemBuffer buffer;
    const SMaskDataGenerate_Param param = {};
    const CLogCapture log;
    EXPECT_FALSE(worker.Create(&param, &buffer, nullptr));
    EXPECT_EQ(worker.m_name, "CMaskDataGenerator_Position");
    EXPECT_EQ(log.Records(), (std::vector<SLogRecord>{Failure(UNIT_WORKER, SCOPE_WORKER_CREATE)}));
}

TEST(Worker, FreesItsItemWhenStoppedHalfWay)
{
    SPlainMask mask = PlainMask_Sliding(544, 136);
    mask.xRes = 4;
    CWorker worker(mask);
    worker.Work_Push(0, 0, 0);
    ASSERT_TRUE(worker.worker.Create(&worker.job.param, &worker.buffer, nullptr));
    worker.worker.Stop(); // wherever it is; the leak check sees what became of the item
    EXPECT_TRUE(worker.worker.Wait_Exit(NO_LIMIT_MS));
}

} // namespace
