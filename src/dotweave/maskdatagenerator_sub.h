#pragma once

#include "dotweave/maskblock.h"
#include "dotweave/sinemask.h"
#include "kelptrqueuebuffer.h"
#include "maskdatagenerate_param.h"
#include "sinerows.h"

#include <kelcommon/customthreadbase.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// One worker of the generator. Takes work items from the work queue, cuts and packs each into its own lines
/// of the output, and hands the item back; ends by itself when the producer has finished and the queue is
/// empty.
/// Thread-safety: Create, Stop and Wait_Exit from the generator; everything else on the worker's own thread.
class CMaskDataGenerator_Sub : public CustomThreadBase {
public:
    CMaskDataGenerator_Sub() = default;
    CMaskDataGenerator_Sub(const CMaskDataGenerator_Sub&) = delete;
    CMaskDataGenerator_Sub& operator=(const CMaskDataGenerator_Sub&) = delete;
    /// Stops the thread and waits for it; then frees the blocks and the item in work, if any.
    ~CMaskDataGenerator_Sub() override;

    /// Starts the worker's thread.
    /// @param param        the generator's record; must outlive the worker's thread
    /// @param queueBuffer  the generator's queues; the same
    /// @param sineMask     null when no dots are moved along a sine curve
    /// @return false, with one log record, when the thread does not start
    bool Create(const SMaskDataGenerate_Param* param,
                CKelPtrQueueBuffer<SMaskDataGenerate_SubParam>* queueBuffer, const CSineMask* sineMask);

    /// How the work has ended: not yet, between two items, or with lines of an item that nobody will write.
    enum class EEnd : std::uint8_t { None, Clean, ItemLost };
    /// Read by the generator while the thread runs. The thread itself exits a moment later.
    [[nodiscard]] EEnd End() const { return m_end; }

    /// Items whose lines are written; to be asked when the thread has ended.
    [[nodiscard]] std::int64_t ItemsWritten() const { return m_itemsWritten; }

protected:
    bool OneLoop() override;
    bool Prepare() override;
    void Finally() override;

private:
    enum EProcessState : std::int32_t {
        ProcessState_AllocateBlocks = 1,
        ProcessState_WaitForWork = 2,
        ProcessState_Generate = 3,
        ProcessState_Feather = 4,
        ProcessState_Merge = 5,
        ProcessState_Complete = 6,
    };

    bool OneLoop_ByState();
    void AllocateBlocks();
    void WaitForWork();
    bool GenerateMaskData();
    bool Cut_OneBlock(int rowStart, int colStart, CMaskBlock& block);
    void Lines_Merge(int blockRow, dotweave::SRowRange rows);
    void Feather_SineMask();
    void Merge_AllBlock();
    bool CompleteOneSourceData();
    void End_Announce();

    std::int32_t m_processState = 0;
    const SMaskDataGenerate_Param* m_pParam = nullptr;
    SMaskDataGenerate_SubParam* m_pSourceData = nullptr;
    CKelPtrQueueBuffer<SMaskDataGenerate_SubParam>* m_pQueueBuffer = nullptr;
    std::unique_ptr<CMaskBlock[]> m_blocks; // the rows that the sine mask moves dots between; no others
    const CSineMask* m_pSineMask = nullptr;
    dotweave::SSineRows m_sineRows{};
    std::vector<std::uint8_t> m_scratch;
    std::int64_t m_itemsWritten = 0; // belongs to the own thread until that has ended
    std::atomic<EEnd> m_end = EEnd::None;

    friend struct SMaskDataGenerator_Sub_Peek; // the tests' only key to the steps; defined in tests/support
};
