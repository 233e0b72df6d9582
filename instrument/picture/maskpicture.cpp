#include "picture/maskpicture.h"

#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstddef>
#include <new>
#include <stdexcept>
#include <string>

namespace dotweave {

namespace {

/// What the picture library writes into. It knows no exceptions, so an error is kept here until it returns.
struct SPngTarget {
    std::vector<std::uint8_t> bytes;
    std::string error;
};

extern "C" void Png_Write(png_structp png, png_bytep data, png_size_t count)
{
    bool isStored = true;
    try {
        std::vector<std::uint8_t>& bytes = static_cast<SPngTarget*>(png_get_io_ptr(png))->bytes;
        bytes.insert(bytes.end(), data, data + count);
    } catch (const std::bad_alloc&) {
        isStored = false;
    }
    if (!isStored) // png_error jumps, so no exception may be alive here
        png_error(png, "not enough memory");
}

extern "C" void Png_Flush(png_structp) {}

extern "C" void Png_Error(png_structp png, png_const_charp text)
{
    try {
        static_cast<SPngTarget*>(png_get_error_ptr(png))->error = text;
    } catch (const std::bad_alloc&) { // the jump alone reports the error
    }
    png_longjmp(png, 1);
}

extern "C" void Png_Warning(png_structp, png_const_charp) {}

/// Owns nothing, because a jump runs no destructors.
/// @param row  room for lines.width bytes
/// @return false when the picture library reported an error
bool Png_WriteLines(png_structp png, png_infop info, const SMaskLines& lines, std::uint8_t* row)
{
    if (setjmp(png_jmpbuf(png)) != 0) // NOLINT(cert-err52-cpp): the picture library reports errors by a jump
        return false;
    png_set_IHDR(png, info, static_cast<png_uint_32>(lines.width), static_cast<png_uint_32>(lines.height), 1,
                 PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_set_packing(png); // takes a byte per pixel, writes a bit
    for (int y = 0; y < lines.height; ++y) {
        lines.Line_Unpack(y, row);
        std::transform(row, row + lines.width, row,
                       [](std::uint8_t pixel) { return static_cast<std::uint8_t>(pixel == 0 ? 1 : 0); });
        png_write_row(png, row);
    }
    png_write_end(png, info);
    return true;
}

} // namespace

std::vector<std::uint8_t> MaskPicture_Png(const SMaskLines& lines)
{
    SPngTarget target;
    std::vector<std::uint8_t> row(static_cast<std::size_t>(lines.width));
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &target, &Png_Error, &Png_Warning);
    png_infop info = png == nullptr ? nullptr : png_create_info_struct(png);
    bool isWritten = false;
    if (info != nullptr) {
        png_set_write_fn(png, &target, &Png_Write, &Png_Flush);
        png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX); // wide modes exceed the usual million
        isWritten = Png_WriteLines(png, info, lines, row.data());
    }
    png_destroy_write_struct(&png, &info);
    if (!isWritten)
        throw std::runtime_error("the picture cannot be made: " + target.error);
    return std::move(target.bytes);
}

} // namespace dotweave
