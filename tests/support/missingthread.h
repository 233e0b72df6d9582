#pragma once

#include "logcapture.h"

#include <vector>

/// Threads of one generator: six workers, then the producer.
inline constexpr int GENERATOR_THREAD_COUNT = 7;

/// The records of a generator that got this many of its threads and not the next one.
inline std::vector<SLogRecord> Records_MissingThread(int threadCount)
{
    const SLogRecord create =
        Failure("maskdatagenerator",
                "bool __cdecl CMaskDataGenerator::Create(const struct SMaskDataGenerate_Param &,int)");
    if (threadCount == GENERATOR_THREAD_COUNT - 1)
        return {create};
    return {
        Failure("maskdatagenerator_sub",
                "bool __cdecl CMaskDataGenerator_Sub::Create(const struct SMaskDataGenerate_Param *,class "
                "CKelPtrQueueBuffer<struct SMaskDataGenerate_SubParam> *,const class CSineMask *)"),
        Failure("maskdatagenerator", "bool __cdecl CMaskDataGenerator::Create_AllSubThread(void)"),
        Failure("maskdatagenerator", "bool __cdecl CMaskDataGenerator::Init_Param(void)"), create};
}

/// Those of a mask object whose generator got this many threads.
inline std::vector<SLogRecord> Records_MissingThread_Create(int threadCount)
{
    std::vector<SLogRecord> records = Records_MissingThread(threadCount);
    records.push_back(Failure("maskdata_base", "bool __cdecl CMaskData_Base::CreateMaskData(void)"));
    records.push_back(
        Failure("maskdata_base", "bool __cdecl CMaskData_Base::Create(const struct SMaskParam &)", 120));
    return records;
}

/// Those of the factory.
inline std::vector<SLogRecord> Records_MissingThread_Factory(int threadCount)
{
    std::vector<SLogRecord> records = Records_MissingThread_Create(threadCount);
    records.push_back(Failure(
        "maskdatafactory",
        "class CMaskData_Base *__cdecl CMaskDataFactory::MaskData_Create(const struct SMaskParam &)"));
    return records;
}

/// Those of a storage that was to make the mode current.
inline std::vector<SLogRecord> Records_MissingThread_Storage(int threadCount)
{
    std::vector<SLogRecord> records = Records_MissingThread_Factory(threadCount);
    records.push_back(
        Failure("maskdatastorage",
                "bool __cdecl CMaskDataStorage::MaskData_Current_Init(const struct SMaskParam &)"));
    return records;
}
