#pragma once

#include "dotweave/cuttable.h"
#include "dotweave/rawmaskdata.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

/// @file
/// A second way to the mask bytes, for tests alone: one pixel after the other, a remainder per index, no code
/// of the library but the threshold matrices. Slow and obvious.

/// What the mask bytes of one mode follow from.
struct SPlainMask {
    int colorCount = 1;
    int positionCount = 1;
    int height = 1; ///< nozzle rows of the band, one cut range each
    int step = 1;   ///< nozzle rows from one position to the next
    int matrixRows = 544;
    int matrixColumns = 544;
    int xRes = 1;
    int yRes = 1;
    int bits = 1;
    bool isSine = false;
    std::vector<SCutTable> table;
};

/// Dots of one block, row-major, 0 or 1.
using CPlainDots = std::vector<int>;

/// One threshold of a colour's matrix, which is tiled in both directions.
inline int Plain_Threshold(const SPlainMask& mask, int color, int row, int column)
{
    return CRawMaskData::RawData(color)[row % mask.matrixRows * 544 + column % mask.matrixColumns];
}

/// The dots of one colour and position in Y resolution pass r and X resolution pass k, without the sine step.
inline CPlainDots Plain_Dots(const SPlainMask& mask, int color, int position, int r, int k)
{
    const int firstRow = position * mask.step + r * mask.step / mask.yRes;
    const int firstColumn = mask.matrixColumns * k / mask.xRes;
    CPlainDots dots;
    dots.reserve(static_cast<std::size_t>(mask.height) * static_cast<std::size_t>(mask.matrixColumns));
    for (int y = 0; y < mask.height; ++y) {
        const SCutTable& range = mask.table[static_cast<std::size_t>(y)];
        for (int x = 0; x < mask.matrixColumns; ++x) {
            const int threshold = Plain_Threshold(mask, color, firstRow + y, firstColumn + x);
            dots.push_back(range.lowerLimit < threshold && threshold <= range.upperLimit ? 1 : 0);
        }
    }
    return dots;
}

/// Rows at either end of the band that share sheet rows with the next bands.
inline int Plain_FeatherRows(int height, int step)
{
    return height % step != 0 ? height % step : step;
}

/// Rows of the sine part of the feather rows.
inline int Plain_SineRows(int featherRows, int width)
{
    return std::min(featherRows / 2, width / 10);
}

/// Whether the sine curve covers a row of the sine part in a column.
inline bool Plain_IsUnderSine(int row, int column, int sineRows, int width)
{
    const double height = (std::sin(column * 6.2831852 / width - 1.5707963) + 1.0) * 0.5 * sineRows + 0.5;
    return row <= static_cast<int>(height);
}

/// The sine step: in the last rows of either feather region, the bottom keeps what lies under the curve and
/// gives the rest to the top, which takes it before the bottom loses it.
inline void Plain_MoveDots(CPlainDots& dots, int width, int height, int featherRows)
{
    const int sineRows = Plain_SineRows(featherRows, width);
    const int top = featherRows - sineRows;
    const int bottom = height - sineRows;
    const auto dot = [&dots, width](int row, int column) -> int& {
        return dots[static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                    static_cast<std::size_t>(column)];
    };
    for (int y = 0; y < sineRows; ++y) {
        for (int x = 0; x < width; ++x) {
            if (!Plain_IsUnderSine(y, x, sineRows, width))
                dot(top + y, x) |= dot(bottom + y, x);
        }
    }
    for (int y = 0; y < sineRows; ++y) {
        for (int x = 0; x < width; ++x) {
            if (!Plain_IsUnderSine(y, x, sineRows, width))
                dot(bottom + y, x) = 0;
        }
    }
}

/// Bytes of one mask line.
inline int Plain_LineBytes(const SPlainMask& mask)
{
    return (mask.matrixColumns * mask.bits * mask.xRes + 7) / 8;
}

/// All mask bytes: colour, position, nozzle row, Y resolution pass, then the pixels from the top bit down.
inline std::vector<std::uint8_t> Plain_Bytes(const SPlainMask& mask)
{
    const int lineBytes = Plain_LineBytes(mask);
    const int lineCount = mask.colorCount * mask.positionCount * mask.height * mask.yRes;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(lineCount) *
                                    static_cast<std::size_t>(lineBytes));
    for (int color = 0; color < mask.colorCount; ++color) {
        for (int position = 0; position < mask.positionCount; ++position) {
            for (int r = 0; r < mask.yRes; ++r) {
                for (int k = 0; k < mask.xRes; ++k) {
                    CPlainDots dots = Plain_Dots(mask, color, position, r, k);
                    if (mask.isSine)
                        Plain_MoveDots(dots, mask.matrixColumns, mask.height,
                                       Plain_FeatherRows(mask.height, mask.step));
                    const int firstRow = (color * mask.positionCount + position) * mask.height;
                    const int* dot = dots.data();
                    for (int y = 0; y < mask.height; ++y) {
                        std::uint8_t* line =
                            bytes.data() +
                            static_cast<std::ptrdiff_t>((firstRow + y) * mask.yRes + r) * lineBytes;
                        for (int x = 0; x < mask.matrixColumns; ++x, ++dot) {
                            const int firstBit = (x * mask.xRes + k) * mask.bits;
                            for (int bit = firstBit; bit < firstBit + mask.bits; ++bit)
                                line[bit / 8] =
                                    static_cast<std::uint8_t>(line[bit / 8] | (*dot << (7 - bit % 8)));
                        }
                    }
                }
            }
        }
    }
    return bytes;
}

/// The value of pixel j of a mask line.
inline unsigned int Plain_Pixel(const std::uint8_t* line, int bits, int j)
{
    const unsigned int byte = line[j * bits / 8];
    return (byte >> (8 - bits - j * bits % 8)) & ((1U << bits) - 1U);
}
