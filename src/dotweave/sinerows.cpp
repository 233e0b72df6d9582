#include "sinerows.h"

#include <algorithm>
#include <cstdint>

namespace dotweave {

SSineRows SineRows(const CSineMask* sine, int blockHeight)
{
    if (sine == nullptr)
        return {{blockHeight, blockHeight}, {blockHeight, blockHeight}};
    const int featherHeight = sine->FeatherHeight_Get();
    const int sineHeight = sine->MaskHeight_Get();
    return {{featherHeight - sineHeight, featherHeight},
            {std::max(blockHeight - sineHeight, featherHeight), blockHeight}};
}

void SineRows_Cut(const SSineRows& rows, const SParam_GenerateMaskData& cut)
{
    const auto cutRows = [&cut](int bandRow, SRowRange blockRows) {
        SParam_GenerateMaskData part = cut;
        part.cutTable += bandRow - blockRows.first;
        part.offsetY += bandRow - blockRows.first;
        MaskKernels_Get().cut(part, blockRows);
    };
    const int topCount = RowCount(rows.top);
    cutRows(rows.top.first, {0, topCount});
    cutRows(rows.bottom.first, {topCount, topCount + RowCount(rows.bottom)});
}

void SineRows_MoveDots(CMaskBlock& block, const CSineMask& sine)
{
    const std::uint8_t* up = sine.MaskBuffer_Up_Get();
    const std::uint8_t* down = sine.MaskBuffer_Down_Get();
    const int size = sine.MaskSize_Get();
    std::uint8_t* top = block.MaskData();
    std::uint8_t* bottom = top + (block.MaskDataBytesCount() - size);
    for (int k = 0; k < size; ++k)
        top[k] = static_cast<std::uint8_t>(top[k] | (bottom[k] & up[k]));
    for (int k = 0; k < size; ++k)
        bottom[k] = static_cast<std::uint8_t>(bottom[k] & down[k]);
}

} // namespace dotweave
