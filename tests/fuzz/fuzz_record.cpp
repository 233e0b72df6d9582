// Any 48 bytes as the record of a print mode. They are first tried as they are: most are refused, and none
// may do harm before that. Unless that made a mask, they are brought into the ranges of small modes and tried
// again. Every mask that is made is checked against the laws.

#include "dotweave/maskdata_base.h"
#include "fuzzing.h"
#include "masklaws.h"
#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <random>

namespace {

/// A mask object that refuses modes which would take much memory and time, as soon as it knows their size.
/// All other refusals are the library's.
class CSmallMask : public CMaskData_Base {
public:
    /// @param bytesMax  most memory that a mode may take
    explicit CSmallMask(std::int64_t bytesMax) : m_bytesMax(bytesMax) {}
    [[nodiscard]] bool IsTooLarge() const { return m_isTooLarge; }

protected:
    bool InitResParam() override
    {
        if (!CMaskData_Base::InitResParam())
            return false;
        m_isTooLarge = Bytes_InAll() > m_bytesMax;
        return !m_isTooLarge;
    }

private:
    /// Mask bytes and the workers' blocks; 0 for a mode whose size the library refuses
    /// later.
    std::int64_t Bytes_InAll()
    {
        SMaskData_Base_Peek peek{*this};
        const int fullHeight = peek.BaseMaskHeight();
        peek.InitMaskSize(); // the step that follows this one, done ahead
        std::int64_t bytes = 0;
        if (peek.MaskSize_CanBeBuilt()) {
            const std::int64_t colors = peek.Current().colorCount;
            const bool isSine = peek.Current().featherNozzleType == FeatherNozzle_Smooth_3_Sine;
            const std::int64_t blocks = // of six workers, for the rows that the sine moves dots between
                isSine ? std::int64_t{6} * peek.BaseMaskWidth() * peek.MaskHeight_NoneRes() * XResPass() : 0;
            bytes = colors * MaskBytes_OneColor() + blocks;
        }
        peek.BaseMaskHeight() = fullHeight;
        return bytes;
    }

    std::int64_t m_bytesMax;
    bool m_isTooLarge = false;
};

/// How large masks may be. Small ones come first: they reach the same code, many times as often. One record in
/// sixteen may be larger.
struct SRoom {
    std::int64_t bytes;
    int passes; ///< of every kind, multiplied
    int nozzleCount;
};

constexpr SRoom ROOM_SMALL = {std::int64_t{1} << 20, 3, 24};
constexpr SRoom ROOM_LARGE = {std::int64_t{4} << 20, 6, 144};
constexpr unsigned int LARGE_EVERY = 16;

/// The record with its resolution passes divided by the split.
SMaskParam Param_Split(SMaskParam param)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek{mask}.Current() = param;
    param.xResPass /= mask.SplitCount_XRes_Get();
    param.yResPass /= mask.SplitCount_YRes_Get();
    return param;
}

/// A record near the given one whose mask is small. Most of them can be built.
SMaskParam Param_Bounded(const SMaskParam& any, const SRoom& most)
{
    SMaskParam param = any;
    param.resSplitType = Fuzz_Number(any.resSplitType, -1, 6);
    CMaskData_Base split;
    SMaskData_Base_Peek{split}.Current() = param;
    const int xSplit = split.SplitCount_XRes_Get();
    const int ySplit = split.SplitCount_YRes_Get();
    int room = most.passes; // each multiplies the work
    param.basePass = Fuzz_Number(any.basePass, 1, room);
    room /= param.basePass;
    param.xResPass = Fuzz_Number(any.xResPass, xSplit, xSplit * room + xSplit - 1);
    room /= param.xResPass / xSplit;
    param.yResPass = Fuzz_Number(any.yResPass, ySplit, ySplit * room + ySplit - 1);
    room /= param.yResPass / ySplit;
    param.colorCount = Fuzz_Number(any.colorCount, 1, std::min(room, 3));
    const int passes = param.basePass * (param.xResPass / xSplit) * (param.yResPass / ySplit);
    param.nozzleCount = Fuzz_Number(any.nozzleCount, passes, most.nozzleCount);
    param.bitsPerPixel = Fuzz_Number(any.bitsPerPixel, 1, 2);
    param.featherMode = Fuzz_Number(any.featherMode, FeatherMode_None, FeatherMode_Nozzle);
    if (!(any.featherPercent >= 0.0F && any.featherPercent <= 100.0F)) // so written, a NaN is replaced too
        param.featherPercent =
            0.25F * static_cast<float>(Fuzz_Number(std::bit_cast<std::int32_t>(any.featherPercent), 0, 400));
    param.featherNozzleType =
        Fuzz_Number(any.featherNozzleType, FeatherNozzle_Smooth_2, FeatherNozzle_Smooth_3_Sine);
    param.colorTimes = Fuzz_Number(any.colorTimes, 1, param.basePass);
    param.featherLevelPercent = Fuzz_Number(any.featherLevelPercent, 0, 100);
    return param;
}

/// Random numbers that choose the part of a mask to check, different for every record and the same whenever
/// it comes again.
std::minstd_rand Random_Of(const SMaskParam& param)
{
    std::uint32_t seed = 0;
    for (const std::uint32_t word : std::bit_cast<std::array<std::uint32_t, 12>>(param))
        seed = std::rotl(seed, 5) ^ word;
    return std::minstd_rand(seed);
}

/// Creates a mask and checks it against the laws.
/// @param mustBeBuilt  whether only its size is a reason to refuse the record
/// @return whether there is a mask
bool Mask_Try(const SMaskParam& param, std::int64_t bytesMax, bool mustBeBuilt)
{
    CSmallMask mask(bytesMax);
    const bool isCreated = mask.Create(param);
    EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Input()), MaskParam_Bytes(param)) << param;
    if (!isCreated) {
        EXPECT_TRUE(!mustBeBuilt || mask.IsTooLarge()) << "refused: " << param;
        return false;
    }
    SCOPED_TRACE(param);
    ExpectGeometryLaws(mask);
    ExpectAccessLaws(mask);
    std::minstd_rand random = Random_Of(param);
    ExpectDotLaws(mask, random);
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    SMaskParam param;
    if (size < sizeof param)
        return 0;
    std::memcpy(&param, data, sizeof param);
    const SRoom& room = Random_Of(param)() % LARGE_EVERY == 0 ? ROOM_LARGE : ROOM_SMALL;
    if (Mask_Try(param, room.bytes, false))
        return 0;
    const SMaskParam bounded = Param_Bounded(param, room);
    Mask_Try(bounded, room.bytes, Layout_ByLaw(Param_Split(bounded)).has_value());
    return 0;
}
