#pragma once

/// @file
/// Faults of the host's thread library. The linker routes the thread base's Start and Prepare through this
/// test program (see tests/faults/CMakeLists.txt), so they work under every compiler and sanitizer.

/// Which threads' Prepare fails.
enum class EFailingPrepare { None, Producer, Worker };

/// While one lives, threads fail as it says. One at a time; outlive the threads.
class CPlatformFaults {
public:
    /// Only this many threads start from here on.
    static CPlatformFaults StartsLeft(int threadCount) { return {threadCount, EFailingPrepare::None}; }
    /// The base's Prepare fails on these threads.
    static CPlatformFaults Prepare(EFailingPrepare threads) { return {NO_LIMIT, threads}; }

    CPlatformFaults(const CPlatformFaults&) = delete;
    CPlatformFaults& operator=(const CPlatformFaults&) = delete;
    ~CPlatformFaults();

private:
    static constexpr int NO_LIMIT = -1;

    CPlatformFaults(int startsLeft, EFailingPrepare failingPrepare);
};
