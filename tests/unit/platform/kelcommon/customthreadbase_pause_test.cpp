#include <kelcommon/customthreadbase.h>

#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <kelcommon/customconditionvariable.h>

#include "hookedthread.h"

namespace {

TEST(CustomThreadBasePause, AHaltedLoopStandsStillUntilResume)
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

TEST(CustomThreadBasePause, APauseBeforeStartHaltsTheLoopAfterPrepare)
{
    CHookedThread thread;
    thread.Pause();
    ASSERT_TRUE(thread.Start("starts halted"));
    EXPECT_TRUE(thread.Wait_Paused());
    EXPECT_EQ(thread.m_prepareCount, 1);
    EXPECT_EQ(thread.m_loopCount, 0);
}

TEST(CustomThreadBasePause, TheOwnThreadMayPauseItself)
{
    CHookedThread thread;
    thread.m_oneLoop = [&] {
        thread.Pause();
        return true;
    };
    ASSERT_TRUE(thread.Start("pauses itself"));
    for (int loopCount = 1; loopCount <= 20; ++loopCount) {
        ASSERT_TRUE(thread.Wait_Paused());
        EXPECT_EQ(thread.m_loopCount, loopCount);
        thread.Resume(); // for exactly one step; the halt just left must not be taken for the next
    }
}

TEST(CustomThreadBasePause, StopWakesAHaltedLoop)
{
    CHookedThread thread;
    thread.Pause();
    ASSERT_TRUE(thread.Start("halted"));
    ASSERT_TRUE(thread.Wait_Paused());
    thread.Stop();
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(thread.m_loopCount, 0);
    EXPECT_EQ(thread.m_finallyCount, 1);
}

TEST(CustomThreadBasePause, WaitPausedIsFalseWhenNoThreadWasStartedOrItHasEnded)
{
    CHookedThread thread([] { return false; });
    EXPECT_FALSE(thread.Wait_Paused());
    ASSERT_TRUE(thread.Start("ends"));
    ASSERT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_FALSE(thread.Wait_Paused());
    thread.Pause();
    EXPECT_FALSE(thread.Wait_Paused());
}

TEST(CustomThreadBasePause, WaitPausedIsFalseOnceTheThreadIsStopped)
{
    CustomConditionVariable mayGoOn;
    CHookedThread thread([&] { return mayGoOn.WaitOne(NO_LIMIT_MS); });
    ASSERT_TRUE(thread.Start("busy"));
    std::atomic<bool> answer = true;
    std::thread waiter([&] { answer = thread.Wait_Paused(); });
    thread.Stop(); // the loop itself is still inside its step
    waiter.join();
    EXPECT_FALSE(answer);
    mayGoOn.Set();
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
}

TEST(CustomThreadBasePause, WaitPausedIsFalseWhenTheLoopEndsByItself)
{
    CustomConditionVariable mayEnd;
    CHookedThread thread([&] { return !mayEnd.WaitOne(NO_LIMIT_MS); });
    ASSERT_TRUE(thread.Start("ends"));
    std::atomic<bool> answer = true;
    std::thread waiter([&] { answer = thread.Wait_Paused(); });
    mayEnd.Set();
    waiter.join();
    EXPECT_FALSE(answer);
}

TEST(CustomThreadBasePause, OnTheOwnThreadWaitPausedIsFalseAtOnce)
{
    bool answer = true;
    CHookedThread thread;
    thread.m_oneLoop = [&] {
        thread.Pause();
        answer = thread.Wait_Paused();
        thread.Resume();
        return false;
    };
    ASSERT_TRUE(thread.Start("asks itself"));
    ASSERT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_FALSE(answer);
}

TEST(CustomThreadBasePause, AllWaitersAreToldOfABriefHalt)
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

TEST(CustomThreadBasePause, ManyThreadsMayPauseResumeAndWaitAtOnce)
{
    CHookedThread thread;
    ASSERT_TRUE(thread.Start("tossed about"));
    std::vector<std::thread> users;
    users.reserve(3);
    for (int i = 0; i < 3; ++i)
        users.emplace_back([&] {
            for (int round = 0; round < 100; ++round) {
                thread.Pause();
                thread.Resume();
                thread.Wait_Exit(0);
                thread.Wait_PrepareComplete();
            }
        });
    for (std::thread& user : users)
        user.join();
    thread.Stop();
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(thread.m_finallyCount, 1);
}

} // namespace
