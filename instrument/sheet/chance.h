#pragma once

#include <cstdint>
#include <initializer_list>

/// @file
/// Random numbers as pure functions: of a seed, of what they are drawn for, and of which one it is. They depend
/// on no order and on no thread, and every compiler gives the same ones.

namespace dotweave {

/// What a random number is drawn for. The values are part of every seeded result: never renumber them.
enum class EChance : std::uint64_t {
    Move = 1,   ///< the paper's move to a pass
    RowX = 2,   ///< a nozzle row's place along the row
    RowY = 3,   ///< a nozzle row's place along the paper
    Volume = 4, ///< a dot's volume
};

/// 64 random bits: SplitMix64's output function (Steele, Lea, Flood, "Fast splittable pseudorandom number
/// generators", OOPSLA 2014), applied to one input after the other.
inline std::uint64_t Chance_Bits(std::uint64_t seed, EChance what, std::uint64_t which,
                                 std::uint64_t part = 0)
{
    std::uint64_t bits = seed;
    for (const std::uint64_t input : {static_cast<std::uint64_t>(what), which, part}) {
        bits += input + 0x9E3779B97F4A7C15U;
        bits = (bits ^ bits >> 30U) * 0xBF58476D1CE4E5B9U;
        bits = (bits ^ bits >> 27U) * 0x94D049BB133111EBU;
        bits ^= bits >> 31U;
    }
    return bits;
}

/// The standard normal number that a share of all such numbers is below.
/// @param share  above 0 and below 1
double Normal_Quantile(double share);

/// A standard normal number.
double Chance_Normal(std::uint64_t seed, EChance what, std::uint64_t which);

} // namespace dotweave
