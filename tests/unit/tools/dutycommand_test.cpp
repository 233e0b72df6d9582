#include "temporarydirectory.h"
#include "toolprocess.h"
#include "view/duty.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

using nlohmann::json;

namespace {

const std::string MODE = "duty --nozzle-count 96 --base-pass 3 --color-count 2 --feather-mode nozzle "
                         "--feather-nozzle-type smooth-3 ";
const SMaskParam PARAM = {96, 3, 1, 1, 2, 1, 1, 50.0F, 2, 1, 100, 0};

std::vector<std::string> Cells(const std::string& line)
{
    std::istringstream stream(line);
    std::vector<std::string> cells;
    for (std::string cell; std::getline(stream, cell, ',');)
        cells.push_back(cell);
    return cells;
}

} // namespace

TEST(DutyCommand, TheTableHasARowForEachNozzleRow)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(PARAM));
    std::istringstream stream(Tool_Run(MODE + "--csv -").out);
    std::string line;
    ASSERT_TRUE(std::getline(stream, line));
    EXPECT_EQ(line, "color,row,dots,share,longestRun,together");
    for (int color = 0; color < 2; ++color) {
        const dotweave::SColorDuty duty = dotweave::Duty_Count(mask, color);
        for (std::size_t row = 0; row < duty.rows.size(); ++row) {
            ASSERT_TRUE(std::getline(stream, line));
            const std::vector<std::string> cells = Cells(line);
            ASSERT_EQ(cells.size(), 6U);
            EXPECT_EQ(cells[0], std::to_string(color));
            EXPECT_EQ(cells[1], std::to_string(row));
            EXPECT_EQ(cells[2], std::to_string(duty.rows[row].dotCount));
            EXPECT_NEAR(std::stod(cells[3]), duty.Share(duty.rows[row]), 1e-5);
            EXPECT_EQ(cells[4], std::to_string(duty.rows[row].longestRun));
            EXPECT_EQ(cells[5], std::to_string(duty.rows[row].togetherCount));
        }
    }
    EXPECT_FALSE(std::getline(stream, line));
}

TEST(DutyCommand, JsonAndTextHaveAColourEach)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(PARAM));
    const json list = json::parse(Tool_Run(MODE + "--json").out);
    ASSERT_EQ(list.size(), 2U);
    const dotweave::SColorDuty duty = dotweave::Duty_Count(mask, 1);
    EXPECT_EQ(list[1]["color"], 1);
    EXPECT_DOUBLE_EQ(list[1]["meanShare"].get<double>(), duty.MeanShare());
    EXPECT_DOUBLE_EQ(list[1]["evenness"].get<double>(), duty.Evenness());
    EXPECT_EQ(list[1]["longestRun"], duty.LongestRun());
    std::istringstream stream(Tool_Run(MODE).out);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[1].size(), lines[2].size());
}

/// One pass prints everything, so every row works at every pixel.
TEST(DutyCommand, OfASinglePassIsFull)
{
    const std::string out = Tool_Run("duty --nozzle-count 20 --base-pass 1 --color-count 1").out;
    EXPECT_EQ(out.substr(out.find('\n') + 1),
              "     0     20     100.0 %   100.0 %          0          544            100.0 %\n");
}

TEST(DutyCommand, ThePlotGoesIntoItsFile)
{
    const CTemporaryDirectory directory;
    EXPECT_EQ(Tool_Run(MODE + "--svg " + directory.Sub("a.svg")).exitStatus, 0);
    EXPECT_EQ(File_Read(directory.Sub("a.svg")), Tool_Run(MODE + "--svg -").out);
    EXPECT_NE(File_Read(directory.Sub("a.svg")).find(">colour 1<"), std::string::npos);
}
