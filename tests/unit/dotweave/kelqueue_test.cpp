#include "kelqueue.h"
#include "nolimit.h"

#include <atomic>
#include <barrier>
#include <chrono>
#include <cstddef>
#include <future>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

using CIntQueue = CKelQueue<int*>;

// The not-full event has no accessor: the library only sleeps on it. An explicit instantiation may name a
// private member, so it hands the tests a reference.
CustomConditionVariable_Manual& NotFull(CIntQueue& queue);
template <auto MEMBER>
struct SNotFullKey {
    friend CustomConditionVariable_Manual& NotFull(CIntQueue& queue) { return queue.*MEMBER; }
};
template struct SNotFullKey<&CIntQueue::m_event_NotFull>;

bool NotFull_Test(CIntQueue& queue)
{
    return NotFull(queue).WaitOne(0);
}

class CStopwatch {
public:
    [[nodiscard]] bool HasRun(std::chrono::milliseconds time) const
    {
        return std::chrono::steady_clock::now() - m_start >= time;
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

TEST(KelQueue, AFreshQueueIsEmptyWithItsEventsSaying)
{
    CIntQueue queue(12);
    EXPECT_EQ(queue.Count(), 0U);
    EXPECT_FALSE(queue.NotEmpty_Test());
    EXPECT_TRUE(NotFull_Test(queue));
    EXPECT_FALSE(queue.AddFinished_Get());
}

TEST(KelQueue, ThirteenthOfTwelveIsRefusedAfterTheWait)
{
    std::vector<int> items(13);
    CIntQueue queue(12);
    for (int i = 0; i < 12; ++i) {
        EXPECT_TRUE(NotFull_Test(queue)) << i;
        EXPECT_TRUE(queue.Push(&items[static_cast<std::size_t>(i)])) << i;
    }
    EXPECT_FALSE(NotFull_Test(queue));
    EXPECT_EQ(queue.Count(), 12U);
    const CStopwatch stopwatch;
    EXPECT_FALSE(queue.Push(&items[12]));
    EXPECT_TRUE(stopwatch.HasRun(std::chrono::milliseconds(100)));
    EXPECT_EQ(queue.Count(), 12U);
    EXPECT_FALSE(queue.TryPush(&items[12]));
}

TEST(KelQueue, OneItemTakenFromAFullQueueMakesRoomForOne)
{
    int items[3] = {};
    CIntQueue queue(2);
    ASSERT_TRUE(queue.Push(&items[0]));
    ASSERT_TRUE(queue.Push(&items[1]));
    int* item = nullptr;
    ASSERT_TRUE(queue.TryPop(item));
    EXPECT_EQ(item, &items[0]);
    EXPECT_TRUE(NotFull_Test(queue)); // 2 - 1 = capacity - 1
    EXPECT_TRUE(queue.NotEmpty_Test());
    EXPECT_TRUE(queue.Push(&items[2]));
    EXPECT_FALSE(NotFull_Test(queue));
    ASSERT_TRUE(queue.TryPop(item));
    EXPECT_EQ(item, &items[1]); // first in, first out
    ASSERT_TRUE(queue.TryPop(item));
    EXPECT_EQ(item, &items[2]);
}

TEST(KelQueue, NotEmptyFollowsTheFirstAndLastItem)
{
    int items[2] = {};
    CIntQueue queue(12);
    ASSERT_TRUE(queue.Push(&items[0]));
    EXPECT_TRUE(queue.NotEmpty_Test());
    ASSERT_TRUE(queue.Push(&items[1]));
    int* item = nullptr;
    ASSERT_TRUE(queue.TryPop(item));
    EXPECT_TRUE(queue.NotEmpty_Test());
    ASSERT_TRUE(queue.TryPop(item));
    EXPECT_FALSE(queue.NotEmpty_Test());
}

TEST(KelQueue, PopOfAnEmptyQueueWaitsAsLongAsTold)
{
    int one = 0;
    CIntQueue queue(12);
    ASSERT_TRUE(queue.Push(&one));
    int* item = nullptr;
    ASSERT_TRUE(queue.Pop(item, 100)); // the last item; not-empty is reset again
    EXPECT_EQ(item, &one);
    EXPECT_FALSE(queue.TryPop(item));
    EXPECT_FALSE(queue.Pop(item, 0));
    const CStopwatch stopwatch;
    EXPECT_FALSE(queue.Pop(item, 100));
    EXPECT_TRUE(stopwatch.HasRun(std::chrono::milliseconds(100)));
    EXPECT_EQ(queue.Count(), 0U); // a failed pop does not touch the counter
}

TEST(KelQueue, ANullItemIsAnItem)
{
    CIntQueue queue(2);
    EXPECT_TRUE(queue.Push(nullptr));
    EXPECT_EQ(queue.Count(), 1U);
    EXPECT_TRUE(queue.NotEmpty_Test());
    int other = 0;
    int* item = &other;
    EXPECT_TRUE(queue.Pop(item, 0));
    EXPECT_EQ(item, nullptr);
    EXPECT_FALSE(queue.TryPop(item));
}

TEST(KelQueue, ClearTakesOutAllItemsAndLeavesThemAlone)
{
    int items[3] = {7, 8, 9};
    CIntQueue queue(3);
    for (int& value : items)
        ASSERT_TRUE(queue.Push(&value));
    EXPECT_TRUE(queue.Clear());
    EXPECT_EQ(queue.Count(), 0U);
    EXPECT_FALSE(queue.NotEmpty_Test());
    EXPECT_TRUE(NotFull_Test(queue));
    EXPECT_TRUE(queue.Clear()); // nothing left to take
    EXPECT_EQ(items[0] + items[1] + items[2], 24);
}

TEST(KelQueue, FinishedFlagWakesTheSleepers)
{
    int one = 0;
    CIntQueue queue(1);
    int* item = nullptr;
    std::future<bool> sleeper =
        std::async(std::launch::async, [&queue, &item] { return queue.Pop(item, NO_LIMIT_MS); });
    queue.AddFinished_Set();
    EXPECT_FALSE(sleeper.get()); // returns at all: the event was set after the flag
    EXPECT_TRUE(queue.AddFinished_Get());
    EXPECT_TRUE(queue.NotEmpty_Test());
    EXPECT_TRUE(queue.Push(&one)); // the queue itself never reads the flag
    EXPECT_TRUE(queue.TryPop(item));
    EXPECT_EQ(item, &one);
    EXPECT_FALSE(queue.NotEmpty_Test());
    queue.NotEmpty_Set();
    EXPECT_TRUE(queue.NotEmpty_Test());
    EXPECT_TRUE(queue.AddFinished_Get());
}

TEST(KelQueue, NodesAreNumberedWithSixteenBits)
{
    EXPECT_NO_THROW(CIntQueue(65534));
    for (const int capacity : {65535, 65536, 1000000}) {
        try {
            const CIntQueue queue(capacity);
            FAIL() << capacity;
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(std::string(error.what()),
                      "boost.lockfree: freelist size is limited to a maximum of 65535 objects");
        }
    }
}

TEST(KelQueue, TheLargestQueueHoldsItsWholeCapacity)
{
    int one = 0;
    CIntQueue queue(65534);
    for (int i = 0; i < 65534; ++i)
        ASSERT_TRUE(queue.TryPush(&one)) << i;
    EXPECT_FALSE(queue.TryPush(&one));
    EXPECT_EQ(queue.Count(), 65534U);
    EXPECT_FALSE(NotFull_Test(queue));
}

TEST(KelQueue, PushWaitsForRoom)
{
    // By counting: the pusher must get in within as many attempts as it likes, and every item comes out once.
    constexpr int ITEM_COUNT = 3000;
    std::vector<int> items(ITEM_COUNT);
    CIntQueue queue(1);
    std::thread pusher([&items, &queue] {
        for (int& value : items) {
            while (!queue.Push(&value)) {
            }
        }
    });
    int taken = 0;
    while (taken < ITEM_COUNT) {
        int* item = nullptr;
        if (queue.Pop(item, NO_LIMIT_MS)) {
            ASSERT_EQ(item, &items[static_cast<std::size_t>(taken)]); // one producer: in order
            ++taken;
        }
    }
    pusher.join();
    EXPECT_EQ(queue.Count(), 0U);
    EXPECT_FALSE(queue.NotEmpty_Test());
    EXPECT_TRUE(NotFull_Test(queue));
}

// Producers and consumers that meet at the bounds of a small queue, again and again. Between two rounds
// nothing moves, and then both events must say what the count says: an event left wrong is a sleeper left
// behind.
TEST(KelQueue, EventsAgreeWithTheCountAtRest)
{
    constexpr int ROUND_COUNT = 3000;
    constexpr int PRODUCER_COUNT = 3;
    constexpr int CONSUMER_COUNT = 3;
    constexpr unsigned int CAPACITY = 3;
    int one = 0;
    CIntQueue queue(static_cast<int>(CAPACITY));
    std::atomic<int> inside = 0; // pushes less pops that succeeded
    std::atomic<int> wrongCounts = 0;
    std::atomic<int> wrongNotEmpty = 0;
    std::atomic<int> wrongNotFull = 0;
    std::atomic<int> fullRounds = 0;
    std::atomic<int> emptyRounds = 0;
    const auto check = [&]() noexcept {
        const unsigned int count = queue.Count();
        wrongCounts += static_cast<int>(count) != inside.load() ? 1 : 0;
        wrongNotEmpty += queue.NotEmpty_Test() != (count > 0) ? 1 : 0;
        wrongNotFull += NotFull_Test(queue) != (count < CAPACITY) ? 1 : 0;
        fullRounds += count == CAPACITY ? 1 : 0;
        emptyRounds += count == 0 ? 1 : 0;
    };
    std::barrier roundEnd(PRODUCER_COUNT + CONSUMER_COUNT, check);
    const auto work = [&](bool isProducer, int extra) {
        for (int round = 0; round < ROUND_COUNT; ++round) {
            const int steps = 1 + (round + extra) % 3;
            for (int step = 0; step < steps; ++step) {
                int* item = nullptr;
                if (isProducer)
                    inside += queue.TryPush(&one) ? 1 : 0;
                else
                    inside -= queue.TryPop(item) ? 1 : 0;
            }
            roundEnd.arrive_and_wait();
        }
    };
    std::vector<std::thread> threads;
    threads.reserve(PRODUCER_COUNT + CONSUMER_COUNT);
    for (int i = 0; i < PRODUCER_COUNT; ++i)
        threads.emplace_back(work, true, i);
    for (int i = 0; i < CONSUMER_COUNT; ++i)
        threads.emplace_back(work, false, i);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrongCounts, 0);
    EXPECT_EQ(wrongNotEmpty, 0);
    EXPECT_EQ(wrongNotFull, 0);
    EXPECT_GT(fullRounds, 0); // both bounds were met, else this proves little
    EXPECT_GT(emptyRounds, 0);
}

// One round of the generator's traffic: sleeps have no limit, so a lost wake-up leaves a thread asleep. The
// rescue at the end only serves to report that instead of hanging.
class CTraffic {
public:
    CTraffic(int producerCount, int consumerCount, int itemsPerProducer, int capacity)
        : m_itemsPerProducer(itemsPerProducer), m_producersLeft(producerCount),
          m_seen(static_cast<std::size_t>(producerCount * itemsPerProducer)), m_queue(capacity)
    {
        for (int i = 0; i < consumerCount; ++i)
            m_consumers.push_back(std::async(std::launch::async, [this] { Consume(); }));
        for (int i = 0; i < producerCount; ++i)
            m_producers.push_back(std::async(std::launch::async, [this, i] { Produce(i); }));
    }

