#include "masklaws.h"

#include "cuttables.h"
#include "maskbytes.h"
#include "maskdots.h"
#include "matrixrepeat.h"
#include "peek.h"
#include "plainmask.h"
#include "printlaw.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

constexpr int WIDTH = CSheet::WIDTH;

/// Columns of the sheet on which the prints are counted.
constexpr int COUNTED_COLUMNS = 48;

/// Without zones of their own.
SLayout Layout_Whole(int step, int height, int leadBlank)
{
    return {step, height, leadBlank, 0, 0, 0, 0};
}

SLayout Layout_Of(CMaskData_Base& mask)
{
    SMaskData_Base_Peek peek{mask};
    return {peek.StepHeight_NoneRes(),    peek.MaskHeight_NoneRes(), peek.LeadBlankHeight_NoneRes(),
            peek.Smooth2FeatherHeight(),  peek.Smooth2PassHeight(),  peek.Smooth2FeatherHeightTotal(),
            peek.Smooth2PassHeightTotal()};
}

/// The record that a created object must work with.
SMaskParam Current_ByLaw(const CMaskData_Base& mask)
{
    SMaskParam param = mask.MaskParam_Input();
    param.xResPass /= mask.SplitCount_XRes_Get();
    param.yResPass /= mask.SplitCount_YRes_Get();
    if (param.featherMode == FeatherMode_None &&
        param.nozzleCount % (param.basePass * param.xResPass * param.yResPass) != 0) {
        param.featherMode = FeatherMode_Nozzle;
        param.featherNozzleType = FeatherNozzle_Smooth_2;
    }
    return param;
}

void ExpectResolutionLaws(CMaskData_Base& mask)
{
    SMaskData_Base_Peek peek{mask};
    const int x = mask.XResPass();
    const int y = mask.YResPass();
    const int step = peek.StepHeight_NoneRes();
    EXPECT_EQ(step % (x * y), 0);
    for (int i = 0; i < x; ++i)
        EXPECT_EQ(mask.XResStep()[i], step / x * i);
    for (int i = 0; i < y; ++i)
        EXPECT_EQ(mask.YResStep()[i], step * i);
    EXPECT_EQ(mask.StepHeight_IncludeRes(), step * y);
    EXPECT_EQ(mask.RealStepHeight_IncludeRes(), step / x);
    EXPECT_EQ(mask.MaskWidth(), WIDTH * x);
    EXPECT_EQ(mask.MaskHeight_IncludeRes(), peek.MaskHeight_NoneRes() * y);
    EXPECT_EQ(mask.LeadBlankHeight_IncludeRes(),
              mask.MaskHeight_IncludeRes() - mask.RealStepHeight_IncludeRes());
    EXPECT_GE(mask.LeadBlankHeight_IncludeRes(), 0);
}

void ExpectSizeLaws(CMaskData_Base& mask)
{
    SMaskData_Base_Peek peek{mask};
    const SMatrixRepeat size = {peek.BaseMaskHeight(), peek.PositionCount()};
    EXPECT_EQ(size, MaskSize_ByCounting(WIDTH, peek.StepHeight_NoneRes()));
    EXPECT_EQ(peek.BaseMaskWidth(), WIDTH);
    // A line is a multiple of 544 pixels, which fill whole bytes: it has no padding.
    EXPECT_EQ(8 * mask.MaskLineBytes_OneColor(), mask.MaskWidth() * mask.BitsPerPixel());
    EXPECT_EQ(mask.MaskBytes_OnePosition(), mask.MaskHeight_IncludeRes() * mask.MaskLineBytes_OneColor());
    EXPECT_EQ(mask.MaskBytes_OneColor(), mask.MaskBytes_OnePosition() * size.positions);
    EXPECT_EQ(peek.MaskBlock()->MaskDataBytesCount(),
              mask.MaskBytes_OneColor() * mask.MaskParam_Current().colorCount);
}

bool IsSine(const CMaskData_Base& mask)
{
    return mask.MaskParam_Current().featherNozzleType == FeatherNozzle_Smooth_3_Sine;
}

