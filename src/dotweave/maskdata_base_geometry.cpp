#include "dotweave/maskdata_base.h"

#include "log.h"
#include "maskdata_base_unit.h"
#include "maskgeometry.h"

#include <cstddef>
#include <limits>
#include <numeric>

using namespace dotweave;

namespace {

/// Band positions after which the search for a matrix height is content.
constexpr int POSITION_COUNT_GOOD = 20;

/// `count` offsets, each one `distance` behind the one before.
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
    const int xPasses = m_maskParam_Current.xResPass;
    const int yPasses = m_maskParam_Current.yResPass;
    m_yResStep = Offsets_New(yPasses, m_stepHeight_NoneRes);
    m_xResStep = Offsets_New(xPasses, m_stepHeight_NoneRes / xPasses);
    m_maskWidth = m_baseMaskWidth * xPasses;
    m_stepHeight = m_stepHeight_NoneRes * yPasses;
    m_realStepHeight = m_stepHeight / xPasses / yPasses;
    int lead = m_leadBlankHeight_NoneRes * yPasses;
    // Deliberate: reads the current mode, which the feather-none set-up may have switched.
    if (m_maskParam_Current.featherMode != FeatherMode_Nozzle)
        lead += m_yResStep[yPasses - 1] + m_xResStep[xPasses - 1];
    m_leadBlankHeight = lead;
    m_maskHeight = m_maskHeight_NoneRes * yPasses;
    if (m_maskHeight > lead) {
        // Deliberate: the lead computed above only serves as a check.
        m_leadBlankHeight = m_maskHeight - m_realStepHeight;
        return true;
    }
    DOTWEAVE_LOG(MASKDATA_BASE_UNIT, "bool __cdecl CMaskData_Base::InitResParam(void)", 941,
                 SeverityLevel_Info)
        << "m_maskHeight = " << m_maskHeight << ", m_leadBlankHeight = " << lead;
    return false;
}

bool CMaskData_Base::InitMaskSize()
{
    // The masks repeat after the least common multiple of the matrix rows in use and the step. Giving up some
    // rows of the matrix keeps the number of positions, and so the memory, small.
    constexpr std::int64_t NONE = std::numeric_limits<std::int32_t>::max();
    const int fullHeight = m_baseMaskHeight;
    std::int64_t best = NONE;
    int bestHeight = -1;
    for (int i = 0; i < fullHeight / 2; ++i) {
        const int candidate = fullHeight - i;
        const std::int64_t repeat = std::lcm(std::int64_t{candidate}, std::int64_t{m_stepHeight_NoneRes});
        if (repeat >= best)
            continue;
        best = repeat;
        bestHeight = candidate;
        if (best / m_stepHeight_NoneRes <= POSITION_COUNT_GOOD)
            break;
    }
    m_baseMaskHeight = bestHeight;
    m_positionCount = static_cast<int>(best / m_stepHeight_NoneRes);
    m_maskLineBytes = static_cast<int>(
        MaskLineBytes(m_baseMaskWidth, m_maskParam_Current.bitsPerPixel, m_maskParam_Current.xResPass));
    return true;
}
