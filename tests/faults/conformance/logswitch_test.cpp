// What the host's logging core decides: whether anything is written at all, and what becomes of a sink's
// errors.

#include "dirtyheap.h"
#include "dotweave/maskdata_base.h"
#include "dotweave/maskdatafactory.h"
#include "dotweave/maskdatastorage.h"
#include "generatorthread.h"
#include "log.h"
#include "logcapture.h"
#include "logscopes.h"
#include "maskparams.h"
#include "peek.h"
#include "throwingsink.h"

#include <boost/log/attributes/named_scope.hpp>
#include <boost/log/core.hpp>
#include <boost/log/expressions.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

namespace {

using boost::log::core;

class CLoggingDisabled {
public:
    CLoggingDisabled() { core::get()->set_logging_enabled(false); }
    CLoggingDisabled(const CLoggingDisabled&) = delete;
    CLoggingDisabled& operator=(const CLoggingDisabled&) = delete;
    ~CLoggingDisabled() { core::get()->set_logging_enabled(true); }
};

/// A host's filter that lets nothing through.
class CEverythingFiltered {
public:
    CEverythingFiltered()
    {
        core::get()->set_filter([](const boost::log::attribute_value_set&) { return false; });
    }
    CEverythingFiltered(const CEverythingFiltered&) = delete;
    CEverythingFiltered& operator=(const CEverythingFiltered&) = delete;
    ~CEverythingFiltered() { core::get()->reset_filter(); }
};

/// Writes a record whose text counts how often it is asked for. @return how often
int TimesEvaluated()
{
    int count = 0;
    DOTWEAVE_LOG("unit", "scope", 1, SeverityLevel_Failure) << ++count;
    return count;
}

SMaskParam Mode_WithoutBand()
{
    return MaskParam_Feathered(FeatherNozzle_Smooth_2, 544, 4, 0.0F);
}

bool HasOpenScopes()
{
    return !boost::log::attributes::named_scope::get_scopes().empty();
}

} // namespace

TEST(LogSwitch, EnabledCoreEvaluatesTheTextOnce)
{
    const CLogCapture log;
    EXPECT_EQ(TimesEvaluated(), 1);
    EXPECT_EQ(log.Records(), (std::vector<SLogRecord>{{"scope", "unit", 1, 2, "1"}}));
}

TEST(LogSwitch, DisabledCoreEvaluatesNothing)
{
    const CLogCapture log;
    const CLoggingDisabled disabled;
    EXPECT_EQ(TimesEvaluated(), 0);
    EXPECT_TRUE(log.Records().empty());
    EXPECT_FALSE(HasOpenScopes());
}

TEST(LogSwitch, FilteredRecordEvaluatesNothing)
{
    const CLogCapture log;
    const CEverythingFiltered filtered;
    EXPECT_EQ(TimesEvaluated(), 0);
    EXPECT_TRUE(log.Records().empty());
    EXPECT_FALSE(HasOpenScopes());
}

TEST(LogSwitch, LoggingNeverChangesAResult)
{
    const CLogCapture log;
    const CLoggingDisabled disabled;
    CMaskData_Base refused;
    EXPECT_FALSE(refused.Create(Mode_WithoutBand()));
    EXPECT_EQ(refused.MaskHeight_IncludeRes(), 544); // as far as the step that refused it
    CMaskData_Base built;
    EXPECT_TRUE(built.Create(MaskParam_Small(0)));
    CMaskDataStorage storage;
    EXPECT_FALSE(storage.MaskData_Current_Init(Mode_WithoutBand()));
    EXPECT_EQ(storage.MaskData_Current_Get(), nullptr);
    EXPECT_TRUE(log.Records().empty());
}

TEST(LogSwitch, StatementsPushTheirOwnScopeAlone)
{
    std::vector<std::size_t> depths;
    core::get()->set_filter([&depths](const boost::log::attribute_value_set&) {
        depths.push_back(boost::log::attributes::named_scope::get_scopes().size());
        return false;
    });
    CMaskDataStorage storage;
    EXPECT_FALSE(storage.MaskData_Current_Init(Mode_WithoutBand()));
    core::get()->reset_filter();
    EXPECT_EQ(depths, std::vector<std::size_t>(4, 1U)); // resolution, Create, factory, storage
    EXPECT_FALSE(HasOpenScopes());
}

TEST(LogSwitch, SinkErrorComesOutOfCreate)
{
    const CLogCapture log;
    {
        CMaskData_Base mask;
        const CThrowingSink sink;
        EXPECT_THROW(mask.Create(Mode_WithoutBand()), CSinkError);
        EXPECT_EQ(mask.MaskParam_Input().featherNozzleType, FeatherNozzle_Smooth_2);
        EXPECT_NE(mask.YResStep(), nullptr); // freed with the object
        EXPECT_FALSE(HasOpenScopes());
    }
    EXPECT_EQ(log.Records(), (std::vector<SLogRecord>{{SCOPE_RES_PARAM, UNIT_MASK, 941, 1,
                                                       "m_maskHeight = 544, m_leadBlankHeight = 544"}}));
}

