// The faults that a host's mistake ends in, on purpose. Only a plain build shows them: a sanitizer ends the program
// in its own way.

#include "dotweave/maskdatastorage.h"

#include "sanitized.h"

#include <gtest/gtest.h>

#if defined(__linux__) && !defined(DOTWEAVE_TEST_IS_SANITIZED)

#include "callingsink.h"
#include "listedmodes.h"
#include "logcapture.h"
#include "maskparams.h"
#include "peek.h"

#include <sys/prctl.h>
#include <sys/wait.h>

#include <csignal>
#include <iostream>

namespace {

/// Ended by a forbidden address, or by the trap that a compiler may put in the place of one. An abort is none: that
/// would be somebody's check.
bool IsFault(int status)
{
    return WIFSIGNALED(status) &&
           (WTERMSIG(status) == SIGSEGV || WTERMSIG(status) == SIGILL || WTERMSIG(status) == SIGTRAP);
}

class MaskDataStorageDeathTest : public testing::Test {
protected:
    /// Runs the operation in the process that is to die: without a core file, its records on the error output. What
    /// makes masks belongs in there too, since the process is forked, and the threads of a creation may still be on
    /// their way out when it has ended.
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

TEST_F(MaskDataStorageDeathTest, AnApplyWithoutACurrentObjectIsAFault)
{
    EXPECT_EXIT(Run([this] { m_storage.MaskData_Apply(MaskParam_Small(1)); }), IsFault, "^$");
}

TEST_F(MaskDataStorageDeathTest, AnApplyBehindAFailedInitIsAFault)
{
    const auto apply = [this] {
        if (m_storage.MaskData_Current_Init(MaskParam_Small(1)) &&
            !m_storage.MaskData_Current_Init(Mode_Rejected()))
            m_storage.MaskData_Apply(MaskParam_Small(1));
    };
    EXPECT_EXIT(Run(apply), IsFault, "maskdatastorage:[^\n]*MaskData_Current_Init[^\n]*\"failure\"\n$");
}

TEST_F(MaskDataStorageDeathTest, AnApplyOfARecordThatCannotBeBuiltIsAFaultBehindItsRecords)
{
    const auto apply = [this] {
        if (m_storage.MaskData_Current_Init(MaskParam_Small(1)))
            m_storage.MaskData_Apply(Mode_Rejected());
    };
    EXPECT_EXIT(Run(apply), IsFault,
                "^maskdata_base:85 [^\n]*\"failure\"\nmaskdatafactory:[^\n]*\"failure\"\n$");
}

TEST_F(MaskDataStorageDeathTest, ANullEntryIsLoggedAndThenComparedWhichIsAFault)
{
    SMaskDataStorage_Peek{m_storage}.List().push_back(nullptr);
    EXPECT_EXIT(Run([this] { SMaskDataStorage_Peek{m_storage}.MaskData_Find(MaskParam_Small(1)); }), IsFault,
                "^maskdatastorage:[^\n]*MaskData_Find[^\n]*\"failure\"\n$");
}

} // namespace

#endif
