#include "dotweave/maskparam.h"

#include "dotweave/maskdata_base.h"
#include "logcapture.h"
#include "maskparams.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

namespace {

/// Parts that a split makes of the resolution passes, as agreed with the hosts.
struct SSplitCase {
    int resSplitType, xParts, yParts;
};

constexpr std::array<SSplitCase, 11> SPLIT_CASES = {{{0, 1, 1},
                                                     {1, 2, 1},
                                                     {2, 1, 2},
                                                     {3, 1, 3},
                                                     {4, 1, 4},
                                                     {5, 2, 2},
                                                     {6, 1, 1},
                                                     {-1, 1, 1},
                                                     {100, 1, 1},
                                                     {std::numeric_limits<int>::max(), 1, 1},
                                                     {std::numeric_limits<int>::min(), 1, 1}}};

/// A record whose creation ends right after the split: the feather mode does not exist.
SMaskParam MaskParam_UpToTheSplit(int resSplitType, int xResPass, int yResPass)
{
    SMaskParam param = MaskParam_Plain();
    param.featherMode = 2;
    param.resSplitType = resSplitType;
    param.xResPass = xResPass;
    param.yResPass = yResPass;
    return param;
}

} // namespace

// Copies must not touch a byte: every one counts in the cache.
static_assert(std::is_trivially_copyable_v<SMaskParam> && std::is_aggregate_v<SMaskParam>);
static_assert(std::is_same_v<decltype(SMaskParam::featherPercent), float>);

TEST(MaskParam, TwelveSignedWordsInTheAgreedOrder)
{
    std::array<std::int32_t, 12> words = {}; // no word is left over for a gap
    static_assert(sizeof words == sizeof(SMaskParam));
    for (std::size_t i = 0; i < words.size(); ++i)
        words[i] = -static_cast<std::int32_t>(i + 1);
    const auto param = std::bit_cast<SMaskParam>(words);
    EXPECT_EQ(param.nozzleCount, -1);
    EXPECT_EQ(param.basePass, -2);
    EXPECT_EQ(param.xResPass, -3);
    EXPECT_EQ(param.yResPass, -4);
    EXPECT_EQ(param.colorCount, -5);
    EXPECT_EQ(param.bitsPerPixel, -6);
    EXPECT_EQ(param.featherMode, -7);
    EXPECT_EQ(std::bit_cast<std::int32_t>(param.featherPercent), -8);
    EXPECT_EQ(param.featherNozzleType, -9);
    EXPECT_EQ(param.colorTimes, -10);
    EXPECT_EQ(param.featherLevelPercent, -11);
    EXPECT_EQ(param.resSplitType, -12);
}

TEST(MaskParam, EnumeratorsHaveAgreedValues)
{
    EXPECT_EQ(FeatherMode_None, 0);
    EXPECT_EQ(FeatherMode_Nozzle, 1);
    EXPECT_EQ(FeatherNozzle_Smooth_2, 1);
    EXPECT_EQ(FeatherNozzle_Smooth_3, 2);
    EXPECT_EQ(FeatherNozzle_Smooth_3_Sine, 3);
    EXPECT_EQ(FeatherNozzle_Reserved, 4);
    EXPECT_EQ(ResSplit_None, 0);
    EXPECT_EQ(ResSplit_X2, 1);
    EXPECT_EQ(ResSplit_Y2, 2);
    EXPECT_EQ(ResSplit_Y3, 3);
    EXPECT_EQ(ResSplit_Y4, 4);
    EXPECT_EQ(ResSplit_X2Y2, 5);
}

TEST(MaskParam, SplitDividesAndDropsTheRemainder)
{
    const CLogCapture quiet;
    for (const SSplitCase& split : SPLIT_CASES) {
        for (int x = -5; x <= 9; ++x) { // truncated toward zero, and maybe to no pass at all
            for (int y = -5; y <= 9; ++y) {
                const SMaskParam param = MaskParam_UpToTheSplit(split.resSplitType, x, y);
                SCOPED_TRACE(testing::Message() << param);
                CMaskData_Base mask;
                EXPECT_FALSE(mask.Create(param));
                EXPECT_EQ(mask.SplitCount_XRes_Get(), split.xParts);
                EXPECT_EQ(mask.SplitCount_YRes_Get(), split.yParts);
                EXPECT_EQ(mask.XResPass(), x / split.xParts);
                EXPECT_EQ(mask.YResPass(), y / split.yParts);
                EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Input()), MaskParam_Bytes(param));
                // Nothing else of the current copy may differ.
                SMaskParam rest = mask.MaskParam_Current();
                rest.xResPass = x;
                rest.yResPass = y;
                EXPECT_EQ(MaskParam_Bytes(rest), MaskParam_Bytes(param));
            }
        }
    }
}

TEST(MaskParam, EveryPlainSplitCanBeBuilt)
{
    for (const SSplitCase& split : SPLIT_CASES) {
        SMaskParam param = MaskParam_Plain();
        param.nozzleCount = 24;
        param.xResPass = 2;
        param.yResPass = 12;
        param.resSplitType = split.resSplitType;
        SCOPED_TRACE(testing::Message() << param);
        const CLogCapture log;
        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(param));
        EXPECT_EQ(log.Records(), std::vector<SLogRecord>());
        EXPECT_EQ(mask.XResPass(), 2 / split.xParts);
        EXPECT_EQ(mask.YResPass(), 12 / split.yParts);
        EXPECT_EQ(mask.MaskParam_Input().xResPass, 2);
        EXPECT_EQ(mask.MaskParam_Input().yResPass, 12);
        EXPECT_EQ(mask.MaskWidth(), 544 * 2 / split.xParts);
        EXPECT_EQ(mask.MaskHeight_IncludeRes(), 24 * 12 / split.yParts);
    }
}

TEST(MaskParam, OnlyRowsLeftOverSwitchTheCurrentCopy)
{
    for (const int basePass : {3, 4}) { // 544 rows in 3 passes leave one over
        SMaskParam param = MaskParam_Plain();
        param.basePass = basePass;
        param.featherNozzleType = FeatherNozzle_Smooth_3;
        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(param));
        EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Input()), MaskParam_Bytes(param));
        if (basePass == 3) {
            param.featherMode = FeatherMode_Nozzle;
            param.featherNozzleType = FeatherNozzle_Smooth_2;
        }
        EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Current()), MaskParam_Bytes(param));
    }
}

TEST(MaskParam, BothCopiesKeepTheBitsOfARefusedRecord)
{
    const CLogCapture quiet;
    for (const std::uint32_t bits : {0x80000000U, 0x7FC00001U, 0x7F800000U, 0xFFFFFFFFU}) {
        SMaskParam param = MaskParam_Plain();
        param.featherPercent = std::bit_cast<float>(bits);
        param.colorTimes = 0;
        CMaskData_Base mask;
        EXPECT_FALSE(mask.Create(param));
        EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Input()), MaskParam_Bytes(param));
        EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Current()), MaskParam_Bytes(param));
    }
}

TEST(MaskParam, IsCopiedByCreateAndNotKept)
{
    SMaskParam param = MaskParam_Plain();
    const SMaskParam before = param;
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(param));
    EXPECT_EQ(MaskParam_Bytes(param), MaskParam_Bytes(before));
    std::memset(&param, 0x7F, sizeof param);
    EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Input()), MaskParam_Bytes(before));
    EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Current()), MaskParam_Bytes(before));
    EXPECT_NE(static_cast<const void*>(&mask.MaskParam_Input()), static_cast<const void*>(&param));
}
