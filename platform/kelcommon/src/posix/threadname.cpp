#include "portable/threadname.h"

#include <algorithm>
#include <cstddef>

#if defined(__linux__)
#include <pthread.h>

static constexpr std::size_t NAME_CHARS_MAX = 15; // the kernel keeps 16 bytes; a longer name is refused

void ThreadName_Set(std::string_view name) noexcept
{
    // A fixed buffer: naming runs outside the thread's exception guard and so must not allocate.
    char shortName[NAME_CHARS_MAX + 1] = {};
    std::copy_n(name.begin(), std::min(name.size(), NAME_CHARS_MAX), shortName);
    static_cast<void>(pthread_setname_np(pthread_self(), shortName));
}

#else

void ThreadName_Set(std::string_view) noexcept {}

#endif
