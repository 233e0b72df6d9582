#pragma once

#include <cstddef>
#include <cstdint>

/// @file
/// The entry of a cut table.

/// The threshold values that one nozzle row of the band prints: lowerLimit < threshold <= upperLimit.
/// A cut table is a plain array with one entry per mask row before resolution; its owner is whoever
/// allocated it. An entry whose upper bound is not above its lower bound prints nothing; (0, 65535] prints
/// every threshold but 0, which no row ever prints.
struct SCutTable {
    std::uint16_t upperLimit; ///< highest threshold that the row prints (inclusive)
    std::uint16_t lowerLimit; ///< thresholds up to and including this one are not printed (exclusive)
};

static_assert(sizeof(SCutTable) == 4 && offsetof(SCutTable, lowerLimit) == 2,
              "the order of the bounds is agreed with the hosts");
