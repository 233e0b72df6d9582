#include "progress.h"

#include <cmath>
#include <system_error>
#include <utility>

namespace dotweave {

namespace {

using namespace std::chrono_literals;
constexpr auto REDRAW = 200ms;

std::string Seconds_Text(double seconds)
{
    const int whole = static_cast<int>(std::ceil(seconds));
    return whole < 60 ? std::to_string(whole) + " s"
                      : std::to_string(whole / 60) + " min " + std::to_string(whole % 60) + " s";
}

} // namespace

std::string Progress_Text(const std::string& what, int done, int total, double seconds)
{
    if (total <= 0)
        return what + ": " + Seconds_Text(std::floor(seconds));
    const double share = static_cast<double>(done) / total;
    std::string text = what + ": " + std::to_string(done) + " of " + std::to_string(total) + ", " +
                       std::to_string(static_cast<int>(100.0 * share)) + " %";
    if (done > 0 && done < total)
        text += ", about " + Seconds_Text(seconds / share - seconds) + " left";
    return text;
}

CProgress::CProgress(CConsole& console, std::string what, int total, std::chrono::milliseconds silence)
    : m_console(console), m_what(std::move(what)), m_total(total)
{
    if (!console.IsProgressShown())
        return;
    try {
        m_drawer = std::jthread([this, silence](const std::stop_token& stop) { Draw(stop, silence); });
    } catch (const std::system_error&) { // the work matters more than its progress
    }
}

CProgress::~CProgress()
{
    m_drawer = std::jthread(); // asks it to stop and waits
    m_console.Line_Clear();
}

void CProgress::Draw(const std::stop_token& stop, std::chrono::milliseconds silence)
{
    const auto start = std::chrono::steady_clock::now();
    std::unique_lock lock(m_mutex);
    const auto never = [] { return false; };
    m_wake.wait_for(lock, stop, silence, never);
    while (!stop.stop_requested()) {
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        m_console.Line_Show(Progress_Text(m_what, m_done, m_total, time.count()));
        m_wake.wait_for(lock, stop, REDRAW, never);
    }
}

} // namespace dotweave
