#pragma once

#include "command.h"
#include "maskcreation.h"

namespace dotweave {

/// dotweave check: is the mask what its cut table says, and is every pixel printed equally often?
class CCheckCommand : public CCommand {
public:
    explicit CCheckCommand(CLI::App& app);
    /// @return ExitStatus_CheckFailed when the verdict that counts is no
    /// @throws what CMaskCreation::Create throws
    EExitStatus Run(CConsole& console) const override;

private:
    CMaskCreation m_creation;
    bool m_isUniformWanted = false;
};

} // namespace dotweave
