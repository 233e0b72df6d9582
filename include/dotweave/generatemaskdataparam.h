#pragma once

#include "dotweave/cuttable.h"
#include "dotweave/maskblock.h"

#include <cstdint>

/// What one cut needs: a region of a threshold plane, the cut table and the block that takes the dots.
/// The plane is tiled in both directions, so a region of any size and offset lies inside it.
struct SParam_GenerateMaskData {
    const SCutTable* cutTable;  ///< one entry per block row
    std::int32_t cutTableCount; ///< number of entries; carried, not read by the cut
    const std::uint16_t*
        baseMaskData;            ///< one colour's plane, baseMaskHeight rows of baseMaskWidth thresholds
    std::int32_t offsetY;        ///< threshold row that block row 0 reads, >= 0
    std::int32_t offsetX;        ///< threshold column that block column 0 reads, >= 0
    std::int32_t baseMaskHeight; ///< rows of the plane
    std::int32_t baseMaskWidth;  ///< columns of the plane
    std::int32_t bitsPerPixel;   ///< 0 to 2; a set pixel becomes a byte with that many low bits set
    CMaskBlock* maskBlock;       ///< destination, one byte per pixel, cleared by the caller
};