TEST(LogSwitch, SinkDoesNotHinderAModeWithoutRecords)
{
    const CThrowingSink sink;
    CMaskData_Base mask;
    EXPECT_TRUE(mask.Create(MaskParam_Small(0)));
}

TEST(LogSwitch, FactoryPassesASinkErrorOnAndFrees)
{
    // A plain refusal keeps the object for good; here it is freed, which the leak checker sees.
    const CThrowingSink sink;
    EXPECT_THROW(CMaskDataFactory::MaskData_Create(Mode_WithoutBand()), CSinkError);
}

TEST(LogSwitch, StorageIsUsableAfterASinkError)
{
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    const CMaskData_Base* first = storage.MaskData_Current_Get();
    {
        const CThrowingSink sink;
        EXPECT_THROW(storage.MaskData_Current_Init(Mode_WithoutBand()), CSinkError);
    }
    bool isInit = false;
    std::thread other([&] { isInit = storage.MaskData_Current_Init(MaskParam_Small(1)); }); // needs the lock
    other.join();
    EXPECT_TRUE(isInit);
    EXPECT_EQ(storage.MaskData_Current_Get(), first);
    EXPECT_EQ(SMaskDataStorage_Peek{storage}.List().size(), 1U);
}

/// Whether a creation that failed in its assembly left a block that nobody wrote to.
bool IsBlank(CMaskData_Base& mask)
{
    const CMaskBlock* block = SMaskData_Base_Peek{mask}.MaskBlock();
    return block != nullptr &&
           std::all_of(block->MaskData_Const(), block->MaskData_Const() + block->MaskDataBytesCount(),
                       [](std::uint8_t byte) { return byte == 0; });
}

/// Threads that do not get ready, by what they are.
struct SUnreadyThread {
    const char* name;
    bool (*isUnready)(const CustomThreadBase&);
    std::vector<SLogRecord> records; // of all of them
};

TEST(LogSwitch, UnreadyThreadsFailWhateverTheSinkDoes)
{
    const SUnreadyThread unready[] = {
        {"producer", &IsProducer, {Failure(UNIT_GENERATOR, SCOPE_GENERATOR_PREPARE)}},
        {"workers", &IsWorker, {std::size_t{6}, Failure(UNIT_WORKER, SCOPE_WORKER_PREPARE)}}};
    for (const SUnreadyThread& threads : unready) {
        SCOPED_TRACE(threads.name);
        const CThreadFaults faults(Faults_Prepare(threads.isUnready));
        CLogCapture log;
        CMaskData_Base mask;
        const CDirtyMemory dirty;
        EXPECT_FALSE(mask.Create(MaskParam_Plain()));
        const std::vector<SLogRecord> end = {Failure(UNIT_MASK, SCOPE_MASK_DATA), MaskCreateFailure(120)};
        EXPECT_EQ(log.Records(), Chain(threads.records, end));
        EXPECT_TRUE(IsBlank(mask));

        // A sink's error stays on the thread that logs; the caller's own first record takes the call with it.
        log.Clear();
        CMaskData_Base other;
        const CThrowingSink sink;
        EXPECT_THROW(other.Create(MaskParam_Plain()), CSinkError);
        EXPECT_EQ(log.Records(), Chain(threads.records, {end.front()}));
        EXPECT_TRUE(IsBlank(other));
    }
}

TEST(LogSwitch, ProducerWhoseRecordThrowsLogsItsState)
{
    CMaskDataGenerator generator;
    SMaskDataGenerator_Peek peek{generator};
    std::vector<SMaskDataGenerate_SubParam*> items = {new SMaskDataGenerate_SubParam{}};
    peek.QueueBuffer() = std::make_unique<CKelPtrQueueBuffer<SMaskDataGenerate_SubParam>>();
    peek.QueueBuffer()->Create(items, "pool"); // the queues' from here on
    ASSERT_TRUE(peek.QueueBuffer()->m_queue_Work->TryPush(new SMaskDataGenerate_SubParam{}));
    peek.ProcessState() = 2; // hands out the item, for which the full queue has no room
    const CLogCapture log;
    const CThrowingSink sink;
    EXPECT_THROW(peek.OneLoop(), CSinkError); // the host's thread library keeps it inside the thread
    EXPECT_EQ(log.Records(), (std::vector<SLogRecord>{
                                 Failure(UNIT_GENERATOR, SCOPE_GENERATOR_ADD),
                                 FailureValue(UNIT_GENERATOR, SCOPE_GENERATOR_LOOP, "m_processState = 2")}));
    EXPECT_FALSE(generator.IsOutputComplete());
}
