#pragma once

#include "maskparams.h"
#include "sanitized.h"

#include <chrono>
#include <iosfwd>
#include <string>
#include <vector>

struct SFailureMode {
    std::string name;
    SMaskParam param;
};

/// Small modes that together use every builder of cut tables, both depths, resolution passes, the sine mask
/// and more than one colour. None has more work items than go round at once.
const std::vector<SFailureMode>& FailureModes();
std::ostream& operator<<(std::ostream& stream, const SFailureMode& mode);

/// A creation that does not give every byte right is false, and quickly so. Sanitizers slow threads down.
#if defined(DOTWEAVE_TEST_IS_SANITIZED)
inline constexpr std::chrono::seconds FALSE_WITHIN(10);
#else
inline constexpr std::chrono::seconds FALSE_WITHIN(1);
#endif

/// What stays allocated for good after a rejected object: itself, the two arrays of step offsets, the block
/// and its bytes.
inline constexpr long REJECTED_OBJECT_PIECES = 5;

/// Logs a record: with the first one of a process the logging library allocates state that it keeps.
void FirstRecord_Log();
