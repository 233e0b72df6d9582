#include "maskdatagenerator_sub.h"

#include "constants.h"
#include "kernels/maskkernels.h"
#include "log.h"
#include "maskregion.h"
#include "schedulepoint.h"

#include <exception>
#include <thread>

using namespace dotweave;

namespace {

constexpr char UNIT[] = "maskdatagenerator_sub";

/// Longest sleep for a work item, in milliseconds.
constexpr unsigned int WORK_WAIT_MS = 100;

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
    if (!CustomThreadBase::Prepare()) {
        End_Announce(); // nothing else will be called
        return Log_Failure(UNIT, "bool __cdecl CMaskDataGenerator_Sub::Prepare(void)", __LINE__);
    }
    m_processState = ProcessState_AllocateBlocks;
    return true;
}

bool CMaskDataGenerator_Sub::OneLoop()
{
    try {
        if (OneLoop_ByState())
            return true;
    } catch (const std::exception&) {
        // No memory for the blocks, say. The worker fails; the others take its share.
    }
    Log_FailureValue(UNIT, "bool __cdecl CMaskDataGenerator_Sub::OneLoop(void)", __LINE__,
                     "m_processState = ", m_processState);
    Stop();
    return false;
}

void CMaskDataGenerator_Sub::Finally()
{
    End_Announce();
    CustomThreadBase::Finally();
}

/// Tells the producer, which may sleep until somebody returns an item. An item that this worker has not
/// written leaves the output incomplete, so the other workers need not write the items that wait. Dropping
/// them resets the event of their queue, perhaps after the last set of it, so it is set again. The free
/// queue's flag makes a worker that returns an item at the same time set that queue's event again too.
void CMaskDataGenerator_Sub::End_Announce()
{
    const bool isItemLost = m_pSourceData != nullptr && m_processState != ProcessState_Complete;
    if (isItemLost) {
        m_pQueueBuffer->m_queue_Work->Clear();
        m_pQueueBuffer->m_queue_Work->NotEmpty_Set();
    }
    m_end = isItemLost ? EEnd::ItemLost : EEnd::Clean;
    m_pQueueBuffer->m_queue_Free->AddFinished_Set();
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
        ++m_itemsWritten;
        m_processState = ProcessState_Complete;
        return true;
    case ProcessState_Complete:
        return CompleteOneSourceData();
    default:
        return false;
    }
}

/// Allocates all memory that items need. Rows that no sine mask touches never become bytes per pixel.
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
    const int blockCount = Item_HasLines(param) ? param.splitCount_XRes : 0;
    for (int j = 0; j < blockCount; ++j) {
        CMaskBlock& block = m_blocks[static_cast<std::size_t>(j)];
        block.ClearMaskData();
        const int colStart = MaskRegion_Column(j, param.thresholdWidth, param.splitCount_XRes);
        if (!Cut_OneBlock(Item_FirstPlaneRow(param, *m_pSourceData), colStart, block))
            return Log_Failure(UNIT, "bool __cdecl CMaskDataGenerator_Sub::GenerateMaskData(void)", __LINE__);
    }
    m_processState = ProcessState_Feather;
    return true;
}

bool CMaskDataGenerator_Sub::Cut_OneBlock(int rowStart, int colStart, CMaskBlock& block)
{
    SineRows_Cut(m_sineRows, Item_Cut(*m_pParam, *m_pSourceData, rowStart, colStart, block));
    return true;
}

void CMaskDataGenerator_Sub::Feather_SineMask()
{
    if (m_pSineMask == nullptr)
        return;
    for (int j = 0; j < m_pParam->splitCount_XRes; ++j)
        SineRows_MoveDots(m_blocks[static_cast<std::size_t>(j)], *m_pSineMask);
}

/// Writes all lines of the item: those of the sine rows from the blocks, all others straight from the
/// thresholds.
void CMaskDataGenerator_Sub::Merge_AllBlock()
{
    if (!Item_HasLines(*m_pParam))
        return;
    const SMaskPack pack = Item_Pack(*m_pParam, *m_pSourceData);
    const auto& cutAndPack = MaskKernels_Get().cutAndPack;
    cutAndPack(pack, {0, m_sineRows.top.first}, m_scratch.data());
    Lines_Merge(0, m_sineRows.top);
    cutAndPack(pack, {m_sineRows.top.end, m_sineRows.bottom.first}, m_scratch.data());
    Lines_Merge(RowCount(m_sineRows.top), m_sineRows.bottom);
}

/// Writes the lines of band rows whose dots are in the blocks, from row blockRow on.
void CMaskDataGenerator_Sub::Lines_Merge(int blockRow, SRowRange rows)
{
    if (RowCount(rows) == 0)
        return;
    const std::ptrdiff_t distance = ItemLines_Distance(*m_pParam);
    MaskKernels_Get().merge(m_blocks.get(), m_pParam->splitCount_XRes, m_pParam->dotBits,
                            {blockRow, blockRow + RowCount(rows)},
                            ItemLines_First(*m_pParam, *m_pSourceData) + (rows.first - blockRow) * distance,
                            distance, m_scratch.data());
}

bool CMaskDataGenerator_Sub::CompleteOneSourceData()
{
    CKelPtrQueue<SMaskDataGenerate_SubParam>& freeItems = *m_pQueueBuffer->m_queue_Free;
    if (!freeItems.Push(m_pSourceData))
        return Log_Failure(UNIT, "bool __cdecl CMaskDataGenerator_Sub::CompleteOneSourceData(void)",
                           __LINE__);
    if (freeItems.AddFinished_Get())
        freeItems.NotEmpty_Set(); // our push may have reset what a worker that ended has set
    m_pSourceData = nullptr;
    m_processState = ProcessState_WaitForWork;
    return true;
}
