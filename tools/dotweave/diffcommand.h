#pragma once

#include "command.h"

#include <string>
#include <vector>

namespace dotweave {

/// dotweave diff: compares the mask bytes of two modes or files.
class CDiffCommand : public CCommand {
public:
    explicit CDiffCommand(CLI::App& app);
    /// @return ExitStatus_CheckFailed when the two differ
    EExitStatus Run(CConsole& console) const override;

private:
    std::vector<std::string> m_words;
};

} // namespace dotweave
