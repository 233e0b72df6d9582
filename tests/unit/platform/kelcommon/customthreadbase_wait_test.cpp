#include <kelcommon/customthreadbase.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <kelcommon/customconditionvariable.h>

#include "hookedthread.h"
#include "livethreads.h"
#include "sanitized.h"

namespace {

using namespace std::chrono_literals;

/// What a thread does while it exits, in the destructor of a thread_local object.
class CLastAct {
public:
    CLastAct() = default;
    CLastAct(const CLastAct&) = delete;
    CLastAct& operator=(const CLastAct&) = delete;
    ~CLastAct()
    {
        if (m_act)
            m_act();
    }

    std::function<void()> m_act;
};

thread_local CLastAct t_lastAct;

/// A thread whose one step ends it, and which acts once more while it exits.
class CLeavingThread : public CHookedThread {
public:
    explicit CLeavingThread(std::function<void()> act)
        : CHookedThread([act = std::move(act)] {
              t_lastAct.m_act = act;
              return false;
          })
    {}
};

/// Lets several threads ask the same at once.
/// @return answers that were true
int TrueAnswers(int threadCount, const std::function<bool()>& ask)
{
    std::atomic<int> count = 0;
    std::vector<std::thread> threads;
    threads.reserve(static_cast<std::size_t>(threadCount));
    for (int i = 0; i < threadCount; ++i)
        threads.emplace_back([&] { count += ask() ? 1 : 0; });
    for (std::thread& thread : threads)
        thread.join();
    return count;
}

// ---- Wait_Exit

TEST(ThreadExit, IsTrueAtOnceWithoutAThread)
{
    CHookedThread thread;
    EXPECT_TRUE(thread.Wait_Exit(0));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
}

TEST(ThreadExit, IsFalseUntilFinallyHasRun)
{
    CustomConditionVariable inFinally;
    CustomConditionVariable mayEnd;
    int written = 0;
    CHookedThread thread([] { return false; });
    thread.m_finally = [&] {
        inFinally.Set();
        mayEnd.WaitOne(NO_LIMIT_MS);
        written = 42;
    };
    ASSERT_TRUE(thread.Start("lingers"));
    ASSERT_TRUE(inFinally.WaitOne(NO_LIMIT_MS));
    EXPECT_FALSE(thread.Wait_Exit(0));
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(thread.Wait_Exit(15));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 15ms);
    mayEnd.Set();
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(written, 42);
    EXPECT_TRUE(thread.Wait_Exit(0)); // still
}

TEST(ThreadExit, JoinsTheThreadForEveryWaiter)
{
    for (const unsigned int limit : {600000U, NO_LIMIT_MS}) {
        int gone = 0; // no atomic: the join alone orders it
        CLeavingThread thread([&gone] {
            std::this_thread::sleep_for(5ms); // longer than a waiter needs that does not join
            gone = 1;
        });
        ASSERT_TRUE(thread.Start("exits slowly"));
        EXPECT_EQ(TrueAnswers(4, [&] { return thread.Wait_Exit(limit) && gone == 1; }), 4);
    }
}

TEST(ThreadExit, ExpiredWaitsLeaveTheJoinToOthers)
{
    for (int round = 0; round < 20; ++round) { // whoever comes first joins
        CHookedThread thread([] {
            std::this_thread::yield();
            return true;
        });
        ASSERT_TRUE(thread.Start("has many waiters"));
        std::atomic<int> joinedCount = 0;
        std::thread patient([&] { joinedCount += thread.Wait_Exit(NO_LIMIT_MS) ? 1 : 0; });
        EXPECT_EQ(TrueAnswers(3, [&] { return thread.Wait_Exit(1) || thread.Wait_Exit(0); }), 0);
        std::thread second([&] { joinedCount += thread.Wait_Exit(600000) ? 1 : 0; });
        thread.Stop();
        patient.join();
        second.join();
        EXPECT_EQ(joinedCount, 2);
        EXPECT_TRUE(thread.Wait_Exit(0));
    }
}

TEST(ThreadExit, LeavesNoThread)
{
    for (int round = 0; round < 200; ++round) {
        CHookedThread thread([] { return false; });
        ASSERT_TRUE(thread.Start("short"));
        ASSERT_TRUE(thread.Wait_Exit(600000));
        ASSERT_TRUE(LiveThreads_AreGone()) << "round " << round;
    }
}

