#include "stagedfiles.h"

#include "fileerror.h"
#include "interruptguard.h"
#include "outputfile.h"
#include "temporarydirectory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

using namespace dotweave;
namespace fs = std::filesystem;
using CNames = std::vector<std::string>;

namespace {

void Put(CStagedFiles& files, const std::string& name, const std::string& text)
{
    COutputFile file(files.Add(name), files.FinalPath(name));
    file.Write(text.data(), text.size());
    file.Close();
}

} // namespace

/// A folder with an old result: a and mask.json, which new results replace, retired, which they retire, and a
/// file of the user.
class StagedFiles : public testing::Test {
protected:
    void SetUp() override
    {
        for (const char* name : {"a", "mask.json", "retired", "other"})
            File_Write(directory.Sub(name), std::string("old ") + name);
    }
    std::string Texts() const
    {
        std::string texts;
        for (const std::string& name : Directory_Names(directory.Path()))
            texts += fs::is_regular_file(directory.Sub(name)) ? File_Read(directory.Sub(name)) + "; "
                                                              : name + "/ ";
        return texts;
    }
    /// Writes a new result up to the decision.
    static void Result_Write(CStagedFiles& files)
    {
        for (const char* name : {"mask.json", "a", "b"})
            Put(files, name, std::string("new ") + name);
        files.RetireOlder(
            [](const std::string& name) { return name == "retired" || name == "late" || name == "a"; });
    }

    const std::string OLD = "old a; old mask.json; old other; old retired; ";
    const std::string NEW = "new a; new b; new mask.json; old other; ";
    CTemporaryDirectory directory;
};

TEST_F(StagedFiles, AppearTogetherAndReplaceOlderOnes)
{
    CStagedFiles files(directory.Path());
    Result_Write(files);
    files.Check();
    EXPECT_EQ(Texts().substr(Texts().find(' ') + 1), OLD); // behind the hidden folder
    files.Place();
    EXPECT_EQ(Texts(), NEW);
}

TEST_F(StagedFiles, GivenUpLeaveTheFolderAsItWas)
{
    {
        CStagedFiles files(directory.Path());
        Result_Write(files);
    }
    EXPECT_EQ(Texts(), OLD);
}

TEST_F(StagedFiles, RefuseWhatIsNoRegularFile)
{
    fs::create_directory(directory.Sub("b"));
    {
        CStagedFiles files(directory.Path());
        Result_Write(files);
        EXPECT_THROW(files.Check(), CFileError);
        EXPECT_THROW(files.Place(), CFileError);
    }
    EXPECT_EQ(Texts(), "old a; b/ " + OLD.substr(7));
}

TEST_F(StagedFiles, RefuseAFileThatWasNeverWritten)
{
    {
        CStagedFiles files(directory.Path());
        Result_Write(files);
        files.Add("c");
        EXPECT_THROW(files.Place(), CFileError);
    }
    EXPECT_EQ(Texts(), OLD);
}

/// A run that is killed after the decision leaves any part of the moves to the next run.
TEST_F(StagedFiles, AKilledRunIsFinishedByTheNext)
{
    for (int movedCount = 0; movedCount <= 4; ++movedCount) {
        SCOPED_TRACE(movedCount);
        SetUp();
        fs::remove(directory.Sub("b"));
        const fs::path ready = directory.Sub(".dotweave-ready");
        for (const char* folder : {"new", "retired"})
            fs::create_directories(ready / folder);
        for (const char* name : {"a", "b", "mask.json"})
            File_Write(ready / "new" / name, std::string("new ") + name);
        File_Write(ready / "retired/retired", "");
        if (movedCount > 0)
            fs::rename(ready / "new/a", directory.Sub("a"));
        if (movedCount > 1)
            fs::rename(ready / "new/b", directory.Sub("b"));
        if (movedCount > 2)
            fs::remove(directory.Sub("retired"));
        if (movedCount > 3)
            fs::rename(ready / "new/mask.json", directory.Sub("mask.json"));
        {
            CStagedFiles next(directory.Path()); // is given up itself
        }
        EXPECT_EQ(Texts(), NEW);
    }
}

TEST_F(StagedFiles, WhatCannotBeMovedIsKeptAndNamed)
{
    const fs::path ready = directory.Sub(".dotweave-ready");
    fs::create_directories(ready / "new");
    File_Write(ready / "new/a", "new a");
    fs::remove(directory.Sub("a"));
    fs::create_directories(directory.Sub("a/b"));
    try {
        CStagedFiles files(directory.Path());
        ADD_FAILURE() << "moved";
    } catch (const CFileError& error) {
        EXPECT_EQ(error.what(),
                  ready.string() +
                      ": an earlier run's result is complete here, but not all its files are in place: " +
                      directory.Sub("a") + ": is no regular file; the next run into this folder moves them");
    }
    EXPECT_EQ(File_Read(ready / "new/a"), "new a");
}

