#include "portable/manualevent.h"

#include "portable/waitlimit.h"

void CManualEvent::Set()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isSet = true;
        ++m_setCount;
    }
    m_wasSet.notify_all(); // without the lock, which every woken thread wants first
}

void CManualEvent::Reset()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isSet = false;
}

bool CManualEvent::WaitOne(unsigned int milliseconds)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_isSet || milliseconds == 0)
        return m_isSet;

    const CWaitLimit limit(milliseconds);
    const auto wasSet = [this, countBefore = m_setCount.load()] { return m_setCount != countBefore; };
    lock.unlock();
    limit.Look_For(wasSet);
    lock.lock();
    return limit.Sleep_Until(m_wasSet, lock, wasSet);
}
