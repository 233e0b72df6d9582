#pragma once

/// @file
/// Shared by the files of the mask object: the source unit that all its log records carry.

namespace dotweave {

/// The class's unit, whichever file the member lives in.
inline constexpr char MASKDATA_BASE_UNIT[] = "maskdata_base";

} // namespace dotweave
