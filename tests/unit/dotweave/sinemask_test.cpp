#include "dotweave/sinemask.h"

#include "logcapture.h"
#include "logscopes.h"
#include "refusedrequest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

namespace {

/// A mask of the kind that the generator uses, made from its arguments.
class CStoredMask : public CSineMask {
public:
    CStoredMask(int featherHeight, int maskWidth, int dotBits)
    {
        EXPECT_TRUE(Create(featherHeight, maskWidth, dotBits, SinMaskType_Stored));
    }
};

std::vector<std::uint8_t> Down(const CSineMask& mask)
{
    return {mask.MaskBuffer_Down_Get(), mask.MaskBuffer_Down_Get() + mask.MaskSize_Get()};
}

std::vector<std::uint8_t> Up(const CSineMask& mask)
{
    return {mask.MaskBuffer_Up_Get(), mask.MaskBuffer_Up_Get() + mask.MaskSize_Get()};
}

/// Marked rows of a column, counted from row 0; -1 when a row below the first clear one is marked.
int MarkedRows(const CSineMask& mask, int column)
{
    int marked = 0;
    bool isOver = false;
    for (int row = 0; row < mask.MaskHeight_Get(); ++row) {
        const bool isMarked = mask.MaskBuffer_Down_Get()[row * mask.MaskWidth_Get() + column] != 0;
        if (isMarked && isOver)
            return -1;
        isOver = !isMarked;
        marked += isMarked ? 1 : 0;
    }
    return marked;
}

/// Length of a column's run by the agreed literals, operation for operation.
int AgreedRows(int column, int width, int height)
{
    double value = static_cast<double>(column) * 6.2831852;
    value = value / width;
    value = std::sin(value - 1.5707963);
    value = value + 1.0;
    value = value * 0.5;
    value = value * height;
    value = value + 0.5;
    return std::min(static_cast<int>(value) + 1, height);
}

} // namespace

static_assert(!std::is_polymorphic_v<CSineMask>, "the class is plain");
static_assert(sizeof(CSineMask) == 48, "five numbers, two buffers, a number");
static_assert(sizeof(ESinMaskType) == 4 && SinMaskType_Stored == 1 && SinMaskType_Probe == 2);

TEST(SineMask, IsEmptyBeforeItIsCreated)
{
    const CSineMask mask;
    EXPECT_EQ(mask.MaskBuffer_Down_Get(), nullptr);
    EXPECT_EQ(mask.MaskBuffer_Up_Get(), nullptr);
    EXPECT_EQ(mask.MaskSize_Get(), 0);
}

TEST(SineMask, IsAtMostHalfTheFeatherAndATenthWide)
{
    const CStoredMask worked(20, 100, 1);
    EXPECT_EQ(worked.MaskHeight_Get(), 10);
    EXPECT_EQ(worked.FeatherMask_Size(), 2000);
    EXPECT_EQ(worked.SineMask_Offset_InFeather(), 1000);
    const CLogCapture log;
    for (int featherHeight = 0; featherHeight <= 60; ++featherHeight) {
        for (const int width : {0, 1, 9, 10, 19, 20, 99, 100, 109, 544}) {
            const CStoredMask mask(featherHeight, width, 1);
            const int height = mask.MaskHeight_Get();
            EXPECT_EQ(mask.FeatherHeight_Get(), featherHeight);
            EXPECT_EQ(mask.MaskWidth_Get(), width);
            EXPECT_LE(2 * height, featherHeight);
            EXPECT_LE(10 * height, width);
            EXPECT_TRUE(2 * (height + 1) > featherHeight || 10 * (height + 1) > width) << "could be higher";
            EXPECT_EQ(mask.MaskSize_Get(), height * width);
            EXPECT_EQ(mask.FeatherMask_Size(), featherHeight * width);
            // the mask ends where the region ends
            EXPECT_EQ(mask.SineMask_Offset_InFeather() + mask.MaskSize_Get(), mask.FeatherMask_Size());
            EXPECT_NE(mask.MaskBuffer_Down_Get(), nullptr); // also for an allocation of nothing
            EXPECT_NE(mask.MaskBuffer_Up_Get(), nullptr);
        }
    }
    EXPECT_TRUE(log.Records().empty());
}