    /// @return consumers that slept on although all was said
    int SleepersLeft()
    {
        for (const std::future<void>& producer : m_producers)
            producer.wait();
        int left = 0;
        for (const std::future<void>& consumer : m_consumers) {
            if (consumer.wait_for(std::chrono::seconds(60)) == std::future_status::ready)
                continue;
            ++left;
            m_queue.NotEmpty_Set();
        }
        m_consumers.clear();
        return left;
    }

    [[nodiscard]] int ItemsNotSeenOnce() const
    {
        int wrong = 0;
        for (const std::atomic<int>& count : m_seen)
            wrong += count == 1 ? 0 : 1;
        return wrong;
    }

private:
    void Produce(int producer)
    {
        for (int i = 0; i < m_itemsPerProducer; ++i) {
            const int index = producer * m_itemsPerProducer + i;
            std::atomic<int>* item = &m_seen[static_cast<std::size_t>(index)];
            while (!m_queue.Push(item)) {
            }
        }
        if (--m_producersLeft == 0)
            m_queue.AddFinished_Set();
    }

    void Consume()
    {
        for (;;) {
            const bool isFinished = m_queue.AddFinished_Get();
            std::atomic<int>* item = nullptr;
            if (m_queue.Pop(item, isFinished ? 0U : NO_LIMIT_MS)) {
                ++*item;
                if (m_queue.AddFinished_Get())
                    m_queue.NotEmpty_Set(); // the last pop reset it; others may sleep on it
            } else if (isFinished) {
                return;
            }
        }
    }

    int m_itemsPerProducer;
    std::atomic<int> m_producersLeft;
    std::vector<std::atomic<int>> m_seen;
    CKelQueue<std::atomic<int>*> m_queue;
    std::vector<std::future<void>> m_producers; // before the queue goes, both are joined
    std::vector<std::future<void>> m_consumers;
};

TEST(KelQueue, ManyThreadsPassEveryItemOnce)
{
    CTraffic traffic(4, 4, 5000, 12);
    EXPECT_EQ(traffic.SleepersLeft(), 0);
    EXPECT_EQ(traffic.ItemsNotSeenOnce(), 0);
}

TEST(KelQueue, ShortRoundsLeaveNoSleeperBehind)
{
    for (int round = 0; round < 500; ++round) {
        CTraffic traffic(1 + round % 2, 6, 1 + round % 5, 1 + round % 3);
        ASSERT_EQ(traffic.SleepersLeft(), 0) << "round " << round;
        ASSERT_EQ(traffic.ItemsNotSeenOnce(), 0) << "round " << round;
    }
}

} // namespace
