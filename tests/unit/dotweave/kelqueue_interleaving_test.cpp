// What one thread does between two steps of another decides whether an event is left right, and no stress
// test meets such a moment for sure. Here the queue sleeps on events of the test, which let "the other
// thread" run at exactly that moment, on the same thread.

#include "schedulepoint.h"

#include <boost/lockfree/queue.hpp>
#include <kelcommon/customconditionvariable.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace interleaved {

/// Stands in for the host's manual-reset event. Never sleeps: a wait that finds the event reset has run out.
class CustomConditionVariable_Manual {
public:
    void Set()
    {
        Meanwhile(m_beforeWrite);
        m_isSet = true;
    }
    void Reset()
    {
        Meanwhile(m_beforeWrite);
        m_isSet = false;
    }
    bool WaitOne(unsigned int milliseconds)
    {
        m_waits.push_back(milliseconds);
        if (milliseconds > 0) {
            Meanwhile(m_beforeWait);
            m_ranOutCount += m_isSet ? 0 : 1;
        }
        return m_isSet;
    }

    bool m_isSet = false;
    int m_ranOutCount = 0;
    std::vector<unsigned int> m_waits; // how long each wait may last
    std::function<void()>
        m_beforeWrite;                  // what the other thread does before the next Set or Reset lands; once
    std::function<void()> m_beforeWait; // the same before the next wait looks; once

private:
    static void Meanwhile(std::function<void()>& deed)
    {
        if (const std::function<void()> now = std::exchange(deed, nullptr))
            now();
    }
};

// Everything that this header includes is included above, so it finds the event of this namespace first
// and makes a queue of its own of it.
#include "kelqueue.h"

} // namespace interleaved

namespace {

using CEvent = interleaved::CustomConditionVariable_Manual;
using CIntQueue = interleaved::CKelQueue<int*>;

constexpr unsigned int WAIT_MS = 100;

// An explicit instantiation may name a private member, so it hands the tests references to the events.
CEvent& NotEmpty(CIntQueue& queue);
CEvent& NotFull(CIntQueue& queue);
template <auto NOT_EMPTY, auto NOT_FULL>
struct SEventKey {
    friend CEvent& NotEmpty(CIntQueue& queue) { return queue.*NOT_EMPTY; }
    friend CEvent& NotFull(CIntQueue& queue) { return queue.*NOT_FULL; }
};
template struct SEventKey<&CIntQueue::m_event_NotEmpty, &CIntQueue::m_event_NotFull>;

class QueueInterleaving : public testing::Test {
protected:
    void Push() { EXPECT_TRUE(m_queue.TryPush(&m_one)); }
    void Pop()
    {
        int* item = nullptr;
        EXPECT_TRUE(m_queue.TryPop(item));
    }
    void Fill(unsigned int count)
    {
        while (m_queue.Count() < count)
            Push();
    }

    /// Nothing moves: both events must say what the count says.
    void ExpectAtRest(unsigned int count)
    {
        EXPECT_EQ(m_queue.Count(), count);
        EXPECT_EQ(NotEmpty(m_queue).m_isSet, count > 0);
        EXPECT_EQ(NotFull(m_queue).m_isSet, count < CAPACITY);
    }

