#include "figures/spectrum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <numbers>
#include <random>
#include <stdexcept>
#include <vector>

using namespace dotweave;

namespace {

double TotalPower(const std::vector<SSpectrumRing>& rings)
{
    double power = 0;
    for (const SSpectrumRing& ring : rings)
        power += ring.power * ring.sampleCount;
    return power;
}

} // namespace

/// One pixel of 1 among n: |X|^2 is 1 everywhere, so the power is 1 / n in every ring and direction.
TEST(Spectrum, OfOnePixelIsFlat)
{
    std::vector<double> pattern(32 * 32);
    pattern[100] = 1;
    const std::vector<SSpectrumRing> rings = Spectrum_Radial(pattern, 32, 32);
    int samples = 0;
    for (const SSpectrumRing& ring : rings) {
        EXPECT_NEAR(ring.power, 1.0 / 1024, 1e-12) << ring.frequency;
        EXPECT_LT(ring.anisotropyDb, -90) << ring.frequency;
        samples += ring.sampleCount;
    }
    EXPECT_EQ(samples, 1023); // all frequencies but the mean
    EXPECT_NEAR(rings.front().frequency, 1.0 / 32, 1e-12);
    EXPECT_NEAR(rings.back().frequency, std::sqrt(0.5), 1.0 / 32);
}

/// A sinusoid of amplitude a: |X|^2 is (a n / 2)^2 at two frequencies.
TEST(Spectrum, OfASinusoidIsInItsRing)
{
    std::vector<double> pattern;
    for (int y = 0; y < 48; ++y) {
        for (int x = 0; x < 64; ++x)
            pattern.push_back(3 + 0.5 * std::cos(2 * std::numbers::pi * 8 * x / 64));
    }
    const std::vector<SSpectrumRing> rings = Spectrum_Radial(pattern, 64, 48);
    for (const SSpectrumRing& ring : rings) {
        const double expected = std::abs(ring.frequency - 0.125) < 0.001 ? 0.25 * 0.25 * 64 * 48 * 2 : 0;
        EXPECT_NEAR(ring.power * ring.sampleCount, expected, 1e-6) << ring.frequency;
        if (expected >
            0) { // one direction alone: two frequencies of n have it all, variance n^2 / 2 n of mean^2
            const double n = ring.sampleCount;
            EXPECT_NEAR(ring.anisotropyDb, 10 * std::log10((n * n / 2 - n) / (n - 1)), 1e-6);
        }
    }
}

/// The power of white noise is its variance, and its powers scatter as much as they are large: 0 dB.
TEST(Spectrum, OfWhiteNoiseIsItsVariance)
{
    std::mt19937 random(3);
    std::vector<double> pattern;
    for (int i = 0; i < 256 * 256; ++i)
        pattern.push_back(random() % 2 == 0 ? 0 : 1);
    const std::vector<SSpectrumRing> rings = Spectrum_Radial(pattern, 256, 256);
    EXPECT_NEAR(TotalPower(rings) / (256 * 256), 0.25, 0.001);
    for (const SSpectrumRing& ring : rings) {
        if (ring.sampleCount < 500)
            continue;
        EXPECT_NEAR(ring.power, 0.25, 0.25 * 6 / std::sqrt(ring.sampleCount / 2.0)) << ring.frequency;
        EXPECT_NEAR(ring.anisotropyDb, 0, 2.5) << ring.frequency;
    }
}

TEST(Spectrum, RefusesAPatternWithoutTwoDirections)
{
    const std::vector<double> pattern(8);
    EXPECT_THROW(Spectrum_Radial(pattern, 1, 8), std::invalid_argument);
    EXPECT_THROW(Spectrum_Radial(pattern, 8, 1), std::invalid_argument);
    EXPECT_THROW(Spectrum_Radial(pattern, 3, 3), std::invalid_argument);
}
