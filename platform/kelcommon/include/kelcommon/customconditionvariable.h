#pragma once

#include <memory>

#include <kelcommon/kelcommonexport.h>

class CAutoEvent;
class CManualEvent;

/// Event that resets itself: the first WaitOne that finds it set takes it, so that one Set releases one
/// waiter, any of them. Until a WaitOne has taken the event, further Sets add nothing to the first one and
/// Reset undoes it, even if a waiter is about to wake.
/// Thread-safety: every operation from any thread at any time; no thread may be inside an operation when the
/// event is destroyed.
class KELCOMMON_API CustomConditionVariable {
public:
    /// Not set. @throws std::bad_alloc
    CustomConditionVariable();
    ~CustomConditionVariable();
    CustomConditionVariable(const CustomConditionVariable&) = delete;
    CustomConditionVariable& operator=(const CustomConditionVariable&) = delete;

    /// Releases one waiter, now or the next one to come.
    void Set();

    /// Undoes a Set that no WaitOne has taken.
    void Reset();

    /// Waits for the event and takes it.
    /// @param milliseconds  longest wait by the steady clock; 0 only tests, 0xFFFFFFFF waits without limit
    /// @return true if the event was set within the time, false on time-out
    bool WaitOne(unsigned int milliseconds);

private:
    std::unique_ptr<CAutoEvent> m_event;
};

/// Event that stays set until Reset: a Set releases all waiters, and those to come.
/// A thread that is waiting when Set is called is released even if Reset follows at once.
/// Thread-safety: every operation from any thread at any time; no thread may be inside an operation when the
/// event is destroyed.
class KELCOMMON_API CustomConditionVariable_Manual {
public:
    /// Not set. @throws std::bad_alloc
    CustomConditionVariable_Manual();
    ~CustomConditionVariable_Manual();
    CustomConditionVariable_Manual(const CustomConditionVariable_Manual&) = delete;
    CustomConditionVariable_Manual& operator=(const CustomConditionVariable_Manual&) = delete;

    /// Releases all waiters and lets later ones pass until Reset.
    void Set();

    /// Makes later waiters wait again. Waiters that a Set has released stay released.
    void Reset();

    /// Waits for the event and leaves it as it is.
    /// @param milliseconds  longest wait by the steady clock; 0 only tests, 0xFFFFFFFF waits without limit
    /// @return true if the event was set within the time, false on time-out
    bool WaitOne(unsigned int milliseconds);

private:
    std::unique_ptr<CManualEvent> m_event;
};
