#include "figures/banding.h"

#include "figures/contrastsensitivity.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

using namespace dotweave;

namespace {

constexpr double PITCH_MM = 25.4 / 600;
constexpr double STEP_MM = 48 * PITCH_MM;
constexpr double DISTANCE_MM = 350;
/// So near that everything in these profiles is below the peak of the contrast sensitivity.
constexpr double NO_DISTANCE_MM = 1e-3;

std::vector<double> Wave(int count, int waves, double amplitude, double phase = 0)
{
    std::vector<double> profile;
    for (int i = 0; i < count; ++i)
        profile.push_back(50 + amplitude * std::cos(2 * std::numbers::pi * (waves * i) / count + phase));
    return profile;
}

SBanding Seen(const std::vector<double>& profile, double distanceMm = DISTANCE_MM)
{
    return Banding({profile, PITCH_MM, STEP_MM, distanceMm});
}

/// The weight of `waves` periods in `count` lines.
double Weight(int waves, int count)
{
    return ContrastSensitivity(CyclesPerDegree(waves / (count * PITCH_MM), DISTANCE_MM));
}

} // namespace

TEST(Banding, OfASinusoidIsItsWeightedRms)
{
    for (const int count : {480, 479, 128}) { // a prime, too
        for (const int waves : {1, 4, 10, 40}) {
            SCOPED_TRACE(waves);
            const SBanding banding = Seen(Wave(count, waves, 0.8));
            const double weight = Weight(waves, count);
            EXPECT_NEAR(banding.rms, weight * 0.8 / std::numbers::sqrt2, 1e-9);
            EXPECT_NEAR(banding.plainRms, 0.8 / std::numbers::sqrt2, 1e-9);
            EXPECT_NEAR(banding.peakAmplitude, weight * 0.8, 1e-9);
            EXPECT_NEAR(banding.peakPeriodMm, count * PITCH_MM / waves, 1e-9);
            EXPECT_NEAR(banding.peakPeriodSteps, count / 48.0 / waves, 1e-9);
            EXPECT_NEAR(std::abs(Wave(count, waves, 1)[static_cast<std::size_t>(banding.worstLine)] - 50), 1,
                        1e-9);
            EXPECT_NEAR(std::abs(banding.worstDifference), weight * 0.8, 1e-9);
        }
    }
    EXPECT_LT(Weight(40, 480), 0.9); // the weights matter
}

TEST(Banding, DoesNotDependOnThePhase)
{
    EXPECT_NEAR(Seen(Wave(480, 7, 0.8, 1.1)).rms, Seen(Wave(480, 7, 0.8)).rms, 1e-9);
}

TEST(Banding, AddsThePowersOfTwoSinusoids)
{
    std::vector<double> profile = Wave(480, 5, 0.6);
    const std::vector<double> other = Wave(480, 60, 0.9);
    for (std::size_t i = 0; i < profile.size(); ++i)
        profile[i] += other[i] - 50;
    const double first = Weight(5, 480) * 0.6;
    const double second = Weight(60, 480) * 0.9;
    EXPECT_NEAR(Seen(profile).rms, std::sqrt((first * first + second * second) / 2), 1e-9);
    EXPECT_NEAR(Seen(profile).peakAmplitude, std::max(first, second), 1e-9);
}

TEST(Banding, OfTheShortestPeriodCountsOnce)
{
    std::vector<double> profile;
    for (int i = 0; i < 64; ++i)
        profile.push_back(i % 2 == 0 ? 51 : 49);
    const SBanding banding = Seen(profile, NO_DISTANCE_MM);
    EXPECT_NEAR(banding.rms, 1, 1e-12);
    EXPECT_NEAR(banding.peakAmplitude, 1, 1e-12);
    EXPECT_NEAR(banding.peakPeriodMm, 2 * PITCH_MM, 1e-12);
}

/// A line of w values of depth h among n: mean square h^2 (w / n) (1 - w / n); |X(j)| = h sin(pi j w / n) / sin(pi j / n).
TEST(Banding, OfASingleLineFollowsFromItsWidth)
{
    constexpr int COUNT = 480;
    for (const int width : {1, 3, 20}) {
        for (const int first : {0, 100, 300}) {
            SCOPED_TRACE(width);
            std::vector<double> profile(COUNT, 70);
            for (int i = 0; i < width; ++i)
                profile[static_cast<std::size_t>(first + i)] -= 2.5;
            const double share = double(width) / COUNT;
            EXPECT_NEAR(Seen(profile, NO_DISTANCE_MM).rms, 2.5 * std::sqrt(share * (1 - share)), 1e-9);
            double power = 0;
            double dip = 0;
            for (int j = 1; j < COUNT; ++j) {
                const double turn = std::numbers::pi * j / COUNT;
                const double size = 2.5 * std::sin(turn * width) / std::sin(turn) / COUNT;
                const double weight = Weight(std::min(j, COUNT - j), COUNT);
                power += size * size * weight * weight;
                dip -= weight * size * (width % 2 == 1 ? 1 : std::cos(turn)); // at the line's middle
            }
            const SBanding banding = Seen(profile);
            EXPECT_NEAR(banding.rms, std::sqrt(power), 1e-9);
            EXPECT_GE(banding.worstLine, first);
            EXPECT_LT(banding.worstLine, first + width);
            if (width < 10) { // the edges of a wide line are seen darker than its middle
                EXPECT_NEAR(banding.worstDifference, dip, 1e-9);
                EXPECT_EQ(banding.worstLine, first + width / 2);
            } else {
                EXPECT_LT(banding.worstDifference, dip);
            }
        }
    }
}

TEST(Banding, OfAnEvenProfileIsNone)
{
    const SBanding banding = Seen(std::vector<double>(100, 63));
    EXPECT_NEAR(banding.rms, 0, 1e-12);
    EXPECT_NEAR(banding.worstDifference, 0, 1e-12);
    for (const std::size_t count : {0U, 1U}) {
        EXPECT_EQ(Seen(std::vector<double>(count, 63)).rms, 0);
        EXPECT_EQ(Seen(std::vector<double>(count, 63)).worstLine, -1);
    }
}
