#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <boost/log/attributes/value_extraction.hpp>
#include <boost/log/core.hpp>
#include <boost/log/sinks/basic_sink_backend.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <boost/make_shared.hpp>
#include <boostlogwrapper/customboostlog.h>
#include <gtest/gtest.h>

namespace {

using CLogger = boost::log::sources::severity_logger_mt<ESeverityLevel>;

// NOLINTNEXTLINE(cert-err58-cpp): asking this early is the point
const CLogger* const LOGGER_DURING_STATIC_INITIALISATION = &CCustomBoostLog::BoostLog_Get();

/// A host's sink that keeps what it is given.
class CKeepingBackend
    : public boost::log::sinks::basic_sink_backend<boost::log::sinks::synchronized_feeding> {
public:
    void consume(const boost::log::record_view& record)
    {
        const auto severity = boost::log::extract<ESeverityLevel>("Severity", record);
        const auto message = boost::log::extract<std::string>("Message", record);
        m_lines.emplace_back(severity.empty() ? -1 : static_cast<int>(severity.get()),
                             message.empty() ? "no message" : message.get());
    }

    std::vector<std::pair<int, std::string>> m_lines; // severity, text
};

/// Adds the sink for one test and takes it away again.
class CustomBoostLog : public testing::Test {
protected:
    using CSink = boost::log::sinks::synchronous_sink<CKeepingBackend>;

    void SetUp() override { boost::log::core::get()->add_sink(m_sink); }
    void TearDown() override { boost::log::core::get()->remove_sink(m_sink); }

    std::vector<std::pair<int, std::string>> Lines() { return m_sink->locked_backend()->m_lines; }

    boost::shared_ptr<CSink> m_sink = boost::make_shared<CSink>();
};

TEST_F(CustomBoostLog, TheLoggerIsAlreadyThereDuringStaticInitialisation)
{
    EXPECT_EQ(LOGGER_DURING_STATIC_INITIALISATION, &CCustomBoostLog::BoostLog_Get());
}

TEST_F(CustomBoostLog, EveryThreadGetsTheSameLogger)
{
    std::vector<const CLogger*> seen(4, nullptr);
    std::vector<std::thread> threads;
    threads.reserve(seen.size());
    for (const CLogger*& place : seen)
        threads.emplace_back([&place] { place = &CCustomBoostLog::BoostLog_Get(); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(seen, std::vector<const CLogger*>(4, LOGGER_DURING_STATIC_INITIALISATION));
}

TEST_F(CustomBoostLog, SeveritiesReachTheHostsSinkAsTheNumbersZeroOneTwo)
{
    BOOST_LOG_SEV(CCustomBoostLog::BoostLog_Get(), SeverityLevel_Debug) << "a";
    BOOST_LOG_SEV(CCustomBoostLog::BoostLog_Get(), SeverityLevel_Info) << "b = " << 7;
    BOOST_LOG_SEV(CCustomBoostLog::BoostLog_Get(), SeverityLevel_Failure) << "failure";
    const std::vector<std::pair<int, std::string>> expected = {{0, "a"}, {1, "b = 7"}, {2, "failure"}};
    EXPECT_EQ(Lines(), expected);
}

TEST_F(CustomBoostLog, ARecordWithoutASeverityIsDebug)
{
    BOOST_LOG(CCustomBoostLog::BoostLog_Get()) << "plain";
    const std::vector<std::pair<int, std::string>> expected = {{0, "plain"}};
    EXPECT_EQ(Lines(), expected);
}

TEST_F(CustomBoostLog, ThreadsThatLogTogetherLoseNoLineAndKeepTheirSeverities)
{
    constexpr int THREAD_COUNT = 4;
    constexpr int LINES_PER_THREAD = 50;
    std::vector<std::thread> threads;
    threads.reserve(THREAD_COUNT);
    for (int i = 0; i < THREAD_COUNT; ++i)
        threads.emplace_back([i] {
            const auto severity = static_cast<ESeverityLevel>(i % 3);
            for (int line = 0; line < LINES_PER_THREAD; ++line)
                BOOST_LOG_SEV(CCustomBoostLog::BoostLog_Get(), severity) << "thread " << i;
        });
    for (std::thread& thread : threads)
        thread.join();

    std::vector<int> linesOfThread(THREAD_COUNT, 0);
    for (const auto& [severity, message] : Lines())
        for (int i = 0; i < THREAD_COUNT; ++i)
            if (message == "thread " + std::to_string(i)) {
                EXPECT_EQ(severity, i % 3);
                ++linesOfThread[static_cast<std::size_t>(i)];
            }
    EXPECT_EQ(linesOfThread, std::vector<int>(THREAD_COUNT, LINES_PER_THREAD));
}

TEST(CustomBoostLogAlone, TheLibraryAddsNoFilterAndNoSwitch)
{
    EXPECT_TRUE(boost::log::core::get()->get_logging_enabled());
    EXPECT_TRUE(boost::log::core::get()->get_global_attributes().empty());
    EXPECT_TRUE(CCustomBoostLog::BoostLog_Get().open_record()); // nothing refuses a record of lowest severity
}

} // namespace
