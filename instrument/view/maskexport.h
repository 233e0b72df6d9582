#pragma once

#include "view/maskview.h"

#include <string>
#include <vector>

namespace dotweave {

/// @file
/// Masks in formats that other programs read. A dot is 1, no dot is 0, whatever the bits of a pixel.

/// One mask as a binary portable bitmap ("P4"). Several one after the other are a file too.
void MaskPbm_Append(const SMaskLines& lines, std::string& file);

/// The head of a NumPy file of unsigned bytes in C order; the values follow.
/// Source: NumPy Enhancement Proposal 1, "A Simple File Format for NumPy Arrays", version 1.0.
/// @param shape  sizes of the array, the slowest first
std::string Npy_Head(const std::vector<int>& shape);

/// One mask as bytes, a byte a pixel, line by line.
void MaskValues_Append(const SMaskLines& lines, std::string& file);

/// The head of a table of mask lines: "color,position,line,0,1,2,..." with the columns' numbers.
std::string MaskCsv_Head(int width);

/// One mask as lines of such a table.
void MaskCsv_Append(const SMaskLines& lines, int color, int position, std::string& file);

} // namespace dotweave
