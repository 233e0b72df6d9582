#include "dotweave/maskdata_base.h"

#include "cuttables.h"
#include "logcapture.h"
#include "maskparams.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

namespace {

/// The sample's files have fixed names on drive I:. Elsewhere these are plain names in the working folder.
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

    /// An entry as a dump writes it.
    static std::string Line(const SRange& range)
    {
        std::ostringstream line;
        line << std::setw(5) << range.lower << ", " << std::setw(5) << range.upper;
        return line.str();
    }

    std::filesystem::path m_before;
    std::filesystem::path m_folder;
};

TEST_F(MaskDataUsage, SampleIsOneFullPass)
{
    const CLogCapture log;
    EXPECT_TRUE(CMaskData_Base::Usage());
    EXPECT_TRUE(log.Records().empty());
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(MaskParam_Plain())); // the same mode
    EXPECT_EQ(mask.StepHeight_IncludeRes(), 544);
    EXPECT_EQ(mask.MaskHeight_IncludeRes(), 544);
    EXPECT_EQ(mask.LeadBlankHeight_IncludeRes(), 0);
    EXPECT_EQ(mask.MaskWidth(), 544);
    EXPECT_EQ(mask.MaskLineBytes_OneColor(), 68);
    EXPECT_EQ(mask.MaskBytes_OneColor(), mask.MaskBytes_OnePosition()) << "one position";
}

#if !defined(_WIN32)
TEST_F(MaskDataUsage, TestDumpsTheRampAndWhatStyleTwoMakes)
{
    EXPECT_TRUE(CMaskData_Base::Usage_Test());
    const std::vector<std::string> ramp = Lines("I:\\cutTable_1.txt");
    const std::vector<std::string> styled = Lines("I:\\cutTable_2.txt");
    ASSERT_EQ(ramp.size(), 80U);
    ASSERT_EQ(styled.size(), 80U);
    // Style 2 of 80 rows in steps of 30: the first 20 rows of a zone share their image rows with two others.
    const CRanges thirds = {{0, 21845}, {21845, 43690}, {43690, 65535}};
    const CRanges halves = {{0, 32767}, {32767, 65535}};
    for (std::size_t row = 0; row < 80; ++row) {
        const int r = static_cast<int>(row); // 51 shares of 1285 are the whole scale
        EXPECT_EQ(ramp[row], Line({r < 50 ? (50 - r) * 1285 : 0, r < 30 ? 65535 : (80 - r) * 1285})) << row;
        EXPECT_EQ(styled[row], Line(row % 30 < 20 ? thirds[row / 30] : halves[row / 30])) << row;
    }
}

TEST_F(MaskDataUsage, TestIsTrueEvenWithoutFiles)
{
    std::filesystem::create_directories("I:\\cutTable_1.txt");
    std::filesystem::create_directories("I:\\cutTable_2.txt");
    const CLogCapture log;
    EXPECT_TRUE(CMaskData_Base::Usage_Test());
    EXPECT_EQ(log.Records().size(), 2U) << "one record per dump that could not be opened";
}
#endif

} // namespace
