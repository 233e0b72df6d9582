#include "terminal.h"

#include <cstdlib>
#include <string_view>

#if !defined(_WIN32)
#include <unistd.h>
#endif

namespace dotweave {

bool Terminal_IsWatched()
{
#if defined(_WIN32)
    return false; // its console shows escape codes as they are unless it is told otherwise
#else
    const char* const terminal = std::getenv("TERM"); // NOLINT(concurrency-mt-unsafe): nobody sets it
    const bool isDumb = terminal == nullptr || std::string_view(terminal) == "dumb";
    return isatty(STDERR_FILENO) == 1 && !isDumb;
#endif
}

} // namespace dotweave
