#pragma once

#include <condition_variable>
#include <mutex>

#include <boost/intrusive/list.hpp>

/// The event that falls back by itself: one Set releases one waiter, the one that has waited longest.
/// Each waiting thread stands in a line with an entry on its own stack, and Set marks the entry it releases. A
/// plain flag would not do: a Reset that comes before the woken thread has run, or a second Set before the
/// first one's waiter has run, would cost a waiter its release.
class CAutoEvent {
public:
    void Set();
    void Reset();
    bool WaitOne(unsigned int milliseconds);

private:
    struct SWaiter : boost::intrusive::list_base_hook<> {
        std::condition_variable m_released;
        bool m_isReleased = false;
    };

    std::mutex m_mutex; // guards all below
    bool m_isSet = false;
    boost::intrusive::list<SWaiter> m_waiters; // longest waiting first
};