TEST(SineMask, ColumnsFollowTheAgreedLiterals)
{
    for (int width = 10; width <= 544; width += width < 130 ? 1 : 23) {
        for (int height = 1; height <= width / 10; height += height < 14 ? 1 : 5) {
            const CStoredMask mask(2 * height + 1, width, 1);
            ASSERT_EQ(mask.MaskHeight_Get(), height);
            for (int column = 0; column < width; ++column)
                ASSERT_EQ(MarkedRows(mask, column), AgreedRows(column, width, height))
                    << "column " << column << " of " << width << ", height " << height;
            ASSERT_EQ(MarkedRows(mask, 0), 1);
            if (width % 2 == 0) {
                ASSERT_EQ(MarkedRows(mask, width / 2), height);
            }
        }
    }
}

TEST(SineMask, FollowsARaisedCosineOneRowLonger)
{
    // at most half a row off the curve by rounding, and one row longer
    const double pi = std::acos(-1.0);
    const CStoredMask mask(108, 544, 1);
    ASSERT_EQ(mask.MaskHeight_Get(), 54);
    for (int column = 0; column < 544; ++column) {
        const double curve = 54 * (1.0 - std::cos(2.0 * pi * column / 544)) / 2.0;
        const double run = MarkedRows(mask, column);
        EXPECT_LE(run, std::min(curve + 1.5001, 54.0)) << column;
        EXPECT_GE(run, std::min(curve + 0.4999, 54.0)) << column;
    }
}

TEST(SineMask, RoundsAsTheLiteralsAndNotAsPi)
{
    // A third of the width is three quarters of the height: 4.5 + 0.5 rows. The literal for two pi is a
    // little short, so the rising side stays just below 5 and the falling side just above; with pi it is the
    // reverse.
    const CStoredMask mask(12, 63, 1);
    ASSERT_EQ(mask.MaskHeight_Get(), 6);
    EXPECT_EQ(MarkedRows(mask, 21), 5);
    EXPECT_EQ(MarkedRows(mask, 42), 6);
}

TEST(SineMask, MarksWithTheValueOfAFullDot)
{
    const std::uint8_t marks[] = {0x00, 0x01, 0x03};
    const std::uint8_t complements[] = {0xFF, 0xFE, 0xFC};
    for (int dotBits = 0; dotBits <= 2; ++dotBits) {
        const CStoredMask mask(20, 100, dotBits);
        const std::vector<std::uint8_t> down = Down(mask);
        const std::vector<std::uint8_t> up = Up(mask);
        for (int row = 0; row < 10; ++row) {
            for (int column = 0; column < 100; ++column) {
                const bool isMarked = row < AgreedRows(column, 100, 10);
                const std::size_t at = static_cast<std::size_t>(row) * 100 + static_cast<std::size_t>(column);
                ASSERT_EQ(down[at], isMarked ? marks[dotBits] : 0x00)
                    << dotBits << ": " << row << ", " << column;
                ASSERT_EQ(up[at], isMarked ? complements[dotBits] : 0xFF)
                    << dotBits << ": " << row << ", " << column;
            }
        }
    }
}

TEST(SineMask, KeepsNoDownBufferAfterAProbe)
{
    const CLogCapture log;
    CSineMask mask;
    EXPECT_TRUE(mask.Create(20, 100, 1, SinMaskType_Probe));
    EXPECT_EQ(mask.MaskBuffer_Down_Get(), nullptr);
    EXPECT_EQ(mask.MaskSize_Get(), 0);
    EXPECT_NE(mask.MaskBuffer_Up_Get(), nullptr); // an allocation of nothing
    EXPECT_EQ(mask.MaskHeight_Get(), 10);
    EXPECT_EQ(mask.MaskWidth_Get(), 100);
    EXPECT_EQ(mask.FeatherMask_Size(), 2000);
    EXPECT_EQ(mask.SineMask_Offset_InFeather(), 1000);
    EXPECT_TRUE(log.Records().empty());
}

TEST(SineMask, AnUnknownTypeFails)
{
    for (const int type : {0, 3, -1}) {
        const CLogCapture log;
        CSineMask mask;
        EXPECT_FALSE(mask.Create(20, 100, 1, static_cast<ESinMaskType>(type)));
        EXPECT_EQ(log.Records(), std::vector<SLogRecord>{Failure(UNIT_SINE, SCOPE_SINE_CREATE)}) << type;
        EXPECT_EQ(mask.MaskBuffer_Down_Get(), nullptr);
        EXPECT_EQ(mask.MaskBuffer_Up_Get(), nullptr);
        EXPECT_EQ(mask.MaskSize_Get(), 0);
    }
}

