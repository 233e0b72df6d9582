#pragma once

#include "sheet/bitimage.h"
#include "sheet/idealsheet.h"
#include "sheet/sheeterrors.h"

#include <dotweave/maskdata_base.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace dotweave {

/// What happens where dots overlap.
enum class EOverlap {
    Union,   ///< ink is there or not: the reflectance follows from the covered area (Murray-Davies)
    Density, ///< densities add: each further layer lets the same share of light through (Beer-Lambert)
};

/// Reflectance of unprinted paper: L* 95, as ISO 12647-2 wants it of a coated paper.
inline constexpr double PAPER_REFLECTANCE = 0.876;
/// Reflectance of one full layer of ink on this paper: L* 16, a black solid of ISO 12647-2.
inline constexpr double INK_REFLECTANCE = 0.021;

/// How dots become ink on paper.
struct SPatchOptions {
    SSheetWindow window;                         ///< which part of the sheet
    double dotDiameter = 1.5;                    ///< nozzle row pitches, 0.1 to 8
    int supersample = 4;                         ///< cells of a pixel, in either direction; 1 to 16
    EOverlap overlap = EOverlap::Union;          ///< what happens where dots overlap
    double paperReflectance = PAPER_REFLECTANCE; ///< 0.01 to 1
    double inkReflectance = INK_REFLECTANCE;     ///< 0.0001 to paperReflectance
    int threadCount = 0;                         ///< threads that print; 0 takes all cores
    bool wantsCells = false;                     ///< fill SPatchLines::cells
};

/// Why a patch cannot be printed.
/// @return one line that names the field, its value and the range; empty when the options are good
std::string PatchOptions_Refusal(const SPatchOptions& options);

/// Some finished lines of a patch. The arrays are valid during the call only.
struct SPatchLines {
    int firstLine; ///< line of the patch, from 0 on
    int lineCount;
    int width;                ///< columns of the patch
    int supersample;          ///< cells of a pixel, in either direction
    const float* reflectance; ///< of each pixel, the mean of its cells; lineCount rows of width
    const float* cells;       ///< of each cell; lineCount * supersample rows of width * supersample; null
                              ///< unless the options ask for them
};

/// Takes the lines of a patch, from the top down, one call at a time and on the calling thread.
using CPatchSink = std::function<void(const SPatchLines&)>;

/// Prints one colour on paper, with a press's errors.
///
/// Each dot is a disc about the place that its pass, its nozzle row, its column and the errors give it. The
/// film of ink has the same thickness everywhere, so a dot of half the volume covers half the area. A disc
/// is the set of the sample points that are nearest to its centre, 4 by 4 in a cell; their number depends on
/// the volume alone, so that moving a dot never changes how much ink it is. Centres are placed to an eighth
/// of a cell, volumes to 1/64 of the wanted one. With EOverlap::Density a point counts up to 15 layers.
///
/// The paper goes on beside the patch: dots outside reach into it. An image keeps its pixels under the
/// nozzles that should print them, whatever happens to the paper.
/// Memory: bands of lines; grows with the width of the patch and the number of threads, not with its height.
/// @param mask    a created object
/// @param color   0 to colorCount - 1
/// @param image   which pixels are wanted; its pixel (0, 0) is the window's. Null asks for all.
/// @param errors  as SheetErrors_Refusal accepts them @throws std::invalid_argument otherwise
/// @param options as PatchOptions_Refusal accepts them @throws std::invalid_argument otherwise
/// @param sink    its exceptions end the printing and are thrown on
void Patch_Print(const CMaskData_Base& mask, int color, const CBitImage* image, const SSheetErrors& errors,
                 const SPatchOptions& options, const CPatchSink& sink);

/// The same by the plainest loops that are right: one dot, one sample point at a time, one thread, memory for
/// every point of the patch. What Patch_Print is tested against.
void Patch_PrintPlain(const CMaskData_Base& mask, int color, const CBitImage* image,
                      const SSheetErrors& errors, const SPatchOptions& options, const CPatchSink& sink);

/// A patch that is kept whole.
struct SPatch {
    int width = 0;                  ///< columns
    int height = 0;                 ///< lines
    std::vector<float> reflectance; ///< of each pixel, row-major
};

/// Patch_Print into memory; 4 bytes a pixel.
SPatch Patch_Collect(const CMaskData_Base& mask, int color, const CBitImage* image,
                     const SSheetErrors& errors, const SPatchOptions& options);

} // namespace dotweave
