#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

constexpr unsigned int WAIT_NO_LIMIT_MS = 0xFFFFFFFFU; // the time-out that never runs out

/// Sleeps until isMet() holds, at most so many milliseconds by the steady clock: setting the press's wall
/// clock neither shortens nor lengthens a wait.
/// @param lock          held by the caller; isMet is only called while it is held
/// @param milliseconds  0 only tests, WAIT_NO_LIMIT_MS waits without limit
/// @return what isMet() last said
template <typename TIsMet>
bool Wait_Until(std::condition_variable& changed, std::unique_lock<std::mutex>& lock,
                unsigned int milliseconds, TIsMet isMet)
{
    if (milliseconds == WAIT_NO_LIMIT_MS) {
        changed.wait(lock, isMet);
        return true;
    }
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    return changed.wait_until(lock, deadline, isMet);
}
