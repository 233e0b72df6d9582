#pragma once

#include "dotweave/maskblock.h"
#include "dotweave/sinemask.h"
#include "kernels/maskkernels.h"

namespace dotweave {

/// The rows of a band that the sine mask moves dots between: the sine part of its first feather rows and that
/// of its last ones. Where the two overlap, the common rows belong to the top.
struct SSineRows {
    SRowRange top;
    SRowRange bottom;
};

/// @param sine  null when no dots are moved; both ranges are then empty and end the band
SSineRows SineRows(const CSineMask* sine, int blockHeight);

/// Cuts the sine rows of a band into a block of those rows alone, top rows first.
/// @param cut  for the band's first row
void SineRows_Cut(const SSineRows& rows, const SParam_GenerateMaskData& cut);

/// Moves the dots of a band's last feather rows that lie outside the sine curve to its first feather rows.
/// @param block  the sine part of both, top rows first; the top takes the bottom's dots as they were
void SineRows_MoveDots(CMaskBlock& block, const CSineMask& sine);

} // namespace dotweave
