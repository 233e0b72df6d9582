#include "dotweave/maskdatastorage.h"

#include "logcapture.h"
#include "storagemodel.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <vector>

namespace {

RC_GTEST_PROP(StorageModel, BehavesAsAListOfFive, ())
{
    const CLogCapture quiet;
    CMaskDataStorage storage;
    SStorageModel model;
    const int calls = *rc::gen::inRange(1, 40);
    for (int call = 0; call < calls; ++call) {
        const int mode = *rc::gen::inRange(0, MODE_REJECTED + 1);
        if (*rc::gen::arbitrary<bool>()) {
            RC_ASSERT(storage.MaskData_Current_Init(Mode_OfModel(mode)) == model.Init(mode));
        } else if (model.IsApplyDefined(mode)) {
            const CMaskData_Base* applied = storage.MaskData_Apply(Mode_OfModel(mode));
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
