#include "dotweave/maskdata_base.h"
#include "dotweave/maskparam_refusal.h"

#include "logcapture.h"
#include "maskparams.h"
#include "peek.h"
#include "refusals.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

constexpr int ALL_PROFILES[] = {FeatherNozzle_Smooth_2, FeatherNozzle_Smooth_3, FeatherNozzle_Smooth_3_Sine};

/// A mask object that stands behind its search for a matrix height.
struct SSizes {
    int maskHeight, positions, lineBytes, xResPass, yResPass, colorCount, matrixHeight;
};

bool IsSizeAccepted(const SSizes& sizes)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    peek.BaseMaskWidth() = 544;
    peek.BaseMaskHeight() = sizes.matrixHeight;
    peek.MaskHeight_NoneRes() = sizes.maskHeight;
    peek.PositionCount() = sizes.positions;
    peek.MaskLineBytes() = sizes.lineBytes;
    peek.Current().xResPass = sizes.xResPass;
    peek.Current().yResPass = sizes.yResPass;
    peek.Current().colorCount = sizes.colorCount;
    return peek.MaskSize_CanBeBuilt();
}

} // namespace

TEST(RefusalSize, MaskLinesBeyondThirtyTwoBits)
{
    // 544 * 3947580 + 7 = 2147483527; one X pass more is 544 bits too many. With 2 bits: 1088 * 1973790.
    struct SCase {
        int bitsPerPixel, xResPass;
    };
    for (const SCase& c : {SCase{1, 3947580}, SCase{2, 1973790}}) {
        SMaskParam param = MaskParam_Plain();
        param.bitsPerPixel = c.bitsPerPixel;
        param.xResPass = c.xResPass; // the line fits; then 544 rows are too few for so many passes
        EXPECT_EQ(RefusalOf(param),
                  Records({StepFailure("InitNoneRes_FeatherNone", 237), CreateFailure(117)}));
        param.xResPass = c.xResPass + 1;
        EXPECT_EQ(RefusalOf(param), Records({CreateFailure(85)}));
        param.xResPass = MOST;
        EXPECT_EQ(RefusalOf(param), Records({CreateFailure(85)}));
    }
}

TEST(RefusalSize, OnePositionOfMoreThanThirtyTwoBits)
{
    // 68 * 31580641 = 2147483588 bytes fit, and it is the next limit that refuses them.
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 31580641;
    EXPECT_EQ(RefusalOf(param), Records({CreateFailure(119)}));
    param.nozzleCount = 31580642;
    EXPECT_EQ(RefusalOf(param), Records({CreateFailure(117)}));
    param.nozzleCount = MOST;
    EXPECT_EQ(RefusalOf(param), Records({CreateFailure(117)}));
    // 8 Y passes: 68 * 8 * 3947576 = 2147481344 bytes of 3947576 rows, a multiple of 8; 8 rows more do not
    // fit.
    param.yResPass = 8;
    param.nozzleCount = 3947576;
    EXPECT_EQ(RefusalOf(param), Records({CreateFailure(119)}));
    param.nozzleCount = 3947584;
    EXPECT_EQ(RefusalOf(param), Records({CreateFailure(117)}));
    // And by 46341 Y passes the lines alone do not fit: 46341 squared is 2147488281.
    param.yResPass = 46341;
    param.nozzleCount = 46341;
    EXPECT_EQ(RefusalOf(param), Records({CreateFailure(117)}));
}

TEST(RefusalSize, OneColorOfMoreThanThirtyTwoBits)
{
    // 17 positions of 68 bytes: 1156 * 1857684 = 2147482704; a row more is 2147483860.
    EXPECT_TRUE(IsSizeAccepted({1857684, 17, 68, 1, 1, 1, 544}));
    EXPECT_FALSE(IsSizeAccepted({1857685, 17, 68, 1, 1, 1, 544}));
    EXPECT_TRUE(IsSizeAccepted({928842, 17, 68, 1, 2, 1, 544}));
    EXPECT_FALSE(IsSizeAccepted({928843, 17, 68, 1, 2, 1, 544}));
    EXPECT_FALSE(IsSizeAccepted({31580641, MOST, 68, 1, 1, 1, 544}));
}

TEST(RefusalSize, AllColorsOfMoreThanThirtyTwoBits)
{
    // 5440 rows of 272 bytes are 1479680; 1451 colours are 2147015680, one more is 2148495360.
    EXPECT_TRUE(IsSizeAccepted({5440, 1, 272, 2, 1, 1451, 544}));
    EXPECT_FALSE(IsSizeAccepted({5440, 1, 272, 2, 1, 1452, 544}));
    EXPECT_FALSE(IsSizeAccepted({5440, 1, 272, 2, 1, MOST, 544}));
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 5440;
    param.xResPass = 2;
    param.bitsPerPixel = 2;
    param.colorCount = 1452;
    EXPECT_EQ(RefusalOf(param), Records({CreateFailure(119)}));
    param.colorCount = MOST;
    EXPECT_EQ(RefusalOf(param), Records({CreateFailure(119)}));
}

TEST(RefusalSize, ThresholdPlanesMayTakeAnyMemory)
{
    // A plane of 544 * 544 cells is 591872 bytes, so 3629 are more than 2147483647. No sum of them is ever
    // formed.
    EXPECT_TRUE(IsSizeAccepted({136, 4, 68, 1, 1, 3629, 544}));
    EXPECT_TRUE(IsSizeAccepted({1, 273, 68, 1, 1, 7231, 273}));
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 136;
    param.colorCount = 3629;
    EXPECT_EQ(MaskParam_Refusal(param), "");
}

TEST(RefusalSize, MatricesThatTheSearchDidNotFind)
{
    EXPECT_TRUE(IsSizeAccepted({136, 4, 68, 1, 1, 1, 544}));
    EXPECT_FALSE(IsSizeAccepted({136, 0, 68, 1, 1, 1, 544}));
    EXPECT_FALSE(IsSizeAccepted({136, 4, 68, 1, 1, 1, -1}));
    EXPECT_FALSE(IsSizeAccepted({136, 4, 68, 1, 1, 1, 0}));
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 15790321; // prime: no height repeats within 32 bits
    EXPECT_EQ(RefusalOf(param), Records({CreateFailure(119)}));
}

TEST(RefusalSize, LongestHeadOverflowsNothing)
{
    for (const int passes : {1, 2, 3, 46341, MOST / 2, MOST / 2 + 1, MOST - 1, MOST}) {
        for (const int rows : {MOST, MOST - 1, MOST / 2, LEAST}) {
            for (const int times : {1, passes}) {
                SMaskParam hard = MaskParam_Plain();
                hard.nozzleCount = rows;
                hard.basePass = passes;
                hard.colorTimes = times;
                EXPECT_FALSE(RefusalOf(hard).empty());
                for (const int type : ALL_PROFILES) {
                    for (const float percent : {0.0F, 50.0F, 100.0F}) {
                        SMaskParam param = MaskParam_Feathered(type, rows, passes, percent);
                        param.colorTimes = times;
                        EXPECT_FALSE(RefusalOf(param).empty());
                    }
                }
            }
        }
    }
}
