#include "dotweave/maskdata_base.h"

#include "constants.h"
#include "cutrange.h"
#include "int32.h"
#include "log.h"
#include "maskdata_base_unit.h"
#include "slidingramp.h"

#include <algorithm>
#include <cstddef>
#include <vector>

using namespace dotweave;

bool CMaskData_Base::CreateCutTable_Smooth_2(SCutTable* table, int /*count*/)
{
    static constexpr char SCOPE[] =
        "bool __cdecl CMaskData_Base::CreateCutTable_Smooth_2(struct SCutTable *,int)";
    std::vector<SCutTable> pass(Int32_Size(m_smooth2PassHeightTotal));
    std::vector<SCutTable> feather(Int32_Size(m_smooth2FeatherHeightTotal));
    if (!CreateCutTable_Smooth_2_Pass(pass.data(), m_smooth2PassHeightTotal) ||
        !CreateCutTable_Smooth_2_Feather(feather.data(), m_smooth2FeatherHeightTotal))
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, __LINE__);
    const SCutTable* passNext = pass.data();
    const SCutTable* featherNext = feather.data();
    for (int zone = 0; zone < m_maskParam_Current.basePass; ++zone) {
        table = std::copy_n(featherNext, m_smooth2FeatherHeight, table);
        table = std::copy_n(passNext, m_smooth2PassHeight, table);
        featherNext += m_smooth2FeatherHeight;
        passNext += m_smooth2PassHeight;
    }
    std::copy_n(featherNext, m_smooth2FeatherHeight, table);
    return true;
}

bool CMaskData_Base::CreateCutTable_Smooth_2_Pass(SCutTable* table, int /*count*/)
{
    if (m_maskParam_Current.colorTimes == 1)
        return CreateCutTable_Smooth_2_Pass_ColorOneTimes(table);
    return CreateCutTable_Smooth_2_Pass_ColorMultipleTimes(table);
}

bool CMaskData_Base::CreateCutTable_Smooth_2_Pass_ColorOneTimes(SCutTable* passTable)
{
    return CreateCutTable_FeatherNone_ColorOneTimes(passTable, m_smooth2PassHeightTotal, m_smooth2PassHeight,
                                                    m_maskParam_Current.basePass);
}

bool CMaskData_Base::CreateCutTable_Smooth_2_Pass_ColorMultipleTimes(SCutTable* passTable)
{
    // Deliberate: no check of colorTimes as in the feather-none builder; one group is the colour-once table.
    CutRanges_Expand(
        CutRanges_InGroups(m_maskParam_Current.basePass, m_maskParam_Current.colorTimes, m_smooth2PassHeight),
        passTable);
    return true;
}

bool CMaskData_Base::CreateCutTable_Smooth_2_Feather(SCutTable* featherTable, int n)
{
    SlidingRamp_Fill(featherTable, n, m_smooth2FeatherHeight, THRESHOLD_LEVEL_MAX);
    return true;
}
