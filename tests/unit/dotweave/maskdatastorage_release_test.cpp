// Every listed object is the storage's to destroy. No leak checker sees whether it does: what the factory makes is
// let off there, since a rejected object is left behind on purpose.

#include "dotweave/maskdatastorage.h"

#include "listedmodes.h"
#include "logcapture.h"
#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <array>
#include <list>
#include <vector>

namespace {

/// Counts its destructions. Only the virtual destructor comes by here.
class CCountedMask : public CMaskData_Base {
public:
    explicit CCountedMask(int& destroyedCount) : m_destroyedCount(destroyedCount) {}
    CCountedMask(const CCountedMask&) = delete;
    CCountedMask& operator=(const CCountedMask&) = delete;
    ~CCountedMask() override { ++m_destroyedCount; }

private:
    int& m_destroyedCount;
};

using CCounts = std::array<int, 3>;

/// Lists an object behind the others for every count, the storage's from here on.
void Counted_List(CMaskDataStorage& storage, CCounts& destroyed)
{
    for (int& count : destroyed)
        SMaskDataStorage_Peek{storage}.List().push_back(new CCountedMask(count));
}

TEST(MaskDataStorageRelease, TheStorageTakesEveryListedObjectWithIt)
{
    CCounts destroyed = {};
    {
        CMaskDataStorage storage;
        Counted_List(storage, destroyed);
        SMaskDataStorage_Peek{storage}.List().push_front(nullptr); // as an apply that failed leaves behind
        EXPECT_EQ(destroyed, (CCounts{0, 0, 0}));
    }
    EXPECT_EQ(destroyed, (CCounts{1, 1, 1}));
}

TEST(MaskDataStorageRelease, ReleasingTheContentDestroysEveryObjectOnceAndNoneAgainLater)
{
    CCounts destroyed = {};
    {
        CMaskDataStorage storage;
        Counted_List(storage, destroyed);
        SMaskDataStorage_Peek peek{storage};
        peek.List().push_front(nullptr);
        EXPECT_TRUE(peek.Release_ListMaskData_Content());
        EXPECT_EQ(destroyed, (CCounts{1, 1, 1}));
        EXPECT_EQ(peek.List().size(), 0U);
    }
    EXPECT_EQ(destroyed, (CCounts{1, 1, 1}));
}

TEST(MaskDataStorageRelease, TheObjectEvictedAtTheFrontIsDestroyedAtOnceAndNoOther)
{
    CCounts destroyed = {};
    CMaskDataStorage storage;
    Counted_List(storage, destroyed);
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(2)));
    EXPECT_EQ(destroyed, (CCounts{0, 0, 0})) << "five entries are within the limit";
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(3)));
    EXPECT_EQ(destroyed, (CCounts{1, 0, 0}));
    ASSERT_NE(storage.MaskData_Apply(MaskParam_Small(4)), nullptr);
    EXPECT_EQ(destroyed, (CCounts{1, 1, 0}));
    ASSERT_EQ(storage.MaskData_Apply(MaskParam_Small(4)), SMaskDataStorage_Peek{storage}.List().back());
    EXPECT_EQ(destroyed, (CCounts{1, 1, 0})) << "a found object adds nothing";
}

TEST(MaskDataStorageRelease, EvictionTakesOneEntryPerCallHoweverManyThereAre)
{
    CCounts destroyed = {};
    CMaskDataStorage storage;
    Counted_List(storage, destroyed);
    SMaskDataStorage_Peek peek{storage};
    for (int mode = 1; mode <= 4; ++mode)
        peek.List().push_back(nullptr);
    EXPECT_TRUE(peek.Release_One_FromFront_If_OutOfRange());
    EXPECT_EQ(destroyed, (CCounts{1, 0, 0}));
    EXPECT_EQ(peek.List().size(), 6U);
}

TEST(MaskDataStorageRelease, ReleasingTheListDestroysItsObjectsAndLeavesNoList)
{
    CCounts destroyed = {};
    CMaskDataStorage storage;
    Counted_List(storage, destroyed);
    SMaskDataStorage_Peek peek{storage};
    const CLogCapture log;
    EXPECT_TRUE(peek.Release_ListMaskData());
    EXPECT_EQ(peek.ListPointer(), nullptr);
    EXPECT_EQ(destroyed, (CCounts{1, 1, 1}));
    EXPECT_TRUE(log.Records().empty());
    peek.ListPointer() = new std::list<CMaskData_Base*>; // which the storage's destruction needs
}

} // namespace
