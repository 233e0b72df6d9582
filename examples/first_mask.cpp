#include <dotweave/dotweave.h>
#include <iostream>

int main()
{
    const SMaskParam mode = {.nozzleCount = 544,
                             .basePass = 4,
                             .xResPass = 1,
                             .yResPass = 1,
                             .colorCount = 4,
                             .bitsPerPixel = 1,
                             .featherMode = FeatherMode_None,
                             .colorTimes = 1};
    CMaskDataStorage storage;
    if (!storage.MaskData_Current_Init(mode)) {
        std::cerr << MaskParam_Refusal(mode) << '\n';
        return 1;
    }
    const CMaskData_Base& mask = *storage.MaskData_Current_Get();
    int position = -1; // the counter of this colour; the first call gives position 0
    const std::uint8_t* bytes = mask.MaskData_Get(0, position);
    std::cout << "position " << position << ": " << mask.MaskHeight_IncludeRes() << " lines of "
              << mask.MaskLineBytes_OneColor() << " bytes, the first is " << int{bytes[0]} << '\n';
}
