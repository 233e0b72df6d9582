#include "dotweave/basemaskdata.h"

#include "dirtyheap.h"
#include "dotweave/rawmaskdata.h"
#include "peek.h"
#include "refusedrequest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

namespace {

constexpr int SIDE = 544;

/// Row `row` of matrix `matrix`; rows from 544 on belong to the matrices behind it.
const std::uint16_t* MatrixRow(int matrix, int row)
{
    return CRawMaskData::RawData(matrix + row / SIDE) + static_cast<std::ptrdiff_t>(row % SIDE) * SIDE;
}

/// Whether plane `plane`, as wide as it is, holds the rows of the matrices from its own one on.
testing::AssertionResult PlaneHoldsItsMatrix(const CBaseMaskData& data, int plane)
{
    for (int row = 0; row < data.Height(); ++row) {
        const std::uint16_t* const cells =
            data.MaskData(plane) + static_cast<std::ptrdiff_t>(row) * data.Width();
        if (!std::equal(cells, cells + data.Width(), MatrixRow(plane % 16, row)))
            return testing::AssertionFailure() << "plane " << plane << " differs in row " << row;
    }
    return testing::AssertionSuccess();
}

} // namespace

static_assert(!std::is_polymorphic_v<CBaseMaskData>, "the class is plain");
static_assert(sizeof(CBaseMaskData) == 24, "three numbers and the planes");

TEST(BaseMaskData, CopiesOneWholeMatrixPerPlane)
{
    CBaseMaskData data;
    ASSERT_TRUE(data.Create(544, 544, 3));
    EXPECT_EQ(data.Width(), 544);
    EXPECT_EQ(data.Height(), 544);
    for (int plane = 0; plane < 3; ++plane)
        EXPECT_EQ(std::memcmp(data.MaskData(plane), CRawMaskData::RawData(plane),
                              sizeof(std::uint16_t) * SIDE * SIDE),
                  0)
            << plane;
}

TEST(BaseMaskData, StartsAgainAtTheFirstMatrixWithTheSeventeenthPlane)
{
    CBaseMaskData data;
    ASSERT_TRUE(data.Create(544, 544, 17));
    for (int plane = 0; plane < 17; ++plane)
        EXPECT_TRUE(PlaneHoldsItsMatrix(data, plane));
    EXPECT_EQ(std::memcmp(data.MaskData(16), CRawMaskData::RawData(0), sizeof(std::uint16_t) * SIDE * SIDE),
              0);
    EXPECT_NE(data.MaskData(16), data.MaskData(0)); // equal, but a plane of its own
}

TEST(BaseMaskData, TakesNarrowRowsFromTheStartOfEachMatrixRow)
{
    CBaseMaskData data;
    ASSERT_TRUE(data.Create(100, 10, 1));
    for (int row = 0; row < 10; ++row)
        for (int column = 0; column < 100; ++column)
            ASSERT_EQ(data.MaskData(0)[row * 100 + column], CRawMaskData::RawData(0)[row * 544 + column])
                << row << ", " << column;
}

TEST(BaseMaskData, FillsPlanesOfAnyWidthUpToTheMatrix)
{
    for (const int width : {1, 2, 271, 272, 273, 543, 544}) {
        CBaseMaskData data;
        ASSERT_TRUE(data.Create(width, 5, 18));
        for (int plane = 0; plane < 18; ++plane)
            EXPECT_TRUE(PlaneHoldsItsMatrix(data, plane)) << "width " << width;
    }
}

TEST(BaseMaskData, ContinuesWithTheNextMatrixBelowTheLastRow)
{
    CBaseMaskData data;
    ASSERT_TRUE(data.Create(544, 545, 1));
    EXPECT_TRUE(PlaneHoldsItsMatrix(data, 0));
    EXPECT_EQ(std::memcmp(data.MaskData(0) + static_cast<std::ptrdiff_t>(544) * 544, CRawMaskData::RawData(1),
                          sizeof(std::uint16_t) * 544),
              0);
}

TEST(BaseMaskData, ReachesTheLastRowOfTheTableFromTheFirstPlane)
{
    CBaseMaskData data;
    ASSERT_TRUE(data.Create(33, 544 * 16, 1));
    EXPECT_TRUE(PlaneHoldsItsMatrix(data, 0));
    CBaseMaskData later;
    ASSERT_TRUE(later.Create(33, 544 * 13, 4)); // plane 3 ends with matrix 15
    EXPECT_TRUE(PlaneHoldsItsMatrix(later, 3));
}

TEST(BaseMaskData, FillsHalfOfEveryRunOfAWideRow)
{
    constexpr int ROWS = 3;
    DirtyHeap(sizeof(std::uint16_t) * 1088 * ROWS);
    CBaseMaskData data;
    ASSERT_TRUE(data.Create(1088, ROWS, 1));
    for (int row = 0; row < ROWS; ++row) {
        const std::uint16_t* const cells = data.MaskData(0) + static_cast<std::ptrdiff_t>(row) * 1088;
        const std::uint16_t* const source = MatrixRow(0, row);
        for (const int run : {0, 544}) {
            EXPECT_TRUE(std::equal(source, source + 272, cells + run)) << row << ", run at " << run;
            EXPECT_FALSE(std::equal(source + 272, source + 544, cells + run + 272))
                << "the second half of a run stays bare: row " << row << ", run at " << run;
        }
    }
}

