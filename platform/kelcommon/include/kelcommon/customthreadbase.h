#pragma once

#include <memory>

#include <kelcommon/kelcommonexport.h>

class CThreadRun;

/// A thread whose work is one step repeated: Prepare once, OneLoop again and again, Finally.
/// Derive a class and override OneLoop and, where needed, Prepare and Finally. Call Start, later Stop, and
/// Wait_Exit before the object is destroyed.
///
/// Life: an object runs at most once. After its thread has ended, and after a Stop that came before any
/// Start, Start returns false; make a new object for a new run. So a Stop is never lost, in whatever order
/// several threads call.
///
/// End: the loop ends after Stop, when OneLoop returns false, or by an exception.
///
/// Errors: an exception of any type that leaves Prepare or OneLoop counts as a false result; one that leaves
/// Finally is dropped. None ends the process.
///
/// Own thread: Start, Stop, Pause and Resume may be called there. The Wait operations would wait for the
/// caller itself and return at once instead, as each of them says. The same holds for destructors of
/// thread_local objects, which run while the thread exits and Wait_Exit waits for it. Such a destructor may
/// start and await other objects. It must not wait for a thread that is itself in Wait_Exit for this one:
/// neither would return.
///
/// Destruction: a derived class must call Stop and Wait_Exit before its own part is destroyed, since the
/// thread calls its overrides. As a last resort the destructor of the base calls both, which only saves a
/// thread that is paused or past its last OneLoop. Never destroy the object on its own thread.
///
/// Windows: do not call Wait_Exit in DllMain or in the destructor of a static object of a DLL. The loader's
/// lock is held there, and a thread needs it to exit.
///
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
    /// @return false when the platform refuses the thread (Start may then be called again), when the object
    ///         runs or has run already, and after Stop
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

    /// Waits until the thread has ended, and joins it. After true the thread is gone: it runs no code, not
    /// even destructors of thread_local objects, and its stack is free. Several threads may wait at once.
    /// @param milliseconds  longest wait for the thread's work, by the steady clock; 0 only tests, 0xFFFFFFFF
    ///                      waits without limit. The short exit after the work is always waited for.
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

protected:
    /// One step of the work, on the own thread. A step should be short (some 100 ms): Stop and Pause take
    /// effect between two steps.
    /// @return true to be called again; false ends the loop as Stop does
    virtual bool OneLoop() = 0;

    /// Called once on the own thread, before the first OneLoop, even if Stop has been called meanwhile.
    /// @return true to go on; false ends the thread with neither OneLoop nor Finally, as a Prepare that fails
    ///         cleans up itself. The base returns true.
    virtual bool Prepare();

    /// Called once on the own thread after the last OneLoop, however the loop ended, if Prepare returned
    /// true. The base does nothing.
    virtual void Finally();

private:
    void Run() noexcept;

    std::unique_ptr<CThreadRun> m_run;
};
