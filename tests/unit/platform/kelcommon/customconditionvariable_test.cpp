#include <atomic>
#include <chrono>
#include <functional>
#include <semaphore>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>
#include <kelcommon/customconditionvariable.h>

#include "nolimit.h"

namespace {

static_assert(!std::is_copy_constructible_v<CustomConditionVariable>);
static_assert(!std::is_copy_assignable_v<CustomConditionVariable>);
static_assert(!std::is_copy_constructible_v<CustomConditionVariable_Manual>);
static_assert(!std::is_copy_assignable_v<CustomConditionVariable_Manual>);

/// Threads that wait once for the same event without limit.
template <typename TEvent>
class CWaiters {
public:
    CWaiters(TEvent& event, int count)
    {
        for (int i = 0; i < count; ++i)
            m_threads.emplace_back([this, &event] {
                ++m_atTheDoor;
                event.WaitOne(NO_LIMIT_MS);
                m_released.release();
            });
        while (m_atTheDoor < count)
            std::this_thread::yield();
    }
    ~CWaiters()
    {
        for (std::thread& thread : m_threads)
            thread.join();
    }
    CWaiters(const CWaiters&) = delete;
    CWaiters& operator=(const CWaiters&) = delete;

    void OneReleased_Wait() { m_released.acquire(); }
    bool OneReleased_Within(std::chrono::milliseconds time) { return m_released.try_acquire_for(time); }

private:
    std::atomic<int> m_atTheDoor = 0;
    std::counting_semaphore<> m_released{0};
    std::vector<std::thread> m_threads;
};

/// Runs an attempt that needs its threads to be asleep already, which only time can bring about and nothing
/// can observe; so a machine under load may need several attempts. The event that forgets waiters fails all.
bool SucceedsOnce(const std::function<bool()>& attempt)
{
    constexpr int ATTEMPT_COUNT = 50;
    for (int i = 0; i < ATTEMPT_COUNT; ++i)
        if (attempt())
            return true;
    return false;
}

constexpr std::chrono::milliseconds TIME_TO_FALL_ASLEEP(20);
constexpr std::chrono::milliseconds TIME_TO_WAKE(500);

template <typename TEvent>
class EitherEvent : public testing::Test {};
using CBothEvents = testing::Types<CustomConditionVariable, CustomConditionVariable_Manual>;
TYPED_TEST_SUITE(EitherEvent, CBothEvents);

TYPED_TEST(EitherEvent, StartsNotSet)
{
    TypeParam event;
    EXPECT_FALSE(event.WaitOne(0));
}

TYPED_TEST(EitherEvent, ASetBeforeTheWaitIsNotLost)
{
    TypeParam event;
    event.Set();
    EXPECT_TRUE(event.WaitOne(NO_LIMIT_MS));
}

TYPED_TEST(EitherEvent, ResetTakesTheSetBack)
{
    TypeParam event;
    event.Set();
    event.Reset();
    EXPECT_FALSE(event.WaitOne(0));
}

TYPED_TEST(EitherEvent, AWaitInVainLastsAtLeastItsTimeAndReturnsFalse)
{
    TypeParam event;
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(event.WaitOne(15));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(15));
}

TYPED_TEST(EitherEvent, AWaiterThatTimedOutLeavesNoTraceBehind)
{
    TypeParam event;
    EXPECT_FALSE(event.WaitOne(1));
    event.Set(); // must not go to the waiter that has left
    EXPECT_TRUE(event.WaitOne(0));
}

TYPED_TEST(EitherEvent, ASetFromAnotherThreadEndsAnUnlimitedWait)
{
    TypeParam event;
    std::thread setter([&event] { event.Set(); });
    EXPECT_TRUE(event.WaitOne(NO_LIMIT_MS));
    setter.join();
}

TYPED_TEST(EitherEvent, ASetFromAnotherThreadEndsALimitedWaitWithTrue)
{
    TypeParam event;
    std::thread setter([&event] { event.Set(); });
    EXPECT_TRUE(event.WaitOne(600000)); // a limit far beyond what a loaded machine needs
    setter.join();
}

TYPED_TEST(EitherEvent, WhatWasWrittenBeforeSetIsSeenAfterTheWait)
{
    TypeParam event;
    int written = 0;
    std::thread setter([&event, &written] {
        written = 42;
        event.Set();
    });
    EXPECT_TRUE(event.WaitOne(NO_LIMIT_MS));
    EXPECT_EQ(written, 42);
    setter.join();
}

