#include "maskdatagenerator_sub.h"

#include "constants.h"
#include "kernels/maskkernels.h"
#include "log.h"
#include "maskregion.h"

#include <cstddef>
#include <exception>
#include <thread>

namespace {

constexpr char UNIT[] = "maskdatagenerator_sub";

/// Longest sleep for a work item, in milliseconds.
constexpr unsigned int WORK_WAIT_MS = 100;

/// Hands the dots of a band's last feather rows that lie outside the sine curve to its first feather rows.
/// Both regions hold the sine part of the feather rows; the top takes the bottom's dots as they were.
void Dots_MoveUp(CMaskBlock& block, const CSineMask& sine)
{
    const std::uint8_t* up = sine.MaskBuffer_Up_Get();
    const std::uint8_t* down = sine.MaskBuffer_Down_Get();
    std::uint8_t* top = block.MaskData() + sine.SineMask_Offset_InFeather();
    std::uint8_t* bottom = top + (block.MaskDataBytesCount() - sine.FeatherMask_Size());
    const int size = sine.MaskSize_Get();
    for (int k = 0; k < size; ++k)
        top[k] = static_cast<std::uint8_t>(top[k] | (bottom[k] & up[k]));
    for (int k = 0; k < size; ++k)
        bottom[k] = static_cast<std::uint8_t>(bottom[k] & down[k]);
}

} // namespace

CMaskDataGenerator_Sub::~CMaskDataGenerator_Sub()
{
    CustomThreadBase::Stop();
    CustomThreadBase::Wait_Exit(WAIT_NO_LIMIT);
    delete m_pSourceData;
}

bool CMaskDataGenerator_Sub::Create(const SMaskDataGenerate_Param* param,
                                    CKelPtrQueueBuffer<SMaskDataGenerate_SubParam>* queueBuffer,
                                    const CSineMask* sineMask)
{
    static constexpr char SCOPE[] =
        "bool __cdecl CMaskDataGenerator_Sub::Create(const struct SMaskDataGenerate_Param *,class "
        "CKelPtrQueueBuffer<struct SMaskDataGenerate_SubParam> *,const class CSineMask *)";
    m_pParam = param;
    m_pQueueBuffer = queueBuffer;
    m_pSineMask = sineMask;
    if (!Start("CMaskDataGenerator_Position"))
        return Log_Failure(UNIT, SCOPE, __LINE__);
    return true;
}

bool CMaskDataGenerator_Sub::Prepare()
{
    if (!CustomThreadBase::Prepare())
        return Log_Failure(UNIT, "bool __cdecl CMaskDataGenerator_Sub::Prepare(void)", __LINE__);
    m_processState = ProcessState_AllocateBlocks;
    return true;
}

void CMaskDataGenerator_Sub::Finally()
{
    CustomThreadBase::Finally();
}

bool CMaskDataGenerator_Sub::OneLoop()
{
    try {
        if (OneLoop_ByState())
            return true;
    } catch (const std::exception&) {
        // No memory for the blocks, say: this worker ends like one that failed, the others take its share.
    }
    Log_FailureValue(UNIT, "bool __cdecl CMaskDataGenerator_Sub::OneLoop(void)", __LINE__,
                     "m_processState = ", m_processState);
    Stop();
    return false;
}

bool CMaskDataGenerator_Sub::OneLoop_ByState()
{
    switch (m_processState) {
    case ProcessState_AllocateBlocks:
        AllocateBlocks();
        m_processState = ProcessState_WaitForWork;
        return true;
    case ProcessState_WaitForWork:
        WaitForWork();
        return true;
    case ProcessState_Generate:
        return GenerateMaskData();
    case ProcessState_Feather:
        Feather_SineMask();
        m_processState = ProcessState_Merge;
        return true;
    case ProcessState_Merge:
        Merge_AllBlock();
        m_processState = ProcessState_Complete;
        return true;
    case ProcessState_Complete:
        return CompleteOneSourceData();
    default:
        return false;
    }
}

void CMaskDataGenerator_Sub::AllocateBlocks()
{
    m_blocks = std::make_unique<CMaskBlock[]>(static_cast<std::size_t>(m_pParam->splitCount_XRes));
    for (int j = 0; j < m_pParam->splitCount_XRes; ++j)
        m_blocks[static_cast<std::size_t>(j)].Initialize(m_pParam->thresholdWidth, m_pParam->blockHeight);
}

