#pragma once

#include "maskoutput.h"
#include "recordoptions.h"

#include <CLI/App.hpp>

#include <iosfwd>
#include <string>

/// dotweave build: builds the masks of a print mode and writes them out.
class CBuildCommand {
public:
    explicit CBuildCommand(CLI::App& app);
    /// Whether the parsed command line asks for this command.
    bool IsChosen() const { return m_command->parsed(); }
    /// @param out     takes the summary
    /// @param errors  takes the library's log
    /// @return the exit status: 0 when all files are in place, 1 for a mode that the library rejects
    /// @throws CUsageError, std::filesystem::filesystem_error, CInterrupted, std::bad_alloc
    int Run(std::ostream& out, std::ostream& errors) const;

private:
    EMaskPictures Pictures() const;

    CLI::App* m_command; // owned by the application
    CRecordOptions m_recordOptions;
    std::string m_directory;
    std::string m_pictures = "first";
};
