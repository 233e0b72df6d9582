#pragma once

#include "diskfaults.h"

#include <dotweave/maskdata_base.h>

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <string>

/// @file
/// Runs of the command's writing, each in a process of its own.

/// File names and contents.
using CFiles = std::map<std::string, std::string>;

/// How a run has ended.
struct SRunEnd {
    bool isGood = false;
    int signal = 0;       ///< that ended it, 0 for none
    int callCount = 0;    ///< calls to the disk; unknown after a signal
    std::string function; ///< the one that was planned to fail; empty when it was not called
    std::string message;  ///< what the user is told of an error
};

/// A run that writes a mask's files into a folder, as `dotweave build` does.
class CPlacingRun {
public:
    CPlacingRun(const CMaskData_Base& mask, const std::filesystem::path& folder, const SDiskPlan& plan);
    CPlacingRun(const CPlacingRun&) = delete;
    CPlacingRun& operator=(const CPlacingRun&) = delete;
    ~CPlacingRun();

    SRunEnd Wait();

private:
    pid_t m_process = 0;
    int m_report = -1; // end of the pipe from which the run's report is read
};

/// What a folder holds.
struct SFolder {
    CFiles files;          ///< those that a user sees
    bool hasReady = false; ///< a new result waits for the next run
    int hiddenCount = 0;   ///< folders that runs have left, the ready one too

    /// The content of a folder; without any file when it does not exist.
    static SFolder Read(const std::filesystem::path& folder);
};

/// Lets the next run of the command clear a folder up. That run writes nothing itself.
void NextRun_Begin(const std::filesystem::path& folder);
