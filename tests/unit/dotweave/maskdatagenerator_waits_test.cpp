// Whom the generator's threads wait for, in which order and how long at most.

#include "maskdatagenerator.h"
#include "maskdatagenerator_sub.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "peek.h"

namespace {

using CItemBuffer = CKelPtrQueueBuffer<SMaskDataGenerate_SubParam>;
using CCalls = std::vector<std::string>;

/// A worker without a thread that notes what it is asked.
class CTellingWorker : public CMaskDataGenerator_Sub {
public:
    CTellingWorker(int slot, const bool& hasEnded, CCalls& calls)
        : m_name(" of " + std::to_string(slot)), m_hasEnded(hasEnded), m_calls(calls)
    {}

    bool Wait_Exit(unsigned int milliseconds) override
    {
        m_calls.push_back("Wait_Exit(" + std::to_string(milliseconds) + ")" + m_name);
        return m_hasEnded;
    }
    void Stop() override { m_calls.push_back("Stop" + m_name); }

private:
    std::string m_name;
    const bool& m_hasEnded;
    CCalls& m_calls;
};

/// A generator without threads, with three workers that tell.
class GeneratorWaits : public testing::Test {
protected:
    GeneratorWaits()
    {
        for (std::size_t slot = 0; slot < m_hasEnded.size(); ++slot)
            m_peek.SubThreads().push_back(
                std::make_unique<CTellingWorker>(static_cast<int>(slot), m_hasEnded[slot], m_calls));
        m_peek.ProcessState() = 3;
    }

    std::array<bool, 3> m_hasEnded = {true, true, true};
    CCalls m_calls;
    CMaskDataGenerator m_generator; // goes first, and stops its workers once more
    SMaskDataGenerator_Peek m_peek{m_generator};
    const CCalls m_stopCalls = {"Stop of 0",
                                "Stop of 1",
                                "Stop of 2",
                                "Wait_Exit(4294967295) of 0",
                                "Wait_Exit(4294967295) of 1",
                                "Wait_Exit(4294967295) of 2"};
};

TEST_F(GeneratorWaits, StopStopsAllThenWaitsForEach)
{
    m_generator.Stop();
    EXPECT_EQ(m_calls, m_stopCalls);
}

TEST_F(GeneratorWaits, StopPassesOverEmptySlots)
{
    m_peek.SubThreads()[1] = nullptr;
    m_generator.Stop();
    EXPECT_EQ(m_calls,
              (CCalls{"Stop of 0", "Stop of 2", "Wait_Exit(4294967295) of 0", "Wait_Exit(4294967295) of 2"}));
}

TEST_F(GeneratorWaits, StateThreeAsksUpToARunningWorker)
{
    m_hasEnded[1] = false;
    EXPECT_TRUE(m_peek.OneLoop());
    EXPECT_EQ(m_calls, (CCalls{"Wait_Exit(100) of 0", "Wait_Exit(100) of 1"}));
    EXPECT_EQ(m_peek.ProcessState(), 3);
    m_calls.clear();
    EXPECT_TRUE(m_peek.OneLoop()); // and starts with the first one again
    EXPECT_EQ(m_calls, (CCalls{"Wait_Exit(100) of 0", "Wait_Exit(100) of 1"}));
}

TEST_F(GeneratorWaits, StateThreeStopsAfterTheLast)
{
    m_hasEnded[2] = false;
    EXPECT_TRUE(m_peek.OneLoop());
    const CCalls poll = {"Wait_Exit(100) of 0", "Wait_Exit(100) of 1", "Wait_Exit(100) of 2"};
    EXPECT_EQ(m_calls, poll);
    m_calls.clear();
    m_hasEnded[2] = true;
    EXPECT_TRUE(m_peek.OneLoop());
    CCalls expected = poll;
    expected.insert(expected.end(), m_stopCalls.begin(), m_stopCalls.end());
    EXPECT_EQ(m_calls, expected);
    EXPECT_FALSE(m_generator.Start("stopped")) << "a thread that has been stopped never starts";
}

/// A queue of work items that notes how long it is waited for, and never sleeps.
class CTellingQueue : public CKelPtrQueue<SMaskDataGenerate_SubParam> {
public:
    CTellingQueue() : CKelPtrQueue(1) {}

