#include "finishtail.h"

#include "constants.h"
#include "maskdatagenerator.h"
#include "peek.h"

#include <cstddef>
#include <stdexcept>

using namespace dotweave;

CFinishTail::CFinishTail(const SMaskParam& param)
{
    CMaskData_Base mask;
    if (!mask.Create(param))
        throw std::runtime_error("the mode cannot be built");
    SMaskData_Base_Peek peek{mask};
    m_cutTable.resize(static_cast<std::size_t>(peek.MaskHeight_NoneRes()));
    if (!mask.CreateCutTable(m_cutTable.data(), peek.MaskHeight_NoneRes()))
        throw std::runtime_error("the mode has no cut table");
    m_planes.Create(peek.BaseMaskWidth(), peek.BaseMaskHeight(), param.colorCount);
    m_block.Initialize(mask.MaskBytes_OneColor(), param.colorCount);

    m_param.pMaskBlock = &m_block;
    m_param.maskBytes_OneColor = mask.MaskBytes_OneColor();
    m_param.maskBytes_OnePosition = mask.MaskBytes_OnePosition();
    m_param.maskLineBytes = mask.MaskLineBytes_OneColor();
    m_param.pBaseMaskData = &m_planes;
    m_param.thresholdHeight = peek.BaseMaskHeight();
    m_param.thresholdWidth = peek.BaseMaskWidth();
    m_param.colorCount = param.colorCount;
    m_param.positionCount = peek.PositionCount();
    m_param.pCutTable = m_cutTable.data();
    m_param.cutTableCount = peek.MaskHeight_NoneRes();
    m_param.blockHeight = peek.MaskHeight_NoneRes();
    m_param.rowStep = peek.StepHeight_NoneRes();
    m_param.splitCount_XRes = mask.XResPass();
    m_param.splitCount_YRes = mask.YResPass();
    m_param.dotBits = mask.BitsPerPixel();
    m_param.featherNozzleType = mask.MaskParam_Current().featherNozzleType;
}

std::chrono::duration<double> CFinishTail::Measure()
{
    CMaskDataGenerator generator;
    if (!generator.Create(m_param, 0))
        throw std::runtime_error("the generator does not start");
    const auto& work = *SMaskDataGenerator_Peek{generator}.QueueBuffer()->m_queue_Work;
    // Deliberately without a yield: a thread that gives the processor away sees the flag late.
    while (!work.AddFinished_Get()) {
    }
    const auto start = std::chrono::steady_clock::now();
    if (!generator.Wait_Exit(WAIT_NO_LIMIT))
        throw std::runtime_error("the generator does not end");
    return std::chrono::steady_clock::now() - start;
}
