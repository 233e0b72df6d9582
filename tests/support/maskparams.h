#pragma once

#include "dotweave/maskparam.h"

#include <array>
#include <bit>
#include <iosfwd>

/// The mode that most tests start from: 544 nozzle rows, 1 pass, no resolution passes, 1 colour, 1 bit, hard
/// edges, printed once. Every other field is zero but featherPercent 50 and featherLevelPercent 100.
SMaskParam MaskParam_Plain();

/// Small modes of one step height: 8 nozzle rows, and a number in a field that hard edges never read, so that
/// each is another record.
SMaskParam MaskParam_Small(int number);

/// A mode with feathered edges.
/// @param featherNozzleType  EFeatherNozzleType
SMaskParam MaskParam_Feathered(int featherNozzleType, int nozzleCount, int basePass, float featherPercent);

/// The record as the cache compares it.
inline std::array<unsigned char, 48> MaskParam_Bytes(const SMaskParam& param)
{
    return std::bit_cast<std::array<unsigned char, 48>>(param);
}

/// All fields by name, for SCOPED_TRACE and failed expectations.
std::ostream& operator<<(std::ostream& stream, const SMaskParam& param);
