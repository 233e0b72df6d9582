#include "portable/leavingthreads.h"

#include <boost/chrono/duration.hpp>

#include "portable/processfork.h"

namespace {

/// Never destroyed: a host's own statics may start and end threads until the process is gone.
union UOfProcess {
    UOfProcess() noexcept : m_threads() {}
    UOfProcess(const UOfProcess&) = delete;
    UOfProcess& operator=(const UOfProcess&) = delete;
    ~UOfProcess() {} // NOLINT(modernize-use-equals-default): defaulted it would be deleted

    CLeavingThreads m_threads;
};

/// What happens to them at a fork and at the end of the process.
class CProcessGuard {
public:
    CProcessGuard() noexcept
    {
        ProcessFork_Watch([] { CLeavingThreads::Get().Fork_Begin(); },
                          [] { CLeavingThreads::Get().Fork_EndInParent(); },
                          [] { CLeavingThreads::Get().Fork_EndInChild(); });
    }
    CProcessGuard(const CProcessGuard&) = delete;
    CProcessGuard& operator=(const CProcessGuard&) = delete;
    ~CProcessGuard()
    {
        try {
            CLeavingThreads::Get().SeeOff_All();
        } catch (...) { // the process ends here in any case
        }
    }
};

UOfProcess s_ofProcess;
const CProcessGuard s_processGuard;

bool IsCaller(const boost::thread& thread)
{
    return thread.get_id() == boost::this_thread::get_id();
}

} // namespace

CLeavingThreads& CLeavingThreads::Get()
{
    return s_ofProcess.m_threads;
}

void CLeavingThreads::Take(std::list<boost::thread>& threads) noexcept
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_threads.splice(m_threads.end(), threads);
}

std::list<boost::thread> CLeavingThreads::TakeOut()
{
    std::list<boost::thread> threads;
    const std::lock_guard<std::mutex> lock(m_mutex);
    threads.swap(m_threads);
    return threads;
}

void CLeavingThreads::SeeOff_Gone()
{
    const boost::this_thread::disable_interruption noInterruption; // the caller's own, were it asked to
    std::list<boost::thread> threads = TakeOut();
    for (auto thread = threads.begin(); thread != threads.end();) {
        if (IsCaller(*thread)) // a thread_local object of it starts a thread
            ++thread;
        else if (thread->try_join_for(boost::chrono::nanoseconds(0)))
            thread = threads.erase(thread);
        else
            break;
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_threads.splice(m_threads.begin(), threads);
}

void CLeavingThreads::SeeOff_All()
{
    const boost::this_thread::disable_interruption noInterruption;
    std::list<boost::thread> threads = TakeOut();
    for (boost::thread& thread : threads) {
        if (IsCaller(thread))
            thread.detach();
        else
            thread.join();
    }
}

void CLeavingThreads::Fork_EndInChild() noexcept
{
    m_lost.splice(m_lost.end(), m_threads);
    m_mutex.unlock();
}
