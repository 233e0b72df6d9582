#include "sheet/chance.h"

#include <boost/math/special_functions/erf.hpp>

#include <numbers>

namespace dotweave {

/// Stays in double: long double differs between platforms.
using CPolicy = boost::math::policies::policy<boost::math::policies::promote_double<false>>;

double Normal_Quantile(double share)
{
    return -std::numbers::sqrt2 * boost::math::erfc_inv(2 * share, CPolicy());
}

double Chance_Normal(std::uint64_t seed, EChance what, std::uint64_t which)
{
    const auto bits = static_cast<double>(Chance_Bits(seed, what, which) >> 11U); // as many as a double holds
    return Normal_Quantile((bits + 0.5) / 9007199254740992.0);
}

} // namespace dotweave
