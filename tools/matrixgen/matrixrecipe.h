#pragma once

#include "kernel.h"

namespace matrixgen {

/// How broad the kernel is at a share d of the minority: sigma = c / sqrt(d), as the dots' spacing is.
struct SSigmaRule {
    double sparse; ///< c up to 1 % of the cells
    double dense;  ///< c from 10 % on; between them it follows the logarithm of the share
};

/// A window of recently ranked cells that the next ones keep away from: what one pass prints.
struct SSlabMemory {
    int windowDivisor; ///< the window is the last N / windowDivisor ranks
    SKernelShape shape;
    double lowFadeFrom, lowFadeTo;   ///< share at which the memory fades in, 0 to 0.5
    double highFadeFrom, highFadeTo; ///< share not yet ranked at which it has faded out, and begins to
};

/// Every figure that shapes a matrix. The defaults made the matrices in data/; docs/threshold-matrices.md
/// says why each is as it is.
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
    double sigmaMax = 60.0; ///< cells; the first dots' kernel must not go flat
    double core = 0.467;    ///< hard core of the first dots, in the spacing of a hexagonal grid
    SSlabMemory slab = {.windowDivisor = 8,
                        .shape = {.sigma = 2.5, .flatness = 2, .wideGain = 0.14, .gain = 0.48},
                        .lowFadeFrom = 0.075,
                        .lowFadeTo = 0.15,
                        .highFadeFrom = 0.08,
                        .highFadeTo = 0.16};
};

} // namespace matrixgen
