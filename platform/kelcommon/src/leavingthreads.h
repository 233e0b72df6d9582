#pragma once

#include <list>
#include <mutex>

#include <boost/thread/thread.hpp>

/// Threads that have signalled their end and are on their way out of the platform, which takes longer than the
/// signal: nobody who waits for the end of a thread's work need wait for that. They are seen off when the next
/// threads start, which takes over their stacks, and before this library goes, whose code they still run.
/// Thread-safety: every operation may be called from any thread at any time.
class CLeavingThreads {
public:
    CLeavingThreads() = default;
    CLeavingThreads(const CLeavingThreads&) = delete;
    CLeavingThreads& operator=(const CLeavingThreads&) = delete;
    ~CLeavingThreads();

    /// Those of the process.
    static CLeavingThreads& Get();

    /// Takes over threads that have signalled their end. Never fails and does not wait.
    void Take(std::list<boost::thread>& threads) noexcept;

    /// Sees off those that are gone, up to the first that is not: mostly they leave in the order in which they end.
    void SeeOff_Gone() noexcept;

private:
    std::mutex m_mutex;
    std::list<boost::thread> m_threads; // joinable
};
