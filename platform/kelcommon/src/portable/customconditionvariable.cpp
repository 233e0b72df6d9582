#include <kelcommon/customconditionvariable.h>

#include <atomic>
#include <condition_variable>
#include <mutex>

#include "portable/waitlimit.h"

class CAutoEvent {
public:
    std::mutex m_mutex; // guards the flag
    std::condition_variable m_wasSet;
    bool m_isSet = false;
};

CustomConditionVariable::CustomConditionVariable() : m_event(std::make_unique<CAutoEvent>()) {}

CustomConditionVariable::~CustomConditionVariable() = default;

void CustomConditionVariable::Set()
{
    {
        const std::lock_guard<std::mutex> lock(m_event->m_mutex);
        m_event->m_isSet = true;
    }
    m_event->m_wasSet.notify_one(); // after unlocking: the woken thread wants the lock first
}

void CustomConditionVariable::Reset()
{
    const std::lock_guard<std::mutex> lock(m_event->m_mutex);
    m_event->m_isSet = false;
}

bool CustomConditionVariable::WaitOne(unsigned int milliseconds)
{
    std::unique_lock<std::mutex> lock(m_event->m_mutex);
    const auto isSet = [this] { return m_event->m_isSet; };
    if (!CWaitLimit(milliseconds).Sleep_Until(m_event->m_wasSet, lock, isSet))
        return false;
    m_event->m_isSet = false;
    return true;
}

/// Every Set counts, and a waiter waits for the count to move: a Reset that comes before the woken threads
/// have run costs none of them its release.
class CManualEvent {
public:
    std::mutex m_mutex; // guards all below; the count may be read without it
    std::condition_variable m_wasSet;
    bool m_isSet = false;
    std::atomic<unsigned int> m_setCount = 0;
};

CustomConditionVariable_Manual::CustomConditionVariable_Manual() : m_event(std::make_unique<CManualEvent>())
{}

CustomConditionVariable_Manual::~CustomConditionVariable_Manual() = default;

void CustomConditionVariable_Manual::Set()
{
    {
        const std::lock_guard<std::mutex> lock(m_event->m_mutex);
        m_event->m_isSet = true;
        ++m_event->m_setCount;
    }
    m_event->m_wasSet.notify_all(); // after unlocking: every woken thread wants the lock first
}

void CustomConditionVariable_Manual::Reset()
{
    const std::lock_guard<std::mutex> lock(m_event->m_mutex);
    m_event->m_isSet = false;
}

bool CustomConditionVariable_Manual::WaitOne(unsigned int milliseconds)
{
    const CWaitLimit limit(milliseconds);
    std::unique_lock<std::mutex> lock(m_event->m_mutex);
    if (m_event->m_isSet || milliseconds == 0)
        return m_event->m_isSet;
    const auto wasSet = [this, countBefore = m_event->m_setCount.load()] {
        return m_event->m_setCount != countBefore;
    };
    lock.unlock();
    limit.Look_For(wasSet);
    lock.lock();
    return limit.Sleep_Until(m_event->m_wasSet, lock, wasSet);
}
