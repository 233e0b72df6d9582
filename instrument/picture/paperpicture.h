#pragma once

#include "view/pixelpicture.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace dotweave {

/// One colour of a map and what it means.
struct SLegendEntry {
    std::array<std::uint8_t, 3> color; ///< red, green, blue
    std::string text;                  ///< ASCII
};

/// How large the pixels of a picture are on paper.
struct SPaperScale {
    double rowsPerInch; ///< nozzle row pitches per inch
    int columnsPerRow;  ///< columns of the picture in a row pitch, >= 1
    int linesPerRow;    ///< lines of the picture in a row pitch, >= 1

    /// How often a column and a line are repeated, so that pixels are square.
    int ColumnTimes() const;
    int LineTimes() const;
    /// Of the picture with square pixels.
    double PixelsPerMm() const;
};

/// A picture of a piece of paper: square pixels, below it a scale bar with its length in mm or um, and a
/// legend. The bar is 1, 2 or 5 times a power of ten long and takes at most a third of the width.
/// @param picture  red, green, blue
SPixelPicture PaperPicture_Make(const SPixelPicture& picture, const SPaperScale& scale,
                                const std::vector<SLegendEntry>& legend = {});

/// The same as a PNG file that names its resolution.
std::vector<std::uint8_t> PaperPicture_Png(const SPixelPicture& picture, const SPaperScale& scale,
                                           const std::vector<SLegendEntry>& legend = {});

} // namespace dotweave
