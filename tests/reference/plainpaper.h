#pragma once

#include "dotweave/maskdata_base.h"
#include "plainmask.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

/// @file
/// A second way from masks to ink on paper, for tests alone: every dot is a circle with a centre of real numbers,
/// and every point of the paper asks every dot whether it covers it. Slow and obvious.

/// What is wrong with a press. Everything is in nozzle row pitches; x is along the row, y along the paper.
struct SPlainPress {
    /// How far the paper has gone too far when a pass is printed.
    std::function<double(std::int64_t pass)> passShift = [](std::int64_t /*pass*/) { return 0.0; };
    std::function<double(int row)> rowX = [](int /*row*/) { return 0.0; };
    std::function<double(int row)> rowY = [](int /*row*/) { return 0.0; };
    /// Ink of one dot, 1 being the wanted volume.
    std::function<double(std::int64_t pass, int row, int column)> volume =
        [](std::int64_t /*pass*/, int /*row*/, int /*column*/) { return 1.0; };
    double bidirectional = 0; ///< x shift of passes with odd numbers
};

/// One dot, in pixels of the patch.
struct SPlainDot {
    double x, y;
    double radiusX, radiusY;
};

/// All dots within some pixels of a patch of the sheet.
/// @param firstLine  sheet line of the patch's line 0
/// @param diameter   of a dot of the wanted volume, in row pitches
inline std::vector<SPlainDot> Plain_Dots(const CMaskData_Base& mask, int color, const SPlainPress& press,
                                         int firstLine, int lineCount, int columnCount, double diameter)
{
    constexpr int BESIDE = 12; // pixels around the patch
    const int passes = mask.XResPass() * mask.YResPass();
    const int rows = mask.MaskHeight_IncludeRes() / mask.YResPass();
    std::vector<SPlainDot> dots;
    int position = -1;
    for (int band = 0; band * mask.StepHeight_IncludeRes() < firstLine + lineCount + BESIDE; ++band) {
        const std::uint8_t* bytes = mask.MaskData_Get(color, position);
        for (int r = 0; r < mask.YResPass(); ++r) {
            for (int k = 0; k < mask.XResPass(); ++k) {
                const std::int64_t pass = std::int64_t{band} * passes + r * mask.XResPass() + k;
                for (int y = 0; y < rows; ++y) {
                    const int line = band * mask.StepHeight_IncludeRes() + mask.YResStep()[r] +
                                     mask.XResStep()[k] + y * mask.YResPass() + r - firstLine;
                    if (line < -BESIDE || line >= lineCount + BESIDE)
                        continue;
                    const std::uint8_t* maskLine =
                        bytes +
                        static_cast<std::ptrdiff_t>(y * mask.YResPass() + r) * mask.MaskLineBytes_OneColor();
                    for (int x = -BESIDE; x * mask.XResPass() + k < columnCount + BESIDE; ++x) {
                        const int column = x * mask.XResPass() + k;
                        const int width = mask.MaskWidth();
                        if (Plain_Pixel(maskLine, mask.BitsPerPixel(), (column % width + width) % width) == 0)
                            continue;
                        const double shiftX = press.rowX(y) + (pass % 2 == 1 ? press.bidirectional : 0);
                        const double shiftY = press.rowY(y) + press.passShift(pass);
                        const double radius = diameter / 2 * std::sqrt(press.volume(pass, y, column));
                        dots.push_back({column + 0.5 + shiftX * mask.XResPass(),
                                        line + 0.5 + shiftY * mask.YResPass(), radius * mask.XResPass(),
                                        radius * mask.YResPass()});
                    }
                }
            }
        }
    }
    return dots;
}

/// Layers of ink on a point of the patch.
inline int Plain_Layers(const std::vector<SPlainDot>& dots, double x, double y)
{
    int layers = 0;
    for (const SPlainDot& dot : dots)
        layers += std::hypot((x - dot.x) / dot.radiusX, (y - dot.y) / dot.radiusY) <= 1 ? 1 : 0;
    return layers;
}

/// The mean over a pixel of what its points reflect.
/// @param points     of a pixel, in either direction
/// @param reflected  by a point with so many layers of ink
inline double Plain_Reflectance(const std::vector<SPlainDot>& dots, int column, int line, int points,
                                const std::function<double(int layers)>& reflected)
{
    std::vector<SPlainDot> near;
    for (const SPlainDot& dot : dots) {
        if (std::abs(dot.x - column - 0.5) < dot.radiusX + 1 &&
            std::abs(dot.y - line - 0.5) < dot.radiusY + 1)
            near.push_back(dot);
    }
    double sum = 0;
    for (int y = 0; y < points; ++y) {
        for (int x = 0; x < points; ++x)
            sum += reflected(Plain_Layers(near, column + (x + 0.5) / points, line + (y + 0.5) / points));
    }
    return sum / (points * points);
}
