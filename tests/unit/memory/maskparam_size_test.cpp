#include "dotweave/maskparam_refusal.h"

#include "dotweave/maskdata_base.h"
#include "maskparams.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

std::atomic<std::int64_t> s_liveBytes = 0;
std::atomic<std::int64_t> s_peakBytes = 0;

constexpr std::size_t HEAD = alignof(std::max_align_t); // each piece of memory starts with its size

void* Memory_Take(std::size_t size)
{
    auto* memory = static_cast<unsigned char*>(std::malloc(size + HEAD));
    if (memory == nullptr)
        throw std::bad_alloc();
    std::memcpy(memory, &size, sizeof size);
    const std::int64_t live = s_liveBytes += static_cast<std::int64_t>(size);
    std::int64_t peak = s_peakBytes;
    while (peak < live && !s_peakBytes.compare_exchange_weak(peak, live)) {
    }
    return memory + HEAD;
}

void Memory_Return(void* memory) noexcept
{
    if (memory == nullptr)
        return;
    unsigned char* const start = static_cast<unsigned char*>(memory) - HEAD;
    std::size_t size = 0;
    std::memcpy(&size, start, sizeof size);
    s_liveBytes -= static_cast<std::int64_t>(size);
    std::free(start);
}

} // namespace

// The array and the sized forms come to these.
void* operator new(std::size_t size)
{
    return Memory_Take(size);
}
void operator delete(void* memory) noexcept
{
    Memory_Return(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    Memory_Return(memory);
}

namespace {

struct SMode {
    const char* name;
    SMaskParam param;
};

std::ostream& operator<<(std::ostream& stream, const SMode& mode)
{
    return stream << mode.name;
}

SMaskParam Param(int type, int nozzleCount, int basePass, int xResPass, int yResPass, int colorCount,
                 int bitsPerPixel)
{
    SMaskParam param = MaskParam_Plain();
    if (type != 0)
        param = MaskParam_Feathered(type, nozzleCount, basePass, 50.0F);
    param.nozzleCount = nozzleCount;
    param.basePass = basePass;
    param.xResPass = xResPass;
    param.yResPass = yResPass;
    param.colorCount = colorCount;
    param.bitsPerPixel = bitsPerPixel;
    return param;
}

class MaskParamSize : public testing::TestWithParam<SMode> {};

TEST_P(MaskParamSize, IsWhatACreationAllocates)
{
    const SMaskParam& param = GetParam().param;
    const SMaskSize size = MaskParam_Size(param);
    CMaskData_Base mask;
    const std::int64_t before = s_liveBytes;
    s_peakBytes = before;
    ASSERT_TRUE(mask.Create(param));
    EXPECT_EQ(size.maskBytes, std::int64_t{mask.MaskBytes_OneColor()} * param.colorCount);
    // Twelve work items, two queues, seven threads and the generator's lists come on top.
    EXPECT_GE(s_peakBytes - before, size.peakBytes);
    EXPECT_LE(s_peakBytes - before, size.peakBytes + 16 * 1024);
    // The sine edge moves dots in blocks of bytes; everything else takes little beside the mask itself.
    const bool isSine = param.featherNozzleType == FeatherNozzle_Smooth_3_Sine;
    EXPECT_LE(s_peakBytes - before, size.maskBytes + (isSine ? size.peakBytes : 512 * 1024));
}

INSTANTIATE_TEST_SUITE_P(
    Of, MaskParamSize,
    testing::Values(SMode{"Hard", Param(0, 544, 4, 1, 1, 1, 1)},
                    SMode{"HardTwoColours", Param(0, 128, 1, 3, 2, 2, 2)},
                    SMode{"Smooth2", Param(FeatherNozzle_Smooth_2, 544, 4, 2, 2, 4, 1)},
                    SMode{"Smooth3", Param(FeatherNozzle_Smooth_3, 544, 4, 1, 2, 3, 2)},
                    SMode{"Sine", Param(FeatherNozzle_Smooth_3_Sine, 544, 4, 2, 2, 4, 2)},
                    SMode{"SineInOneStep", Param(FeatherNozzle_Smooth_3_Sine, 544, 1, 8, 1, 1, 1)},
                    SMode{"SineOverHardEdges",
                          [] {
                              SMaskParam param = Param(0, 544, 2, 2, 1, 2, 1);
                              param.featherNozzleType = FeatherNozzle_Smooth_3_Sine;
                              return param;
                          }()}),
    [](const auto& mode) { return mode.param.name; });

TEST(MaskParamSizeEdges, RefusedModeTakesNothing)
{
    SMaskParam param = MaskParam_Plain();
    param.bitsPerPixel = 3;
    EXPECT_EQ(MaskParam_Size(param).maskBytes, 0);
    EXPECT_EQ(MaskParam_Size(param).peakBytes, 0);
}

TEST(MaskParamSizeEdges, CountsBeyondThirtyTwoBits)
{
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 136;
    param.colorCount = 50000;
    // 68 * 136 * 4 bytes of mask for each colour, and the address of its plane.
    EXPECT_EQ(MaskParam_Size(param).maskBytes, 50000LL * 68 * 136 * 4);
    EXPECT_GT(MaskParam_Size(param).peakBytes, 50000LL * (68 * 136 * 4 + 8));
}

} // namespace
