#include "dotweave/maskdata_base.h"

#include "constants.h"
#include "int32.h"
#include "log.h"
#include "maskdata_base_unit.h"
#include "maskgeometry.h"

#include <cmath>
#include <cstddef>

using namespace dotweave;

namespace {

constexpr char SCOPE_CREATE[] = "bool __cdecl CMaskData_Base::Create(const struct SMaskParam &)";

/// Parts that a resSplitType makes of the X and of the Y resolution passes.
struct SSplitCounts {
    int x;
    int y;
};

SSplitCounts SplitCounts(int resSplitType)
{
    switch (resSplitType) {
    case ResSplit_X2:
        return {2, 1};
    case ResSplit_Y2:
        return {1, 2};
    case ResSplit_Y3:
        return {1, 3};
    case ResSplit_Y4:
        return {1, 4};
    case ResSplit_X2Y2:
        return {2, 2};
    default:
        return {1, 1};
    }
}

bool IsPercent(float value)
{
    return std::isfinite(value) && value >= 0.0F && value <= 100.0F;
}

bool IsPercent(int value)
{
    return value >= 0 && value <= 100;
}

bool IsSmooth_3(const SMaskParam& param)
{
    return param.featherMode == FeatherMode_Nozzle &&
           (param.featherNozzleType == FeatherNozzle_Smooth_3 ||
            param.featherNozzleType == FeatherNozzle_Smooth_3_Sine);
}

bool IsSmooth_2(const SMaskParam& param)
{
    return param.featherMode == FeatherMode_Nozzle && param.featherNozzleType == FeatherNozzle_Smooth_2;
}

} // namespace

CMaskData_Base::~CMaskData_Base()
{
    delete[] m_xResStep;
    m_xResStep = nullptr;
    delete[] m_yResStep;
    m_yResStep = nullptr;
    delete m_maskBlock;
    m_maskBlock = nullptr;
}

bool CMaskData_Base::Create(const SMaskParam& param)
{
    m_maskParam_Input = param;
    m_maskParam_Current = param;
    if (param.colorTimes < 1 || param.colorTimes > param.basePass)
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE_CREATE, 85);
    const SSplitCounts split = SplitCounts(param.resSplitType);
    m_maskParam_Current.xResPass /= split.x;
    m_maskParam_Current.yResPass /= split.y;
    if (!Param_CanBeBuilt())
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE_CREATE, 85);
    m_baseMaskHeight = THRESHOLD_MATRIX_SIZE;
    m_baseMaskWidth = THRESHOLD_MATRIX_SIZE;
    if (!InitNoneRes() || !Geometry_CanBeBuilt())
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE_CREATE, 117);
    if (!InitResParam())
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE_CREATE, 118);
    if (!InitMaskSize() || !MaskSize_CanBeBuilt())
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE_CREATE, 119);
    if (!CreateMaskData())
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE_CREATE, 120);
    Log_Data();
    return true;
}

/// Refuses records from damaged job files before any of their numbers reaches a division or an allocation.
/// A field that the mode never reads is no reason to refuse. A head without rows leaves every layout without
/// a step and is refused there.
bool CMaskData_Base::Param_CanBeBuilt() const
{
    const SMaskParam& param = m_maskParam_Current;
    if (param.xResPass < 1 || param.yResPass < 1 || param.colorCount < 1)
        return false;
    if (param.bitsPerPixel != 1 && param.bitsPerPixel != 2)
        return false;
    if ((IsSmooth_2(param) || IsSmooth_3(param)) && !IsPercent(param.featherPercent))
        return false;
    if (IsSmooth_3(param) && !IsPercent(param.featherLevelPercent))
        return false;
    return Int32_Holds(MaskLineBytes(THRESHOLD_MATRIX_SIZE, param.bitsPerPixel, param.xResPass) * 8 + 7);
}

/// Refuses layouts whose cut table has more rows than the band, and those of which a single position or the lead
/// blank does not fit into 32 bits. A derived mask object can replace the set-up steps, so their results are
/// looked at here.
bool CMaskData_Base::Geometry_CanBeBuilt() const
{
    const SMaskParam& param = m_maskParam_Current;
    const std::int64_t height = m_maskHeight_NoneRes;
    const std::int64_t step = m_stepHeight_NoneRes;
    if (height < 1 || step < 1 || step > height)
        return false;
    if (param.featherMode == FeatherMode_None && param.basePass * step > height)
        return false;
    if (IsSmooth_2(param)) {
        const std::int64_t passes = param.basePass;
        if (m_smooth2FeatherHeight < 0 || m_smooth2PassHeight < 0 ||
            passes * m_smooth2PassHeight != m_smooth2PassHeightTotal ||
            (passes + 1) * m_smooth2FeatherHeight != m_smooth2FeatherHeightTotal ||
            std::int64_t{m_smooth2PassHeightTotal} + m_smooth2FeatherHeightTotal > height)
            return false;
    }
    // Whether the lead blank leaves a band is for InitResParam to say; here it only has to fit, with the offsets
    // of the last resolution passes, which are less than another band.
    const std::int64_t lines = height * param.yResPass;
    const std::int64_t lead = std::int64_t{m_leadBlankHeight_NoneRes} * param.yResPass;
    return Int32_Holds(lead) && Int32_Holds(lead + lines) && Int32_Holds(lines) &&
           Int32_Holds(lines * MaskLineBytes(m_baseMaskWidth, param.bitsPerPixel, param.xResPass));
}

/// Refuses modes whose masks or threshold planes do not fit into 32 bits.
bool CMaskData_Base::MaskSize_CanBeBuilt() const
{
    const SMaskParam& param = m_maskParam_Current;
    if (m_baseMaskHeight < 1 || m_positionCount < 1)
        return false;
    const std::int64_t onePosition = std::int64_t{m_maskHeight_NoneRes} * param.yResPass * m_maskLineBytes;
    const std::int64_t oneColor = onePosition * m_positionCount;
    if (!Int32_Holds(oneColor) || !Int32_Holds(oneColor * param.colorCount))
        return false;
    const std::int64_t onePlane =
        std::int64_t{m_baseMaskWidth} * m_baseMaskHeight * static_cast<std::int64_t>(sizeof(std::uint16_t));
    return Int32_Holds(onePlane * param.colorCount);
}

const std::uint8_t* CMaskData_Base::MaskData_Get(int color, int& position) const
{
    if (color >= m_maskParam_Current.colorCount)
        return nullptr;
    // Callers start at -1 and so get position 0 first.
    position = position < 0 ? 0 : (position % m_positionCount + 1) % m_positionCount;
    return m_maskBlock->MaskData_Const() + Int32_Product(color, MaskBytes_OneColor()) +
           Int32_Product(Int32_Product(position, m_maskHeight), m_maskLineBytes);
}

int CMaskData_Base::MaskBytes_OnePosition() const
{
    return Int32_Product(Int32_Product(m_maskHeight_NoneRes, m_maskLineBytes), YResPass());
}

int CMaskData_Base::MaskBytes_OneColor() const
{
    return Int32_Product(Int32_Product(Int32_Product(m_maskHeight_NoneRes, m_positionCount), m_maskLineBytes),
                         YResPass());
}

int CMaskData_Base::SplitCount_XRes_Get() const
{
    return SplitCounts(m_maskParam_Current.resSplitType).x;
}

int CMaskData_Base::SplitCount_YRes_Get() const
{
    return SplitCounts(m_maskParam_Current.resSplitType).y;
}

void CMaskData_Base::Log_Data() {}
