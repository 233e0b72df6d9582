#include "portable/autoevent.h"

#include "portable/waitlimit.h"

void CAutoEvent::Set()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_waiters.empty()) {
        m_isSet = true;
        return;
    }
    // The waiter takes this Set with it. Woken under the lock: the entry lives on the waiter's stack, which
    // cannot go before the waiter gets the lock back.
    SWaiter& first = m_waiters.front();
    m_waiters.pop_front();
    first.m_isReleased = true;
    first.m_released.notify_one();
}

void CAutoEvent::Reset()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isSet = false;
}

bool CAutoEvent::WaitOne(unsigned int milliseconds)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_isSet) {
        m_isSet = false;
        return true;
    }
    if (milliseconds == 0)
        return false;

    SWaiter self;
    m_waiters.push_back(self);
    if (CWaitLimit(milliseconds).Sleep_Until(self.m_released, lock, [&self] { return self.m_isReleased; }))
        return true;
    m_waiters.erase(m_waiters.iterator_to(self));
    return false;
}
