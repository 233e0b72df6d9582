#pragma once

#include <ostream>

/// @file
/// Matrix height and band positions of a mask, found by counting on the paper.

/// What the search for a matrix height ends with.
struct SMatrixRepeat {
    int height, positions;
    bool operator==(const SMatrixRepeat&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, const SMatrixRepeat& size)
{
    return stream << size.height << " rows, " << size.positions << " positions";
}

/// Steps until a matrix of `height` rows starts over, counted on the paper.
inline int Steps_Until_Repeat(int height, int step)
{
    int steps = 1;
    for (int row = step % height; row != 0; row = (row + step) % height)
        ++steps;
    return steps;
}

/// The same search told the other way round: the first height from the top that repeats within 20 steps, else
/// the one with the fewest steps, the largest such.
inline SMatrixRepeat MaskSize_ByCounting(int fullHeight, int step)
{
    SMatrixRepeat best = {-1, 0};
    for (int height = fullHeight; height > fullHeight - fullHeight / 2; --height) {
        const int steps = Steps_Until_Repeat(height, step);
        if (steps <= 20)
            return {height, steps};
        if (best.height < 0 || steps < best.positions)
            best = {height, steps};
    }
    return best;
}
