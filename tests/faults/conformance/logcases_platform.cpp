#include "logcase.h"
#include "logscopes.h"

#include "dotweave/maskdata_base.h"
#include "dotweave/maskdatafactory.h"
#include "dotweave/maskdatastorage.h"
#include "generatorjob.h"
#include "generatorthread.h"
#include "maskparams.h"
#include "missingthread.h"
#include "nolimit.h"
#include "peek.h"

#include <utility>

namespace {

/// A call with only so many threads to be had.
std::function<bool()> WithThreads(int threadCount, bool (*call)())
{
    return [threadCount, call] {
        const CThreadFaults faults(threadCount);
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
    const CThreadFaults faults(Faults_Prepare(&IsProducer));
    SGeneratorJob job(PlainMask_Sliding(8, 4));
    CMaskDataGenerator generator;
    return !generator.Create(job.param, 6) || !generator.Wait_Exit(NO_LIMIT_MS) ||
           generator.Wait_PrepareComplete();
}

bool WorkerPrepare()
{
    const CThreadFaults faults(Faults_Prepare(&IsWorker));
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
    for (int threads = 0; threads < GENERATOR_THREAD_COUNT; ++threads) {
        const std::string name = "Threads" + std::to_string(threads);
        cases.push_back(
            {name + "Generator", WithThreads(threads, &GeneratorCreate), Records_MissingThread(threads)});
        cases.push_back(
            {name + "Create", WithThreads(threads, &MaskCreate), Records_MissingThread_Create(threads)});
        cases.push_back(
            {name + "Usage", WithThreads(threads, &CMaskData_Base::Usage),
             Chain(Records_MissingThread_Create(threads), {Failure(UNIT_MASK, SCOPE_USAGE, 73)})});
        cases.push_back(
            {name + "Factory", WithThreads(threads, &FactoryCreate), Records_MissingThread_Factory(threads)});
        cases.push_back(
            {name + "Storage", WithThreads(threads, &StorageInit), Records_MissingThread_Storage(threads)});
    }
    cases.push_back(
        {"ProducerPrepare", &ProducerPrepare, {Failure(UNIT_GENERATOR, SCOPE_GENERATOR_PREPARE)}});
    cases.push_back({"WorkerPrepare", &WorkerPrepare, {Failure(UNIT_WORKER, SCOPE_WORKER_PREPARE)}});
    return cases;
}
