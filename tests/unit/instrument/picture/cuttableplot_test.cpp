#include "picture/cuttableplot.h"

#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

using namespace dotweave;

namespace {

using CTree = boost::property_tree::ptree;

/// The plot, parsed; parsing throws for a text that is not XML.
CTree Parse(const std::vector<SCutTable>& table, int stepRows)
{
    std::istringstream stream(CutTablePlot_Svg({table, stepRows}));
    CTree tree;
    boost::property_tree::read_xml(stream, tree);
    return tree.get_child("svg");
}

std::vector<CTree> Elements(const CTree& svg, const std::string& tag, const std::string& style)
{
    std::vector<CTree> elements;
    for (const auto& [name, element] : svg)
        if (name == tag && element.get<std::string>("<xmlattr>.class", "") == style)
            elements.push_back(element.get_child("<xmlattr>"));
    return elements;
}

std::vector<std::string> Texts(const CTree& svg)
{
    std::vector<std::string> texts;
    for (const auto& [name, element] : svg)
        if (name == "text")
            texts.push_back(element.data());
    return texts;
}

bool Has(const std::vector<std::string>& texts, const std::string& text)
{
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

double Number(const CTree& attributes, const char* name)
{
    return std::stod(attributes.get<std::string>(name));
}

/// The frame is the threshold scale across and all rows down; everything is measured against it.
struct SFrame {
    explicit SFrame(const CTree& svg)
    {
        const std::vector<CTree> frames = Elements(svg, "rect", "frame");
        EXPECT_EQ(frames.size(), 1U);
        x = Number(frames.at(0), "x");
        y = Number(frames.at(0), "y");
        width = Number(frames.at(0), "width");
        height = Number(frames.at(0), "height");
    }
    double Threshold(double across) const { return (across - x) / width * 65535.0; }
    double Row(double down, std::size_t rowCount) const
    {
        return (down - y) / height * static_cast<double>(rowCount);
    }

    double x = 0, y = 0, width = 0, height = 0;
};

constexpr double THRESHOLD_ERROR = 0.2; // coordinates carry six digits
constexpr double ROW_ERROR = 0.01;

} // namespace

TEST(CutTablePlot, DrawsABarPerRowFromLowerToUpper)
{
    const std::vector<SCutTable> table = {{65535, 52428}, {39321, 13107}, {7, 7}, {65535, 0}, {100, 200}};
    const CTree svg = Parse(table, 2);
    const SFrame frame(svg);
    const std::vector<CTree> bars = Elements(svg, "rect", "bar");
    const std::vector<std::size_t> printingRows = {0, 1, 3}; // the others print nothing
    ASSERT_EQ(bars.size(), printingRows.size());
    for (std::size_t i = 0; i < bars.size(); ++i) {
        const std::size_t row = printingRows[i];
        SCOPED_TRACE(row);
        const double x = Number(bars[i], "x");
        const double y = Number(bars[i], "y");
        EXPECT_NEAR(frame.Threshold(x), table[row].lowerLimit, THRESHOLD_ERROR);
        EXPECT_NEAR(frame.Threshold(x + Number(bars[i], "width")), table[row].upperLimit, THRESHOLD_ERROR);
        EXPECT_NEAR(frame.Row(y, table.size()), static_cast<double>(row), ROW_ERROR);
        EXPECT_NEAR(frame.Row(y + Number(bars[i], "height"), table.size()), static_cast<double>(row + 1),
                    ROW_ERROR);
    }
}

TEST(CutTablePlot, MarksEveryStep)
{
    const std::vector<SCutTable> table(100, SCutTable{65535, 0});
    const CTree svg = Parse(table, 30);
    const SFrame frame(svg);
    const std::vector<CTree> steps = Elements(svg, "line", "step");
    ASSERT_EQ(steps.size(), 3U);
    for (std::size_t i = 0; i < steps.size(); ++i) {
        EXPECT_NEAR(frame.Row(Number(steps[i], "y1"), table.size()), static_cast<double>(30 * (i + 1)),
                    ROW_ERROR);
        EXPECT_EQ(Number(steps[i], "y1"), Number(steps[i], "y2"));
    }
    EXPECT_TRUE(Has(Texts(svg), "step 2: 60"));
}

TEST(CutTablePlot, NamesItsAxesAndTheEndsOfTheScale)
{
    const std::vector<std::string> texts = Texts(Parse(std::vector<SCutTable>(544, SCutTable{1, 0}), 136));
    for (const char* text :
         {"nozzle row", "threshold; a bar covers lower < threshold <= upper", "0", "65535", "50", "500"})
        EXPECT_TRUE(Has(texts, text)) << text;
}

TEST(CutTablePlot, TallAndTinyTablesAreDrawnToo)
{
    for (const std::size_t rowCount : {1U, 2U, 13U, 20000U}) {
        SCOPED_TRACE(rowCount);
        const CTree svg = Parse(std::vector<SCutTable>(rowCount, SCutTable{65535, 0}), 1);
        EXPECT_EQ(Elements(svg, "rect", "bar").size(), rowCount);
        EXPECT_LT(Texts(svg).size(), 80U); // labels never crowd
        EXPECT_GE(Elements(svg, "line", "grid").size(), 6U);
    }
}
