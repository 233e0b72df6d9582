#pragma once

#include "command.h"
#include "maskcreation.h"

#include <string>

namespace dotweave {

/// dotweave cuttable: writes the cut table of a print mode as text and as a plot.
class CCutTableCommand : public CCommand {
public:
    explicit CCutTableCommand(CLI::App& app);
    /// @throws what CMaskCreation::Create and OutputTexts_Write throw
    EExitStatus Run(CConsole& console) const override;

private:
    void Files_Check() const;

    CMaskCreation m_creation;
    std::string m_textFile;
    std::string m_plotFile;
};

} // namespace dotweave
