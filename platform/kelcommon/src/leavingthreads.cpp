#include "leavingthreads.h"

#include <boost/chrono/duration.hpp>

// Made when the library is loaded and so before anything of the host's that starts a thread, and destroyed after it.
static CLeavingThreads s_leavingThreads;

CLeavingThreads& CLeavingThreads::Get()
{
    return s_leavingThreads;
}

CLeavingThreads::~CLeavingThreads()
{
    for (boost::thread& thread : m_threads)
        thread.join();
}

void CLeavingThreads::Take(std::list<boost::thread>& threads) noexcept
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_threads.splice(m_threads.end(), threads);
}

void CLeavingThreads::SeeOff_Gone() noexcept
{
    const boost::this_thread::disable_interruption noInterruption; // the caller's own, were it asked to
    const std::lock_guard<std::mutex> lock(m_mutex);
    while (!m_threads.empty() && m_threads.front().try_join_for(boost::chrono::nanoseconds(0)))
        m_threads.pop_front();
}
