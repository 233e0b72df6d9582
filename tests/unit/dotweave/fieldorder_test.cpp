// The agreed order of the fields of every class. maskdata_base_test.cpp checks those of the mask object, the
// test of each record those of the record.

#include "dotweave/basemaskdata.h"
#include "dotweave/maskdatastorage.h"
#include "dotweave/sinemask.h"
#include "kelptrqueue.h"
#include "kelptrqueuebuffer.h"
#include "kelqueue.h"
#include "maskdatagenerator.h"
#include "maskdatagenerator_sub.h"

#include <cstddef>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct SField {
    std::ptrdiff_t offset;
    std::size_t size;
    std::size_t alignment;
};

template <typename TObject, typename TField>
SField Field(const TObject& object, const TField& field)
{
    return {reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&object),
            sizeof(TField), // NOLINT(bugprone-sizeof-expression): of the pointer
            alignof(TField)};
}

// An explicit instantiation may name private members, so it hands the tests their places.
template <typename TClass, auto... FIELDS>
struct SFieldKey {
    friend std::vector<SField> Fields(const TClass& object) { return {Field(object, object.*FIELDS)...}; }
};

/// Succeeds when the fields follow one another from this offset on, with no gap but for alignment.
testing::AssertionResult AreInOrder(const std::vector<SField>& fields, std::size_t start)
{
    std::size_t end = start;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::size_t expected =
            (end + fields[i].alignment - 1) / fields[i].alignment * fields[i].alignment;
        if (fields[i].offset != static_cast<std::ptrdiff_t>(expected))
            return testing::AssertionFailure()
                   << "field " << i << " is at " << fields[i].offset << ", not at " << expected;
        end = expected + fields[i].size;
    }
    return testing::AssertionSuccess();
}

constexpr std::size_t AFTER_TABLE = sizeof(void*); // of the virtual operations
constexpr std::size_t AFTER_THREAD = sizeof(CustomThreadBase);

std::vector<SField> Fields(const CBaseMaskData& object);
template struct SFieldKey<CBaseMaskData, &CBaseMaskData::m_width, &CBaseMaskData::m_height,
                          &CBaseMaskData::m_count, &CBaseMaskData::m_maskData>;

TEST(FieldOrder, BaseMaskData)
{
    EXPECT_TRUE(AreInOrder(Fields(CBaseMaskData()), 0));
}

std::vector<SField> Fields(const CMaskDataStorage& object);
template struct SFieldKey<CMaskDataStorage, &CMaskDataStorage::m_pMutex,
                          &CMaskDataStorage::m_listMaskData_MaxCount, &CMaskDataStorage::m_pListMaskData,
                          &CMaskDataStorage::m_pMaskData_Current>;

TEST(FieldOrder, MaskDataStorage)
{
    EXPECT_TRUE(AreInOrder(Fields(CMaskDataStorage()), 0));
}

std::vector<SField> Fields(const CSineMask& object);
template struct SFieldKey<CSineMask, &CSineMask::m_featherHeight, &CSineMask::m_sinMaskType,
                          &CSineMask::m_maskHeight, &CSineMask::m_maskWidth, &CSineMask::m_dotBits,
                          &CSineMask::m_maskBuffer_Down, &CSineMask::m_maskBuffer_Up, &CSineMask::m_maskSize>;

TEST(FieldOrder, SineMask)
{
    EXPECT_TRUE(AreInOrder(Fields(CSineMask()), 0));
}

using CIntQueue = CKelQueue<int*>;
std::vector<SField> Fields(const CIntQueue& object);
template struct SFieldKey<CIntQueue, &CIntQueue::m_capacity, &CIntQueue::m_count, &CIntQueue::m_queue,
                          &CIntQueue::m_isAddFinished, &CIntQueue::m_event_NotEmpty,
                          &CIntQueue::m_event_NotFull>;

TEST(FieldOrder, BothKindsOfKelQueue)
{
    EXPECT_TRUE(AreInOrder(Fields(CIntQueue(1)), AFTER_TABLE));
    EXPECT_TRUE(AreInOrder(Fields(CKelPtrQueue<int>(1)), AFTER_TABLE));
    static_assert(sizeof(CKelPtrQueue<int>) == sizeof(CIntQueue));
}

using CIntBuffer = CKelPtrQueueBuffer<int>;
std::vector<SField> Fields(const CIntBuffer& object);
template struct SFieldKey<CIntBuffer, &CIntBuffer::m_name, &CIntBuffer::m_queue_Free,
                          &CIntBuffer::m_queue_Work, &CIntBuffer::m_queue_Spare>;

TEST(FieldOrder, KelPtrQueueBuffer)
{
    EXPECT_TRUE(AreInOrder(Fields(CIntBuffer()), AFTER_TABLE));
}

std::vector<SField> Fields(const CMaskDataGenerator& object);
template struct SFieldKey<CMaskDataGenerator, &CMaskDataGenerator::m_processState,
                          &CMaskDataGenerator::m_param, &CMaskDataGenerator::m_color_Next,
                          &CMaskDataGenerator::m_position_Next, &CMaskDataGenerator::m_splitIndex_Next,
                          &CMaskDataGenerator::m_subThreads, &CMaskDataGenerator::m_subThreadCount,
                          &CMaskDataGenerator::m_queueBuffer, &CMaskDataGenerator::m_sineMask>;

TEST(FieldOrder, MaskDataGenerator)
{
    EXPECT_TRUE(AreInOrder(Fields(CMaskDataGenerator()), AFTER_THREAD));
}

std::vector<SField> Fields(const CMaskDataGenerator_Sub& object);
template struct SFieldKey<CMaskDataGenerator_Sub, &CMaskDataGenerator_Sub::m_processState,
                          &CMaskDataGenerator_Sub::m_pParam, &CMaskDataGenerator_Sub::m_pSourceData,
                          &CMaskDataGenerator_Sub::m_pQueueBuffer, &CMaskDataGenerator_Sub::m_blocks,
                          &CMaskDataGenerator_Sub::m_pSineMask>;

TEST(FieldOrder, MaskDataGeneratorSub)
{
    EXPECT_TRUE(AreInOrder(Fields(CMaskDataGenerator_Sub()), AFTER_THREAD));
}

} // namespace
