#pragma once

#include <cstdint>
#include <vector>

/// @file
/// The instruction sets for which the kernels were compiled, one bit each as Highway numbers them.

/// Those that this processor has, best first. Sets that were not compiled are left out: another set would be
/// timed under their name.
std::vector<std::int64_t> Targets_Get();
const char* Target_Name(std::int64_t target);

/// Makes the kernels run on one instruction set as long as this object lives, and then on the best one again.
/// Thread-safety: the choice counts for the whole program, so nothing else may run kernels meanwhile.
class CTargetChoice {
public:
    explicit CTargetChoice(std::int64_t target);
    CTargetChoice(const CTargetChoice&) = delete;
    CTargetChoice& operator=(const CTargetChoice&) = delete;
    ~CTargetChoice();
};
