// The faults that a host's mistake ends in, on purpose. Only a plain build shows them: a sanitizer ends the
// program in its own way.

#include "dotweave/maskdatastorage.h"

#include "sanitized.h"

#include <gtest/gtest.h>

#if defined(__linux__) && !defined(DOTWEAVE_TEST_IS_SANITIZED)

#include "callingsink.h"
#include "listedmodes.h"
#include "logcapture.h"
#include "maskparams.h"
#include "peek.h"

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <csignal>
#include <cstddef>
#include <iostream>
#include <new>

namespace {

/// Ended by a forbidden address, or by the trap that a compiler may write instead. An abort does not count:
/// it would be somebody's check.
bool IsFault(int status)
{
    return WIFSIGNALED(status) &&
           (WTERMSIG(status) == SIGSEGV || WTERMSIG(status) == SIGILL || WTERMSIG(status) == SIGTRAP);
}

/// A mask object whose memory can no longer be read once it has been destroyed.
class CFencedMask : public CMaskData_Base {
public:
    static void* operator new(std::size_t /*size*/)
    {
        void* page = mmap(nullptr, PAGE_BYTES, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        return page != MAP_FAILED ? page : throw std::bad_alloc();
    }
    static void operator delete(void* page) { mprotect(page, PAGE_BYTES, PROT_NONE); }

private:
    static constexpr std::size_t PAGE_BYTES = 4096;
};
static_assert(sizeof(CFencedMask) <= 4096);

class StorageDeathTest : public testing::Test {
protected:
    /// Runs the operation in the process that is to die: without a core file, its records on the error
    /// output. Mask objects are made in there too, because a process that has run threads should not fork.
    template <typename TOperation>
    void Run(const TOperation& operation)
    {
        prctl(PR_SET_DUMPABLE, 0);
        const CLogCapture log;
        const CCallingSink sink([&log] { std::cerr << log.Records().back() << std::endl; });
        operation();
    }

    CMaskDataStorage m_storage;
};

TEST_F(StorageDeathTest, AnApplyWithNothingCurrentIsAFault)
{
    EXPECT_EXIT(Run([this] { m_storage.MaskData_Apply(MaskParam_Small(1)); }), IsFault, "^$");
}

TEST_F(StorageDeathTest, AnApplyAfterAFailedInitIsAFault)
{
    const auto apply = [this] {
        if (Init(m_storage, {1}) && !m_storage.MaskData_Current_Init(Mode_Rejected()))
            m_storage.MaskData_Apply(MaskParam_Small(1));
    };
    EXPECT_EXIT(Run(apply), IsFault, "maskdatastorage:[^\n]*MaskData_Current_Init[^\n]*\"failure\"\n$");
}

TEST_F(StorageDeathTest, AFailedApplyLogsAndIsAFault)
{
    const auto apply = [this] {
        if (Init(m_storage, {1}))
            m_storage.MaskData_Apply(Mode_Rejected());
    };
    EXPECT_EXIT(Run(apply), IsFault,
                "^maskdata_base:85 [^\n]*\"failure\"\nmaskdatafactory:[^\n]*\"failure\"\n$");
}

TEST_F(StorageDeathTest, ANullEntryIsLoggedAndThenAFault)
{
    SMaskDataStorage_Peek{m_storage}.List().push_back(nullptr);
    EXPECT_EXIT(Run([this] { SMaskDataStorage_Peek{m_storage}.MaskData_Find(MaskParam_Small(1)); }), IsFault,
                "^maskdatastorage:[^\n]*MaskData_Find[^\n]*\"failure\"\n$");
}

TEST_F(StorageDeathTest, TheFifthApplyReadsWhatItEvicted)
{
    // Five are listed, the current one at the back. Each apply evicts the front. The fifth evicts the current
    // object and then reads its step height.
    const auto apply = [this] {
        auto* current = new CFencedMask;
        if (!Init(m_storage, {1, 2, 3, 4}) || !current->Create(MaskParam_Small(5)))
            return;
        SMaskDataStorage_Peek{m_storage}.List().push_back(current);
        SMaskDataStorage_Peek{m_storage}.Current() = current;
        for (int mode = 6; mode <= 9; ++mode)
            if (m_storage.MaskData_Apply(MaskParam_Small(mode)) == nullptr)
                return;
        std::cerr << "fifth" << std::endl;
        m_storage.MaskData_Apply(MaskParam_Small(10));
    };
    EXPECT_EXIT(Run(apply), IsFault, "^fifth\n$");
}

} // namespace

#endif
