#pragma once

#include "maskgeometry.h"

#include <string>
#include <vector>

namespace dotweave {

/// What a mode that can be built does that its author may not expect: one line each, from the same numbers
/// that its mask is built from.
std::vector<std::string> Mode_Warnings(const SMaskGeometry& geometry);

} // namespace dotweave
