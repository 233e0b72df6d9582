#pragma once

#include "dotweave/sinemask.h"
#include "kelptrqueuebuffer.h"
#include "maskdatagenerate_param.h"
#include "maskdatagenerator_sub.h"

#include <kelcommon/customthreadbase.h>

#include <cstdint>
#include <memory>
#include <vector>

/// Builds all mask bytes of one mask object in the background: a producer, which is this thread, hands out
/// one work item per colour, position and Y resolution pass to six workers.
/// Construct; Create; Wait_Exit; destroy. docs/threads.md says who owns what, and when.
/// Thread-safety: Create and destruction from one thread; Wait_Exit and Stop from any, once Create has
/// returned.
class CMaskDataGenerator : public CustomThreadBase {
public:
    CMaskDataGenerator() = default;
    CMaskDataGenerator(const CMaskDataGenerator&) = delete;
    CMaskDataGenerator& operator=(const CMaskDataGenerator&) = delete;
    /// Stops and joins every thread, finished or not, before it frees what they use.
    ~CMaskDataGenerator() override;

    /// Sets everything up and starts the threads.
    /// @param param        copied; what it points to must outlive this object
    /// @param workerCount  has no effect: there are always six workers
    /// @return false, after one log record per level, when something could not be set up
    /// @throws std::bad_alloc when memory runs out; destruction then ends the threads that run
    bool Create(const SMaskDataGenerate_Param& param, int workerCount);

    /// Waits for the end of the run. @return false, with one log record, when it has not ended in time
    bool Wait_Exit(unsigned int milliseconds) override;
    /// Stops all workers, waits for them, then asks the producer to end.
    void Stop() override;

    /// Whether workers have written every line of the output; to be asked when the run has ended. Otherwise
    /// lines are as the memory was: workers failed, the run was stopped, or the producer failed.
    [[nodiscard]] bool IsOutputComplete() const { return m_isOutputComplete; }

protected:
    bool OneLoop() override;
    bool Prepare() override;

private:
    enum EProcessState : std::int32_t {
        ProcessState_Init = 1,
        ProcessState_AddSource = 2,
        ProcessState_WaitSub = 3,
    };

    bool Init_Param();
    bool Init_SinMask();
    bool Create_AllSubThread();
    bool OneLoop_ByState();
    bool AddSourceData();
    bool NextItem_Advance();
    [[nodiscard]] bool IsOutputLost() const;
    [[nodiscard]] bool HaveWorkersEnded(unsigned int milliseconds) const;
    void WaitSub();

    std::int32_t m_processState = 0;
    SMaskDataGenerate_Param m_param{};
    std::int32_t m_color_Next = 0;
    std::int32_t m_position_Next = 0;
    std::int32_t m_splitIndex_Next = 0;
    std::vector<std::unique_ptr<CMaskDataGenerator_Sub>> m_subThreads; // unfilled slots are null
    std::int32_t m_subThreadCount = 1;
    std::unique_ptr<CKelPtrQueueBuffer<SMaskDataGenerate_SubParam>> m_queueBuffer;
    std::unique_ptr<CSineMask> m_sineMask;
    std::int64_t m_itemsHandedOut = 0;
    bool m_isOutputComplete = false; // belongs to the own thread until that has ended

    friend struct SMaskDataGenerator_Peek; // the tests' only key to private members; defined in tests/support
};
