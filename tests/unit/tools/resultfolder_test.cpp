#include "sanitized.h"
#include "temporarydirectory.h"
#include "toolprocess.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <boost/crc.hpp>
#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace fs = std::filesystem;
using CNames = std::vector<std::string>;

namespace {

/// A folder with the result of one colour; most tests then try to write four colours there.
class ResultFolder : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(Tool_Run("build --color-count 1 --out " + out).exitStatus, 0); }

    /// Checks that the files are those that mask.json lists, with their sizes and checksums.
    void Whole_Expect() const
    {
        CNames names = {"mask.json"};
        const nlohmann::json object = nlohmann::json::parse(File_Read(out + "/mask.json"));
        for (const auto& file : object["files"]) {
            names.push_back(file["name"]);
            const std::string content = File_Read(out + '/' + names.back());
            boost::crc_32_type checksum;
            checksum.process_bytes(content.data(), content.size());
            EXPECT_EQ(file["bytes"], content.size()) << names.back();
            EXPECT_EQ(std::stoul(file["crc32"].get<std::string>(), nullptr, 16), checksum.checksum())
                << names.back();
        }
        std::sort(names.begin(), names.end());
        EXPECT_EQ(Directory_Names(out), names);
    }

    void OlderResult_Expect(CNames more = {}) const
    {
        more.insert(more.end(), {"mask.bin", "mask.json", "mask_c0_p0.png"});
        std::sort(more.begin(), more.end());
        EXPECT_EQ(Directory_Names(out), more);
        EXPECT_EQ(fs::file_size(out + "/mask.bin"), 4U * 544U * 68U);
    }

    CTemporaryDirectory directory;
    std::string out = directory.Sub("out");
};

} // namespace

TEST_F(ResultFolder, TakesANewResultAndLosesOldPictures)
{
    const CNames others = {"a", "mask_c0_p0.png.txt", "mask_c00_p0.png", "mask_c9_p.png", "xmask_c9_p9.png"};
    for (const std::string& name : others)
        File_Write(out + '/' + name, "somebody else's");
    ASSERT_EQ(Tool_Run("build --png all --out " + out).exitStatus, 0);
    EXPECT_EQ(Directory_Names(out).size(), 18U + others.size());
    ASSERT_EQ(Tool_Run("build --color-count 1 --out " + out).exitStatus, 0);
    OlderResult_Expect(others);
}

TEST_F(ResultFolder, KeepsTheOlderResultOnAFullDisk)
{
    // The limit counts 512 bytes. With the signal ignored, a write beyond it fails as on a full disk.
    const std::string limit = R"(trap '' XFSZ; ulimit -f 800; exec "$0" "$@")";
    const SToolResult replaced = Tool_RunIn(limit, "build --out " + out);
    EXPECT_EQ(replaced.exitStatus, 4);
    EXPECT_EQ(replaced.err, "dotweave: " + out + "/mask.bin: File too large\n");
    OlderResult_Expect();
    EXPECT_EQ(Tool_RunIn(limit, "build --out " + directory.Sub("x/y")).exitStatus, 4);
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{"out"});
}

TEST_F(ResultFolder, KeepsTheOlderResultWithoutFileHandles)
{
#if defined(DOTWEAVE_TEST_IS_SANITIZED)
    GTEST_SKIP() << "the sanitizer needs file handles of its own, and ends the program when it gets none";
#endif
    int failedCount = 0;
    for (int limit = 4; limit < 16; ++limit) { // with the lowest ones the program itself cannot be loaded
        SCOPED_TRACE(limit);
        const SToolResult result =
            Tool_RunIn("ulimit -n " + std::to_string(limit) + R"(; exec "$0" "$@")", "build --out " + out);
        if (result.exitStatus == 0)
            break;
        OlderResult_Expect();
        if (result.exitStatus != 4)
            continue;
        EXPECT_NE(result.err.find(": Too many open files\n"), std::string::npos) << result.err;
        ++failedCount;
    }
    EXPECT_GE(failedCount, 1);
}

