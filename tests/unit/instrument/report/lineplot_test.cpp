#include "report/lineplot.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

using namespace dotweave;

TEST(LinePlot, ScalesGoInStepsOfOneTwoOrFive)
{
    EXPECT_DOUBLE_EQ(Scale_Step(100, 10), 10);
    EXPECT_DOUBLE_EQ(Scale_Step(101, 10), 20);
    EXPECT_DOUBLE_EQ(Scale_Step(2.1, 5), 0.5);
    EXPECT_DOUBLE_EQ(Scale_Step(0.06, 10), 0.01);
    EXPECT_DOUBLE_EQ(Scale_Step(60, 10), 10);
}

TEST(LinePlot, PutsPointsWhereTheScaleHasThem)
{
    // x from 0 to 8 over 640 units from 56 on; y from 0 to 6 over 240 units up from 250.
    const std::string svg = LinePlot_Svg({"a < b", "x", "y", {{"one", {0, 4, 8}, {0, 3, 6}}}, 0, 0});
    EXPECT_NE(svg.find("class='curve curve-0' d='M56.0 250.0L376.0 130.0L696.0 10.0'"), std::string::npos);
    EXPECT_NE(svg.find("<title>a &lt; b</title>"), std::string::npos);
}

TEST(LinePlot, AnEvenLineStillHasAScale)
{
    const std::string svg = LinePlot_Svg({"even", "x", "y", {{"one", {0, 1}, {16, 16}}}, 0, 0});
    EXPECT_EQ(svg.find("nan"), std::string::npos);
    EXPECT_EQ(svg.find("inf"), std::string::npos);
}

TEST(LinePlot, RefusesLinesWithoutPoints)
{
    EXPECT_THROW(LinePlot_Svg({"none", "x", "y", {}, 0, 0}), std::invalid_argument);
    EXPECT_THROW(LinePlot_Svg({"odd", "x", "y", {{"one", {0, 1}, {1}}}, 0, 0}), std::invalid_argument);
}
