#include "halfpattern.h"
#include "kernel.h"
#include "levelfile.h"
#include "quantise.h"
#include "rankfill.h"
#include "splitmix64.h"
#include "thresholdmatrix.h"
#include "torusenergy.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <numeric>
#include <string>
#include <system_error>
#include <vector>

using matrixgen::CKernel;
using matrixgen::CRankFill;
using matrixgen::CSplitMix64;
using matrixgen::CTorusEnergy;
using matrixgen::SMatrixRecipe;

namespace {

constexpr int SIDE = 48; // small enough to rank in a fraction of a second, large enough for most kernels
constexpr int CELLS = SIDE * SIDE;

/// The recipe with less annealing and without the wide Gaussians, which would cover a torus this small: the
/// laws below do not depend on either.
SMatrixRecipe QuickRecipe()
{
    SMatrixRecipe recipe;
    recipe.annealSweeps = 8;
    recipe.annealTriesPerCell = 4;
    recipe.fillShape.wideGain = 0.0;
    recipe.slab.shape.wideGain = 0.0;
    return recipe;
}

std::vector<std::uint8_t> HalfPattern(std::uint64_t seed)
{
    CSplitMix64 random(seed);
    return matrixgen::HalfPattern_Make(SIDE, QuickRecipe(), random);
}

std::vector<int> Ranking_Make(std::uint64_t seed)
{
    CSplitMix64 random(seed);
    CRankFill fill(SIDE, QuickRecipe(), matrixgen::HalfPattern_Make(SIDE, QuickRecipe(), random), random);
    return fill.Run();
}

/// The ranking of a seed, made once for all tests: they only read it.
const std::vector<int>& Ranking(std::uint64_t seed)
{
    static std::map<std::uint64_t, std::vector<int>> made;
    const auto found = made.find(seed);
    return found != made.end() ? found->second : made.emplace(seed, Ranking_Make(seed)).first->second;
}

/// Distance between two cells with the edges joined.
double TorusDistance(int a, int b)
{
    const int dy = std::abs(a / SIDE - b / SIDE);
    const int dx = std::abs(a % SIDE - b % SIDE);
    return std::hypot(std::min(dy, SIDE - dy), std::min(dx, SIDE - dx));
}

std::vector<double> NearestDistances(const std::vector<int>& cells)
{
    std::vector<double> nearest;
    for (const int a : cells) {
        double best = SIDE;
        for (const int b : cells)
            if (a != b)
                best = std::min(best, TorusDistance(a, b));
        nearest.push_back(best);
    }
    return nearest;
}

double Mean(const std::vector<double>& values)
{
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

/// Expected mean distance to the nearest of count cells thrown at random: 1 / (2 sqrt(density)).
double RandomNearestMean(int count)
{
    return 0.5 * std::sqrt(static_cast<double>(CELLS) / count);
}

/// Energy of each cell, term by term from the distance between it and every set cell.
std::int64_t EnergyByDefinition(int cell, const std::vector<int>& setCells, const CKernel& kernel)
{
    const auto wrapped = [](int offset) { return (offset + SIDE + SIDE / 2) % SIDE - SIDE / 2; };
    std::int64_t energy = 0;
    for (const int set : setCells)
        energy += kernel.At(wrapped(cell / SIDE - set / SIDE), wrapped(cell % SIDE - set % SIDE));
    return energy;
}

} // namespace

TEST(SplitMix64, GivesThePublishedSequence)
{
    CSplitMix64 random(1234567);
    EXPECT_EQ(random.Next(), 6457827717110365317U);
    EXPECT_EQ(random.Next(), 3203168211198807973U);
    EXPECT_EQ(random.Next(), 9817491932198370423U);
    EXPECT_EQ(random.Next(), 4593380528125082431U);
    EXPECT_EQ(random.Next(), 16408922859458223821U);
}

TEST(SplitMix64, BelowReachesEveryNumberEquallyOften)
{
    CSplitMix64 random(5);
    std::vector<int> hits(7);
    for (int i = 0; i < 70000; ++i) {
        const int number = random.Below(7);
        ASSERT_GE(number, 0);
        ASSERT_LT(number, 7);
        ++hits[static_cast<std::size_t>(number)];
    }
    for (const int count : hits)
        EXPECT_NEAR(count, 10000, 500); // five standard deviations
}

TEST(Kernel, FallsWithDistanceInEightEqualDirections)
{
    const CKernel kernel(SIDE, {.sigma = 1.5, .wideGain = 1.0 / 9.0});
    EXPECT_EQ(kernel.Radius(), 16); // 3.7 times three times 1.5, cut
    for (int dy = 0; dy <= kernel.Radius(); ++dy) {
        for (int dx = 0; dx <= kernel.Radius(); ++dx) {
            const std::int32_t weight = kernel.At(dy, dx);
            EXPECT_EQ(kernel.At(-dy, dx), weight);
            EXPECT_EQ(kernel.At(dy, -dx), weight);
            EXPECT_EQ(kernel.At(dx, dy), weight);
            EXPECT_GE(weight, kernel.At(dy, dx + 1));
        }
    }
    EXPECT_EQ(kernel.At(kernel.Radius() + 1, 0), 0);
}

TEST(Kernel, HasTheShapeOfTwoGaussians)
{
    const CKernel kernel(SIDE, {.sigma = 1.5, .wideGain = 0.25});
    const auto expected = [](double distance) {
        return (std::exp(-distance * distance / 4.5) + 0.25 * std::exp(-distance * distance / 40.5)) / 1.25;
    };
    for (int dx = 0; dx <= 16; ++dx)
        EXPECT_NEAR(static_cast<double>(kernel.At(0, dx)) / kernel.Peak(), expected(dx), 1e-6);
}

TEST(Kernel, FlatnessKeepsLongWavesAndDropsShortOnes)
{
    // spectrum (1 + u + u^2 / 2 + ... to the order) exp(-u), u = 2 (pi sigma f)^2, against the sum over the
    // disc
    const double sigma = 2.5;
    for (int flatness = 0; flatness <= 3; ++flatness) {
        const CKernel kernel(SIDE, {.sigma = sigma, .flatness = flatness});
        double total = 0.0;
        for (const double frequency : {0.0, 0.03, 0.06, 0.1, 0.15, 0.2}) {
            SCOPED_TRACE(testing::Message() << "flatness " << flatness << ", frequency " << frequency);
            const double pi = std::acos(-1.0);
            double sum = 0.0;
            for (int dy = -kernel.Radius(); dy <= kernel.Radius(); ++dy)
                for (int dx = -kernel.Radius(); dx <= kernel.Radius(); ++dx)
                    sum += kernel.At(dy, dx) * std::cos(2.0 * pi * frequency * dx);
            if (frequency == 0.0)
                total = sum;
            const double u = 2.0 * std::pow(pi * sigma * frequency, 2);
            double series = 0.0;
            for (int i = 0; i <= flatness; ++i)
                series += std::pow(u, i) / std::tgamma(i + 1.0);
            EXPECT_NEAR(sum / total, series * std::exp(-u), 0.01);
        }
    }
}

TEST(Kernel, StaysInsideTheTorusAndBelowTheBans)
{
    for (const double sigma : {0.5, 1.3, 3.0, 3.1, 9.0, 30.0, 60.0}) {
        SCOPED_TRACE(sigma);
        const CKernel kernel(SIDE, {.sigma = sigma, .wideGain = 1.0 / 9.0});
        EXPECT_LE(2 * kernel.Radius() + 1, SIDE);
        std::int64_t total = 0;
        for (int dy = -kernel.Radius(); dy <= kernel.Radius(); ++dy)
            for (int dx = -kernel.Radius(); dx <= kernel.Radius(); ++dx)
                total += kernel.At(dy, dx);
        EXPECT_EQ(total, kernel.Total());
        EXPECT_LT(total, 1 << 29);
    }
}

TEST(TorusEnergy, EqualsTheSumOverSetCellsAcrossTheEdges)
{
    const CKernel kernel(SIDE, {.sigma = 2.0, .wideGain = 1.0 / 9.0});
    CTorusEnergy energy(SIDE);
    CSplitMix64 random(3);
    std::vector<int> setCells = {0, SIDE - 1, CELLS - 1, CELLS - SIDE}; // the corners meet
    for (int i = 0; i < 60; ++i)
        setCells.push_back(random.Below(CELLS));
    for (const int cell : setCells)
        energy.Add(cell, kernel);
    for (int cell = 0; cell < CELLS; ++cell)
        ASSERT_EQ(energy.Value(cell), EnergyByDefinition(cell, setCells, kernel)) << "cell " << cell;
}

TEST(TorusEnergy, SubtractUndoesAddExactly)
{
    const CKernel wide(SIDE, {.sigma = 9.0});
    const CKernel narrow(SIDE, {.sigma = 1.3, .wideGain = 1.0 / 9.0});
    CTorusEnergy energy(SIDE);
    CSplitMix64 random(4);
    for (int i = 0; i < 100; ++i) {
        const int cell = random.Below(CELLS);
        energy.Add(cell, wide);
        energy.Add(cell, narrow);
        energy.Subtract(cell, wide);
        energy.Subtract(cell, narrow);
    }
    for (int cell = 0; cell < CELLS; ++cell)
        ASSERT_EQ(energy.Value(cell), 0);
}

TEST(TorusEnergy, LowestIsTheFirstCellOfLeastValue)
{
    for (const int side : {8, 31, 32, 33, 64, 68}) { // whole and broken blocks
        SCOPED_TRACE(side);
        const CKernel kernel(side, {.sigma = 1.1});
        CTorusEnergy energy(side);
        CSplitMix64 random(static_cast<std::uint64_t>(side));
        for (int i = 0; i < 200; ++i) {
            const int cell = random.Below(side * side);
            if (i % 3 == 0)
                energy.Offset(cell, random.Below(9) - 4);
            else if (i % 3 == 1)
                energy.Add(cell, kernel);
            else
                energy.Subtract(cell, kernel);
            int lowest = 0;
            for (int other = 1; other < side * side; ++other)
                if (energy.Value(other) < energy.Value(lowest))
                    lowest = other;
            ASSERT_EQ(energy.Lowest(), lowest) << "change " << i;
        }
    }
}

TEST(HalfPattern, SetsHalfOfTheCellsEvenly)
{
    const std::vector<std::uint8_t> half = HalfPattern(1);
    ASSERT_EQ(half.size(), static_cast<std::size_t>(CELLS));
    EXPECT_EQ(std::count(half.begin(), half.end(), 1), CELLS / 2);
    EXPECT_EQ(std::count(half.begin(), half.end(), 0), CELLS / 2);
    // 64 random cells of a half-set torus would have 32 set with a standard deviation of 4
    double squares = 0.0;
    for (int row = 0; row < SIDE; row += 8) {
        for (int column = 0; column < SIDE; column += 8) {
            int count = 0;
            for (int cell = 0; cell < 64; ++cell)
                count += half[static_cast<unsigned>((row + cell / 8) * SIDE + column + cell % 8)];
            squares += (count - 32) * (count - 32);
        }
    }
    EXPECT_LT(std::sqrt(squares * 64 / CELLS), 1.5);
}

TEST(RankFill, RanksEveryCellOnceTheHalfPatternFirst)
{
    const std::vector<std::uint8_t> half = HalfPattern(1);
    std::vector<int> order = Ranking(1);
    for (int rank = 0; rank < CELLS; ++rank)
        ASSERT_EQ(half[static_cast<std::size_t>(order[static_cast<std::size_t>(rank)])],
                  rank < CELLS / 2 ? 1 : 0);
    std::sort(order.begin(), order.end());
    std::vector<int> every(CELLS);
    std::iota(every.begin(), every.end(), 0);
    EXPECT_EQ(order, every);
}

TEST(RankFill, TheSeedDecidesTheOrder)
{
    EXPECT_EQ(Ranking(1), Ranking_Make(1));
    EXPECT_NE(Ranking(1), Ranking(2));
}

TEST(RankFill, KeptEnergyEqualsTheEnergyWorkedOutAnew)
{
    CSplitMix64 random(9);
    CRankFill fill(SIDE, QuickRecipe(), HalfPattern(9), random);
    for (const int percent : {1, 17, 15, 13, 10, 22, 12, 7}) { // the core, the slab memory and its fading
        fill.Advance(CELLS * percent / 100);
        SCOPED_TRACE(fill.Order().size());
        const CTorusEnergy kept = fill.Energy();
        fill.Recompute();
        for (int cell = 0; cell < CELLS; ++cell)
            ASSERT_EQ(fill.Energy().Value(cell), kept.Value(cell)) << "cell " << cell;
    }
}

TEST(RankFill, FirstDotsKeepTheHardCoreApart)
{
    const std::vector<int>& order = Ranking(1);
    const double core = SMatrixRecipe().core;
    for (const int count : {CELLS / 200, CELLS / 100, CELLS / 50, CELLS / 20, CELLS / 10}) {
        SCOPED_TRACE(count);
        const std::vector<double> nearest = NearestDistances({order.begin(), order.begin() + count});
        const double spacing = std::sqrt(2.0 / std::sqrt(3.0) * CELLS / count); // of a hexagonal grid
        // the core is sized for a share 3 % ahead
        EXPECT_GE(*std::min_element(nearest.begin(), nearest.end()), core * spacing / std::sqrt(1.03));
    }
}

TEST(RankFill, FewDotsAreFarMoreDispersedThanAtRandom)
{
    for (const std::uint64_t seed : {1U, 2U}) {
        const std::vector<int>& order = Ranking(seed);
        for (const int count : {CELLS / 100, CELLS / 20, CELLS / 10}) {
            SCOPED_TRACE(count);
            EXPECT_GT(Mean(NearestDistances({order.begin(), order.begin() + count})),
                      1.4 * RandomNearestMean(count));
            EXPECT_GT(Mean(NearestDistances({order.end() - count, order.end()})),
                      1.4 * RandomNearestMean(count));
        }
    }
}

TEST(RankFill, WindowsOfAnEighthAreDispersed)
{
    const std::vector<int>& order = Ranking(1);
    const int window = CELLS / 8;
    for (int first = 0; first + window <= CELLS; first += window / 4) {
        SCOPED_TRACE(first);
        const std::vector<double> nearest =
            NearestDistances({order.begin() + first, order.begin() + first + window});
        EXPECT_GT(Mean(nearest), 1.2 * RandomNearestMean(window));
    }
}

TEST(Quantise, UsesEveryLevelFourOrFiveTimes)
{
    const std::vector<std::uint16_t> levels = matrixgen::LevelsOfRanks_Make(544 * 544);
    ASSERT_EQ(levels.size(), 295936U);
    EXPECT_TRUE(std::is_sorted(levels.begin(), levels.end()));
    std::vector<int> uses(65536);
    for (std::size_t rank = 0; rank < levels.size(); ++rank) {
        ++uses[levels[rank]];
        ASSERT_NEAR(levels[rank], std::floor(static_cast<double>(rank) * 65535.0 / 295936.0), 1.0);
        ASSERT_EQ(levels[rank] + levels[levels.size() - 1 - rank], 65534) << "mirrored: the mean is 32767";
    }
    EXPECT_EQ(uses[65535], 0);
    EXPECT_EQ(std::count(uses.begin(), uses.end() - 1, 5), 33796);
    EXPECT_EQ(std::count(uses.begin(), uses.end() - 1, 4), 31739);
    EXPECT_EQ(uses[0] + uses[1], 10) << "the cells that meet the clamp in the complement";
}

TEST(Quantise, GivesEachCellTheLevelOfItsRank)
{
    const std::vector<std::uint16_t> levels = matrixgen::LevelsOfRanks_Make(4);
    EXPECT_EQ(matrixgen::Ranking_Quantise({2, 0, 3, 1}),
              (std::vector<std::uint16_t>{levels[1], levels[3], levels[0], levels[2]}));
}

TEST(LevelFile, WritesTheLowByteFirst)
{
    const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "matrixgen_levelfile";
    std::filesystem::create_directories(folder);
    const std::filesystem::path path = folder / "levels.bin";
    matrixgen::LevelFile_Write(path, {0x0102, 65534, 0});
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(bytes, std::string("\x02\x01\xFE\xFF\x00\x00", 6));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
    std::filesystem::remove_all(folder);
}

TEST(LevelFile, ThrowsAndWritesNothingElse)
{
    const std::filesystem::path folder =
        std::filesystem::path(testing::TempDir()) / "matrixgen_levelfile_taken";
    std::filesystem::create_directories(folder / "taken" / "inside"); // a folder that a rename cannot replace
    EXPECT_THROW(matrixgen::LevelFile_Write(folder / "missing" / "levels.bin", {1}), std::system_error);
    EXPECT_THROW(matrixgen::LevelFile_Write(folder / "taken", {1}), std::system_error);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
    std::filesystem::remove_all(folder);
}
