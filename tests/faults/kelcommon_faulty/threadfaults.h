#pragma once

#include <functional>
#include <memory>

class CustomThreadBase;

/// @file
/// A host's threading library that fails at will: kelcommon_faulty implements the contract headers with the
/// sources of the real one, and does what this panel says. Programs that link it need no help from a linker.

/// As many starts as anyone may ask for.
inline constexpr int ALL_THREADS = -1;

/// What the library does instead of what it is asked. Empty functions change nothing.
struct SThreadFaults {
    /// Threads that still start; later starts are refused.
    int startsLeft = ALL_THREADS;
    /// Called before a thread starts, and after, on the thread that asks for it.
    std::function<void(CustomThreadBase&)> starting;
    std::function<void()> started;
    /// @return whether the base's Prepare fails
    std::function<bool(const CustomThreadBase&)> failsToPrepare;
    /// @return whether a wait for the end, with a limit in milliseconds, is over before the thread has ended
    std::function<bool(const CustomThreadBase&, unsigned int)> isWaitExpired;
};

/// Puts faults in place while it lives. One at a time; outlives the threads.
class CThreadFaults {
public:
    explicit CThreadFaults(SThreadFaults faults);
    explicit CThreadFaults(int startsLeft) : CThreadFaults(SThreadFaults{startsLeft, {}, {}, {}, {}}) {}
    CThreadFaults(const CThreadFaults&) = delete;
    CThreadFaults& operator=(const CThreadFaults&) = delete;
    ~CThreadFaults();

    /// Starts that were asked for so far.
    [[nodiscard]] int AskedCount() const;

    struct SState;

private:
    std::unique_ptr<SState> m_state;
};
