#pragma once

#include "maskcreation.h"

#include <CLI/App.hpp>

#include <iosfwd>
#include <string>

namespace dotweave {

/// dotweave cuttable: writes the cut table of a print mode as text and as a plot.
class CCutTableCommand {
public:
    explicit CCutTableCommand(CLI::App& app);
    /// Whether the parsed command line asks for this command.
    bool IsChosen() const { return m_command->parsed(); }
    /// @param out     takes the summary, unless standard output takes a file
    /// @param errors  takes warnings
    /// @throws what CMaskCreation::Create and OutputTexts_Write throw
    void Run(std::ostream& out, std::ostream& errors) const;

private:
    void Files_Check() const;

    CLI::App* m_command; // owned by the application
    CMaskCreation m_creation;
    std::string m_textFile;
    std::string m_plotFile;
};

} // namespace dotweave
