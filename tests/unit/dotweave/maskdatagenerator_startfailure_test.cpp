// What happens when the platform gives no further thread. Only a plain Linux build can bring that about: the
// test program replaces pthread_create for the libraries, as the sanitizers do themselves.

#include "sanitized.h"

#if defined(__linux__) && !defined(DOTWEAVE_TEST_IS_SANITIZED)

#include "maskdatagenerator.h"

#include <atomic>
#include <cerrno>
#include <cstddef>

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include "generatorjob.h"
#include "logcapture.h"
#include "maskparams.h"
#include "missingthread.h"
#include "peek.h"

namespace {

constexpr int NO_LIMIT = -1;

std::atomic<int> s_threadsLeft = NO_LIMIT; // that the platform still gives

} // namespace

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the platform's are reserved names
extern "C" __attribute__((visibility("default"))) int pthread_create(pthread_t* thread,
                                                                     const pthread_attr_t* attributes,
                                                                     void* (*run)(void*),
                                                                     void* argument) noexcept
{
    using CCreate = decltype(&pthread_create);
    static const auto create = reinterpret_cast<CCreate>(dlsym(RTLD_NEXT, "pthread_create"));
    if (s_threadsLeft == 0)
        return EAGAIN;
    if (s_threadsLeft != NO_LIMIT)
        --s_threadsLeft;
    return create(thread, attributes, run, argument);
}

namespace {

class CThreadLimit {
public:
    explicit CThreadLimit(int threadCount) { s_threadsLeft = threadCount; }
    CThreadLimit(const CThreadLimit&) = delete;
    CThreadLimit& operator=(const CThreadLimit&) = delete;
    ~CThreadLimit() { s_threadsLeft = NO_LIMIT; }
};

TEST(ThreadLimit, AnyMissingThreadFailsCreate)
{
    for (int threadCount = 0; threadCount < 7; ++threadCount) {
        SCOPED_TRACE(threadCount);
        SGeneratorJob job(PlainMask_Sliding(8, 4));
        CMaskDataGenerator generator;
        SMaskDataGenerator_Peek peek{generator};
        const CLogCapture log;
        {
            const CThreadLimit limit(threadCount);
            EXPECT_FALSE(generator.Create(job.param, 6));
        }
        EXPECT_EQ(log.Records(), Records_MissingThread(threadCount));
        EXPECT_EQ(peek.SubThreadCount(), 6);
        ASSERT_EQ(peek.SubThreads().size(), 6U);
        for (std::size_t slot = 0; slot < 6; ++slot) {
            const bool isFilled = static_cast<int>(slot) < threadCount;
            EXPECT_EQ(peek.SubThreads()[slot] != nullptr, isFilled) << slot;
            EXPECT_TRUE(!isFilled || !peek.SubThreads()[slot]->Wait_Exit(0)) << slot; // waits for work
        }
        generator.Stop(); // skips the empty slots
    }
}

TEST(ThreadLimit, SevenThreadsAreEnough)
{
    const SPlainMask mask = PlainMask_Sliding(8, 4);
    SGeneratorJob job(mask);
    CMaskDataGenerator generator;
    const CThreadLimit limit(7);
    ASSERT_TRUE(generator.Create(job.param, 6));
    EXPECT_TRUE(generator.Wait_Exit(60000));
    EXPECT_EQ(job.Bytes(), Plain_Bytes(mask));
}

TEST(ThreadLimit, FailureOfAMaskLogsEveryLevel)
{
    for (const int threadCount : {0, 3, 6}) {
        SCOPED_TRACE(threadCount);
        CMaskData_Base mask;
        SMaskData_Base_Peek peek{mask};
        const CLogCapture log;
        {
            const CThreadLimit limit(threadCount);
            EXPECT_FALSE(mask.Create(MaskParam_Plain()));
        }
        EXPECT_EQ(log.Records(), Records_MissingThread_Create(threadCount));
        ASSERT_NE(peek.MaskBlock(), nullptr); // attached before the generator was made
        EXPECT_EQ(peek.MaskBlock()->MaskDataBytesCount(), mask.MaskBytes_OneColor());
    }
}

} // namespace

#endif
