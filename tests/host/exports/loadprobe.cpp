// Loads the library as a host does and looks at what that did to the process. Says nothing itself: the exit
// code tells, and whatever stands on the console afterwards came out of the library.
// usage: loadprobe <path of the library>

#include <array>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <iterator>

#include <dlfcn.h>

namespace {

constexpr int SIGNAL_COUNT = 65; // numbers 1 to 64

std::ptrdiff_t EntryCount(const char* folder)
{
    return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
}

using CSignalHandler = void (*)(int);

/// What can be seen from outside of a library that starts, opens or takes something.
struct SFootprint {
    std::ptrdiff_t threadCount = EntryCount("/proc/self/task");
    std::ptrdiff_t openFileCount = EntryCount("/proc/self/fd");
    std::filesystem::path folder = std::filesystem::current_path();
    std::array<CSignalHandler, SIGNAL_COUNT> handlers = SignalHandlers();

    static std::array<CSignalHandler, SIGNAL_COUNT> SignalHandlers()
    {
        std::array<CSignalHandler, SIGNAL_COUNT> handlers = {};
        for (int number = 1; number < SIGNAL_COUNT; ++number) {
            struct sigaction action = {};
            if (sigaction(number, nullptr, &action) == 0)
                handlers[static_cast<std::size_t>(number)] = action.sa_handler;
        }
        return handlers;
    }
    bool operator==(const SFootprint&) const = default;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    const SFootprint before;
    void* library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        return 3;
    const SFootprint loaded;
    if (loaded.threadCount != before.threadCount)
        return 4;
    if (loaded.openFileCount != before.openFileCount)
        return 5;
    if (!(loaded == before))
        return 6;
    if (dlsym(library, "_ZN14CMaskData_Base5UsageEv") == nullptr)
        return 7; // this was not the library
    if (dlclose(library) != 0)
        return 8;
    return SFootprint() == before ? 0 : 9;
}
