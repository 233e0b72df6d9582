// Every failing path of the library: the call, and the whole sequence of its log records.

#include "logcase.h"
#include "logscopes.h"

#include <boost/log/attributes/named_scope.hpp>
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <tuple>

namespace {

class LogCase : public testing::TestWithParam<SLogCase> {};

std::string CaseName(const testing::TestParamInfo<SLogCase>& info)
{
    return info.param.name;
}

std::vector<SLogCase> AllCases()
{
    std::vector<SLogCase> all;
    for (const auto table : {&LogCases_Records, &LogCases_CutTables, &LogCases_Assembly, &LogCases_Generator,
                             &LogCases_Workers, &LogCases_Storage, &LogCases_Platform}) {
        std::vector<SLogCase> cases = table();
        std::move(cases.begin(), cases.end(), std::back_inserter(all));
    }
    return all;
}

std::ptrdiff_t Count(const std::string& text, const std::string& word)
{
    std::ptrdiff_t count = 0;
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + word.size()))
        ++count;
    return count;
}

/// Log statements of the library, but for those inside the two tools that write records.
std::ptrdiff_t Statements_Count()
{
    std::ptrdiff_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(DOTWEAVE_LIBRARY_DIR)) {
        if (entry.path().extension() != ".cpp" || entry.path().stem() == "log")
            continue;
        std::ifstream file(entry.path());
        const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        for (const char* statement : {"Log_Failure(", "Log_FailureValue(", "DOTWEAVE_LOG("})
            count += Count(text, statement);
    }
    return count;
}

} // namespace

TEST_P(LogCase, LogsTheAgreedRecords)
{
    const CLogCapture log;
    EXPECT_FALSE(GetParam().call());
    EXPECT_EQ(log.Records(), GetParam().records);
    EXPECT_TRUE(boost::log::attributes::named_scope::get_scopes().empty()) << "every scope has been left";
}

INSTANTIATE_TEST_SUITE_P(Records, LogCase, testing::ValuesIn(LogCases_Records()), CaseName);
INSTANTIATE_TEST_SUITE_P(CutTables, LogCase, testing::ValuesIn(LogCases_CutTables()), CaseName);
INSTANTIATE_TEST_SUITE_P(Assembly, LogCase, testing::ValuesIn(LogCases_Assembly()), CaseName);
INSTANTIATE_TEST_SUITE_P(Generator, LogCase, testing::ValuesIn(LogCases_Generator()), CaseName);
INSTANTIATE_TEST_SUITE_P(Workers, LogCase, testing::ValuesIn(LogCases_Workers()), CaseName);
INSTANTIATE_TEST_SUITE_P(Storage, LogCase, testing::ValuesIn(LogCases_Storage()), CaseName);
INSTANTIATE_TEST_SUITE_P(Platform, LogCase, testing::ValuesIn(LogCases_Platform()), CaseName);

/// Every statement has a line of its own, so the reached ones can be counted. A new failing path gets its row
/// in a logcases file.
TEST(LogCaseTable, ReachesAllStatementsButTheListed)
{
    std::set<std::tuple<std::string, std::string, unsigned int>> reached;
    for (const SLogCase& row : AllCases()) {
        const CLogCapture log;
        EXPECT_FALSE(row.call()) << row;
        for (const SLogRecord& record : log.Records())
            reached.emplace(record.unit, record.scope, record.line);
    }
    // The checks of the record share their agreed line with that of the printing times, and the two of the
    // smooth-2 layout, of which one is listed as unreached, share one too.
    constexpr std::ptrdiff_t ON_A_SHARED_LINE = 1;
    EXPECT_EQ(std::ssize(reached) + std::ssize(LogStatements_Unreached()) + ON_A_SHARED_LINE,
              Statements_Count());
}

TEST(LogCaseTable, AnUnagreedLineMayBeAnyButNotNone)
{
    const SLogRecord any = Failure(UNIT_MASK, SCOPE_MASK_DATA);
    const auto atLine = [](unsigned int line) { return Failure(UNIT_MASK, SCOPE_MASK_DATA, line); };
    EXPECT_TRUE(any == atLine(7));
    EXPECT_TRUE(atLine(7) == any);
    EXPECT_TRUE(atLine(7) == atLine(7));
    EXPECT_FALSE(atLine(7) == atLine(8));
    EXPECT_FALSE(any == atLine(0)) << "a record without a line";
}