TEST_F(StagedFiles, AReadyFolderWithLinksIsRefused)
{
    const fs::path elsewhere = directory.Sub("elsewhere");
    for (const char* folder : {"new", "retired"})
        fs::create_directories(elsewhere / folder);
    File_Write(elsewhere / "new/a", "not ours");
    File_Write(elsewhere / "retired/other", "");
    const fs::path ready = directory.Sub(".dotweave-ready");
    for (const char* link : {"", "new", "retired"}) {
        SCOPED_TRACE(link);
        if (*link != '\0')
            for (const char* folder : {"new", "retired"})
                fs::create_directories(ready / folder);
        const fs::path path = *link == '\0' ? ready : ready / link;
        fs::remove(path);
        fs::create_directory_symlink(elsewhere / link, path);
        try {
            const CStagedFiles files(directory.Path());
            ADD_FAILURE() << "trusted";
        } catch (const CFileError& error) {
            EXPECT_EQ(error.what(), path.string() + ": is not a folder that you or the owner of " +
                                        directory.Path().string() + " made; remove it");
        }
        fs::remove_all(ready);
        EXPECT_EQ(Texts(), "old a; elsewhere/ " + OLD.substr(7));
    }
}

TEST_F(StagedFiles, AReadyFolderWithoutNewFilesIsNamed)
{
    fs::create_directories(directory.Sub(".dotweave-ready/retired"));
    try {
        const CStagedFiles files(directory.Path());
        ADD_FAILURE() << "trusted";
    } catch (const CFileError& error) {
        EXPECT_EQ(error.what(), directory.Sub(".dotweave-ready") + ": has no folder \"new\"; remove it");
    }
    fs::remove(directory.Sub(".dotweave-ready/retired")); // as after a kill at the very end
    const CStagedFiles files(directory.Path());
    EXPECT_FALSE(fs::exists(directory.Sub(".dotweave-ready")));
}

TEST_F(StagedFiles, WhatAKilledRunLeavesIsRemoved)
{
    fs::create_directories(directory.Sub(".dotweave-17/new"));
    File_Write(directory.Sub(".dotweave-17/new/a"), "half of");
    CStagedFiles first(directory.Path()); // is at work and keeps its folder
    CStagedFiles second(directory.Path());
    EXPECT_FALSE(fs::exists(directory.Sub(".dotweave-17")));
    Put(first, "a", "first");
    Put(second, "a", "second");
    first.Place();
    EXPECT_EQ(File_Read(directory.Sub("a")), "first");
    second.Place();
    EXPECT_EQ(File_Read(directory.Sub("a")), "second");
}

TEST_F(StagedFiles, OnlyWhatARunMakesIsRemoved)
{
    const CNames files = {".dotweave-/new/a", ".dotweave-notes/new/a", ".dotweave-17x/new/a",
                          ".dotweave-18/a",   ".dotweave-19/old/a",    ".dotweave-20/new/a/b"};
    for (const std::string& file : files) {
        fs::create_directories(fs::path(directory.Sub(file)).parent_path());
        File_Write(directory.Sub(file), "the user's");
    }
    fs::create_directory_symlink(".dotweave-notes", directory.Sub(".dotweave-21"));
    for (const char* name : {".dotweave-18/new", ".dotweave-22/new"}) {
        fs::create_directories(directory.Sub(name));
        File_Write(directory.Sub(name) + "/b", "half of");
    }
    const CStagedFiles next(directory.Path());
    for (const std::string& file : files)
        EXPECT_TRUE(fs::exists(directory.Sub(file))) << file;
    EXPECT_TRUE(fs::is_symlink(directory.Sub(".dotweave-21")));
    EXPECT_TRUE(fs::exists(directory.Sub(".dotweave-18/new/b"))) << "all or nothing";
    EXPECT_FALSE(fs::exists(directory.Sub(".dotweave-22")));
}

TEST_F(StagedFiles, RetireWhatARunAtTheSameTimePlaced)
{
    CStagedFiles first(directory.Path());
    CStagedFiles second(directory.Path());
    Result_Write(second);
    Put(first, "late", "of the first run");
    first.Place();
    second.Place();
    EXPECT_EQ(Texts(), NEW);
}

TEST_F(StagedFiles, MadeFoldersGoWhenTheRunFails)
{
    {
        CStagedFiles files(directory.Sub("x/y/z"));
        Put(files, "a", "new a");
    }
    for (const char* name : {"other", "other/x/y"})
        EXPECT_THROW(CStagedFiles(directory.Sub(name)), fs::filesystem_error);
    EXPECT_EQ(Texts(), OLD);
    CStagedFiles files(directory.Sub("x/y/z/"));
    Put(files, "a", "new a");
    files.Place();
    EXPECT_EQ(Directory_Names(directory.Sub("x/y/z")), CNames{"a"});
}

TEST(InterruptGuard, StopsTheNextWriteAndNothingIsLeft)
{
    const CTemporaryDirectory directory;
    std::optional<CInterruptGuard> guard(std::in_place);
    {
        CStagedFiles files(directory.Sub("out"));
        Put(files, "a", "new a");
        EXPECT_NO_THROW(CInterruptGuard::Check());
        ASSERT_EQ(std::raise(SIGTERM), 0);
        try {
            Put(files, "b", "new b");
            ADD_FAILURE() << "not stopped";
        } catch (const CInterrupted& interrupted) {
            EXPECT_EQ(interrupted.Signal(), SIGTERM);
        }
    }
    guard.reset();
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{});
}

TEST(InterruptGuard, GivesBackHandlersAndKeepsIgnoring)
{
    ASSERT_NE(std::signal(SIGINT, SIG_IGN), SIG_ERR);
    {
        const CInterruptGuard guard;
        ASSERT_EQ(std::raise(SIGINT), 0);
        EXPECT_NO_THROW(CInterruptGuard::Check());
    }
    EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_IGN);
}
