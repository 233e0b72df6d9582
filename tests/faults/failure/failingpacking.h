#pragma once

#include <cstddef>

/// @file
/// Workers that fail in the middle of an item. The linker puts this file's operations before the two kernels
/// that workers call; they throw where planned and hand on otherwise.

/// Which of a worker's calls fail.
enum class EWorkerStep {
    Cut,  // of the sine mask's rows, before they are feathered
    Pack, // of all other rows, straight into the output
};

/// While it lives, calls number `first` to `first + count - 1` of one step throw, counted from 0 over all
/// workers. One at a time.
class CFailingSteps {
public:
    CFailingSteps(EWorkerStep step, int first, int count);
    CFailingSteps(const CFailingSteps&) = delete;
    CFailingSteps& operator=(const CFailingSteps&) = delete;
    ~CFailingSteps();

    /// Calls so far, failed ones included.
    [[nodiscard]] int CallCount() const;
};
