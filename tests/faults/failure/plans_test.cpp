// Whatever is refused, once or for good: a creation that says true has every byte right, and any other end
// comes quickly.

#include "dotweave/maskdata_base.h"

#include "failuremodes.h"
#include "livethreads.h"
#include "logcapture.h"
#include "maskbytes.h"
#include "missingthread.h"
#include "refusedmemory.h"
#include "threadfaults.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <new>
#include <ostream>
#include <string>
#include <vector>

namespace {

/// A creation that may fail in any way but these: a wrong byte under true, a thread that runs on, a long wait.
/// @return whether it was true
bool Creation_IsRightOrQuick(const SMaskParam& param, const std::vector<std::uint8_t>& healthy)
{
    CMaskData_Base mask;
    bool isBuilt = false;
    const auto start = std::chrono::steady_clock::now();
    try {
        isBuilt = mask.Create(param);
    } catch (const std::bad_alloc&) {
    }
    const auto time = std::chrono::steady_clock::now() - start;
    const CSparedRequests spared; // for the checks
    if (isBuilt) {
        EXPECT_TRUE(MaskBytes(mask) == healthy) << "true, with a wrong byte";
    } else {
        EXPECT_LT(time, FALSE_WITHIN);
    }
    EXPECT_TRUE(LiveThreads_AreGone());
    return isBuilt;
}

/// Modes with no more items than go round at once, and the same with more.
std::vector<SFailureMode> PlanModes()
{
    std::vector<SFailureMode> modes;
    for (const SFailureMode& mode : FailureModes())
        for (const char* name : {"HardEdges", "Smooth2", "Smooth3Sine", "TwoBitsTwoColours"})
            if (mode.name == name) {
                SFailureMode many = {mode.name + "ManyItems", mode.param};
                many.param.colorCount = 5;
                modes.insert(modes.end(), {mode, many});
            }
    return modes;
}

class MemoryPlan : public testing::TestWithParam<SFailureMode> {
protected:
    /// Each request in turn is the first that is refused.
    void EachRequest_Check(ERequester requester, ERefusal refusal)
    {
        const std::vector<std::uint8_t> healthy = MaskBytes_Undisturbed(GetParam().param);
        FirstRecord_Log();
        const auto attempt = [&](const SRefusalPlan& plan) {
            SCOPED_TRACE(plan.number);
            const CLogCapture quiet;
            const CRefusedMemory refused(plan);
            const bool isBuilt = Creation_IsRightOrQuick(GetParam().param, healthy);
            EXPECT_TRUE(isBuilt || refused.HasRefused());
            return SAttempt{refused.HasRefused(), 0};
        };
        EXPECT_GE(Refuse_EachInTurn({0, requester, refusal}, attempt), 6);
    }
};

TEST_P(MemoryPlan, CallerOnce)
{
    EachRequest_Check(ERequester::Caller, ERefusal::Once);
}

TEST_P(MemoryPlan, CallerForGood)
{
    EachRequest_Check(ERequester::Caller, ERefusal::FromThenOn);
}

TEST_P(MemoryPlan, ThreadsOnce)
{
    EachRequest_Check(ERequester::Others, ERefusal::Once);
}

TEST_P(MemoryPlan, ThreadsForGood)
{
    EachRequest_Check(ERequester::Others, ERefusal::FromThenOn);
}

TEST_P(MemoryPlan, AllForGood)
{
    EachRequest_Check(ERequester::All, ERefusal::FromThenOn);
}

INSTANTIATE_TEST_SUITE_P(Of, MemoryPlan, testing::ValuesIn(PlanModes()),
                         [](const auto& modeCase) { return modeCase.param.name; });

class ThreadPlan : public testing::TestWithParam<SFailureMode> {
protected:
    ThreadPlan() : m_healthy(MaskBytes_Undisturbed(GetParam().param)) {}

    /// A creation whose threads fail to prepare where `fails` says so. Threads are numbered as they start: six
    /// workers, then the producer.
    template <typename TFails>
    bool Creation_WithFailing(TFails fails)
    {
        std::mutex mutex;
        std::vector<const CustomThreadBase*> started;
        SThreadFaults faults;
        faults.starting = [&](const CustomThreadBase& thread) {
            const std::lock_guard<std::mutex> lock(mutex);
            started.push_back(&thread);
        };
        faults.failsToPrepare = [&](const CustomThreadBase& thread) {
            const std::lock_guard<std::mutex> lock(mutex);
            return fails(
                static_cast<int>(std::find(started.begin(), started.end(), &thread) - started.begin()));
        };
        const CLogCapture quiet;
        const CThreadFaults panel(faults);
        return Creation_IsRightOrQuick(GetParam().param, m_healthy);
    }

    std::vector<std::uint8_t> m_healthy;
};

constexpr int PRODUCER = GENERATOR_THREAD_COUNT - 1;

TEST_P(ThreadPlan, EachIsRefused)
{
    for (int started = 0; started < GENERATOR_THREAD_COUNT; ++started) {
        SCOPED_TRACE(started);
        const CLogCapture quiet;
        const CThreadFaults threads(started);
        EXPECT_FALSE(Creation_IsRightOrQuick(GetParam().param, m_healthy));
    }
}

TEST_P(ThreadPlan, EachFailsToPrepare)
{
    for (int failing = 0; failing < GENERATOR_THREAD_COUNT; ++failing) {
        SCOPED_TRACE(failing);
        EXPECT_EQ(Creation_WithFailing([failing](int thread) { return thread == failing; }),
                  failing != PRODUCER)
            << "workers do each other's share";
    }
}

TEST_P(ThreadPlan, WithoutWorkersIsFalse)
{
    EXPECT_FALSE(Creation_WithFailing([](int thread) { return thread != PRODUCER; }));
    EXPECT_FALSE(Creation_WithFailing([](int /*thread*/) { return true; }));
    for (int left = 0; left < PRODUCER; ++left)
        EXPECT_TRUE(Creation_WithFailing([left](int thread) { return thread != PRODUCER && thread != left; }))
            << "one is enough: " << left;
}

INSTANTIATE_TEST_SUITE_P(Of, ThreadPlan, testing::ValuesIn(PlanModes()),
                         [](const auto& modeCase) { return modeCase.param.name; });

} // namespace
