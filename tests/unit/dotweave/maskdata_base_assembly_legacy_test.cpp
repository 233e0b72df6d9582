#include "dotweave/maskdata_base.h"

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "geometrysteps.h"
#include "logcapture.h"
#include "maskbytes.h"
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

TEST(MaskLegacyAssembly, LacksNothingButTheSineStep)
{
    constexpr unsigned int SEED = 11;
    struct SMode {
        int featherMode;
        int featherNozzleType;
        int leastBuilt, leastMoved; // of the modes below, so that the law does not run empty
    };
    for (const SMode& mode : {SMode{0, 1, 8, 0}, SMode{0, 2, 8, 0}, SMode{0, 77, 8, 0}, SMode{1, 1, 8, 0},
                              SMode{1, 2, 8, 0}, SMode{0, 3, 8, 2}, SMode{1, 3, 8, 2}}) {
        CRandomParams params(SEED);
        int builtCount = 0;
        int movedCount = 0;
        for (int i = 0; i < 25; ++i) {
            const SMaskParam param = params.Next(mode.featherMode, mode.featherNozzleType);
            SCOPED_TRACE(testing::Message() << "seed " << SEED << ", record " << i << " " << param);
            CLogCapture log;
            CMaskData_Base mask;
            if (!mask.Create(param))
                continue;
            ++builtCount;
            const std::vector<std::uint8_t> bytes = MaskBytes(mask);
            std::vector<std::uint8_t> expected = Bytes_Old({mask});
            EXPECT_TRUE(log.Records().empty());
            movedCount += expected != bytes ? 1 : 0;
            // The generator looks at the type whatever the mode. Hard edges that turned into feather zones
            // have another type, and no sine.
            if (mask.MaskParam_Current().featherNozzleType == FeatherNozzle_Smooth_3_Sine)
                Bytes_MoveDots(mask, expected);
            ASSERT_TRUE(bytes == expected);
        }
        EXPECT_GE(builtCount, mode.leastBuilt) << mode.featherMode << ", " << mode.featherNozzleType;
        EXPECT_GE(movedCount, mode.leastMoved) << mode.featherMode << ", " << mode.featherNozzleType;
    }
}

TEST(MaskLegacyAssembly, WithoutColoursTheBlockIsEmpty)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    Geometry_Create(peek, MaskParam_Plain());
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

} // namespace