    bool Pop(SMaskDataGenerate_SubParam*& item, unsigned int milliseconds) override
    {
        m_waits.push_back(milliseconds);
        return TryPop(item);
    }
    std::vector<unsigned int> m_waits;
};

/// Puts a telling queue in the place of one of the buffer's. @return it, the buffer's from here on
CTellingQueue& Telling_Put(std::unique_ptr<CKelPtrQueue<SMaskDataGenerate_SubParam>>& place)
{
    auto queue = std::make_unique<CTellingQueue>();
    CTellingQueue& telling = *queue;
    place = std::move(queue);
    return telling;
}

TEST(QueueWaits, ProducerWaitsAHundredMilliseconds)
{
    CMaskDataGenerator generator;
    SMaskDataGenerator_Peek peek{generator};
    peek.QueueBuffer() = std::make_unique<CItemBuffer>();
    std::vector<SMaskDataGenerate_SubParam*> items = {new SMaskDataGenerate_SubParam{}};
    peek.QueueBuffer()->Create(items, "pool"); // the queues' from here on
    CTellingQueue& free = Telling_Put(peek.QueueBuffer()->m_queue_Free);
    EXPECT_TRUE(peek.AddSourceData()) << "no free item is no failure";
    EXPECT_EQ(free.m_waits, std::vector<unsigned int>{100});
    EXPECT_EQ(peek.QueueBuffer()->m_queue_Work->Count(), 0U);
    ASSERT_TRUE(free.TryPush(new SMaskDataGenerate_SubParam{}));
    EXPECT_TRUE(peek.AddSourceData());
    EXPECT_EQ(free.m_waits, (std::vector<unsigned int>{100, 100}));
    EXPECT_EQ(peek.QueueBuffer()->m_queue_Work->Count(), 1U);
}

TEST(QueueWaits, WorkerWaitsNotAtAllAfterTheEnd)
{
    CItemBuffer buffer;
    CTellingQueue& work = Telling_Put(buffer.m_queue_Work);
    CMaskDataGenerator_Sub worker;
    SMaskDataGenerator_Sub_Peek peek{worker};
    const SMaskDataGenerate_Param param = {};
    peek.Inputs(&param, &buffer, nullptr);
    peek.ProcessState() = 2;
    EXPECT_TRUE(peek.OneLoop());
    EXPECT_TRUE(peek.OneLoop());
    EXPECT_EQ(work.m_waits, (std::vector<unsigned int>{100, 100}));
    work.AddFinished_Set();
    EXPECT_TRUE(peek.OneLoop()); // nothing more can come
    EXPECT_EQ(work.m_waits, (std::vector<unsigned int>{100, 100, 0}));
    EXPECT_EQ(peek.ProcessState(), 2);
    EXPECT_FALSE(worker.Start("stopped")) << "a thread that has been stopped never starts";
}

using EEnd = CMaskDataGenerator_Sub::EEnd;

/// Hands out items to three workers that tell, and finds no free item.
class ProducerWithoutItems : public GeneratorWaits {
protected:
    ProducerWithoutItems()
    {
        m_peek.ProcessState() = 2;
        m_peek.QueueBuffer() = std::make_unique<CItemBuffer>();
        std::vector<SMaskDataGenerate_SubParam*> items;
        m_peek.QueueBuffer()->Create(items, "none");
        m_free = &Telling_Put(m_peek.QueueBuffer()->m_queue_Free);
    }
    void Ends_Set(std::array<EEnd, 3> ends)
    {
        for (std::size_t slot = 0; slot < ends.size(); ++slot)
            SMaskDataGenerator_Sub_Peek{*m_peek.SubThreads()[slot]}.End() = ends[slot];
    }

