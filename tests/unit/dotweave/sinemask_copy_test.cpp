// Who owns the buffers of a sine mask that is copied or created twice.

#include "dotweave/sinemask.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace {

/// 10 rows of 100 columns, two bits per dot.
class SineMaskCopy : public testing::Test {
protected:
    SineMaskCopy() { EXPECT_TRUE(m_owner.Create(20, 100, 2, SinMaskType_Stored)); }

    void ExpectShared(const CSineMask& copy)
    {
        EXPECT_EQ(copy.MaskBuffer_Down_Get(), m_owner.MaskBuffer_Down_Get());
        EXPECT_EQ(copy.MaskBuffer_Up_Get(), m_owner.MaskBuffer_Up_Get());
        EXPECT_EQ(copy.MaskSize_Get(), 1000);
        EXPECT_EQ(copy.MaskHeight_Get(), 10);
        EXPECT_EQ(copy.MaskWidth_Get(), 100);
        EXPECT_EQ(copy.FeatherHeight_Get(), 20);
    }

    CSineMask m_owner;
};

TEST_F(SineMaskCopy, AnAssignedMaskSharesTheBuffers)
{
    CSineMask assigned;
    CSineMask& result = assigned = m_owner;
    EXPECT_EQ(&result, &assigned);
    ExpectShared(assigned);
    assigned = CSineMask(); // only one may go on owning the buffers
    EXPECT_EQ(assigned.MaskBuffer_Down_Get(), nullptr);
    EXPECT_EQ(m_owner.MaskBuffer_Down_Get()[0], 0x03);
}

TEST_F(SineMaskCopy, ACopyConstructedMaskSharesTheBuffers)
{
    CSineMask copy(m_owner);
    ExpectShared(copy);
    copy = CSineMask();
    EXPECT_EQ(m_owner.MaskBuffer_Up_Get()[0], 0xFC);
}

TEST_F(SineMaskCopy, ASecondCreateLeavesTheBuffersOfTheFirstToWhoeverHasThem)
{
    const std::unique_ptr<const std::uint8_t[]> down(m_owner.MaskBuffer_Down_Get());
    const std::unique_ptr<const std::uint8_t[]> up(m_owner.MaskBuffer_Up_Get());
    ASSERT_TRUE(m_owner.Create(20, 100, 1, SinMaskType_Stored));
    // Memory that had been freed would be handed out again for buffers of the same size.
    EXPECT_NE(m_owner.MaskBuffer_Down_Get(), down.get());
    EXPECT_NE(m_owner.MaskBuffer_Up_Get(), up.get());
    EXPECT_EQ(m_owner.MaskBuffer_Down_Get()[0], 0x01);
    for (std::size_t i = 0; i < 1000; ++i) {
        ASSERT_EQ(down[i], m_owner.MaskBuffer_Down_Get()[i] == 0x01 ? 0x03 : 0x00) << i;
        ASSERT_EQ(up[i], 0xFF - down[i]) << i;
    }
}

} // namespace
