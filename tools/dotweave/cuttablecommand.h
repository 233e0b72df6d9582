#pragma once

#include "dotweave/cuttable.h"
#include "recordoptions.h"

#include <CLI/App.hpp>

#include <iosfwd>
#include <span>
#include <string>
#include <vector>

/// dotweave cuttable: writes the cut table of a print mode as text and as a plot.
class CCutTableCommand {
public:
    explicit CCutTableCommand(CLI::App& app);
    /// Whether the parsed command line asks for this command.
    bool IsChosen() const { return m_command->parsed(); }
    /// @param out     takes the summary
    /// @param errors  takes the library's log
    /// @return the exit status: 0 when all files are in place, 1 for a mode that the library rejects
    /// @throws CUsageError, std::filesystem::filesystem_error, CInterrupted, std::bad_alloc
    int Run(std::ostream& out, std::ostream& errors) const;

private:
    void Files_Check() const;
    void Files_Write(std::span<const SCutTable> table, int stepRows) const;

    CLI::App* m_command; // owned by the application
    CRecordOptions m_recordOptions;
    std::string m_textFile;
    std::string m_plotFile;
};

/// Reads a cut table dump: one line per entry, the lower bound, a comma, the upper bound.
/// @return the entries up to the first line that is not one
std::vector<SCutTable> CutTable_ReadFile(const std::string& path);
