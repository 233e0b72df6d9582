#pragma once

/// @file
/// A host's threading library that starts no further thread. The test program defines CustomThreadBase::Start
/// in front of the library's own, which does the rest.

#if defined(__linux__)
inline constexpr bool THREADS_CAN_BE_REFUSED = true;
#else
inline constexpr bool THREADS_CAN_BE_REFUSED = false; // no standing in front of another library's operation
#endif

/// As many starts as anyone may ask for.
inline constexpr int ALL_THREADS = -1;

/// While it lives, so many threads start and none after them. One at a time.
class CRefusedThreads {
public:
    explicit CRefusedThreads(int startCount = ALL_THREADS);
    CRefusedThreads(const CRefusedThreads&) = delete;
    CRefusedThreads& operator=(const CRefusedThreads&) = delete;
    ~CRefusedThreads();

    /// Starts that were asked for so far.
    [[nodiscard]] int AskedCount() const;
};

/// While it lives, no thread misses its start for want of memory: what starting asks for is neither counted
/// nor refused.
class CSparedThreadStarts {
public:
    CSparedThreadStarts();
    CSparedThreadStarts(const CSparedThreadStarts&) = delete;
    CSparedThreadStarts& operator=(const CSparedThreadStarts&) = delete;
    ~CSparedThreadStarts();
};
