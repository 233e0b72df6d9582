#include <kelcommon/customconditionvariable.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <semaphore>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "nolimit.h"

namespace {

using namespace std::chrono_literals;

static_assert(!std::is_copy_constructible_v<CustomConditionVariable>);
static_assert(!std::is_copy_assignable_v<CustomConditionVariable>);
static_assert(!std::is_copy_constructible_v<CustomConditionVariable_Manual>);
static_assert(!std::is_copy_assignable_v<CustomConditionVariable_Manual>);

/// Threads that wait once for the same event without limit. All must be released before this is destroyed.
template <typename TEvent>
class CWaiters {
public:
    CWaiters(TEvent& event, int count)
    {
        for (int i = 0; i < count; ++i)
            m_threads.emplace_back([this, &event] {
                ++m_askingCount;
                event.WaitOne(NO_LIMIT_MS);
                m_released.release();
            });
        while (m_askingCount < count)
            std::this_thread::yield();
    }
    ~CWaiters()
    {
        for (std::thread& thread : m_threads)
            thread.join();
    }
    CWaiters(const CWaiters&) = delete;
    CWaiters& operator=(const CWaiters&) = delete;

    bool OneReleased_Within(std::chrono::milliseconds time) { return m_released.try_acquire_for(time); }

private:
    std::atomic<int> m_askingCount = 0;
    std::counting_semaphore<> m_released{0};
    std::vector<std::thread> m_threads;
};

constexpr std::chrono::milliseconds LONG_TIME = 60s; // only a waiter that was forgotten takes it

struct SEventNames {
    template <typename TEvent>
    static std::string GetName(int)
    {
        return std::is_same_v<TEvent, CustomConditionVariable> ? "Auto" : "Manual";
    }
};

template <typename TEvent>
class Event : public testing::Test {};
using CEvents = testing::Types<CustomConditionVariable, CustomConditionVariable_Manual>;
TYPED_TEST_SUITE(Event, CEvents, SEventNames);

// Every sequence of eight operations, compared with a plain flag.
TYPED_TEST(Event, IsAFlagForOneThread)
{
    constexpr bool IS_TAKEN_BY_WAIT = std::is_same_v<TypeParam, CustomConditionVariable>;
    for (int sequence = 0; sequence < 3 * 3 * 3 * 3 * 3 * 3 * 3 * 3; ++sequence) {
        TypeParam event;
        bool flag = false;
        for (int step = 0, rest = sequence; step < 8; ++step, rest /= 3) {
            if (rest % 3 == 0) {
                event.Set();
                flag = true;
            } else if (rest % 3 == 1) {
                event.Reset();
                flag = false;
            } else {
                ASSERT_EQ(event.WaitOne(0), flag) << "step " << step << " of sequence " << sequence;
                flag = flag && !IS_TAKEN_BY_WAIT;
            }
        }
    }
}

TYPED_TEST(Event, AWaitInVainLastsItsTime)
{
    TypeParam event;
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(event.WaitOne(15));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 15ms);
    event.Set(); // not for the waiter that gave up
    EXPECT_TRUE(event.WaitOne(0));
}

TYPED_TEST(Event, ASetEndsTheWaitAndHandsDataOver)
{
    for (const unsigned int limit : {600000U, NO_LIMIT_MS}) {
        TypeParam event;
        int written = 0;
        std::thread setter([&event, &written] {
            written = 42;
            event.Set();
        });
        EXPECT_TRUE(event.WaitOne(limit));
        EXPECT_EQ(written, 42);
        setter.join();
    }
}

TEST(AutoEvent, OneSetReleasesOneOfThreeWaiters)
{
    CustomConditionVariable event;
    CWaiters<CustomConditionVariable> waiters(event, 3);
    for (int released = 0; released < 3; ++released) {
        event.Set();
        EXPECT_TRUE(waiters.OneReleased_Within(LONG_TIME));
        EXPECT_FALSE(waiters.OneReleased_Within(5ms)); // no second one
    }
    EXPECT_FALSE(event.WaitOne(0)); // each Set has been used up
}

TEST(AutoEvent, PassesATurnToAndFro)
{
    constexpr int TURN_COUNT = 500;
    CustomConditionVariable ping;
    CustomConditionVariable pong;
    int turns = 0; // guarded by the events alone
    std::thread partner([&] {
        for (int i = 0; i < TURN_COUNT; ++i) {
            ping.WaitOne(NO_LIMIT_MS);
            ++turns;
            pong.Set();
        }
    });
    for (int i = 0; i < TURN_COUNT; ++i) {
        ping.Set();
        ASSERT_TRUE(pong.WaitOne(NO_LIMIT_MS));
        ++turns;
    }
    partner.join();
    EXPECT_EQ(turns, 2 * TURN_COUNT);
}

// The waiters must be asleep before the Set, which nothing can show: on a machine under load that takes
// several attempts. An event that forgets waiters fails in all of them.
TEST(ManualEvent, AResetAfterSetHoldsNoWaiterBack)
{
    constexpr int WAITER_COUNT = 4;
    constexpr int ATTEMPT_COUNT = 50;
    int releasedCount = 0;
    for (int attempt = 0; attempt < ATTEMPT_COUNT && releasedCount != WAITER_COUNT; ++attempt) {
        CustomConditionVariable_Manual event;
        CWaiters<CustomConditionVariable_Manual> waiters(event, WAITER_COUNT);
        std::this_thread::sleep_for(20ms);
        event.Set();
        event.Reset();
        EXPECT_FALSE(event.WaitOne(0));
        for (releasedCount = 0; releasedCount < WAITER_COUNT && waiters.OneReleased_Within(500ms);)
            ++releasedCount;
        event.Set(); // for those that were late
    }
    EXPECT_EQ(releasedCount, WAITER_COUNT);
}

TEST(ManualEvent, ManyThreadsMaySetResetAndWait)
{
    CustomConditionVariable_Manual event;
    std::atomic<bool> isDone = false;
    std::vector<std::thread> waiters;
    waiters.reserve(3);
    for (int i = 0; i < 3; ++i)
        waiters.emplace_back([&] {
            while (!isDone)
                event.WaitOne(1);
        });
    for (int i = 0; i < 300; ++i) {
        event.Set();
        event.Reset();
    }
    isDone = true;
    event.Set();
    for (std::thread& waiter : waiters)
        waiter.join();
    EXPECT_TRUE(event.WaitOne(0));
}

} // namespace
