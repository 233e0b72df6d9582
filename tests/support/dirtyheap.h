#pragma once

#include <cstddef>
#include <vector>

/// Fills the places where the next allocations of a size are likely to come from with 0xFF, so that a byte
/// which nobody clears does not look cleared by chance, and a threshold which nobody writes does not look
/// written: no matrix has a level of 65535.
inline void DirtyHeap(std::size_t bytes)
{
    std::vector<std::vector<unsigned char>> pieces(8, std::vector<unsigned char>(bytes));
    for (std::vector<unsigned char>& piece : pieces) {
        const volatile unsigned char* const end = piece.data() + piece.size();
        for (volatile unsigned char* byte = piece.data(); byte != end; ++byte)
            *byte = 0xFF;
    }
}
