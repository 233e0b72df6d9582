// Speaks to the platform itself, as threadname.cpp does.
#include "portable/processfork.h"

#if defined(__unix__)

#include <pthread.h>

void ProcessFork_Watch(void (*begin)(), void (*endInParent)(), void (*endInChild)()) noexcept
{
    // It can only fail for lack of memory, and without it only a host that forks would notice.
    static_cast<void>(pthread_atfork(begin, endInParent, endInChild));
}

#else

void ProcessFork_Watch(void (*)(), void (*)(), void (*)()) noexcept {}

#endif
