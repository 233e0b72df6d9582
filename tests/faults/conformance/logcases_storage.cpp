#include "logcase.h"
#include "logscopes.h"

#include "dotweave/maskdatastorage.h"
#include "dotweave/sinemask.h"
#include "maskparams.h"
#include "peek.h"
#include "throwingsink.h"

#include <utility>

namespace {

/// A null entry is logged and then looked at all the same, which no process survives. A sink that throws
/// takes the operation out in between.
bool IsNullEntryFound(const std::function<bool(CMaskDataStorage&)>& find)
{
    CMaskDataStorage storage;
    SMaskDataStorage_Peek{storage}.List().push_front(nullptr);
    const CThrowingSink sink;
    try {
        return find(storage);
    } catch (const CSinkError&) {
        return false;
    }
}

bool IsOtherStepApplied(bool isListed)
{
    SMaskParam current = MaskParam_Plain();
    current.nozzleCount = 8;
    SMaskParam other = current;
    other.nozzleCount = 16;
    CMaskDataStorage storage;
    if (isListed && !storage.MaskData_Current_Init(other))
        return true;
    return !storage.MaskData_Current_Init(current) || storage.MaskData_Apply(other) != nullptr;
}

} // namespace

std::vector<SLogCase> LogCases_Storage()
{
    std::vector<SLogCase> cases;
    cases.push_back({"ApplyNewModeWithAnotherStep",
                     [] { return IsOtherStepApplied(false); },
                     {Failure(UNIT_STORAGE, SCOPE_STORAGE_APPLY)}});
    cases.push_back({"ApplyListedModeWithAnotherStep",
                     [] { return IsOtherStepApplied(true); },
                     {Failure(UNIT_STORAGE, SCOPE_STORAGE_APPLY)}});
    const std::pair<const char*, std::function<bool(CMaskDataStorage&)>> finds[] = {
        {"NullEntryInFind",
         [](CMaskDataStorage& storage) {
             return SMaskDataStorage_Peek{storage}.MaskData_Find(MaskParam_Plain()) != nullptr;
         }},
        {"NullEntryInInit",
         [](CMaskDataStorage& storage) { return storage.MaskData_Current_Init(MaskParam_Plain()); }},
        {"NullEntryInApply",
         [](CMaskDataStorage& storage) { return storage.MaskData_Apply(MaskParam_Plain()) != nullptr; }}};
    for (const auto& [name, find] : finds) {
        cases.push_back({name,
                         [find = find] { return IsNullEntryFound(find); },
                         {Failure(UNIT_STORAGE, SCOPE_STORAGE_FIND)}});
    }
    for (const auto& [name, type] :
         {std::pair("SineTypeZero", 0), std::pair("SineTypeThree", 3), std::pair("SineTypeNegative", -1)}) {
        cases.push_back({name,
                         [type = type] {
                             CSineMask sine;
                             return sine.Create(20, 100, 1, static_cast<ESinMaskType>(type));
                         },
                         {Failure(UNIT_SINE, SCOPE_SINE_CREATE)}});
    }
    return cases;
}
