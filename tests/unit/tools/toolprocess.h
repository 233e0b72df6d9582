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

/// The built command, running.
class CToolProcess {
public:
    /// Starts a program with its outputs into files of its own.
    /// @param command  program and arguments
    explicit CToolProcess(const std::vector<std::string>& command);
    CToolProcess(const CToolProcess&) = delete;
    CToolProcess& operator=(const CToolProcess&) = delete;
    ~CToolProcess();

    void Signal(int signal) const;
    /// Whether it has ended; never waits.
    bool IsEnded();
    /// Waits for the end.
    SToolResult Wait();

private:
    void Collect(int flags);

    CTemporaryDirectory m_outputs;
    pid_t m_process = 0; // 0 when it is gone
    int m_status = 0;
};

/// Runs the built command to its end.
SToolResult Tool_Run(const std::vector<std::string>& arguments);

/// As above where no file can grow beyond a size: the disk is full from there on.
SToolResult Tool_RunWithFileLimit(int kibibytes, const std::vector<std::string>& arguments);
