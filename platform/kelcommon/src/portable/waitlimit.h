#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

#include <boost/chrono/duration.hpp>
#include <boost/thread/thread.hpp>

constexpr unsigned int WAIT_NO_LIMIT_MS = 0xFFFFFFFFU; // the time-out that never runs out

/// How long one wait may last, counted from construction. Measured by the steady clock, so that setting the
/// press's wall clock neither shortens nor lengthens a wait.
class CWaitLimit {
public:
    /// @param milliseconds  0 only tests, WAIT_NO_LIMIT_MS waits without limit
    explicit CWaitLimit(unsigned int milliseconds)
    {
        if (milliseconds != WAIT_NO_LIMIT_MS)
            m_deadline = m_begin + std::chrono::milliseconds(milliseconds);
    }

    /// Sleeps until isMet() is true or the time is over.
    /// @param lock  locked by the caller; isMet is only called while it is locked
    /// @return the last result of isMet()
    template <typename TIsMet>
    bool Sleep_Until(std::condition_variable& changed, std::unique_lock<std::mutex>& lock, TIsMet isMet) const
    {
        if (m_deadline == m_begin)
            return isMet();
        if (m_deadline)
            return changed.wait_until(lock, *m_deadline, isMet);
        changed.wait(lock, isMet);
        return true;
    }

    /// Joins a thread, or gives up when the time is over. The time covers the thread's work; the short exit
    /// after it, with the destructors of its thread_local objects, is always waited for.
    bool Join(boost::thread& thread) const
    {
        const boost::this_thread::disable_interruption noInterruption; // the caller may be a boost::thread
        if (m_deadline) {
            const CClock::duration rest = std::max(*m_deadline - CClock::now(), CClock::duration::zero());
            return thread.try_join_for(boost::chrono::nanoseconds(std::chrono::nanoseconds(rest).count()));
        }
        thread.join();
        return true;
    }

    /// Checks isMet() again and again for a moment before the caller goes to sleep, and yields the processor
    /// between two checks. Work for a thread mostly arrives within that moment or not for a long while, and
    /// waking a thread takes longer than it, most of all on a processor that has halted. With this the
    /// smallest mask is built in about 5 % less time. Where other programs want the processor, the first
    /// yield uses the moment up.
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
