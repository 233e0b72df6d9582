#include "dotweave/maskdata_base.h"

#include "int32.h"
#include "log.h"
#include "maskdata_base_refusal.h"
#include "maskdata_base_unit.h"
#include "maskgeometry.h"

#include <cstddef>

using namespace dotweave;

namespace {

/// `count` offsets, each `distance` more than the one before.
std::int32_t* Offsets_New(int count, int distance)
{
    auto* offsets = new std::int32_t[static_cast<std::size_t>(count)];
    for (int i = 0; i < count; ++i)
        offsets[i] = distance * i;
    return offsets;
}

} // namespace

bool CMaskData_Base::InitResParam()
{
    const SMaskGeometry geometry = Geometry_Get();
    const int xPasses = m_maskParam_Current.xResPass;
    const int yPasses = m_maskParam_Current.yResPass;
    m_yResStep = Offsets_New(yPasses, m_stepHeight_NoneRes);
    m_xResStep = Offsets_New(xPasses, m_stepHeight_NoneRes / xPasses);
    m_maskWidth = Int32_Product(m_baseMaskWidth, xPasses); // a derived mask object may choose any width
    m_stepHeight = m_stepHeight_NoneRes * yPasses;
    m_realStepHeight = m_stepHeight / xPasses / yPasses;
    m_leadBlankHeight = static_cast<int>(LeadBlank_IncludeRes(geometry));
    m_maskHeight = m_maskHeight_NoneRes * yPasses;
    if (!IsRefusedAt(ECreationStep::Lead)) {
        // Deliberate: the lead computed above only serves as a check.
        m_leadBlankHeight = m_maskHeight - m_realStepHeight;
        return true;
    }
    DOTWEAVE_LOG(MASKDATA_BASE_UNIT, "bool __cdecl CMaskData_Base::InitResParam(void)", 941,
                 SeverityLevel_Info)
        << "m_maskHeight = " << m_maskHeight << ", m_leadBlankHeight = " << m_leadBlankHeight;
    return false;
}

bool CMaskData_Base::InitMaskSize()
{
    SMaskGeometry geometry = Geometry_Get();
    Geometry_MaskSize(geometry);
    Geometry_Set(geometry);
    return Int32_Holds(geometry.lineBytes);
}

int CMaskData_Base::SplitCount_XRes_Get() const
{
    return SplitCounts(m_maskParam_Current.resSplitType).x;
}

int CMaskData_Base::SplitCount_YRes_Get() const
{
    return SplitCounts(m_maskParam_Current.resSplitType).y;
}

SMaskGeometry CMaskData_Base::Geometry_Get() const
{
    return {m_maskParam_Input,        m_maskParam_Current,       m_stepHeight_NoneRes,
            m_maskHeight_NoneRes,     m_leadBlankHeight_NoneRes, m_smooth2PassHeight,
            m_smooth2PassHeightTotal, m_smooth2FeatherHeight,    m_smooth2FeatherHeightTotal,
            m_baseMaskHeight,         m_baseMaskWidth,           m_positionCount,
            m_maskLineBytes};
}

/// Stores what the next check reads; the check refuses what does not fit into 32 bits.
void CMaskData_Base::Geometry_Set(const SMaskGeometry& geometry)
{
    m_maskParam_Current = geometry.param;
    m_stepHeight_NoneRes = static_cast<std::int32_t>(geometry.step);
    m_maskHeight_NoneRes = static_cast<std::int32_t>(geometry.height);
    m_leadBlankHeight_NoneRes = static_cast<std::int32_t>(geometry.lead);
    m_smooth2PassHeight = static_cast<std::int32_t>(geometry.passZone);
    m_smooth2PassHeightTotal = static_cast<std::int32_t>(geometry.passZones);
    m_smooth2FeatherHeight = static_cast<std::int32_t>(geometry.featherZone);
    m_smooth2FeatherHeightTotal = static_cast<std::int32_t>(geometry.featherZones);
    m_baseMaskHeight = static_cast<std::int32_t>(geometry.matrixHeight);
    m_baseMaskWidth = static_cast<std::int32_t>(geometry.matrixWidth);
    m_positionCount = static_cast<std::int32_t>(geometry.positionCount);
    m_maskLineBytes = static_cast<std::int32_t>(geometry.lineBytes);
}
