#pragma once

#include "sheet/bitimage.h"

namespace dotweave {

/// An even tint: a share of all pixels, screened by one of the library's threshold matrices.
///
/// The pixel at matrix cell (x, y) has ink when its threshold is below share * 65535, so a share of 1 inks
/// every pixel and a share of 0 none.
/// @param share   0 to 1 @throws std::invalid_argument for anything else, NaN too
/// @param matrix  number of the threshold matrix, 0 to 15; see Tint_Matrix
/// @return an image of one matrix that repeats itself
CBitImage Tint_Make(double share, int matrix);

/// The matrix that suits a colour plane best: neither the one that its masks are cut from nor the
/// complement of it. A tint from the mask's own matrix has its dots where one pass has them all, and the
/// other passes would print nothing.
/// @param color  colour plane, >= 0
int Tint_Matrix(int color);

} // namespace dotweave
