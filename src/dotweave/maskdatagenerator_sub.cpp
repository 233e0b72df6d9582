#include "maskdatagenerator_sub.h"

#include "constants.h"
#include "log.h"
#include "maskregion.h"
#include "schedulepoint.h"

#include <algorithm>
#include <exception>
#include <thread>

using namespace dotweave;

namespace {

constexpr char UNIT[] = "maskdatagenerator_sub";

/// Longest sleep for a work item, in milliseconds.
constexpr unsigned int WORK_WAIT_MS = 100;

SSineRows SineRows(const CSineMask* sine, int blockHeight)
{
    if (sine == nullptr)
        return {{blockHeight, blockHeight}, {blockHeight, blockHeight}};
    const int featherHeight = sine->FeatherHeight_Get();
    const int sineHeight = sine->MaskHeight_Get();
    return {{featherHeight - sineHeight, featherHeight},
            {std::max(blockHeight - sineHeight, featherHeight), blockHeight}};
}

int RowCount(SRowRange rows)
{
    return rows.end - rows.first;
}

/// Hands the dots of a band's last feather rows that lie outside the sine curve to its first feather rows.
/// The block holds the sine part of both, top rows first; the top takes the bottom's dots as they were.
void Dots_MoveUp(CMaskBlock& block, const CSineMask& sine)
{
    const std::uint8_t* up = sine.MaskBuffer_Up_Get();
    const std::uint8_t* down = sine.MaskBuffer_Down_Get();
    const int size = sine.MaskSize_Get();
    std::uint8_t* top = block.MaskData();
    std::uint8_t* bottom = top + (block.MaskDataBytesCount() - size);
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

/// Blanks the lines of an item that the worker was about to write when it failed or was stopped.
void CMaskDataGenerator_Sub::Finally()
{
    CustomThreadBase::Finally();
    if (m_processState >= ProcessState_Generate && m_processState <= ProcessState_Merge)
        ItemLines_Clear(*m_pParam, *m_pSourceData);
}

bool CMaskDataGenerator_Sub::OneLoop()
{
    try {
        if (OneLoop_ByState())
            return true;
    } catch (const std::exception&) {
        // No memory for the blocks, say: this worker ends like one that failed; while others live, they
        // take its share.
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

/// All memory that items need. Rows that no sine mask touches never become bytes per pixel.
void CMaskDataGenerator_Sub::AllocateBlocks()
{
    const SMaskDataGenerate_Param& param = *m_pParam;
    m_scratch.resize(
        MaskKernel_ScratchBytes(param.thresholdWidth, param.thresholdWidth, param.splitCount_XRes));
    m_sineRows = SineRows(m_pSineMask, param.blockHeight);
    const int rows = RowCount(m_sineRows.top) + RowCount(m_sineRows.bottom);
    m_blocks = std::make_unique<CMaskBlock[]>(static_cast<std::size_t>(param.splitCount_XRes));
    for (int j = 0; j < param.splitCount_XRes; ++j)
        m_blocks[static_cast<std::size_t>(j)].Initialize(param.thresholdWidth, rows);
}

/// Takes the next item, or ends the worker. The flag is read before the queue is tried: an empty queue proves
/// the end only when the producer had finished by then. The not-empty event proves nothing, it may be stale.
void CMaskDataGenerator_Sub::WaitForWork()
{
    CKelPtrQueue<SMaskDataGenerate_SubParam>& work = *m_pQueueBuffer->m_queue_Work;
    const bool isFinished = work.AddFinished_Get();
    SchedulePoint();
    if (work.Pop(m_pSourceData, isFinished ? 0U : WORK_WAIT_MS)) {
        SchedulePoint();
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

/// Cuts the rows that the sine mask asks for as bytes per pixel; Merge_AllBlock cuts all others as it packs.
bool CMaskDataGenerator_Sub::GenerateMaskData()
{
    const SMaskDataGenerate_Param& param = *m_pParam;
    const int rowStart = MaskRegion_Row(m_pSourceData->position, param.rowStep,
                                        m_pSourceData->splitIndex_YRes, param.splitCount_YRes);
    for (int j = 0; j < param.splitCount_XRes; ++j) {
        CMaskBlock& block = m_blocks[static_cast<std::size_t>(j)];
        block.ClearMaskData();
        const int colStart = MaskRegion_Column(j, param.thresholdWidth, param.splitCount_XRes);
        if (!Cut_OneBlock(rowStart, colStart, block))
            return Log_Failure(UNIT, "bool __cdecl CMaskDataGenerator_Sub::GenerateMaskData(void)", __LINE__);
    }
    m_processState = ProcessState_Feather;
    return true;
}

bool CMaskDataGenerator_Sub::Cut_OneBlock(int rowStart, int colStart, CMaskBlock& block)
{
    SParam_GenerateMaskData cut = {};
    cut.cutTableCount = m_pParam->cutTableCount;
    cut.baseMaskData = m_pParam->pBaseMaskData->MaskData(m_pSourceData->color);
    cut.offsetX = colStart;
    cut.baseMaskHeight = m_pParam->thresholdHeight;
    cut.baseMaskWidth = m_pParam->thresholdWidth;
    cut.bitsPerPixel = m_pParam->dotBits;
    cut.maskBlock = &block;
    // The block holds the top rows and behind them the bottom rows of the band.
    const int topCount = RowCount(m_sineRows.top);
    const auto cutRows = [&](int bandRow, SRowRange rows) {
        cut.cutTable = m_pParam->pCutTable + (bandRow - rows.first);
        cut.offsetY = rowStart + (bandRow - rows.first);
        MaskKernel_Cut(cut, rows);
    };
    cutRows(m_sineRows.top.first, {0, topCount});
    cutRows(m_sineRows.bottom.first, {topCount, block.Height()});
    return true;
}

void CMaskDataGenerator_Sub::Feather_SineMask()
{
    if (m_pSineMask == nullptr)
        return;
    for (int j = 0; j < m_pParam->splitCount_XRes; ++j)
        Dots_MoveUp(m_blocks[static_cast<std::size_t>(j)], *m_pSineMask);
}

/// Writes all lines of the item: those of the sine rows from the blocks, all others straight from the
/// thresholds.
void CMaskDataGenerator_Sub::Merge_AllBlock()
{
    Lines_Pack({0, m_sineRows.top.first});
    Lines_Merge(0, m_sineRows.top);
    Lines_Pack({m_sineRows.top.end, m_sineRows.bottom.first});
    Lines_Merge(RowCount(m_sineRows.top), m_sineRows.bottom);
}

void CMaskDataGenerator_Sub::Lines_Pack(SRowRange rows)
{
    const SMaskDataGenerate_Param& param = *m_pParam;
    if (param.splitCount_XRes < 1 || RowCount(rows) == 0)
        return;
    SMaskPack pack = {};
    pack.cutTable = param.pCutTable;
    pack.plane = param.pBaseMaskData->MaskData(m_pSourceData->color);
    pack.planeWidth = param.thresholdWidth;
    pack.planeHeight = param.thresholdHeight;
    pack.offsetY = MaskRegion_Row(m_pSourceData->position, param.rowStep, m_pSourceData->splitIndex_YRes,
                                  param.splitCount_YRes);
    pack.width = param.thresholdWidth;
    pack.xResPass = param.splitCount_XRes;
    pack.bitsPerPixel = param.dotBits;
    pack.firstLine = ItemLines_First(param, *m_pSourceData);
    pack.lineDistance = ItemLines_Distance(param);
    MaskKernel_CutAndPack(pack, rows, m_scratch.data());
}

/// Writes the lines of band rows whose dots stand in the blocks from row blockRow on.
void CMaskDataGenerator_Sub::Lines_Merge(int blockRow, SRowRange rows)
{
    if (RowCount(rows) == 0)
        return;
    const std::ptrdiff_t distance = ItemLines_Distance(*m_pParam);
    MaskKernel_Merge(m_blocks.get(), m_pParam->splitCount_XRes, m_pParam->dotBits,
                     {blockRow, blockRow + RowCount(rows)},
                     ItemLines_First(*m_pParam, *m_pSourceData) + (rows.first - blockRow) * distance,
                     distance, m_scratch.data());
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
