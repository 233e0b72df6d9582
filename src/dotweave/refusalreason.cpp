#include "refusalreason.h"

#include "constants.h"
#include "modesearch.h"
#include "refusaltext.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace dotweave {

namespace {

constexpr std::int64_t INT32_MOST = std::numeric_limits<std::int32_t>::max();

std::string Text_TooMuch(std::int64_t value, std::string_view unit)
{
    return Text_Of(value, unit, ", more than ", INT32_MOST);
}

std::string Text_TooSmall(std::string_view field, std::int32_t value)
{
    return Text_Of(field, " ", value, " is less than 1");
}

/// "with 8 passes and 3 Y resolution passes"
std::string Text_WithPasses(const SMaskGeometry& geometry)
{
    const SMaskParam& param = geometry.param;
    std::string text = Text_Of("with ", param.basePass, param.basePass == 1 ? " pass" : " passes");
    if (param.xResPass > 1)
        text += Text_Of(param.yResPass > 1 ? ", " : " and ", param.xResPass, " X");
    if (param.yResPass > 1)
        text += Text_Of(" and ", param.yResPass, " Y");
    if (param.xResPass > 1 || param.yResPass > 1) {
        text += " resolution passes";
        const SSplitCounts split = SplitCounts(param.resSplitType);
        text += split.x > 1 || split.y > 1 ? " after the split" : "";
    }
    return text;
}

/// Resolution passes of one direction that the split may have used up.
std::string Text_NoPass(const SMaskGeometry& geometry, std::string_view field,
                        std::int32_t SMaskParam::*member, int split)
{
    const std::int32_t given = geometry.input.*member;
    const std::string hint = Nearest_Field(geometry, member, field, split);
    if (given < 1)
        return Text_TooSmall(field, given) + hint;
    return Text_Of(field, " ", given, " is less than the ", split, " parts that resSplitType ",
                   geometry.input.resSplitType, " makes of it", hint);
}

} // namespace

std::int64_t Line_Bits(const SMaskGeometry& geometry)
{
    return MaskLineBytes(THRESHOLD_MATRIX_SIZE, geometry.param.bitsPerPixel, geometry.param.xResPass) * 8;
}

std::int64_t Position_Lines(const SMaskGeometry& geometry)
{
    return geometry.height * geometry.param.yResPass;
}

std::int64_t Position_Bytes(const SMaskGeometry& geometry)
{
    return Position_Lines(geometry) *
           MaskLineBytes(geometry.matrixWidth, geometry.param.bitsPerPixel, geometry.param.xResPass);
}

std::int64_t OneColor_Bytes(const SMaskGeometry& geometry)
{
    return Position_Lines(geometry) * geometry.lineBytes * geometry.positionCount;
}

std::string Reason_BasePass(const SMaskGeometry& geometry)
{
    const std::int32_t least = std::max(geometry.param.colorTimes, 1);
    return Text_TooSmall("basePass", geometry.param.basePass) +
           Nearest_Field(geometry, &SMaskParam::basePass, "basePass", least);
}

std::string Reason_ColorTimes_TooFew(const SMaskGeometry& geometry)
{
    return Text_TooSmall("colorTimes", geometry.param.colorTimes) +
           Nearest_Field(geometry, &SMaskParam::colorTimes, "colorTimes", 1);
}

std::string Reason_ColorTimes_TooMany(const SMaskGeometry& geometry)
{
    const std::int32_t most = geometry.param.basePass;
    return Text_Of("colorTimes ", geometry.param.colorTimes, " is more than basePass ", most,
                   Nearest_Field(geometry, &SMaskParam::colorTimes, "colorTimes", most));
}

std::string Reason_XResPass(const SMaskGeometry& geometry)
{
    return Text_NoPass(geometry, "xResPass", &SMaskParam::xResPass,
                       SplitCounts(geometry.input.resSplitType).x);
}

std::string Reason_YResPass(const SMaskGeometry& geometry)
{
    return Text_NoPass(geometry, "yResPass", &SMaskParam::yResPass,
                       SplitCounts(geometry.input.resSplitType).y);
}

std::string Reason_ColorCount(const SMaskGeometry& geometry)
{
    return Text_TooSmall("colorCount", geometry.param.colorCount) +
           Nearest_Field(geometry, &SMaskParam::colorCount, "colorCount", 1);
}

std::string Reason_BitsPerPixel(const SMaskGeometry& geometry)
{
    const std::int32_t bits = geometry.param.bitsPerPixel;
    return Text_Of(
        "bitsPerPixel ", bits, " is neither 1 nor 2",
        Nearest_Field(geometry, &SMaskParam::bitsPerPixel, "bitsPerPixel", std::clamp(bits, 1, 2)));
}

std::string Reason_FeatherPercent(const SMaskGeometry& geometry)
{
    return Text_Of("featherPercent ", geometry.param.featherPercent, " is not in 0 to 100",
                   Nearest_Percent(geometry));
}

std::string Reason_FeatherLevelPercent(const SMaskGeometry& geometry)
{
    const std::int32_t level = geometry.param.featherLevelPercent;
    return Text_Of("featherLevelPercent ", level, " is not in 0 to 100",
                   Nearest_Field(geometry, &SMaskParam::featherLevelPercent, "featherLevelPercent",
                                 std::clamp(level, 0, 100)));
}

