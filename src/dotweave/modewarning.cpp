#include "modewarning.h"

#include "rawmaskdata_table.h"
#include "refusaltext.h"

#include <algorithm>

namespace dotweave {

namespace {

/// Hard edges that became smooth-2 zones.
std::string Warning_Switch(const SMaskGeometry& geometry)
{
    if (geometry.input.featherMode == geometry.param.featherMode)
        return {};
    const SMaskParam& param = geometry.param;
    const std::int64_t rest = param.nozzleCount - param.basePass * geometry.step;
    std::string text = Text_Of("featherMode 0 becomes smooth-2: nozzleCount ", param.nozzleCount, " leaves ",
                               Text_Rows(rest), " after ", param.basePass,
                               param.basePass == 1 ? " step of " : " steps of ", Text_Rows(geometry.step),
                               ", so feather zones of ", Text_Rows(geometry.featherZone), " blend the edges");
    if (geometry.height < param.nozzleCount)
        text += Text_Of("; the head has ", Text_Rows(param.nozzleCount - geometry.height), " unused");
    return text;
}

/// The first planes that share their thresholds with one before, in pairs; from the seventeenth on all do.
std::string Warning_SharedMatrix(const SMaskGeometry& geometry)
{
    std::string pairs;
    const int count = std::min(geometry.param.colorCount, THRESHOLD_MATRIX_COUNT + 1);
    for (int plane = 0; plane < count; ++plane) {
        const int same = Plane_WithSameMatrix(plane);
        if (same != plane)
            pairs += Text_Of(pairs.empty() ? "" : ", ", plane, " as ", same);
    }
    if (pairs.empty())
        return {};
    return Text_Of("colorCount ", geometry.param.colorCount,
                   ": colour planes share thresholds, so their dots coincide: plane ", pairs,
                   geometry.param.colorCount > count ? " and so on" : "");
}

bool IsBlank(const SMaskGeometry& geometry)
{
    return Layout_Of(geometry.param) == ELayout::Smooth_3 &&
           FeatherLevel(geometry.param.featherLevelPercent) == 0;
}

std::string Warning_BlankLevel(const SMaskGeometry& geometry)
{
    if (!IsBlank(geometry))
        return {};
    return Text_Of("featherLevelPercent ", geometry.param.featherLevelPercent,
                   " builds a blank mask: no row prints anything");
}

std::string Warning_ZonesPrintedOnce(const SMaskGeometry& geometry)
{
    const SMaskParam& param = geometry.param;
    if (Layout_Of(param) != ELayout::Smooth_2 || param.colorTimes == 1 || geometry.featherZone == 0)
        return {};
    return Text_Of("colorTimes ", param.colorTimes, " with smooth-2 zones: of every step of ",
                   Text_Rows(geometry.step), ", ", geometry.featherZone,
                   geometry.featherZone == 1 ? " prints" : " print", " once and ", geometry.passZone,
                   geometry.passZone == 1 ? " prints " : " print ", param.colorTimes, " times");
}

/// Dots move to the first rows of their own mask, `distance` rows away on the sheet. docs/cut-tables.md has
/// the cases.
std::string Warning_SineEdge(const SMaskGeometry& geometry)
{
    if (!HasSineEdge(geometry.param) || IsBlank(geometry))
        return {};
    const auto featherRows = static_cast<int>(FeatherRows(geometry.height, geometry.step));
    const int sineRows = SineMaskRows(featherRows, static_cast<int>(geometry.matrixWidth));
    const std::int64_t distance = geometry.height - featherRows;
    const bool isSameThreshold = distance % geometry.matrixHeight == 0;
    // The curve covers one row in every column, so no dot leaves a single row.
    if (sineRows < 2 || (distance > 0 && isSameThreshold && geometry.param.colorTimes == 1))
        return {};
    const std::string start = Text_Of("featherNozzleType 3 moves dots of the last ", Text_Rows(sineRows));
    if (distance == 0)
        return start + " into the same rows, where they are lost";
    if (isSameThreshold)
        return start + " to the first feather rows, where a dot that finds its place taken is lost";
    return Text_Of(start, " to the first feather rows, where other thresholds apply: some pixels of every ",
                   "step of ", Text_Rows(geometry.step),
                   " lose a print, and others may print once too often");
}

} // namespace

std::vector<std::string> Mode_Warnings(const SMaskGeometry& geometry)
{
    std::vector<std::string> warnings;
    for (const auto warning : {Warning_Switch, Warning_SharedMatrix, Warning_BlankLevel,
                               Warning_ZonesPrintedOnce, Warning_SineEdge}) {
        if (std::string text = warning(geometry); !text.empty())
            warnings.push_back(std::move(text));
    }
    return warnings;
}

} // namespace dotweave
