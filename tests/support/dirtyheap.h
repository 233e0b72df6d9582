#pragma once

#include <cstddef>
#include <vector>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

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

/// While one lives, memory comes from the GNU C library with every byte set; nothing happens elsewhere.
class CDirtyMemory {
public:
    CDirtyMemory() { Fill_Set(0x100); } // the complement of its low byte
    CDirtyMemory(const CDirtyMemory&) = delete;
    CDirtyMemory& operator=(const CDirtyMemory&) = delete;
    ~CDirtyMemory() { Fill_Set(0); }

private:
    static void Fill_Set([[maybe_unused]] int fill)
    {
#if defined(__GLIBC__)
        mallopt(M_PERTURB, fill); // NOLINT(concurrency-mt-unsafe): while no mask is being built
#endif
    }
};
