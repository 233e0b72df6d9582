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

constexpr int NUMBERS[] = {1, 2};

} // namespace

// How often each level is used is checked where the library carries the matrices: BaseSlots.

TEST(BaseMatrices, DisperseTheFirstAndTheLastHundredth)
{
    for (const int number : NUMBERS) {
        SCOPED_TRACE(number);
        Matrix levels = BaseMatrix(number);
        EXPECT_EQ(std::count_if(levels.begin(), levels.end(), [](int level) { return level < 2; }), 10)
            << "the cells that get the clamped top level in the complement";
        const SNearest first = NearestBelow(levels, 656);
        EXPECT_GE(first.mean, 7.8); // at random it would be 5
        EXPECT_LE(first.mean, 8.05);
        EXPECT_GE(first.least, 4.5);
        for (std::uint16_t& level : levels)
            level = static_cast<std::uint16_t>(65534 - level);
        const SNearest last = NearestBelow(levels, 656);
        EXPECT_GE(last.mean, 7.4);
        EXPECT_GE(last.least, 3.0);
    }
}

TEST(BaseMatrices, PrintNoLongWavesAtHalfTone)
{
    // squares of 17 cells, 1024 of them: at random their counts of dots would deviate by 8.5
    constexpr int SQUARE = 17;
    for (const int number : NUMBERS) {
        const Matrix levels = BaseMatrix(number);
        double squares = 0.0;
        for (int row = 0; row < SIDE; row += SQUARE) {
            for (int column = 0; column < SIDE; column += SQUARE) {
                int count = 0;
                for (int dy = 0; dy < SQUARE; ++dy)
                    for (int dx = 0; dx < SQUARE; ++dx)
                        count +=
                            levels[static_cast<unsigned>((row + dy) * SIDE + column + dx)] < 32767 ? 1 : 0;
                squares += std::pow(count - SQUARE * SQUARE / 2.0, 2);
            }
        }
        EXPECT_LT(std::sqrt(squares / 1024.0), 2.0) << number;
    }
}

TEST(BaseMatrices, AreIndependent)
{
    const Matrix first = BaseMatrix(1);
    const Matrix second = BaseMatrix(2);
    double product = 0.0;
    for (std::size_t cell = 0; cell < first.size(); ++cell)
        product += (first[cell] - 32767.0) * (second[cell] - 32767.0);
    const double variance = 65535.0 * 65535.0 / 12.0; // of an even spread over the levels
    EXPECT_LT(std::abs(product / CELLS / variance), 0.015);
}
