#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <future>
#include <thread>

namespace dotweave {

/// Makes results on all cores and takes them in order, on the caller's thread.
/// Memory: at most two results for each core wait to be taken.
/// @param count  results
/// @param make   called as make(i) by several threads at once
/// @param take   called as take(result) for i = 0, 1, 2, ...
/// @throws what make and take throw; no task is running any more then. Without another thread, the caller's
///         own makes the results.
template <typename TMake, typename TTake>
void OrderedTasks_Run(int count, const TMake& make, const TTake& take)
{
    using CResult = std::invoke_result_t<const TMake&, int>;
    const int ahead = 2 * static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
    std::deque<std::future<CResult>> running; // each joins its thread when it goes
    int started = 0;
    for (int taken = 0; taken < count; ++taken) {
        for (; started < std::min(count, taken + ahead); ++started)
            running.push_back(
                std::async(std::launch::async | std::launch::deferred, std::cref(make), started));
        take(running.front().get());
        running.pop_front();
    }
}

} // namespace dotweave
