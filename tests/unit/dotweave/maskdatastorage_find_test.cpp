// The key of the storage's cache: all bytes of the record as the caller gave it.

#include "dotweave/maskdatafactory.h"
#include "dotweave/maskdatastorage.h"

#include "listedmodes.h"
#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstddef>
#include <list>
#include <vector>

namespace {

TEST(MaskDataStorageFind, EveryBitOfTheRecordIsPartOfTheKey)
{
    const SMaskParam listed = MaskParam_Small(1);
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(listed));
    SMaskDataStorage_Peek peek{storage};
    const std::array<unsigned char, 48> bytes = MaskParam_Bytes(listed);
    for (std::size_t byte = 0; byte < bytes.size(); ++byte) {
        for (unsigned int bit = 0; bit < 8; ++bit) {
            std::array<unsigned char, 48> other = bytes;
            other[byte] = static_cast<unsigned char>(other[byte] ^ (1U << bit));
            EXPECT_EQ(peek.MaskData_Find(std::bit_cast<SMaskParam>(other)), nullptr)
                << "byte " << byte << ", bit " << bit;
        }
    }
    EXPECT_EQ(peek.MaskData_Find(listed), peek.List().front());
}

TEST(MaskDataStorageFind, WhatTheObjectMadeOfTheRecordIsNoKey)
{
    // 273 rows do not divide into 2 passes, so the object switches its current copy to smooth-2.
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 273;
    param.basePass = 2;
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(param));
    const CMaskData_Base* mask = storage.MaskData_Current_Get();
    ASSERT_NE(MaskParam_Bytes(mask->MaskParam_Current()), MaskParam_Bytes(mask->MaskParam_Input()));
    SMaskDataStorage_Peek peek{storage};
    EXPECT_EQ(peek.MaskData_Find(mask->MaskParam_Current()), nullptr);
    EXPECT_EQ(peek.MaskData_Find(mask->MaskParam_Input()), mask);
}

TEST(MaskDataStorageFind, OfEqualRecordsTheOneNearestTheFrontIsFound)
{
    CMaskDataStorage storage;
    SMaskDataStorage_Peek peek{storage};
    CMaskData_Base* other = CMaskDataFactory::MaskData_Create(MaskParam_Small(2));
    CMaskData_Base* front = CMaskDataFactory::MaskData_Create(MaskParam_Small(1));
    CMaskData_Base* back = CMaskDataFactory::MaskData_Create(MaskParam_Small(1));
    peek.List() = {other, front, back}; // the storage's from here on
    EXPECT_EQ(peek.MaskData_Find(MaskParam_Small(1)), front);
    EXPECT_EQ(peek.MaskData_Find(MaskParam_Small(2)), other);
    EXPECT_EQ(peek.MaskData_Find(MaskParam_Small(3)), nullptr);
}

TEST(MaskDataStorageFind, AnObjectListedTwiceIsTakenOutTwiceAndStandsOnceAtTheBack)
{
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(2)));
    SMaskDataStorage_Peek peek{storage};
    peek.List().push_back(peek.List().front());
    ASSERT_EQ(Listed(storage), (std::vector<int>{1, 2, 1}));
    EXPECT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    EXPECT_EQ(Listed(storage), (std::vector<int>{2, 1}));
}

TEST(MaskDataStorageFind, OnlyTheFoundObjectIsTakenOutAndNotItsEqual)
{
    CMaskDataStorage storage;
    SMaskDataStorage_Peek peek{storage};
    CMaskData_Base* front = CMaskDataFactory::MaskData_Create(MaskParam_Small(1));
    CMaskData_Base* back = CMaskDataFactory::MaskData_Create(MaskParam_Small(1));
    peek.List() = {front, back}; // the storage's from here on
    EXPECT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    EXPECT_EQ(storage.MaskData_Current_Get(), front);
    EXPECT_EQ(peek.List(), (std::list<CMaskData_Base*>{back, front}));
}

} // namespace