TEST_F(ResultFolder, ReplacesRegularFilesOnly)
{
    fs::create_directory(out + "/mask_c1_p0.png");
    fs::create_symlink("a", out + "/mask_c2_p0.png");
    for (const char* name : {"/mask_c1_p0.png", "/mask_c2_p0.png"}) {
        const SToolResult result = Tool_Run("build --out " + out);
        EXPECT_EQ(result.exitStatus, 4);
        EXPECT_EQ(result.err, "dotweave: " + out + name + ": is no regular file and is not replaced\n");
        OlderResult_Expect(name[7] == '1' ? CNames{"mask_c1_p0.png", "mask_c2_p0.png"}
                                          : CNames{"mask_c2_p0.png"});
        fs::remove(out + name);
    }
    File_Write(directory.Sub("file"), "text");
    for (const char* name : {"file", "file/out"}) {
        const SToolResult result = Tool_Run("build --out " + directory.Sub(name));
        EXPECT_EQ(result.exitStatus, 4);
        EXPECT_EQ(result.err, "dotweave: " + directory.Sub(name) + ": Not a directory\n");
    }
    EXPECT_EQ(File_Read(directory.Sub("file")), "text");
}

TEST_F(ResultFolder, IsWholeAfterRunsAtOnce)
{
    for (int round = 0; round < 5; ++round) {
        std::vector<std::unique_ptr<CToolProcess>> processes;
        for (const char* colors : {"1", "2", "3"})
            processes.push_back(std::make_unique<CToolProcess>(
                Tool_Command("build --out " + out + " --color-count ", {colors})));
        for (const auto& process : processes)
            EXPECT_EQ(process->Wait().exitStatus, 0);
        Whole_Expect();
    }
}

/// The test holds the lock of the folder, as a run that has stopped would.
TEST_F(ResultFolder, WaitsForAnotherRunUntilInterrupted)
{
    const int other = open(out.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    CToolProcess process(Tool_Command("build --out " + out));
    for (int i = 0; i < 10000 && process.ErrorText().empty() && !process.IsEnded(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    process.Signal(SIGTERM);
    for (int i = 0; i < 10000 && !process.IsEnded(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_TRUE(process.IsEnded()) << "still waits";
    close(other);
    const SToolResult result = process.Wait();
    EXPECT_EQ(result.signal, SIGTERM);
    EXPECT_EQ(result.err, "dotweave: waiting for another run in " + out + '\n');
    OlderResult_Expect();
}

/// A run may be killed at any moment. Unless it was while it moved files, the folder is whole; after the next
/// run it is whole in any case.
TEST_F(ResultFolder, IsWholeAfterTheRunThatFollowsAKill)
{
    std::mt19937 random(20240607); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same delays in every run
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE(round);
        CToolProcess process(
            Tool_Command("build --png all --out " + out, {"--color-count", round % 2 == 0 ? "2" : "1"}));
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 150000));
        process.Signal(SIGKILL);
        static_cast<void>(process.Wait());
        if (round % 4 != 3)
            continue;
        ASSERT_EQ(Tool_Run("cuttable --out " + out + "/table").exitStatus,
                  0); // another command helps as well
        fs::remove(out + "/table");
        Whole_Expect();
    }
}

/// Runs build in an empty folder and ends it by a signal as soon as its staging folder is there.
class BuildSignal : public testing::TestWithParam<int> {};

TEST_P(BuildSignal, LeavesNothingBehind)
{
    const CTemporaryDirectory directory;
    CToolProcess process( // a mode of a thousand pictures: the signal comes while they are written
        Tool_Command("build --png all --nozzle-count 132 --color-count 64 --out " + directory.Sub("out")));
    while (!fs::exists(directory.Sub("out")) && !process.IsEnded())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    process.Signal(GetParam());
    const SToolResult result = process.Wait();
    EXPECT_EQ(result.signal, GetParam()) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{});
}

INSTANTIATE_TEST_SUITE_P(, BuildSignal,
                         testing::Values(SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGALRM, SIGXFSZ),
                         [](const auto& one) { return "SIG" + std::string(sigabbrev_np(one.param)); });
