// Builds a mask and unloads the library at once, again and again, as a host does that tries out modes. The
// threads of the mask must be gone by then, as their code goes. The exit code tells.
// usage: unloadprobe <path of the library>

#include <dotweave/maskdatastorage.h>

#include <cstddef>

#include <dlfcn.h>

namespace {

constexpr int ROUND_COUNT = 50;

template <typename TOperation>
TOperation Operation_Find(void* library, const char* name)
{
    return reinterpret_cast<TOperation>(dlsym(library, name));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    SMaskParam mode = {};
    mode.nozzleCount = 8, mode.basePass = 1, mode.xResPass = 1, mode.yResPass = 1;
    mode.colorCount = 1, mode.bitsPerPixel = 1, mode.colorTimes = 1, mode.featherMode = FeatherMode_None;
    for (int round = 0; round < ROUND_COUNT; ++round) {
        void* library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr)
            return 3;
        const auto construct = Operation_Find<void (*)(void*)>(library, "_ZN16CMaskDataStorageC1Ev");
        const auto init = Operation_Find<bool (*)(void*, const SMaskParam&)>(
            library, "_ZN16CMaskDataStorage21MaskData_Current_InitERK10SMaskParam");
        const auto destroy = Operation_Find<void (*)(void*)>(library, "_ZN16CMaskDataStorageD1Ev");
        if (construct == nullptr || init == nullptr || destroy == nullptr)
            return 7;
        alignas(CMaskDataStorage) std::byte storage[sizeof(CMaskDataStorage)];
        construct(storage);
        const bool isBuilt = init(storage, mode);
        destroy(storage);
        if (!isBuilt)
            return 10;
        if (dlclose(library) != 0)
            return 8;
    }
    return 0;
}
