// Calls of the storage and of the factory in any order, against a list of mode numbers. Each byte is a call:
// the high four bits say which, the low four bits the mode.

#include "dotweave/maskdatafactory.h"
#include "dotweave/maskdatastorage.h"
#include "fuzzing.h"
#include "maskbytes.h"
#include "storagemodel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace {

constexpr std::size_t CALL_COUNT_MAX = 24;
constexpr int MODE_COUNT = MODE_REJECTED + 1;

/// The bytes that a mode's mask has had ever since it was first made.
void ExpectSameBytes(const CMaskData_Base& mask, int mode)
{
    static std::array<std::vector<std::uint8_t>, MODE_COUNT> s_bytes;
    std::vector<std::uint8_t>& known = s_bytes.at(static_cast<std::size_t>(mode));
    const std::vector<std::uint8_t> bytes = MaskBytes(mask);
    if (known.empty())
        known = bytes;
    EXPECT_TRUE(bytes == known) << "mode " << mode;
    EXPECT_EQ(Number(mask), mode);
}

/// A rejected object stays where it is (deliberate), but is not handed out.
void Factory_Call(int mode)
{
    const std::unique_ptr<CMaskData_Base> mask(CMaskDataFactory::MaskData_Create(Mode_OfModel(mode)));
    EXPECT_EQ(mask != nullptr, mode != MODE_REJECTED);
    if (mask != nullptr)
        ExpectSameBytes(*mask, mode);
}

void Init_Call(CMaskDataStorage& storage, SStorageModel& model, int mode)
{
    EXPECT_EQ(storage.MaskData_Current_Init(Mode_OfModel(mode)), model.Init(mode));
    if (mode != MODE_REJECTED)
        ExpectSameBytes(*storage.MaskData_Current_Get(), mode);
}

void Apply_Call(CMaskDataStorage& storage, SStorageModel& model, int mode)
{
    if (!model.IsApplyDefined(mode))
        return;
    const CMaskData_Base* applied = storage.MaskData_Apply(Mode_OfModel(mode));
    EXPECT_EQ(applied != nullptr, model.Apply(mode));
    if (applied != nullptr)
        ExpectSameBytes(*applied, mode);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    auto storage = std::make_unique<CMaskDataStorage>();
    SStorageModel model;
    for (std::size_t i = 0; i < std::min(size, CALL_COUNT_MAX); ++i) {
        const int mode = (data[i] & 15) % MODE_COUNT;
        switch (data[i] >> 4) {
        case 15: // another storage: nothing of the first is left
            storage = std::make_unique<CMaskDataStorage>();
            model = {};
            break;
        case 14:
        case 13:
            Factory_Call(mode);
            break;
        case 12:
        case 11:
        case 10:
        case 9:
        case 8:
        case 7:
            Apply_Call(*storage, model, mode);
            break;
        default:
            Init_Call(*storage, model, mode);
        }
        const CMaskData_Base* current = storage->MaskData_Current_Get();
        EXPECT_EQ(current != nullptr, model.current.has_value());
        EXPECT_EQ(Listed(*storage), std::vector<int>(model.listed.begin(), model.listed.end()));
        if (current != nullptr && model.IsListed(*model.current))
            ExpectSameBytes(*current, *model.current);
    }
    return 0;
}
