#include "thresholdmatrix.h"

#include "halfpattern.h"
#include "quantise.h"
#include "rankfill.h"
#include "splitmix64.h"

#include <utility>

namespace matrixgen {

std::vector<std::uint16_t> ThresholdMatrix_Make(int side, std::uint64_t seed, const SMatrixRecipe& recipe)
{
    CSplitMix64 random(seed);
    std::vector<std::uint8_t> half = HalfPattern_Make(side, recipe, random);
    CRankFill fill(side, recipe, std::move(half), random);
    return Ranking_Quantise(fill.Run());
}

} // namespace matrixgen
