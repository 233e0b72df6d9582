#include "picture/maskpicture.h"

#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstddef>
#include <new>
#include <stdexcept>
#include <string>

namespace {

constexpr int BYTE_BITS = 8;

/// What the picture library writes into. It knows no exceptions, so errors wait here until it has returned.
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
    if (!isStored) // jumps away, so no exception may be alive here
        png_error(png, "not enough memory");
}

extern "C" void Png_Flush(png_structp) {}

extern "C" void Png_Error(png_structp png, png_const_charp text)
{
    try {
        static_cast<SPngTarget*>(png_get_error_ptr(png))->error = text;
    } catch (const std::bad_alloc&) { // the jump alone tells of the error
    }
    png_longjmp(png, 1);
}

extern "C" void Png_Warning(png_structp, png_const_charp) {}

/// One line of the mask as one line of the picture: a bit per pixel, 0 for a dot.
void Line_Unpack(const std::uint8_t* line, int width, int bitsPerPixel, std::uint8_t* row)
{
    const int pixelsPerByte = BYTE_BITS / bitsPerPixel;
    const unsigned int pixelMask = (1U << bitsPerPixel) - 1U;
    for (int x = 0; x < width; ++x) {
        const int shift = BYTE_BITS - bitsPerPixel * (x % pixelsPerByte + 1); // most significant bit first
        if ((static_cast<unsigned int>(line[x / pixelsPerByte]) >> shift & pixelMask) != 0)
            row[x / BYTE_BITS] &= static_cast<std::uint8_t>(~(0x80U >> (x % BYTE_BITS)));
    }
}

/// @return false when the picture library has jumped out. Holds nothing that a jump could leave behind.
bool Png_WriteLines(png_structp png, png_infop info, const SMaskLines& lines, std::uint8_t* row,
                    std::size_t rowBytes)
{
    if (setjmp(png_jmpbuf(png)) != 0) // NOLINT(cert-err52-cpp): the picture library's only way out
        return false;
    png_set_IHDR(png, info, static_cast<png_uint_32>(lines.width), static_cast<png_uint_32>(lines.height), 1,
                 PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (int y = 0; y < lines.height; ++y) {
        std::fill_n(row, rowBytes, std::uint8_t{0xFF});
        Line_Unpack(lines.bytes + static_cast<std::ptrdiff_t>(y) * lines.lineBytes, lines.width,
                    lines.bitsPerPixel, row);
        png_write_row(png, row);
    }
    png_write_end(png, info);
    return true;
}

} // namespace

std::vector<std::uint8_t> MaskPicture_Png(const SMaskLines& lines)
{
    SPngTarget target;
    std::vector<std::uint8_t> row((static_cast<std::size_t>(lines.width) + BYTE_BITS - 1) / BYTE_BITS);
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &target, &Png_Error, &Png_Warning);
    png_infop info = png == nullptr ? nullptr : png_create_info_struct(png);
    bool isWritten = false;
    if (info != nullptr) {
        png_set_write_fn(png, &target, &Png_Write, &Png_Flush);
        png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX); // wide modes exceed the usual million
        isWritten = Png_WriteLines(png, info, lines, row.data(), row.size());
    }
    png_destroy_write_struct(&png, &info);
    if (!isWritten)
        throw std::runtime_error("the picture cannot be made: " + target.error);
    return std::move(target.bytes);
}
