#include "figures/lightness.h"

#include <gtest/gtest.h>

using namespace dotweave;

/// 116 * 0.5 - 16 = 42 where the cube root of the reflectance is a half, and so on.
TEST(Lightness, FollowsTheCubeRoot)
{
    EXPECT_DOUBLE_EQ(Lightness(1), 100);
    EXPECT_DOUBLE_EQ(Lightness(0.125), 42);
    EXPECT_DOUBLE_EQ(Lightness(0.729), 88.4);
    EXPECT_DOUBLE_EQ(Lightness(0), 0);
    EXPECT_NEAR(Lightness(0.184), 50, 0.05); // the mid grey of photographers
}

TEST(Lightness, IsStraightAtTheDarkEnd)
{
    // (6/29)^3 = 0.008856 is L* 8, from either side.
    EXPECT_NEAR(Lightness(216.0 / 24389), 8, 1e-9);
    EXPECT_NEAR(Lightness(216.0 / 24389 + 1e-12), 8, 1e-6);
    EXPECT_NEAR(Lightness(108.0 / 24389), 4, 1e-9);
}

TEST(Lightness, HasItsOwnDerivative)
{
    for (const double reflectance : {0.001, 0.005, 0.02, 0.184, 0.5, 0.876}) {
        const double step = 1e-7;
        const double slope = (Lightness(reflectance + step) - Lightness(reflectance - step)) / (2 * step);
        EXPECT_NEAR(Lightness_Slope(reflectance) / slope, 1, 1e-6) << reflectance;
    }
}