/// Takes the next item, or ends the worker. The flag is read before the queue is tried: an empty queue proves
/// the end only when the producer had finished by then. The not-empty event proves nothing, it may be stale.
void CMaskDataGenerator_Sub::WaitForWork()
{
    CKelPtrQueue<SMaskDataGenerate_SubParam>& work = *m_pQueueBuffer->m_queue_Work;
    const bool isFinished = work.AddFinished_Get();
    if (work.Pop(m_pSourceData, isFinished ? 0U : WORK_WAIT_MS)) {
        // Taking the last item reset the event; other workers may still sleep on it.
        if (work.AddFinished_Get())
            work.NotEmpty_Set();
        if (m_pSourceData != nullptr)
            m_processState = ProcessState_Generate;
        return;
    }
    if (isFinished)
        Stop();
    else
        std::this_thread::yield(); // the event may have been stale: let its writer correct it
}

bool CMaskDataGenerator_Sub::GenerateMaskData()
{
    const SMaskDataGenerate_Param& param = *m_pParam;
    for (int j = 0; j < param.splitCount_XRes; ++j)
        m_blocks[static_cast<std::size_t>(j)].ClearMaskData();
    const int rowStart = MaskRegion_Row(m_pSourceData->position, param.rowStep,
                                        m_pSourceData->splitIndex_YRes, param.splitCount_YRes);
    for (int j = 0; j < param.splitCount_XRes; ++j) {
        const int colStart = MaskRegion_Column(j, param.thresholdWidth, param.splitCount_XRes);
        if (!Cut_OneBlock(rowStart, colStart, m_blocks[static_cast<std::size_t>(j)]))
            return Log_Failure(UNIT, "bool __cdecl CMaskDataGenerator_Sub::GenerateMaskData(void)", __LINE__);
    }
    m_processState = ProcessState_Feather;
    return true;
}

bool CMaskDataGenerator_Sub::Cut_OneBlock(int rowStart, int colStart, CMaskBlock& block)
{
    SParam_GenerateMaskData cut = {};
    cut.cutTable = m_pParam->pCutTable;
    cut.cutTableCount = m_pParam->cutTableCount;
    cut.baseMaskData = m_pParam->pBaseMaskData->MaskData(m_pSourceData->color);
    cut.offsetY = rowStart;
    cut.offsetX = colStart;
    cut.baseMaskHeight = m_pParam->thresholdHeight;
    cut.baseMaskWidth = m_pParam->thresholdWidth;
    cut.bitsPerPixel = m_pParam->dotBits;
    cut.maskBlock = &block;
    MaskKernel_Cut(cut);
    return true;
}

void CMaskDataGenerator_Sub::Feather_SineMask()
{
    if (m_pSineMask == nullptr)
        return;
    for (int j = 0; j < m_pParam->splitCount_XRes; ++j)
        Dots_MoveUp(m_blocks[static_cast<std::size_t>(j)], *m_pSineMask);
}

void CMaskDataGenerator_Sub::Merge_AllBlock()
{
    const SMaskDataGenerate_Param& param = *m_pParam;
    const std::ptrdiff_t line = param.maskLineBytes;
    std::uint8_t* base = param.pMaskBlock->MaskData() +
                         static_cast<std::ptrdiff_t>(m_pSourceData->color) * param.maskBytes_OneColor +
                         static_cast<std::ptrdiff_t>(m_pSourceData->position) * param.maskBytes_OnePosition;
    MaskKernel_Merge(m_blocks.get(), param.splitCount_XRes, param.dotBits,
                     base + m_pSourceData->splitIndex_YRes * line, param.splitCount_YRes * line);
}

bool CMaskDataGenerator_Sub::CompleteOneSourceData()
{
    if (!m_pQueueBuffer->m_queue_Free->Push(m_pSourceData))
        return Log_Failure(UNIT, "bool __cdecl CMaskDataGenerator_Sub::CompleteOneSourceData(void)",
                           __LINE__);
    m_pSourceData = nullptr;
    m_processState = ProcessState_WaitForWork;
    return true;
}