TEST(ThreadExit, IsFalseAtOnceOnTheOwnThread)
{
    bool isJoinedInLoop = true;
    bool isJoinedOnExit = true;
    CHookedThread thread;
    thread.m_oneLoop = [&] {
        isJoinedInLoop = thread.Wait_Exit(NO_LIMIT_MS);
        t_lastAct.m_act = [&] { isJoinedOnExit = thread.Wait_Exit(NO_LIMIT_MS); };
        return false;
    };
    ASSERT_TRUE(thread.Start("asks itself"));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS)); // and is awaited meanwhile
    EXPECT_FALSE(isJoinedInLoop);
    EXPECT_FALSE(isJoinedOnExit);
}

TEST(ThreadExit, IsNoObstacleToWhatAThreadDoesLast)
{
    bool isStarted = true;
    bool isPrepared = false;
    bool isPaused = true;
    bool hasRunAnother = false;
    CHookedThread thread;
    thread.m_oneLoop = [&] {
        t_lastAct.m_act = [&] {
            std::this_thread::sleep_for(5ms); // by then the thread is awaited
            isStarted = thread.Start("again");
            isPrepared = thread.Wait_PrepareComplete();
            isPaused = thread.Wait_Paused();
            thread.Pause();
            thread.Resume();
            thread.Stop();
            CHookedThread another([] { return false; });
            hasRunAnother = another.Start("another") && another.Wait_Exit(NO_LIMIT_MS);
        };
        return false;
    };
    ASSERT_TRUE(thread.Start("acts last"));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_FALSE(isStarted);
    EXPECT_TRUE(isPrepared);
    EXPECT_FALSE(isPaused);
    EXPECT_TRUE(hasRunAnother);
}

TEST(ThreadExit, IsNotAwaitedOfAThreadStartedMeanwhile)
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

TEST(ThreadExit, TakesNoLaterThreadForTheOwnOne)
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

// ---- Wait_PrepareComplete

TEST(ThreadPrepared, IsFalseAtOnceWithoutAThread)
{
    CHookedThread thread;
    EXPECT_FALSE(thread.Wait_PrepareComplete());
}

TEST(ThreadPrepared, WaitsForPrepareButNotInside)
{
    CustomConditionVariable mayGoOn;
    bool answerInside = true;
    std::atomic<bool> isDone = false;
    CHookedThread thread;
    thread.m_prepare = [&] {
        answerInside = thread.Wait_PrepareComplete();
        mayGoOn.WaitOne(NO_LIMIT_MS);
        isDone = true;
        return true;
    };
    ASSERT_TRUE(thread.Start("prepares"));
    std::thread releaser([&] { mayGoOn.Set(); });
    EXPECT_TRUE(thread.Wait_PrepareComplete());
    EXPECT_TRUE(isDone);
    EXPECT_FALSE(answerInside);
    releaser.join();
}

// ---- Pause, Resume and Wait_Paused

TEST(ThreadPause, HoldsTheLoopUntilResume)
{
    CustomConditionVariable looped;
    CHookedThread thread([&] {
        looped.Set();
        return true;
    });
    ASSERT_TRUE(thread.Start("pauses"));
    ASSERT_TRUE(looped.WaitOne(NO_LIMIT_MS));
    thread.Pause();
    ASSERT_TRUE(thread.Wait_Paused());
    const int loopCount = thread.m_loopCount;
    looped.Reset();
    EXPECT_FALSE(looped.WaitOne(5));
    EXPECT_EQ(thread.m_loopCount, loopCount);
    EXPECT_TRUE(thread.Wait_Paused()); // still
    EXPECT_FALSE(thread.Wait_Exit(0)); // halted is not ended
    thread.Resume();
    EXPECT_TRUE(looped.WaitOne(NO_LIMIT_MS));
}

TEST(ThreadPause, BeforeStartHaltsAfterPrepareUntilStop)
{
    CHookedThread thread;
    thread.Pause();
    ASSERT_TRUE(thread.Start("starts halted"));
    EXPECT_TRUE(thread.Wait_Paused());
    EXPECT_EQ(thread.m_prepareCount, 1);
    thread.Stop();
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(thread.m_loopCount, 0);
    EXPECT_EQ(thread.m_finallyCount, 1);
}

TEST(ThreadPause, OfTheOwnThreadGoesStepByStep)
{
    bool isAnsweredInside = false;
    CHookedThread thread;
    thread.m_oneLoop = [&] {
        thread.Pause();
        isAnsweredInside = isAnsweredInside || thread.Wait_Paused(); // false at once
        return true;
    };
    ASSERT_TRUE(thread.Start("pauses itself"));
    for (int loopCount = 1; loopCount <= 20; ++loopCount) {
        ASSERT_TRUE(thread.Wait_Paused());
        EXPECT_EQ(thread.m_loopCount, loopCount);
        thread.Resume(); // for one step; the halt that ends here must not be taken for the next
    }
    thread.StopAndWait();
    EXPECT_FALSE(isAnsweredInside);
}

