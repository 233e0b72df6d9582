#pragma once

#include "commandlist.h"

#include <CLI/App.hpp>

#include <memory>
#include <string>
#include <vector>

namespace dotweave {

/// Adds --version, which every sub-command has too.
void CommandLine_AddVersion(CLI::App& app);

/// The application with all its sub-commands: one table of options for parsing, help, manual page and
/// completion.
class CCommandLine {
public:
    CCommandLine();

    /// @return the chosen command, or null when help or the version was asked for and went to the console
    /// @throws CUsageError; a mistyped command or option comes with a suggestion
    const CCommand* Parse(int argc, const char* const* argv, CConsole& console);

    const CLI::App& App() const { return m_app; }

private:
    CLI::App m_app;
    std::vector<std::unique_ptr<CCommand>> m_commands;
};

} // namespace dotweave
