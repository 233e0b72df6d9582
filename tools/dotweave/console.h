#pragma once

#include <iosfwd>
#include <mutex>
#include <ostream>
#include <string>

namespace dotweave {

/// Where a run of the command writes. Data go to standard output; messages and progress go to standard error.
/// Thread-safety: one thread, but for Line_Show and Line_Clear.
class CConsole {
public:
    /// @param out         takes the data; main hands it to standard output when the run has succeeded
    /// @param errors      standard error
    /// @param isTerminal  whether somebody watches standard error at a terminal that moves its cursor
    CConsole(std::ostream& out, std::ostream& errors, bool isTerminal);

    /// Takes the run's data: what the user asked for, whatever --quiet says.
    std::ostream& Out() { return m_out; }
    /// Takes a summary of what was done, for people. Goes with the data, or nowhere when the run is quiet.
    std::ostream& Summary() { return m_isQuiet ? m_nowhere : m_out; }
    /// Takes what the user asked to see beside the data, such as the library's log.
    std::ostream& Errors() { return m_errors; }

    /// "dotweave: warning: ..." unless the run is quiet.
    void Warning_Print(const std::string& text);
    /// "dotweave: ..."
    void Error_Print(const std::string& text);

    void Quiet_Set(bool isQuiet) { m_isQuiet = isQuiet; }
    /// Whether CProgress shows anything.
    bool IsProgressShown() const { return m_isTerminal && !m_isQuiet; }
    /// Shows a line that the next one overwrites. Only when IsProgressShown().
    void Line_Show(const std::string& text);
    /// Removes such a line.
    void Line_Clear() { Line_Show(""); }

private:
    /// A word in colour, where the terminal has colours and nobody has set NO_COLOR.
    std::string Colored(const char* code, const std::string& word) const;

    std::ostream& m_out;
    std::ostream& m_errors;
    std::ostream m_nowhere{nullptr};
    bool m_isTerminal;
    bool m_isQuiet = false;
    bool m_isLineShown = false;
    std::mutex m_lineMutex; // the line is drawn by the progress's own thread
};

} // namespace dotweave
