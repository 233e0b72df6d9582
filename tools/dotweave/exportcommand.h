#pragma once

#include "command.h"
#include "maskchoice.h"
#include "maskcreation.h"
#include "valueoption.h"

#include <string>

namespace dotweave {

/// dotweave export: masks in formats that other programs read.
class CExportCommand : public CCommand {
public:
    explicit CExportCommand(CLI::App& app);
    EExitStatus Run(CConsole& console) const override;

private:
    CMaskCreation m_creation;
    CChoiceOption m_format;
    CMaskChoice m_choice;
    std::string m_file;
};

} // namespace dotweave
