#pragma once

#include "dotweave/maskdata_base.h"
#include "nozzlelayout.h"

#include <optional>
#include <random>

/// @file
/// What must hold for every mask object that could be created, whatever its record. Broken laws are failed
/// expectations.

/// The layout in nozzle rows that a record asks for; none when its rows are too few for its passes.
/// @param param  a valid record after the split of its resolution passes
std::optional<SLayout> Layout_ByLaw(const SMaskParam& param);

/// The numbers of the object: record, layout, resolution, size and positions of the masks.
void ExpectGeometryLaws(CMaskData_Base& mask);

/// The bytes that the host gets: every colour and position in its place, nothing out of range.
void ExpectAccessLaws(CMaskData_Base& mask);

/// The dots: whole pixels only, and either the bytes that one thread makes, or the dots of the slow model and
/// every pixel printed as often as the mode promises. May replace the object's bytes; pointers to them end.
/// @param random  chooses which, and the part of the mask to check where all of it would take too long
void ExpectDotLaws(CMaskData_Base& mask, std::minstd_rand& random);
