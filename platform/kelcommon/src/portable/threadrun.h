#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

#include <boost/thread/thread.hpp>

/// The state of one CustomThreadBase: what its thread has been asked to do and how far it has come.
class CThreadRun {
public:
    // ---- users, any thread
    bool Start(const char* name, std::function<void()> run);
    bool Wait_PrepareComplete();
    bool Wait_Paused();
    bool Wait_Exit(unsigned int milliseconds);
    void Stop();
    void Pause();
    void Resume();

    // ---- the own thread
    /// Notes that Prepare has run.
    void PrepareComplete(bool isPrepared);
    /// Halts while paused. True when the next OneLoop is due, false when the loop has been stopped.
    bool NextLoop_Wait();
    /// Notes that nothing more will be called. What is left to the thread is to exit.
    void End();

private:
    enum class EPhase { // in this order
        Idle,           // no thread yet
        Preparing,      // from Start until Prepare has run
        Looping,        // OneLoop or Finally
        Paused,         // halted between two OneLoop calls
        Ended,          // nothing more will be called
        Joined,         // the thread has exited
    };

    [[nodiscard]] bool IsOwnThread() const { return m_ownId == std::this_thread::get_id(); }
    boost::thread Thread_Make(std::string name, std::function<void()> run);

    /// Of the own thread. Kept until that is joined, since the destructors of its thread_local objects may
    /// call us.
    std::atomic<std::thread::id> m_ownId = std::thread::id();

    /// Guards all below. Never held while the thread is made or joined, as it may call us meanwhile.
    std::mutex m_mutex;
    std::condition_variable m_changed; // one of the fields below has changed
    EPhase m_phase = EPhase::Idle;
    boost::thread m_thread;       // from the end of Start on, except while a waiter joins it
    unsigned int m_haltCount = 0; // times the loop has halted
    bool m_isStopAsked = false;
    bool m_isPauseAsked = false;
    bool m_isPrepared = false;
};