    CTellingQueue* m_free = nullptr;
};

TEST_F(ProducerWithoutItems, WaitsWhileAWorkerIsLeft)
{
    Ends_Set({EEnd::Clean, EEnd::None, EEnd::Clean});
    EXPECT_TRUE(m_peek.OneLoop());
    EXPECT_EQ(m_free->m_waits, std::vector<unsigned int>{100});
    EXPECT_EQ(m_calls, CCalls{});
}

TEST_F(ProducerWithoutItems, StopsWhenNoWorkerIsLeft)
{
    Ends_Set({EEnd::Clean, EEnd::Clean, EEnd::Clean});
    EXPECT_TRUE(m_peek.OneLoop());
    EXPECT_EQ(m_calls, m_stopCalls);
    EXPECT_EQ(m_free->m_waits, std::vector<unsigned int>{});
    EXPECT_FALSE(m_generator.IsOutputComplete());
}

TEST_F(ProducerWithoutItems, StopsWhenAWorkerLosesItsItem)
{
    Ends_Set({EEnd::None, EEnd::ItemLost, EEnd::None});
    ASSERT_TRUE(m_free->TryPush(new SMaskDataGenerate_SubParam{}));
    EXPECT_TRUE(m_peek.OneLoop());
    EXPECT_EQ(m_calls, m_stopCalls);
    EXPECT_EQ(m_free->Count(), 1U) << "nothing more is handed out";
}

TEST_F(ProducerWithoutItems, SleepsAgainAfterAWorkersEnd)
{
    m_free->NotEmpty_Set();
    EXPECT_TRUE(m_peek.OneLoop());
    EXPECT_FALSE(m_free->NotEmpty_Test()) << "it would spin until an item comes";
}

/// A worker's end wakes the producer. Only an item that it has not written is lost, and with it the rest.
TEST(WorkerEnd, WakesTheProducerAndDropsLostWork)
{
    const struct {
        bool hasItem;
        int processState;
        EEnd end;
    } CASES[] = {{false, 1, EEnd::Clean},
                 {false, 2, EEnd::Clean},
                 {true, 3, EEnd::ItemLost},
                 {true, 5, EEnd::ItemLost},
                 {true, 6, EEnd::Clean}};
    for (const auto& [hasItem, processState, end] : CASES) {
        SCOPED_TRACE(testing::Message() << "state " << processState);
        CItemBuffer buffer;
        std::vector<SMaskDataGenerate_SubParam*> items;
        for (int i = 0; i < 3; ++i)
            items.push_back(new SMaskDataGenerate_SubParam{}); // the queues' from here on
        buffer.Create(items, "pool");
        for (SMaskDataGenerate_SubParam* item = nullptr; buffer.m_queue_Free->TryPop(item);)
            ASSERT_TRUE(buffer.m_queue_Work->TryPush(item));
        ASSERT_FALSE(buffer.m_queue_Free->NotEmpty_Test());
        CMaskDataGenerator_Sub worker;
        SMaskDataGenerator_Sub_Peek peek{worker};
        const SMaskDataGenerate_Param param = {};
        peek.Inputs(&param, &buffer, nullptr);
        peek.ProcessState() = processState;
        if (hasItem) {
            ASSERT_TRUE(buffer.m_queue_Work->TryPop(peek.SourceData())); // the worker's from here on
        }
        EXPECT_EQ(worker.End(), EEnd::None);
        peek.Finally();
        EXPECT_EQ(worker.End(), end);
        EXPECT_TRUE(buffer.m_queue_Free->NotEmpty_Test());
        EXPECT_EQ(buffer.m_queue_Work->Count(), end == EEnd::ItemLost ? 0U : hasItem ? 2U : 3U);
    }
}

} // namespace
