#include "modejudge.h"

#include "pressoptions.h"

#include <algorithm>
#include <cstddef>

namespace dotweave {

double StepRows(const CPassLayout& layout)
{
    return static_cast<double>(layout.StepLines()) / layout.YResPass();
}

double RowsPerPass(const CPassLayout& layout)
{
    return static_cast<double>(layout.AdvanceLines()) / layout.YResPass();
}

SSheetWindow Judge_Window(const CPassLayout& layout, const SJudgeOptions& options)
{
    const int steps = std::max(1, options.heightRows * layout.YResPass() / layout.StepLines());
    return {layout.SteadyLine_First(), steps * layout.StepLines(), options.widthRows * layout.XResPass()};
}

SPatchFigures Mode_Judge(const CMaskData_Base& mask, const SSheetErrors& errors, const SJudgeOptions& options,
                         SPatch* patch)
{
    const CPassLayout layout(mask);
    SPatchOptions printed = options.patch;
    printed.window = Judge_Window(layout, options);
    printed.threadCount = 1; // modes are printed side by side
    const std::optional<CBitImage> image = TintImage(options.tint, 0);
    CFigureCollector collector(layout, printed.window, options.viewing);
    Patch_Print(mask, 0, image ? &*image : nullptr, errors, printed, [&](const SPatchLines& lines) {
        collector(lines);
        if (patch != nullptr)
            patch->reflectance.insert(patch->reflectance.end(), lines.reflectance,
                                      lines.reflectance + std::ptrdiff_t{lines.lineCount} * lines.width);
    });
    if (patch != nullptr) {
        patch->width = printed.window.columnCount;
        patch->height = printed.window.lineCount;
    }
    return collector.Figures();
}

SMaskParam HardEdges_Of(const CMaskData_Base& mask)
{
    SMaskParam param = mask.MaskParam_Input();
    param.nozzleCount = mask.StepHeight_IncludeRes() / mask.YResPass() * param.basePass;
    param.featherMode = FeatherMode_None;
    param.featherNozzleType = FeatherNozzle_Smooth_2;
    return param;
}

} // namespace dotweave
