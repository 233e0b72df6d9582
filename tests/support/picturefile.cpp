#include "picturefile.h"

#include <gtest/gtest.h>

#include <png.h>

namespace {

// Places in the file: 8 bytes of signature, length and name of the first chunk, two 32-bit sizes.
constexpr std::size_t BIT_DEPTH_OFFSET = 24;
constexpr std::size_t COLOR_TYPE_OFFSET = 25;

} // namespace

SPicture Picture_Read(const std::string& bytes)
{
    SPicture picture;
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) == 0) {
        ADD_FAILURE() << image.message;
        return picture;
    }
    image.format = PNG_FORMAT_GRAY;
    std::vector<std::uint8_t> greyness(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, greyness.data(), 0, nullptr) == 0) {
        ADD_FAILURE() << image.message;
        return picture;
    }
    picture.width = static_cast<int>(image.width);
    picture.height = static_cast<int>(image.height);
    picture.bitDepth = static_cast<std::uint8_t>(bytes.at(BIT_DEPTH_OFFSET));
    picture.colorType = static_cast<std::uint8_t>(bytes.at(COLOR_TYPE_OFFSET));
    picture.greyness = greyness;
    return picture;
}
