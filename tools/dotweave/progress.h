#pragma once

#include "console.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace dotweave {

/// A shorter step needs no progress.
inline constexpr std::chrono::milliseconds PROGRESS_SILENCE{500};

/// The progress of a step of a run, as one line at a terminal that is rewritten until the step ends:
/// "pictures: 120 of 480, 25 %, about 9 s left". Nothing appears in the first half second, so a short step
/// stays silent. Without a terminal, and when the run is quiet, it does nothing.
class CProgress {
public:
    /// @param console  outlives this object
    /// @param what     what is being done, as the user calls it
    /// @param total    parts that the step has; 0 when nobody knows, then the time that has passed is shown
    /// @param silence  how long nothing appears
    CProgress(CConsole& console, std::string what, int total = 0,
              std::chrono::milliseconds silence = PROGRESS_SILENCE);
    CProgress(const CProgress&) = delete;
    CProgress& operator=(const CProgress&) = delete;
    /// Removes the line.
    ~CProgress();

    /// Counts parts that are done. Any thread may call it.
    void Done_Add(int count = 1) { m_done += count; }

private:
    void Draw(const std::stop_token& stop, std::chrono::milliseconds silence);

    CConsole& m_console;
    std::string m_what;
    int m_total;
    std::atomic<int> m_done = 0;
    std::mutex m_mutex;
    std::condition_variable_any m_wake;
    std::jthread m_drawer; // last, so that it ends first
};

/// The line of a progress.
/// @param seconds  since the step began
std::string Progress_Text(const std::string& what, int done, int total, double seconds);

} // namespace dotweave
