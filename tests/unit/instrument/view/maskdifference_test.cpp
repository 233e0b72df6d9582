#include "view/maskdifference.h"

#include "view/maskview.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <vector>

using namespace dotweave;

namespace {

// 2 colours of 2 positions of 3 lines of 2 bytes: 11 pixels of 1 bit and 5 bits of padding.
constexpr SMaskShape SHAPE = {2, 2, 3, 11, 2, 1};
const std::vector<std::uint8_t> BLANK(24);

SMaskDifference Changed(std::size_t byte, int value, const SMaskShape& shape = SHAPE)
{
    std::vector<std::uint8_t> bytes = BLANK;
    bytes[byte] = static_cast<std::uint8_t>(value);
    return MaskDifference(BLANK, bytes, shape);
}

} // namespace

TEST(MaskDifference, OfEqualBytesIsNone)
{
    const SMaskDifference none = MaskDifference(BLANK, BLANK, SHAPE);
    EXPECT_EQ(none.byteCount + none.pixelCount + none.lineCount, 0);
    EXPECT_EQ(none.firstByte, -1);
    EXPECT_EQ(none.color, -1);
}

TEST(MaskDifference, NamesTheFirstPlace)
{
    const struct {
        std::size_t byte;
        int value;
        int color, position, line, column;
        std::int64_t pixels;
    } CASES[] = {
        {0, 0x80, 0, 0, 0, 0, 1},  // the first pixel
        {1, 0x20, 0, 0, 0, 10, 1}, // the last of the line
        {1, 0x10, 0, 0, 0, -1, 0}, // padding
        {5, 0x60, 0, 0, 2, 9, 2},  // two pixels
        {6, 0xFF, 0, 1, 0, 0, 8},  // the next position
        {23, 0xFF, 1, 1, 2, 8, 3}, // the end: three pixels, five bits of padding
        {15, 0x40, 1, 0, 1, 9, 1},
    };
    for (const auto& one : CASES) {
        SCOPED_TRACE(one.byte);
        const SMaskDifference difference = Changed(one.byte, one.value);
        EXPECT_EQ(difference.byteCount, 1);
        EXPECT_EQ(difference.lineCount, 1);
        EXPECT_EQ(difference.pixelCount, one.pixels);
        EXPECT_EQ(difference.firstByte, static_cast<std::int64_t>(one.byte));
        EXPECT_EQ(difference.color, one.color);
        EXPECT_EQ(difference.position, one.position);
        EXPECT_EQ(difference.line, one.line);
        EXPECT_EQ(difference.column, one.column);
    }
}

TEST(MaskDifference, OfTwoBitsCountsPixels)
{
    const SMaskShape twoBits = {2, 2, 3, 7, 2, 2};
    EXPECT_EQ(Changed(0, 0x0C, twoBits).column, 2);
    EXPECT_EQ(Changed(0, 0x0C, twoBits).pixelCount, 1);
    EXPECT_EQ(Changed(0, 0x3C, twoBits).pixelCount, 2);
    EXPECT_EQ(Changed(1, 0x03, twoBits).column, -1); // padding
}

TEST(MaskDifference, CountsLinesOnce)
{
    const std::vector<std::uint8_t> full(24, 0xFF);
    const SMaskDifference all = MaskDifference(full, BLANK, SHAPE);
    EXPECT_EQ(all.byteCount, 24);
    EXPECT_EQ(all.lineCount, 12);
    EXPECT_EQ(all.pixelCount, 12 * 11);
}

TEST(MaskDifference, RefusesOtherSizes)
{
    EXPECT_THROW(MaskDifference(BLANK, BLANK, {2, 2, 3, 11, 3, 1}), std::invalid_argument);
    EXPECT_THROW(BytesDifference(BLANK, std::vector<std::uint8_t>(23)), std::invalid_argument);
    EXPECT_EQ(BytesDifference(BLANK, std::vector<std::uint8_t>(24, 1)).byteCount, 24);
}

TEST(MaskShape, IsPossibleWhenPixelsFitAndBytesCount)
{
    EXPECT_TRUE(MaskShape_IsPossible(SHAPE));
    EXPECT_TRUE(MaskShape_IsPossible({1, 1, 1, 16, 2, 1}));
    EXPECT_FALSE(MaskShape_IsPossible({1, 1, 1, 17, 2, 1}));
    EXPECT_FALSE(MaskShape_IsPossible({1, 1, 1, 9, 2, 2}));
    EXPECT_FALSE(MaskShape_IsPossible({1, 1, 1, 9, 2, 3}));
    EXPECT_FALSE(MaskShape_IsPossible({0, 1, 1, 9, 2, 1}));
    EXPECT_FALSE(MaskShape_IsPossible({1, -1, 1, 9, 2, 1}));
    EXPECT_FALSE(MaskShape_IsPossible({1, 1, 1, 0, 2, 1}));
    const int most = std::numeric_limits<int>::max();
    EXPECT_FALSE(MaskShape_IsPossible({most, most, most, 8, 1, 1}));
}
