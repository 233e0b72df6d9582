#include "logcase.h"
#include "logscopes.h"

#include "generatorjob.h"
#include "peek.h"
#include "refusedrequest.h"

#include <memory>
#include <utility>

namespace {

/// A worker without its thread, in the state that a row asks for.
struct SWorker {
    explicit SWorker(int state)
    {
        std::vector<SMaskDataGenerate_SubParam*> items = {new SMaskDataGenerate_SubParam{}};
        buffer.Create(items, "pool"); // the only item idles: the free queue is full
        peek.Inputs(&job.param, &buffer, nullptr);
        peek.ProcessState() = state;
    }
    SGeneratorJob job{PlainMask_Sliding(8, 4)};
    CKelPtrQueueBuffer<SMaskDataGenerate_SubParam> buffer;
    CMaskDataGenerator_Sub worker;
    SMaskDataGenerator_Sub_Peek peek{worker};
};

SLogRecord State(const std::string& number)
{
    return FailureValue(UNIT_WORKER, SCOPE_WORKER_LOOP, "m_processState = " + number);
}

/// A worker that the platform refuses its thread.
class CRefusedWorker : public CMaskDataGenerator_Sub {
public:
    bool Start(const char* /*name*/) override { return false; }
};

} // namespace

std::vector<SLogCase> LogCases_Workers()
{
    std::vector<SLogCase> cases;
    cases.push_back({"ThreadDoesNotStart",
                     [] {
                         SWorker given(1); // what a worker would be given
                         CRefusedWorker worker;
                         return worker.Create(&given.job.param, &given.buffer, nullptr);
                     },
                     {Failure(UNIT_WORKER, SCOPE_WORKER_CREATE)}});
    for (const auto& [name, state] :
         {std::pair("StateZero", 0), std::pair("StateSeven", 7), std::pair("StateNegative", -1)}) {
        cases.push_back({name,
                         [state = state] {
                             SWorker worker(state);
                             return worker.peek.OneLoop();
                         },
                         {State(std::to_string(state))}});
    }
    cases.push_back({"FreeQueueTakesNothingBack",
                     [] {
                         SWorker worker(6);
                         worker.peek.SourceData() = new SMaskDataGenerate_SubParam{}; // one too many
                         return worker.peek.OneLoop();
                     },
                     {Failure(UNIT_WORKER, SCOPE_WORKER_COMPLETE), State("6")}});
    if (!REFUSED_REQUEST_IS_FATAL) {
        cases.push_back({"NoMemoryForTheBlocks",
                         [] {
                             SWorker worker(1);
                             worker.job.param.splitCount_XRes =
                                 -1; // more blocks than any memory has room for
                             return worker.peek.OneLoop();
                         },
                         {State("1")}});
    }
    return cases;
}
