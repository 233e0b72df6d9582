#pragma once

#include "record/maskjson.h"
#include "view/maskshape.h"

#include <dotweave/maskparam.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace dotweave {

/// What mask.json says about the result that it belongs to.
struct SResultRecord {
    SMaskParam param; ///< the mode as it was asked for
    SMaskShape shape;
    std::vector<std::string> warnings;
    std::vector<SResultFile> files; ///< plain names, in the folder of mask.json
};

/// Reads a mask.json, of which nothing is trusted. A mode of another version of the command is read too, as
/// long as its fields are known.
/// @param source  what messages call the file
/// @throws CRecordError for a text that is not JSON, a member that is missing or of a wrong type, a shape that
///         no mask has and a file name that leads out of the folder
SResultRecord MaskJson_Read(std::istream& stream, const std::string& source);

} // namespace dotweave
