#include "picture/pngencode.h"

#include <png.h>

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
/// @return false when the picture library reported an error
bool Png_Begin(png_structp png, png_infop info, const SPngShape& shape)
{
    if (setjmp(png_jmpbuf(png)) != 0) // NOLINT(cert-err52-cpp): the picture library reports errors by a jump
        return false;
    png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX); // wide modes exceed the usual million
    png_set_IHDR(png, info, static_cast<png_uint_32>(shape.width), static_cast<png_uint_32>(shape.height),
                 shape.bitDepth, shape.channelCount == 3 ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_GRAY,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (shape.pixelsPerMetre > 0)
        png_set_pHYs(png, info, static_cast<png_uint_32>(shape.pixelsPerMetre),
                     static_cast<png_uint_32>(shape.pixelsPerMetre), PNG_RESOLUTION_METER);
    png_write_info(png, info);
    png_set_packing(png); // takes a byte per value, writes as many bits as the file has
    return true;
}

/// As above.
bool Png_Row(png_structp png, const std::uint8_t* row)
{
    if (setjmp(png_jmpbuf(png)) != 0) // NOLINT(cert-err52-cpp): as above
        return false;
    png_write_row(png, row);
    return true;
}

/// As above.
bool Png_End(png_structp png, png_infop info)
{
    if (setjmp(png_jmpbuf(png)) != 0) // NOLINT(cert-err52-cpp): as above
        return false;
    png_write_end(png, info);
    return true;
}

/// The picture library's two objects.
struct SPngWriter {
    explicit SPngWriter(SPngTarget& target)
        : png(png_create_write_struct(PNG_LIBPNG_VER_STRING, &target, &Png_Error, &Png_Warning)),
          info(png == nullptr ? nullptr : png_create_info_struct(png))
    {
        if (info != nullptr)
            png_set_write_fn(png, &target, &Png_Write, &Png_Flush);
    }
    SPngWriter(const SPngWriter&) = delete;
    SPngWriter& operator=(const SPngWriter&) = delete;
    ~SPngWriter() { png_destroy_write_struct(&png, &info); }

    png_structp png;
    png_infop info;
};

} // namespace

std::vector<std::uint8_t> Png_Encode(const SPngShape& shape, const CPngRow& row)
{
    SPngTarget target;
    const SPngWriter writer(target);
    bool isGood = writer.info != nullptr && Png_Begin(writer.png, writer.info, shape);
    std::vector<std::uint8_t> values(static_cast<std::size_t>(shape.width) *
                                     static_cast<std::size_t>(shape.channelCount));
    for (int y = 0; isGood && y < shape.height; ++y) {
        row(y, values.data());
        isGood = Png_Row(writer.png, values.data());
    }
    if (!isGood || !Png_End(writer.png, writer.info))
        throw std::runtime_error("the picture cannot be made: " + target.error);
    return std::move(target.bytes);
}

} // namespace dotweave
