// A host with much static thread-local storage, which the C library puts into the stack of every thread. The
// exit code tells whether the host can build a mask all the same.

#include <dotweave/maskdata_base.h>

#include <algorithm>

thread_local unsigned char t_storage[THREAD_LOCAL_BYTES];

int main()
{
    std::fill_n(t_storage, THREAD_LOCAL_BYTES, static_cast<unsigned char>(1));
    SMaskParam mode = {};
    mode.nozzleCount = 96, mode.basePass = 2, mode.xResPass = 1, mode.yResPass = 1;
    mode.colorCount = 1, mode.bitsPerPixel = 1, mode.colorTimes = 1, mode.featherMode = FeatherMode_Nozzle;
    mode.featherPercent = 50.0F, mode.featherLevelPercent = 100;
    mode.featherNozzleType = FeatherNozzle_Smooth_3_Sine;
    CMaskData_Base mask;
    return mask.Create(mode) ? 0 : 1;
}
