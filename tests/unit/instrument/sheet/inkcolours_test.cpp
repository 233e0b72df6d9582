#include "sheet/inkcolours.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <vector>

using namespace dotweave;

namespace {

using CBytes = std::vector<std::uint8_t>;

SPatch Patch(const std::vector<double>& amounts)
{
    SPatch patch = {static_cast<int>(amounts.size()), 1, {}};
    for (const double amount : amounts)
        patch.reflectance.push_back(
            static_cast<float>(PAPER_REFLECTANCE - amount * (PAPER_REFLECTANCE - INK_REFLECTANCE)));
    return patch;
}

/// The level of a screen that shows a share of light.
int Level(double light)
{
    return static_cast<int>(std::lround(255 * (1.055 * std::pow(light, 1 / 2.4) - 0.055)));
}

} // namespace

TEST(InkColours, ShowBlankPaperWhite)
{
    const std::vector<SPatch> patches = {Patch({0}), Patch({0})};
    const SPixelPicture picture = InkPicture(patches, std::vector<int>{0, 2}, {});
    EXPECT_EQ(picture.channelCount, 3);
    EXPECT_EQ(picture.pixels, (CBytes{255, 255, 255}));
}

TEST(InkColours, TakeTheirShareOfLight)
{
    const CInkColour cyan = InkColour(1);
    const SPixelPicture picture = InkPicture(std::vector<SPatch>{Patch({1, 0.5})}, std::vector<int>{1}, {});
    ASSERT_EQ(picture.pixels.size(), 6U);
    for (std::size_t channel = 0; channel < 3; ++channel) {
        EXPECT_NEAR(picture.pixels[channel], Level(cyan[channel]), 1);
        EXPECT_NEAR(picture.pixels[3 + channel], Level(1 - 0.5 * (1 - cyan[channel])), 1);
    }
    EXPECT_LT(picture.pixels[0], picture.pixels[1]); // cyan takes most of the red
}

TEST(InkColours, MultiplyWhatSeveralInksLetThrough)
{
    const std::vector<SPatch> patches = {Patch({1}), Patch({1})};
    const SPixelPicture picture = InkPicture(patches, std::vector<int>{1, 3}, {});
    for (std::size_t channel = 0; channel < 3; ++channel)
        EXPECT_NEAR(picture.pixels[channel], Level(InkColour(1)[channel] * InkColour(3)[channel]), 1);
    EXPECT_GT(picture.pixels[1], picture.pixels[0]); // cyan and yellow make green
    EXPECT_GT(picture.pixels[1], picture.pixels[2]);
}

TEST(InkColours, NeedPatchesOfOneSize)
{
    EXPECT_THROW(InkPicture({}, {}, {}), std::invalid_argument);
    const std::vector<SPatch> patches = {Patch({0}), Patch({0, 0})};
    EXPECT_THROW(InkPicture(patches, std::vector<int>{0, 1}, {}), std::invalid_argument);
    EXPECT_THROW(InkPicture(patches, std::vector<int>{0}, {}), std::invalid_argument);
}
