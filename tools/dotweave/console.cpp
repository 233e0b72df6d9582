#include "console.h"

#include <cstdlib>

namespace dotweave {

namespace {

constexpr char RED[] = "\x1B[1;31m";
constexpr char YELLOW[] = "\x1B[33m";
constexpr char PLAIN[] = "\x1B[0m";
constexpr char LINE_START[] = "\r\x1B[K"; // and clears the line

} // namespace

CConsole::CConsole(std::ostream& out, std::ostream& errors, bool isTerminal)
    : m_out(out), m_errors(errors), m_isTerminal(isTerminal)
{}

std::string CConsole::Colored(const char* code, const std::string& word) const
{
    const char* const refusal = std::getenv("NO_COLOR"); // NOLINT(concurrency-mt-unsafe): nobody sets it
    const bool isRefused = refusal != nullptr && *refusal != 0; // https://no-color.org
    return m_isTerminal && !isRefused ? code + word + PLAIN : word;
}

void CConsole::Warning_Print(const std::string& text)
{
    if (!m_isQuiet)
        m_errors << "dotweave: " << Colored(YELLOW, "warning:") << ' ' << text << std::endl;
}

void CConsole::Error_Print(const std::string& text)
{
    m_errors << Colored(RED, "dotweave:") << ' ' << text << std::endl;
}

void CConsole::Line_Show(const std::string& text)
{
    const std::lock_guard lock(m_lineMutex);
    if (!text.empty() || m_isLineShown)
        m_errors << LINE_START << text << std::flush;
    m_isLineShown = !text.empty();
}

} // namespace dotweave
