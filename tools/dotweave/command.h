#pragma once

#include "console.h"
#include "exitstatus.h"

#include <CLI/App.hpp>

#include <string>

namespace dotweave {

/// One sub-command of dotweave. A class for each, in a file of its own; commandlist.cpp lists them.
/// Lifetime: the application keeps pointers into this object, which therefore stays where it is.
class CCommand {
public:
    CCommand(const CCommand&) = delete;
    CCommand& operator=(const CCommand&) = delete;
    virtual ~CCommand() = default;

    /// Whether the parsed command line asks for this command.
    bool IsChosen() const { return m_app->parsed(); }
    bool IsQuiet() const { return m_isQuiet; }

    /// Does the work. Everything goes through the console: data, summary, warnings, progress.
    /// @return ExitStatus_Good, or ExitStatus_CheckFailed; every other end is an exception
    /// @throws CUsageError, CRecordError, CModeNotBuilt, CFileError, CInterrupted, std::bad_alloc,
    ///         std::filesystem::filesystem_error; main turns each into a line and an exit status
    virtual EExitStatus Run(CConsole& console) const = 0;

protected:
    /// What every sub-command has: --help, --version, --quiet.
    /// @param app      the application; adds the sub-command to it
    /// @param summary  what the command does, one line without a full stop
    /// @param example  command lines that work, one a line, each from "dotweave" on
    CCommand(CLI::App& app, const std::string& name, const std::string& summary, const std::string& example);

    /// Adds --json.
    /// @param help  what the object says
    void Json_Add(const std::string& help);
    /// Where a derived class adds its options.
    CLI::App& Options() { return *m_app; }
    bool IsJson() const { return m_isJson; }

private:
    CLI::App* m_app; // owned by the application
    bool m_isQuiet = false;
    bool m_isJson = false;
};

} // namespace dotweave
