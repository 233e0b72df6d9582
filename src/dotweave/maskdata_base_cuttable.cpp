#include "dotweave/maskdata_base.h"

#include "log.h"
#include "maskdata_base_unit.h"

using namespace dotweave;

bool CMaskData_Base::CreateCutTable(SCutTable* table, int count)
{
    static constexpr char SCOPE[] = "bool __cdecl CMaskData_Base::CreateCutTable(struct SCutTable *,int)";
    const SMaskParam& param = m_maskParam_Current;
    if (param.featherMode == FeatherMode_None)
        return CreateCutTable_FeatherNone(table, count);
    if (param.featherMode != FeatherMode_Nozzle)
        return Log_FailureValue(MASKDATA_BASE_UNIT, SCOPE, __LINE__,
                                "m_maskParam_Current.featherMode = ", param.featherMode);
    switch (param.featherNozzleType) {
    case FeatherNozzle_Smooth_2:
        return CreateCutTable_Smooth_2(table, count);
    case FeatherNozzle_Smooth_3:
    case FeatherNozzle_Smooth_3_Sine: // the sine acts on dots, later
        return CreateCutTable_Smooth_3(table, count);
    case FeatherNozzle_Reserved:
        return false;
    default:
        return Log_FailureValue(MASKDATA_BASE_UNIT, SCOPE, __LINE__,
                                "m_maskParam_Current.featherNozzleType = ", param.featherNozzleType);
    }
}
