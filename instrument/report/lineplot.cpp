#include "report/lineplot.h"

#include "report/htmltext.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <stdexcept>

namespace dotweave {

namespace {

constexpr int LEFT = 56, TOP = 10, RIGHT = 12, BOTTOM = 62; // margins
constexpr int WIDTH = 640, HEIGHT = 240;                    // of the plot itself
constexpr int PARTS_X = 8, PARTS_Y = 6;

/// Values from one label of a scale to another, and where they are.
struct SScale {
    double least = std::numeric_limits<double>::max();
    double most = std::numeric_limits<double>::lowest();
    double step = 1;
    int decimals = 0;

    void Take(double value)
    {
        least = std::min(least, value);
        most = std::max(most, value);
    }
    void Step_Set(int parts)
    {
        step = Scale_Step(std::max(most - least, 1e-6), parts);
        decimals = std::max(0, static_cast<int>(std::ceil(-std::log10(step) - 1e-9)));
    }
    double Share(double value) const { return (value - least) / (most - least); }
};

std::string Pair(double x, double y)
{
    return Number_Text(x, 1) + ' ' + Number_Text(y, 1);
}

std::string Label(const char* anchor, double x, double y, const std::string& text)
{
    return "<text text-anchor='" + std::string(anchor) + "' x='" + Number_Text(x, 1) + "' y='" +
           Number_Text(y, 1) + "'>" + Html_Escape(text) + "</text>\n";
}

std::string Path(const std::string& style, const std::string& places)
{
    return "<path class='" + style + "' d='" + places + "'/>\n";
}

struct SFrame {
    SScale x, y;
    double Place_X(double value) const { return LEFT + x.Share(value) * WIDTH; }
    double Place_Y(double value) const { return TOP + (1 - y.Share(value)) * HEIGHT; }
};

SFrame Frame(const SLinePlot& plot)
{
    SFrame frame;
    for (const SPlotLine& line : plot.lines) {
        if (line.x.size() != line.y.size())
            throw std::invalid_argument("a line of a plot has as many x as y");
        for (const double value : line.x)
            frame.x.Take(value);
        for (const double value : line.y)
            frame.y.Take(value);
    }
    if (frame.x.least > frame.x.most)
        throw std::invalid_argument("a plot has at least one point");
    if (plot.yLeast < plot.yMost) {
        frame.y.Take(plot.yLeast);
        frame.y.Take(plot.yMost);
    }
    frame.x.Step_Set(PARTS_X);
    frame.y.Step_Set(PARTS_Y);
    frame.x.most = std::max(frame.x.most, frame.x.least + frame.x.step);
    frame.y.least = std::floor(frame.y.least / frame.y.step + 1e-9) * frame.y.step;
    frame.y.most =
        std::max(std::ceil(frame.y.most / frame.y.step - 1e-9) * frame.y.step, frame.y.least + frame.y.step);
    return frame;
}

/// The values that a scale labels.
std::vector<double> Scale_Labels(const SScale& scale)
{
    std::vector<double> labels;
    const double first = std::ceil(scale.least / scale.step - 1e-9);
    const auto count = static_cast<int>(std::floor(scale.most / scale.step + 1e-6) - first) + 1;
    labels.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        labels.push_back((first + i) * scale.step);
    return labels;
}

std::string Grid(const SFrame& frame)
{
    std::string places, labels;
    for (const double x : Scale_Labels(frame.x)) {
        places += 'M' + Pair(frame.Place_X(x), TOP) + 'V' + Number_Text(TOP + HEIGHT, 1);
        labels += Label("middle", frame.Place_X(x), TOP + HEIGHT + 16, Number_Text(x, frame.x.decimals));
    }
    for (const double y : Scale_Labels(frame.y)) {
        places += 'M' + Pair(LEFT, frame.Place_Y(y)) + 'H' + Number_Text(LEFT + WIDTH, 1);
        labels += Label("end", LEFT - 6, frame.Place_Y(y) + 4, Number_Text(y, frame.y.decimals));
    }
    return Path("grid", places) + labels;
}

} // namespace

double Scale_Step(double length, int parts)
{
    const double least = length / parts;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= least * (1 - 1e-9))
            return factor * power;
    }
    return 10 * power;
}

std::string LinePlot_Svg(const SLinePlot& plot)
{
    const SFrame frame = Frame(plot);
    std::string svg = "<svg class='plot' role='img' viewBox='0 0 " + std::to_string(LEFT + WIDTH + RIGHT) +
                      ' ' + std::to_string(TOP + HEIGHT + BOTTOM) + "'>\n<title>" + Html_Escape(plot.title) +
                      "</title>\n" + Grid(frame);
    for (std::size_t i = 0; i < plot.lines.size(); ++i) {
        const SPlotLine& line = plot.lines[i];
        std::string places;
        for (std::size_t j = 0; j < line.x.size(); ++j)
            places += (j == 0 ? 'M' : 'L') + Pair(frame.Place_X(line.x[j]), frame.Place_Y(line.y[j]));
        const std::string style = "curve curve-" + std::to_string(i);
        svg += Path(style, places);
        const double left = LEFT + static_cast<double>(i) * WIDTH / static_cast<double>(plot.lines.size());
        svg += Path(style, 'M' + Pair(left, TOP + HEIGHT + 50) + "h22");
        svg += Label("start", left + 27, TOP + HEIGHT + 54, line.name);
    }
    svg += "<rect class='frame' x='" + std::to_string(LEFT) + "' y='" + std::to_string(TOP) + "' width='" +
           std::to_string(WIDTH) + "' height='" + std::to_string(HEIGHT) + "'/>\n";
    svg += Label("middle", LEFT + WIDTH / 2.0, TOP + HEIGHT + 34, plot.xTitle);
    svg += "<text text-anchor='middle' transform='translate(13 " + std::to_string(TOP + HEIGHT / 2) +
           ") rotate(-90)'>" + Html_Escape(plot.yTitle) + "</text>\n";
    return svg + "</svg>\n";
}

} // namespace dotweave
