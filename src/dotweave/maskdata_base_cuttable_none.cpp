#include "dotweave/maskdata_base.h"

#include "cutrange.h"
#include "log.h"
#include "maskdata_base_unit.h"

#include <vector>

using namespace dotweave;

bool CMaskData_Base::CreateCutTable_FeatherNone(SCutTable* table, int /*count*/)
{
    if (m_maskParam_Current.colorTimes == 1)
        return CreateCutTable_FeatherNone_ColorOneTimes(table, m_maskHeight_NoneRes, m_stepHeight_NoneRes,
                                                        m_maskParam_Current.basePass);
    return CreateCutTable_FeatherNone_ColorMultipleTimes(table, m_maskHeight_NoneRes);
}

bool CMaskData_Base::CreateCutTable_FeatherNone_ColorOneTimes(SCutTable* table, int count)
{
    return CreateCutTable_FeatherNone_ColorOneTimes(table, count, m_stepHeight_NoneRes,
                                                    m_maskParam_Current.basePass);
}

bool CMaskData_Base::CreateCutTable_FeatherNone_ColorOneTimes(SCutTable* table, int /*count*/,
                                                              int rowsPerPass, int passCount)
{
    std::vector<SCutRange> ranges;
    CutRanges_AppendShares(ranges, passCount, rowsPerPass);
    CutRanges_Expand(ranges, table);
    return true;
}

bool CMaskData_Base::CreateCutTable_FeatherNone_ColorMultipleTimes(SCutTable* table, int /*count*/)
{
    static constexpr char SCOPE[] =
        "bool __cdecl CMaskData_Base::CreateCutTable_FeatherNone_ColorMultipleTimes("
        "struct SCutTable *,int)";
    if (m_maskParam_Current.colorTimes <= 1)
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, __LINE__);
    CutRanges_Expand(CutRanges_InGroups(m_maskParam_Current.basePass, m_maskParam_Current.colorTimes,
                                        m_stepHeight_NoneRes),
                     table);
    return true;
}
