#include <kelcommon/customthreadbase.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <kelcommon/customconditionvariable.h>

#include "hookedthread.h"

namespace {

// ---- Wait_Exit

TEST(CustomThreadBaseWaitExit, IsTrueAtOnceWhenNoThreadWasStarted)
{
    CHookedThread thread;
    EXPECT_TRUE(thread.Wait_Exit(0));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
}

TEST(CustomThreadBaseWaitExit, IsFalseAfterItsTimeWhileTheThreadRuns)
{
    CHookedThread thread;
    ASSERT_TRUE(thread.Start("runs"));
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(thread.Wait_Exit(15));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(15));
    EXPECT_FALSE(thread.Wait_Exit(0));
    thread.Stop();
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
}

TEST(CustomThreadBaseWaitExit, AThreadThatIsStartedMeanwhileIsNotWaitedFor)
{
    for (int round = 0; round < 300; ++round) {
        CHookedThread thread([] {
            std::this_thread::yield();
            return true;
        });
        std::atomic<bool> isStarted = false;
        std::thread waiter([&] {
            while (!isStarted)
                thread.Wait_Exit(0);
        });
        EXPECT_TRUE(thread.Start("runs"));
        isStarted = true;
        waiter.join(); // before anybody asks the thread to stop
        EXPECT_FALSE(thread.Wait_Exit(0));
    }
}

TEST(CustomThreadBaseWaitExit, MayBeAskedAgainAfterTheEnd)
{
    CHookedThread thread([] { return false; });
    ASSERT_TRUE(thread.Start("ends"));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_TRUE(thread.Wait_Exit(0));
}

TEST(CustomThreadBaseWaitExit, ComesTrueOnlyAfterFinally)
{
    CustomConditionVariable inFinally;
    CustomConditionVariable mayLeaveFinally;
    CHookedThread thread([] { return false; });
    thread.m_finally = [&] {
        inFinally.Set();
        mayLeaveFinally.WaitOne(NO_LIMIT_MS);
    };
    ASSERT_TRUE(thread.Start("lingers"));
    ASSERT_TRUE(inFinally.WaitOne(NO_LIMIT_MS));
    EXPECT_FALSE(thread.Wait_Exit(5));
    mayLeaveFinally.Set();
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
}

/// Holds a thread up on its way out, where it frees what it had for itself.
class CHeldUpExit {
public:
    CHeldUpExit() = default;
    CHeldUpExit(const CHeldUpExit&) = delete;
    CHeldUpExit& operator=(const CHeldUpExit&) = delete;
    ~CHeldUpExit()
    {
        if (m_mayLeave != nullptr)
            m_mayLeave->WaitOne(NO_LIMIT_MS);
    }

    std::shared_ptr<CustomConditionVariable> m_mayLeave; // the thread may be the last to use it
};

thread_local CHeldUpExit t_heldUpExit;

TEST(CustomThreadBaseWaitExit, TheThreadsWayOutIsNotWaitedFor)
{
    const auto mayLeave = std::make_shared<CustomConditionVariable>();
    {
        CHookedThread thread([&mayLeave] {
            t_heldUpExit.m_mayLeave = mayLeave;
            return false;
        });
        ASSERT_TRUE(thread.Start("leaves slowly"));
        EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS)); // would never come back if it waited for that
    }
    EXPECT_GT(mayLeave.use_count(), 1) << "nobody was held up";
    mayLeave->Set();
}

TEST(CustomThreadBaseWaitExit, SeveralThreadsMayWaitAtOnceAndAllAreTold)
{
    CHookedThread thread;
    ASSERT_TRUE(thread.Start("awaited"));
    std::atomic<int> toldCount = 0;
    std::vector<std::thread> waiters;
    waiters.reserve(4);
    for (int i = 0; i < 4; ++i)
        waiters.emplace_back([&] { toldCount += thread.Wait_Exit(NO_LIMIT_MS) ? 1 : 0; });
    thread.Stop();
    for (std::thread& waiter : waiters)
        waiter.join();
    EXPECT_EQ(toldCount, 4);
}

TEST(CustomThreadBaseWaitExit, OnTheOwnThreadItIsFalseAtOnce)
{
    bool answer = true;
    CHookedThread thread;
    thread.m_oneLoop = [&] {
        thread.Stop();
        answer = thread.Wait_Exit(NO_LIMIT_MS); // would never come back if it waited
        return true;
    };
    ASSERT_TRUE(thread.Start("asks itself"));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_FALSE(answer);
}

