#pragma once

#include "command.h"
#include "modejudge.h"
#include "pressoptions.h"

#include <string>
#include <vector>

namespace dotweave {

/// dotweave compare: modes under the same errors of the press.
class CCompareCommand : public CCommand {
public:
    explicit CCompareCommand(CLI::App& app);
    /// @throws what Mode_ByWord, Mask_Create and OutputTexts_Write throw
    EExitStatus Run(CConsole& console) const override;

private:
    std::vector<double> Advances() const;

    std::vector<std::string> m_words;
    CPressOptions m_press;
    CNumberOption<int> m_height;
    CNumberOption<int> m_width;
    std::string m_advances = "0,0.25,0.5,1";
    bool m_isWithoutHardEdges = false;
    std::string m_sheetFile;
};

} // namespace dotweave
