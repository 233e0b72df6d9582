#pragma once

#include "command.h"
#include "maskcreation.h"

#include <string>

namespace dotweave {

/// dotweave info: what a print mode is, or whether a result is whole.
class CInfoCommand : public CCommand {
public:
    explicit CInfoCommand(CLI::App& app);
    /// @return ExitStatus_CheckFailed when a file of the folder is not as mask.json says
    EExitStatus Run(CConsole& console) const override;

private:
    EExitStatus Mode_Show(CConsole& console) const;
    EExitStatus Folder_Show(CConsole& console) const;

    CMaskCreation m_creation;
    std::string m_folder;
};

} // namespace dotweave
