#include "dotweave/maskdata_base.h"

#include "log.h"
#include "maskdata_base_unit.h"
#include "maskgeometry.h"

#include <algorithm>
#include <cstdint>

using namespace dotweave;

bool CMaskData_Base::InitNoneRes()
{
    switch (m_maskParam_Current.featherMode) {
    case FeatherMode_None:
        return InitNoneRes_FeatherNone();
    case FeatherMode_Nozzle:
        return InitNoneRes_FeatherNozzle();
    default:
        return Log_Failure(MASKDATA_BASE_UNIT, "bool __cdecl CMaskData_Base::InitNoneRes(void)", 163);
    }
}

bool CMaskData_Base::InitNoneRes_FeatherNozzle()
{
    switch (m_maskParam_Current.featherNozzleType) {
    case FeatherNozzle_Smooth_2:
        return InitNoneRes_FeatherNozzle_Smooth_2();
    case FeatherNozzle_Smooth_3:
    case FeatherNozzle_Smooth_3_Sine:
        return InitNoneRes_FeatherNozzle_Smooth_3();
    default:
        return Log_Failure(MASKDATA_BASE_UNIT, "bool __cdecl CMaskData_Base::InitNoneRes_FeatherNozzle(void)",
                           182);
    }
}

bool CMaskData_Base::InitNoneRes_FeatherNone()
{
    SMaskParam& param = m_maskParam_Current;
    const int passes = param.basePass;
    const int step = StepHeight_Rounded(param.nozzleCount / passes, param.xResPass, param.yResPass);
    m_stepHeight_NoneRes = step;
    if (step <= 0)
        return Log_Failure(MASKDATA_BASE_UNIT, "bool __cdecl CMaskData_Base::InitNoneRes_FeatherNone(void)",
                           237);
    const int rest = param.nozzleCount - passes * step;
    if (rest <= 0) {
        m_maskHeight_NoneRes = passes * step;
        m_leadBlankHeight_NoneRes = (passes - 1) * step;
        return true;
    }
    // Deliberate: rows left over would print a band edge of their own, so they become feather zones.
    param.featherMode = FeatherMode_Nozzle;
    param.featherNozzleType = FeatherNozzle_Smooth_2;
    const int feather = std::min(rest, step);
    m_smooth2FeatherHeight = feather;
    m_smooth2PassHeight = step - feather;
    m_smooth2PassHeightTotal = (step - feather) * passes;
    m_smooth2FeatherHeightTotal = (passes + 1) * feather;
    m_maskHeight_NoneRes = m_smooth2FeatherHeightTotal + m_smooth2PassHeightTotal;
    m_leadBlankHeight_NoneRes = m_maskHeight_NoneRes - feather;
    return true;
}

bool CMaskData_Base::InitNoneRes_FeatherNozzle_Smooth_2()
{
    static constexpr char SCOPE[] = "bool __cdecl CMaskData_Base::InitNoneRes_FeatherNozzle_Smooth_2(void)";
    const SMaskParam& param = m_maskParam_Current;
    const int passes = param.basePass;
    const std::int64_t zones = std::int64_t{passes} + 1; // need not fit into 32 bits before the step is known
    const int share = static_cast<int>(FeatherAmount(param.nozzleCount, param.featherPercent) / zones);
    const int step = StepHeight_Rounded((param.nozzleCount - share) / passes, param.xResPass, param.yResPass);
    m_stepHeight_NoneRes = step;
    // A step that rounding leaves smaller than its feather zone has no room for a pass zone.
    const int feather = param.nozzleCount - step * passes;
    if (step <= 0 || feather > step)
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, 205);
    m_smooth2FeatherHeight = feather;
    m_smooth2FeatherHeightTotal = static_cast<int>(zones * feather);
    m_smooth2PassHeight = step - feather;
    m_smooth2PassHeightTotal = (step - feather) * passes;
    m_maskHeight_NoneRes = m_smooth2PassHeightTotal + m_smooth2FeatherHeightTotal;
    if (param.nozzleCount != m_maskHeight_NoneRes)
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, 205);
    m_leadBlankHeight_NoneRes = m_maskHeight_NoneRes - feather;
    return true;
}

bool CMaskData_Base::InitNoneRes_FeatherNozzle_Smooth_3()
{
    const SMaskParam& param = m_maskParam_Current;
    m_maskHeight_NoneRes = param.nozzleCount;
    const int step =
        StepHeight_Rounded(StepHeadNozzle_Get(param.nozzleCount, param.basePass, param.featherPercent),
                           param.xResPass, param.yResPass);
    m_stepHeight_NoneRes = step;
    if (step <= 0)
        return Log_Failure(MASKDATA_BASE_UNIT,
                           "bool __cdecl CMaskData_Base::InitNoneRes_FeatherNozzle_Smooth_3(void)", __LINE__);
    const int rest = param.nozzleCount % step;
    m_leadBlankHeight_NoneRes = param.nozzleCount - (rest != 0 ? rest : step);
    return true;
}

int CMaskData_Base::StepHeadNozzle_Get(int nozzleCount, int basePass, float featherPercent)
{
    return (nozzleCount - FeatherAmount(nozzleCount, featherPercent)) / basePass;
}
