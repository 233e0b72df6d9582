#pragma once

#include <stdexcept>

/// The user has ended the run. Thrown between two steps, so that half-made files are removed on the way out.
class CInterrupted : public std::runtime_error {
public:
    explicit CInterrupted(int signal) : std::runtime_error("interrupted"), m_signal(signal) {}
    int Signal() const { return m_signal; }

private:
    int m_signal;
};

/// Holds back interrupts (SIGINT, SIGTERM, and SIGHUP where there is one) while files are half-made. A signal
/// that the caller has set to be ignored stays ignored. One at a time.
class CInterruptGuard {
public:
    CInterruptGuard();
    CInterruptGuard(const CInterruptGuard&) = delete;
    CInterruptGuard& operator=(const CInterruptGuard&) = delete;
    ~CInterruptGuard();

    /// @throws CInterrupted when a signal has come since the guard was made
    static void Check();
};
