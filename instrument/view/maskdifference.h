#pragma once

#include "view/maskshape.h"

#include <cstdint>
#include <span>

namespace dotweave {

/// Where two masks differ, and in how much.
struct SMaskDifference {
    std::int64_t byteCount = 0;  ///< bytes that differ
    std::int64_t firstByte = -1; ///< number of the first of them, -1 when none does
    // The rest only where the shape is known:
    std::int64_t pixelCount = 0;
    std::int64_t lineCount = 0; ///< mask lines with any byte that differs
    int color = -1;             ///< the place of the first byte
    int position = -1;
    int line = -1;
    int column = -1; ///< the first pixel that differs in that byte; -1 when only padding bits do
};

/// Compares bytes of which nothing is known.
/// @throws std::invalid_argument for different numbers of bytes
SMaskDifference BytesDifference(std::span<const std::uint8_t> a, std::span<const std::uint8_t> b);

/// Compares all mask bytes of two modes of one shape.
/// @throws std::invalid_argument for numbers of bytes other than the shape's
SMaskDifference MaskDifference(std::span<const std::uint8_t> a, std::span<const std::uint8_t> b,
                               const SMaskShape& shape);

} // namespace dotweave
