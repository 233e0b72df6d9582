#pragma once

#include <cstddef>

/// @file
/// Where the C library takes large blocks from. By itself it adapts while the program runs, and a figure
/// would depend on what ran before it.

/// Fixes the state that a long-running host reaches: blocks of up to 32 MiB are reused and keep their pages.
/// @return false when the C library refuses; figures then depend on their order
[[nodiscard]] bool Allocator_Settle();

/// As long as this object lives, every block of LARGE_BYTES or more comes straight from the operating system,
/// page by page on first touch. The first mask of a freshly started press gets its memory like that.
class CFreshMemory {
public:
    static constexpr std::size_t LARGE_BYTES = std::size_t{4} << 20U;

    CFreshMemory();
    CFreshMemory(const CFreshMemory&) = delete;
    CFreshMemory& operator=(const CFreshMemory&) = delete;
    ~CFreshMemory();
    /// Gives back the pages of all memory that the C library keeps, so that smaller blocks are fresh too.
    static void KeptPages_Return();
    /// True when this C library has an option for it.
    [[nodiscard]] static bool IsAvailable();
    /// Bytes in blocks that the C library has mapped for them alone.
    [[nodiscard]] static std::size_t MappedBytes();
};
