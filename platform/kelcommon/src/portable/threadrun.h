#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include <boost/thread/thread.hpp>

/// The state of one CustomThreadBase: what has been asked of its thread and how far the thread has come.
/// The first half is for the object's users, the second for the thread itself. Owned by both, since the thread still
/// signals its end here when its object may be gone.
class CThreadRun : public std::enable_shared_from_this<CThreadRun> {
public:
    // ---- users, any thread
    bool Start(const char* name, std::function<void()> run);
    bool Wait_PrepareComplete();
    bool Wait_Paused();
    bool Wait_Exit(unsigned int milliseconds);
    void Stop();
    void Pause();
    void Resume();
    [[nodiscard]] bool Failed() const;

    // ---- the own thread
    /// Calls one overridable operation. An exception of any type counts as false and is remembered.
    bool Guarded(const std::function<bool()>& operation);
    /// Notes that Prepare has run.
    void PrepareComplete(bool isPrepared);
    /// Halts while paused. True when the next OneLoop is due, false when the loop has been stopped.
    bool NextLoop_Wait();
    /// The thread's last act; from here on the object that it ran for may be gone.
    void End();

private:
    enum class EPhase {
        Idle,      // no thread yet
        Preparing, // from Start until Prepare has run
        Looping,   // OneLoop or Finally
        Paused,    // halted between two OneLoop calls
        Ended,     // nothing more will be called
    };

    [[nodiscard]] bool IsOwnThread() const { return m_ownId == std::this_thread::get_id(); }
    bool Thread_Make(const char* name, std::function<void()> run); // needs the thread's lock

    std::atomic<std::thread::id> m_ownId = std::thread::id(); // of the own thread while it may call us

    std::mutex m_threadMutex;          // guards the thread's handle; taken before the other one, if both
    std::list<boost::thread> m_thread; // one, from Start until the first Wait_Exit that returns true

    mutable std::mutex m_mutex;        // guards all below; the new thread takes it without waiting for Start
    std::condition_variable m_changed; // any of the fields below has changed
    std::atomic<EPhase> m_phase = EPhase::Idle; // may be read without the lock
    unsigned int m_haltCount = 0;               // times the loop has halted
    bool m_isStopAsked = false;
    bool m_isPauseAsked = false;
    bool m_isPrepared = false;
    bool m_isFailed = false;
};
