#include "dotweave/maskdata_base.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

#include <gtest/gtest.h>

#include "cuttables.h"
#include "geometrysteps.h"
#include "logcapture.h"
#include "logscopes.h"
#include "maskbytes.h"
#include "maskparams.h"
#include "nolimit.h"
#include "peek.h"
#include "plainmask.h"
#include "refusedrequest.h"

namespace {

/// What a mode with hard edges must come out as. Only the sizes are taken from the mask object.
SPlainMask PlainMask_FeatherNone(CMaskData_Base& mask, const SMaskParam& param)
{
    SMaskData_Base_Peek peek{mask};
    SPlainMask plain;
    plain.colorCount = param.colorCount;
    plain.positionCount = peek.PositionCount();
    plain.height = param.nozzleCount;
    plain.step = param.nozzleCount / param.basePass;
    plain.matrixRows = peek.BaseMaskHeight();
    plain.xRes = param.xResPass;
    plain.yRes = param.yResPass;
    plain.bits = param.bitsPerPixel;
    plain.table = CutTable_Of(HardZones(param.basePass, param.colorTimes, plain.step));
    return plain;
}

void ExpectPlainBytes(const SMaskParam& param)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(param)) << param;
    EXPECT_EQ(MaskBytes(mask), Plain_Bytes(PlainMask_FeatherNone(mask, param))) << param;
}

TEST(MaskAssembly, TheCutReadsTheTiledPlane)
{
    const std::vector<std::uint16_t> plane = {0, 10, 20, 30, 40, 50}; // 2 rows of 3
    const std::vector<SCutTable> table = {{30, 10}, {65535, 0}, {50, 40}};
    CMaskBlock block(4, 3);
    SParam_GenerateMaskData param = {};
    param.cutTable = table.data();
    param.cutTableCount = 0; // carried, not read
    param.baseMaskData = plane.data();
    param.offsetY = 3; // row 1
    param.offsetX = 5; // column 2
    param.baseMaskHeight = 2;
    param.baseMaskWidth = 3;
    param.bitsPerPixel = 2;
    param.maskBlock = &block;
    EXPECT_TRUE(CMaskData_Base::GenerateMaskData(param));
    // Row 0 reads 50 30 40 50 against (10, 30], row 1 reads 20 0 10 20 against (0, 65535], row 2 as row 0
    // against (40, 50].
    const std::vector<int> expected = {0, 3, 0, 0, 3, 0, 3, 3, 3, 0, 0, 3};
    EXPECT_EQ(std::vector<int>(block.MaskData(), block.MaskData() + 12), expected);
}

TEST(MaskAssembly, TheMergeInterleavesPixelsAndLines)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    peek.Current().bitsPerPixel = 1;
    peek.Current().yResPass = 2;
    peek.MaskLineBytes() = 2;
    std::vector<CMaskBlock> blocks(2);
    for (CMaskBlock& block : blocks)
        block.Initialize(5, 3);
    blocks[0].MaskData()[0] = 1;         // row 0, column 0 of pass 0: bit 7 of byte 0
    blocks[1].MaskData()[0] = 1;         // row 0, column 0 of pass 1: bit 6
    blocks[0].MaskData()[5 + 1] = 1;     // row 1, column 1 of pass 0: bit 5
    blocks[1].MaskData()[2 * 5 + 4] = 1; // row 2, column 4 of pass 1: pixel 9, bit 6 of byte 1
    std::vector<std::uint8_t> lines(12);
    EXPECT_TRUE(peek.MergeMaskData(blocks.data(), 2, lines.data(), 1));
    EXPECT_EQ(lines, (std::vector<std::uint8_t>{0, 0, 0xC0, 0, 0, 0, 0x20, 0, 0, 0, 0, 0x40}));
    EXPECT_TRUE(peek.MergeMaskData(blocks.data(), 2, lines.data(), 0)); // the lines between, nothing cleared
    EXPECT_EQ(lines, (std::vector<std::uint8_t>{0xC0, 0, 0xC0, 0, 0x20, 0, 0x20, 0, 0, 0x40, 0, 0x40}));
}

TEST(MaskAssembly, AnyModeGivesThePlainBytes)
{
    for (int xRes = 1; xRes <= 4; ++xRes)
        for (int yRes = 1; yRes <= 4; ++yRes)
            for (int bits = 1; bits <= 2; ++bits) {
                if (xRes * yRes > 4 && bits != 1 + (xRes + yRes) % 2)
                    continue; // one depth for each of the large ones
                SMaskParam param = MaskParam_Plain();
                param.basePass = 2;
                param.nozzleCount = 2 * xRes * yRes;
                param.xResPass = xRes;
                param.yResPass = yRes;
                param.bitsPerPixel = bits;
                ExpectPlainBytes(param);
            }
    for (int basePass = 1; basePass <= 4; ++basePass)
        for (int colorTimes = 1; colorTimes <= basePass; ++colorTimes) {
            SMaskParam param = MaskParam_Plain();
            param.basePass = basePass;
            param.nozzleCount = 34 * basePass; // 16 positions of 34 rows
            param.colorTimes = colorTimes;
            ExpectPlainBytes(param);
        }
    for (const int step : {33, 100, 128, 544}) { // wraps round the matrix
        SMaskParam param = MaskParam_Plain();
        param.basePass = 2;
        param.nozzleCount = 2 * step;
        ExpectPlainBytes(param);
    }
}

