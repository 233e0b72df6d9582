#pragma once

#include "temporarydirectory.h"

#include <sys/types.h>

#include <string>
#include <vector>

/// How a run of the built command has ended.
struct SToolResult {
    int exitStatus = -1; ///< -1 when a signal ended it
    int signal = 0;      ///< the signal that ended it, 0 for none
    std::string out;     ///< everything on standard output
    std::string err;     ///< everything on standard error
};

/// A running program.
class CToolProcess {
public:
    /// Starts a program whose outputs go to files of its own.
    /// @param command  program and arguments
    explicit CToolProcess(const std::vector<std::string>& command);
    CToolProcess(const CToolProcess&) = delete;
    CToolProcess& operator=(const CToolProcess&) = delete;
    ~CToolProcess();

    void Signal(int signal) const;
    /// Whether it has ended; never waits.
    bool IsEnded();
    /// What it has written to standard error so far.
    std::string ErrorText() const;
    /// Waits for the end.
    SToolResult Wait();

private:
    void Collect(int flags);

    CTemporaryDirectory m_outputs;
    pid_t m_process = 0; // 0 when it has ended
    int m_status = 0;
};

/// The built command with arguments.
/// @param words  arguments with blanks between them
/// @param more   further arguments, taken as they are
std::vector<std::string> Tool_Command(const std::string& words, const std::vector<std::string>& more = {});

/// Runs the built command to its end.
SToolResult Tool_Run(const std::string& words, const std::vector<std::string>& more = {});

/// Runs a shell script, in which "$0" "$@" is the built command with its arguments.
SToolResult Tool_RunIn(const std::string& script, const std::string& words,
                       const std::vector<std::string>& more = {});
