#pragma once

#include <stdexcept>

namespace dotweave {

/// A signal has ended the run. Thrown between two steps, so that destructors remove half-made files.
class CInterrupted : public std::runtime_error {
public:
    explicit CInterrupted(int signal) : std::runtime_error("interrupted"), m_signal(signal) {}
    int Signal() const { return m_signal; }

private:
    int m_signal;
};

/// Delays the signals that end a run - interrupts, a closed pipe, an alarm, a file size limit - while files
/// are half-made. A signal that the caller has set to be ignored stays ignored. One guard at a time.
class CInterruptGuard {
public:
    CInterruptGuard();
    CInterruptGuard(const CInterruptGuard&) = delete;
    CInterruptGuard& operator=(const CInterruptGuard&) = delete;
    ~CInterruptGuard();

    /// @throws CInterrupted when a signal has come since the guard was made
    static void Check();
};

} // namespace dotweave
