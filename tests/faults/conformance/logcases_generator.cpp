#include "logcase.h"
#include "logscopes.h"

#include "generatorjob.h"
#include "peek.h"

#include <memory>
#include <utility>

namespace {

using CItemBuffer = CKelPtrQueueBuffer<SMaskDataGenerate_SubParam>;

/// A producer without its threads, with as many work items as its pool is to have.
struct SProducer {
    explicit SProducer(std::size_t itemCount)
    {
        std::vector<SMaskDataGenerate_SubParam*> items;
        items.reserve(itemCount);
        for (std::size_t i = 0; i < itemCount; ++i)
            items.push_back(new SMaskDataGenerate_SubParam{}); // the queues' from here on
        peek.QueueBuffer() = std::make_unique<CItemBuffer>();
        peek.QueueBuffer()->Create(items, "pool");
        peek.Param() = job.param;
    }
    SGeneratorJob job{PlainMask_Sliding(8, 4)}; // outlives the generator that points to it
    CMaskDataGenerator generator;
    SMaskDataGenerator_Peek peek{generator};
};

SLogRecord State(const std::string& number)
{
    return FailureValue(UNIT_GENERATOR, SCOPE_GENERATOR_LOOP, "m_processState = " + number);
}

/// Fills the work queue to the last place, so that a push waits in vain.
SMaskDataGenerator_Peek& WorkQueue_Fill(SMaskDataGenerator_Peek& peek)
{
    auto item = std::make_unique<SMaskDataGenerate_SubParam>();
    while (peek.QueueBuffer()->m_queue_Work->TryPush(item.get())) {
        static_cast<void>(item.release()); // the queue's now
        item = std::make_unique<SMaskDataGenerate_SubParam>();
    }
    return peek;
}

/// A generator that the platform refuses its own thread.
class CRefusedGenerator : public CMaskDataGenerator {
public:
    bool Start(const char* /*name*/) override { return false; }
};

bool IsRefusedThreadCreated()
{
    SGeneratorJob job(PlainMask_Sliding(8, 4));
    CRefusedGenerator generator;
    return generator.Create(job.param, 6);
}

/// Asks a generator that stays busy whether it has ended.
bool IsBusyGeneratorDone()
{
    SGeneratorJob job(PlainMask_Large());
    CMaskDataGenerator generator;
    return !generator.Create(job.param, 6) || generator.Wait_Exit(0);
}

} // namespace

std::vector<SLogCase> LogCases_Generator()
{
    std::vector<SLogCase> cases;
    cases.push_back(
        {"ThreadDoesNotStart", IsRefusedThreadCreated, {Failure(UNIT_GENERATOR, SCOPE_GENERATOR_CREATE)}});
    for (const auto& [name, state] :
         {std::pair("StateZero", 0), std::pair("StateFour", 4), std::pair("StateNegative", -1)}) {
        cases.push_back({name,
                         [state = state] {
                             SProducer producer(1);
                             producer.peek.ProcessState() = state;
                             return producer.peek.OneLoop();
                         },
                         {State(std::to_string(state))}});
    }
    cases.push_back({"WorkQueueStaysFull",
                     [] {
                         SProducer producer(1);
                         return WorkQueue_Fill(producer.peek).AddSourceData();
                     },
                     {Failure(UNIT_GENERATOR, SCOPE_GENERATOR_ADD)}});
    cases.push_back({"WorkQueueStaysFullInTheLoop",
                     [] {
                         SProducer producer(1);
                         producer.peek.ProcessState() = 2;
                         return WorkQueue_Fill(producer.peek).OneLoop();
                     },
                     {Failure(UNIT_GENERATOR, SCOPE_GENERATOR_ADD), State("2")}});
    cases.push_back({"NotDoneInTime", IsBusyGeneratorDone, {Failure(UNIT_GENERATOR, SCOPE_GENERATOR_WAIT)}});
    return cases;
}
