#include <dotweave/dotweave.h>
#include <iostream>

int main()
{
    SMaskParam mode = {}; // 544 nozzle rows, 4 passes, 4 colours, hard band edges
    mode.nozzleCount = 544, mode.basePass = 4, mode.xResPass = 1, mode.yResPass = 1;
    mode.colorCount = 4, mode.bitsPerPixel = 1, mode.colorTimes = 1, mode.featherMode = FeatherMode_None;
    CMaskDataStorage storage;
    if (!storage.MaskData_Current_Init(mode))
        return 1; // the host's log says why
    const CMaskData_Base& mask = *storage.MaskData_Current_Get();
    int position = -1; // the counter of the print path; the first call gives position 0
    const std::uint8_t* bytes = mask.MaskData_Get(0, position);
    std::cout << "position " << position << ": " << mask.MaskHeight_IncludeRes() << " lines of "
              << mask.MaskLineBytes_OneColor() << " bytes, the first is " << int{bytes[0]} << '\n';
}
