#include "sheet/builtcheck.h"

#include "maskparams.h"
#include "randomrecords.h"
#include "view/maskview.h"

#include <dotweave/maskparam_refusal.h>

#include <gtest/gtest.h>

#include <array>
#include <random>

using namespace dotweave;

namespace {

/// 24 nozzle rows, 1 pass, 2 x 2 resolution passes, 2 colours of 2 bits, the sine edge on smooth-3 ramps.
constexpr SMaskParam SINE = {24, 1, 2, 2, 2, 2, 1, 50, 3, 1, 100, 0};

/// The bytes of a mask, to be damaged: they belong to the object, which hands them out to readers.
std::uint8_t* Bytes(const CMaskData_Base& mask)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    return const_cast<std::uint8_t*>(CMaskView(mask).Lines(0, 0).bytes);
}

SBuiltCheck AllColors_Check(CMaskData_Base& mask)
{
    const CMaskLaw law(mask);
    SBuiltCheck check;
    for (int color = 0; color < law.Shape().colorCount; ++color)
        check.Add(Built_Check(mask, law, color));
    return check;
}

/// Hard edges over 101 threshold columns, so that lines of 13 bytes end with 3 bits of padding.
class CNarrowMask : public CMaskData_Base {
protected:
    bool InitNoneRes_FeatherNone() override
    {
        m_baseMaskWidth = 101;
        return CMaskData_Base::InitNoneRes_FeatherNone();
    }
};

/// Says that its matrix repeats after fewer rows than it does.
class CSeamMask : public CMaskData_Base {
public:
    void MatrixRows_Set(int rows) { m_baseMaskHeight = rows; }
};

} // namespace

TEST(BuiltCheck, FindsOneFlippedBitInTenPlaces)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(SINE));
    const SMaskShape shape = MaskShape_Of(mask);
    const std::int64_t line = shape.lineBytes;
    const std::int64_t position = shape.PositionBytes();
    const std::int64_t color = position * shape.positionCount;
    const std::array<std::int64_t, 10> places = {
        0,                           // first byte of all
        line - 1,                    // end of the first line
        line,                        // second line: the other Y resolution pass
        position / 2,                // middle of a band
        position - 1,                // end of a position, where the sine edge takes dots away
        position - line / 2,         // the same in the middle of the line
        position,                    // second position
        color - 1,                   // end of a colour
        color + position + 7 * line, // the other colour, among the first feather rows
        shape.ByteCount() - 1};      // last byte of all
    for (const std::int64_t place : places) {
        const int bit = static_cast<int>(place % 8);
        SCOPED_TRACE(testing::Message() << "byte " << place << ", bit " << bit);
        Bytes(mask)[place] ^= static_cast<std::uint8_t>(1 << bit);
        const CMaskLaw law(mask);
        const auto damaged = static_cast<int>(place / color);
        const SBuiltCheck check = Built_Check(mask, law, damaged);
        EXPECT_EQ(check.wrongPixelCount, 1);
        EXPECT_FALSE(check.IsGood());
        EXPECT_EQ(check.position, place % color / position);
        EXPECT_EQ(check.line, place % position / line);
        EXPECT_EQ(check.column, place % line * 4 + (7 - bit) / 2); // four pixels of two bits a byte
        EXPECT_TRUE(Built_Check(mask, law, 1 - damaged).IsGood());
        Bytes(mask)[place] ^= static_cast<std::uint8_t>(1 << bit);
    }
    EXPECT_TRUE(AllColors_Check(mask).IsGood());
}

TEST(BuiltCheck, FindsABitInThePadding)
{
    CNarrowMask mask;
    ASSERT_TRUE(mask.Create(MaskParam_Plain()));
    ASSERT_EQ(MaskShape_Of(mask).lineBytes, 13);
    EXPECT_TRUE(AllColors_Check(mask).IsGood());
    Bytes(mask)[5 * 13 + 12] |= 1U;
    const SBuiltCheck check = AllColors_Check(mask);
    EXPECT_EQ(check.paddingBitCount, 1);
    EXPECT_EQ(check.wrongPixelCount, 0);
    EXPECT_EQ(check.line, 5);
    EXPECT_EQ(check.column, -1);
    EXPECT_FALSE(check.IsGood());
}

TEST(BuiltCheck, FindsASeamBetweenPositions)
{
    SMaskParam param = MaskParam_Plain();
    param.basePass = 4;
    CSeamMask mask; // 4 positions of 136 rows are the 544 rows of the matrix
    ASSERT_TRUE(mask.Create(param));
    EXPECT_TRUE(AllColors_Check(mask).wrapsWithoutSeam);
    mask.MatrixRows_Set(500);
    EXPECT_FALSE(AllColors_Check(mask).wrapsWithoutSeam);
}

TEST(BuiltCheckProperty, RandomModesAreAsBuilt)
{
    std::mt19937 random(20); // the seed of the failing record is this one
    for (int built = 0; built < 15;) {
        const SMaskParam param = ValidParam(random);
        if (!MaskParam_Refusal(param).empty())
            continue;
        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(param)) << param;
        EXPECT_TRUE(AllColors_Check(mask).IsGood()) << param;
        ++built;
    }
}
