#pragma once

#include "dotweave/maskdatastorage.h"

#include "maskparams.h"
#include "peek.h"

#include <initializer_list>
#include <vector>

/// @file
/// Modes for the storage, and what it lists. A mode's number is in a field that hard edges never read.

/// A mode that no mask object can be built for.
inline SMaskParam Mode_Rejected()
{
    SMaskParam param = MaskParam_Small(0);
    param.colorTimes = 0;
    return param;
}

/// Modes of another step height than that of MaskParam_Small.
inline SMaskParam Mode_OtherStep(int number)
{
    SMaskParam param = MaskParam_Small(number);
    param.nozzleCount = 16;
    return param;
}

inline int Number(const CMaskData_Base& mask)
{
    return mask.MaskParam_Input().featherLevelPercent;
}

/// The numbers of the listed modes, front first.
inline std::vector<int> Listed(CMaskDataStorage& storage)
{
    std::vector<int> numbers;
    for (const CMaskData_Base* mask : SMaskDataStorage_Peek{storage}.List())
        numbers.push_back(Number(*mask));
    return numbers;
}

/// Makes one small mode after the other current. @return false when one cannot be
inline bool Init(CMaskDataStorage& storage, std::initializer_list<int> numbers)
{
    bool isInit = true;
    for (const int number : numbers)
        isInit = storage.MaskData_Current_Init(MaskParam_Small(number)) && isInit;
    return isInit;
}
