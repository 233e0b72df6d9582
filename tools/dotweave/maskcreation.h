#pragma once

#include "dotweave/maskdata_base.h"

#include <iosfwd>
#include <memory>

/// Builds the mask object of a mode, with the library's log on a stream.
/// @param errors  takes the log records and, at last, a line that says that it was the library that refused
/// @return null for a mode that the library rejects
std::unique_ptr<CMaskData_Base> Mask_Create(const SMaskParam& param, std::ostream& errors);
