#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>

/// The event that stays set until Reset.
/// Every Set counts, and a waiter waits for the count to move: a Reset that comes before the woken threads
/// have run costs none of them its release.
class CManualEvent {
public:
    void Set();
    void Reset();
    bool WaitOne(unsigned int milliseconds);

private:
    std::mutex m_mutex; // guards all below, of which the count may be read without
    bool m_isSet = false;
    std::atomic<unsigned int> m_setCount = 0;
    std::condition_variable m_wasSet;
};