TEST(ThreadPause, IsNotAwaitedWithoutALoop)
{
    CHookedThread thread([] { return false; });
    EXPECT_FALSE(thread.Wait_Paused()); // not started
    ASSERT_TRUE(thread.Start("ends"));
    ASSERT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    thread.Pause();
    EXPECT_FALSE(thread.Wait_Paused()); // has ended
}

TEST(ThreadPause, IsNotAwaitedOnceTheLoopEnds)
{
    for (const bool isStopped : {false, true}) {
        CustomConditionVariable mayEnd;
        CHookedThread thread([&] { return !mayEnd.WaitOne(NO_LIMIT_MS); });
        ASSERT_TRUE(thread.Start("busy"));
        std::atomic<bool> answer = true;
        std::thread waiter([&] { answer = thread.Wait_Paused(); });
        if (isStopped)
            thread.Stop(); // while the loop is still inside its step
        else
            mayEnd.Set();
        waiter.join();
        EXPECT_FALSE(answer);
        mayEnd.Set();
    }
}

TEST(ThreadPause, IsToldToAllWhenTheHaltIsBrief)
{
    for (int i = 0; i < 10; ++i) { // a waiter may wake after the loop runs on again
        CHookedThread thread;
        thread.Pause();
        std::atomic<bool> answer = false;
        std::atomic<bool> isAsking = false;
        CustomConditionVariable mayPrepare;
        thread.m_prepare = [&] { return mayPrepare.WaitOne(NO_LIMIT_MS); };
        ASSERT_TRUE(thread.Start("brief halt"));
        std::thread first([&] {
            isAsking = true;
            answer = thread.Wait_Paused();
        });
        while (!isAsking)
            std::this_thread::yield();
        mayPrepare.Set();
        ASSERT_TRUE(thread.Wait_Paused());
        thread.Resume();
        thread.Pause(); // for a first waiter that came too late for the first halt
        first.join();
        EXPECT_TRUE(answer);
    }
}

TEST(ThreadPause, MayBeCalledByManyThreadsAtOnce)
{
    CHookedThread thread;
    ASSERT_TRUE(thread.Start("busy"));
    EXPECT_EQ(TrueAnswers(3,
                          [&] {
                              for (int round = 0; round < 100; ++round) {
                                  thread.Pause();
                                  thread.Resume();
                                  thread.Wait_Exit(0);
                                  thread.Wait_PrepareComplete();
                              }
                              return true;
                          }),
              3);
    thread.Stop();
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(thread.m_finallyCount, 1);
}

// ---- destruction and fork

TEST(ThreadDestruction, MayFollowWaitExitAtOnce)
{
    for (int i = 0; i < 200; ++i) { // the sanitizers watch
        auto thread = std::make_unique<CHookedThread>([i] { return i % 3 != 0; });
        ASSERT_TRUE(thread->Start("short"));
        thread->Stop();
        ASSERT_TRUE(thread->Wait_Exit(NO_LIMIT_MS));
        thread.reset();
    }
}

TEST(ThreadDestruction, OfTheBaseJoinsAPausedThread)
{
    /// Leaves everything to the destructor of the base, as a derived class should not.
    class CCareless : public CustomThreadBase {
        bool OneLoop() override { return false; }
    };
    {
        CCareless thread;
        thread.Pause();
        ASSERT_TRUE(thread.Start("careless"));
        ASSERT_TRUE(thread.Wait_Paused());
    }
    EXPECT_TRUE(LiveThreads_AreGone());
}

#if defined(__linux__) && !defined(DOTWEAVE_TEST_IS_SANITIZED)
bool Thread_StartAndJoin()
{
    CHookedThread thread([] { return false; });
    return thread.Start("short") && thread.Wait_Exit(NO_LIMIT_MS);
}

TEST(ThreadForkDeathTest, AChildStartsThreadsOfItsOwn)
{
    GTEST_FLAG_SET(death_test_style, "fast"); // the child goes on here
    EXPECT_TRUE(Thread_StartAndJoin());
    EXPECT_EXIT(std::exit(Thread_StartAndJoin() ? 0 : 1), // NOLINT(concurrency-mt-unsafe): its only thread
                testing::ExitedWithCode(0), "");
}
#endif

} // namespace
