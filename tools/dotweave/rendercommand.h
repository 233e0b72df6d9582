#pragma once

#include "command.h"
#include "maskchoice.h"
#include "maskcreation.h"
#include "valueoption.h"

#include "view/pixelpicture.h"

#include <string>

namespace dotweave {

/// dotweave render: masks as a picture to look at.
class CRenderCommand : public CCommand {
public:
    explicit CRenderCommand(CLI::App& app);
    EExitStatus Run(CConsole& console) const override;

private:
    void Options_Check() const;
    SPixelPicture Mask_Draw(const CMaskView& view) const;
    SPixelPicture Sheet_Draw(const CMaskView& view) const;

    CMaskCreation m_creation;
    CMaskChoice m_choice;
    CNumberOption<int> m_firstLine;
    CNumberOption<int> m_lineCount;
    CNumberOption<int> m_firstColumn;
    CNumberOption<int> m_columnCount;
    CNumberOption<int> m_magnification;
    CNumberOption<int> m_reduction;
    bool m_isSheet = false;
    bool m_isPlain = false;
    std::string m_file;
};

} // namespace dotweave
