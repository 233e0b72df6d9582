#include "picture/picturepng.h"

#include "picture/pngencode.h"

#include <gtest/gtest.h>

#include <png.h>

#include <algorithm>
#include <stdexcept>
#include <vector>

using namespace dotweave;

namespace {

/// Decodes with the picture library's own reader.
std::vector<std::uint8_t> Decoded(const std::vector<std::uint8_t>& file, unsigned int format)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    EXPECT_NE(png_image_begin_read_from_memory(&image, file.data(), file.size()), 0) << image.message;
    EXPECT_EQ(image.format, format);
    std::vector<std::uint8_t> pixels(PNG_IMAGE_SIZE(image));
    EXPECT_NE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr), 0) << image.message;
    return pixels;
}

} // namespace

TEST(PicturePng, GreyAndColourAreReadBack)
{
    const std::vector<std::uint8_t> grey = {0, 51, 255, 1, 2, 3};
    EXPECT_EQ(Decoded(Picture_Png({3, 2, 1, grey}), PNG_FORMAT_GRAY), grey);
    const std::vector<std::uint8_t> color = {255, 0, 0, 0, 255, 0, 1, 2, 3, 4, 5, 6};
    EXPECT_EQ(Decoded(Picture_Png({2, 2, 3, color}), PNG_FORMAT_RGB), color);
}

TEST(PicturePng, NamesItsResolution)
{
    // 600 dots per inch are 23622 per metre; the chunk has that twice, and 1 for the metre.
    const std::vector<std::uint8_t> file = Picture_Png({1, 1, 1, {0}}, 23622);
    const std::vector<std::uint8_t> chunk = {'p', 'H', 'Y', 's', 0, 0, 0x5C, 0x46, 0, 0, 0x5C, 0x46, 1};
    EXPECT_NE(std::search(file.begin(), file.end(), chunk.begin(), chunk.end()), file.end());
    const std::vector<std::uint8_t> plain = Picture_Png({1, 1, 1, {0}});
    EXPECT_EQ(std::search(plain.begin(), plain.end(), chunk.begin(), chunk.begin() + 4), plain.end());
}

TEST(PngEncode, PassesOnWhatTheRowsThrow)
{
    const auto broken = [](int y, std::uint8_t*) {
        if (y == 1)
            throw std::out_of_range("row 1");
    };
    EXPECT_THROW(Png_Encode({4, 2, 8, 1}, broken), std::out_of_range);
    EXPECT_THROW(Png_Encode({0, 2, 8, 1}, broken), std::runtime_error);
}
