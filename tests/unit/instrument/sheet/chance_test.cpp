#include "sheet/chance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <set>
#include <vector>

using namespace dotweave;

namespace {

/// The standard normal distribution, from the C library's error function.
double Normal_Share(double value)
{
    return std::erfc(-value / std::numbers::sqrt2) / 2;
}

} // namespace

TEST(Chance, QuantilesUndoTheDistribution)
{
    EXPECT_EQ(Normal_Quantile(0.5), 0);
    for (double value = -6; value <= 6; value += 0.125)
        EXPECT_NEAR(Normal_Quantile(Normal_Share(value)), value, 1e-7) << value;
    // The table that every textbook has.
    EXPECT_NEAR(Normal_Quantile(0.975), 1.959964, 1e-6);
    EXPECT_NEAR(Normal_Quantile(0.8413447), 1, 1e-6);
}

TEST(Chance, IsNormal)
{
    constexpr int COUNT = 100000;
    std::vector<double> numbers;
    for (std::uint64_t i = 0; i < COUNT; ++i)
        numbers.push_back(Chance_Normal(1, EChance::Move, i));
    double mean = 0, square = 0;
    for (const double number : numbers) {
        mean += number / COUNT;
        square += number * number / COUNT;
    }
    EXPECT_NEAR(mean, 0, 4 / std::sqrt(COUNT));
    EXPECT_NEAR(square, 1, 4 * std::sqrt(2.0 / COUNT));
    std::sort(numbers.begin(), numbers.end());
    double distance = 0; // Kolmogorov and Smirnov; 1.95 / sqrt(n) is exceeded once in a thousand times
    for (std::size_t i = 0; i < COUNT; ++i)
        distance = std::max(distance, std::abs(Normal_Share(numbers[i]) - (double(i) + 0.5) / COUNT));
    EXPECT_LT(distance, 1.95 / std::sqrt(COUNT));
}

/// A change of one bit in any input changes every bit of the result half of the time.
TEST(Chance, DependsOnEveryInput)
{
    const std::uint64_t bits = Chance_Bits(1, EChance::Volume, 1000, 2000);
    const std::vector<std::uint64_t> others = {
        Chance_Bits(0, EChance::Volume, 1000, 2000), Chance_Bits(1, EChance::RowX, 1000, 2000),
        Chance_Bits(1, EChance::Volume, 1001, 2000), Chance_Bits(1, EChance::Volume, 1000, 2001),
        Chance_Bits(1, EChance::Volume, 2000, 1000)};
    for (const std::uint64_t other : others)
        EXPECT_NEAR(std::popcount(bits ^ other), 32, 16);
    std::set<std::uint64_t> all(others.begin(), others.end());
    EXPECT_EQ(all.size(), others.size());
}

/// SplitMix64 from seed 0 begins with 0xE220A8397B1DCDAF. That is the first of the three rounds here, when its
/// input is 0.
TEST(Chance, MixesAsSplitMixDoes)
{
    const auto round = [](std::uint64_t bits) {
        bits += 0x9E3779B97F4A7C15U;
        bits = (bits ^ bits >> 30U) * 0xBF58476D1CE4E5B9U;
        bits = (bits ^ bits >> 27U) * 0x94D049BB133111EBU;
        return bits ^ bits >> 31U;
    };
    ASSERT_EQ(round(0), 0xE220A8397B1DCDAFU);
    EXPECT_EQ(Chance_Bits(5, EChance::Move, 6, 7), round(round(round(5 + 1) + 6) + 7));
}
