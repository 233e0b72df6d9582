#pragma once

#include "command.h"
#include "maskcreation.h"

#include <string>

namespace dotweave {

/// dotweave duty: how much the nozzle rows work.
class CDutyCommand : public CCommand {
public:
    explicit CDutyCommand(CLI::App& app);
    EExitStatus Run(CConsole& console) const override;

private:
    CMaskCreation m_creation;
    std::string m_tableFile;
    std::string m_plotFile;
};

} // namespace dotweave
