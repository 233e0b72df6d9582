#pragma once

#include "maskcreation.h"
#include "maskoutput.h"

#include <CLI/App.hpp>

#include <iosfwd>
#include <string>

namespace dotweave {

/// dotweave build: builds the masks of a print mode and writes them out.
class CBuildCommand {
public:
    explicit CBuildCommand(CLI::App& app);
    /// Whether the parsed command line asks for this command.
    bool IsChosen() const { return m_command->parsed(); }
    /// @param out     takes the summary
    /// @param errors  takes warnings
    /// @throws what CMaskCreation::Create and MaskOutput_Write throw
    void Run(std::ostream& out, std::ostream& errors) const;

private:
    EMaskPictures Pictures() const;

    CLI::App* m_command; // owned by the application
    CMaskCreation m_creation;
    std::string m_directory;
    std::string m_pictures = "first";
};

} // namespace dotweave
