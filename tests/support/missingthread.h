#pragma once

#include "logcapture.h"
#include "logscopes.h"

#include <vector>

/// Threads of one generator: six workers, then the producer.
inline constexpr int GENERATOR_THREAD_COUNT = 7;

/// The records of a generator that got this many of its threads and not the next one.
inline std::vector<SLogRecord> Records_MissingThread(int threadCount)
{
    const SLogRecord create = Failure(UNIT_GENERATOR, SCOPE_GENERATOR_CREATE);
    if (threadCount == GENERATOR_THREAD_COUNT - 1)
        return {create};
    return {Failure(UNIT_WORKER, SCOPE_WORKER_CREATE), Failure(UNIT_GENERATOR, SCOPE_GENERATOR_WORKERS),
            Failure(UNIT_GENERATOR, SCOPE_GENERATOR_INIT), create};
}

/// Those of a mask object whose generator got this many threads.
inline std::vector<SLogRecord> Records_MissingThread_Create(int threadCount)
{
    std::vector<SLogRecord> records = Records_MissingThread(threadCount);
    records.push_back(Failure(UNIT_MASK, SCOPE_MASK_DATA));
    records.push_back(Failure(UNIT_MASK, SCOPE_MASK_CREATE, 120));
    return records;
}

/// Those of the factory.
inline std::vector<SLogRecord> Records_MissingThread_Factory(int threadCount)
{
    std::vector<SLogRecord> records = Records_MissingThread_Create(threadCount);
    records.push_back(Failure(UNIT_FACTORY, SCOPE_FACTORY));
    return records;
}

/// Those of a storage that was to make the mode current.
inline std::vector<SLogRecord> Records_MissingThread_Storage(int threadCount)
{
    std::vector<SLogRecord> records = Records_MissingThread_Factory(threadCount);
    records.push_back(Failure(UNIT_STORAGE, SCOPE_STORAGE_INIT));
    return records;
}
