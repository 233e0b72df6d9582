#include "picture/pictureread.h"

#include <gtest/gtest.h>
#include <png.h>
#include <zlib.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

using namespace dotweave;

namespace {

using CBytes = std::vector<std::uint8_t>;

/// A PNG file as the picture library writes it.
CBytes Png(png_uint_32 width, png_uint_32 height, png_uint_32 format, const void* pixels)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = width;
    image.height = height;
    image.format = format;
    png_alloc_size_t size = 0;
    EXPECT_NE(png_image_write_to_memory(&image, nullptr, &size, 0, pixels, 0, nullptr), 0);
    CBytes bytes(size);
    EXPECT_NE(png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels, 0, nullptr), 0);
    bytes.resize(size);
    return bytes;
}

} // namespace

TEST(PictureRead, GivesGreyAndColourAsTheFileHasThem)
{
    const CBytes grey = {0, 1, 100, 200, 254, 255};
    const SPixelPicture first = Picture_Read(Png(3, 2, PNG_FORMAT_GRAY, grey.data()));
    EXPECT_EQ(first.width, 3);
    EXPECT_EQ(first.height, 2);
    EXPECT_EQ(first.channelCount, 1);
    EXPECT_EQ(first.pixels, grey);

    const CBytes colour = {255, 0, 0, 0, 255, 0, 9, 8, 7};
    const SPixelPicture second = Picture_Read(Png(1, 3, PNG_FORMAT_RGB, colour.data()));
    EXPECT_EQ(second.width, 1);
    EXPECT_EQ(second.height, 3);
    EXPECT_EQ(second.channelCount, 3);
    EXPECT_EQ(second.pixels, colour);
}

TEST(PictureRead, LaysTransparencyOnWhite)
{
    const CBytes pixels = {10, 20, 30, 255, 10, 20, 30, 0};
    EXPECT_EQ(Picture_Read(Png(2, 1, PNG_FORMAT_RGBA, pixels.data())).pixels,
              (CBytes{10, 20, 30, 255, 255, 255}));
}

TEST(PictureRead, RefusesEveryFileThatIsCutOff)
{
    const CBytes pixels(30 * 20, 77);
    const CBytes whole = Png(30, 20, PNG_FORMAT_GRAY, pixels.data());
    EXPECT_EQ(Picture_Read(whole).pixels, pixels);
    // The last chunk says only that the file ends; what is before it is all needed.
    for (std::size_t size = 0; size < whole.size() - 12; ++size)
        EXPECT_THROW(Picture_Read(std::span(whole).first(size)), std::runtime_error) << size;
}

TEST(PictureRead, RefusesOrReadsEveryDamagedFile)
{
    const CBytes pixels(16 * 16 * 3, 42);
    const CBytes whole = Png(16, 16, PNG_FORMAT_RGB, pixels.data());
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (const unsigned int bit : {0U, 3U, 7U}) {
            CBytes damaged = whole;
            damaged[i] = static_cast<std::uint8_t>(damaged[i] ^ 1U << bit);
            try {
                const SPixelPicture picture = Picture_Read(damaged);
                EXPECT_EQ(picture.pixels.size(), static_cast<std::size_t>(picture.width) *
                                                     static_cast<std::size_t>(picture.height) *
                                                     static_cast<std::size_t>(picture.channelCount));
            } catch (const std::runtime_error& error) {
                EXPECT_EQ(std::string(error.what()).find("the picture cannot be read: "), 0U);
            }
        }
    }
}

/// A header of 33 bytes that promises 20000 by 20000 pixels must not take their memory.
TEST(PictureRead, RefusesMorePixelsThanItsLimit)
{
    const CBytes pixels(1, 0);
    CBytes bytes = Png(1, 1, PNG_FORMAT_GRAY, pixels.data());
    for (const std::size_t side : {16U, 20U}) { // width and height of the header, high byte first
        bytes[side + 2] = 20000 >> 8;
        bytes[side + 3] = 20000 & 0xFF;
    }
    const auto checksum = static_cast<std::uint32_t>(crc32(0, bytes.data() + 12, 17));
    for (std::size_t i = 0; i < 4; ++i)
        bytes[29 + i] = static_cast<std::uint8_t>(checksum >> (24 - 8 * i));
    try {
        Picture_Read(bytes);
        FAIL() << "it was read";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "the picture cannot be read: 400000000 pixels are more than 134217728");
    }
}
