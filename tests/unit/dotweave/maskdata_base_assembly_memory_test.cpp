#include "dotweave/maskdata_base.h"

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cuttables.h"
#include "dirtyheap.h"
#include "maskbytes.h"
#include "maskparams.h"
#include "plainmask.h"

// The bytes of a mask never depend on what was in its memory before.

namespace {

/// A mode and what it must come out as.
struct SModeCase {
    std::string name;
    SMaskParam param;
    SPlainMask plain;
};

/// 2 passes of 136 rows, the first half of the scale and the second, in 2 x 2 resolution passes.
SModeCase HardEdges()
{
    SModeCase mode = {"hard edges", MaskParam_Plain(), {}};
    mode.param.nozzleCount = mode.plain.height = 272;
    mode.param.basePass = 2;
    mode.param.xResPass = mode.plain.xRes = 2;
    mode.param.yResPass = mode.plain.yRes = 2;
    mode.param.bitsPerPixel = mode.plain.bits = 2;
    mode.plain.step = 136;
    mode.plain.positionCount = 4;
    mode.plain.table = CutTable_Of(PassZones(2, 136));
    return mode;
}

/// 204 rows, of which 45 % of three quarters are 68: 2 steps of 68 rows, 8 positions.
SModeCase Smooth3(const std::string& name, int type, int levelPercent)
{
    SModeCase mode = {name, MaskParam_Feathered(type, 204, 2, 45.0F), {}};
    mode.param.featherLevelPercent = levelPercent;
    mode.param.xResPass = mode.plain.xRes = 2;
    mode.param.colorCount = mode.plain.colorCount = 2;
    mode.plain.height = 204;
    mode.plain.step = 68;
    mode.plain.positionCount = 8;
    mode.plain.isSine = type == FeatherNozzle_Smooth_3_Sine;
    mode.plain.table = CutTable_Of(RampByFormula(204, 68, levelPercent * 65535 / 100));
    return mode;
}

std::vector<std::uint8_t> MaskBytes_OnDirtyMemory(const SMaskParam& param)
{
    CMaskData_Base mask;
    const CDirtyMemory dirty;
    EXPECT_TRUE(mask.Create(param)) << param;
    return MaskBytes(mask);
}

} // namespace

TEST(MaskMemory, DirtyMemoryGivesThePlainBytes)
{
    const std::vector<SModeCase> modes = {
        HardEdges(), Smooth3("ramps", FeatherNozzle_Smooth_3, 100),
        Smooth3("ramps with rows that print nothing", FeatherNozzle_Smooth_3, 0),
        Smooth3("sine edge", FeatherNozzle_Smooth_3_Sine, 100)};
    for (const SModeCase& mode : modes)
        EXPECT_EQ(MaskBytes_OnDirtyMemory(mode.param), Plain_Bytes(mode.plain)) << mode.name;
}
