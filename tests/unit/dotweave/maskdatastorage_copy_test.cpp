// Copies of a storage are shallow. Only one of two that share their members may be destroyed.

#include "dotweave/maskdatastorage.h"

#include "listedmodes.h"
#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <array>
#include <new>
#include <vector>

namespace {

/// A copy that is never destroyed.
class CUnownedStorage {
public:
    explicit CUnownedStorage(const CMaskDataStorage& source)
        : m_storage(new (m_bytes.data()) CMaskDataStorage(source))
    {}
    CUnownedStorage(const CUnownedStorage&) = delete;
    CUnownedStorage& operator=(const CUnownedStorage&) = delete;
    ~CUnownedStorage() = default;

    CMaskDataStorage& operator*() { return *m_storage; }

private:
    alignas(CMaskDataStorage) std::array<unsigned char, sizeof(CMaskDataStorage)> m_bytes = {};
    CMaskDataStorage* m_storage;
};

void ExpectShared(CMaskDataStorage& copy, CMaskDataStorage& source)
{
    SMaskDataStorage_Peek peek{copy};
    SMaskDataStorage_Peek sourcePeek{source};
    EXPECT_EQ(peek.Mutex(), sourcePeek.Mutex());
    EXPECT_EQ(peek.ListPointer(), sourcePeek.ListPointer());
    EXPECT_EQ(copy.MaskData_Current_Get(), source.MaskData_Current_Get());
}

TEST(MaskDataStorageCopy, ACopyConstructedStorageSharesMutexListAndCurrentObject)
{
    CMaskDataStorage source;
    ASSERT_TRUE(source.MaskData_Current_Init(MaskParam_Small(1)));
    CUnownedStorage copy(source);
    ASSERT_NE((*copy).MaskData_Current_Get(), nullptr);
    ExpectShared(*copy, source);
    for (int mode = 2; mode <= 6; ++mode)
        ASSERT_TRUE((*copy).MaskData_Current_Init(MaskParam_Small(mode)));
    EXPECT_EQ(Listed(source), (std::vector<int>{2, 3, 4, 5, 6})) << "the limit of five is copied too";
}

TEST(MaskDataStorageCopy, AnAssignedStorageSharesMutexListAndCurrentObject)
{
    CMaskDataStorage source;
    ASSERT_TRUE(source.MaskData_Current_Init(MaskParam_Small(1)));
    CMaskDataStorage target;
    ASSERT_TRUE(target.MaskData_Current_Init(MaskParam_Small(7)));
    CUnownedStorage own(target); // keeps what the assignment overwrites
    CMaskDataStorage& result = target = source;
    EXPECT_EQ(&result, &target);
    ExpectShared(target, source);
    ASSERT_TRUE(target.MaskData_Current_Init(MaskParam_Small(2)));
    EXPECT_EQ(Listed(source), (std::vector<int>{1, 2}));
    target = *own; // so that each destroys its own
    EXPECT_EQ(Listed(target), (std::vector<int>{7})) << "an assignment destroys nothing";
}

} // namespace
