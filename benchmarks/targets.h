#pragma once

#include <cstdint>
#include <vector>

/// @file
/// The instruction sets that the kernels were compiled for, one bit each as Highway numbers them.

/// Those that this processor has, best first. A set that was not compiled, and would be timed as another one
/// under its name, is not among them.
std::vector<std::int64_t> Targets_Get();
const char* Target_Name(std::int64_t target);

/// Makes the kernels run on one instruction set for as long as this object lives, then on the best one again.
/// Thread-safety: the choice is one for the whole program; nothing else may run kernels meanwhile.
class CTargetChoice {
public:
    explicit CTargetChoice(std::int64_t target);
    CTargetChoice(const CTargetChoice&) = delete;
    CTargetChoice& operator=(const CTargetChoice&) = delete;
    ~CTargetChoice();
};
