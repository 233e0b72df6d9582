#include "sheet/inkcolours.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <stdexcept>

namespace dotweave {

namespace {

/// Shares of light that one layer lets through: what a process ink takes of its own third of the spectrum, and
/// what little it takes of the others.
constexpr CInkColour INKS[] = {
    {0.03, 0.03, 0.03}, // black
    {0.05, 0.55, 0.85}, // cyan
    {0.80, 0.06, 0.35}, // magenta
    {0.95, 0.85, 0.05}, // yellow
};

/// The transfer function of IEC 61966-2-1, to 8 bits.
std::uint8_t Screen_Encode(double light)
{
    const double value = light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
    return static_cast<std::uint8_t>(std::lround(255 * std::clamp(value, 0.0, 1.0)));
}

} // namespace

CInkColour InkColour(int color)
{
    return INKS[static_cast<std::size_t>(color) % std::size(INKS)];
}

SPixelPicture InkPicture(std::span<const SPatch> patches, std::span<const int> colors,
                         const SPatchOptions& options)
{
    if (patches.empty() || patches.size() != colors.size())
        throw std::invalid_argument("a picture of inks needs one patch for each colour");
    const SPatch& first = patches.front();
    for (const SPatch& patch : patches) {
        if (patch.width != first.width || patch.height != first.height)
            throw std::invalid_argument("patches of different sizes make no picture");
    }
    SPixelPicture picture = {first.width, first.height, 3, {}};
    picture.pixels.reserve(first.reflectance.size() * 3);
    for (std::size_t pixel = 0; pixel < first.reflectance.size(); ++pixel) {
        CInkColour light = {1, 1, 1};
        for (std::size_t ink = 0; ink < patches.size(); ++ink) {
            const auto reflectance = static_cast<double>(patches[ink].reflectance[pixel]);
            const double amount = (options.paperReflectance - reflectance) /
                                  (options.paperReflectance - options.inkReflectance);
            const CInkColour colour = InkColour(colors[ink]);
            for (std::size_t channel = 0; channel < 3; ++channel)
                light[channel] *= 1 - amount * (1 - colour[channel]);
        }
        for (const double channel : light)
            picture.pixels.push_back(Screen_Encode(channel));
    }
    return picture;
}

} // namespace dotweave
