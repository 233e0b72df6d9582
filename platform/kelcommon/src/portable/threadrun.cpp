#include "portable/threadrun.h"

#include <cstddef>
#include <exception>
#include <utility>

#include "portable/nativethread.h"
#include "portable/waitlimit.h"

// A press makes seven threads for every mask and ends them again. The C library keeps up to 40 MiB of used
// stacks for the next threads: seven small ones fit, seven of its default size do not and would be mapped
// anew each time.
static constexpr std::size_t THREAD_STACK_BYTES = std::size_t{1} << 20U;

bool CThreadRun::Start(const char* name, std::function<void()> run)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_phase != EPhase::Idle || m_isStopAsked)
            return false;
        m_phase = EPhase::Preparing; // the thread may be past that before we have its handle
    }
    boost::thread thread;
    try {
        thread = Thread_Make(name != nullptr ? name : "", std::move(run));
    } catch (const std::exception&) { // no memory, or the platform gives no further thread
    }
    const bool isMade = thread.joinable();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_thread.swap(thread);
    if (!isMade)
        m_phase = EPhase::Idle;
    m_changed.notify_all();
    return isMade;
}

boost::thread CThreadRun::Thread_Make(std::string name, std::function<void()> run)
{
    boost::thread::attributes attributes;
    attributes.set_stack_size(THREAD_STACK_BYTES + ThreadStack_PlatformBytes(attributes));
    boost::thread thread(attributes, [this, name = std::move(name), run = std::move(run)] {
        m_ownId = std::this_thread::get_id();
        if (!name.empty())
            ThreadName_Set(name);
        run();
    });
    return thread;
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
    const auto isOver = [this] {
        return m_isStopAsked || m_phase == EPhase::Idle || m_phase >= EPhase::Ended;
    };
    const auto isHalted = [this, haltsBefore = m_haltCount] {
        return (m_phase == EPhase::Paused && m_isPauseAsked) || m_haltCount != haltsBefore;
    };
    m_changed.wait(lock, [isOver, isHalted] { return isOver() || isHalted(); });
    return !isOver();
}

bool CThreadRun::Wait_Exit(unsigned int milliseconds)
{
    if (IsOwnThread())
        return false;
    const CWaitLimit limit(milliseconds);
    std::unique_lock<std::mutex> lock(m_mutex);
    // One waiter at a time joins the thread. When its time runs out it puts the handle back for the next one.
    const auto isNext = [this] {
        return m_phase == EPhase::Idle || m_phase == EPhase::Joined || m_thread.joinable();
    };
    if (!limit.Sleep_Until(m_changed, lock, isNext))
        return false;
    if (!m_thread.joinable())
        return true; // there is no thread; one that is started from here on is not waited for
    boost::thread thread;
    thread.swap(m_thread);
    lock.unlock();
    const bool isJoined = limit.Join(thread);
    lock.lock();
    if (isJoined) {
        m_phase = EPhase::Joined;
        m_ownId = std::thread::id(); // the platform may give it to a later thread
    } else {
        m_thread.swap(thread);
    }
    m_changed.notify_all();
    return isJoined;
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

void CThreadRun::PrepareComplete(bool isPrepared)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isPrepared = isPrepared;
        m_phase = EPhase::Looping;
    }
    m_changed.notify_all(); // after unlocking: whoever wakes wants the lock first
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
    }
    m_changed.notify_all(); // after unlocking; this object outlives the call, as its owner joins us first
}