CRanges Table_Of(CMaskData_Base& mask)
{
    const int height = SMaskData_Base_Peek{mask}.MaskHeight_NoneRes();
    return BuiltRanges(height, [&](SCutTable* table) { EXPECT_TRUE(mask.CreateCutTable(table, height)); });
}

/// What a mode without the sine promises: see the print law's tests.
CLaw Law_Of(CMaskData_Base& mask)
{
    SMaskData_Base_Peek peek{mask};
    const SMaskParam& param = mask.MaskParam_Current();
    if (param.featherMode == FeatherMode_None)
        return Law_Times(param.colorTimes);
    if (param.featherNozzleType == FeatherNozzle_Smooth_2)
        return Law_Zones(peek.Smooth2FeatherHeight(), param.colorTimes);
    if (param.colorTimes == 1)
        return Law_Level(param.featherLevelPercent);
    return Law_Table(Table_Of(mask), peek.StepHeight_NoneRes()); // widened ranges overlap
}

/// The mode as the slow way to the dots knows it. Colours, positions and depth are not needed for one block.
SPlainMask PlainMask_Of(CMaskData_Base& mask)
{
    SMaskData_Base_Peek peek{mask};
    SPlainMask plain;
    plain.height = peek.MaskHeight_NoneRes();
    plain.step = peek.StepHeight_NoneRes();
    plain.matrixRows = peek.BaseMaskHeight();
    plain.xRes = mask.XResPass();
    plain.yRes = mask.YResPass();
    for (const SRange& range : Table_Of(mask))
        plain.table.push_back(
            {static_cast<std::uint16_t>(range.upper), static_cast<std::uint16_t>(range.lower)});
    return plain;
}

/// Two bits of one pixel are both set or both clear.
void ExpectWholePixels(CMaskData_Base& mask)
{
    if (mask.BitsPerPixel() == 1)
        return;
    const CMaskBlock& block = *SMaskData_Base_Peek{mask}.MaskBlock();
    const std::uint8_t* bytes = block.MaskData_Const();
    EXPECT_TRUE(std::all_of(bytes, bytes + block.MaskDataBytesCount(),
                            [](unsigned int byte) { return ((byte ^ byte >> 1) & 0x55U) == 0; }));
}

/// The generator's threads and a single one make the same bytes, but for the sine.
void ExpectBytesOfOneThread(CMaskData_Base& mask)
{
    const std::vector<std::uint8_t> bytes = MaskBytes(mask);
    EXPECT_TRUE(Bytes_Old({mask}) == bytes);
}

/// One block has the dots of the slow way, and one sheet the prints of the law, which the sine breaks.
void ExpectDots(CMaskData_Base& mask, std::minstd_rand& random)
{
    const auto pick = [&random](int count) {
        return static_cast<int>(random() % static_cast<unsigned int>(count));
    };
    const int color = pick(mask.MaskParam_Current().colorCount);
    const int position = pick(SMaskData_Base_Peek{mask}.PositionCount());
    const int r = pick(mask.YResPass());
    const int k = pick(mask.XResPass());
    SCOPED_TRACE(testing::Message() << "colour " << color << ", position " << position << ", passes " << r
                                    << " and " << k);
    const SPlainMask plain = PlainMask_Of(mask);
    CPlainDots dots = Plain_Dots(plain, color, position, r, k);
    if (IsSine(mask))
        Plain_MoveDots(dots, WIDTH, plain.height, Plain_FeatherRows(plain.height, plain.step));
    EXPECT_TRUE(Dots(mask, color, position, r, k) == dots);
    if (IsSine(mask))
        return;
    CSheet sheet(mask, color, r, k);
    sheet.Print(pick(WIDTH - COUNTED_COLUMNS + 1), COUNTED_COLUMNS);
    EXPECT_EQ(sheet.WrongPixels(Law_Of(mask)), 0);
}

} // namespace

