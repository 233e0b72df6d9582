#pragma once

#include "dotweave/maskparam.h"

#include <array>

/// @file
/// The print modes that are timed, and that long runs are made with.

/// A print mode and the name that its figures carry.
struct SPressMode {
    const char* name;
    SMaskParam param;
};

/// W0  one pass, one colour, hard edges: the smallest mask that a press asks for
/// W1  four passes, four colours, feathered: everyday work
/// W2  eight passes, eight colours, two bits, X and Y resolution passes, feathered: the largest of the set
/// W3  a head of 1088 rows, four passes, six colours, hard edges
std::array<SPressMode, 4> PressModes_Get();

/// W2 with dots of the edge rows moved along a sine curve.
SPressMode PressMode_W2Sine_Get();
