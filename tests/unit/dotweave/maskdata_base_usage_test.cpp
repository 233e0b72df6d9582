#include "dotweave/maskdata_base.h"

#include "logcapture.h"
#include "maskparams.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

/// The sample's files have fixed names on drive I:, which elsewhere are plain names in the working folder.
class MaskDataUsage : public testing::Test {
protected:
    MaskDataUsage()
        : m_before(std::filesystem::current_path()),
          m_folder(std::filesystem::path(testing::TempDir()) /
                   (std::string("dotweave_usage_") +
                    testing::UnitTest::GetInstance()->current_test_info()->name()))
    {
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
        std::filesystem::current_path(m_folder);
    }
    ~MaskDataUsage() override
    {
        std::filesystem::current_path(m_before);
        std::filesystem::remove_all(m_folder);
    }

    static std::vector<std::string> Lines(const std::string& path)
    {
        std::vector<std::string> lines;
        std::ifstream file(path);
        for (std::string line; std::getline(file, line);)
            lines.push_back(line);
        return lines;
    }

    std::filesystem::path m_before;
    std::filesystem::path m_folder;
};

TEST_F(MaskDataUsage, SampleModeIsCreatedAndLogsNothing)
{
    const CLogCapture log;
    EXPECT_TRUE(CMaskData_Base::Usage());
    EXPECT_TRUE(log.Records().empty());
}

TEST_F(MaskDataUsage, SampleModeHasTheGeometryOfOneFullPass)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(MaskParam_Plain()));
    EXPECT_EQ(mask.StepHeight_IncludeRes(), 544);
    EXPECT_EQ(mask.MaskHeight_IncludeRes(), 544);
    EXPECT_EQ(mask.LeadBlankHeight_IncludeRes(), 0);
    EXPECT_EQ(mask.MaskWidth(), 544);
    EXPECT_EQ(mask.MaskLineBytes_OneColor(), 68);
    EXPECT_EQ(mask.MaskBytes_OneColor(), mask.MaskBytes_OnePosition()) << "one position";
}

#if !defined(_WIN32)
TEST_F(MaskDataUsage, TestSampleDumpsTheRampAndWhatStyleTwoMakesOfIt)
{
    EXPECT_TRUE(CMaskData_Base::Usage_Test());
    const std::vector<std::string> ramp = Lines("I:\\cutTable_1.txt");
    ASSERT_EQ(ramp.size(), 80U);
    EXPECT_EQ(ramp[0], "64250, 65535");
    EXPECT_EQ(ramp[29], "26985, 65535"); // (50 - 29) * 1285
    EXPECT_EQ(ramp[30], "25700, 64250");
    EXPECT_EQ(ramp[49], " 1285, 39835"); // (80 - 49) * 1285
    EXPECT_EQ(ramp[50], "    0, 38550");
    EXPECT_EQ(ramp[79], "    0,  1285");

    // 80 rows in steps of 30: two zones and 20 rows left. Those form a table of 3 * 20 rows in steps of 20,
    // which divides evenly into thirds and stands in the first 20 rows of each zone; rows 20 to 29 of a zone
    // keep halves.
    const std::vector<std::string> styled = Lines("I:\\cutTable_2.txt");
    ASSERT_EQ(styled.size(), 80U);
    EXPECT_EQ(styled[0], "    0, 21845");
    EXPECT_EQ(styled[19], "    0, 21845");
    EXPECT_EQ(styled[20], "    0, 32767");
    EXPECT_EQ(styled[29], "    0, 32767");
    EXPECT_EQ(styled[30], "21845, 43690");
    EXPECT_EQ(styled[50], "32767, 65535");
    EXPECT_EQ(styled[60], "43690, 65535");
    EXPECT_EQ(styled[79], "43690, 65535");
}

TEST_F(MaskDataUsage, TestSampleIsTrueEvenWhenNoFileCanBeWritten)
{
    std::filesystem::create_directories("I:\\cutTable_1.txt");
    std::filesystem::create_directories("I:\\cutTable_2.txt");
    const CLogCapture log;
    EXPECT_TRUE(CMaskData_Base::Usage_Test());
    EXPECT_EQ(log.Records().size(), 2U) << "one record per dump that could not be opened";
}
#endif

} // namespace
