// The threads of a creation are gone when it returns, so that the next one finds the same room for its own.
#include "dotweave/maskdata_base.h"

#include "livethreads.h"
#include "maskparams.h"
#include "missingthread.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <latch>
#include <system_error>
#include <thread>

#if defined(__linux__)
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace {

bool Mask_IsBuilt()
{
    CMaskData_Base mask;
    return mask.Create(MaskParam_Plain());
}

TEST(CreationThreads, NoneIsAliveAfterCreate)
{
    for (int creation = 0; creation < 500; ++creation) {
        ASSERT_TRUE(Mask_IsBuilt());
        ASSERT_TRUE(LiveThreads_AreGone()) << "after creation " << creation;
    }
}

#if defined(__linux__)

/// @return threads that can be started beside those of this process, at most one more than a generator needs
int Threads_Room()
{
    std::latch end(1);
    std::array<std::thread, GENERATOR_THREAD_COUNT + 1> threads;
    int count = 0;
    try {
        for (std::thread& thread : threads) {
            thread = std::thread([&end] { end.wait(); });
            ++count;
        }
    } catch (const std::system_error&) { // no room for another one
    }
    end.count_down();
    for (int i = 0; i < count; ++i)
        threads[static_cast<std::size_t>(i)].join();
    return count;
}

/// Ends the process with 0 when every creation succeeds in a process that may have just the threads of one.
[[noreturn]] void Process_CreateInARow()
{
    // A user with no other process, as the limit counts all threads of a user and does not bind root.
    const uid_t user = 1000000U + static_cast<uid_t>(getpid());
    const auto threads = static_cast<rlim_t>(LIVE_THREADS_BASELINE + GENERATOR_THREAD_COUNT);
    const rlimit limit = {threads, threads};
    if (setuid(user) != 0 || setrlimit(RLIMIT_NPROC, &limit) != 0 || Threads_Room() != GENERATOR_THREAD_COUNT)
        std::_Exit(2);
    int failures = 0;
    for (int creation = 0; creation < 2000; ++creation)
        failures += Mask_IsBuilt() ? 0 : 1;
    static_cast<void>(std::fprintf(stderr, "%d of 2000 creations failed\n", failures));
    std::_Exit(failures == 0 ? 0 : 1);
}

TEST(CreationThreadsDeathTest, RoomForSevenIsEnough)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can become a user without other processes, whose threads would count too";
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a process of its own, before it has made any thread
    EXPECT_EXIT(Process_CreateInARow(), testing::ExitedWithCode(0), "");
}

#endif

} // namespace
