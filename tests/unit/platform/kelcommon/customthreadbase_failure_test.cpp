#include <kelcommon/customthreadbase.h>

#include <cstdlib>
#include <new>
#include <stdexcept>

#include <gtest/gtest.h>

#include "hookedthread.h"
#include "sanitized.h"

// A thread that the platform refuses: only a plain Linux build can bring that about, as the sanitizers need
// address space themselves.
#if defined(__linux__) && !defined(DOTWEAVE_TEST_IS_SANITIZED)
#define CAN_REFUSE_THREADS 1
#include <sys/resource.h>
#endif

namespace {

TEST(CustomThreadBaseFailure, AnExceptionFromOneLoopEndsTheLoopAndStillReachesFinally)
{
    CHookedThread thread([]() -> bool { throw std::runtime_error("no ink"); });
    ASSERT_TRUE(thread.Start("throws"));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(thread.m_loopCount, 1);
    EXPECT_EQ(thread.m_finallyCount, 1);
    EXPECT_TRUE(thread.Failed());
}

TEST(CustomThreadBaseFailure, AnExceptionFromPrepareCountsAsAFailedPrepare)
{
    CHookedThread thread;
    thread.m_prepare = []() -> bool { throw std::bad_alloc(); };
    ASSERT_TRUE(thread.Start("throws"));
    EXPECT_FALSE(thread.Wait_PrepareComplete());
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(thread.m_loopCount, 0);
    EXPECT_EQ(thread.m_finallyCount, 0);
    EXPECT_TRUE(thread.Failed());
}

TEST(CustomThreadBaseFailure, AnExceptionFromFinallyIsKeptInsideToo)
{
    CHookedThread thread([] { return false; });
    thread.m_finally = [] { throw std::runtime_error("too late"); };
    ASSERT_TRUE(thread.Start("throws"));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_TRUE(thread.Failed());
}

TEST(CustomThreadBaseFailure, SomethingThrownThatIsNoStandardExceptionIsKeptInsideToo)
{
    CHookedThread thread([]() -> bool { throw 42; });
    ASSERT_TRUE(thread.Start("throws"));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_TRUE(thread.Failed());
}

#if defined(CAN_REFUSE_THREADS)

/// Ends the process, which has made no thread yet and so keeps no stack for reuse.
[[noreturn]] void RefusedThenAllowed()
{
    rlimit unlimited = {};
    getrlimit(RLIMIT_AS, &unlimited);
    rlimit none = unlimited;
    none.rlim_cur = 0;

    CHookedThread thread([] { return false; });
    setrlimit(RLIMIT_AS, &none); // from here no memory can be had for a stack
    const bool isStartedWithout = thread.Start("refused");
    const bool isEndedWithout = thread.Wait_Exit(NO_LIMIT_MS);
    setrlimit(RLIMIT_AS, &unlimited);
    const bool isStarted = thread.Start("allowed");
    const bool isEnded = thread.Wait_Exit(NO_LIMIT_MS);
    const bool isGood = !isStartedWithout && isEndedWithout && isStarted && isEnded &&
                        thread.m_prepareCount == 1 && thread.m_loopCount == 1;
    std::_Exit(isGood ? EXIT_SUCCESS : EXIT_FAILURE);
}

TEST(CustomThreadBaseStartDeathTest, AThreadThatCannotBeMadeIsReportedAndMayBeTriedAgain)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a fresh process, without stacks of earlier tests
    EXPECT_EXIT(RefusedThenAllowed(), testing::ExitedWithCode(EXIT_SUCCESS), "");
}

#endif

} // namespace
