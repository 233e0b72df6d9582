#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

namespace dotweave {

/// @file
/// Parts of plots as SVG. Styles are class names; Svg_Begin has the style sheet. Texts are XML already.
/// The stream has the classic locale, so that numbers have points.

/// The head of a file, up to the style sheet. ".paper" and text have styles already.
void Svg_Begin(std::ostream& svg, int width, int height, const std::string& title, const std::string& styles);

void Line_Add(std::ostream& svg, const char* style, double x1, double y1, double x2, double y2);

/// @param anchor  "start", "middle" or "end"
void Text_Add(std::ostream& svg, const char* anchor, double x, double y, const std::string& text);

void Rect_Add(std::ostream& svg, const char* style, double x, double y, double width, double height);

/// Rows between two labels beside a plot of so many nozzle rows: 1, 2 or 5 times a power of ten, so that
/// there are at most a dozen.
std::size_t Ruler_Rows(std::size_t rowCount);

} // namespace dotweave
