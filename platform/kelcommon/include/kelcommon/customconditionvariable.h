#pragma once

#include <memory>

#include <kelcommon/kelcommonexport.h>

class CAutoEvent;
class CManualEvent;

/// Event that falls back by itself: one Set releases exactly one waiter.
/// A Set that finds threads waiting releases the one that has waited longest; otherwise the event stays set
/// until a WaitOne takes it. Several Sets that find nobody waiting count as one.
/// Thread-safety: every operation from any thread at any time; no thread may be inside an operation when the
/// event is destroyed.
class KELCOMMON_API CustomConditionVariable {
public:
    /// Not set. @throws std::bad_alloc
    CustomConditionVariable();
    ~CustomConditionVariable();
    CustomConditionVariable(const CustomConditionVariable&) = delete;
    CustomConditionVariable& operator=(const CustomConditionVariable&) = delete;

    /// Releases one waiter, or leaves the event set for the next.
    void Set();

    /// Takes a Set back that no waiter has used yet. A waiter already released stays released.
    void Reset();

    /// Waits for the event and takes it.
    /// @param milliseconds  longest wait by the steady clock; 0 only tests, 0xFFFFFFFF waits without limit
    /// @return true if the event was set within the time, false on time-out
    bool WaitOne(unsigned int milliseconds);

private:
    std::unique_ptr<CAutoEvent> m_event;
};

/// Event that stays set: a Set releases every waiter, and those to come, until Reset.
/// A thread that waits while Set is called is released even if Reset follows at once.
/// Thread-safety: every operation from any thread at any time; no thread may be inside an operation when the
/// event is destroyed.
class KELCOMMON_API CustomConditionVariable_Manual {
public:
    /// Not set. @throws std::bad_alloc
    CustomConditionVariable_Manual();
    ~CustomConditionVariable_Manual();
    CustomConditionVariable_Manual(const CustomConditionVariable_Manual&) = delete;
    CustomConditionVariable_Manual& operator=(const CustomConditionVariable_Manual&) = delete;

    /// Releases all waiters and lets later ones pass.
    void Set();

    /// Makes later waiters wait again. A waiter already released stays released.
    void Reset();

    /// Waits for the event and leaves it as it is.
    /// @param milliseconds  longest wait by the steady clock; 0 only tests, 0xFFFFFFFF waits without limit
    /// @return true if the event was set within the time, false on time-out
    bool WaitOne(unsigned int milliseconds);

private:
    std::unique_ptr<CManualEvent> m_event;
};
