#include "dotweave/maskblock.h"

#include "dirtyheap.h"
#include "refusedrequest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

std::vector<std::uint8_t> Bytes(const CMaskBlock& block)
{
    return {block.MaskData_Const(), block.MaskData_Const() + block.MaskDataBytesCount()};
}

} // namespace

static_assert(!std::is_polymorphic_v<CMaskBlock>, "the class is plain");
static_assert(sizeof(CMaskBlock) == 2 * sizeof(std::int32_t) + sizeof(std::uint8_t*),
              "three fields, no gaps");

TEST(MaskBlock, IsEmptyWhenItIsMadeWithoutSizes)
{
    CMaskBlock block;
    EXPECT_EQ(block.Width(), 0);
    EXPECT_EQ(block.Height(), 0);
    EXPECT_EQ(block.MaskDataBytesCount(), 0);
    EXPECT_EQ(block.MaskData(), nullptr);
    EXPECT_EQ(block.MaskData_Const(), nullptr);
}

TEST(MaskBlock, ClearsNothingWhenItHoldsNothing)
{
    CMaskBlock block;
    block.ClearMaskData();
    EXPECT_EQ(block.MaskData(), nullptr);
    EXPECT_EQ(block.MaskDataBytesCount(), 0);
}

TEST(MaskBlock, HasNoPixelSetWhenItIsMadeWithSizes)
{
    DirtyHeap(35);
    const CMaskBlock block(7, 5);
    EXPECT_EQ(block.Width(), 7);
    EXPECT_EQ(block.Height(), 5);
    EXPECT_EQ(block.MaskDataBytesCount(), 35);
    EXPECT_EQ(Bytes(block), std::vector<std::uint8_t>(35, 0));
}

TEST(MaskBlock, HoldsWidthHeightAndBufferInThisOrder)
{
    CMaskBlock block(7, 5);
    std::array<unsigned char, sizeof(CMaskBlock)> bytes = {};
    std::memcpy(bytes.data(), static_cast<const void*>(&block), bytes.size());
    std::int32_t width = 0;
    std::int32_t height = 0;
    const std::uint8_t* buffer = nullptr;
    std::memcpy(&width, bytes.data(), sizeof width);
    std::memcpy(&height, bytes.data() + 4, sizeof height);
    std::memcpy(&buffer, bytes.data() + 8, sizeof buffer);
    EXPECT_EQ(width, 7);
    EXPECT_EQ(height, 5);
    EXPECT_NE(buffer, nullptr);
    EXPECT_EQ(buffer, block.MaskData());
}

TEST(MaskBlock, GivesTheSameBufferForWritingAndForReading)
{
    CMaskBlock block(4, 3);
    ASSERT_NE(block.MaskData(), nullptr);
    EXPECT_EQ(block.MaskData(), block.MaskData_Const());
    block.MaskData()[1 * 4 + 2] = 3;
    EXPECT_EQ(block.MaskData_Const()[6], 3);
}

TEST(MaskBlock, DropsItsContentsWithEveryInitialize)
{
    CMaskBlock block(8, 8);
    std::fill_n(block.MaskData(), 64, std::uint8_t{0xFF});
    for (const int height : {8, 2, 9}) {
        block.Initialize(8, height);
        EXPECT_EQ(block.Width(), 8);
        EXPECT_EQ(block.Height(), height);
        EXPECT_EQ(Bytes(block), std::vector<std::uint8_t>(static_cast<std::size_t>(8 * height), 0));
        std::fill_n(block.MaskData(), 8 * height, std::uint8_t{0xFF});
    }
}

