#pragma once

#include "dotweave/generatemaskdataparam.h"
#include "dotweave/maskblock.h"

#include <cstddef>

/// @file
/// The two inner loops of a mask: thresholds to dots, dots to mask bytes.

/// Sets every pixel of the block whose threshold lies inside the range of its row:
/// lowerLimit < threshold <= upperLimit. Clear pixels are left as they are.
/// Walks runs of columns up to the wrap of the plane; no remainder is computed per pixel.
void MaskKernel_Cut(const SParam_GenerateMaskData& param);

/// Packs one byte per pixel into mask lines: the blocks' pixels column by column in turn, from the most
/// significant bit of each byte down. Bits are ORed into the lines, which must be zero beforehand.
/// @param blocks        one block per X resolution pass; the first gives rows and columns
/// @param blockCount    number of blocks; below 1 nothing is written
/// @param bitsPerPixel  1 or 2
/// @param firstLine     mask line of block row 0
/// @param lineDistance  bytes from the line of one block row to the line of the next
void MaskKernel_Merge(const CMaskBlock* blocks, int blockCount, int bitsPerPixel, unsigned char* firstLine,
                      std::ptrdiff_t lineDistance);
