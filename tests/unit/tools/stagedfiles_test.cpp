#include "stagedfiles.h"

#include "interruptguard.h"
#include "outputfile.h"
#include "temporarydirectory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

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

TEST(StagedFiles, AppearTogetherAndReplaceOlderOnes)
{
    const CTemporaryDirectory directory;
    File_Write(directory.Sub("a"), "old a");
    File_Write(directory.Sub("retired"), "old");
    File_Write(directory.Sub("other"), "not ours");
    {
        CStagedFiles files(directory.Path());
        Put(files, "a", "new a");
        Put(files, "b", "new b");
        files.Retire("retired");
        files.Retire("never there");
        EXPECT_EQ(File_Read(directory.Sub("a")), "old a"); // still complete
        EXPECT_FALSE(fs::exists(directory.Sub("b")));
        files.Place();
        files.Keep();
    }
    EXPECT_EQ(Directory_Names(directory.Path()), (CNames{"a", "b", "other"}));
    EXPECT_EQ(File_Read(directory.Sub("a")), "new a");
    EXPECT_EQ(File_Read(directory.Sub("b")), "new b");
    EXPECT_EQ(File_Read(directory.Sub("other")), "not ours");
}

TEST(StagedFiles, GivenUpBeforeTheMovesLeaveTheDirectoryAsItWas)
{
    const CTemporaryDirectory directory;
    File_Write(directory.Sub("a"), "old a");
    {
        CStagedFiles files(directory.Path());
        Put(files, "a", "new a");
        Put(files, "b", "new b");
    }
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{"a"});
    EXPECT_EQ(File_Read(directory.Sub("a")), "old a");
}

TEST(StagedFiles, GivenUpAfterTheMovesPutOlderOnesBack)
{
    const CTemporaryDirectory directory;
    File_Write(directory.Sub("a"), "old a");
    File_Write(directory.Sub("retired"), "old");
    {
        CStagedFiles files(directory.Path());
        Put(files, "a", "new a");
        Put(files, "b", "new b");
        files.Retire("retired");
        files.Place();
        EXPECT_EQ(File_Read(directory.Sub("a")), "new a");
    }
    EXPECT_EQ(Directory_Names(directory.Path()), (CNames{"a", "retired"}));
    EXPECT_EQ(File_Read(directory.Sub("a")), "old a");
}

TEST(StagedFiles, AMoveThatFailsPutsEverythingBack)
{
    const CTemporaryDirectory directory;
    File_Write(directory.Sub("a"), "old a");
    fs::create_directory(directory.Sub("z"));
    {
        CStagedFiles files(directory.Path());
        Put(files, "a", "new a");
        Put(files, "z", "new z");
        EXPECT_THROW(files.Place(), fs::filesystem_error);
    }
    EXPECT_EQ(Directory_Names(directory.Path()), (CNames{"a", "z"}));
    EXPECT_EQ(File_Read(directory.Sub("a")), "old a");
    EXPECT_TRUE(fs::is_directory(directory.Sub("z")));
}

TEST(StagedFiles, AFileThatWasNeverWrittenPutsEverythingBack)
{
    const CTemporaryDirectory directory;
    File_Write(directory.Sub("b"), "old b");
    {
        CStagedFiles files(directory.Path());
        Put(files, "a", "new a");
        files.Add("b");
        EXPECT_THROW(files.Place(), fs::filesystem_error);
    }
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{"b"});
    EXPECT_EQ(File_Read(directory.Sub("b")), "old b");
}

TEST(StagedFiles, MadeDirectoriesGoAgainWhenTheRunFails)
{
    const CTemporaryDirectory directory;
    {
        CStagedFiles files(directory.Sub("x/y/z"));
        Put(files, "a", "new a");
        EXPECT_TRUE(fs::is_directory(directory.Sub("x/y/z")));
    }
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{});
    {
        CStagedFiles files(directory.Sub("x/y/z/"));
        Put(files, "a", "new a");
        files.Place();
        files.Keep();
    }
    EXPECT_EQ(Directory_Names(directory.Sub("x/y/z")), CNames{"a"});
}

TEST(StagedFiles, ADirectoryThatCannotBeMadeLeavesNothing)
{
    const CTemporaryDirectory directory;
    File_Write(directory.Sub("file"), "text");
    EXPECT_THROW(CStagedFiles(directory.Sub("file")), fs::filesystem_error);
    EXPECT_THROW(CStagedFiles(directory.Sub("file/x/y")), fs::filesystem_error);
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{"file"});
}

TEST(StagedFiles, TwoRunsInOneDirectoryDoNotMeet)
{
    const CTemporaryDirectory directory;
    CStagedFiles first(directory.Path());
    CStagedFiles second(directory.Path());
    Put(first, "a", "first");
    Put(second, "a", "second");
    first.Place();
    first.Keep();
    second.Place();
    second.Keep();
    EXPECT_EQ(File_Read(directory.Sub("a")), "second");
}

TEST(InterruptGuard, AnInterruptStopsTheNextWriteAndNothingIsLeft)
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

TEST(InterruptGuard, GivesTheHandlersBackAndLeavesIgnoredSignalsIgnored)
{
    ASSERT_NE(std::signal(SIGINT, SIG_IGN), SIG_ERR);
    {
        const CInterruptGuard guard;
        ASSERT_EQ(std::raise(SIGINT), 0);
        EXPECT_NO_THROW(CInterruptGuard::Check());
    }
    EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_IGN);
}
