#include "threadrun.h"

#include <exception>
#include <utility>

#include "threadname.h"
#include "timedwait.h"

// A press makes seven threads for every mask and ends them again. Steps of the work need little stack, and
// the C library keeps only a bounded cache of used stacks: small ones are taken from it, while stacks of the
// platform's default size would be mapped and unmapped each time.
static constexpr std::size_t THREAD_STACK_BYTES = std::size_t{1} << 20U;

bool CThreadRun::Start(const char* name, std::function<void()> run)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_phase != EPhase::Idle || m_isStopAsked)
        return false;

    try {
        boost::thread::attributes attributes;
        attributes.set_stack_size(THREAD_STACK_BYTES);
        const std::string threadName = name != nullptr ? name : "";
        // The new thread waits for our lock, so it finds phase and handle complete.
        m_thread = boost::thread(attributes, [this, threadName, run = std::move(run)] {
            {
                const std::lock_guard<std::mutex> ownLock(m_mutex);
                m_ownId = std::this_thread::get_id();
            }
            if (!threadName.empty())
                ThreadName_Set(threadName);
            run();
        });
    } catch (const std::exception&) { // no memory, or the platform gives no further thread
        return false;
    }
    m_phase = EPhase::Preparing;
    return true;
}

bool CThreadRun::Wait_PrepareComplete()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (!IsOwnThread())
        m_changed.wait(lock, [this] { return m_phase != EPhase::Preparing; });
    return m_isPrepared;
}

bool CThreadRun::Wait_Paused()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (IsOwnThread())
        return false;

    // By the count: a Resume may follow a halt before we wake, and the next halt may never come.
    const unsigned int haltsBefore = m_haltCount;
    bool isHalted = false;
    m_changed.wait(lock, [this, haltsBefore, &isHalted] {
        isHalted = (m_phase == EPhase::Paused && m_isPauseAsked) || m_haltCount != haltsBefore;
        return isHalted || m_isStopAsked || m_phase == EPhase::Idle || m_phase == EPhase::Ended;
    });
    return isHalted && !m_isStopAsked && m_phase != EPhase::Ended;
}

bool CThreadRun::Wait_Exit(unsigned int milliseconds)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (IsOwnThread())
        return false;
    if (!Wait_Until(m_changed, lock, milliseconds,
                    [this] { return m_phase == EPhase::Idle || m_phase == EPhase::Ended; }))
        return false;

    // Under the lock, so that of several waiters one joins and none returns before. The ended thread needs
    // the lock no more; what is left of it is its way out.
    if (m_thread.joinable()) {
        const boost::this_thread::disable_interruption noInterruption; // the waiter's own, were it asked to
        m_thread.join();
    }
    return true;
}

void CThreadRun::Stop()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isStopAsked = true;
    m_changed.notify_all();
}

void CThreadRun::Pause()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isPauseAsked = true;
    m_changed.notify_all();
}

void CThreadRun::Resume()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isPauseAsked = false;
    m_changed.notify_all();
}

bool CThreadRun::Failed() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_isFailed;
}

bool CThreadRun::Guarded(const std::function<bool()>& operation)
{
    try {
        return operation();
    } catch (...) { // whatever a derived class throws: one lost mask must not take the press down
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isFailed = true;
        return false;
    }
}

void CThreadRun::PrepareComplete(bool isPrepared)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isPrepared = isPrepared;
    m_phase = EPhase::Looping;
    m_changed.notify_all();
}

bool CThreadRun::NextLoop_Wait()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_isPauseAsked && !m_isStopAsked) {
        m_phase = EPhase::Paused;
        ++m_haltCount;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return !m_isPauseAsked || m_isStopAsked; });
        m_phase = EPhase::Looping;
    }
    return !m_isStopAsked;
}

void CThreadRun::End()
{
    // Notified under the lock: a waiter that sees the end joins us before it lets the object go.
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_phase = EPhase::Ended;
    m_ownId = {};
    m_changed.notify_all();
}
