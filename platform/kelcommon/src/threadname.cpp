// Speaks to the platform itself, which of this library only processfork.cpp does too.
#include "threadname.h"

#include <algorithm>
#include <cstddef>

#if defined(_WIN32)
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#elif defined(__linux__)
#include <pthread.h>
#endif

// Fixed buffers: naming runs outside the thread's exception guard and so must not allocate.
#if defined(_WIN32)

static constexpr std::size_t NAME_CHARS_MAX = 63; // no limit of the platform; longer than anyone reads

void ThreadName_Set(std::string_view name) noexcept
{
    wchar_t wideName[NAME_CHARS_MAX + 1] = {};
    std::copy_n(name.begin(), std::min(name.size(), NAME_CHARS_MAX), wideName);
    static_cast<void>(SetThreadDescription(GetCurrentThread(), wideName));
}

#elif defined(__linux__)

static constexpr std::size_t NAME_CHARS_MAX = 15; // the kernel keeps 16 bytes; a longer name is refused

void ThreadName_Set(std::string_view name) noexcept
{
    char shortName[NAME_CHARS_MAX + 1] = {};
    std::copy_n(name.begin(), std::min(name.size(), NAME_CHARS_MAX), shortName);
    static_cast<void>(pthread_setname_np(pthread_self(), shortName));
}

#else

void ThreadName_Set(std::string_view) noexcept {}

#endif
