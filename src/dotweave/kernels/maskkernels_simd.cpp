// Compiled once per instruction set. Includes no containers or algorithms: their inline code could be built
// for a newer processor here and then serve callers on an older one.

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "kernels/maskkernels_simd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "kernels/linepack-inl.h"
#include "kernels/rowcut-inl.h"

#include "constants.h"
#include "kernels/bitrow.h"
#include "kernels/maskkernels.h"
#include "maskregion.h"

#include <cstring>

#ifndef DOTWEAVE_KERNELS_ONCE
#define DOTWEAVE_KERNELS_ONCE

namespace dotweave {

/// Rows that are cut before the first of them is packed: the pack loads 16 bytes at once, which must not wait
/// for the smaller stores of the cut.
inline constexpr int ROWS_AT_ONCE = 8;

} // namespace dotweave

#endif

HWY_BEFORE_NAMESPACE();
namespace dotweave::HWY_NAMESPACE {
namespace {

void Cut(const SParam_GenerateMaskData& param, SRowRange rows)
{
    const int width = param.maskBlock->Width();
    if (!Cut_HasWork(rows, width, param.baseMaskWidth, param.baseMaskHeight))
        return;
    const std::uint8_t dot = DOT_VALUE[param.bitsPerPixel];
    const int firstColumn = param.offsetX % param.baseMaskWidth;
    const CColumns d;
    const hn::Half<CBytes> half;
    const int lanes = static_cast<int>(hn::Lanes(d));
    const auto dots = hn::Set(half, dot);
    CPlaneRows planeRows(param.baseMaskData, param.baseMaskWidth, param.baseMaskHeight, param.offsetY,
                         rows.first);
    for (int row = rows.first; row < rows.end; ++row) {
        const SCutTable range = param.cutTable[row];
        const std::uint16_t* plane = planeRows.Next();
        if (Range_IsEmpty(range))
            continue;
        std::uint8_t* dest = param.maskBlock->MaskData() + static_cast<std::ptrdiff_t>(row) * width;
        const SRangeTest test = RangeTest(range);
        const auto base = hn::Set(d, test.base);
        const auto limit = hn::Set(d, test.limit);
        int planeColumn = firstColumn;
        for (int column = 0; column < width;) {
            const int left = width - column;
            const int run =
                param.baseMaskWidth - planeColumn < left ? param.baseMaskWidth - planeColumn : left;
            const std::uint16_t* thresholds = plane + planeColumn;
            const auto* columns = reinterpret_cast<const std::int16_t*>(thresholds);
            int i = 0;
            for (; i + lanes <= run; i += lanes) {
                const auto inside = hn::Lt(hn::Sub(hn::LoadU(d, columns + i), base), limit);
                const auto bytes = hn::TruncateTo(
                    half, hn::BitCast(hn::RebindToUnsigned<CColumns>(), hn::VecFromMask(d, inside)));
                std::uint8_t* at = dest + column + i;
                const auto old = hn::LoadU(half, at);
                hn::StoreU(hn::Or(hn::And(bytes, dots), hn::AndNot(bytes, old)), half, at);
            }
            for (; i < run; ++i) {
                if (Range_Contains(range, thresholds[i]))
                    dest[column + i] = dot;
            }
            column += run;
            planeColumn = 0;
        }
    }
}

void Merge(const CMaskBlock* blocks, int blockCount, int bitsPerPixel, SRowRange rows,
           std::uint8_t* firstLine, std::ptrdiff_t lineDistance, std::uint8_t* scratch)
{
    const int width = blocks[0].Width();
    const std::ptrdiff_t rowBytes = BytesOfBits(width) + BIT_ROW_SLACK;
    SPackTables tables;
    if (blockCount <= TABLE_PASSES_MAX)
        PackTables_Fill(tables, blockCount, bitsPerPixel);
    const auto** bitRows = reinterpret_cast<const std::uint8_t**>(scratch);
    auto* bits = reinterpret_cast<std::uint8_t*>(bitRows + blockCount);
    for (int k = 0; k < blockCount; ++k)
        bitRows[k] = bits + k * rowBytes;
    for (int row = rows.first; row < rows.end; ++row) {
        for (int k = 0; k < blockCount; ++k)
            Row_PackBits(blocks[k].MaskData_Const() + static_cast<std::ptrdiff_t>(row) * blocks[k].Width(),
                         width, bits + k * rowBytes);
        Line_Pack(tables, bitRows, blockCount, bitsPerPixel, width, firstLine + row * lineDistance);
    }
}

void CutAndPack(const SMaskPack& pack, SRowRange rows, std::uint8_t* scratch)
{
    const int planeWidth = pack.planeWidth;
    if (!Cut_HasWork(rows, pack.width, planeWidth, pack.planeHeight))
        return;
    CPlaneRows planeRows(pack.plane, planeWidth, pack.planeHeight, pack.offsetY, rows.first);
    const int firstColumn = pack.offsetX % planeWidth;
    if (pack.xResPass * pack.bitsPerPixel == 1 && firstColumn == 0 && pack.width <= planeWidth) {
        // A line is the cut of a row.
        for (int row = rows.first; row < rows.end; ++row)
            Row_CutBits(planeRows.Next(), pack.width, pack.cutTable[row],
                        pack.firstLine + row * pack.lineDistance);
        return;
    }
    // The X resolution passes of a row are rotations of one cut: cut once, repeat the row as the plane
    // repeats on the paper, and read each pass from its own column on.
    const int repeated = planeWidth + pack.width;
    const std::ptrdiff_t cutBytes = BytesOfBits(repeated) + BIT_ROW_SLACK;
    const std::ptrdiff_t passBytes = BytesOfBits(pack.width) + BIT_ROW_SLACK;
    SPackTables tables;
    if (pack.xResPass <= TABLE_PASSES_MAX)
        PackTables_Fill(tables, pack.xResPass, pack.bitsPerPixel);
    const auto** bitRows = reinterpret_cast<const std::uint8_t**>(scratch);
    auto* firstColumns = reinterpret_cast<int*>(bitRows + pack.xResPass);
    for (int k = 0; k < pack.xResPass; ++k)
        firstColumns[k] = (firstColumn + MaskRegion_Column(k, planeWidth, pack.xResPass)) % planeWidth;
    auto* cuts = reinterpret_cast<std::uint8_t*>(firstColumns + pack.xResPass);
    std::uint8_t* passes = cuts + ROWS_AT_ONCE * cutBytes;
    for (int first = rows.first; first < rows.end; first += ROWS_AT_ONCE) {
        const int end = rows.end - first < ROWS_AT_ONCE ? rows.end : first + ROWS_AT_ONCE;
        for (int row = first; row < end; ++row)
            Row_CutBits(planeRows.Next(), planeWidth, pack.cutTable[row], cuts + (row - first) * cutBytes);
        for (int row = first; row < end; ++row) {
            std::uint8_t* cut = cuts + (row - first) * cutBytes;
            Bits_Repeat(cut, planeWidth, repeated);
            for (int k = 0; k < pack.xResPass; ++k) {
                const int column = firstColumns[k];
                if (column % 8 == 0 && pack.width % 8 == 0) {
                    bitRows[k] = cut + column / 8;
                } else {
                    Bits_Copy(cut, column, pack.width, passes + k * passBytes);
                    bitRows[k] = passes + k * passBytes;
                }
            }
            Line_Pack(tables, bitRows, pack.xResPass, pack.bitsPerPixel, pack.width,
                      pack.firstLine + row * pack.lineDistance);
        }
    }
}

} // namespace
} // namespace dotweave::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace dotweave {
namespace {

HWY_EXPORT(Cut);
HWY_EXPORT(Merge);
HWY_EXPORT(CutAndPack);

} // namespace

