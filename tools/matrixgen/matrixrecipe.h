#pragma once

namespace matrixgen {

/// A window of recently ranked cells whose dots are kept apart from the next ones: what one pass prints.
struct SSlabMemory {
    int windowDivisor; ///< the window is the last N / windowDivisor ranks
    double gain;       ///< weight against the main energy, once faded in
    double sigma;      ///< deviation of its kernel, cells
};

/// Every figure that shapes a matrix. The defaults made the matrices in data/; docs/threshold-matrices.md
/// says why each is as it is.
struct SMatrixRecipe {
    // half pattern: the cells printed at 50 %
    double relaxSigma = 1.06; ///< cells, while tight clusters move to large voids
    double annealSigma = 1.4; ///< cells
    double halfWideGain = 2.0 / 9.0;
    int annealSweeps = 40;
    int annealTriesPerCell = 10;   ///< in each sweep
    double annealHottest = 0.037;  ///< temperature of the first sweep, in the kernel's peak
    double annealCoolest = 0.0014; ///< of the last sweep but one; the last one accepts no rise
    // ranking: sigma = c / sqrt(share of the minority)
    double lowSigmaSparse = 0.58;  ///< c up to SPARSE share
    double lowSigmaDense = 0.48;   ///< c from DENSE share on; between them by the logarithm of the share
    double highSigmaSparse = 0.58; ///< the same above 50 %, by the share of the cells not yet ranked
    double highSigmaDense = 0.48;
    double sigmaMin = 1.3;  ///< cells
    double sigmaMax = 60.0; ///< cells
    double fillWideGain = 1.0 / 9.0;
    double core = 0.42; ///< hard core of the first dots, in the spacing of a hexagonal grid
    SSlabMemory slab = {8, 0.6, 1.70};
};

} // namespace matrixgen
