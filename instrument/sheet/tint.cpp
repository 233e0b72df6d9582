#include "sheet/tint.h"

#include <dotweave/rawmaskdata.h>

#include <stdexcept>
#include <string>

namespace dotweave {

static constexpr double THRESHOLD_SCALE = 65535; // thresholds go from 0 to one below it
static constexpr int MATRIX_COUNT = 16;

CBitImage Tint_Make(double share, int matrix)
{
    if (!(share >= 0 && share <= 1)) // a NaN, too
        throw std::invalid_argument("tint " + std::to_string(share) + " is not from 0 to 1");
    if (matrix < 0 || matrix >= MATRIX_COUNT)
        throw std::invalid_argument("threshold matrix " + std::to_string(matrix) + " is not from 0 to 15");
    CBitImage tint(CRawMaskData::Width(), CRawMaskData::Height(), EImageEdge::Repeat);
    const std::uint16_t* threshold = CRawMaskData::RawData(matrix);
    for (int y = 0; y < tint.Height(); ++y) {
        for (int x = 0; x < tint.Width(); ++x, ++threshold) {
            if (*threshold < share * THRESHOLD_SCALE)
                tint.Pixel_Set(x, y);
        }
    }
    return tint;
}

int Tint_Matrix(int color)
{
    // Matrices 0, 1, 4, 5, ... come from one base matrix, 2, 3, 6, 7, ... from the other one.
    return (color % MATRIX_COUNT + 2) % MATRIX_COUNT;
}

} // namespace dotweave
