#include "dotweave/maskdatastorage.h"

#include "listedmodes.h"
#include "logcapture.h"
#include "maskparams.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <list>
#include <optional>
#include <vector>

namespace {

/// Modes 0 to 6 advance the paper by one step height, modes 7 to 9 by another; mode 10 is rejected.
constexpr int MODE_REJECTED = 10;

bool IsOtherStep(int mode)
{
    return mode >= 7;
}

SMaskParam Mode(int mode)
{
    if (mode == MODE_REJECTED)
        return Mode_Rejected();
    return IsOtherStep(mode) ? Mode_OtherStep(mode) : MaskParam_Small(mode);
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
        return IsOtherStep(mode) == IsOtherStep(*current);
    }
};

RC_GTEST_PROP(StorageModel, BehavesAsAListOfFive, ())
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
                RC_ASSERT(Number(*applied) == mode);
        }
        const CMaskData_Base* current = storage.MaskData_Current_Get();
        RC_ASSERT((current != nullptr) == model.current.has_value());
        if (current != nullptr && model.IsListed(*model.current))
            RC_ASSERT(Number(*current) == *model.current);
        RC_ASSERT(Listed(storage) == std::vector<int>(model.listed.begin(), model.listed.end()));
    }
}

} // namespace
