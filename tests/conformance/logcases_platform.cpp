#include "logcase.h"
#include "logscopes.h"

#include "dotweave/maskdata_base.h"
#include "dotweave/maskdatafactory.h"
#include "dotweave/maskdatastorage.h"
#include "generatorjob.h"
#include "maskparams.h"
#include "peek.h"
#include "platformfaults.h"

#include <utility>

namespace {

using Records = std::vector<SLogRecord>;

constexpr unsigned int NO_LIMIT_MS = 0xFFFFFFFFU;
constexpr int THREAD_COUNT = 7; // six workers and, started last, the producer

/// What a generator logs that gets this many of its threads.
Records GeneratorRefusal(int threadCount)
{
    const SLogRecord create = Failure(UNIT_GENERATOR, SCOPE_GENERATOR_CREATE);
    if (threadCount == THREAD_COUNT - 1)
        return {create};
    return {Failure(UNIT_WORKER, SCOPE_WORKER_CREATE), Failure(UNIT_GENERATOR, SCOPE_GENERATOR_WORKERS),
            Failure(UNIT_GENERATOR, SCOPE_GENERATOR_INIT), create};
}

/// A call with only so many threads to be had.
std::function<bool()> WithThreads(int threadCount, bool (*call)())
{
    return [threadCount, call] {
        const CPlatformFaults faults = CPlatformFaults::StartsLeft(threadCount);
        return call();
    };
}

bool GeneratorCreate()
{
    SGeneratorJob job(PlainMask_Sliding(8, 4));
    CMaskDataGenerator generator;
    return generator.Create(job.param, 6);
}

bool MaskCreate()
{
    CMaskData_Base mask;
    return mask.Create(MaskParam_Plain());
}

bool FactoryCreate()
{
    return CMaskDataFactory::MaskData_Create(MaskParam_Plain()) != nullptr;
}

bool StorageInit()
{
    CMaskDataStorage storage;
    return storage.MaskData_Current_Init(MaskParam_Plain());
}

bool ProducerPrepare()
{
    const CPlatformFaults faults = CPlatformFaults::Prepare(EFailingPrepare::Producer);
    SGeneratorJob job(PlainMask_Sliding(8, 4));
    CMaskDataGenerator generator;
    return !generator.Create(job.param, 6) || !generator.Wait_Exit(NO_LIMIT_MS) ||
           generator.Wait_PrepareComplete();
}

bool WorkerPrepare()
{
    const CPlatformFaults faults = CPlatformFaults::Prepare(EFailingPrepare::Worker);
    SGeneratorJob job(PlainMask_Sliding(8, 4));
    CKelPtrQueueBuffer<SMaskDataGenerate_SubParam> buffer;
    std::vector<SMaskDataGenerate_SubParam*> none;
    buffer.Create(none, "pool");
    CMaskDataGenerator_Sub worker;
    return !worker.Create(&job.param, &buffer, nullptr) || !worker.Wait_Exit(NO_LIMIT_MS) ||
           worker.Wait_PrepareComplete();
}

} // namespace

/// Every missing thread at every level, and threads that cannot prepare themselves.
std::vector<SLogCase> LogCases_Platform()
{
    std::vector<SLogCase> cases;
    for (int threads = 0; threads < THREAD_COUNT; ++threads) {
        const std::string name = "Threads" + std::to_string(threads);
        const Records generator = GeneratorRefusal(threads);
        const Records mask = Chain(generator, {Failure(UNIT_MASK, SCOPE_MASK_DATA), MaskCreateFailure(120)});
        const Records factory = Chain(mask, {Failure(UNIT_FACTORY, SCOPE_FACTORY)});
        cases.push_back({name + "Generator", WithThreads(threads, &GeneratorCreate), generator});
        cases.push_back({name + "Create", WithThreads(threads, &MaskCreate), mask});
        cases.push_back({name + "Usage", WithThreads(threads, &CMaskData_Base::Usage),
                         Chain(mask, {Failure(UNIT_MASK, SCOPE_USAGE, 73)})});
        cases.push_back({name + "Factory", WithThreads(threads, &FactoryCreate), factory});
        cases.push_back({name + "Storage", WithThreads(threads, &StorageInit),
                         Chain(factory, {Failure(UNIT_STORAGE, SCOPE_STORAGE_INIT)})});
    }
    cases.push_back(
        {"ProducerPrepare", &ProducerPrepare, {Failure(UNIT_GENERATOR, SCOPE_GENERATOR_PREPARE)}});
    cases.push_back({"WorkerPrepare", &WorkerPrepare, {Failure(UNIT_WORKER, SCOPE_WORKER_PREPARE)}});
    return cases;
}
