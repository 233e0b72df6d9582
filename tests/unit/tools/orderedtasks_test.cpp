#include "orderedtasks.h"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

using namespace dotweave;

TEST(OrderedTasks, ResultsAreTakenInOrder)
{
    for (const int count : {0, 1, 2, 1000}) {
        std::vector<int> taken;
        OrderedTasks_Run(
            count, [](int i) { return i * i; }, [&taken](int square) { taken.push_back(square); });
        ASSERT_EQ(taken.size(), static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            EXPECT_EQ(taken[static_cast<std::size_t>(i)], i * i);
    }
}

/// Each of two tasks waits for the other, which never comes when one runs after the other.
TEST(OrderedTasks, TasksRunAtTheSameTime)
{
    std::latch both(2);
    int taken = 0;
    OrderedTasks_Run(
        2,
        [&both](int i) {
            both.arrive_and_wait();
            return i;
        },
        [&taken](int) { ++taken; });
    EXPECT_EQ(taken, 2);
}

TEST(OrderedTasks, AnErrorOfATaskIsPassedOn)
{
    std::atomic<int> running = 0;
    int taken = 0;
    const auto make = [&running](int i) {
        ++running;
        if (i == 7) {
            --running;
            throw std::out_of_range("task 7");
        }
        --running;
        return i;
    };
    EXPECT_THROW(OrderedTasks_Run(1000, make, [&taken](int) { ++taken; }), std::out_of_range);
    EXPECT_EQ(taken, 7); // those before it
    EXPECT_EQ(running, 0);
}

TEST(OrderedTasks, AnErrorOfTheTakerEndsTheTasks)
{
    std::atomic<int> made = 0;
    const auto take = [](int) { throw std::runtime_error("disk full"); };
    EXPECT_THROW(OrderedTasks_Run(
                     1000,
                     [&made](int i) {
                         ++made;
                         return i;
                     },
                     take),
                 std::runtime_error);
    EXPECT_LT(made, 1000);
}
