#include "view/maskdifference.h"

#include "view/maskview.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

namespace dotweave {

namespace {

constexpr int BYTE_BITS = 8;

/// Line i of all lines of all positions and colours.
SMaskLines Line(std::span<const std::uint8_t> bytes, const SMaskShape& shape, std::int64_t i)
{
    return {bytes.data() + i * shape.lineBytes, shape.width, 1, shape.lineBytes, shape.bitsPerPixel};
}

void Place_Set(const SMaskShape& shape, const SMaskLines& a, const SMaskLines& b, SMaskDifference& difference)
{
    const std::int64_t line = difference.firstByte / shape.lineBytes;
    difference.line = static_cast<int>(line % shape.height);
    difference.position = static_cast<int>(line / shape.height % shape.positionCount);
    difference.color = static_cast<int>(line / shape.height / shape.positionCount);
    const int pixelsPerByte = BYTE_BITS / shape.bitsPerPixel;
    const std::int64_t first = difference.firstByte % shape.lineBytes * pixelsPerByte;
    for (std::int64_t x = first; x < std::min<std::int64_t>(first + pixelsPerByte, shape.width); ++x)
        if (difference.column < 0 && a.Pixel(static_cast<int>(x), 0) != b.Pixel(static_cast<int>(x), 0))
            difference.column = static_cast<int>(x);
}

} // namespace

SMaskDifference BytesDifference(std::span<const std::uint8_t> a, std::span<const std::uint8_t> b)
{
    if (a.size() != b.size())
        throw std::invalid_argument("bytes of different number");
    SMaskDifference difference;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] == b[i])
            continue;
        if (difference.byteCount++ == 0)
            difference.firstByte = static_cast<std::int64_t>(i);
    }
    return difference;
}

SMaskDifference MaskDifference(std::span<const std::uint8_t> a, std::span<const std::uint8_t> b,
                               const SMaskShape& shape)
{
    if (static_cast<std::int64_t>(a.size()) != shape.ByteCount())
        throw std::invalid_argument("bytes of another shape");
    SMaskDifference difference = BytesDifference(a, b);
    if (difference.byteCount == 0)
        return difference;
    const std::int64_t firstLine = difference.firstByte / shape.lineBytes;
    Place_Set(shape, Line(a, shape, firstLine), Line(b, shape, firstLine), difference);
    for (std::int64_t i = firstLine; i < shape.ByteCount() / shape.lineBytes; ++i) {
        const SMaskLines lineA = Line(a, shape, i), lineB = Line(b, shape, i);
        if (std::equal(lineA.bytes, lineA.bytes + shape.lineBytes, lineB.bytes))
            continue;
        ++difference.lineCount;
        for (int x = 0; x < shape.width; ++x)
            difference.pixelCount += lineA.Pixel(x, 0) != lineB.Pixel(x, 0) ? 1 : 0;
    }
    return difference;
}

} // namespace dotweave
