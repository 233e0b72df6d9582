// What the host's logging core decides: whether anything is written at all, and what becomes of a sink's errors.

#include "dirtyheap.h"
#include "dotweave/maskdata_base.h"
#include "dotweave/maskdatafactory.h"
#include "dotweave/maskdatastorage.h"
#include "log.h"
#include "logcapture.h"
#include "logscopes.h"
#include "maskparams.h"
#include "peek.h"
#include "platformfaults.h"
#include "throwingsink.h"

#include <boost/log/attributes/named_scope.hpp>
#include <boost/log/core.hpp>
#include <boost/log/expressions.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
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

TEST(LogSwitch, AnEnabledCoreEvaluatesTheTextOnce)
{
    const CLogCapture log;
    EXPECT_EQ(TimesEvaluated(), 1);
    EXPECT_EQ(log.Records(), (std::vector<SLogRecord>{{"scope", "unit", 1, 2, "1"}}));
}

TEST(LogSwitch, ADisabledCoreEvaluatesNothing)
{
    const CLogCapture log;
    const CLoggingDisabled disabled;
    EXPECT_EQ(TimesEvaluated(), 0);
    EXPECT_TRUE(log.Records().empty());
    EXPECT_FALSE(HasOpenScopes());
}

TEST(LogSwitch, AFilteredRecordEvaluatesNothing)
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

TEST(LogSwitch, EveryStatementPushesItsOwnScopeAlone)
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

TEST(LogSwitch, ASinksErrorComesOutOfCreateBehindTheFirstRecord)
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

TEST(LogSwitch, ASinkDoesNotHinderAModeThatLogsNothing)
{
    const CThrowingSink sink;
    CMaskData_Base mask;
    EXPECT_TRUE(mask.Create(MaskParam_Small(0)));
}

TEST(LogSwitch, TheFactoryPassesASinksErrorOnAndFreesTheObject)
{
    // The object that is left behind by a plain refusal is not left behind here; the leak checker sees it.
    const CThrowingSink sink;
    EXPECT_THROW(CMaskDataFactory::MaskData_Create(Mode_WithoutBand()), CSinkError);
}

TEST(LogSwitch, TheStorageIsUnlockedAndUsableBehindASinksError)
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

bool IsBlank(const CMaskData_Base& mask)
{
    int position = -1;
    const std::uint8_t* bytes = mask.MaskData_Get(0, position);
    return std::all_of(bytes, bytes + mask.MaskBytes_OneColor(), [](std::uint8_t byte) { return byte == 0; });
}

TEST(LogSwitch, ASinksErrorOnAWorkersThreadStaysThere)
{
    // Every worker fails, and so does what each of them logs. The band's only item is lost and leaves zeros.
    const CPlatformFaults faults = CPlatformFaults::Prepare(EFailingPrepare::Worker);
    const CLogCapture log;
    const CThrowingSink sink;
    CMaskData_Base mask;
    EXPECT_TRUE(mask.Create(MaskParam_Plain()));
    EXPECT_EQ(log.Records(), std::vector<SLogRecord>(6, Failure(UNIT_WORKER, SCOPE_WORKER_PREPARE)));
    EXPECT_TRUE(IsBlank(mask));
}

TEST(LogSwitch, AProducerThatDoesNotGetReadyLeavesABlankMask)
{
    const CPlatformFaults faults = CPlatformFaults::Prepare(EFailingPrepare::Producer);
    for (const bool isSinkThrowing : {false, true}) {
        SCOPED_TRACE(isSinkThrowing);
        const CLogCapture log;
        std::optional<CThrowingSink> sink;
        if (isSinkThrowing)
            sink.emplace();
        CMaskData_Base mask;
        const CDirtyMemory dirty;
        EXPECT_TRUE(mask.Create(MaskParam_Plain()));
        EXPECT_EQ(log.Records(), (std::vector<SLogRecord>{Failure(UNIT_GENERATOR, SCOPE_GENERATOR_PREPARE)}));
        EXPECT_TRUE(IsBlank(mask));
    }
}

TEST(LogSwitch, AProducerWhoseRecordThrowsLogsItsStateToo)
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
    EXPECT_FALSE(generator.IsOutputComplete()); // so the mask is blanked when the threads are gone
}