TEST(MaskAssembly, ColourSixteenIsColourZero)
{
    SMaskParam param = MaskParam_Plain();
    param.basePass = 2;
    param.nozzleCount = 34;
    param.colorCount = 17;
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(param));
    EXPECT_EQ(MaskBytes(mask), Plain_Bytes(PlainMask_FeatherNone(mask, param)));
    const auto color = [&mask](int index) {
        int position = -1;
        const std::uint8_t* bytes = mask.MaskData_Get(index, position);
        return std::vector<std::uint8_t>(bytes, bytes + mask.MaskBytes_OneColor());
    };
    EXPECT_EQ(SMaskData_Base_Peek{mask}.MaskBlock()->Height(), 17); // one row of the block per colour
    EXPECT_EQ(SMaskData_Base_Peek{mask}.MaskBlock()->Width(), mask.MaskBytes_OneColor());
    EXPECT_EQ(color(16), color(0));
    for (int index = 1; index < 8; ++index)
        EXPECT_NE(color(index), color(index - 1)) << index; // eight different matrices
}

TEST(MaskAssembly, AFailingCutTableFailsBothAssemblies)
{
    struct SCase {
        int featherMode;
        int featherNozzleType;
        int colorTimes;
        std::vector<SLogRecord> records; // of the table; the assembly's follows
    };
    const auto refusal = [](const char* text) { return FailureValue(UNIT_MASK, SCOPE_CUT_TABLE, text); };
    const std::vector<SCase> cases = {{7, 1, 1, {refusal("m_maskParam_Current.featherMode = 7")}},
                                      {1, 9, 1, {refusal("m_maskParam_Current.featherNozzleType = 9")}},
                                      {1, 4, 1, {}}, // known and never built: without a record of its own
                                      {0, 1, 0, {Failure(UNIT_MASK, SCOPE_TABLE_NONE_TIMES)}}};
    for (const SCase& c : cases) {
        CMaskData_Base mask;
        SMaskData_Base_Peek peek{mask};
        Geometry_Create(peek, MaskParam_Plain());
        peek.Current().featherMode = c.featherMode;
        peek.Current().featherNozzleType = c.featherNozzleType;
        peek.Current().colorTimes = c.colorTimes;
        CLogCapture log;
        EXPECT_FALSE(peek.CreateMaskData());
        EXPECT_EQ(log.Records(), Chain(c.records, {Failure(UNIT_MASK, SCOPE_MASK_DATA)}));
        log.Clear();
        EXPECT_FALSE(peek.CreateMaskData_Old());
        EXPECT_EQ(log.Records(), Chain(c.records, {Failure(UNIT_MASK, SCOPE_MASK_DATA_OLD)}));
        EXPECT_EQ(peek.MaskBlock(), nullptr);
    }
}

TEST(MaskAssembly, PlanesWithoutMemoryAreThrown)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    Geometry_Create(peek, MaskParam_Plain());
    peek.Current().colorCount = -1;
    EXPECT_THROW(peek.CreateMaskData(), std::bad_alloc);
    EXPECT_THROW(peek.CreateMaskData_Old(), std::bad_alloc);
    EXPECT_EQ(peek.MaskBlock(), nullptr);
}

TEST(MaskAssembly, MaskBytesWithoutMemoryAreThrown)
{
    if (REFUSED_REQUEST_IS_FATAL)
        GTEST_SKIP() << "the sanitizer does not let the allocation fail";
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    Geometry_Create(peek, MaskParam_Plain());
    peek.PositionCount() = -1;
    EXPECT_THROW(peek.CreateMaskData(), std::bad_alloc);
    EXPECT_EQ(peek.MaskBlock(), nullptr);
}

/// A mode that keeps seven threads busy for much longer than a thread may lose its processor.
SMaskParam MaskParam_Large()
{
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 512;
    param.basePass = 16; // 17 positions of 32 rows
    param.colorCount = 8;
    param.xResPass = 4;
    param.yResPass = 4;
    return param;
}

TEST(MaskAssembly, AnExpiredWaitLeavesTheBlockAttached)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    Geometry_Create(peek, MaskParam_Large());
    const CLogCapture log;
    EXPECT_FALSE(peek.CreateMaskData_Within(0));
    EXPECT_EQ(log.Records(), (std::vector<SLogRecord>{Failure(UNIT_GENERATOR, SCOPE_GENERATOR_WAIT),
                                                      Failure(UNIT_MASK, SCOPE_MASK_DATA)}));
    ASSERT_NE(peek.MaskBlock(), nullptr);
    EXPECT_EQ(peek.MaskBlock()->Width(), mask.MaskBytes_OneColor());
    EXPECT_EQ(peek.MaskBlock()->Height(), 8);
}

TEST(MaskAssembly, ExpiredWaitsFailOneAfterTheOther)
{
    for (int run = 0; run < 6; ++run) {
        SMaskParam param = MaskParam_Plain();
        param.basePass = 17;   // many small items: a worker looks up often
        param.colorCount = 64; // enough of them for no machine to be done in a millisecond
        CMaskData_Base mask;
        SMaskData_Base_Peek peek{mask};
        Geometry_Create(peek, param);
        const CLogCapture log;
        EXPECT_FALSE(peek.CreateMaskData_Within(static_cast<unsigned int>(run % 2)));
        EXPECT_EQ(log.Records().size(), 2U);
        EXPECT_NE(peek.MaskBlock(), nullptr);
    }
}

TEST(MaskAssembly, AWaitWithoutLimitSucceeds)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    Geometry_Create(peek, MaskParam_Plain());
    const CLogCapture log;
    EXPECT_TRUE(peek.CreateMaskData_Within(NO_LIMIT_MS));
    EXPECT_TRUE(log.Records().empty());
    EXPECT_EQ(MaskBytes(mask), Plain_Bytes(PlainMask_FeatherNone(mask, MaskParam_Plain())));
}

} // namespace
