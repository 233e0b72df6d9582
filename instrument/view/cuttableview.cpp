#include "view/cuttableview.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <stdexcept>

namespace dotweave {

int CutRange_Size(const SCutTable& range)
{
    return std::max(0, int{range.upperLimit} - int{range.lowerLimit});
}

SCutTableView CutTable_View(CMaskData_Base& mask)
{
    const int rowCount = mask.MaskHeight_IncludeRes() / mask.YResPass();
    SCutTableView view = {std::vector<SCutTable>(static_cast<std::size_t>(rowCount)),
                          mask.StepHeight_IncludeRes() / mask.YResPass()};
    if (!mask.CreateCutTable(view.rows.data(), rowCount))
        throw std::runtime_error("the library builds no cut table for this mode");
    return view;
}

std::string CutTable_Text(const SCutTableView& view)
{
    std::string text;
    for (const SCutTable& range : view.rows) {
        std::array<char, sizeof "65535, 65535\n"> line = {};
        static_cast<void>(std::snprintf(line.data(), line.size(), "%5d, %5d\n", int{range.lowerLimit},
                                        int{range.upperLimit}));
        text += line.data();
    }
    return text;
}

} // namespace dotweave
