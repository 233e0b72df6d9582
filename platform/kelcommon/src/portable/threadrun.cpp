#include "portable/threadrun.h"

#include <exception>
#include <utility>

#include "portable/leavingthreads.h"
#include "portable/threadname.h"
#include "portable/waitlimit.h"

// A press makes seven threads for every mask and ends them again. Steps of the work need little stack, and
// the C library keeps only a bounded cache of used stacks: small ones are taken from it, while stacks of the
// platform's default size would be mapped and unmapped each time.
static constexpr std::size_t THREAD_STACK_BYTES = std::size_t{1} << 20U;

bool CThreadRun::Start(const char* name, std::function<void()> run)
{
    const std::lock_guard<std::mutex> threadLock(m_threadMutex);
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_phase != EPhase::Idle || m_isStopAsked)
            return false;
        m_phase = EPhase::Preparing; // before the thread is there, which begins while we are still here
    }
    if (Thread_Make(name, std::move(run)))
        return true;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_phase = EPhase::Idle;
    }
    m_changed.notify_all();
    return false;
}

bool CThreadRun::Thread_Make(const char* name, std::function<void()> run)
{
    try {
        CLeavingThreads::Get().SeeOff_Gone();
        boost::thread::attributes attributes;
        attributes.set_stack_size(THREAD_STACK_BYTES);
        std::list<boost::thread> thread(1);
        thread.front() = boost::thread(attributes, [self = shared_from_this(), // until the thread has left
                                                    threadName = std::string(name != nullptr ? name : ""),
                                                    run = std::move(run)] {
            self->m_ownId = std::this_thread::get_id();
            if (!threadName.empty())
                ThreadName_Set(threadName);
            run();
            // The way out takes longer than what others do next who have waited for this: whoever did gets
            // a turn before it, and so does whoever waits for the end of that one.
            std::this_thread::yield();
            std::this_thread::yield();
        });
        m_thread.swap(thread);
        return true;
    } catch (const std::exception&) { // no memory, or the platform gives no further thread
        return false;
    }
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
    if (IsOwnThread())
        return false;

    // By the count: a Resume may follow a halt before we wake, and the next halt may never come.
    std::unique_lock<std::mutex> lock(m_mutex);
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
    if (IsOwnThread())
        return false;
    const CWaitLimit limit(milliseconds);
    const auto isAtRest = [this] { return m_phase == EPhase::Idle || m_phase == EPhase::Ended; };
    limit.Look_For(isAtRest);
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (!limit.Sleep_Until(m_changed, lock, isAtRest))
            return false;
        if (m_phase == EPhase::Idle)
            return true; // there was none; one that starts from here on is not waited for
    }
    // Start may still be putting the handle there.
    const std::lock_guard<std::mutex> threadLock(m_threadMutex);
    CLeavingThreads::Get().Take(m_thread);
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
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isPrepared = isPrepared;
        m_phase = EPhase::Looping;
    }
    m_changed.notify_all(); // without the lock, which the woken want first
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
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_phase = EPhase::Ended;
        m_ownId = std::thread::id();
    }
    m_changed.notify_all(); // without the lock, which the woken want first
}
