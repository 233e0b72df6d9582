#include "dotweave/maskdata_base.h"

#include "log.h"
#include "maskdata_base_refusal.h"
#include "maskdata_base_unit.h"
#include "maskgeometry.h"

using namespace dotweave;

bool CMaskData_Base::InitNoneRes()
{
    if (IsRefusedAt(ECreationStep::FeatherMode))
        return Log_Failure(MASKDATA_BASE_UNIT, "bool __cdecl CMaskData_Base::InitNoneRes(void)", 163);
    return Layout_Of(m_maskParam_Current) == ELayout::None ? InitNoneRes_FeatherNone()
                                                           : InitNoneRes_FeatherNozzle();
}

bool CMaskData_Base::InitNoneRes_FeatherNozzle()
{
    if (IsRefusedAt(ECreationStep::FeatherNozzle))
        return Log_Failure(MASKDATA_BASE_UNIT, "bool __cdecl CMaskData_Base::InitNoneRes_FeatherNozzle(void)",
                           182);
    return Layout_Of(m_maskParam_Current) == ELayout::Smooth_2 ? InitNoneRes_FeatherNozzle_Smooth_2()
                                                               : InitNoneRes_FeatherNozzle_Smooth_3();
}

bool CMaskData_Base::InitNoneRes_FeatherNone()
{
    SMaskGeometry geometry = Geometry_Get();
    Geometry_FeatherNone(geometry);
    Geometry_Set(geometry);
    if (IsRefusedAt(ECreationStep::Layout))
        return Log_Failure(MASKDATA_BASE_UNIT, "bool __cdecl CMaskData_Base::InitNoneRes_FeatherNone(void)",
                           237);
    return true;
}

bool CMaskData_Base::InitNoneRes_FeatherNozzle_Smooth_2()
{
    static constexpr char SCOPE[] = "bool __cdecl CMaskData_Base::InitNoneRes_FeatherNozzle_Smooth_2(void)";
    SMaskGeometry geometry = Geometry_Get();
    Geometry_Smooth_2(geometry);
    Geometry_Set(geometry);
    if (IsRefusedAt(ECreationStep::Layout))
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, 205);
    // By the arithmetic of the zones the height always is the head's; the agreed check guards that.
    if (m_maskHeight_NoneRes != m_maskParam_Current.nozzleCount)
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, 205);
    return true;
}

bool CMaskData_Base::InitNoneRes_FeatherNozzle_Smooth_3()
{
    static constexpr char SCOPE[] = "bool __cdecl CMaskData_Base::InitNoneRes_FeatherNozzle_Smooth_3(void)";
    SMaskGeometry geometry = Geometry_Get();
    Geometry_Smooth_3(geometry);
    Geometry_Set(geometry);
    if (IsRefusedAt(ECreationStep::Layout))
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, __LINE__);
    return true;
}

int CMaskData_Base::StepHeadNozzle_Get(int nozzleCount, int basePass, float featherPercent)
{
    return StepHeight_Feathered(nozzleCount, basePass, featherPercent);
}
