#pragma once

#include "command.h"
#include "maskcreation.h"
#include "pressoptions.h"
#include "sheet/idealsheet.h"
#include "valueoption.h"

#include <string>
#include <vector>

namespace dotweave {

/// dotweave simulate: prints one mode with the errors of a press and judges the print.
class CSimulateCommand : public CCommand {
public:
    explicit CSimulateCommand(CLI::App& app);
    /// @throws what CMaskCreation::Create and OutputTexts_Write throw
    EExitStatus Run(CConsole& console) const override;

private:
    struct SPrinting;
    SSheetWindow Window(const CPassLayout& layout) const;
    void Image_Read(SPrinting& printing) const;
    void Outputs_Make(const SPrinting& printing, std::vector<struct SOutputText>& outputs) const;

    CMaskCreation m_creation;
    CPressOptions m_press;
    CNumberOption<int> m_color;
    CNumberOption<int> m_lines;
    CNumberOption<int> m_columns;
    std::string m_imageFile;
    std::string m_patchFile;
    std::string m_coverageFile;
    std::string m_passesFile;
    std::string m_profileFile;
};

} // namespace dotweave
