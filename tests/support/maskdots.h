#pragma once

#include "dotweave/maskdata_base.h"
#include "maskbytes.h"
#include "peek.h"
#include "plainmask.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

/// @file
/// What a created mask object prints: its bytes made again without the generator, and its dots.

/// Builds the bytes again, on this thread.
inline std::vector<std::uint8_t> Bytes_Old(SMaskData_Base_Peek peek)
{
    delete peek.MaskBlock();
    peek.MaskBlock() = nullptr;
    EXPECT_TRUE(peek.CreateMaskData_Old());
    return MaskBytes(peek.mask);
}

/// The dots of one position in Y resolution pass r and X resolution pass k.
inline CPlainDots Dots(CMaskData_Base& mask, int color, int position, int r, int k)
{
    SMaskData_Base_Peek peek{mask};
    const int height = peek.MaskHeight_NoneRes();
    const int width = peek.BaseMaskWidth();
    int before = position - 1;
    const std::uint8_t* bytes = mask.MaskData_Get(color, before);
    CPlainDots dots;
    dots.reserve(static_cast<std::size_t>(height) * static_cast<std::size_t>(width));
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* line =
            bytes + static_cast<std::ptrdiff_t>(y * mask.YResPass() + r) * mask.MaskLineBytes_OneColor();
        for (int x = 0; x < width; ++x)
            dots.push_back(Plain_Pixel(line, mask.BitsPerPixel(), x * mask.XResPass() + k) != 0 ? 1 : 0);
    }
    return dots;
}
