#pragma once

#include "kernel.h"

namespace matrixgen {

/// How broad the kernel is at a share d of the minority: sigma = c / sqrt(d), like the spacing of the dots.
struct SSigmaRule {
    double sparse; ///< c up to 1 % of the cells
    double dense;  ///< c from 10 % on; in between it follows the logarithm of the share
};

/// A window of recently ranked cells, which one pass prints together. New cells keep away from them.
struct SSlabMemory {
    int windowDivisor; ///< the window is the last N / windowDivisor ranks
    SKernelShape shape;
    double lowFadeFrom, lowFadeTo;   ///< share at which the memory starts and is full, 0 to 0.5
    double highFadeFrom, highFadeTo; ///< share not yet ranked at which it is gone and is still full
};

/// Every figure that shapes a matrix. The matrices in data/ were made with the defaults.
/// docs/threshold-matrices.md gives the reason for each.
struct SMatrixRecipe {
    // the half pattern: cells printed at 50 %
    SKernelShape relaxShape = {.sigma = 1.06, .wideGain = 2.0 / 9.0};
    SKernelShape annealShape = {.sigma = 1.40, .wideGain = 2.0 / 9.0};
    int annealSweeps = 40;
    int annealTriesPerCell = 10;   ///< in each sweep, for each set cell
    double annealHottest = 0.037;  ///< temperature of the first sweep, in the kernel's peak
    double annealCoolest = 0.0014; ///< of the last sweep but one; the last one accepts no rise

    // the ranking around it
    SKernelShape fillShape = {
        .sigma = 1.0, .flatness = 2, .wideGain = 0.18, .wideRatio = 2.8}; ///< sigma by rule
    SSigmaRule lowSigma = {.sparse = 0.77, .dense = 0.82};                ///< up to 50 %
    SSigmaRule highSigma = {.sparse = 0.90, .dense = 0.90}; ///< above, by the share not yet ranked
    double sigmaMin = 1.8;                                  ///< cells
    double sigmaMax = 60.0; ///< cells; the kernel of the first dots must not become flat
    double core = 0.467;    ///< hard core of the first dots, in the spacing of a hexagonal grid
    SSlabMemory slab = {.windowDivisor = 8,
                        .shape = {.sigma = 2.5, .flatness = 2, .wideGain = 0.14, .gain = 0.48},
                        .lowFadeFrom = 0.075,
                        .lowFadeTo = 0.15,
                        .highFadeFrom = 0.08,
                        .highFadeTo = 0.16};
};

} // namespace matrixgen
