#pragma once

#include <list>
#include <mutex>

#include <boost/thread/thread.hpp>

/// Threads that have signalled their end and are on their way out of the platform, which takes longer than the
/// signal: nobody who waits for the end of a thread's work need wait for that. They are seen off when the next
/// threads start, which take over their stacks, and at the end of the process, whose statics they may still use.
/// Thread-safety: every operation may be called from any thread at any time, also while the process ends.
class CLeavingThreads {
public:
    CLeavingThreads() noexcept = default;
    CLeavingThreads(const CLeavingThreads&) = delete;
    CLeavingThreads& operator=(const CLeavingThreads&) = delete;

    /// Those of the process.
    static CLeavingThreads& Get();

    /// Takes over threads that have signalled their end. Never fails.
    void Take(std::list<boost::thread>& threads) noexcept;

    /// Sees off those that have at most their thread_local objects left to free, which is waited for; up to the
    /// first that has more: mostly they leave in the order in which they end.
    void SeeOff_Gone();

    /// Sees off all, waiting as long as it takes; all but the caller, should it be one of them.
    void SeeOff_All();

    // ---- around a fork, whose child has none of the threads
    void Fork_Begin() noexcept { m_mutex.lock(); }
    void Fork_EndInParent() noexcept { m_mutex.unlock(); }
    void Fork_EndInChild() noexcept;

private:
    std::list<boost::thread> TakeOut();

    std::mutex m_mutex; // never held while a thread is waited for, whose way out may come here too
    std::list<boost::thread> m_threads; // joinable
    std::list<boost::thread> m_lost;    // of the process that this one was forked from; never looked at
};
