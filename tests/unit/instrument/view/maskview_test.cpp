#include "view/maskview.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

using namespace dotweave;

namespace {

struct SLineCase {
    const char* name;
    std::vector<std::uint8_t> bytes; // two lines of two bytes
    int width;
    int bitsPerPixel;
    std::vector<std::string> lines; // a digit per pixel
};

std::ostream& operator<<(std::ostream& stream, const SLineCase& one)
{
    return stream << one.name;
}

class MaskLines : public testing::TestWithParam<SLineCase> {};

} // namespace

TEST_P(MaskLines, StartAtTheMostSignificantBit)
{
    const SLineCase& one = GetParam();
    const SMaskLines lines = {one.bytes.data(), one.width, 2, 2, one.bitsPerPixel};
    for (int y = 0; y < 2; ++y) {
        std::vector<std::uint8_t> pixels(static_cast<std::size_t>(one.width) + 1, 9);
        lines.Line_Unpack(y, pixels.data());
        EXPECT_EQ(pixels.back(), 9) << "written past the line";
        std::string unpacked, single;
        for (int x = 0; x < one.width; ++x) {
            unpacked += static_cast<char>('0' + pixels[static_cast<std::size_t>(x)]);
            single += static_cast<char>('0' + lines.Pixel(x, y));
        }
        EXPECT_EQ(unpacked, one.lines[static_cast<std::size_t>(y)]);
        EXPECT_EQ(single, unpacked);
    }
}

INSTANTIATE_TEST_SUITE_P(
    , MaskLines,
    testing::Values(SLineCase{"OneBit", {0xA5, 0x40, 0xFF, 0x00}, 10, 1, {"1010010101", "1111111100"}},
                    SLineCase{"TwoBits", {0xC3, 0xC0, 0x1B, 0x00}, 5, 2, {"30033", "01230"}}),
    testing::PrintToStringParamName());

/// The layout that maskdata_base.h describes, walked by hand: positions of a colour follow each other without
/// gaps.
TEST(MaskView, GivesEveryPositionOfEveryColour)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create({120, 2, 2, 3, 2, 2, 1, 40.5F, 3, 1, 90, 0}));
    const CMaskView view(mask);
    EXPECT_EQ(view.ColorCount(), 2);
    EXPECT_EQ(view.ByteCount(), 2LL * mask.MaskBytes_OneColor());
    const std::uint8_t* expected = view.Lines(0, 0).bytes;
    for (int color = 0; color < view.ColorCount(); ++color) {
        int counter = -1;
        for (int position = 0; position < view.PositionCount(); ++position) {
            const SMaskLines lines = view.Lines(color, position);
            EXPECT_EQ(lines.bytes, expected);
            EXPECT_EQ(lines.bytes, mask.MaskData_Get(color, counter));
            EXPECT_EQ(lines.width, 2 * 544);
            EXPECT_EQ(lines.lineBytes, 2 * 544 * 2 / 8);
            EXPECT_EQ(lines.bitsPerPixel, 2);
            EXPECT_EQ(lines.height, mask.MaskHeight_IncludeRes());
            expected += lines.lineBytes * lines.height;
        }
        EXPECT_EQ(view.PositionCount(), counter + 1);
        static_cast<void>(mask.MaskData_Get(color, counter));
        EXPECT_EQ(counter, 0) << "more positions than the view says";
    }
}
