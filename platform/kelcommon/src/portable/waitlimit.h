#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

constexpr unsigned int WAIT_NO_LIMIT_MS = 0xFFFFFFFFU; // the time-out that never runs out

/// How long one wait may last, from construction on, by the steady clock: setting the press's wall clock
/// neither shortens nor lengthens a wait.
class CWaitLimit {
public:
    /// @param milliseconds  0 only tests, WAIT_NO_LIMIT_MS waits without limit
    explicit CWaitLimit(unsigned int milliseconds)
    {
        if (milliseconds != WAIT_NO_LIMIT_MS)
            m_deadline = m_begin + std::chrono::milliseconds(milliseconds);
    }

    /// Sleeps until isMet() holds or the time is over.
    /// @param lock  held by the caller; isMet is only called while it is held
    /// @return what isMet() last said
    template <typename TIsMet>
    bool Sleep_Until(std::condition_variable& changed, std::unique_lock<std::mutex>& lock, TIsMet isMet) const
    {
        if (m_deadline)
            return changed.wait_until(lock, *m_deadline, isMet);
        changed.wait(lock, isMet);
        return true;
    }

    /// Stays awake for a moment, letting other threads through, while isMet() does not hold yet. What the
    /// threads of one mask wait for mostly comes at once or not for a long while, and going to sleep and
    /// being woken takes longer than such a moment, above all where a processor halts meanwhile. Where other
    /// programs want the processor, the first of them uses the moment up.
    /// @param isMet  called without any lock
    template <typename TIsMet>
    void Look_For(TIsMet isMet) const
    {
        const CClock::time_point end =
            std::min(m_begin + LOOK_TIME, m_deadline.value_or(CClock::time_point::max()));
        while (!isMet() && CClock::now() < end)
            std::this_thread::yield();
    }

private:
    using CClock = std::chrono::steady_clock;

    static constexpr std::chrono::microseconds LOOK_TIME = std::chrono::microseconds(100);

    CClock::time_point m_begin = CClock::now();
    std::optional<CClock::time_point> m_deadline; // none: no limit
};
