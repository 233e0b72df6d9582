#include "figures/graininess.h"

#include "figures/contrastsensitivity.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <numbers>
#include <random>
#include <vector>

using namespace dotweave;

namespace {

constexpr double PITCH_MM = 25.4 / 600;

struct SAreaCase {
    int width, height;
    double columnPitchMm, linePitchMm, distanceMm;
};

double Seen(const SAreaCase& area, const std::function<double(int x, int y)>& lightness)
{
    std::vector<double> values;
    for (int y = 0; y < area.height; ++y) {
        for (int x = 0; x < area.width; ++x)
            values.push_back(lightness(x, y));
    }
    return Graininess(
        {values, area.width, area.height, area.columnPitchMm, area.linePitchMm, area.distanceMm});
}

double Turn(int i, int waves, int count)
{
    return 2 * std::numbers::pi * i * waves / count;
}

} // namespace

TEST(Graininess, OfASlantedSinusoidIsItsWeightedRms)
{
    const SAreaCase area = {120, 90, PITCH_MM / 2, PITCH_MM, 350};
    const double wave =
        Seen(area, [](int x, int y) { return 40 + 1.5 * std::cos(Turn(x, 30, 120) + Turn(y, 8, 90)); });
    // 30 waves over 60 row pitches and 8 over 90: cycles per mm in either direction, and along the slant.
    const double frequency = std::hypot(30 / (60 * PITCH_MM), 8 / (90 * PITCH_MM));
    const double weight = ContrastSensitivity(CyclesPerDegree(frequency, 350));
    EXPECT_LT(weight, 0.1);
    EXPECT_NEAR(wave, weight * 1.5 / std::numbers::sqrt2, 1e-9);
}

TEST(Graininess, LeavesBandsAndStreaksOut)
{
    const SAreaCase area = {64, 48, PITCH_MM, PITCH_MM, 350};
    EXPECT_NEAR(Seen(area, [](int x, int y) { return 50 + x % 7 + 3 * (y % 5); }), 0, 1e-9);
}

/// Where the eye takes everything in, graininess is the plain deviation from line means and column means.
TEST(Graininess, OfWhiteNoiseIsItsDeviation)
{
    const SAreaCase area = {96, 80, PITCH_MM, PITCH_MM, 1e-3};
    std::mt19937 random(11);
    std::vector<double> noise(96 * 80);
    for (double& value : noise) // uniform, variance 1/12
        value = static_cast<double>(random()) / 4294967296.0;
    const auto at = [&noise](int x, int y) { return noise[static_cast<std::size_t>(y * 96 + x)]; };
    std::vector<double> lines(80), columns(96);
    double mean = 0;
    for (int y = 0; y < 80; ++y) {
        for (int x = 0; x < 96; ++x) {
            lines[static_cast<std::size_t>(y)] += at(x, y) / 96;
            columns[static_cast<std::size_t>(x)] += at(x, y) / 80;
            mean += at(x, y) / (96 * 80);
        }
    }
    double power = 0;
    for (int y = 0; y < 80; ++y) {
        for (int x = 0; x < 96; ++x)
            power += std::pow(at(x, y) - lines[static_cast<std::size_t>(y)] -
                                  columns[static_cast<std::size_t>(x)] + mean,
                              2);
    }
    const double seen = Seen(area, at);
    EXPECT_NEAR(seen, std::sqrt(power / (96 * 80)), 1e-9);
    EXPECT_NEAR(seen, std::sqrt(1.0 / 12 * 95 / 96 * 79 / 80), 0.005); // two standard deviations of chance
}

/// From further away the eye takes in the mean of the squared weights over all frequencies.
TEST(Graininess, OfWhiteNoiseFallsAsTheWeightsDo)
{
    const SAreaCase area = {128, 128, PITCH_MM, PITCH_MM, 350};
    double weights = 0;
    for (int k = 1; k < 128; ++k) {
        for (int j = 1; j < 128; ++j) {
            const double frequency =
                std::hypot(std::min(j, 128 - j), std::min(k, 128 - k)) / (128 * PITCH_MM);
            weights += std::pow(ContrastSensitivity(CyclesPerDegree(frequency, 350)), 2);
        }
    }
    const double expected = std::sqrt(weights / (128 * 128) / 12);
    double seen = 0;
    std::mt19937 random(5);
    for (int i = 0; i < 20; ++i)
        seen +=
            std::pow(Seen(area, [&random](int, int) { return static_cast<double>(random()) / 4294967296.0; }),
                     2) /
            20;
    EXPECT_NEAR(std::sqrt(seen) / expected, 1, 0.03);
}

TEST(Graininess, NeedsTwoLinesAndTwoColumns)
{
    EXPECT_EQ(Seen({1, 9, PITCH_MM, PITCH_MM, 350}, [](int, int y) { return y; }), 0);
    EXPECT_EQ(Seen({9, 1, PITCH_MM, PITCH_MM, 350}, [](int x, int) { return x; }), 0);
}