void MaskKernel_Cut(const SParam_GenerateMaskData& param, SRowRange rows)
{
    HWY_DYNAMIC_DISPATCH(Cut)(param, rows);
}

void MaskKernel_Merge(const CMaskBlock* blocks, int blockCount, int bitsPerPixel, SRowRange rows,
                      std::uint8_t* firstLine, std::ptrdiff_t lineDistance, std::uint8_t* scratch)
{
    if (blockCount >= 1)
        HWY_DYNAMIC_DISPATCH(Merge)(blocks, blockCount, bitsPerPixel, rows, firstLine, lineDistance, scratch);
}

void MaskKernel_CutAndPack(const SMaskPack& pack, SRowRange rows, std::uint8_t* scratch)
{
    HWY_DYNAMIC_DISPATCH(CutAndPack)(pack, rows, scratch);
}

std::size_t MaskKernel_ScratchBytes(int planeWidth, int width, int xResPass)
{
    const std::size_t cut = (static_cast<std::size_t>(planeWidth) + static_cast<std::size_t>(width) + 7) / 8;
    const std::size_t pass = (static_cast<std::size_t>(width) + 7) / 8;
    return ROWS_AT_ONCE * (cut + BIT_ROW_SLACK) +
           static_cast<std::size_t>(xResPass) * (sizeof(std::uint8_t*) + sizeof(int) + pass + BIT_ROW_SLACK);
}

} // namespace dotweave

#endif
