#include "kernels/maskkernels.h"

#include "constants.h"

#include <algorithm>
#include <cstdint>

namespace dotweave {
namespace {

/// dest[i] := dotValue where thresholds[i] is in the range; other bytes stay.
void Run_Cut(const std::uint16_t* thresholds, int count, SCutTable range, std::uint8_t dotValue,
             std::uint8_t* dest)
{
    for (int i = 0; i < count; ++i) {
        if (range.lowerLimit < thresholds[i] && thresholds[i] <= range.upperLimit)
            dest[i] = dotValue;
    }
}

/// Packs row `row` of all blocks into one mask line.
void Row_Merge(const CMaskBlock* blocks, int blockCount, int bitsPerPixel, int row, std::uint8_t* line)
{
    const int width = blocks[0].Width();
    const int firstShift = 8 - bitsPerPixel;
    int shift = firstShift;
    for (int column = 0; column < width; ++column) {
        for (int k = 0; k < blockCount; ++k) {
            const std::ptrdiff_t pixel = static_cast<std::ptrdiff_t>(row) * blocks[k].Width() + column;
            const unsigned int bits = static_cast<unsigned int>(blocks[k].MaskData_Const()[pixel]) << shift;
            *line = static_cast<std::uint8_t>(*line | bits);
            shift -= bitsPerPixel;
            if (shift < 0) {
                shift = firstShift;
                ++line;
            }
        }
    }
}

} // namespace

void MaskKernel_Cut_Reference(const SParam_GenerateMaskData& param, SRowRange rows)
{
    const int width = param.maskBlock->Width();
    if (!Cut_HasWork(rows, width, param.baseMaskWidth, param.baseMaskHeight))
        return;
    const std::uint8_t dotValue = DOT_VALUE[param.bitsPerPixel];
    const int firstColumn = param.offsetX % param.baseMaskWidth;
    int planeRow = (param.offsetY % param.baseMaskHeight + rows.first) % param.baseMaskHeight;
    std::uint8_t* dest = param.maskBlock->MaskData() + static_cast<std::ptrdiff_t>(rows.first) * width;
    for (int row = rows.first; row < rows.end; ++row) {
        const std::uint16_t* thresholds =
            param.baseMaskData + static_cast<std::ptrdiff_t>(planeRow) * param.baseMaskWidth;
        int planeColumn = firstColumn;
        for (int column = 0; column < width;) {
            const int run = std::min(param.baseMaskWidth - planeColumn, width - column);
            Run_Cut(thresholds + planeColumn, run, param.cutTable[row], dotValue, dest + column);
            column += run;
            planeColumn = 0;
        }
        dest += width;
        planeRow = planeRow + 1 == param.baseMaskHeight ? 0 : planeRow + 1;
    }
}

void MaskKernel_Merge_Reference(const CMaskBlock* blocks, int blockCount, int bitsPerPixel, SRowRange rows,
                                std::uint8_t* firstLine, std::ptrdiff_t lineDistance)
{
    if (blockCount < 1)
        return;
    for (int row = rows.first; row < rows.end; ++row)
        Row_Merge(blocks, blockCount, bitsPerPixel, row, firstLine + row * lineDistance);
}

} // namespace dotweave
