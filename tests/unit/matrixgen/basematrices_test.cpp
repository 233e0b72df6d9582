#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <numeric>
#include <string>
#include <vector>

namespace {

constexpr int SIDE = 544;
constexpr int CELLS = SIDE * SIDE;

using Matrix = std::vector<std::uint16_t>;

Matrix BaseMatrix(int number)
{
    const std::string path =
        std::string(DOTWEAVE_DATA_DIR) + "/threshold_base_" + std::to_string(number) + ".bin";
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(bytes.size(), 2U * CELLS) << path;
    Matrix levels;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        levels.push_back(static_cast<std::uint16_t>(static_cast<unsigned char>(bytes[i]) |
                                                    static_cast<unsigned char>(bytes[i + 1]) << 8));
    levels.resize(CELLS);
    return levels;
}

/// Mean and smallest distance from each cell below a level to the nearest other one, edges joined.
struct SNearest {
    double mean, least;
};

SNearest NearestBelow(const Matrix& levels, int level)
{
    constexpr int REACH = 24; // cells searched each way; the distances are about 8
    std::vector<double> nearest;
    for (int cell = 0; cell < CELLS; ++cell) {
        if (levels[static_cast<std::size_t>(cell)] >= level)
            continue;
        int best = REACH * REACH;
        for (int dy = -REACH; dy <= REACH; ++dy) {
            for (int dx = -REACH; dx <= REACH; ++dx) {
                const int other = (cell / SIDE + dy + SIDE) % SIDE * SIDE + (cell % SIDE + dx + SIDE) % SIDE;
                if (other != cell && levels[static_cast<std::size_t>(other)] < level)
                    best = std::min(best, dy * dy + dx * dx);
            }
        }
        nearest.push_back(std::sqrt(best));
    }
    const double sum = std::accumulate(nearest.begin(), nearest.end(), 0.0);
    return {sum / static_cast<double>(nearest.size()), *std::min_element(nearest.begin(), nearest.end())};
}

class BaseMatrices : public testing::TestWithParam<int> {};

} // namespace

TEST_P(BaseMatrices, UseEveryLevelFourOrFiveTimesAroundTheMiddleOfTheScale)
{
    const Matrix levels = BaseMatrix(GetParam());
    std::vector<int> uses(65536);
    for (const std::uint16_t level : levels)
        ++uses[level];
    EXPECT_EQ(uses[65535], 0);
    EXPECT_EQ(std::count(uses.begin(), uses.end() - 1, 5), 33796);
    EXPECT_EQ(std::count(uses.begin(), uses.end() - 1, 4), 31739);
    EXPECT_EQ(std::accumulate(levels.begin(), levels.end(), std::int64_t{0}), std::int64_t{32767} * CELLS);
    EXPECT_EQ(uses[0] + uses[1], 10); // these print at the clamped top level of the complement
}

TEST_P(BaseMatrices, DisperseTheFirstHundredth)
{
    const Matrix levels = BaseMatrix(GetParam());
    const SNearest nearest = NearestBelow(levels, 656);
    EXPECT_GE(nearest.mean, 7.8); // at random it would be 5
    EXPECT_LE(nearest.mean, 8.05);
    EXPECT_GE(nearest.least, 4.5);
}

TEST_P(BaseMatrices, DisperseTheLastHundredth)
{
    Matrix mirrored = BaseMatrix(GetParam());
    for (std::uint16_t& level : mirrored)
        level = static_cast<std::uint16_t>(65534 - level);
    const SNearest nearest = NearestBelow(mirrored, 656);
    EXPECT_GE(nearest.mean, 7.4);
    EXPECT_GE(nearest.least, 3.0);
}

TEST_P(BaseMatrices, PrintNoLongWavesAtHalfTone)
{
    // squares of 17 cells, 1024 of them: at random their counts of dots would deviate by 8.5
    const Matrix levels = BaseMatrix(GetParam());
    constexpr int SQUARE = 17;
    double squares = 0.0;
    for (int row = 0; row < SIDE; row += SQUARE) {
        for (int column = 0; column < SIDE; column += SQUARE) {
            int count = 0;
            for (int dy = 0; dy < SQUARE; ++dy)
                for (int dx = 0; dx < SQUARE; ++dx)
                    count += levels[static_cast<unsigned>((row + dy) * SIDE + column + dx)] < 32767 ? 1 : 0;
            squares += std::pow(count - SQUARE * SQUARE / 2.0, 2);
        }
    }
    EXPECT_LT(std::sqrt(squares / 1024.0), 2.0);
}

INSTANTIATE_TEST_SUITE_P(Data, BaseMatrices, testing::Values(1, 2));

TEST(BaseMatrixPair, IsIndependent)
{
    const Matrix first = BaseMatrix(1);
    const Matrix second = BaseMatrix(2);
    double product = 0.0;
    for (std::size_t cell = 0; cell < first.size(); ++cell)
        product += (first[cell] - 32767.0) * (second[cell] - 32767.0);
    const double variance = 65535.0 * 65535.0 / 12.0; // of an even spread over the levels
    EXPECT_LT(std::abs(product / CELLS / variance), 0.015);
}
