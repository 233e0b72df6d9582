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

/// Row `row` of matrix `matrix`; rows from 544 on belong to the matrices after it.
const std::uint16_t* MatrixRow(int matrix, int row)
{
    return CRawMaskData::RawData(matrix + row / SIDE) + static_cast<std::ptrdiff_t>(row % SIDE) * SIDE;
}

/// Succeeds when a plane contains the rows of the matrices from its own one on.
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

TEST(BaseMaskData, PlanesAreCutFromTheirMatrices)
{
    struct SSize {
        int width, height, count;
    };
    const SSize sizes[] = {
        {544, 544, 17},    // plane 16 is matrix 0 again
        {100, 10, 1},      // narrow rows start where matrix rows start
        {544, 545, 1},     // row 544 is row 0 of the next matrix
        {33, 544 * 16, 1}, // down to the last row of the table
        {33, 544 * 13, 4}, // plane 3 ends with matrix 15
        {1, 5, 18},        {2, 5, 18},   {271, 5, 18}, {272, 5, 18},
        {273, 5, 18},      {543, 5, 18}, {20, 30, 0}, // no plane at all
    };
    for (const SSize& size : sizes) {
        SCOPED_TRACE(testing::Message()
                     << size.width << " x " << size.height << ", " << size.count << " planes");
        CBaseMaskData data;
        ASSERT_TRUE(data.Create(size.width, size.height, size.count));
        EXPECT_EQ(data.Width(), size.width);
        EXPECT_EQ(data.Height(), size.height);
        for (int plane = 0; plane < size.count; ++plane)
            EXPECT_TRUE(PlaneHoldsItsMatrix(data, plane));
    }
}

TEST(BaseMaskData, FillsHalfOfEveryWideRun)
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

TEST(BaseMaskData, FindsNoMemoryForNegativeSizes)
{
    if (REFUSED_REQUEST_IS_FATAL)
        GTEST_SKIP() << "the sanitizer does not let the allocation fail";
    struct SSize {
        int width, height, count;
    };
    for (const SSize& size : {SSize{20, 30, -1}, SSize{-1, 4, 3}, SSize{32768, 65536, 1}, SSize{544, 544, -1},
                              SSize{544, -4, 1}}) { // 2 to the 31st cells
        for (const auto create :
             {+[](CBaseMaskData&data, const SSize&s) { return data.Create(s.width, s.height, s.count); },
              +[](CBaseMaskData&data, const SSize&s) {
                  return SBaseMaskData_Peek::Create_OnTable(data, s.width, s.height, s.count);
              }}) {
            CBaseMaskData data; // its destructor frees the planes that were there: none
            EXPECT_THROW(create(data, size), std::bad_alloc);
            EXPECT_EQ(data.Width(), size.width); // stored before anything is allocated
            EXPECT_EQ(data.Height(), size.height);
            EXPECT_EQ(SBaseMaskData_Peek::Count(data), size.count);
        }
    }
}

TEST(BaseMaskData, FreesItsPlanesOnce)
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
        *copy = CBaseMaskData(); // only one may own the planes
        EXPECT_EQ(owner.MaskData(1)[35], 7);
    }
}

TEST(BaseMaskData, ASecondCreateKeepsTheOldPlanes)
{
    CBaseMaskData data;
    ASSERT_TRUE(data.Create(300, 3, 2));
    const std::unique_ptr<std::uint16_t*[]> planes(SBaseMaskData_Peek::Planes(data));
    const std::unique_ptr<std::uint16_t[]> first(planes[0]);
    const std::unique_ptr<std::uint16_t[]> second(planes[1]);
    ASSERT_TRUE(data.Create(300, 3, 2));
    // An allocator hands out freed memory again for planes of the same size.
    EXPECT_NE(SBaseMaskData_Peek::Planes(data), planes.get());
    for (int plane = 0; plane < 2; ++plane) {
        EXPECT_NE(data.MaskData(plane), first.get());
        EXPECT_NE(data.MaskData(plane), second.get());
        EXPECT_TRUE(PlaneHoldsItsMatrix(data, plane));
        const std::uint16_t* const old = plane == 0 ? first.get() : second.get();
        EXPECT_TRUE(std::equal(old, old + std::ptrdiff_t{300} * 3, data.MaskData(plane))) << plane;
    }
}

TEST(BaseMaskData, BorrowsPlanesThatAreRowsOfTheTable)
{
    for (const int height : {0, 1, 543, 544}) {
        CBaseMaskData data; // frees its list of planes alone
        ASSERT_TRUE(SBaseMaskData_Peek::Create_OnTable(data, 544, height, 17));
        EXPECT_EQ(data.Width(), 544);
        EXPECT_EQ(data.Height(), height);
        EXPECT_EQ(SBaseMaskData_Peek::Count(data), 17);
        for (int plane = 0; plane < 17; ++plane)
            EXPECT_EQ(data.MaskData(plane), CRawMaskData::RawData(plane)) << plane;
    }
}

TEST(BaseMaskData, CopiesPlanesThatTheTableDoesNotHave)
{
    struct SSize {
        int width, height;
    };
    for (const SSize& size : {SSize{543, 544}, SSize{1, 1}, SSize{544, 545}}) {
        CBaseMaskData data;
        ASSERT_TRUE(SBaseMaskData_Peek::Create_OnTable(data, size.width, size.height, 3));
        for (int plane = 0; plane < 3; ++plane) {
            EXPECT_NE(data.MaskData(plane), CRawMaskData::RawData(plane)) << plane;
            EXPECT_TRUE(PlaneHoldsItsMatrix(data, plane));
        }
        data.MaskData(2)[0] = 7; // and they are its own
        EXPECT_NE(CRawMaskData::RawData(2)[0], 7);
    }
}
