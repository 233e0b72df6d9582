#include "portable/nativethread.h"

#include <algorithm>

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

static constexpr std::size_t NAME_CHARS_MAX = 63; // no limit of the platform; longer than anyone reads

void ThreadName_Set(std::string_view name) noexcept
{
    // A fixed buffer: naming runs outside the thread's exception guard and so must not allocate.
    wchar_t wideName[NAME_CHARS_MAX + 1] = {};
    std::copy_n(name.begin(), std::min(name.size(), NAME_CHARS_MAX), wideName);
    static_cast<void>(SetThreadDescription(GetCurrentThread(), wideName));
}

std::size_t ThreadStack_PlatformBytes(boost::thread::attributes&) noexcept
{
    return 0; // Windows keeps thread-local storage on the heap
}
