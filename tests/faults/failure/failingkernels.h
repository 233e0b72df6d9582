#pragma once

/// @file
/// Workers that fail in the middle of an item: kernels that throw where planned and do their work otherwise.

/// Which of a worker's calls fail.
enum class EWorkerStep {
    Cut,  // of the sine mask's rows, before they are feathered
    Pack, // of all other rows, straight into the output
};

/// While it lives, calls number `first` to `first + count - 1` of one step throw, counted from 0 over all
/// workers. Calls without rows do not count. One at a time.
class CFailingKernels {
public:
    CFailingKernels(EWorkerStep step, int first, int count);
    CFailingKernels(const CFailingKernels&) = delete;
    CFailingKernels& operator=(const CFailingKernels&) = delete;
    ~CFailingKernels();

    /// Calls so far, failed ones included.
    [[nodiscard]] int CallCount() const;
};
