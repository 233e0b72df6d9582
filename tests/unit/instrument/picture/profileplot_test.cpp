#include "picture/profileplot.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

using namespace dotweave;

namespace {

/// The points of the profile.
std::vector<std::pair<double, double>> Points(const std::string& svg)
{
    const std::string start = "class='profile' points='";
    const std::size_t at = svg.find(start) + start.size();
    std::istringstream text(svg.substr(at, svg.find('\'', at) - at));
    std::vector<std::pair<double, double>> points;
    char comma = 0;
    for (double x = 0, y = 0; text >> x >> comma >> y;)
        points.emplace_back(x, y);
    return points;
}

int Count(const std::string& text, const std::string& part)
{
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

} // namespace

TEST(ProfilePlot, PutsLinesAtTheirPlaces)
{
    // Four lines of 0.5 mm: 2 mm take 720 units from 64 on. L* 50 to 60 and a twentieth of that beside it take
    // 300 units from 34 on: 60.5 is at the top, 49.5 at the bottom.
    const std::vector<double> lightness = {50, 60, 50, 60};
    const auto points = Points(ProfilePlot_Svg(lightness, 0.5, 1));
    ASSERT_EQ(points.size(), 4U);
    EXPECT_NEAR(points[0].first, 64 + 90, 0.01);
    EXPECT_NEAR(points[3].first, 64 + 7 * 90, 0.01);
    EXPECT_NEAR(points[1].second, 34 + 300 * 0.5 / 11, 0.01);
    EXPECT_NEAR(points[0].second, 34 + 300 * 10.5 / 11, 0.01);
}

TEST(ProfilePlot, MarksStepsAndNamesUnits)
{
    const std::string svg = ProfilePlot_Svg(std::vector<double>(80, 40.0), 0.1, 2);
    EXPECT_EQ(Count(svg, "class='step'"), 3); // at 2, 4 and 6 of 8 mm
    EXPECT_EQ(Count(svg, "class='mean'"), 1);
    EXPECT_NE(svg.find("place along the paper, mm"), std::string::npos);
    EXPECT_NE(svg.find("lightness L* of a line"), std::string::npos);
}
