#include "dotweave/maskdata_base.h"

#include "constants.h"
#include "cutrange.h"
#include "int32.h"
#include "log.h"
#include "maskdata_base_unit.h"
#include "maskgeometry.h"
#include "slidingramp.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

using namespace dotweave;

namespace {

/// Widens one range by a factor around its centre and keeps its width: pushed up from 0 at the lower end,
/// down from the top at the upper end.
SCutTable Range_Widened(SCutTable range, int factor)
{
    const int lower = range.lowerLimit;
    const int upper = range.upperLimit;
    const std::int64_t width = std::int64_t{upper - lower} * factor;
    if (width >= THRESHOLD_LEVEL_MAX)
        return {THRESHOLD_LEVEL_MAX, 0};
    const int kept = static_cast<int>(width);
    const int centre = (upper + lower) >> 1;
    const int half = kept / 2;
    int newLower = 0;
    int newUpper = 0;
    if (centre < 32767) { // deliberate: the middle of the scale itself counts to the upper half
        newLower = std::max(centre - half, 0);
        newUpper = std::min(newLower + kept, THRESHOLD_LEVEL_MAX);
    } else {
        newUpper = std::min(centre + half, THRESHOLD_LEVEL_MAX);
        newLower = std::max(newUpper - kept, 0);
    }
    return {static_cast<std::uint16_t>(newUpper), static_cast<std::uint16_t>(newLower)};
}

} // namespace

bool CMaskData_Base::CreateCutTable_Smooth_3(SCutTable* table, int n)
{
    if (m_maskParam_Current.colorTimes == 1)
        return CreateCutTable_Smooth_3_ColorOneTimes(table, n);
    return CreateCutTable_Smooth_3_ColorMultipleTimes_Style_2(table, n);
}

bool CMaskData_Base::CreateCutTable_Smooth_3_ColorOneTimes(SCutTable* table, int n)
{
    return CreateCutTable_Smooth_3_ColorOneTimes_Style_1(table, n, m_stepHeight_NoneRes,
                                                         m_maskParam_Current.featherLevelPercent);
}

bool CMaskData_Base::CreateCutTable_Smooth_3_ColorOneTimes_Style_1(SCutTable* table, int n, int stepRows,
                                                                   int featherLevelPercent)
{
    SlidingRamp_Fill(table, n, stepRows, FeatherLevel(featherLevelPercent));
    return true;
}

bool CMaskData_Base::CreateCutTable_Smooth_3_ColorMultipleTimes_Style_2(SCutTable* table, int n)
{
    static constexpr char SCOPE[] =
        "bool __cdecl CMaskData_Base::CreateCutTable_Smooth_3_ColorMultipleTimes_Style_2(struct SCutTable "
        "*,int)";
    if (!CreateCutTable_Smooth_3_ColorOneTimes(table, n))
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, __LINE__);
    std::transform(
        table, table + std::max(n, 0), table,
        [factor = m_maskParam_Current.colorTimes](SCutTable range) { return Range_Widened(range, factor); });
    return true;
}

bool CMaskData_Base::CreateCutTable_Smooth_3_ColorMultipleTimes_Style_1(SCutTable* table, int n)
{
    static constexpr char SCOPE[] =
        "bool __cdecl CMaskData_Base::CreateCutTable_Smooth_3_ColorMultipleTimes_Style_1(struct SCutTable "
        "*,int)";
    const int times = m_maskParam_Current.colorTimes;
    const int step = m_stepHeight_NoneRes;
    const int passesPerGroup = times < 1 ? 0 : m_maskParam_Current.basePass / times;
    const int groupRows = Int32_Product(step, passesPerGroup);
    std::vector<SCutTable> group(Int32_Size(groupRows));
    if (!CreateCutTable_FeatherNone_ColorOneTimes(group.data(), groupRows, step, passesPerGroup))
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, __LINE__);
    const int copies = std::max(times, 1) - 1;
    const int rampRows = static_cast<int>(n - std::int64_t{copies} * groupRows);
    std::vector<SCutTable> ramp(Int32_Size(rampRows));
    CreateCutTable_Smooth_3_ColorOneTimes_Style_1(ramp.data(), rampRows, step,
                                                  m_maskParam_Current.featherLevelPercent);
    for (int copy = 0; copy < copies; ++copy)
        table = std::copy(group.begin(), group.end(), table);
    std::copy(ramp.begin(), ramp.end(), table);
    return true;
}

bool CMaskData_Base::CreateCutTable_Smooth_3_ColorOneTimes_Style_2(SCutTable* table, int n, int stepRows)
{
    static constexpr char SCOPE[] =
        "bool __cdecl CMaskData_Base::CreateCutTable_Smooth_3_ColorOneTimes_Style_2(struct SCutTable "
        "*,int,int)";
    if (n < 1 || stepRows < 1)
        return true; // no rows, or no zones to lay them out in
    const int passes = n / stepRows;
    const int rest = n % stepRows;
    CreateCutTable_FeatherNone_ColorOneTimes(table, n, stepRows, passes);
    if (rest < 1)
        return true;
    // The rest rows at the band's end share their image rows with the first rest rows of every zone before
    // them: those rows form a smaller table of the same kind, one pass richer.
    std::vector<SCutTable> shared(Int32_Size(passes + 1, rest));
    if (!CreateCutTable_Smooth_3_ColorOneTimes_Style_2(shared.data(), (passes + 1) * rest, rest))
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, __LINE__);
    for (int zone = 0; zone <= passes; ++zone)
        std::copy_n(shared.data() + static_cast<std::ptrdiff_t>(zone) * rest, rest,
                    table + static_cast<std::ptrdiff_t>(zone) * stepRows);
    return true;
}