TEST(MaskBlock, KeepsAnEmptyAllocationForAnAreaOfNothing)
{
    CMaskBlock block(3, 3);
    for (const auto& [width, height] : {std::pair{0, 0}, std::pair{0, 7}, std::pair{7, 0}}) {
        block.Initialize(width, height);
        EXPECT_EQ(block.Width(), width);
        EXPECT_EQ(block.Height(), height);
        EXPECT_EQ(block.MaskDataBytesCount(), 0);
        EXPECT_NE(block.MaskData(), nullptr);
        block.ClearMaskData();
    }
    const CMaskBlock made(0, 0);
    EXPECT_NE(made.MaskData_Const(), nullptr);
}

TEST(MaskBlock, ClearsEveryByteAndKeepsSizesAndBuffer)
{
    CMaskBlock block(9, 6);
    const std::uint8_t* const buffer = block.MaskData_Const();
    std::fill_n(block.MaskData(), 54, std::uint8_t{3});
    block.ClearMaskData();
    EXPECT_EQ(Bytes(block), std::vector<std::uint8_t>(54, 0));
    EXPECT_EQ(block.MaskData_Const(), buffer);
    EXPECT_EQ(block.Width(), 9);
    EXPECT_EQ(block.Height(), 6);
}

TEST(MaskBlock, KeepsTheNewSizesAndNoBufferWhenInitializeFindsNoMemory)
{
    if (REFUSED_REQUEST_IS_FATAL)
        GTEST_SKIP() << "the sanitizer does not let the allocation fail";
    CMaskBlock block(6, 4);
    EXPECT_THROW(block.Initialize(-1, 5), std::bad_alloc);
    EXPECT_EQ(block.Width(), -1);
    EXPECT_EQ(block.Height(), 5);
    EXPECT_EQ(block.MaskDataBytesCount(), -5);
    EXPECT_EQ(block.MaskData(), nullptr);
    block.Initialize(2, 2); // the block itself is as good as new
    EXPECT_EQ(Bytes(block), std::vector<std::uint8_t>(4, 0));
}

TEST(MaskBlock, CannotBeMadeWithANegativeProduct)
{
    if (REFUSED_REQUEST_IS_FATAL)
        GTEST_SKIP() << "the sanitizer does not let the allocation fail";
    EXPECT_THROW(CMaskBlock(-3, 2), std::bad_alloc);
    EXPECT_THROW(CMaskBlock(1, std::numeric_limits<int>::min()), std::bad_alloc);
    EXPECT_THROW(CMaskBlock(65536, 32768), std::bad_alloc); // 2 to the 31st: negative in 32 bits
}

TEST(MaskBlock, TakesItsSizeFromTheProductInThirtyTwoBits)
{
    CMaskBlock block(-2, -3); // the product alone counts
    EXPECT_EQ(block.MaskDataBytesCount(), 6);
    EXPECT_EQ(Bytes(block), std::vector<std::uint8_t>(6, 0));
    block.Initialize(65536, 65537);
    EXPECT_EQ(block.MaskDataBytesCount(), 65536);
    EXPECT_EQ(Bytes(block), std::vector<std::uint8_t>(65536, 0));
    block.Initialize(65536, 65536);
    EXPECT_EQ(block.MaskDataBytesCount(), 0);
    EXPECT_NE(block.MaskData(), nullptr);
}

TEST(MaskBlock, SharesItsBufferWithACopy)
{
    CMaskBlock owner(5, 2);
    CMaskBlock assigned;
    EXPECT_EQ(&(assigned = owner), &assigned);
    EXPECT_EQ(assigned.Width(), 5);
    EXPECT_EQ(assigned.Height(), 2);
    EXPECT_EQ(assigned.MaskData(), owner.MaskData());
    owner.MaskData()[9] = 1;
    EXPECT_EQ(assigned.MaskData_Const()[9], 1);

    CMaskBlock copied(owner);
    EXPECT_EQ(copied.MaskData(), owner.MaskData());

    // Only one may go on owning the buffer: an empty block over the others makes them forget it.
    assigned = CMaskBlock();
    copied = CMaskBlock();
    EXPECT_EQ(assigned.MaskData(), nullptr);
    EXPECT_EQ(Bytes(owner)[9], 1);
}
