#include "dotweave/maskdata_base.h"

#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

namespace {

/// 128 rows in 1 pass repeat after 17 positions.
SMaskParam MaskParam_SeventeenPositions()
{
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 128;
    return param;
}

/// Storage for an object that is never destroyed, as a copy that shares its source's buffers must not be.
struct SUnownedMask {
    alignas(CMaskData_Base) std::array<unsigned char, sizeof(CMaskData_Base)> bytes = {};
    CMaskData_Base* mask = nullptr;
};

/// The members as bytes, without the pointer to the virtual table.
std::vector<unsigned char> MemberBytes(const CMaskData_Base& mask)
{
    std::vector<unsigned char> bytes(sizeof mask - sizeof(void*));
    std::memcpy(bytes.data(), reinterpret_cast<const unsigned char*>(&mask) + sizeof(void*), bytes.size());
    return bytes;
}

} // namespace

TEST(MaskDataBaseCopy, ACopyConstructedObjectSharesEverythingWithItsSource)
{
    CMaskData_Base source;
    ASSERT_TRUE(source.Create(MaskParam_SeventeenPositions()));
    SUnownedMask unowned;
    unowned.mask = new (unowned.bytes.data()) CMaskData_Base(source);
    EXPECT_EQ(MemberBytes(*unowned.mask), MemberBytes(source));
    EXPECT_EQ(unowned.mask->XResStep(), source.XResStep());
    EXPECT_EQ(unowned.mask->YResStep(), source.YResStep());
    int position = 1;
    int samePosition = 1;
    EXPECT_EQ(unowned.mask->MaskData_Get(0, position), source.MaskData_Get(0, samePosition));
}

TEST(MaskDataBaseCopy, AnAssignedObjectSharesEverythingWithItsSource)
{
    CMaskData_Base source;
    ASSERT_TRUE(source.Create(MaskParam_SeventeenPositions()));
    SUnownedMask unowned;
    unowned.mask = new (unowned.bytes.data()) CMaskData_Base;
    CMaskData_Base& result = *unowned.mask = source;
    EXPECT_EQ(&result, unowned.mask);
    EXPECT_EQ(MemberBytes(*unowned.mask), MemberBytes(source));
    EXPECT_EQ(unowned.mask->XResStep(), source.XResStep());
    EXPECT_EQ(unowned.mask->YResStep(), source.YResStep());
    int position = 7;
    int samePosition = 7;
    EXPECT_EQ(unowned.mask->MaskData_Get(0, position), source.MaskData_Get(0, samePosition));
}

TEST(MaskDataBaseCopy, TheCopyMayBeTheOneThatIsDestroyed)
{
    SUnownedMask unowned;
    unowned.mask = new (unowned.bytes.data()) CMaskData_Base;
    ASSERT_TRUE(unowned.mask->Create(MaskParam_SeventeenPositions()));
    const CMaskData_Base copy(*unowned.mask); // frees the shared buffers; a leak check would see them else
    EXPECT_EQ(copy.XResStep(), unowned.mask->XResStep());
}

TEST(MaskDataBaseCopy, IsCopyableAndDestroyedThroughItsVirtualTable)
{
    static_assert(std::is_copy_constructible_v<CMaskData_Base> && std::is_copy_assignable_v<CMaskData_Base>);
    static_assert(std::has_virtual_destructor_v<CMaskData_Base>);
    bool isDestroyed = false;
    class CNotingMask : public CMaskData_Base {
    public:
        explicit CNotingMask(bool& flag) : m_flag(flag) {}
        CNotingMask(const CNotingMask&) = delete;
        CNotingMask& operator=(const CNotingMask&) = delete;
        ~CNotingMask() override { m_flag = true; }

    private:
        bool& m_flag;
    };
    std::unique_ptr<CMaskData_Base> mask = std::make_unique<CNotingMask>(isDestroyed);
    mask.reset();
    EXPECT_TRUE(isDestroyed);
}
