#include "allocator.h"

#include <cstdlib> // tells which C library this is

#ifdef __GLIBC__

#include <malloc.h>

static constexpr int REUSE_BYTES_MAX = 32 << 20; // the most that the C library accepts
static constexpr int KEPT_BYTES_MAX = 64 << 20;  // twice that, as the C library would choose by itself

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
    Option_Set(M_MMAP_THRESHOLD, static_cast<int>(LARGE_BYTES));
    KeptPages_Return(); // or memory that the C library kept would be used first
}

void CFreshMemory::KeptPages_Return()
{
    malloc_trim(0);
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

void CFreshMemory::KeptPages_Return() {}

bool CFreshMemory::IsAvailable()
{
    return false;
}

std::size_t CFreshMemory::MappedBytes()
{
    return 0;
}

#endif
