#include "maskdatagenerator.h"

#include "constants.h"
#include "dotweave/maskparam.h"
#include "log.h"
#include "maskgeometry.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <numeric>
#include <utility>

using namespace dotweave;

namespace {

constexpr char UNIT[] = "maskdatagenerator";

/// Longest sleep for a free work item, in milliseconds.
constexpr unsigned int FREE_WAIT_MS = 100;
/// Longest wait for one worker's end before the producer's loop comes round again, in milliseconds.
constexpr unsigned int WORKER_WAIT_MS = 100;

} // namespace

CMaskDataGenerator::~CMaskDataGenerator()
{
    CMaskDataGenerator::Stop();
    CustomThreadBase::Wait_Exit(WAIT_NO_LIMIT);
    m_queueBuffer.reset();
    m_subThreads.clear();
    m_subThreadCount = 0;
    m_sineMask.reset();
}

bool CMaskDataGenerator::Create(const SMaskDataGenerate_Param& param, int /*workerCount*/)
{
    static constexpr char SCOPE[] =
        "bool __cdecl CMaskDataGenerator::Create(const struct SMaskDataGenerate_Param &,int)";
    m_param = param;
    m_subThreadCount = WORKER_COUNT;
    if (!Init_Param())
        return Log_Failure(UNIT, SCOPE, __LINE__);
    if (!Start("CMaskDataGenerator"))
        return Log_Failure(UNIT, SCOPE, __LINE__);
    return true;
}

bool CMaskDataGenerator::Init_Param()
{
    if (!Init_SinMask() || !Create_AllSubThread())
        return Log_Failure(UNIT, "bool __cdecl CMaskDataGenerator::Init_Param(void)", __LINE__);
    return true;
}

bool CMaskDataGenerator::Init_SinMask()
{
    if (m_param.featherNozzleType != FeatherNozzle_Smooth_3_Sine)
        return true;
    // The feather rows are the part of a band that overlaps the next one.
    const int featherHeight = FeatherRows(m_param.blockHeight, m_param.rowStep);
    m_sineMask = std::make_unique<CSineMask>();
    if (!m_sineMask->Create(featherHeight, m_param.thresholdWidth, m_param.dotBits, SinMaskType_Stored))
        return Log_Failure(UNIT, "bool __cdecl CMaskDataGenerator::Init_SinMask(void)", __LINE__);
    return true;
}

bool CMaskDataGenerator::Create_AllSubThread()
{
    static constexpr char SCOPE[] = "bool __cdecl CMaskDataGenerator::Create_AllSubThread(void)";
    m_queueBuffer = std::make_unique<CKelPtrQueueBuffer<SMaskDataGenerate_SubParam>>();
    // Twice as many items as workers: for each worker one in work and one waiting.
    std::vector<std::unique_ptr<SMaskDataGenerate_SubParam>> pool(
        static_cast<std::size_t>(2 * m_subThreadCount));
    std::vector<SMaskDataGenerate_SubParam*> items;
    items.reserve(pool.size());
    for (std::unique_ptr<SMaskDataGenerate_SubParam>& item : pool) {
        item = std::make_unique<SMaskDataGenerate_SubParam>();
        items.push_back(item.get());
    }
    if (!m_queueBuffer->Create(items, "CMaskDataGenerator"))
        return Log_Failure(UNIT, SCOPE, __LINE__);
    for (std::unique_ptr<SMaskDataGenerate_SubParam>& item : pool)
        static_cast<void>(item.release()); // the queues own the items now
    m_subThreads.resize(static_cast<std::size_t>(m_subThreadCount));
    for (std::unique_ptr<CMaskDataGenerator_Sub>& slot : m_subThreads) {
        auto worker = std::make_unique<CMaskDataGenerator_Sub>();
        if (!worker->Create(&m_param, m_queueBuffer.get(), m_sineMask.get()))
            return Log_Failure(UNIT, SCOPE, __LINE__);
        slot = std::move(worker);
    }
    return true;
}

bool CMaskDataGenerator::Prepare()
{
    if (!CustomThreadBase::Prepare())
        return Log_Failure(UNIT, "bool __cdecl CMaskDataGenerator::Prepare(void)", __LINE__);
    m_processState = ProcessState_Init;
    return true;
}

bool CMaskDataGenerator::OneLoop()
{
    try {
        if (OneLoop_ByState())
            return true;
    } catch (const std::exception&) {
        // The producer ends like one that failed.
    }
    Log_FailureValue(UNIT, "bool __cdecl CMaskDataGenerator::OneLoop(void)", __LINE__,
                     "m_processState = ", m_processState);
    Stop();
    return false;
}

