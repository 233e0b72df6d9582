#include "portable/nativethread.h"

#if defined(__linux__)

#include <algorithm>

#include <dlfcn.h>
#include <pthread.h>

static constexpr std::size_t NAME_CHARS_MAX = 15; // the kernel keeps 16 bytes and refuses a longer name

void ThreadName_Set(std::string_view name) noexcept
{
    // A fixed buffer: naming runs outside the thread's exception guard and so must not allocate.
    char shortName[NAME_CHARS_MAX + 1] = {};
    std::copy_n(name.begin(), std::min(name.size(), NAME_CHARS_MAX), shortName);
    static_cast<void>(pthread_setname_np(pthread_self(), shortName));
}

std::size_t ThreadStack_PlatformBytes(boost::thread::attributes& attributes) noexcept
{
    // glibc keeps the static thread-local storage of the host and its libraries inside each stack. With too
    // much of it no thread starts; with a little less a thread starts and then overruns its stack, so a
    // second try after a failure would not do. glibc tells the size to language runtimes through this
    // operation only. C libraries without it keep that storage elsewhere.
    using CMinimumStack = std::size_t (*)(const pthread_attr_t*);
    static const auto minimumStack =
        reinterpret_cast<CMinimumStack>(dlsym(RTLD_DEFAULT, "__pthread_get_minstack"));
    return minimumStack != nullptr ? minimumStack(attributes.native_handle()) : 0;
}

#else

void ThreadName_Set(std::string_view) noexcept {}

std::size_t ThreadStack_PlatformBytes(boost::thread::attributes&) noexcept
{
    return 0;
}

#endif
