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

namespace {

/// A file of one pixel whose header promises other sides.
CBytes Png_Promising(std::uint32_t width, std::uint32_t height)
{
    const CBytes pixels(1, 0);
    CBytes bytes = Png(1, 1, PNG_FORMAT_GRAY, pixels.data());
    const auto put = [&bytes](std::size_t first, std::uint32_t number) { // high byte first
        for (std::size_t i = 0; i < 4; ++i)
            bytes[first + i] = static_cast<std::uint8_t>(number >> (24 - 8 * i));
    };
    put(16, width);
    put(20, height);
    put(29, static_cast<std::uint32_t>(crc32(0, bytes.data() + 12, 17)));
    return bytes;
}

std::string Refusal(const CBytes& bytes)
{
    try {
        Picture_Read(bytes);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "it was read";
}

} // namespace

TEST(PictureRead, RefusesMorePixelsThanItsLimit)
{
    EXPECT_EQ(Refusal(Png_Promising(20000, 20000)),
              "the picture cannot be read: 400000000 pixels are more than 134217728");
}

/// Memory is for pictures that the bytes can hold.
TEST(PictureRead, RefusesMorePixelsThanItsBytesCanHold)
{
    const CBytes bytes = Png_Promising(10000, 10000);
    EXPECT_EQ(Refusal(bytes), "the picture cannot be read: " + std::to_string(bytes.size()) +
                                  " bytes are too few for 100000000 pixels");
    const CBytes white(std::size_t{4000} * 4000, 255); // and no more than that is asked of a good file
    EXPECT_EQ(Picture_Read(Png(4000, 4000, PNG_FORMAT_GRAY, white.data())).pixels, white);
}