TEST(CustomThreadBaseWaitExit, ALaterThreadThatIsGivenTheEndedOnesIdIsNotTakenForIt)
{
    CHookedThread ended([] { return false; });
    ASSERT_TRUE(ended.Start("ended"));
    ASSERT_TRUE(ended.Wait_Exit(NO_LIMIT_MS));
    bool answer = false;
    CHookedThread later([&] { // same stack size, so the platform likes to hand out the same id again
        answer = ended.Wait_Exit(0);
        return false;
    });
    ASSERT_TRUE(later.Start("later"));
    ASSERT_TRUE(later.Wait_Exit(NO_LIMIT_MS));
    EXPECT_TRUE(answer);
}

TEST(CustomThreadBaseWaitExit, AThreadMayStopAndAwaitItsWorkers)
{
    std::vector<std::unique_ptr<CHookedThread>> workers;
    for (int i = 0; i < 6; ++i) {
        workers.push_back(std::make_unique<CHookedThread>());
        ASSERT_TRUE(workers.back()->Start("worker"));
    }
    int endedCount = 0;
    CHookedThread master([&] {
        for (const auto& worker : workers)
            worker->Stop();
        for (const auto& worker : workers)
            endedCount += worker->Wait_Exit(NO_LIMIT_MS) ? 1 : 0;
        return false;
    });
    ASSERT_TRUE(master.Start("master"));
    EXPECT_TRUE(master.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(endedCount, 6);
}

TEST(CustomThreadBaseWaitExit, WhatTheThreadWroteIsSeenByTheWaiter)
{
    int written = 0;
    CHookedThread thread([&] {
        written = 42;
        return false;
    });
    ASSERT_TRUE(thread.Start("writes"));
    ASSERT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(written, 42);
}

// ---- Wait_PrepareComplete

TEST(CustomThreadBaseWaitPrepareComplete, IsFalseAtOnceWhenNoThreadWasStarted)
{
    CHookedThread thread;
    EXPECT_FALSE(thread.Wait_PrepareComplete());
}

TEST(CustomThreadBaseWaitPrepareComplete, WaitsForPrepareAndTellsItsResult)
{
    CustomConditionVariable mayFinishPrepare;
    std::atomic<bool> isPrepareDone = false;
    CHookedThread thread;
    thread.m_prepare = [&] {
        mayFinishPrepare.WaitOne(NO_LIMIT_MS);
        isPrepareDone = true;
        return true;
    };
    ASSERT_TRUE(thread.Start("prepares"));
    std::thread releaser([&] { mayFinishPrepare.Set(); });
    EXPECT_TRUE(thread.Wait_PrepareComplete());
    EXPECT_TRUE(isPrepareDone);
    releaser.join();
}

TEST(CustomThreadBaseWaitPrepareComplete, StillTellsTheResultAfterTheEnd)
{
    CHookedThread thread([] { return false; });
    ASSERT_TRUE(thread.Start("short"));
    ASSERT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_TRUE(thread.Wait_PrepareComplete());
}

TEST(CustomThreadBaseWaitPrepareComplete, OnTheOwnThreadItNeverWaits)
{
    bool answerInPrepare = true;
    bool answerInLoop = false;
    CHookedThread thread;
    thread.m_prepare = [&] {
        answerInPrepare = thread.Wait_PrepareComplete();
        return true;
    };
    thread.m_oneLoop = [&] {
        answerInLoop = thread.Wait_PrepareComplete();
        return false;
    };
    ASSERT_TRUE(thread.Start("asks itself"));
    ASSERT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_FALSE(answerInPrepare);
    EXPECT_TRUE(answerInLoop);
}

// ---- destruction

TEST(CustomThreadBaseDestruction, TheObjectMayGoRightAfterWaitExitSaidTrue)
{
    for (int i = 0; i < 200; ++i) { // the sanitizers watch
        auto thread = std::make_unique<CHookedThread>([i] { return i % 3 != 0; });
        ASSERT_TRUE(thread->Start("short"));
        thread->Stop();
        ASSERT_TRUE(thread->Wait_Exit(NO_LIMIT_MS));
        thread.reset();
    }
}

TEST(CustomThreadBaseDestruction, AnObjectThatNeverStartedMayGo)
{
    const CHookedThread thread;
    EXPECT_FALSE(thread.Failed());
}

/// Leaves everything to the destructor of the base, as a derived class should not.
class CCareless : public CustomThreadBase {
public:
    explicit CCareless(std::shared_ptr<int> held) : m_held(std::move(held)) {}

protected:
    bool OneLoop() override { return false; }

private:
    std::shared_ptr<int> m_held;
};

TEST(CustomThreadBaseDestruction, TheBaseEndsAPausedThreadAsALastResort)
{
    const auto held = std::make_shared<int>(0);
    {
        CCareless thread(held);
        thread.Pause();
        ASSERT_TRUE(thread.Start("careless"));
        ASSERT_TRUE(thread.Wait_Paused());
    }
    EXPECT_EQ(held.use_count(), 1);
}

} // namespace
