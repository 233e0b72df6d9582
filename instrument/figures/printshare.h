#pragma once

#include "sheet/idealsheet.h"

#include <cstdint>
#include <functional>

namespace dotweave {

/// How often each pixel should be printed, by its place in a sheet.
using CWantedPrints = std::function<int(int line, int column)>;

/// Pixels that are printed as often as they should be, and those that are not.
struct SPrintShare {
    std::int64_t pixelCount = 0;
    std::int64_t fewerCount = 0;     ///< pixels that are printed less often
    std::int64_t moreCount = 0;      ///< pixels that are printed more often
    std::int64_t wrongLineCount = 0; ///< lines with any such pixel
    std::int64_t lineCount = 0;

    /// Share of pixels not printed as often as they should be, 0 to 1.
    double WrongShare() const;
    /// Share of lines with any such pixel, 0 to 1.
    double WrongLineShare() const;
};

/// Compares every pixel of a sheet with how often it should be printed.
SPrintShare PrintShare(const CIdealSheet& sheet, const CWantedPrints& wanted);

/// The same for a sheet whose every pixel should be printed `times` times.
SPrintShare PrintShare_Uniform(const CIdealSheet& sheet, int times);

/// The same for a sheet and what the same window was without errors: what dead rows take away.
/// @throws std::invalid_argument for sheets of different sizes
SPrintShare PrintShare_Ideal(const CIdealSheet& sheet, const CIdealSheet& ideal);

} // namespace dotweave
