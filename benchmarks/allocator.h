#pragma once

#include <cstddef>

/// @file
/// Where the C library takes large blocks from. By itself it changes its mind as the program goes on, which
/// would make a figure depend on what ran before it.

/// Fixes the state that a long-running host arrives at: blocks of up to 32 MiB are reused, their pages stay.
/// @return false when the C library refuses; figures would depend on their order then
[[nodiscard]] bool Allocator_Settle();

/// As long as this object lives, every block of 4 MiB or more comes straight from the operating system, page
/// by page on first touch, as the first mask of a freshly started press does.
class CFreshMemory {
public:
    CFreshMemory();
    CFreshMemory(const CFreshMemory&) = delete;
    CFreshMemory& operator=(const CFreshMemory&) = delete;
    ~CFreshMemory();
    /// Whether this C library can be asked for it at all.
    [[nodiscard]] static bool IsAvailable();
    /// Bytes that stand in blocks of their own at this moment.
    [[nodiscard]] static std::size_t MappedBytes();
};
