#include "dotweave/maskdatastorage.h"

#include "logcapture.h"
#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <list>
#include <optional>
#include <vector>

namespace {

/// Modes 0 to 6 advance the paper by 8 rows, modes 7 to 9 by 16; mode 10 is rejected.
constexpr int MODE_REJECTED = 10;

int ModeStep(int mode)
{
    return mode < 7 ? 8 : 16;
}

SMaskParam Mode(int mode)
{
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = ModeStep(mode);
    param.featherLevelPercent = mode;
    param.colorTimes = mode == MODE_REJECTED ? 0 : 1;
    return param;
}

/// What the storage promises, as a plain list of mode numbers.
struct SModel {
    std::list<int> listed;
    std::optional<int> current;

    void Append(int mode)
    {
        listed.push_back(mode);
        if (listed.size() > 5)
            listed.pop_front();
    }

    bool Init(int mode)
    {
        listed.remove(mode);
        if (mode == MODE_REJECTED) {
            current.reset();
            return false;
        }
        current = mode;
        Append(mode);
        return true;
    }

    bool IsListed(int mode) const { return std::find(listed.begin(), listed.end(), mode) != listed.end(); }

    /// Apply reads the current object after the new one may have evicted it, and takes no rejected mode.
    bool IsApplyDefined(int mode) const
    {
        if (!current.has_value() || mode == MODE_REJECTED || !IsListed(*current))
            return false;
        return IsListed(mode) || listed.size() < 5 || listed.front() != *current;
    }

    bool Apply(int mode)
    {
        if (!IsListed(mode))
            Append(mode);
        return ModeStep(mode) == ModeStep(*current);
    }
};

RC_GTEST_PROP(MaskDataStorageModel, EveryWellDefinedSequenceBehavesAsAListOfFive, ())
{
    const CLogCapture quiet;
    CMaskDataStorage storage;
    SModel model;
    const int calls = *rc::gen::inRange(1, 40);
    for (int call = 0; call < calls; ++call) {
        const int mode = *rc::gen::inRange(0, MODE_REJECTED + 1);
        if (*rc::gen::arbitrary<bool>()) {
            RC_ASSERT(storage.MaskData_Current_Init(Mode(mode)) == model.Init(mode));
        } else if (model.IsApplyDefined(mode)) {
            const CMaskData_Base* applied = storage.MaskData_Apply(Mode(mode));
            RC_ASSERT((applied != nullptr) == model.Apply(mode));
            if (applied != nullptr)
                RC_ASSERT(applied->MaskParam_Input().featherLevelPercent == mode);
        }
        const CMaskData_Base* current = storage.MaskData_Current_Get();
        RC_ASSERT((current != nullptr) == model.current.has_value());
        if (current != nullptr && model.IsListed(*model.current))
            RC_ASSERT(current->MaskParam_Input().featherLevelPercent == *model.current);
        std::list<int> listed;
        for (const CMaskData_Base* mask : SMaskDataStorage_Peek{storage}.List())
            listed.push_back(mask->MaskParam_Input().featherLevelPercent);
        RC_ASSERT(listed == model.listed);
    }
}

} // namespace
