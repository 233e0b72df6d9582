#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// A PNG file, read back.
struct SPicture {
    int width = 0;
    int height = 0;
    int bitDepth = 0;
    int colorType = -1;                 ///< 0 is greyscale
    std::vector<std::uint8_t> greyness; ///< width * height levels, row by row: 0 black, 255 white

    bool IsBlack(int x, int y) const { return Level(x, y) == 0; }
    bool IsWhite(int x, int y) const { return Level(x, y) == 255; }

private:
    std::uint8_t Level(int x, int y) const
    {
        return greyness.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                           static_cast<std::size_t>(x));
    }
};

/// @param bytes  the whole file; a broken one fails the test and gives an empty picture
SPicture Picture_Read(const std::string& bytes);
