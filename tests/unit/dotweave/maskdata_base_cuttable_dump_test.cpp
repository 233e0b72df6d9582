#include "dotweave/maskdata_base.h"

#include "logcapture.h"
#include "logscopes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

class CutTableDump : public testing::Test {
protected:
    CutTableDump()
    {
        const std::string test = testing::UnitTest::GetInstance()->current_test_info()->name();
        m_folder = std::filesystem::path(testing::TempDir()) / ("dotweave_dump_" + test);
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
    }
    ~CutTableDump() override { std::filesystem::remove_all(m_folder); }

    std::string Path() const { return (m_folder / "table.txt").string(); }
    std::string Text() const
    {
        std::ifstream file(Path());
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    std::filesystem::path m_folder;
};

TEST_F(CutTableDump, WritesTheLowerBoundFirstInFiveColumns)
{
    const std::vector<SCutTable> table = {{39321, 13107}, {255, 0}, {65535, 65534}};
    EXPECT_TRUE(CMaskData_Base::OutputCutTable(table.data(), 3, Path()));
    EXPECT_EQ(Text(), "13107, 39321\n    0,   255\n65534, 65535\n");
}

TEST_F(CutTableDump, ReplacesAnExistingFile)
{
    const std::vector<SCutTable> table = {{2, 1}, {4, 3}};
    for (const int count : {2, 1, 0, -3}) {
        EXPECT_TRUE(CMaskData_Base::OutputCutTable(table.data(), count, Path()));
        EXPECT_TRUE(std::filesystem::exists(Path()));
        EXPECT_EQ(Text(), std::string("    1,     2\n    3,     4\n")
                              .substr(0, count > 0 ? 13U * static_cast<unsigned>(count) : 0U))
            << count;
    }
}

TEST_F(CutTableDump, AMissingFolderFailsAndCreatesNothing)
{
    const std::vector<SCutTable> table = {{2, 1}};
    const std::filesystem::path missing = m_folder / "missing";
    const CLogCapture log;
    EXPECT_FALSE(CMaskData_Base::OutputCutTable(table.data(), 1, (missing / "table.txt").string()));
    EXPECT_EQ(log.Records(), (std::vector<SLogRecord>{Failure(UNIT_MASK, SCOPE_OUTPUT)}));
    EXPECT_FALSE(std::filesystem::exists(missing));
}

TEST_F(CutTableDump, AFullDiskIsNoFailure)
{
    const std::string full = "/dev/full"; // opens for writing and then takes nothing
    if (!std::filesystem::exists(full))
        GTEST_SKIP() << "no file that is always full";
    // One table is written when the file is closed, the other is longer than any buffer.
    for (const int count : {1, 100000}) {
        const std::vector<SCutTable> table(static_cast<std::size_t>(count), {2, 1});
        const CLogCapture log;
        EXPECT_TRUE(CMaskData_Base::OutputCutTable(table.data(), count, full)) << count;
        EXPECT_EQ(log.Records(), std::vector<SLogRecord>()) << count;
    }
}

} // namespace
