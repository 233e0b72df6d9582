#include <kelcommon/customthreadbase.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <new>
#include <ostream>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#if defined(__linux__)
#include <pthread.h>
#include <sys/resource.h>
#endif

#include <gtest/gtest.h>
#include <kelcommon/customconditionvariable.h>

#include "hookedthread.h"
#include "sanitized.h"
#include "virtualslots.h"

namespace {

static_assert(std::is_abstract_v<CustomThreadBase>);
static_assert(std::has_virtual_destructor_v<CustomThreadBase>);
static_assert(!std::is_copy_constructible_v<CustomThreadBase>);
static_assert(!std::is_copy_assignable_v<CustomThreadBase>);

#if defined(DOTWEAVE_TEST_HAS_SLOTS)
TEST(ThreadClass, OperationsAreInTheAgreedSlots)
{
    EXPECT_EQ(CThreadSlots<CustomThreadBase>::Slots(), ThreadSlots_Agreed());
}
#endif

// ---- the run

TEST(ThreadRun, CallsItsStepsInOrderOnOneOtherThread)
{
    std::vector<std::string> calls;
    std::vector<std::thread::id> ids;
    const auto note = [&](const char* call) {
        calls.emplace_back(call);
        ids.push_back(std::this_thread::get_id());
        return calls.size() < 4;
    };
    CHookedThread thread([&] { return note("OneLoop"); });
    thread.m_prepare = [&] { return note("Prepare"); };
    thread.m_finally = [&] { note("Finally"); };
    ASSERT_TRUE(thread.Start("order"));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(calls, (std::vector<std::string>{"Prepare", "OneLoop", "OneLoop", "OneLoop", "Finally"}));
    EXPECT_EQ(ids, std::vector<std::thread::id>(5, ids[0]));
    EXPECT_NE(ids[0], std::this_thread::get_id());
}

TEST(ThreadRun, RepeatsOneLoopUntilStop)
{
    CustomConditionVariable hundredthLoop;
    CHookedThread thread;
    thread.m_oneLoop = [&] {
        if (thread.m_loopCount == 100)
            hundredthLoop.Set();
        return true;
    };
    ASSERT_TRUE(thread.Start("loops"));
    EXPECT_TRUE(hundredthLoop.WaitOne(NO_LIMIT_MS));
    EXPECT_FALSE(thread.Wait_Exit(0));
    thread.StopAndWait();
    EXPECT_GE(thread.m_loopCount, 100);
    EXPECT_EQ(thread.m_finallyCount, 1);
}

TEST(ThreadRun, NeedsNeitherPrepareNorFinally)
{
    class CBare : public CustomThreadBase {
        bool OneLoop() override { return false; }
    };
    CBare thread;
    ASSERT_TRUE(thread.Start(nullptr)); // nor a name
    EXPECT_TRUE(thread.Wait_PrepareComplete());
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
}

/// A way for a run to end, and what is called until then.
struct SEnding {
    const char* name;
    void (*setUp)(CHookedThread& thread);
    bool isPrepared;
    int loopCount;
    int finallyCount;
};

std::ostream& operator<<(std::ostream& stream, const SEnding& ending)
{
    return stream << ending.name;
}

constexpr SEnding ENDINGS[] = {
    {"OneLoopIsFalse", [](CHookedThread& thread) { thread.m_oneLoop = [] { return false; }; }, true, 1, 1},
    {"OneLoopStops",
     [](CHookedThread& thread) {
         thread.m_oneLoop = [&thread] {
             thread.Stop();
             thread.Stop();
             return true; // the stop counts, whatever the step returns
         };
     },
     true, 1, 1},
    {"OneLoopThrows",
     [](CHookedThread& thread) { thread.m_oneLoop = []() -> bool { throw std::runtime_error("no ink"); }; },
     true, 1, 1},
    {"OneLoopThrows42", [](CHookedThread& thread) { thread.m_oneLoop = []() -> bool { throw 42; }; }, true, 1,
     1},
    {"PrepareIsFalse", [](CHookedThread& thread) { thread.m_prepare = [] { return false; }; }, false, 0, 0},
    {"PrepareThrows",
     [](CHookedThread& thread) { thread.m_prepare = []() -> bool { throw std::bad_alloc(); }; }, false, 0, 0},
    {"PrepareStops",
     [](CHookedThread& thread) {
         thread.m_prepare = [&thread] {
             thread.Stop();
             return true;
         };
     },
     true, 0, 1},
    {"FinallyThrows",
     [](CHookedThread& thread) {
         thread.m_oneLoop = [] { return false; };
         thread.m_finally = [] { throw std::runtime_error("too late"); };
     },
     true, 1, 1},
};

class ThreadEnding : public testing::TestWithParam<SEnding> {};

TEST_P(ThreadEnding, MakesTheDueCalls)
{
    CHookedThread thread;
    GetParam().setUp(thread);
    ASSERT_TRUE(thread.Start("ends"));
    EXPECT_EQ(thread.Wait_PrepareComplete(), GetParam().isPrepared);
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(thread.m_prepareCount, 1);
    EXPECT_EQ(thread.m_loopCount, GetParam().loopCount);
    EXPECT_EQ(thread.m_finallyCount, GetParam().finallyCount);
    EXPECT_EQ(thread.Wait_PrepareComplete(), GetParam().isPrepared); // still
}

INSTANTIATE_TEST_SUITE_P(By, ThreadEnding, testing::ValuesIn(ENDINGS),
                         [](const auto& ending) { return ending.param.name; });

// ---- Start

TEST(ThreadStart, AnObjectRunsAtMostOnce)
{
    CHookedThread thread;
    ASSERT_TRUE(thread.Start("first"));
    EXPECT_FALSE(thread.Start("while it runs"));
    thread.StopAndWait();
    EXPECT_FALSE(thread.Start("again"));
    EXPECT_TRUE(thread.Wait_Exit(0));
    EXPECT_EQ(thread.m_prepareCount, 1);
    EXPECT_EQ(thread.m_finallyCount, 1);
}

TEST(ThreadStart, AStopBeforeItIsNotLost)
{
    CHookedThread thread;
    thread.Stop();
    EXPECT_FALSE(thread.Start("too late"));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(thread.m_prepareCount, 0);
}

TEST(ThreadStart, OneOfManyAtOnceSucceeds)
{
    CHookedThread thread;
    std::atomic<int> successCount = 0;
    std::vector<std::thread> starters;
    starters.reserve(4);
    for (int i = 0; i < 4; ++i)
        starters.emplace_back([&] { successCount += thread.Start("race") ? 1 : 0; });
    for (std::thread& starter : starters)
        starter.join();
    thread.StopAndWait();
    EXPECT_EQ(successCount, 1);
    EXPECT_EQ(thread.m_prepareCount, 1);
}

#if defined(__linux__)

TEST(ThreadStart, GivesNameAndASmallStack)
{
    char name[32] = {};
    std::size_t stackBytes = 0;
    CHookedThread thread([&name, &stackBytes] {
        pthread_getname_np(pthread_self(), name, sizeof(name));
        pthread_attr_t attributes;
        if (pthread_getattr_np(pthread_self(), &attributes) == 0) {
            pthread_attr_getstacksize(&attributes, &stackBytes);
            pthread_attr_destroy(&attributes);
        }
        return false;
    });
    std::string callersName = "CMaskDataGenerator_Position";
    ASSERT_TRUE(thread.Start(callersName.c_str()));
    callersName.assign(callersName.size(), '?'); // the thread has its own copy
    ASSERT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_STREQ(name, "CMaskDataGenera"); // the kernel keeps 15 characters
    EXPECT_GE(stackBytes, std::size_t{1} << 20U);
    EXPECT_LT(stackBytes, std::size_t{2} << 20U); // sanitizers add some of their own
}

#if !defined(DOTWEAVE_TEST_IS_SANITIZED) // sanitizers need address space themselves

/// Ends the process with 0 when Start fails for want of a stack and then succeeds with one.
[[noreturn]] void Process_RefuseThenAllow()
{
    rlimit unlimited = {};
    getrlimit(RLIMIT_AS, &unlimited);
    rlimit none = unlimited;
    none.rlim_cur = 0;

    CHookedThread thread([] { return false; });
    setrlimit(RLIMIT_AS, &none); // from here no memory can be had for a stack
    const bool isRefused = !thread.Start("refused") && thread.Wait_Exit(NO_LIMIT_MS);
    setrlimit(RLIMIT_AS, &unlimited);
    const bool isAllowed = thread.Start("allowed") && thread.Wait_Exit(NO_LIMIT_MS);
    std::_Exit(isRefused && isAllowed && thread.m_prepareCount == 1 && thread.m_loopCount == 1 ? 0 : 1);
}

TEST(ThreadStartDeathTest, ARefusedThreadMayBeTriedAgain)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a fresh process, without stacks of earlier threads
    EXPECT_EXIT(Process_RefuseThenAllow(), testing::ExitedWithCode(0), "");
}

#endif
#endif

} // namespace
