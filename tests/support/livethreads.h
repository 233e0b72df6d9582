#pragma once

/// @file
/// Threads of this process that are alive. A thread that has been joined is not, though the kernel may list
/// it for some microseconds more.

#include <cstddef>
#include <thread>

#if defined(__linux__)

#include <filesystem>
#include <fstream>
#include <limits>
#include <string>

/// Whether the thread with this status line can still run code of the process.
inline bool LiveThread_IsOne(const std::filesystem::path& statPath)
{
    constexpr unsigned int EXITING = 0x4; // PF_EXITING of the kernel, set before a join can return
    std::ifstream stat(statPath);
    stat.ignore(std::numeric_limits<std::streamsize>::max(), ')'); // number and name
    std::string word;
    for (int field = 3; field < 9; ++field)
        stat >> word;
    unsigned int flags = EXITING; // of a thread that went while we looked
    stat >> flags;
    return (flags & EXITING) == 0;
}

/// Threads of this process, those of a sanitizer included.
inline std::ptrdiff_t LiveThreads_Count()
{
    std::ptrdiff_t count = 0;
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task"))
        count += LiveThread_IsOne(task.path() / "stat") ? 1 : 0;
    return count;
}

/// Threads of this process before main. Counted by a thread that leaves itself out, as a sanitizer starts one
/// of its own with the first.
// NOLINTNEXTLINE(cert-err58-cpp): a test program that cannot count ends here
inline const std::ptrdiff_t LIVE_THREADS_BASELINE = [] {
    std::ptrdiff_t count = 0;
    std::thread([&count] { count = LiveThreads_Count() - 1; }).join();
    return count;
}();

#else
/// Not known here; the checks below then check nothing.
inline std::ptrdiff_t LiveThreads_Count()
{
    return 0;
}

inline constexpr std::ptrdiff_t LIVE_THREADS_BASELINE = 0;
#endif

/// Whether no more threads are alive than before main.
inline bool LiveThreads_AreGone()
{
    return LiveThreads_Count() == LIVE_THREADS_BASELINE;
}
