#pragma once

#include <dotweave/maskdata_base.h>

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace dotweave {

/// A file that belongs to a result.
struct SResultFile {
    std::string name;
    std::int64_t bytes;
    std::uint32_t checksum; ///< CRC-32
};

/// Every value of the geometry under the name of its accessor, and the number of colours and positions.
nlohmann::ordered_json Geometry_Json(const CMaskData_Base& mask);

/// What a created object says about itself: both records, the library's warnings about the mode, every value
/// of the geometry under the name of its accessor, and the layout of the mask bytes in words.
/// @param files  the other files of the result; listed with size and checksum
nlohmann::ordered_json Mask_Json(const CMaskData_Base& mask, const std::vector<SResultFile>& files);

} // namespace dotweave
