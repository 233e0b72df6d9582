#pragma once

#include "dotweave/maskdata_base.h"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <vector>

/// Band positions after which the masks of a created object repeat.
int Mask_PositionCount(const CMaskData_Base& mask);

/// What a created object says about itself: both records, every value of the geometry under the name of its
/// accessor, and the layout of the mask bytes in words.
/// @param pictures  file names of the pictures beside it
nlohmann::ordered_json Mask_Json(const CMaskData_Base& mask, const std::vector<std::string>& pictures);
