#include "placingfolder.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <set>
#include <string>

namespace fs = std::filesystem;

namespace {

/// Writes two colours over one, or over nothing, under plans.
class PlacingFaults : public PlacingFolder {
protected:
    /// What you can rely on after a run: see the expectations.
    void Run_Check(const SDiskPlan& plan, bool hasOlder)
    {
        if (hasOlder)
            Older_Put(0);
        else
            fs::remove_all(folder);
        const CFiles older = hasOlder ? Result(0) : CFiles{};
        CFiles newer = Result(1);
        if (!hasOlder)
            newer.erase("note.txt");
        const SRunEnd run = Run(1, plan);
        m_functions.insert(run.function);
        SCOPED_TRACE("call " + std::to_string(plan.number) + ' ' + run.function + ": " + run.message);
        const SFolder after = SFolder::Read(folder);
        const bool isDecided = run.isGood || after.hasReady;
        if (run.isGood) {
            EXPECT_EQ(after.hiddenCount, 0);
        }
        if (run.isGood || !after.hasReady) {
            EXPECT_TRUE(after.files == (isDecided ? newer : older)) << "neither the old nor the new result";
        }
        if (!run.isGood && after.hasReady) {
            EXPECT_NE(run.message.find(".dotweave-ready: the new result is "), std::string::npos);
        }
        if (!run.isGood) {
            EXPECT_NE(run.message.find(std::strerror(plan.error)), std::string::npos);
        }
        if (plan.fault == EDiskFault::Once && !isDecided) {
            EXPECT_EQ(after.hiddenCount, 0);
            EXPECT_EQ(fs::exists(folder), hasOlder);
        }
        static const std::set<std::string> NEEDED = {"fopen",  "fwrite", "fflush",
                                                     "fclose", "mkdir",  "rename"};
        EXPECT_FALSE(run.isGood && NEEDED.count(run.function) != 0) << "the fault was not noticed";

        NextRun_Begin(folder);
        const SFolder cleared = SFolder::Read(folder);
        EXPECT_EQ(cleared.hiddenCount, 0);
        EXPECT_TRUE(cleared.files == (isDecided ? newer : older)) << "not whole after the next run";
    }

    void EachCall_Check(EDiskFault fault)
    {
        for (const bool hasOlder : {true, false}) {
            if (hasOlder)
                Older_Put(0);
            else
                fs::remove_all(folder);
            const int callCount = Run(1, {}).callCount;
            EXPECT_GE(callCount, 60);
            for (int number = 0; number < callCount && !HasFailure(); ++number)
                Run_Check({fault, number, "", ENOSPC, 0}, hasOlder);
        }
        for (const char* function : {"chmod", "fclose", "fflush", "flock", "fopen", "fsync", "fwrite",
                                     "lstat", "mkdir", "open", "readdir", "remove", "rename", "stat"})
            EXPECT_EQ(m_functions.count(function), 1U) << function << " is not replaced";
    }

