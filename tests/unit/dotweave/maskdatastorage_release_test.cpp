// The storage destroys every object that it listed, once. No leak checker finds a missed one: what the
// factory makes is exempt, because a rejected object is leaked on purpose.

#include "dotweave/maskdatastorage.h"

#include "listedmodes.h"
#include "logcapture.h"
#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <array>
#include <list>
#include <memory>
#include <vector>

namespace {

/// Counts its destructions, which only the virtual destructor does.
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

/// A storage that lists three counted objects.
class StorageRelease : public testing::Test {
protected:
    StorageRelease() : m_storage(std::make_unique<CMaskDataStorage>())
    {
        for (int& count : m_destroyed)
            Peek().List().push_back(new CCountedMask(count));
    }

    SMaskDataStorage_Peek Peek() { return {*m_storage}; }

    CCounts m_destroyed = {};
    std::unique_ptr<CMaskDataStorage> m_storage;
};

TEST_F(StorageRelease, TheStorageDestroysEveryListedObject)
{
    Peek().List().push_front(nullptr); // an apply that failed lists this
    EXPECT_EQ(m_destroyed, (CCounts{0, 0, 0}));
    m_storage.reset();
    EXPECT_EQ(m_destroyed, (CCounts{1, 1, 1}));
}

TEST_F(StorageRelease, ContentIsDestroyedOnce)
{
    Peek().List().push_front(nullptr);
    EXPECT_TRUE(Peek().Release_ListMaskData_Content());
    EXPECT_EQ(m_destroyed, (CCounts{1, 1, 1}));
    EXPECT_TRUE(Peek().List().empty());
    m_storage.reset();
    EXPECT_EQ(m_destroyed, (CCounts{1, 1, 1}));
}

TEST_F(StorageRelease, TheFrontIsDestroyedWhenItIsEvicted)
{
    ASSERT_TRUE(Init(*m_storage, {1, 2}));
    EXPECT_EQ(m_destroyed, (CCounts{0, 0, 0})) << "five entries are within the limit";
    ASSERT_TRUE(Init(*m_storage, {3}));
    EXPECT_EQ(m_destroyed, (CCounts{1, 0, 0}));
    ASSERT_NE(m_storage->MaskData_Apply(MaskParam_Small(4)), nullptr);
    EXPECT_EQ(m_destroyed, (CCounts{1, 1, 0}));
    ASSERT_EQ(m_storage->MaskData_Apply(MaskParam_Small(4)), Peek().List().back());
    EXPECT_EQ(m_destroyed, (CCounts{1, 1, 0})) << "a found object adds nothing";
}

TEST_F(StorageRelease, EvictionTakesOneEntryPerCall)
{
    Peek().List().resize(7, nullptr);
    EXPECT_TRUE(Peek().Release_One_FromFront_If_OutOfRange());
    EXPECT_EQ(m_destroyed, (CCounts{1, 0, 0}));
    EXPECT_EQ(Peek().List().size(), 6U);
}

TEST_F(StorageRelease, ReleasingTheListLeavesNoList)
{
    const CLogCapture log;
    EXPECT_TRUE(Peek().Release_ListMaskData());
    EXPECT_EQ(Peek().ListPointer(), nullptr);
    EXPECT_EQ(m_destroyed, (CCounts{1, 1, 1}));
    EXPECT_TRUE(log.Records().empty());
    Peek().ListPointer() = new std::list<CMaskData_Base*>; // which the storage's destructor needs
}

} // namespace
