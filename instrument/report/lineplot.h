#pragma once

#include <string>
#include <vector>

namespace dotweave {

/// One curve of a plot.
struct SPlotLine {
    std::string name;
    std::vector<double> x;
    std::vector<double> y; ///< as many as x
};

/// Curves over a common axis. The plot takes its colours from the page that it is in: class names "plot",
/// "grid", "frame" and "curve-0", "curve-1" and so on.
struct SLinePlot {
    std::string title; ///< also the text alternative
    std::string xTitle, yTitle;
    std::vector<SPlotLine> lines; ///< at most six differ in colour
    double yLeast = 0;            ///< the scale reaches at least from here
    double yMost = 0;             ///< to here
};

/// Draws a plot as an SVG element for a page.
/// @throws std::invalid_argument for lines whose x and y differ in number, and for no point at all
std::string LinePlot_Svg(const SLinePlot& plot);

/// Distance between two labels of a scale: the smallest of 1, 2 or 5 times a power of ten, also below 1, that
/// cuts a length into at most so many parts.
double Scale_Step(double length, int parts);

} // namespace dotweave
