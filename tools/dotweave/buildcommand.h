#pragma once

#include "command.h"
#include "maskcreation.h"
#include "maskoutput.h"
#include "valueoption.h"

#include <string>

namespace dotweave {

/// dotweave build: builds the masks of a print mode and writes them out.
class CBuildCommand : public CCommand {
public:
    explicit CBuildCommand(CLI::App& app);
    /// @throws what CMaskCreation::Create and MaskOutput_Write throw
    EExitStatus Run(CConsole& console) const override;

private:
    CMaskCreation m_creation;
    CChoiceOption m_pictures;
    std::string m_directory;
};

} // namespace dotweave
