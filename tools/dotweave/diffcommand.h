#pragma once

#include "command.h"

#include <string>

namespace dotweave {

/// dotweave diff: compares the mask bytes of two modes or files.
class CDiffCommand : public CCommand {
public:
    explicit CDiffCommand(CLI::App& app);
    /// @return ExitStatus_CheckFailed when the two differ
    EExitStatus Run(CConsole& console) const override;

private:
    std::string m_first;
    std::string m_second;
};

} // namespace dotweave
