#include <kelcommon/customthreadbase.h>

#include <atomic>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#if defined(__linux__)
#include <pthread.h>
#endif

#include <gtest/gtest.h>
#include <kelcommon/customconditionvariable.h>

#include "hookedthread.h"
#include "virtualslots.h"

namespace {

static_assert(std::is_abstract_v<CustomThreadBase>);
static_assert(std::has_virtual_destructor_v<CustomThreadBase>);
static_assert(!std::is_copy_constructible_v<CustomThreadBase>);
static_assert(!std::is_copy_assignable_v<CustomThreadBase>);

// ---- the run

TEST(CustomThreadBaseRun, CallsPrepareThenOneLoopUntilFalseThenFinallyOnOneOtherThread)
{
    std::vector<std::string> calls;
    std::vector<std::thread::id> ids;
    const auto note = [&](const char* call) {
        calls.emplace_back(call);
        ids.push_back(std::this_thread::get_id());
    };
    CHookedThread thread([&] {
        note("OneLoop");
        return calls.size() < 4;
    });
    thread.m_prepare = [&] {
        note("Prepare");
        return true;
    };
    thread.m_finally = [&] { note("Finally"); };

    ASSERT_TRUE(thread.Start("order"));
    ASSERT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(calls, (std::vector<std::string>{"Prepare", "OneLoop", "OneLoop", "OneLoop", "Finally"}));
    EXPECT_EQ(ids, std::vector<std::thread::id>(5, ids[0]));
    EXPECT_NE(ids[0], std::this_thread::get_id());
    EXPECT_FALSE(thread.Failed());
}

TEST(CustomThreadBaseRun, RepeatsOneLoopUntilStop)
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
    thread.Stop();
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_GE(thread.m_loopCount, 100);
    EXPECT_EQ(thread.m_finallyCount, 1);
}

TEST(CustomThreadBaseRun, NoFurtherOneLoopFollowsAStopFromTheOwnThread)
{
    CHookedThread thread;
    thread.m_oneLoop = [&] {
        thread.Stop();
        thread.Stop();
        return true; // the stop counts, whatever the step returns
    };
    ASSERT_TRUE(thread.Start("stops itself"));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(thread.m_loopCount, 1);
    EXPECT_EQ(thread.m_finallyCount, 1);
}

TEST(CustomThreadBaseRun, AFailedPrepareEndsTheThreadWithNeitherOneLoopNorFinally)
{
    CHookedThread thread;
    thread.m_prepare = [] { return false; };
    ASSERT_TRUE(thread.Start("unprepared"));
    EXPECT_FALSE(thread.Wait_PrepareComplete());
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(thread.m_prepareCount, 1);
    EXPECT_EQ(thread.m_loopCount, 0);
    EXPECT_EQ(thread.m_finallyCount, 0);
    EXPECT_FALSE(thread.Failed()); // no exception was thrown
}

TEST(CustomThreadBaseRun, AStopDuringPrepareLeadsStraightToFinally)
{
    CHookedThread thread;
    thread.m_prepare = [&] {
        thread.Stop();
        return true;
    };
    ASSERT_TRUE(thread.Start("stopped early"));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(thread.m_loopCount, 0);
    EXPECT_EQ(thread.m_finallyCount, 1);
}

TEST(CustomThreadBaseRun, PrepareAndFinallyNeedNotBeOverridden)
{
    class CBare : public CustomThreadBase {
    protected:
        bool OneLoop() override { return false; }
    };
    CBare thread;
    ASSERT_TRUE(thread.Start("bare"));
    EXPECT_TRUE(thread.Wait_PrepareComplete());
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_FALSE(thread.Failed());
}

