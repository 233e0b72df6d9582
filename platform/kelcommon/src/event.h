#pragma once

#include <condition_variable>
#include <mutex>

#include <boost/intrusive/list.hpp>

enum class EEventReset {
    Auto,   // a Set serves one waiter
    Manual, // a Set serves all until Reset
};

/// What both condition variables are made of.
/// Each waiting thread stands in a line with an entry on its own stack, and Set marks the entries it
/// releases. A plain flag would not do: a Reset that comes before the woken threads have run, or a second Set
/// before the first one's waiter has run, would cost a waiter its release.
class CEvent {
public:
    explicit CEvent(EEventReset reset) : m_reset(reset) {}

    void Set();
    void Reset();
    bool WaitOne(unsigned int milliseconds);

private:
    struct SWaiter : boost::intrusive::list_base_hook<> {
        std::condition_variable m_released;
        bool m_isReleased = false;
    };

    /// Takes the first waiter out of the line and wakes it. Needs the lock: the entry lives on the waiter's
    /// stack, which cannot go before the waiter gets the lock back.
    void ReleaseFirst();

    const EEventReset m_reset;
    std::mutex m_mutex; // guards all below
    bool m_isSet = false;
    boost::intrusive::list<SWaiter> m_waiters; // longest waiting first
};
