#include "sheet/inkplanes.h"

#include <dotweave/rawmaskdata.h>

#include <algorithm>
#include <cstddef>

namespace dotweave {

static constexpr int FULL = 255;

static std::size_t PixelCount(const SPixelPicture& picture)
{
    return static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
}

static SInkPlane Plane_Blank(const SPixelPicture& picture)
{
    return {picture.width, picture.height, std::vector<std::uint8_t>(PixelCount(picture))};
}

SInkPlane InkPlane_Grey(const SPixelPicture& picture)
{
    SInkPlane plane = Plane_Blank(picture);
    const std::uint8_t* pixel = picture.pixels.data();
    for (std::uint8_t& amount : plane.amounts) {
        const int grey = picture.channelCount == 1
                             ? pixel[0]
                             : (299 * pixel[0] + 587 * pixel[1] + 114 * pixel[2] + 500) / 1000;
        amount = static_cast<std::uint8_t>(FULL - grey);
        pixel += picture.channelCount;
    }
    return plane;
}

std::vector<SInkPlane> InkPlanes_Colour(const SPixelPicture& picture)
{
    if (picture.channelCount == 1) {
        const SInkPlane blank = Plane_Blank(picture);
        return {InkPlane_Grey(picture), blank, blank, blank};
    }
    std::vector<SInkPlane> planes(4, Plane_Blank(picture));
    const std::uint8_t* pixel = picture.pixels.data();
    for (std::size_t i = 0; i < PixelCount(picture); ++i, pixel += picture.channelCount) {
        const int black = FULL - std::max({pixel[0], pixel[1], pixel[2]});
        planes[0].amounts[i] = static_cast<std::uint8_t>(black);
        for (std::size_t channel = 0; channel < 3; ++channel)
            planes[channel + 1].amounts[i] = static_cast<std::uint8_t>(FULL - pixel[channel] - black);
    }
    return planes;
}

CBitImage InkPlane_Screen(const SInkPlane& plane, int matrix)
{
    CBitImage image(plane.width, plane.height, EImageEdge::Blank);
    const std::uint16_t* thresholds = CRawMaskData::RawData(matrix);
    const std::uint8_t* amount = plane.amounts.data();
    for (int y = 0; y < plane.height; ++y) {
        const std::uint16_t* line =
            thresholds + static_cast<std::ptrdiff_t>(y % CRawMaskData::Height()) * CRawMaskData::Width();
        for (int x = 0; x < plane.width; ++x, ++amount) {
            if (line[x % CRawMaskData::Width()] < *amount * 257) // 65535 / 255
                image.Pixel_Set(x, y);
        }
    }
    return image;
}

} // namespace dotweave