TEST(CustomThreadBaseRun, EveryPublicOperationCanBeOverriddenAndIsReachedThroughTheBase)
{
    class COverriding : public CHookedThread {
    public:
        bool Start(const char*) override { return Note("Start"); }
        bool Wait_PrepareComplete() override { return Note("Wait_PrepareComplete"); }
        bool Wait_Paused() override { return Note("Wait_Paused"); }
        bool Wait_Exit(unsigned int) override { return Note("Wait_Exit"); }
        void Stop() override { Note("Stop"); }
        void Pause() override { Note("Pause"); }
        void Resume() override { Note("Resume"); }

        std::vector<std::string> m_calls;

    private:
        bool Note(const char* call)
        {
            m_calls.emplace_back(call);
            return true;
        }
    };
    COverriding thread;
    CustomThreadBase& base = thread;
    EXPECT_TRUE(base.Start("x"));
    EXPECT_TRUE(base.Wait_PrepareComplete());
    EXPECT_TRUE(base.Wait_Paused());
    EXPECT_TRUE(base.Wait_Exit(0));
    base.Stop();
    base.Pause();
    base.Resume();
    EXPECT_EQ(thread.m_calls, (std::vector<std::string>{"Start", "Wait_PrepareComplete", "Wait_Paused",
                                                        "Wait_Exit", "Stop", "Pause", "Resume"}));
}

#if defined(DOTWEAVE_TEST_HAS_SLOTS)
TEST(CustomThreadBaseRun, TheVirtualOperationsKeepTheOrderAgreedWithTheHost)
{
    EXPECT_EQ(CThreadSlots<CustomThreadBase>::Slots(), ThreadSlots_Agreed());
}
#endif

// ---- Start

TEST(CustomThreadBaseStart, ASecondStartWhileRunningIsRefusedAndChangesNothing)
{
    CHookedThread thread;
    ASSERT_TRUE(thread.Start("first"));
    EXPECT_FALSE(thread.Start("second"));
    thread.StopAndWait();
    EXPECT_EQ(thread.m_prepareCount, 1);
    EXPECT_EQ(thread.m_finallyCount, 1);
}

TEST(CustomThreadBaseStart, AnObjectRunsOnlyOnce)
{
    CHookedThread thread([] { return false; });
    ASSERT_TRUE(thread.Start("once"));
    ASSERT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_FALSE(thread.Start("again"));
    EXPECT_TRUE(thread.Wait_Exit(0));
    EXPECT_EQ(thread.m_prepareCount, 1);
}

TEST(CustomThreadBaseStart, AStopBeforeStartIsNotLost)
{
    CHookedThread thread;
    thread.Stop();
    EXPECT_FALSE(thread.Start("too late"));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_EQ(thread.m_prepareCount, 0);
}

TEST(CustomThreadBaseStart, OfManyStartsAtOnceExactlyOneSucceeds)
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

TEST(CustomThreadBaseStart, ANullNameIsAllowed)
{
    CHookedThread thread([] { return false; });
    EXPECT_TRUE(thread.Start(nullptr));
    EXPECT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
}

#if defined(__linux__)
TEST(CustomThreadBaseStart, TheThreadBearsTheFirstFifteenCharactersOfItsName)
{
    char name[32] = {};
    CHookedThread thread([&name] {
        pthread_getname_np(pthread_self(), name, sizeof(name));
        return false;
    });
    std::string callersName = "CMaskDataGenerator_Position";
    ASSERT_TRUE(thread.Start(callersName.c_str()));
    callersName.assign(callersName.size(), '?'); // the thread has its own copy
    ASSERT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_STREQ(name, "CMaskDataGenera");
}

TEST(CustomThreadBaseStart, TheThreadHasAStackOfAboutOneMebibyte)
{
    std::size_t stackBytes = 0;
    CHookedThread thread([&stackBytes] {
        pthread_attr_t attributes;
        if (pthread_getattr_np(pthread_self(), &attributes) == 0) {
            pthread_attr_getstacksize(&attributes, &stackBytes);
            pthread_attr_destroy(&attributes);
        }
        return false;
    });
    ASSERT_TRUE(thread.Start("stack"));
    ASSERT_TRUE(thread.Wait_Exit(NO_LIMIT_MS));
    EXPECT_GE(stackBytes, std::size_t{1} << 20U);
    EXPECT_LT(stackBytes, std::size_t{2} << 20U); // sanitizers add some of their own
}
#endif

} // namespace
