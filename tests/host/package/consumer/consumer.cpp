// Every exported header in C++17, and a call into every exported class that a press uses.

#include <dotweave/dotweave.h>

#include <cstring>
#include <iostream>
#include <memory>

#if __cplusplus >= 202002L
#error "The library asks its consumers for more than C++17"
#endif

int main()
{
    SMaskParam mode = {};
    mode.nozzleCount = 544, mode.basePass = 4, mode.xResPass = 1, mode.yResPass = 1;
    mode.colorCount = 4, mode.bitsPerPixel = 1, mode.colorTimes = 1;
    CMaskDataStorage storage;
    const std::unique_ptr<CMaskData_Base> mask(CMaskDataFactory::MaskData_Create(mode));
    if (mask == nullptr || !storage.MaskData_Current_Init(mode))
        return 1;
    int position = -1;
    int other = -1;
    const bool isSame =
        std::memcmp(mask->MaskData_Get(0, position), storage.MaskData_Current_Get()->MaskData_Get(0, other),
                    static_cast<std::size_t>(mask->MaskBytes_OnePosition())) == 0;
    const bool isVersion = std::strcmp(dotweave_version(), DOTWEAVE_VERSION_STRING) == 0;
    std::cout << "same bytes: " << isSame << ", same version: " << isVersion << '\n';
}