TEST(BaseMaskData, CopiesBytesNotCellsIntoAShortLastRun)
{
    // a last run of 7 cells gets 7 bytes: 3 cells and the low byte of the fourth
    DirtyHeap(sizeof(std::uint16_t) * 551);
    CBaseMaskData data;
    ASSERT_TRUE(data.Create(551, 1, 2));
    for (const int plane : {0, 1}) {
        const std::uint16_t* const source = MatrixRow(plane, 0);
        const std::uint16_t* const run = data.MaskData(plane) + 544;
        EXPECT_TRUE(std::equal(source, source + 272, data.MaskData(plane))) << plane;
        EXPECT_EQ(std::memcmp(run, source, 7), 0) << plane;
        EXPECT_NE(std::memcmp(run, source, 14), 0) << plane;
    }
}

TEST(BaseMaskData, KeepsItsSizesWithoutAnyPlane)
{
    CBaseMaskData data;
    EXPECT_TRUE(data.Create(20, 30, 0));
    EXPECT_EQ(data.Width(), 20);
    EXPECT_EQ(data.Height(), 30);
}

TEST(BaseMaskData, FindsNoMemoryForANegativeNumberOfPlanes)
{
    if (REFUSED_REQUEST_IS_FATAL)
        GTEST_SKIP() << "the sanitizer does not let the allocation fail";
    CBaseMaskData data;
    EXPECT_THROW(data.Create(20, 30, -1), std::bad_alloc);
    EXPECT_EQ(data.Width(), 20); // stored before anything is allocated
    EXPECT_EQ(data.Height(), 30);
    EXPECT_EQ(SBaseMaskData_Peek::Count(data), -1);
}

TEST(BaseMaskData, FindsNoMemoryForANegativePlane)
{
    if (REFUSED_REQUEST_IS_FATAL)
        GTEST_SKIP() << "the sanitizer does not let the allocation fail";
    CBaseMaskData data; // whose destruction frees the planes that were there, none of them
    EXPECT_THROW(data.Create(-1, 4, 3), std::bad_alloc);
    EXPECT_EQ(data.Width(), -1);
    EXPECT_EQ(data.Height(), 4);
    EXPECT_EQ(data.MaskData(2), nullptr);

    CBaseMaskData wrapped;
    EXPECT_THROW(wrapped.Create(32768, 65536, 1), std::bad_alloc); // 2 to the 31st: negative in 32 bits
}

TEST(BaseMaskData, FreesItsPlanesOnceHoweverOftenItIsReleased)
{
    CBaseMaskData data;
    ASSERT_TRUE(data.Create(64, 64, 5));
    SBaseMaskData_Peek::Release(data);
    SBaseMaskData_Peek::Release(data);
    EXPECT_EQ(data.Width(), 64); // the sizes stay
    EXPECT_EQ(data.Height(), 64);
    ASSERT_TRUE(data.Create(8, 9, 2)); // and the object can be filled again
    EXPECT_TRUE(PlaneHoldsItsMatrix(data, 1));

    CBaseMaskData never;
    SBaseMaskData_Peek::Release(never);
}

TEST(BaseMaskData, SharesItsPlanesWithACopy)
{
    CBaseMaskData owner;
    ASSERT_TRUE(owner.Create(12, 3, 2));
    CBaseMaskData assigned;
    assigned = owner;
    CBaseMaskData constructed(owner);
    for (CBaseMaskData* copy : {&assigned, &constructed}) {
        EXPECT_EQ(copy->Width(), 12);
        EXPECT_EQ(copy->Height(), 3);
        EXPECT_EQ(SBaseMaskData_Peek::Count(*copy), 2);
        EXPECT_EQ(SBaseMaskData_Peek::Planes(*copy), SBaseMaskData_Peek::Planes(owner));
        owner.MaskData(1)[35] = 7; // planes are writable
        EXPECT_EQ(copy->MaskData(1)[35], 7);
        *copy = CBaseMaskData(); // only one may go on owning the planes
        EXPECT_EQ(owner.MaskData(1)[35], 7);
    }
}

TEST(BaseMaskData, ASecondCreateLeavesThePlanesOfTheFirstToWhoeverHasThem)
{
    CBaseMaskData data;
    ASSERT_TRUE(data.Create(300, 3, 2));
    const std::unique_ptr<std::uint16_t*[]> planes(SBaseMaskData_Peek::Planes(data));
    const std::unique_ptr<std::uint16_t[]> first(planes[0]);
    const std::unique_ptr<std::uint16_t[]> second(planes[1]);
    ASSERT_TRUE(data.Create(300, 3, 2));
    // Memory that had been freed would be handed out again for planes of the same size.
    EXPECT_NE(SBaseMaskData_Peek::Planes(data), planes.get());
    for (int plane = 0; plane < 2; ++plane) {
        EXPECT_NE(data.MaskData(plane), first.get());
        EXPECT_NE(data.MaskData(plane), second.get());
        EXPECT_TRUE(PlaneHoldsItsMatrix(data, plane));
        const std::uint16_t* const old = plane == 0 ? first.get() : second.get();
        EXPECT_TRUE(std::equal(old, old + std::ptrdiff_t{300} * 3, data.MaskData(plane))) << plane;
    }
}
