#pragma once

#include "maskgeometry.h"

#include <cstdint>
#include <string>

/// @file
/// The reasons of the conditions in maskdata_base_refusal.cpp, one sentence each: the field or the
/// combination in the record's own words, the value and the limit, and the nearest value that builds where
/// one is found at once.

namespace dotweave {

// ---- sizes that conditions and reasons share

/// Bits of one mask line of a full threshold matrix.
std::int64_t Line_Bits(const SMaskGeometry& geometry);
/// Mask lines of one position.
std::int64_t Position_Lines(const SMaskGeometry& geometry);
/// Bytes of one position of one colour; lineBytes need not be known.
std::int64_t Position_Bytes(const SMaskGeometry& geometry);
/// Bytes of all positions of one colour.
std::int64_t OneColor_Bytes(const SMaskGeometry& geometry);

// ---- reasons, in the order of the conditions

std::string Reason_BasePass(const SMaskGeometry& geometry);
std::string Reason_ColorTimes_TooFew(const SMaskGeometry& geometry);
std::string Reason_ColorTimes_TooMany(const SMaskGeometry& geometry);
std::string Reason_XResPass(const SMaskGeometry& geometry);
std::string Reason_YResPass(const SMaskGeometry& geometry);
std::string Reason_ColorCount(const SMaskGeometry& geometry);
std::string Reason_BitsPerPixel(const SMaskGeometry& geometry);
std::string Reason_FeatherPercent(const SMaskGeometry& geometry);
std::string Reason_FeatherLevelPercent(const SMaskGeometry& geometry);
std::string Reason_LineBits(const SMaskGeometry& geometry);
std::string Reason_FeatherMode(const SMaskGeometry& geometry);
std::string Reason_FeatherNozzleType(const SMaskGeometry& geometry);
std::string Reason_NoStep(const SMaskGeometry& geometry);
std::string Reason_FeatherAboveStep(const SMaskGeometry& geometry);
/// A layout that only the set-up of a derived mask object comes to.
std::string Reason_Layout(const SMaskGeometry& geometry);
std::string Reason_Lines(const SMaskGeometry& geometry);
std::string Reason_Position(const SMaskGeometry& geometry);
std::string Reason_NoBand(const SMaskGeometry& geometry);
std::string Reason_NoRepeat(const SMaskGeometry& geometry);
/// Planes that only a derived mask object can ask for.
std::string Reason_Plane(const SMaskGeometry& geometry);
std::string Reason_OneColor(const SMaskGeometry& geometry);
std::string Reason_AllColors(const SMaskGeometry& geometry);

} // namespace dotweave
