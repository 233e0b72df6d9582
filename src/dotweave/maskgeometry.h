#pragma once

#include <cstdint>

/// @file
/// Arithmetic of head and mask geometry that more than one place needs.

namespace dotweave {

/// Rows of the head that feathering may take.
/// The order of the single-precision operations is agreed: it decides which way a boundary rounds.
/// @param featherPercent  0 to 100
inline int FeatherAmount(int nozzleCount, float featherPercent)
{
    const float share = featherPercent / 100.0F;
    const float rows = static_cast<float>(nozzleCount) * 0.75F * share;
    return static_cast<int>(rows);
}

/// The largest multiple of xResPass * yResPass that is not above a raw step, so that the step divides evenly
/// into the resolution passes.
/// @return 0 when the raw step is smaller than the product
inline int StepHeight_Rounded(int rawStep, int xResPass, int yResPass)
{
    const std::int64_t passes = std::int64_t{xResPass} * yResPass;
    return static_cast<int>(rawStep / passes * passes);
}

/// Bytes of one mask line at full width: its pixels, rounded up to whole bytes.
constexpr std::int64_t MaskLineBytes(std::int64_t baseWidth, std::int64_t bitsPerPixel, std::int64_t xResPass)
{
    return (baseWidth * bitsPerPixel * xResPass + 7) / 8;
}

} // namespace dotweave