bool CMaskDataGenerator::OneLoop_ByState()
{
    switch (m_processState) {
    case ProcessState_Init:
        m_color_Next = 0;
        m_position_Next = 0;
        m_splitIndex_Next = 0;
        m_itemsHandedOut = 0;
        m_processState = ProcessState_AddSource;
        return true;
    case ProcessState_AddSource:
        return AddSourceData();
    case ProcessState_WaitSub:
        WaitSub();
        return true;
    default:
        return false;
    }
}

/// Hands out the next item: colours outermost, then positions, then Y resolution passes. The bounds are
/// tested after the push, so the item (0, 0, 0) is always produced (deliberate).
bool CMaskDataGenerator::AddSourceData()
{
    if (IsOutputLost()) {
        Stop();
        return true;
    }
    SMaskDataGenerate_SubParam* item = nullptr;
    if (!m_queueBuffer->m_queue_Free->Pop(item, FREE_WAIT_MS)) {
        // A worker that ended has woken us. The event is corrected before the next look at the workers, so
        // that one that ends after the look sets it again.
        m_queueBuffer->m_queue_Free->NotEmpty_Correct();
        return true;
    }
    *item = {m_color_Next, m_position_Next, m_splitIndex_Next};
    PositionPages_Touch(m_param, *item);
    if (!m_queueBuffer->m_queue_Work->Push(item)) {
        delete item; // taken out of circulation
        return Log_Failure(UNIT, "bool __cdecl CMaskDataGenerator::AddSourceData(void)", __LINE__);
    }
    ++m_itemsHandedOut;
    if (NextItem_Advance())
        return true;
    m_queueBuffer->m_queue_Work->AddFinished_Set();
    m_processState = ProcessState_WaitSub;
    return true;
}

/// Counts on to the next item: Y resolution passes innermost, then positions, then colours.
/// @return whether there is one
bool CMaskDataGenerator::NextItem_Advance()
{
    ++m_splitIndex_Next;
    if (m_splitIndex_Next >= m_param.splitCount_YRes) {
        m_splitIndex_Next = 0;
        ++m_position_Next;
    }
    if (m_position_Next >= m_param.positionCount) {
        m_position_Next = 0;
        ++m_color_Next;
    }
    return m_color_Next < m_param.colorCount;
}

/// Whether lines of the output will stay unwritten, while items are due: a worker has lost an item, or no
/// worker is left.
bool CMaskDataGenerator::IsOutputLost() const
{
    using EEnd = CMaskDataGenerator_Sub::EEnd;
    std::size_t endedCount = 0;
    for (const std::unique_ptr<CMaskDataGenerator_Sub>& worker : m_subThreads) {
        const EEnd end = worker->End();
        if (end == EEnd::ItemLost)
            return true;
        endedCount += end == EEnd::None ? 0U : 1U;
    }
    return endedCount > 0 && endedCount == m_subThreads.size();
}

bool CMaskDataGenerator::HaveWorkersEnded(unsigned int milliseconds) const
{
    return std::all_of(m_subThreads.begin(), m_subThreads.end(),
                       [milliseconds](const std::unique_ptr<CMaskDataGenerator_Sub>& worker) {
                           return worker->Wait_Exit(milliseconds);
                       });
}

/// Ends the run when all workers have ended. The output is complete when they have written every item that
/// was handed out, which by now is every item there is.
void CMaskDataGenerator::WaitSub()
{
    if (!HaveWorkersEnded(WORKER_WAIT_MS))
        return;
    const std::int64_t written =
        std::accumulate(m_subThreads.begin(), m_subThreads.end(), std::int64_t{0},
                        [](std::int64_t sum, const std::unique_ptr<CMaskDataGenerator_Sub>& worker) {
                            return sum + worker->ItemsWritten();
                        });
    m_isOutputComplete = written == m_itemsHandedOut;
    Stop();
}

void CMaskDataGenerator::Stop()
{
    for (const std::unique_ptr<CMaskDataGenerator_Sub>& worker : m_subThreads) {
        if (worker != nullptr)
            worker->Stop();
    }
    if (m_queueBuffer != nullptr && m_queueBuffer->m_queue_Work != nullptr)
        m_queueBuffer->m_queue_Work->NotEmpty_Set(); // wakes sleeping workers before their time is up
    for (const std::unique_ptr<CMaskDataGenerator_Sub>& worker : m_subThreads) {
        if (worker != nullptr)
            worker->Wait_Exit(WAIT_NO_LIMIT);
    }
    CustomThreadBase::Stop();
    if (m_queueBuffer != nullptr && m_queueBuffer->m_queue_Free != nullptr)
        m_queueBuffer->m_queue_Free->NotEmpty_Set(); // and the producer
}

bool CMaskDataGenerator::Wait_Exit(unsigned int milliseconds)
{
    if (!CustomThreadBase::Wait_Exit(milliseconds))
        return Log_Failure(UNIT, "bool __cdecl CMaskDataGenerator::Wait_Exit(unsigned int)", __LINE__);
    return true;
}
