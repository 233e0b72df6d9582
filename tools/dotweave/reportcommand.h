#pragma once

#include "command.h"
#include "maskcreation.h"

#include <string>

namespace dotweave {

/// "dotweave report": everything about a mode as one HTML page that needs nothing else.
class CReportCommand : public CCommand {
public:
    /// Adds the sub-command and its options to the application.
    explicit CReportCommand(CLI::App& app);

    EExitStatus Run(CConsole& console) const override;

private:
    CMaskCreation m_creation;
    std::string m_file;
};

} // namespace dotweave
