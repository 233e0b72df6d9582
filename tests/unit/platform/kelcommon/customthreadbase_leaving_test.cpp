// Threads on their way out: what they may still do then, and what becomes of them when the process forks.
#include <kelcommon/customthreadbase.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <thread>

#include <gtest/gtest.h>

#include "hookedthread.h"
#include "nolimit.h"
#include "sanitized.h"

namespace {

/// What a thread does on its way out.
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

void Thread_StartAndEnd()
{
    CHookedThread thread([] { return false; });
    EXPECT_TRUE(thread.Start("short"));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
}

/// A thread that has ended and then does something.
void Thread_LeaveWith(const std::function<void()>& act)
{
    CHookedThread thread([&act] {
        t_lastAct.m_act = act;
        return false;
    });
    EXPECT_TRUE(thread.Start("leaves"));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
}

void Until(const std::atomic<bool>& flag)
{
    while (!flag)
        std::this_thread::yield();
}

[[noreturn, maybe_unused]] void Process_End(int code)
{
    std::exit(code); // NOLINT(concurrency-mt-unsafe): of a forked process, by its only thread
}

} // namespace

TEST(CustomThreadBaseLeaving, AThreadMayStartAndAwaitOthersOnItsWayOut)
{
    std::atomic<bool> hasActed = false;
    Thread_LeaveWith([&hasActed] {
        Thread_StartAndEnd();
        hasActed = true;
    });
    Until(hasActed);
}

TEST(CustomThreadBaseLeaving, AStartThatWaitsForAWayOutStandsInNobodysWay)
{
    std::atomic<bool> mayAct = false;
    std::atomic<bool> hasActed = false;
    Thread_LeaveWith([&mayAct, &hasActed] {
        Until(mayAct);
        std::this_thread::sleep_for(std::chrono::milliseconds(20)); // by then the other one waits in Start
        Thread_StartAndEnd();
        hasActed = true;
    });
    mayAct = true;
    Thread_StartAndEnd();
    Until(hasActed);
}

#if defined(__linux__) && !defined(DOTWEAVE_TEST_IS_SANITIZED)
TEST(CustomThreadBaseLeaving, AForkedProcessDoesNotWaitForThoseOfItsParent)
{
    GTEST_FLAG_SET(death_test_style, "fast"); // the child goes on here
    for (int round = 0; round < 30; ++round) {
        for (int i = 0; i < 7; ++i)
            Thread_StartAndEnd();
        EXPECT_EXIT(Process_End(0), testing::ExitedWithCode(0), "") << "round " << round;
    }
}

TEST(CustomThreadBaseLeaving, AForkedProcessMayStartItsOwn)
{
    GTEST_FLAG_SET(death_test_style, "fast");
    Thread_StartAndEnd();
    EXPECT_EXIT(
        {
            for (int i = 0; i < 50; ++i)
                Thread_StartAndEnd();
            Process_End(testing::Test::HasFailure() ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
}
#endif