std::string Reason_LineBits(const SMaskGeometry& geometry)
{
    // The 7 bits that round up to whole bytes are added in 32 bits too.
    return Text_Of("xResPass ", geometry.input.xResPass, " makes mask lines of ", Line_Bits(geometry),
                   " bits with bitsPerPixel ", geometry.param.bitsPerPixel, ", more than ", INT32_MOST - 7);
}

std::string Reason_FeatherMode(const SMaskGeometry& geometry)
{
    const std::int32_t mode = geometry.param.featherMode;
    return Text_Of("featherMode ", mode, " is neither 0 nor 1",
                   Nearest_Field(geometry, &SMaskParam::featherMode, "featherMode", std::clamp(mode, 0, 1)));
}

std::string Reason_FeatherNozzleType(const SMaskGeometry& geometry)
{
    const std::int32_t type = geometry.param.featherNozzleType;
    return Text_Of(
        "featherNozzleType ", type,
        type == FeatherNozzle_Reserved ? " is reserved and never built, 1 to 3 are" : " is not in 1 to 3",
        Nearest_Field(geometry, &SMaskParam::featherNozzleType, "featherNozzleType", std::clamp(type, 1, 3)));
}

std::string Reason_NoStep(const SMaskGeometry& geometry)
{
    const SMaskParam& param = geometry.param;
    const std::int32_t count = param.nozzleCount;
    if (count < 1)
        return Text_TooSmall("nozzleCount", count) + Nearest_NozzleCount(geometry);
    const std::int64_t leastStep = std::int64_t{param.xResPass} * param.yResPass;
    const std::string passes = Text_WithPasses(geometry);
    if (count / param.basePass >= leastStep) { // without feathering the rows would do
        if (const int percent = NearestPercent_Below(geometry.input); percent >= 0)
            return Text_Of("featherPercent ", param.featherPercent, " leaves nozzleCount ", count,
                           " too few rows for a step of ", leastStep, " or more; at most ", percent,
                           " percent ", passes);
    }
    return Text_Of("nozzleCount ", count, " is too small for a step of ", leastStep, " or more rows ", passes,
                   Nearest_NozzleCount(geometry));
}

std::string Reason_FeatherAboveStep(const SMaskGeometry& geometry)
{
    const SMaskParam& param = geometry.param;
    const std::string zone = Text_Of(" needs a feather zone of ", geometry.featherZone,
                                     " rows, more than the step of ", Text_Rows(geometry.step));
    const std::string passes = Text_WithPasses(geometry);
    if (const int percent = NearestPercent_Below(geometry.input); percent >= 0)
        return Text_Of("featherPercent ", param.featherPercent, zone, "; at most ", percent, " percent ",
                       passes);
    // The rows that rounding takes off the step are too many, whatever the feather share.
    return Text_Of("nozzleCount ", param.nozzleCount, zone, " ", passes, Nearest_NozzleCount(geometry));
}

std::string Reason_Layout(const SMaskGeometry& geometry)
{
    return Text_Of("nozzleCount ", geometry.param.nozzleCount, " is laid out in a mask of ", geometry.height,
                   " rows and a step of ", geometry.step, " rows, which no cut table for basePass ",
                   geometry.param.basePass, " fills");
}

std::string Reason_Lines(const SMaskGeometry& geometry)
{
    const std::int64_t lead = geometry.lead * geometry.param.yResPass;
    return Text_Of("nozzleCount ", geometry.param.nozzleCount, " ", Text_WithPasses(geometry),
                   " makes a mask and a lead blank of ",
                   Text_TooMuch(lead + Position_Lines(geometry), " lines"));
}

std::string Reason_Position(const SMaskGeometry& geometry)
{
    return Text_Of("nozzleCount ", geometry.param.nozzleCount, " makes positions of ",
                   Text_TooMuch(Position_Bytes(geometry), " bytes"));
}

std::string Reason_NoBand(const SMaskGeometry& geometry)
{
    const SMaskParam& param = geometry.param;
    std::string text = Text_Of("featherPercent ", param.featherPercent, " leaves a feather zone of ",
                               geometry.featherZone, " rows, and so a lead blank as high as the mask");
    if (const int percent = NearestPercent_Above(geometry.input); percent >= 0)
        text += Text_Of("; at least ", percent, " percent ", Text_WithPasses(geometry));
    return text;
}

std::string Reason_NoRepeat(const SMaskGeometry& geometry)
{
    return Text_Of("nozzleCount ", geometry.param.nozzleCount, " makes a step of ", geometry.step,
                   " rows, which repeats on no threshold matrix within ", INT32_MOST, " rows");
}

std::string Reason_Plane(const SMaskGeometry& geometry)
{
    return Text_Of("colorCount ", geometry.param.colorCount, " needs threshold planes of ",
                   Text_TooMuch(geometry.matrixWidth * geometry.matrixHeight, " cells each"));
}

std::string Reason_OneColor(const SMaskGeometry& geometry)
{
    return Text_Of("nozzleCount ", geometry.param.nozzleCount, " makes ", geometry.positionCount,
                   " positions and ", Text_TooMuch(OneColor_Bytes(geometry), " bytes per colour"));
}

std::string Reason_AllColors(const SMaskGeometry& geometry)
{
    const std::int64_t oneColor = OneColor_Bytes(geometry);
    return Text_Of("colorCount ", geometry.param.colorCount, " makes ",
                   Text_TooMuch(oneColor * geometry.param.colorCount, " mask bytes"),
                   Nearest_Field(geometry, &SMaskParam::colorCount, "colorCount",
                                 static_cast<std::int32_t>(INT32_MOST / oneColor)));
}

} // namespace dotweave
