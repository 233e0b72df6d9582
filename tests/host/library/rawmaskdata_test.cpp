#include "dotweave/rawmaskdata.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <numeric>
#include <sstream>
#include <string>
#include <vector>

/// The threshold table as a host gets it: out of the built library.

namespace {

constexpr int SIDE = 544;
constexpr int CELLS = 295936;
constexpr int LEVEL_COUNT = 65536;

int Level(int slot, int row, int column)
{
    return CRawMaskData::RawData(slot)[row * SIDE + column];
}

std::vector<int> Histogram(int slot)
{
    std::vector<int> uses(LEVEL_COUNT, 0);
    const std::uint16_t* const cells = CRawMaskData::RawData(slot);
    for (int cell = 0; cell < CELLS; ++cell)
        ++uses[cells[cell]];
    return uses;
}

std::uintptr_t Address(int index)
{
    return reinterpret_cast<std::uintptr_t>(CRawMaskData::RawData(index)); // NOLINT: compared, never read
}

constexpr std::uintptr_t MATRIX_BYTES = 2 * static_cast<std::uintptr_t>(CELLS);
constexpr std::uintptr_t TABLE_BYTES = 9469952;

struct SCell {
    int row, column;
};

/// Cells of a torus, sorted into squares of 17 by 17 so that neighbours are quickly at hand.
class CTorusCells {
public:
    void Add(const SCell& cell) { m_squares[Square(cell.row / EDGE, cell.column / EDGE)].push_back(cell); }

    /// Squared distance from a cell to the nearest other one.
    [[nodiscard]] int NearestSquared(const SCell& cell) const
    {
        int nearest = INT_MAX;
        // a ring of squares further out cannot hold anything nearer than the rings inside it reach
        for (int ring = 1; ring <= ACROSS / 2 && nearest > (ring - 1) * (ring - 1) * EDGE * EDGE; ++ring)
            for (int dy = -ring; dy <= ring; ++dy)
                for (int dx = -ring; dx <= ring; ++dx)
                    for (const SCell& other :
                         m_squares[Square(cell.row / EDGE + dy, cell.column / EDGE + dx)])
                        if (other.row != cell.row || other.column != cell.column)
                            nearest = std::min(nearest, DistanceSquared(cell, other));
        return nearest;
    }

private:
    static constexpr int EDGE = 17;
    static constexpr int ACROSS = SIDE / EDGE;
    static constexpr std::size_t SQUARE_COUNT = 1024;
    static_assert(ACROSS * EDGE == SIDE && SQUARE_COUNT == static_cast<std::size_t>(ACROSS) * ACROSS);

    static std::size_t Square(int row, int column)
    {
        const auto down = static_cast<std::size_t>((row + ACROSS) % ACROSS);
        const auto across = static_cast<std::size_t>((column + ACROSS) % ACROSS);
        return down * ACROSS + across;
    }
    static int DistanceSquared(const SCell& a, const SCell& b)
    {
        const int rows = std::abs(a.row - b.row);
        const int columns = std::abs(a.column - b.column);
        const int dy = std::min(rows, SIDE - rows);
        const int dx = std::min(columns, SIDE - columns);
        return dy * dy + dx * dx;
    }

    std::array<std::vector<SCell>, SQUARE_COUNT> m_squares;
};

class BaseSlots : public testing::TestWithParam<int> {};

} // namespace

TEST(RawMaskData, HasSquareMatrices)
{
    EXPECT_EQ(CRawMaskData::Width(), 544);
    EXPECT_EQ(CRawMaskData::Height(), 544);
}

TEST(RawMaskData, CountsMatricesModuloSixteen)
{
    EXPECT_EQ(CRawMaskData::RawData(16), CRawMaskData::RawData(0));
    EXPECT_EQ(CRawMaskData::RawData(17), CRawMaskData::RawData(1));
    EXPECT_EQ(CRawMaskData::RawData(-16), CRawMaskData::RawData(0));
    EXPECT_EQ(CRawMaskData::RawData(INT_MIN), CRawMaskData::RawData(0)); // a multiple of 16
    EXPECT_EQ(CRawMaskData::RawData(INT_MAX), CRawMaskData::RawData(15));
    for (int index = 0; index < 64; ++index)
        EXPECT_EQ(Address(index), Address(0) + static_cast<std::uintptr_t>(index % 16) * MATRIX_BYTES)
            << index;
}

TEST(RawMaskData, OtherNegativeIndicesLieBeforeTheTable)
{
    EXPECT_EQ(Address(-1), Address(0) - MATRIX_BYTES);
    for (int index = 1; index < 16; ++index) {
        EXPECT_EQ(Address(-index), Address(0) - static_cast<std::uintptr_t>(index) * MATRIX_BYTES) << index;
        EXPECT_EQ(Address(-index - 32), Address(-index)) << index;
    }
}

TEST_P(BaseSlots, UseEveryLevelFourOrFiveTimes)
{
    const std::vector<int> uses = Histogram(GetParam());
    EXPECT_EQ(std::count(uses.begin(), uses.end(), 5), 33796);
    EXPECT_EQ(std::count(uses.begin(), uses.end(), 4), 31739);
    EXPECT_EQ(uses[65535], 0); // so every level from 0 to 65534 is used
    EXPECT_EQ(std::accumulate(uses.begin(), uses.end(), 0), CELLS);
}

TEST_P(BaseSlots, HaveTheirMeanInTheMiddleOfTheirLevels)
{
    const std::uint16_t* const cells = CRawMaskData::RawData(GetParam());
    const double sum = std::accumulate(cells, cells + CELLS, 0.0);
    EXPECT_NEAR(sum / CELLS, 32767.0, 0.05);
}

