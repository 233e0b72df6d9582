#include "dotweave/maskblock.h"

#include "dirtyheap.h"
#include "refusedrequest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
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
static_assert(sizeof(CMaskBlock) == 16, "three fields, no gaps");

TEST(MaskBlock, IsEmptyWithoutSizes)
{
    CMaskBlock block;
    block.ClearMaskData(); // of nothing
    EXPECT_EQ(block.Width(), 0);
    EXPECT_EQ(block.Height(), 0);
    EXPECT_EQ(block.MaskDataBytesCount(), 0);
    EXPECT_EQ(block.MaskData(), nullptr);
    EXPECT_EQ(block.MaskData_Const(), nullptr);
}

TEST(MaskBlock, FieldsAreInTheAgreedOrder)
{
    CMaskBlock block(7, 5);
    struct SFields {
        std::int32_t width, height;
        std::uint8_t* buffer;
    };
    const auto fields =
        std::bit_cast<SFields>(reinterpret_cast<const std::array<char, sizeof(SFields)>&>(block));
    EXPECT_EQ(fields.width, 7);
    EXPECT_EQ(fields.height, 5);
    EXPECT_EQ(fields.buffer, block.MaskData());
    EXPECT_NE(fields.buffer, nullptr);
}

TEST(MaskBlock, EveryInitializeGivesZeros)
{
    DirtyHeap(35);
    CMaskBlock block(7, 5);
    for (const auto& [width, height] : {std::pair{7, 5}, std::pair{8, 8}, std::pair{8, 2}, std::pair{8, 9},
                                        std::pair{0, 0}, std::pair{0, 7}, std::pair{7, 0}, std::pair{-2, -3},
                                        std::pair{65536, 65537}, std::pair{65536, 65536}}) {
        SCOPED_TRACE(testing::Message() << width << " x " << height);
        if (width != 7 || height != 5) // as it was made
            block.Initialize(width, height);
        // The product in 32 bits alone counts. It may be 0, which is an allocation of nothing.
        const auto bytes =
            static_cast<std::int32_t>(static_cast<std::uint32_t>(width) * static_cast<std::uint32_t>(height));
        EXPECT_EQ(block.Width(), width);
        EXPECT_EQ(block.Height(), height);
        EXPECT_EQ(block.MaskDataBytesCount(), bytes);
        const std::vector<std::uint8_t> zeros(static_cast<std::size_t>(bytes));
        EXPECT_TRUE(Bytes(block) == zeros);
        EXPECT_NE(block.MaskData(), nullptr);
        EXPECT_EQ(block.MaskData(), block.MaskData_Const());
        for (const std::uint8_t value :
             {std::uint8_t{0x03},
              std::uint8_t{0xFF}}) { // what a clearing must remove, and the next Initialize
            std::fill_n(block.MaskData(), bytes, value);
            if (value == 0x03) {
                block.ClearMaskData();
                EXPECT_TRUE(Bytes(block) == zeros);
            }
        }
    }
}

TEST(MaskBlock, KeepsTheNewSizesWithoutMemory)
{
    if (REFUSED_REQUEST_IS_FATAL)
        GTEST_SKIP() << "the sanitizer does not let the allocation fail";
    CMaskBlock block(6, 4);
    EXPECT_THROW(block.Initialize(-1, 5), std::bad_alloc);
    EXPECT_EQ(block.Width(), -1);
    EXPECT_EQ(block.Height(), 5);
    EXPECT_EQ(block.MaskDataBytesCount(), -5);
    EXPECT_EQ(block.MaskData(), nullptr);
    block.Initialize(2, 2); // the block can be used again
    EXPECT_EQ(Bytes(block), std::vector<std::uint8_t>(4, 0));
}

TEST(MaskBlock, NeedsAProductThatIsNotNegative)
{
    if (REFUSED_REQUEST_IS_FATAL)
        GTEST_SKIP() << "the sanitizer does not let the allocation fail";
    EXPECT_THROW(CMaskBlock(-3, 2), std::bad_alloc);
    EXPECT_THROW(CMaskBlock(1, std::numeric_limits<int>::min()), std::bad_alloc);
    EXPECT_THROW(CMaskBlock(65536, 32768), std::bad_alloc); // 2 to the 31st: negative in 32 bits
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

    // Only one may own the buffer: an empty block makes the others forget it.
    assigned = CMaskBlock();
    copied = CMaskBlock();
    EXPECT_EQ(assigned.MaskData(), nullptr);
    EXPECT_EQ(Bytes(owner)[9], 1);
}
