#pragma once

#include "dotweave/basemaskdata.h"
#include "dotweave/cuttable.h"
#include "dotweave/maskblock.h"
#include "kernels/maskkernels.h"

#include <cstddef>
#include <cstdint>

/// Everything that the generator needs to build the mask bytes of one mask object. The caller keeps what the
/// pointers point to alive until the generator is destroyed.
struct SMaskDataGenerate_Param {
    CMaskBlock* pMaskBlock; ///< output: a row of maskBytes_OneColor bytes per colour, each byte written
    std::int32_t maskBytes_OneColor;    ///< bytes of all positions of one colour
    std::int32_t maskBytes_OnePosition; ///< splitCount_YRes * blockHeight * maskLineBytes
    std::int32_t maskLineBytes;         ///< bytes of one packed mask line
    const CBaseMaskData* pBaseMaskData; ///< threshold planes, one per colour
    std::int32_t thresholdHeight;       ///< rows of a threshold plane
    std::int32_t thresholdWidth;        ///< columns of a plane, of a worker's block and of the sine mask
    std::int32_t colorCount;
    std::int32_t positionCount;     ///< band positions per colour
    const SCutTable* pCutTable;     ///< one range per block row
    std::int32_t cutTableCount;     ///< equal to blockHeight; not read
    std::int32_t blockHeight;       ///< nozzle rows of one band
    std::int32_t rowStep;           ///< threshold rows between two consecutive positions
    std::int32_t splitCount_XRes;   ///< X resolution passes: blocks per work item
    std::int32_t splitCount_YRes;   ///< Y resolution passes: work items per position
    std::int32_t dotBits;           ///< bits per dot, 1 or 2
    std::int32_t featherNozzleType; ///< FeatherNozzle_Smooth_3_Sine asks for the sine mask, all others do not
};

/// One work item: what a worker turns into blockHeight mask lines.
struct SMaskDataGenerate_SubParam {
    std::int32_t color;
    std::int32_t position;
    std::int32_t splitIndex_YRes;
};

namespace dotweave {

/// The mask line of an item's first row.
std::uint8_t* ItemLines_First(const SMaskDataGenerate_Param& param, const SMaskDataGenerate_SubParam& item);
/// Bytes from the mask line of one row to that of the next: the lines of the Y resolution passes alternate.
std::ptrdiff_t ItemLines_Distance(const SMaskDataGenerate_Param& param);
/// Whether an item has lines: without resolution passes there is nothing to cut, and nothing to divide by.
bool Item_HasLines(const SMaskDataGenerate_Param& param);
/// Threshold row that an item's first row reads. Only for items that have lines.
int Item_FirstPlaneRow(const SMaskDataGenerate_Param& param, const SMaskDataGenerate_SubParam& item);
/// What the cut of one X resolution pass of an item needs.
/// @param rowStart, colStart  threshold row and column that the item's first row and the pass start at
/// @param block               where the dots go
SParam_GenerateMaskData Item_Cut(const SMaskDataGenerate_Param& param, const SMaskDataGenerate_SubParam& item,
                                 int rowStart, int colStart, CMaskBlock& block);
/// What the kernel needs to cut and pack an item. Only for items that have lines.
SMaskPack Item_Pack(const SMaskDataGenerate_Param& param, const SMaskDataGenerate_SubParam& item);
/// Touches every page of a position before its first item is handed out, so that workers do not contend for
/// page faults: Y resolution passes write their lines into the same pages. Blanks one byte of each page. Does
/// nothing for other items, and nothing outside the output.
void PositionPages_Touch(const SMaskDataGenerate_Param& param, const SMaskDataGenerate_SubParam& item);

} // namespace dotweave
