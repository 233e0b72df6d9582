#pragma once

#include <cstdint>

namespace matrixgen {

/// SplitMix64, the only source of chance in the generator. A seed gives the same matrix on every platform.
/// Not thread-safe; one object per run.
/// Source: Steele, Lea, Flood, "Fast splittable pseudorandom number generators", OOPSLA 2014.
class CSplitMix64 {
public:
    explicit CSplitMix64(std::uint64_t seed) : m_state(seed) {}

    /// The next 64 bits of the sequence.
    std::uint64_t Next()
    {
        m_state += 0x9E3779B97F4A7C15U;
        std::uint64_t z = m_state;
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31U);
    }

    /// A number from 0 to count - 1, from the upper 32 bits; count is 1 to 2^31 - 1.
    int Below(int count)
    {
        const std::uint64_t upper = Next() >> 32U;
        return static_cast<int>((upper * static_cast<std::uint64_t>(count)) >> 32U);
    }

private:
    std::uint64_t m_state;
};

} // namespace matrixgen
