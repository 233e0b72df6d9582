#pragma once

/// @file
/// Whether threads stay behind. A thread whose end has been waited for may be on its way out for a moment longer,
/// so its going is awaited, for as long as only a hanging thread takes.

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <thread>

#if defined(__linux__)
/// Threads of this process, those of a sanitizer included.
inline std::ptrdiff_t LiveThreads_Count()
{
    namespace fs = std::filesystem;
    return std::distance(fs::directory_iterator("/proc/self/task"), fs::directory_iterator());
}

/// Threads of this process before main, while none is on its way out. Counted by a thread that leaves itself out,
/// as a sanitizer starts one of its own with the first.
inline const std::ptrdiff_t LIVE_THREADS_BASELINE = [] {
    std::ptrdiff_t count = 0;
    std::thread([&count] { count = LiveThreads_Count() - 1; }).join();
    return count;
}();
#else
/// Not known here; the checks below then hold without a look.
inline std::ptrdiff_t LiveThreads_Count()
{
    return 0;
}

inline constexpr std::ptrdiff_t LIVE_THREADS_BASELINE = 0;
#endif

/// @return false when more than before main were still there after ten seconds
inline bool LiveThreads_AreGone()
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (LiveThreads_Count() > LIVE_THREADS_BASELINE) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::yield();
    }
    return true;
}
