#pragma once

#include "dotweave/cuttable.h"
#include "dotweave/generatemaskdataparam.h"
#include "dotweave/maskblock.h"

#include <cstddef>
#include <cstdint>

/// @file
/// The inner loops of a mask: thresholds to dots (cut), dots to mask bytes (merge), and both in one (cut and
/// pack), which never writes a dot as a byte of its own.
/// Each exists as a reference, the plainest loop that is right, and as a fast twin written once with Highway
/// and compiled for every instruction set. The twins write the same bytes; docs/kernels.md explains how.

namespace dotweave {

/// Block rows first, first + 1, ... up to but without end.
struct SRowRange {
    int first;
    int end;
};

constexpr int RowCount(SRowRange rows)
{
    return rows.end - rows.first;
}

/// One Y resolution pass of one band position, from thresholds to mask lines.
struct SMaskPack {
    const SCutTable* cutTable;   ///< one range per block row
    const std::uint16_t* plane;  ///< planeHeight rows of planeWidth thresholds, tiled in both directions
    std::int32_t planeWidth;     ///< below 1 nothing is written
    std::int32_t planeHeight;    ///< the same
    std::int32_t offsetY;        ///< threshold row that block row 0 reads, >= 0
    std::int32_t offsetX;        ///< threshold column that column 0 of X resolution pass 0 reads, >= 0
    std::int32_t width;          ///< columns of one X resolution pass
    std::int32_t xResPass;       ///< X resolution passes, spread evenly over the plane
    std::int32_t bitsPerPixel;   ///< 1 or 2
    std::uint8_t* firstLine;     ///< mask line of block row 0
    std::ptrdiff_t lineDistance; ///< bytes from the line of one block row to that of the next
};

/// Whether a cut has anything to read and to write. Neither twin divides by the size of its plane otherwise.
inline bool Cut_HasWork(SRowRange rows, int columns, int planeWidth, int planeHeight)
{
    return rows.first < rows.end && columns >= 1 && planeWidth >= 1 && planeHeight >= 1;
}

// ---- reference

/// Sets every pixel of the block whose threshold lies inside the range of its row:
/// lowerLimit < threshold <= upperLimit. Clear pixels stay as they are. Without rows, without columns or with
/// a plane of no thresholds nothing happens.
/// Walks runs of columns up to the wrap of the plane; no remainder is computed per pixel.
void MaskKernel_Cut_Reference(const SParam_GenerateMaskData& param, SRowRange rows);

/// Packs one byte per pixel into mask lines: the blocks' pixels column by column in turn, from the most
/// significant bit of each byte down. Bits are ORed into the lines, which must be zero beforehand.
/// @param blocks        one block per X resolution pass; the first gives rows and columns
/// @param blockCount    number of blocks; below 1 nothing is written
/// @param bitsPerPixel  1 or 2
/// @param firstLine     mask line of block row 0
/// @param lineDistance  bytes from the line of one block row to the line of the next
void MaskKernel_Merge_Reference(const CMaskBlock* blocks, int blockCount, int bitsPerPixel, SRowRange rows,
                                std::uint8_t* firstLine, std::ptrdiff_t lineDistance);

// ---- fast twins, for the best instruction set of the processor

/// As the reference.
void MaskKernel_Cut(const SParam_GenerateMaskData& param, SRowRange rows);

/// As the reference for blocks of which every byte is 0 or the dot value, and lines that are zero: lines are
/// written whole, so they need not be cleared.
/// @param scratch  MaskKernel_ScratchBytes bytes
void MaskKernel_Merge(const CMaskBlock* blocks, int blockCount, int bitsPerPixel, SRowRange rows,
                      std::uint8_t* firstLine, std::ptrdiff_t lineDistance, std::uint8_t* scratch);

/// The cut of all X resolution passes and their merge in one. Lines are written whole, padding included.
/// @param scratch  MaskKernel_ScratchBytes bytes
void MaskKernel_CutAndPack(const SMaskPack& pack, SRowRange rows, std::uint8_t* scratch);

/// Working memory of one call, the same for every instruction set.
/// @param planeWidth  columns of the threshold plane; 0 for a merge
/// @param width       columns of one X resolution pass
std::size_t MaskKernel_ScratchBytes(int planeWidth, int width, int xResPass);

// ---- the set that workers call

struct SMaskKernels {
    decltype(&MaskKernel_Cut) cut;
    decltype(&MaskKernel_Merge) merge;
    decltype(&MaskKernel_CutAndPack) cutAndPack;
};

/// The fast twins, unless a test has put others in their place. Asked once per step of an item, never in a
/// loop.
const SMaskKernels& MaskKernels_Get();

/// For tests: puts another set in place, such as one that fails. Only while no mask is being built.
/// @param kernels  kept by the caller; null brings the fast twins back
void MaskKernels_Set(const SMaskKernels* kernels);

} // namespace dotweave
