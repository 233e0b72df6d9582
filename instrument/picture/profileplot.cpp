#include "picture/profileplot.h"

#include "picture/svgparts.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <locale>
#include <numeric>
#include <sstream>

namespace dotweave {

namespace {

constexpr int LEFT = 64, TOP = 34, RIGHT = 20, BOTTOM = 50; // margins
constexpr int WIDTH = 720, HEIGHT = 300;
constexpr double SPAN_LEAST = 1; // of L*, so that an even print looks even
constexpr int STEP_MARKS_MAX = 200;

/// Distance between two labels: 1, 2 or 5 times a power of ten, at most `count` of them.
double Tick(double span, int count)
{
    const double least = span / count;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= least * (1 - 1e-9))
            return factor * power;
    return 10 * power;
}

/// The axes: mm to the right, L* upwards.
struct SScale {
    double lengthMm;
    double lowest, highest; // L*
    double X(double mm) const { return LEFT + mm / lengthMm * WIDTH; }
    double Y(double lightness) const { return TOP + (highest - lightness) / (highest - lowest) * HEIGHT; }
};

SScale Scale(std::span<const double> lightness, double lengthMm)
{
    const auto [least, most] = std::minmax_element(lightness.begin(), lightness.end());
    const double middle = (*least + *most) / 2;
    const double half = std::max(SPAN_LEAST, *most - *least) * 0.55;
    return {lengthMm, middle - half, middle + half};
}

std::string Number_Text(double number)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << number;
    return text.str();
}

void Axes_Add(std::ostream& svg, const SScale& scale)
{
    const double tickMm = Tick(scale.lengthMm, 8);
    for (int i = 0; i * tickMm <= scale.lengthMm * (1 + 1e-9); ++i) {
        Line_Add(svg, "grid", scale.X(i * tickMm), TOP, scale.X(i * tickMm), TOP + HEIGHT);
        Text_Add(svg, "middle", scale.X(i * tickMm), TOP + HEIGHT + 16, Number_Text(i * tickMm));
    }
    const double tick = Tick(scale.highest - scale.lowest, 6);
    const auto firstTick = std::lround(std::ceil(scale.lowest / tick));
    const auto lastTick = std::lround(std::floor(scale.highest / tick));
    for (auto i = firstTick; i <= lastTick; ++i) {
        const double value = static_cast<double>(i) * tick;
        Line_Add(svg, "grid", LEFT, scale.Y(value), LEFT + WIDTH, scale.Y(value));
        Text_Add(svg, "end", LEFT - 6, scale.Y(value) + 4, Number_Text(value));
    }
    Text_Add(svg, "middle", LEFT + WIDTH / 2.0, TOP + HEIGHT + 38, "place along the paper, mm");
    svg << "<text text-anchor='middle' transform='translate(16 " << TOP + HEIGHT / 2
        << ") rotate(-90)'>lightness L* of a line</text>\n";
}

} // namespace

std::string ProfilePlot_Svg(std::span<const double> lightness, double pitchMm, double stepMm)
{
    const SScale scale = Scale(lightness, static_cast<double>(lightness.size()) * pitchMm);
    std::ostringstream svg;
    svg.imbue(std::locale::classic());
    Svg_Begin(svg, LEFT + WIDTH + RIGHT, TOP + HEIGHT + BOTTOM, "Lightness of the lines of a print",
              ".grid {stroke: #ddd}\n.step {stroke: #c33; stroke-dasharray: 2 4}\n"
              ".mean {stroke: #333; stroke-dasharray: 6 4}\n.frame {fill: none; stroke: #333}\n"
              ".profile {fill: none; stroke: #3b6ea5}\n");
    Rect_Add(svg, "paper", 0, 0, LEFT + WIDTH + RIGHT, TOP + HEIGHT + BOTTOM);
    Axes_Add(svg, scale);
    if (scale.lengthMm / stepMm <= STEP_MARKS_MAX)
        for (int step = 1; step * stepMm < scale.lengthMm * (1 - 1e-9); ++step)
            Line_Add(svg, "step", scale.X(step * stepMm), TOP, scale.X(step * stepMm), TOP + HEIGHT);
    const double mean =
        std::accumulate(lightness.begin(), lightness.end(), 0.0) / static_cast<double>(lightness.size());
    Line_Add(svg, "mean", LEFT, scale.Y(mean), LEFT + WIDTH, scale.Y(mean));
    svg << "<polyline class='profile' points='";
    for (std::size_t line = 0; line < lightness.size(); ++line)
        svg << (line == 0 ? "" : " ") << scale.X((static_cast<double>(line) + 0.5) * pitchMm) << ','
            << scale.Y(lightness[line]);
    svg << "'/>\n";
    Rect_Add(svg, "frame", LEFT, TOP, WIDTH, HEIGHT);
    Text_Add(svg, "start", LEFT, TOP - 10, "dashed: mean; dotted: every step of the paper");
    svg << "</svg>\n";
    return svg.str();
}

} // namespace dotweave
