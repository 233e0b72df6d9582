#include "picture/svgparts.h"

#include "picture/pixelpaint.h"

#include <ostream>

namespace dotweave {

void Svg_Begin(std::ostream& svg, int width, int height, const std::string& title, const std::string& styles)
{
    svg << "<?xml version='1.0' encoding='UTF-8'?>\n"
        << "<svg xmlns='http://www.w3.org/2000/svg' width='" << width << "' height='" << height
        << "' viewBox='0 0 " << width << ' ' << height << "'>\n"
        << "<title>" << title << "</title>\n"
        << "<style>\ntext {font: 12px sans-serif; fill: #333}\n.paper {fill: #fff}\n"
        << styles << "</style>\n";
}

void Line_Add(std::ostream& svg, const char* style, double x1, double y1, double x2, double y2)
{
    svg << "<line class='" << style << "' x1='" << x1 << "' y1='" << y1 << "' x2='" << x2 << "' y2='" << y2
        << "'/>\n";
}

void Text_Add(std::ostream& svg, const char* anchor, double x, double y, const std::string& text)
{
    svg << "<text text-anchor='" << anchor << "' x='" << x << "' y='" << y << "'>" << text << "</text>\n";
}

void Rect_Add(std::ostream& svg, const char* style, double x, double y, double width, double height)
{
    svg << "<rect class='" << style << "' x='" << x << "' y='" << y << "' width='" << width << "' height='"
        << height << "'/>\n";
}

std::size_t Ruler_Rows(std::size_t rowCount)
{
    constexpr std::size_t LABELS_MAX = 12;
    return static_cast<std::size_t>(Ruler_Step(static_cast<int>((rowCount + LABELS_MAX - 1) / LABELS_MAX)));
}

} // namespace dotweave
