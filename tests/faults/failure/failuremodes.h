#pragma once

#include "maskparams.h"

#include <iosfwd>
#include <string>
#include <vector>

struct SFailureMode {
    std::string name;
    SMaskParam param;
};

/// Small modes that together use every builder of cut tables, both depths, resolution passes, the sine mask
/// and more than one colour. None has more work items than go round at once, so that even with all workers
/// gone a creation does not wait out its 60 seconds.
const std::vector<SFailureMode>& FailureModes();
std::ostream& operator<<(std::ostream& stream, const SFailureMode& mode);

/// What a rejected object leaves allocated for good: itself, the two arrays of step offsets, the block and
/// its bytes.
inline constexpr long REJECTED_OBJECT_PIECES = 5;

/// Logs a record, as the first one of a process leaves the logging library's own state allocated behind it.
void FirstRecord_Log();