TEST(AutoResetEvent, AWaitUsesTheSetUp)
{
    CustomConditionVariable event;
    event.Set();
    EXPECT_TRUE(event.WaitOne(0));
    EXPECT_FALSE(event.WaitOne(0));
}

TEST(AutoResetEvent, SetsThatFindNobodyWaitingCountAsOne)
{
    CustomConditionVariable event;
    event.Set();
    event.Set();
    EXPECT_TRUE(event.WaitOne(0));
    EXPECT_FALSE(event.WaitOne(0));
}

TEST(AutoResetEvent, OneSetReleasesExactlyOneOfThreeWaiters)
{
    CustomConditionVariable event;
    CWaiters<CustomConditionVariable> waiters(event, 3);
    for (int released = 0; released < 3; ++released) {
        event.Set();
        waiters.OneReleased_Wait();
        EXPECT_FALSE(waiters.OneReleased_Within(std::chrono::milliseconds(5))); // no second one
    }
    EXPECT_FALSE(event.WaitOne(0)); // each Set has been used up
}

TEST(AutoResetEvent, SetsInARowReleaseAsManyWaiters)
{
    EXPECT_TRUE(SucceedsOnce([] {
        constexpr int WAITER_COUNT = 6;
        CustomConditionVariable event;
        CWaiters<CustomConditionVariable> waiters(event, WAITER_COUNT);
        std::this_thread::sleep_for(TIME_TO_FALL_ASLEEP);
        for (int i = 0; i < WAITER_COUNT; ++i)
            event.Set();
        int releasedCount = 0;
        while (releasedCount < WAITER_COUNT && waiters.OneReleased_Within(TIME_TO_WAKE))
            ++releasedCount;
        const bool allReleased = releasedCount == WAITER_COUNT;
        for (; releasedCount < WAITER_COUNT; ++releasedCount) { // so that the attempt's threads end
            event.Set();
            waiters.OneReleased_Wait();
        }
        return allReleased;
    }));
}

TEST(AutoResetEvent, TwoThreadsPassATurnToAndFroWithoutLosingIt)
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
        EXPECT_TRUE(pong.WaitOne(NO_LIMIT_MS));
        ++turns;
    }
    partner.join();
    EXPECT_EQ(turns, 2 * TURN_COUNT);
}

TEST(ManualResetEvent, StaysSetForEveryWaitUntilReset)
{
    CustomConditionVariable_Manual event;
    event.Set();
    EXPECT_TRUE(event.WaitOne(0));
    EXPECT_TRUE(event.WaitOne(0));
    EXPECT_TRUE(event.WaitOne(NO_LIMIT_MS));
    event.Reset();
    EXPECT_FALSE(event.WaitOne(0));
}

TEST(ManualResetEvent, OneSetReleasesAllWaiters)
{
    CustomConditionVariable_Manual event;
    CWaiters<CustomConditionVariable_Manual> waiters(event, 4);
    event.Set();
    for (int i = 0; i < 4; ++i)
        waiters.OneReleased_Wait();
    EXPECT_TRUE(event.WaitOne(0));
}

TEST(ManualResetEvent, AResetRightAfterTheSetTakesNoWaitersReleaseBack)
{
    EXPECT_TRUE(SucceedsOnce([] {
        constexpr int WAITER_COUNT = 4;
        CustomConditionVariable_Manual event;
        CWaiters<CustomConditionVariable_Manual> waiters(event, WAITER_COUNT);
        std::this_thread::sleep_for(TIME_TO_FALL_ASLEEP);
        event.Set();
        event.Reset();
        int releasedCount = 0;
        while (releasedCount < WAITER_COUNT && waiters.OneReleased_Within(TIME_TO_WAKE))
            ++releasedCount;
        EXPECT_FALSE(event.WaitOne(0));
        event.Set(); // so that the attempt's threads end
        return releasedCount == WAITER_COUNT;
    }));
}

TEST(ManualResetEvent, ManyThreadsMaySetResetAndWaitAtOnce)
{
    CustomConditionVariable_Manual event;
    std::atomic<bool> isDone = false;
    std::thread setter([&] {
        for (int i = 0; i < 300; ++i) {
            event.Set();
            event.Reset();
        }
        isDone = true;
        event.Set();
    });
    std::vector<std::thread> waiters;
    waiters.reserve(3);
    for (int i = 0; i < 3; ++i)
        waiters.emplace_back([&] {
            while (!isDone)
                event.WaitOne(1);
        });
    setter.join();
    for (std::thread& waiter : waiters)
        waiter.join();
    EXPECT_TRUE(event.WaitOne(0));
}

} // namespace