    std::set<std::string> m_functions; // that were planned to fail
};

TEST_F(PlacingFaults, AnyCallThatFailsOnceLosesNothing)
{
    EachCall_Check(EDiskFault::Once);
}

TEST_F(PlacingFaults, AFunctionFailingForGoodLosesNothing)
{
    EachCall_Check(EDiskFault::SameForGood);
}

TEST_F(PlacingFaults, ADiskThatFailsForGoodLosesNothing)
{
    EachCall_Check(EDiskFault::AllForGood);
}

TEST_F(PlacingFaults, AFullFileTableSaysSo)
{
    for (const int error : {EMFILE, ENFILE})
        for (const char* function : {"open", "openat", "fopen"})
            for (int number = 0; number < 20; ++number)
                Run_Check({EDiskFault::Once, number, function, error, 0}, true);
}

TEST_F(PlacingFaults, WhatIsNotOnTheDiskDoesNotCount)
{
    Older_Put(0);
    const int fileCount = static_cast<int>(Result(1).size()) - 1; // the user's is not ours
    for (int number = 0; number < fileCount + 3; ++number) {      // then the staging folder and the two in it
        SCOPED_TRACE(number);
        const SRunEnd run = Run(1, {EDiskFault::Once, number, "fsync", EIO, 0});
        EXPECT_NE(run.message.find("Input/output error"), std::string::npos) << run.message;
        EXPECT_TRUE(SFolder::Read(folder).files == Result(0));
    }
    const SRunEnd decided = Run(1, {EDiskFault::Once, fileCount + 3, "fsync", EIO, 0});
    EXPECT_EQ(decided.message, (folder / ".dotweave-ready").string() +
                                   ": the new result is complete here, but not all its files are in place: " +
                                   folder.string() +
                                   ": Input/output error; the next run into this folder moves them");
    NextRun_Begin(folder);
    EXPECT_TRUE(SFolder::Read(folder).files == Result(1));
    EXPECT_TRUE(Run(1, {EDiskFault::SameForGood, 0, "fsync", EINVAL, 0}).isGood)
        << "nothing can be synced there";
    EXPECT_TRUE(SFolder::Read(folder).files == Result(1));
}

TEST_F(PlacingFaults, AFolderNotOnTheDiskDoesNotCount)
{
    const int fileCount = static_cast<int>(Result(1).size()) - 1; // then three folders, then the parent
    EXPECT_EQ(Run(1, {EDiskFault::Once, fileCount + 3, "fsync", EIO, 0}).message,
              folder.parent_path().string() + ": Input/output error");
    EXPECT_FALSE(fs::exists(folder));
}

/// As when its run has removed it just now.
TEST_F(PlacingFaults, AClosedAbandonedFolderIsNoError)
{
    Older_Put(0);
    fs::create_directory(folder / ".dotweave-17");
    const SRunEnd run = Run(1, {EDiskFault::Once, 1, "open", ENOENT, 0}); // the first opens the result folder
    EXPECT_EQ(run.message, "");
    EXPECT_TRUE(fs::exists(folder / ".dotweave-17")) << "another call has failed";
}

TEST_F(PlacingFaults, AnEarlierRunsResultIsNotCalledNew)
{
    Older_Put(0);
    static_cast<void>(Run(1, {EDiskFault::SignalBefore, 1, "rename", 0, SIGKILL}));
    ASSERT_TRUE(SFolder::Read(folder).hasReady);
    const SRunEnd run = Run(2, {EDiskFault::Once, 0, "rename", EIO, 0});
    EXPECT_NE(run.message.find(": an earlier run's result is complete here"), std::string::npos);
    EXPECT_EQ(Run(2, {EDiskFault::Once, 1, "lstat", EIO, 0}).message,
              (folder / ".dotweave-ready").string() + ": Input/output error");
}

/// Only root can put a folder of somebody else's there.
TEST_F(PlacingFaults, AForeignFolderStaysAsItIs)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "needs root";
    constexpr uid_t NOBODY = 65534;
    Older_Put(0);
    for (const char* name : {".dotweave-ready", ".dotweave-17"}) {
        fs::create_directories(folder / name / "new");
        ASSERT_EQ(chown((folder / name).c_str(), NOBODY, NOBODY), 0);
    }
    EXPECT_EQ(Run(1, {}).message, (folder / ".dotweave-ready").string() +
                                      ": is not a folder that you or the owner of " + folder.string() +
                                      " made; remove it");
    ASSERT_EQ(chown(folder.c_str(), NOBODY, NOBODY), 0);
    NextRun_Begin(folder); // the ready folder is now that of the result folder's owner
    EXPECT_FALSE(fs::exists(folder / ".dotweave-ready"));
    EXPECT_TRUE(fs::exists(folder / ".dotweave-17/new"));
}

TEST_F(PlacingFaults, AFileSystemWithoutLocksIsUsed)
{
    for (const int error : {EOPNOTSUPP, ENOSYS, EINVAL}) {
        Older_Put(0);
        EXPECT_TRUE(Run(1, {EDiskFault::SameForGood, 0, "flock", error, 0}).isGood);
        EXPECT_TRUE(SFolder::Read(folder).files == Result(1));
    }
    EXPECT_TRUE(Run(0, {EDiskFault::Once, 0, "flock", EINTR, 0}).isGood) << "waits again";
    EXPECT_EQ(Run(1, {EDiskFault::Once, 0, "flock", ENOLCK, 0}).message,
              folder.string() + ": No locks available");
}

TEST_F(PlacingFaults, AModeThatIsNotKeptIsAnError)
{
    Older_Put(0);
    fs::permissions(folder / "mask.bin", fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(Run(1, {EDiskFault::SameForGood, 0, "chmod", EPERM, 0}).message,
              (folder / "mask.bin").string() + ": Operation not permitted");
    EXPECT_TRUE(SFolder::Read(folder).files == Result(0));
    EXPECT_TRUE(Run(1, {EDiskFault::SameForGood, 0, "chown", EPERM, 0}).isGood) << "root alone may";
    EXPECT_EQ(fs::status(folder / "mask.bin").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(PlacingFaults, AnEqualModeIsNotSet)
{
    Older_Put(0);
    fs::permissions(folder / "mask.bin", fs::status(folder / "mask.json").permissions());
    EXPECT_TRUE(Run(1, {EDiskFault::SameForGood, 0, "chmod", EPERM, 0}).isGood);
}

/// A new file in another group opens to that group no more than to everybody.
TEST_F(PlacingFaults, AGroupThatIsNotKeptGetsNoRights)
{
    Older_Put(0);
    const auto modeAfter = [this](fs::perms older, EDiskFault fault) {
        fs::permissions(folder / "mask.bin", older);
        EXPECT_TRUE(Run(1, {fault, 0, "chown", EPERM, 0}).isGood);
        return fs::status(folder / "mask.bin").permissions();
    };
    EXPECT_EQ(modeAfter(fs::perms{0660}, EDiskFault::SameForGood), fs::perms{0600});
    EXPECT_EQ(modeAfter(fs::perms{0664}, EDiskFault::SameForGood), fs::perms{0644});
    EXPECT_EQ(modeAfter(fs::perms{0660}, EDiskFault::None), fs::perms{0660});
}

} // namespace