TEST(SineMask, DoesNotRejectNegativeSizes)
{
    // one negative size gives a negative height; two of them a positive number of bytes, none of them marked
    const CStoredMask mask(-20, -100, 1);
    EXPECT_EQ(mask.MaskHeight_Get(), -10);
    EXPECT_EQ(mask.MaskSize_Get(), 1000);
    EXPECT_EQ(Down(mask), std::vector<std::uint8_t>(1000, 0x00));
    EXPECT_EQ(Up(mask), std::vector<std::uint8_t>(1000, 0xFF));
    EXPECT_EQ(mask.FeatherMask_Size(), 2000);
    EXPECT_EQ(mask.SineMask_Offset_InFeather(), 1000);

    const CStoredMask shallow(-1, 100, 1); // division truncates towards 0
    EXPECT_EQ(shallow.MaskHeight_Get(), 0);
    EXPECT_EQ(shallow.MaskSize_Get(), 0);
    EXPECT_EQ(shallow.FeatherMask_Size(), -100);

    const CStoredMask turned(20, -100, 1);
    EXPECT_EQ(turned.MaskHeight_Get(), -10);
    EXPECT_EQ(turned.MaskSize_Get(), 1000);
    EXPECT_EQ(turned.SineMask_Offset_InFeather(), -3000);
}

TEST(SineMask, FindsNoMemoryForNegativeSizes)
{
    if (REFUSED_REQUEST_IS_FATAL)
        GTEST_SKIP() << "the sanitizer does not let the allocation fail";
    CSineMask mask; // stored: a compiler may leave a probe's buffer out, which nobody reads
    EXPECT_THROW(mask.Create(-20, 100, 1, SinMaskType_Stored), std::bad_alloc);
    EXPECT_EQ(mask.MaskBuffer_Down_Get(), nullptr);
    EXPECT_EQ(mask.MaskBuffer_Up_Get(), nullptr);
}

// ---- who owns the buffers

TEST(SineMaskCopy, SharesTheBuffers)
{
    const CStoredMask owner(20, 100, 2);
    CSineMask assigned;
    EXPECT_EQ(&(assigned = owner), &assigned);
    CSineMask constructed(owner);
    for (CSineMask* copy : {&assigned, &constructed}) {
        EXPECT_EQ(copy->MaskBuffer_Down_Get(), owner.MaskBuffer_Down_Get());
        EXPECT_EQ(copy->MaskBuffer_Up_Get(), owner.MaskBuffer_Up_Get());
        EXPECT_EQ(copy->MaskSize_Get(), 1000);
        EXPECT_EQ(copy->MaskHeight_Get(), 10);
        EXPECT_EQ(copy->MaskWidth_Get(), 100);
        EXPECT_EQ(copy->FeatherHeight_Get(), 20);
        *copy = CSineMask(); // only one may own the buffers
        EXPECT_EQ(copy->MaskBuffer_Down_Get(), nullptr);
        EXPECT_EQ(owner.MaskBuffer_Down_Get()[0], 0x03);
    }
}

TEST(SineMaskCopy, ASecondCreateKeepsTheOldBuffers)
{
    CStoredMask mask(20, 100, 2);
    const std::vector<std::uint8_t> oldDown = Down(mask);
    const std::vector<std::uint8_t> oldUp = Up(mask);
    const std::unique_ptr<const std::uint8_t[]> down(mask.MaskBuffer_Down_Get());
    const std::unique_ptr<const std::uint8_t[]> up(mask.MaskBuffer_Up_Get());
    ASSERT_TRUE(mask.Create(20, 100, 1, SinMaskType_Stored));
    // An allocator hands out freed memory again for buffers of the same size.
    EXPECT_NE(mask.MaskBuffer_Down_Get(), down.get());
    EXPECT_NE(mask.MaskBuffer_Up_Get(), up.get());
    EXPECT_EQ(mask.MaskBuffer_Down_Get()[0], 0x01);
    EXPECT_TRUE(std::equal(oldDown.begin(), oldDown.end(), down.get()));
    EXPECT_TRUE(std::equal(oldUp.begin(), oldUp.end(), up.get()));
}
