#include "report/report.h"

#include "figures/patchfigures.h"
#include "report/reportsections.h"
#include "report/sketchsection.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

using namespace dotweave;

namespace {

/// 16 nozzle rows, 2 passes, 2 colours: steps of 8 lines.
constexpr SMaskParam TWO_PASSES = {16, 2, 1, 1, 2, 1, 0, 0, 0, 1, 100, 0};

int Count(const std::string& text, const std::string& part)
{
    int count = 0;
    for (std::size_t place = text.find(part); place != std::string::npos; place = text.find(part, place + 1))
        ++count;
    return count;
}

class Report : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(mask.Create(TWO_PASSES)); }
    CMaskData_Base mask;
};

} // namespace

TEST_F(Report, ReportsEachPartAsItIsDone)
{
    int done = 0;
    const std::string html = Report_Html(mask, {}, [&done] { ++done; });
    EXPECT_EQ(done, REPORT_PART_COUNT);
    EXPECT_EQ(Count(html, "<h1"), 1);
    EXPECT_EQ(Count(html, "<section "), 9);
    EXPECT_TRUE(std::all_of(html.begin(), html.end(), [](char c) { return c > 0; })) << "not ASCII";
}

TEST_F(Report, HasEveryMask)
{
    const nlohmann::json pictures = MaskSection_Data(mask).at("pictures");
    ASSERT_EQ(pictures.size(), 2U);
    for (const nlohmann::json& color : pictures)
        EXPECT_EQ(color.size(), static_cast<std::size_t>(CPassLayout(mask).PositionCount()));
    EXPECT_EQ(pictures[0][0], ""); // it is in the page itself
    EXPECT_NE(pictures[0][1], pictures[1][1]);
}

TEST_F(Report, SketchFiresEachPixelOfAFullToneOnce)
{
    const nlohmann::json sketch = SketchSection_Data(mask, {});
    const std::string text = sketch.at("fired");
    const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const auto bit = [&](std::size_t index) {
        return letters.find(text[index / 6]) >> (5 - index % 6) & 1U; // six bits a letter
    };
    const int columns =
        sketch.at("window").at("columnCount").get<int>() + 2 * sketch.at("marginColumns").get<int>();
    const int lines = sketch.at("window").at("lineCount").get<int>();
    std::vector<int> counts(static_cast<std::size_t>(columns * lines));
    std::size_t index = 0;
    for (const nlohmann::json& print : sketch.at("prints")) {
        const int line = print[2];
        for (int column = 0; column < columns; ++column, ++index) {
            if (line >= 0 && line < lines && bit(index) != 0)
                ++counts[static_cast<std::size_t>(line * columns + column)];
        }
    }
    EXPECT_EQ(std::count(counts.begin(), counts.end(), 1), columns * lines);
}

TEST_F(Report, MarksAreTheFiguresOfTheWindow)
{
    const nlohmann::json sketch = SketchSection_Data(mask, {});
    const nlohmann::json& window = sketch.at("window");
    SPatchOptions options;
    options.window = {window.at("firstLine"), window.at("lineCount"), window.at("columnCount")};
    for (const nlohmann::json& mark : sketch.at("marks")) {
        if (mark.at("tint") != 1.0)
            continue;
        SSheetErrors errors;
        errors.advanceConstant = mark.at("advance");
        errors.tilt = mark.at("tilt");
        errors.bidirectional = mark.at("bidirectional");
        if (mark.at("dead") >= 0)
            errors.deadRows = {mark.at("dead").get<int>()};
        SCOPED_TRACE(mark.at("advance"));
        const SPatchFigures figures = PatchFigures(mask, 0, nullptr, errors, options, {});
        EXPECT_NEAR(mark.at("meanLightness"), figures.meanLightness, 1e-5);
        EXPECT_NEAR(mark.at("bandingRms"), figures.banding.rms, 1e-5);
        ASSERT_EQ(mark.at("lines").size(), figures.lines.size());
        for (std::size_t i = 0; i < figures.lines.size(); ++i)
            EXPECT_NEAR(mark.at("lines")[i], figures.lines[i], 1e-3);
    }
}

TEST_F(Report, RefusesAViewingThatMakesNoSense)
{
    SReportOptions options;
    options.viewing.distanceMm = 1;
    EXPECT_THROW(Report_Html(mask, options), std::invalid_argument);
    options.viewing.distanceMm = 350;
    options.dotDiameter = 9;
    EXPECT_THROW(Report_Html(mask, options), std::invalid_argument);
}
