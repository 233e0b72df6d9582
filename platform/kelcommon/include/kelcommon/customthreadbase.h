#pragma once

#include <memory>

#include <kelcommon/kelcommonexport.h>

class CThreadRun;

/// A thread whose work is one step repeated: Prepare once, OneLoop again and again, Finally.
/// Derive, override OneLoop and, where wanted, Prepare and Finally; then call Start, later Stop, and
/// Wait_Exit before the object goes.
///
/// Life:      an object runs at most once. After its thread has ended, or after a Stop that came before any
///            Start, Start returns false; make a new object for a new run. So a Stop is never lost, however
///            the calls of several threads fall.
/// End:       the loop ends after Stop, when OneLoop returns false, or by an exception.
/// Errors:    an exception of any type that leaves Prepare, OneLoop or Finally stays inside the thread: it
///            counts as a false result and is remembered by Failed. It never ends the process.
/// Own thread: Start, Stop, Pause, Resume and Failed may be called there. The Wait operations would wait for
///            the caller itself and answer at once instead, as each of them says.
/// Destruction: a derived class must see to it that Stop and Wait_Exit have been called before its own part
///            is destroyed, since the thread calls its overrides. As a last resort the destructor of the base
///            stops and waits too, which only saves a thread that is paused or past its last OneLoop. Never
///            destroy the object on its own thread.
/// Thread-safety: every public operation may be called from any thread at any time.
/// The order of the virtual operations is agreed with the host and must not change.
class KELCOMMON_API CustomThreadBase {
public:
    /// No thread yet. @throws std::bad_alloc
    CustomThreadBase();
    CustomThreadBase(const CustomThreadBase&) = delete;
    CustomThreadBase& operator=(const CustomThreadBase&) = delete;
    virtual ~CustomThreadBase();

    /// Starts the thread. Does not wait for Prepare.
    /// @param name  shown by debuggers, ASCII; Linux shows the first 15 characters; null is an unnamed thread
    /// @return false when the thread cannot be made (Start may then be tried again), when the object runs or
    ///         has run already, or when Stop has been called
    virtual bool Start(const char* name);

    /// Waits without limit until Prepare has run.
    /// @return what Prepare returned, also after the thread has ended; false when no thread was started, and
    ///         at once when called by Prepare itself
    virtual bool Wait_PrepareComplete();

    /// Waits without limit until the loop halts between two OneLoop calls. Without a Pause, that means until
    /// somebody else calls Pause or the loop ends.
    /// @return true when the loop has halted since the call or is halted now; it stays so until Resume.
    ///         False when it was stopped, has ended or was never started, and at once on the own thread
    virtual bool Wait_Paused();

    /// Waits until the thread has ended. After true the thread calls and touches nothing of the object any more,
    /// which may be destroyed at once unless other threads still use it. The platform's thread may still be on its
    /// way out and free what it had for itself, such as thread_local objects: code that these run must stay loaded.
    /// A later Start may wait for that, and so does the end of the process.
    /// @param milliseconds  longest wait by the steady clock; 0 only tests, 0xFFFFFFFF waits without limit
    /// @return true once the thread has ended, also when none was ever started; false when it has not ended
    ///         in time, and at once on the own thread
    virtual bool Wait_Exit(unsigned int milliseconds);

    /// Asks the loop to end after the current OneLoop, for good; a paused loop ends too. Does not wait. May
    /// be called any number of times.
    virtual void Stop();

    /// Asks the loop to halt before the next OneLoop. Before Start: the loop halts after Prepare.
    virtual void Pause();

    /// Lets a paused loop go on.
    virtual void Resume();

    /// True once an exception has left Prepare, OneLoop or Finally.
    [[nodiscard]] bool Failed() const;

protected:
    /// One step of the work, on the own thread. A step should be short (some 100 ms): Stop and Pause take
    /// effect between two steps.
    /// @return true to be called again; false ends the loop as Stop does
    virtual bool OneLoop() = 0;

    /// Called once on the own thread, before the first OneLoop, even if Stop has been called meanwhile.
    /// @return true to go on; false ends the thread with neither OneLoop nor Finally: there is nothing to
    ///         clean up behind a Prepare that failed. The base returns true.
    virtual bool Prepare();

    /// Called once on the own thread after the last OneLoop, however the loop ended, if Prepare returned
    /// true. The base does nothing.
    virtual void Finally();

private:
    void Run() noexcept;

    std::shared_ptr<CThreadRun> m_run;
};
