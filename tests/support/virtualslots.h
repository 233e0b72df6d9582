#pragma once

#include <cstddef>
#include <cstring>
#include <vector>

/// @file
/// Places of virtual operations, on platforms where a pointer to one contains its place in the table: 1 +
/// byte offset.

#if defined(__GNUC__) && defined(__x86_64__)
#define DOTWEAVE_TEST_HAS_SLOTS 1

/// Place of a virtual operation in its class's table.
template <typename TOperation>
std::ptrdiff_t Slot(TOperation operation)
{
    std::ptrdiff_t words[2] = {};
    static_assert(sizeof(words) == sizeof(operation));
    std::memcpy(words, &operation, sizeof(words));
    return (words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

/// Those of a thread class; reaches what is protected there.
template <typename TThread>
class CThreadSlots : public TThread {
public:
    static std::vector<std::ptrdiff_t> Slots()
    {
        return {Slot(&CThreadSlots::Start),       Slot(&CThreadSlots::Wait_PrepareComplete),
                Slot(&CThreadSlots::Wait_Paused), Slot(&CThreadSlots::Wait_Exit),
                Slot(&CThreadSlots::Stop),        Slot(&CThreadSlots::Pause),
                Slot(&CThreadSlots::Resume),      Slot(&CThreadSlots::OneLoop),
                Slot(&CThreadSlots::Prepare),     Slot(&CThreadSlots::Finally)};
    }
};

/// The places agreed for those of a thread. The destructor comes first; this platform gives it two.
inline std::vector<std::ptrdiff_t> ThreadSlots_Agreed()
{
    return {2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
}

#endif
