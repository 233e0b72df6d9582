#pragma once

#include "sheet/sheeterrors.h"

#include <dotweave/maskdata_base.h>

#include <string>
#include <vector>

namespace dotweave {

/// The largest errors that the sliders of the sketch reach, in nozzle row pitches.
inline constexpr double SKETCH_ADVANCE_MOST = 1, SKETCH_TILT_MOST = 0.005, SKETCH_BIDIRECTIONAL_MOST = 2;

/// A slider of the sketch: one error, and values of it that C++ prints too.
struct SSketchSlider {
    const char* id; ///< in the page, after "sketch-"
    const char* name;
    const char* unit;
    double least;
    double most;
    double step;
    std::vector<double> marks;
    double SSheetErrors::*member; ///< null for the dead row
};

/// The sliders of a mode, in the order of the page.
std::vector<SSketchSlider> SketchSliders_Get(const CMaskData_Base& mask);

/// A slider, and buttons below it at the values that C++ has printed.
std::string SketchSlider_Html(const SSketchSlider& slider);

} // namespace dotweave