TEST_P(BaseSlots, SpreadTheirLowestHundredthAcrossEdges)
{
    std::vector<SCell> low;
    CTorusCells torus;
    for (int row = 0; row < SIDE; ++row)
        for (int column = 0; column < SIDE; ++column)
            if (Level(GetParam(), row, column) < 656)
                low.push_back({row, column});
    for (const SCell& cell : low)
        torus.Add(cell);
    EXPECT_GE(low.size(), 4U * 656);
    EXPECT_LE(low.size(), 5U * 656);
    double sum = 0.0;
    int leastSquared = INT_MAX;
    for (const SCell& cell : low) {
        const int squared = torus.NearestSquared(cell);
        leastSquared = std::min(leastSquared, squared);
        sum += std::sqrt(squared);
    }
    const double mean = sum / static_cast<double>(low.size());
    EXPECT_GE(mean, 7.4); // placed at random it would be about 5
    EXPECT_LE(mean, 8.1);
    EXPECT_GE(leastSquared, 3 * 3);
}

INSTANTIATE_TEST_SUITE_P(RawMaskData, BaseSlots, testing::Values(1, 2));

TEST(RawMaskData, MeasuresDistancesOverTheEdges)
{
    CTorusCells torus; // the measure itself, on cells with known neighbours
    const std::array<SCell, 4> cells = {SCell{0, 0}, SCell{541, 540}, SCell{100, 300}, SCell{140, 330}};
    for (const SCell& cell : cells)
        torus.Add(cell);
    EXPECT_EQ(torus.NearestSquared(cells[0]), 25); // 3 rows and 4 columns away around the corner
    EXPECT_EQ(torus.NearestSquared(cells[1]), 25);
    EXPECT_EQ(torus.NearestSquared(cells[2]), 2500);
    EXPECT_EQ(torus.NearestSquared(cells[3]), 2500);
}

TEST(RawMaskData, StartsWithTheComplementOfTheFirstBase)
{
    for (int row = 0; row < SIDE; ++row)
        for (int column = 0; column < SIDE; ++column)
            ASSERT_EQ(Level(0, row, column), std::min(65535 - Level(1, row, column), 65534))
                << row << ", " << column;
}

TEST(RawMaskData, ClampsTheComplementAtTheTopOfTheScale)
{
    const std::vector<int> uses = Histogram(0);
    EXPECT_EQ(uses[0], 0);
    EXPECT_GT(uses[1], 0);
    EXPECT_EQ(uses[65534], 10); // the cells of levels 0 and 1 together
    EXPECT_EQ(uses[65535], 0);
}

TEST(RawMaskData, HasTheSecondBaseInvertedAndMoved)
{
    for (int row = 0; row < SIDE; ++row)
        for (int column = 0; column < SIDE; ++column)
            ASSERT_EQ(Level(3, row, column), std::min(65535 - Level(2, (row + 188) % 544, column), 65534))
                << row << ", " << column;
}

TEST(RawMaskData, RollsTheFirstFourByHalfTheirHeight)
{
    for (int slot = 0; slot < 4; ++slot)
        for (int row = 0; row < SIDE; ++row)
            for (int column = 0; column < SIDE; ++column)
                ASSERT_EQ(Level(slot + 4, (row + 272) % 544, column), Level(slot, row, column))
                    << slot << ": " << row << ", " << column;
}

TEST(RawMaskData, RepeatsTheRolledMatricesTwice)
{
    for (int slot = 4; slot < 8; ++slot) {
        const std::uint16_t* const cells = CRawMaskData::RawData(slot);
        EXPECT_TRUE(std::equal(cells, cells + CELLS, CRawMaskData::RawData(slot + 4))) << slot;
        EXPECT_TRUE(std::equal(cells, cells + CELLS, CRawMaskData::RawData(slot + 8))) << slot;
    }
}

TEST(RawMaskData, HoldsEightDistinctMatrices)
{
    for (int a = 0; a < 8; ++a)
        for (int b = 0; b < a; ++b)
            EXPECT_FALSE(std::equal(CRawMaskData::RawData(a), CRawMaskData::RawData(a) + CELLS,
                                    CRawMaskData::RawData(b)))
                << a << " and " << b;
}

/// How the name of the file begins that the table is loaded from; an archive is part of this program.
#if defined(DOTWEAVE_STATIC)
constexpr const char* FILE_WITH_TABLE = "/library_test";
#else
constexpr const char* FILE_WITH_TABLE = "/libdotweave";
#endif

TEST(RawMaskData, LiesInReadOnlyPagesOfTheLibrary)
{
    std::ifstream maps("/proc/self/maps");
    if (!maps)
        GTEST_SKIP() << "this system does not tell which pages can be written";
    const std::uintptr_t end = Address(0) + TABLE_BYTES;
    std::uintptr_t reached = Address(0);
    for (std::string line; std::getline(maps, line);) {
        std::istringstream fields(line);
        std::uintptr_t pagesBegin = 0;
        std::uintptr_t pagesEnd = 0;
        char dash = 0;
        std::string permissions;
        std::string offset, device, inode, path;
        fields >> std::hex >> pagesBegin >> dash >> pagesEnd >> permissions >> offset >> device >> inode >>
            path;
        if (pagesEnd <= reached || pagesBegin >= end)
            continue;
        ASSERT_LE(pagesBegin, reached) << "a hole in the table";
        EXPECT_EQ(permissions[0], 'r') << line;
        EXPECT_EQ(permissions[1], '-') << line;
        EXPECT_NE(path.find(FILE_WITH_TABLE), std::string::npos)
            << "not a page of the library's file: " << line;
        reached = pagesEnd;
    }
    EXPECT_GE(reached, end);
}
