#include "picture/pictureread.h"

#include <png.h>

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>

namespace dotweave {

namespace {

constexpr std::int64_t DEFLATE_RATIO_MAX = 1032;
constexpr std::int64_t BYTE_PIXELS_MAX = 8;

/// Frees what the picture library has allocated.
struct SPngImage {
    png_image image = {};
    SPngImage() { image.version = PNG_IMAGE_VERSION; }
    SPngImage(const SPngImage&) = delete;
    SPngImage& operator=(const SPngImage&) = delete;
    ~SPngImage() { png_image_free(&image); }

    [[noreturn]] void Fail() const
    {
        throw std::runtime_error("the picture cannot be read: " + std::string(image.message));
    }
};

} // namespace

SPixelPicture Picture_Read(std::span<const std::uint8_t> bytes)
{
    SPngImage png;
    if (png_image_begin_read_from_memory(&png.image, bytes.data(), bytes.size()) == 0)
        png.Fail();
    const std::int64_t pixelCount = std::int64_t{png.image.width} * png.image.height;
    if (pixelCount > PICTURE_PIXELS_MAX)
        throw std::runtime_error("the picture cannot be read: " + std::to_string(pixelCount) +
                                 " pixels are more than " + std::to_string(PICTURE_PIXELS_MAX));
    png.image.flags |= PNG_IMAGE_FLAG_16BIT_sRGB; // 16 bits are not taken for linear light
    // Deflate makes at most 1032 bytes of one, and a byte has at most 8 pixels. A few bytes that promise a large
    // picture get no memory for it.
    if (pixelCount / (DEFLATE_RATIO_MAX * BYTE_PIXELS_MAX) > static_cast<std::int64_t>(bytes.size()))
        throw std::runtime_error("the picture cannot be read: " + std::to_string(bytes.size()) +
                                 " bytes are too few for " + std::to_string(pixelCount) + " pixels");
    const bool isColour = (png.image.format & PNG_FORMAT_FLAG_COLOR) != 0;
    png.image.format = isColour ? PNG_FORMAT_RGB : PNG_FORMAT_GRAY;
    SPixelPicture picture = {
        static_cast<int>(png.image.width), static_cast<int>(png.image.height), isColour ? 3 : 1, {}};
    picture.pixels.resize(PNG_IMAGE_SIZE(png.image));
    const png_color white = {255, 255, 255};
    if (png_image_finish_read(&png.image, &white, picture.pixels.data(), 0, nullptr) == 0)
        png.Fail();
    return picture;
}

} // namespace dotweave
