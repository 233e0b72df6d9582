#pragma once

#include "dotweave/maskparam.h"

#include "refusals.h"

#include <array>
#include <bit>
#include <cstdint>
#include <random>

/// @file
/// Random print modes: valid, damaged, and anything that 48 bytes can be.

using Random = std::mt19937;

inline int Pick(Random& random, int least, int most)
{
    return least + static_cast<int>(random() % static_cast<unsigned int>(most - least + 1));
}

/// A value that damaged job files carry: small, at an edge, or anything.
inline std::int32_t DamagedValue(Random& random)
{
    static constexpr std::array EDGES = {
        0,     1,     2,     3,     4,    5,        6,        -1,           -2,      99,
        100,   101,   255,   256,   543,  544,      545,      3947580,      3947581, 31580641,
        65535, 65536, 46340, 46341, MOST, MOST - 1, MOST / 2, MOST / 2 + 1, LEAST,   LEAST + 1};
    switch (random() % 3) {
    case 0:
        return Pick(random, -3, 130);
    case 1:
        return EDGES.at(random() % EDGES.size());
    default:
        return static_cast<std::int32_t>(random());
    }
}

/// A small mode, which most layouts can be built of.
inline SMaskParam ValidParam(Random& random)
{
    SMaskParam param = {};
    param.nozzleCount = Pick(random, 24, 120);
    param.basePass = Pick(random, 1, 4);
    param.xResPass = Pick(random, 1, 3);
    param.yResPass = Pick(random, 1, 2);
    param.colorCount = Pick(random, 1, 2);
    param.bitsPerPixel = Pick(random, 1, 2);
    param.featherMode = Pick(random, 0, 1);
    param.featherPercent = static_cast<float>(Pick(random, 0, 1000)) / 10.0F;
    param.featherNozzleType = Pick(random, 1, 3);
    param.colorTimes = Pick(random, 1, param.basePass);
    param.featherLevelPercent = Pick(random, 0, 100);
    return param;
}

using Words = std::array<std::int32_t, 12>;

/// The record with one to three fields damaged.
inline SMaskParam Damaged(const SMaskParam& param, Random& random)
{
    auto words = std::bit_cast<Words>(param);
    const int count = Pick(random, 1, 3);
    for (int i = 0; i < count; ++i) {
        std::int32_t& word = words.at(random() % words.size());
        if (random() % 4 == 0) // one flipped bit
            word = std::bit_cast<std::int32_t>(std::bit_cast<std::uint32_t>(word) ^ 1U << random() % 32U);
        else
            word = DamagedValue(random);
    }
    return std::bit_cast<SMaskParam>(words);
}
