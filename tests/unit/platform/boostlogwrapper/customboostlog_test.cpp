#include <algorithm>
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

using SLines = std::vector<std::pair<int, std::string>>; // severity, text

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

    SLines m_lines;
};

/// Adds the sink for one test.
class CustomBoostLog : public testing::Test {
protected:
    using CSink = boost::log::sinks::synchronous_sink<CKeepingBackend>;

    void SetUp() override { boost::log::core::get()->add_sink(m_sink); }
    void TearDown() override { boost::log::core::get()->remove_sink(m_sink); }

    SLines Lines() { return m_sink->locked_backend()->m_lines; }

    boost::shared_ptr<CSink> m_sink = boost::make_shared<CSink>();
};

TEST_F(CustomBoostLog, IsOneObjectFromStaticSetUpOn)
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

TEST_F(CustomBoostLog, GivesSinksTheNumbersOfSeverities)
{
    BOOST_LOG(CCustomBoostLog::BoostLog_Get()) << "none given";
    BOOST_LOG_SEV(CCustomBoostLog::BoostLog_Get(), SeverityLevel_Debug) << "a";
    BOOST_LOG_SEV(CCustomBoostLog::BoostLog_Get(), SeverityLevel_Info) << "b = " << 7;
    BOOST_LOG_SEV(CCustomBoostLog::BoostLog_Get(), SeverityLevel_Failure) << "failure";
    const SLines expected = {{0, "none given"}, {0, "a"}, {1, "b = 7"}, {2, "failure"}};
    EXPECT_EQ(Lines(), expected);
}

TEST_F(CustomBoostLog, LosesNoLineOfThreadsThatLogTogether)
{
    SLines expected;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i) {
        expected.insert(expected.end(), 50, {i % 3, "thread " + std::to_string(i)});
        threads.emplace_back([i] {
            for (int line = 0; line < 50; ++line)
                BOOST_LOG_SEV(CCustomBoostLog::BoostLog_Get(), static_cast<ESeverityLevel>(i % 3))
                    << "thread " << i;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    SLines lines = Lines();
    std::sort(lines.begin(), lines.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(lines, expected);
}

TEST(CustomBoostLogAlone, AddsNoFilterAndNoSwitch)
{
    EXPECT_TRUE(boost::log::core::get()->get_logging_enabled());
    EXPECT_TRUE(boost::log::core::get()->get_global_attributes().empty());
    EXPECT_TRUE(CCustomBoostLog::BoostLog_Get().open_record()); // nothing refuses the lowest severity
}

} // namespace