    static constexpr unsigned int CAPACITY = 3;
    int m_one = 0;
    CIntQueue m_queue{static_cast<int>(CAPACITY)};
};

TEST_F(QueueInterleaving, PushDuringTheLastPop)
{
    Fill(1);
    NotEmpty(m_queue).m_beforeWrite = [this] { Push(); };
    Pop();
    ExpectAtRest(1);
}

TEST_F(QueueInterleaving, PopDuringTheFirstPush)
{
    NotEmpty(m_queue).m_beforeWrite = [this] { Pop(); };
    Push();
    ExpectAtRest(0);
}

TEST_F(QueueInterleaving, PopDuringThePushThatFills)
{
    Fill(CAPACITY - 1);
    NotFull(m_queue).m_beforeWrite = [this] { Pop(); };
    Push();
    ExpectAtRest(CAPACITY - 1);
}

TEST_F(QueueInterleaving, PushDuringThePopThatMakesRoom)
{
    Fill(CAPACITY);
    NotFull(m_queue).m_beforeWrite = [this] { Push(); };
    Pop();
    ExpectAtRest(CAPACITY);
}

TEST_F(QueueInterleaving, BothEventsSettle)
{
    for (int depth = 1; depth <= 6; ++depth) {
        // Before each of the next `depth` writes the queue's only item goes or comes once more.
        std::function<void(int)> disturb = [this, &disturb](int left) {
            if (left == 0)
                return;
            NotEmpty(m_queue).m_beforeWrite = [left, &disturb] { disturb(left - 1); };
            if (m_queue.Count() > 0)
                Pop();
            else
                Push();
        };
        NotEmpty(m_queue).m_beforeWrite = [depth, &disturb] { disturb(depth); };
        Push();
        ExpectAtRest(depth % 2 == 0 ? 1 : 0);
        NotEmpty(m_queue).m_beforeWrite = nullptr;
        m_queue.Clear();
    }
}

TEST_F(QueueInterleaving, ItemBetweenTryAndSleep)
{
    int* item = nullptr;
    NotEmpty(m_queue).m_beforeWait = [this] { Push(); };
    EXPECT_TRUE(m_queue.Pop(item, WAIT_MS));
    EXPECT_EQ(item, &m_one);
    EXPECT_EQ(NotEmpty(m_queue).m_ranOutCount, 0); // else it would have slept beside an item
    ExpectAtRest(0);
}

TEST_F(QueueInterleaving, ItemTakenByAnother)
{
    int* item = nullptr;
    NotEmpty(m_queue).m_beforeWait = [this] {
        Push();
        Pop();
    };
    EXPECT_FALSE(m_queue.Pop(item, WAIT_MS));
    EXPECT_EQ(NotEmpty(m_queue).m_ranOutCount, 1);
    ExpectAtRest(0);
}

TEST_F(QueueInterleaving, StaleEventCostsOneMoreTry)
{
    // Another thread has taken the last item but has not come to the reset yet: the event is a hint.
    Fill(1);
    NotEmpty(m_queue).m_beforeWrite = [this] {
        int* item = nullptr;
        EXPECT_FALSE(m_queue.Pop(item, WAIT_MS));
    };
    Pop();
    EXPECT_EQ(NotEmpty(m_queue).m_ranOutCount, 0);
    ExpectAtRest(0);
}

TEST_F(QueueInterleaving, RoomBetweenTryAndSleep)
{
    Fill(CAPACITY);
    NotFull(m_queue).m_beforeWait = [this] { Pop(); };
    EXPECT_TRUE(m_queue.Push(&m_one));
    EXPECT_EQ(NotFull(m_queue).m_ranOutCount, 0);
    ExpectAtRest(CAPACITY);
}

TEST_F(QueueInterleaving, RoomTakenByAnother)
{
    Fill(CAPACITY);
    NotFull(m_queue).m_beforeWait = [this] {
        Pop();
        Push();
    };
    EXPECT_FALSE(m_queue.Push(&m_one));
    EXPECT_EQ(NotFull(m_queue).m_ranOutCount, 1);
    ExpectAtRest(CAPACITY);
}

TEST_F(QueueInterleaving, PushWaitsAHundredMilliseconds)
{
    Fill(CAPACITY - 1);
    EXPECT_TRUE(m_queue.Push(&m_one)); // there is room: no wait
    EXPECT_EQ(NotFull(m_queue).m_waits, std::vector<unsigned int>{});
    EXPECT_FALSE(m_queue.Push(&m_one));
    EXPECT_EQ(NotFull(m_queue).m_waits, std::vector<unsigned int>{100});
    EXPECT_EQ(NotEmpty(m_queue).m_waits, std::vector<unsigned int>{});
    EXPECT_FALSE(m_queue.TryPush(&m_one));
    EXPECT_EQ(NotFull(m_queue).m_waits, std::vector<unsigned int>{100});
}

TEST_F(QueueInterleaving, PopWaitsAsLongAsTold)
{
    int* item = nullptr;
    Fill(1);
    EXPECT_TRUE(m_queue.Pop(item, 17)); // there is an item: no wait
    EXPECT_EQ(NotEmpty(m_queue).m_waits, std::vector<unsigned int>{});
    EXPECT_FALSE(m_queue.Pop(item, 17));
    EXPECT_FALSE(m_queue.Pop(item, 0xFFFFFFFFU));
    EXPECT_EQ(NotEmpty(m_queue).m_waits, (std::vector<unsigned int>{17, 0xFFFFFFFFU}));
    EXPECT_EQ(NotFull(m_queue).m_waits, std::vector<unsigned int>{});
    EXPECT_FALSE(m_queue.TryPop(item));
    EXPECT_EQ(NotEmpty(m_queue).m_waits.size(), 2U);
}

TEST_F(QueueInterleaving, EndBetweenTryAndSleep)
{
    int* item = nullptr;
    NotEmpty(m_queue).m_beforeWait = [this] { m_queue.AddFinished_Set(); };
    EXPECT_FALSE(m_queue.Pop(item, WAIT_MS));
    EXPECT_TRUE(m_queue.AddFinished_Get());
    EXPECT_EQ(NotEmpty(m_queue).m_ranOutCount, 0);
}

TEST_F(QueueInterleaving, FlagComesBeforeItsEvent)
{
    bool isFlagged = false;
    NotEmpty(m_queue).m_beforeWrite = [this, &isFlagged] { isFlagged = m_queue.AddFinished_Get(); };
    m_queue.AddFinished_Set();
    EXPECT_TRUE(isFlagged);
}

} // namespace
