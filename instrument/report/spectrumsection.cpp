#include "figures/spectrum.h"
#include "report/htmltext.h"
#include "report/lineplot.h"
#include "report/reportsections.h"
#include "view/maskview.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace dotweave {

namespace {

constexpr int SIDE_MAX = 512;

/// The dots of the middle of a mask as 0 and 1.
std::vector<double> Pattern(const SMaskLines& lines, int width, int height)
{
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(lines.width));
    std::vector<double> pattern;
    const int top = (lines.height - height) / 2;
    for (int y = top; y < top + height; ++y) {
        lines.Line_Unpack(y, pixels.data());
        for (int x = 0; x < width; ++x)
            pattern.push_back(pixels[static_cast<std::size_t>(x)] != 0 ? 1 : 0);
    }
    return pattern;
}

/// Of white noise that has as many dots.
double NoisePower(const std::vector<double>& pattern)
{
    double sum = 0;
    for (const double value : pattern)
        sum += value;
    const double share = sum / static_cast<double>(pattern.size());
    return share * (1 - share);
}

} // namespace

std::string SpectrumSection_Html(const CMaskData_Base& mask)
{
    const SMaskLines lines = CMaskView(mask).Lines(REPORT_COLOR, 0);
    const int width = std::min(lines.width, SIDE_MAX);
    const int height = std::min(lines.height, SIDE_MAX);
    if (width < 2 || height < 2)
        return "<p>The mask is too small for a spectrum.</p>\n";
    const std::vector<double> pattern = Pattern(lines, width, height);
    const double noise = NoisePower(pattern);
    if (noise == 0)
        return "<p>The middle of the mask is even, so it has no spectrum.</p>\n";
    SPlotLine power = {"power of one pass", {}, {}};
    SPlotLine anisotropy = {"anisotropy", {}, {}};
    for (const SSpectrumRing& ring : Spectrum_Radial(pattern, width, height)) {
        power.x.push_back(ring.frequency);
        power.y.push_back(ring.power / noise);
        if (ring.sampleCount < 4 || ring.power <= 0)
            continue; // too few directions to compare
        anisotropy.x.push_back(ring.frequency);
        anisotropy.y.push_back(ring.anisotropyDb);
    }
    return "<p>How the dots of one pass are spread: colour 0, position 0, the middle " +
           std::to_string(height) + " lines and " + std::to_string(width) +
           " columns. Power is relative to white noise with as many dots. Blue noise has little power at low "
           "frequencies, where the eye is keen. Anisotropy says how much the power differs with direction: 0 "
           "dB "
           "is what white noise has.</p>\n" +
           LinePlot_Svg({"Radial power spectrum of one pass",
                         "cycles per pixel",
                         "power, white noise = 1",
                         {power},
                         0,
                         1}) +
           (anisotropy.x.empty() ? std::string()
                                 : LinePlot_Svg({"Anisotropy of one pass",
                                                 "cycles per pixel",
                                                 "anisotropy, dB",
                                                 {anisotropy},
                                                 -10,
                                                 10}));
}

} // namespace dotweave
