#include "int32.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <new>

namespace {

using namespace dotweave;

constexpr std::int32_t MOST = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t LEAST = std::numeric_limits<std::int32_t>::min();

} // namespace

TEST(Int32, ProductsWrapAsHardwareDoes)
{
    EXPECT_EQ(Int32_Product(65535, 32768), 2147450880);
    EXPECT_EQ(Int32_Product(65536, 32768), LEAST);
    EXPECT_EQ(Int32_Product(65536, 65537), 65536);
    EXPECT_EQ(Int32_Product(MOST, MOST), 1);
    EXPECT_EQ(Int32_Product(-3, 5), -15);
}

TEST(Int32, HoldsWhatLiesBetweenItsEnds)
{
    EXPECT_TRUE(Int32_Holds(MOST));
    EXPECT_TRUE(Int32_Holds(LEAST));
    EXPECT_FALSE(Int32_Holds(std::int64_t{MOST} + 1));
    EXPECT_FALSE(Int32_Holds(std::int64_t{LEAST} - 1));
}

TEST(Int32, SizesAreWholeOrAFailedAllocation)
{
    EXPECT_EQ(Int32_Size(0), 0U);
    EXPECT_EQ(Int32_Size(MOST), 2147483647U);
    EXPECT_EQ(Int32_Size(MOST, 1), 2147483647U);
    EXPECT_EQ(Int32_Size(-2, -3), 6U);
    for (const std::int32_t count : {-1, LEAST})
        EXPECT_THROW(Int32_Size(count), std::bad_alloc) << count;
    EXPECT_THROW(Int32_Size(-1, 1), std::bad_alloc);
    EXPECT_THROW(Int32_Size(65536, 32768), std::bad_alloc); // 2 to the 31
    EXPECT_THROW(Int32_Size(65536, 65536), std::bad_alloc); // wraps to 0
    EXPECT_THROW(Int32_Size(MOST, MOST), std::bad_alloc);   // wraps to 1
}
