#include "allocator.h"

#include <cstdlib> // tells which C library this is

#ifdef __GLIBC__

#include <malloc.h>

static constexpr int REUSE_BYTES_MAX = 32 << 20; // the most that the C library accepts
static constexpr int KEPT_BYTES_MAX = 64 << 20;  // twice that, as the C library would choose by itself
static constexpr int FRESH_BYTES_MIN = 4 << 20;  // every block of W2's size, no threshold plane

static bool Option_Set(int option, int bytes)
{
    return mallopt(option, bytes) != 0; // NOLINT(concurrency-mt-unsafe): only while no mask is being built
}

bool Allocator_Settle()
{
    return Option_Set(M_MMAP_THRESHOLD, REUSE_BYTES_MAX) && Option_Set(M_TRIM_THRESHOLD, KEPT_BYTES_MAX);
}

CFreshMemory::CFreshMemory()
{
    Option_Set(M_MMAP_THRESHOLD, FRESH_BYTES_MIN);
    malloc_trim(0); // or memory that the C library kept would be used first
}

CFreshMemory::~CFreshMemory()
{
    static_cast<void>(Allocator_Settle()); // succeeded when the program started
}

bool CFreshMemory::IsAvailable()
{
    return true;
}

std::size_t CFreshMemory::MappedBytes()
{
    return mallinfo2().hblkhd;
}

#else

bool Allocator_Settle()
{
    return true;
}

CFreshMemory::CFreshMemory() = default;

CFreshMemory::~CFreshMemory() = default;

bool CFreshMemory::IsAvailable()
{
    return false;
}

std::size_t CFreshMemory::MappedBytes()
{
    return 0;
}

#endif
