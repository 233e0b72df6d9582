#include "event.h"

#include "timedwait.h"

void CEvent::Set()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_reset == EEventReset::Auto && !m_waiters.empty()) {
        ReleaseFirst(); // the waiter takes this Set with it
        return;
    }
    m_isSet = true;
    while (!m_waiters.empty())
        ReleaseFirst();
}

void CEvent::Reset()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isSet = false;
}

bool CEvent::WaitOne(unsigned int milliseconds)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_isSet) {
        m_isSet = m_reset == EEventReset::Manual;
        return true;
    }
    if (milliseconds == 0)
        return false;

    SWaiter self;
    m_waiters.push_back(self);
    if (Wait_Until(self.m_released, lock, milliseconds, [&self] { return self.m_isReleased; }))
        return true;
    m_waiters.erase(m_waiters.iterator_to(self));
    return false;
}

void CEvent::ReleaseFirst()
{
    SWaiter& first = m_waiters.front();
    m_waiters.pop_front();
    first.m_isReleased = true;
    first.m_released.notify_one();
}
