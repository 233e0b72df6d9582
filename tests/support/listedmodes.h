#pragma once

#include "dotweave/maskdatastorage.h"

#include "maskparams.h"
#include "peek.h"

#include <vector>

/// @file
/// What the tests of the storage share: modes that it meets beside the small ones, and what it lists.

/// A mode that no mask object can be built for.
inline SMaskParam Mode_Rejected()
{
    SMaskParam param = MaskParam_Small(0);
    param.colorTimes = 0;
    return param;
}

/// Modes of another step height than that of the small ones.
inline SMaskParam Mode_OtherStep(int number)
{
    SMaskParam param = MaskParam_Small(number);
    param.nozzleCount = 16;
    return param;
}

/// The numbers of the listed modes, front first.
inline std::vector<int> Listed(CMaskDataStorage& storage)
{
    std::vector<int> numbers;
    for (const CMaskData_Base* mask : SMaskDataStorage_Peek{storage}.List())
        numbers.push_back(mask->MaskParam_Input().featherLevelPercent);
    return numbers;
}
