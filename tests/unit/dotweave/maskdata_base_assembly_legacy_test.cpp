#include "dotweave/maskdata_base.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "logcapture.h"
#include "logscopes.h"
#include "maskdots.h"
#include "maskparams.h"
#include "peek.h"
#include "plainmask.h"

namespace {

class CRandomParams {
public:
    explicit CRandomParams(unsigned int seed) : m_random(seed) {}

    int Any(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_random); }

    /// A small mode. Not every one can be built.
    SMaskParam Next(int featherMode, int featherNozzleType)
    {
        SMaskParam param = {};
        param.nozzleCount = Any(1, 60);
        param.basePass = Any(1, 5);
        param.xResPass = Any(1, 3);
        param.yResPass = Any(1, 3);
        param.colorCount = Any(1, 2);
        param.bitsPerPixel = Any(1, 2);
        param.featherMode = featherMode;
        param.featherPercent = static_cast<float>(Any(0, 100));
        param.featherNozzleType = featherNozzleType;
        param.colorTimes = Any(1, param.basePass);
        param.featherLevelPercent = Any(0, 100);
        param.resSplitType = Any(0, 5);
        return param;
    }

private:
    std::mt19937 m_random;
};

/// Takes the block of a created object away, as it is before the assembly.
void Block_Drop(SMaskData_Base_Peek& peek)
{
    delete peek.MaskBlock();
    peek.MaskBlock() = nullptr;
}

TEST(MaskDataBaseAssemblyLegacy, EqualsTheGeneratorInEveryModeWithoutSine)
{
    constexpr unsigned int SEED = 7;
    struct SMode {
        int featherMode;
        int featherNozzleType;
    };
    for (const SMode& mode : {SMode{0, 1}, SMode{0, 2}, SMode{0, 77}, SMode{1, 1}, SMode{1, 2}}) {
        CRandomParams params(SEED);
        int builtCount = 0;
        for (int i = 0; i < 25; ++i) {
            const SMaskParam param = params.Next(mode.featherMode, mode.featherNozzleType);
            SCOPED_TRACE(testing::Message() << "seed " << SEED << ", record " << i << " " << param);
            const CLogCapture log;
            CMaskData_Base mask;
            if (!mask.Create(param))
                continue;
            ++builtCount;
            const std::vector<std::uint8_t> bytes = Bytes({mask});
            ASSERT_EQ(Bytes_Old({mask}), bytes);
            EXPECT_TRUE(log.Records().empty());
        }
        EXPECT_GE(builtCount, 8) << mode.featherMode << ", " << mode.featherNozzleType;
    }
}

/// Moves the dots of every block of a mask object along the sine, in its packed bytes.
void Bytes_MoveDots(CMaskData_Base& mask, std::vector<std::uint8_t>& bytes)
{
    SMaskData_Base_Peek peek{mask};
    const int height = peek.MaskHeight_NoneRes();
    const int lineBytes = mask.MaskLineBytes_OneColor();
    const int yRes = mask.YResPass();
    const int xRes = mask.XResPass();
    const int bits = mask.BitsPerPixel();
    const int featherRows = Plain_FeatherRows(height, peek.StepHeight_NoneRes());
    const std::ptrdiff_t lineDistance = static_cast<std::ptrdiff_t>(yRes) * lineBytes;
    const int positionCount = static_cast<int>(bytes.size()) / mask.MaskBytes_OnePosition(); // of all colours
    for (int position = 0; position < positionCount; ++position) {
        for (int r = 0; r < yRes; ++r) {
            std::uint8_t* firstLine = bytes.data() +
                                      static_cast<std::ptrdiff_t>(position) * mask.MaskBytes_OnePosition() +
                                      static_cast<std::ptrdiff_t>(r) * lineBytes;
            for (int k = 0; k < xRes; ++k) {
                CPlainDots dots;
                dots.reserve(static_cast<std::size_t>(height) * 544);
                for (int y = 0; y < height; ++y) {
                    for (int x = 0; x < 544; ++x)
                        dots.push_back(
                            Plain_Pixel(firstLine + y * lineDistance, bits, x * xRes + k) != 0 ? 1 : 0);
                }
                Plain_MoveDots(dots, 544, height, featherRows);
                std::size_t next = 0;
                for (int y = 0; y < height; ++y) {
                    std::uint8_t* line = firstLine + y * lineDistance;
                    for (int x = 0; x < 544; ++x) {
                        const int firstBit = (x * xRes + k) * bits;
                        const int shift = 8 - bits - firstBit % 8;
                        const int full = ((1 << bits) - 1) << shift;
                        line[firstBit / 8] = static_cast<std::uint8_t>((line[firstBit / 8] & ~full) |
                                                                       (dots[next++] != 0 ? full : 0));
                    }
                }
            }
        }
    }
}