std::optional<SLayout> Layout_ByLaw(const SMaskParam& param)
{
    const int rows = param.nozzleCount;
    const int passes = param.basePass;
    const int resPasses = param.xResPass * param.yResPass;
    if (param.featherMode == FeatherMode_None) {
        const int step = rows / passes / resPasses * resPasses;
        const int rest = rows - passes * step;
        if (step == 0)
            return std::nullopt;
        return rest == 0 ? Layout_Whole(step, rows, rows - step)
                         : Layout_Zones(step, passes, std::min(rest, step));
    }
    // Rows that feathering may take: those that a head printing in one pass does not advance by.
    const int amount = rows - CMaskData_Base::StepHeadNozzle_Get(rows, 1, param.featherPercent);
    if (param.featherNozzleType == FeatherNozzle_Smooth_2) {
        const int step = (rows - amount / (passes + 1)) / passes / resPasses * resPasses;
        const int feather = rows - passes * step;
        if (step == 0 || feather == 0 || feather > step)
            return std::nullopt;
        return Layout_Zones(step, passes, feather);
    }
    const int step = (rows - amount) / passes / resPasses * resPasses;
    if (step == 0)
        return std::nullopt;
    const int rest = rows % step;
    return Layout_Whole(step, rows, rows - (rest != 0 ? rest : step));
}

void ExpectGeometryLaws(CMaskData_Base& mask)
{
    const SMaskParam& input = mask.MaskParam_Input();
    EXPECT_TRUE(input.colorTimes >= 1 && input.colorTimes <= input.basePass);
    EXPECT_TRUE(mask.XResPass() >= 1 && mask.YResPass() >= 1);
    EXPECT_TRUE(input.featherMode == FeatherMode_None || input.featherMode == FeatherMode_Nozzle);
    EXPECT_TRUE(input.bitsPerPixel == 1 || input.bitsPerPixel == 2);
    EXPECT_GE(input.colorCount, 1);
    const SMaskParam expected = Current_ByLaw(mask);
    EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Current()), MaskParam_Bytes(expected));
    SMaskParam beforeSetUp = expected; // a switch to feather zones belongs to the set-up
    beforeSetUp.featherMode = input.featherMode;
    beforeSetUp.featherNozzleType = input.featherNozzleType;
    const std::optional<SLayout> layout = Layout_ByLaw(beforeSetUp);
    EXPECT_TRUE(layout.has_value());
    if (layout) {
        EXPECT_EQ(Layout_Of(mask), *layout);
    }
    ExpectResolutionLaws(mask);
    ExpectSizeLaws(mask);
}

void ExpectAccessLaws(CMaskData_Base& mask)
{
    SMaskData_Base_Peek peek{mask};
    const int colorCount = mask.MaskParam_Current().colorCount;
    const int positionCount = peek.PositionCount();
    const std::uint8_t* expected = peek.MaskBlock()->MaskData_Const();
    for (int color = 0; color < colorCount; ++color) {
        int position = -1;
        const std::uint8_t* const first = expected;
        for (int i = 0; i < positionCount; ++i, expected += mask.MaskBytes_OnePosition()) {
            EXPECT_EQ(mask.MaskData_Get(color, position), expected);
            EXPECT_EQ(position, i);
        }
        EXPECT_EQ(mask.MaskData_Get(color, position), first); // round again
        EXPECT_EQ(position, 0);
    }
    EXPECT_EQ(expected, peek.MaskBlock()->MaskData_Const() + peek.MaskBlock()->MaskDataBytesCount());
    for (const int color : {colorCount, 0x7FFFFFFF}) {
        int position = 1234567;
        EXPECT_EQ(mask.MaskData_Get(color, position), nullptr);
        EXPECT_EQ(position, 1234567);
    }
}

void ExpectDotLaws(CMaskData_Base& mask, std::minstd_rand& random)
{
    ExpectWholePixels(mask);
    // Either way takes as long as the creation did. Records by the thousand go both.
    if (!IsSine(mask) && random() % 2 == 0)
        ExpectBytesOfOneThread(mask);
    else
        ExpectDots(mask, random);
}
