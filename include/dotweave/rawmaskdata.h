#pragma once

#include "dotweave/export.h"

#include <cstdint>

/// Access to the sixteen threshold matrices that the library carries.
/// Shape:         each matrix has Height() rows of Width() levels, row-major; the matrices follow one another
///                without a gap.
/// Range:         levels 0 to 65534, a blue-noise order that is seamless when tiled.
/// Thread-safety: read-only data that lives as long as the library is loaded; any number of threads.
class DOTWEAVE_API CRawMaskData {
public:
    /// Columns of every matrix: 544.
    static int Width();
    /// Rows of every matrix: 544.
    static int Height();
    /// First cell of matrix index % 16.
    /// @param index  >= 0. Deliberately not checked: the remainder keeps the sign of the index, so a negative
    ///               index that is no multiple of 16 gives a pointer before the table.
    static const std::uint16_t* RawData(int index);
};