TEST(MaskDataBaseAssemblyLegacy, LacksNothingButTheSineStep)
{
    constexpr unsigned int SEED = 11;
    for (const int featherMode : {0, 1}) { // the generator goes by the type, whatever the mode
        CRandomParams params(SEED);
        int movedCount = 0;
        for (int i = 0; i < 25; ++i) {
            const SMaskParam param = params.Next(featherMode, FeatherNozzle_Smooth_3_Sine);
            SCOPED_TRACE(testing::Message() << "seed " << SEED << ", record " << i << " " << param);
            const CLogCapture log;
            CMaskData_Base mask;
            if (!mask.Create(param))
                continue;
            const std::vector<std::uint8_t> bytes = Bytes({mask});
            std::vector<std::uint8_t> expected = Bytes_Old({mask});
            movedCount += expected != bytes ? 1 : 0;
            // Hard edges that turned into feather zones have left the type behind, and the sine with it.
            if (mask.MaskParam_Current().featherNozzleType == FeatherNozzle_Smooth_3_Sine)
                Bytes_MoveDots(mask, expected);
            ASSERT_EQ(bytes, expected);
        }
        EXPECT_GE(movedCount, 2) << featherMode;
    }
}

TEST(MaskDataBaseAssemblyLegacy, WithoutColoursAnEmptyBlockIsAllThereIs)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(MaskParam_Plain()));
    SMaskData_Base_Peek peek{mask};
    Block_Drop(peek);
    peek.Current().colorCount = 0;
    const CLogCapture log;
    EXPECT_TRUE(peek.CreateMaskData_Old());
    ASSERT_NE(peek.MaskBlock(), nullptr);
    EXPECT_EQ(peek.MaskBlock()->Height(), 0);
    EXPECT_EQ(peek.MaskBlock()->Width(), mask.MaskBytes_OneColor());
    EXPECT_EQ(peek.MaskBlock()->MaskDataBytesCount(), 0);
    EXPECT_NE(peek.MaskBlock()->MaskData(), nullptr);
    EXPECT_TRUE(log.Records().empty());
}

TEST(MaskDataBaseAssemblyLegacy, ACutTableThatCannotBeBuiltFailsBeforeTheBlockIsMade)
{
    struct SCase {
        int featherMode;
        int featherNozzleType;
        std::string text; // of the record that comes first; empty for none
    };
    for (const SCase& c : {SCase{7, 1, "m_maskParam_Current.featherMode = 7"}, SCase{1, 4, ""},
                           SCase{1, 0, "m_maskParam_Current.featherNozzleType = 0"}}) {
        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(MaskParam_Plain()));
        SMaskData_Base_Peek peek{mask};
        Block_Drop(peek);
        peek.Current().featherMode = c.featherMode;
        peek.Current().featherNozzleType = c.featherNozzleType;
        std::vector<SLogRecord> expected = {Failure(UNIT_MASK, SCOPE_MASK_DATA_OLD)};
        if (!c.text.empty())
            expected.insert(expected.begin(), {SCOPE_CUT_TABLE, UNIT_MASK, LINE_ANY, 2, c.text});
        const CLogCapture log;
        EXPECT_FALSE(peek.CreateMaskData_Old());
        EXPECT_EQ(log.Records(), expected);
        EXPECT_EQ(peek.MaskBlock(), nullptr);
    }
}

TEST(MaskDataBaseAssemblyLegacy, AllocationsThatNoMemoryCanServeAreThrown)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(MaskParam_Plain()));
    SMaskData_Base_Peek peek{mask};
    Block_Drop(peek);
    peek.Current().colorCount = -1;
    EXPECT_THROW(peek.CreateMaskData_Old(), std::bad_alloc);
    EXPECT_EQ(peek.MaskBlock(), nullptr);
}

} // namespace
