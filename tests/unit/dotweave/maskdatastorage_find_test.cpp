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

class StorageFind : public testing::Test {
protected:
    /// Lists an object of a small mode at the back, the storage's from here on.
    CMaskData_Base* List(int number)
    {
        m_peek.List().push_back(CMaskDataFactory::MaskData_Create(MaskParam_Small(number)));
        return m_peek.List().back();
    }

    CMaskDataStorage m_storage;
    SMaskDataStorage_Peek m_peek{m_storage};
};

TEST_F(StorageFind, EveryBitOfTheRecordIsPartOfTheKey)
{
    const CMaskData_Base* listed = List(1);
    const std::array<unsigned char, 48> bytes = MaskParam_Bytes(MaskParam_Small(1));
    for (std::size_t bit = 0; bit < 8 * bytes.size(); ++bit) { // the sign of a zero among them
        std::array<unsigned char, 48> other = bytes;
        other[bit / 8] = static_cast<unsigned char>(other[bit / 8] ^ (1U << bit % 8));
        EXPECT_EQ(m_peek.MaskData_Find(std::bit_cast<SMaskParam>(other)), nullptr) << "bit " << bit;
    }
    EXPECT_EQ(m_peek.MaskData_Find(MaskParam_Small(1)), listed);
}

TEST_F(StorageFind, WhatTheObjectMadeOfTheRecordIsNoKey)
{
    SMaskParam split = MaskParam_Small(1); // 5 passes in two parts are 2, as are 4
    split.yResPass = 5;
    split.resSplitType = ResSplit_Y2;
    SMaskParam switched = MaskParam_Plain(); // 273 rows do not divide into 2 passes: switches to smooth-2
    switched.nozzleCount = 273;
    switched.basePass = 2;
    for (const SMaskParam& param : {split, switched}) {
        ASSERT_TRUE(m_storage.MaskData_Current_Init(param)) << param;
        const CMaskData_Base* mask = m_storage.MaskData_Current_Get();
        ASSERT_NE(MaskParam_Bytes(mask->MaskParam_Current()), MaskParam_Bytes(mask->MaskParam_Input()));
        EXPECT_EQ(m_peek.MaskData_Find(mask->MaskParam_Current()), nullptr) << param;
        EXPECT_EQ(m_peek.MaskData_Find(mask->MaskParam_Input()), mask) << param;
    }
}

TEST_F(StorageFind, OfEqualRecordsTheFrontIsFound)
{
    CMaskData_Base* other = List(2);
    CMaskData_Base* front = List(1);
    CMaskData_Base* back = List(1);
    EXPECT_EQ(m_peek.MaskData_Find(MaskParam_Small(1)), front);
    EXPECT_EQ(m_peek.MaskData_Find(MaskParam_Small(2)), other);
    EXPECT_EQ(m_peek.MaskData_Find(MaskParam_Small(3)), nullptr);
    EXPECT_TRUE(Init(m_storage, {1}));
    EXPECT_EQ(m_storage.MaskData_Current_Get(), front);
    EXPECT_EQ(m_peek.List(), (std::list<CMaskData_Base*>{other, back, front}));
}

TEST_F(StorageFind, ListedTwiceIsListedOnceAfterInit)
{
    m_peek.List().push_back(List(1));
    List(2);
    EXPECT_TRUE(Init(m_storage, {1}));
    EXPECT_EQ(Listed(m_storage), (std::vector<int>{2, 1}));
}

} // namespace
