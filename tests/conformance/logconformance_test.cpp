// Every failing path of the library: the call, and the whole sequence of its log records.

#include "logcase.h"

#include <boost/log/attributes/named_scope.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <tuple>

namespace {

class LogConformance : public testing::TestWithParam<SLogCase> {};

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

/// The library's sources but for the two tools that write records.
std::vector<std::string> LibrarySources()
{
    std::vector<std::string> sources;
    for (const auto& entry : std::filesystem::directory_iterator(DOTWEAVE_LIBRARY_DIR)) {
        if (entry.path().extension() != ".cpp" || entry.path().stem() == "log")
            continue;
        std::ifstream file(entry.path());
        sources.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return sources;
}

std::ptrdiff_t Count(const std::string& text, const std::string& word)
{
    std::ptrdiff_t count = 0;
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + word.size()))
        ++count;
    return count;
}

/// The signatures that a source spells out; neighbouring literals are one text.
void Scopes_Collect(const std::string& source, std::set<std::string>& scopes)
{
    std::size_t open = source.find('"');
    while (open != std::string::npos) {
        std::string text;
        std::size_t next = open;
        for (; next != std::string::npos && source[next] == '"';
             next = source.find_first_not_of(" \n", next)) {
            std::size_t close = next + 1;
            while (source.at(close) != '"')
                close += source[close] == '\\' ? 2 : 1;
            text += source.substr(next + 1, close - next - 1);
            next = close + 1;
        }
        if (text.find("__cdecl ") != std::string::npos)
            scopes.insert(text);
        open = source.find('"', next);
    }
}

} // namespace

TEST_P(LogConformance, LogsTheAgreedRecordsAndNothingElse)
{
    const CLogCapture log;
    EXPECT_FALSE(GetParam().call());
    EXPECT_EQ(log.Records(), GetParam().records);
    EXPECT_TRUE(boost::log::attributes::named_scope::get_scopes().empty()) << "every scope has been left";
}

INSTANTIATE_TEST_SUITE_P(Records, LogConformance, testing::ValuesIn(LogCases_Records()), CaseName);
INSTANTIATE_TEST_SUITE_P(CutTables, LogConformance, testing::ValuesIn(LogCases_CutTables()), CaseName);
INSTANTIATE_TEST_SUITE_P(Assembly, LogConformance, testing::ValuesIn(LogCases_Assembly()), CaseName);
INSTANTIATE_TEST_SUITE_P(Generator, LogConformance, testing::ValuesIn(LogCases_Generator()), CaseName);
INSTANTIATE_TEST_SUITE_P(Workers, LogConformance, testing::ValuesIn(LogCases_Workers()), CaseName);
INSTANTIATE_TEST_SUITE_P(Storage, LogConformance, testing::ValuesIn(LogCases_Storage()), CaseName);
INSTANTIATE_TEST_SUITE_P(Platform, LogConformance, testing::ValuesIn(LogCases_Platform()), CaseName);

TEST(LogConformanceTable, HasEveryScopeOfTheLibraryAndNoOther)
{
    std::set<std::string> spelled;
    for (const std::string& source : LibrarySources())
        Scopes_Collect(source, spelled);
    std::set<std::string> listed;
    for (const SLogCase& row : AllCases()) {
        for (const SLogRecord& record : row.records)
            listed.insert(record.scope);
    }
    for (const SUnreachedLog& statement : LogStatements_Unreached())
        listed.insert(statement.scope);
    EXPECT_EQ(listed, spelled);
}

TEST(LogConformanceTable, ReachesEveryLogStatementButTheListedOnes)
{
    std::ptrdiff_t written = 0;
    for (const std::string& source : LibrarySources()) {
        for (const char* statement : {"Log_Failure(", "Log_FailureValue(", "DOTWEAVE_LOG("})
            written += Count(source, statement);
    }
    std::set<std::tuple<std::string, std::string, unsigned int>> reached;
    for (const SLogCase& row : AllCases()) {
        const CLogCapture log;
        EXPECT_FALSE(row.call()) << row.name;
        for (const SLogRecord& record : log.Records())
            reached.emplace(record.unit, record.scope, record.line);
    }
    // The checks of the record share their agreed line with that of the printing times, and the two of the
    // smooth-2 layout, of which one is listed as unreached, share one too.
    constexpr std::ptrdiff_t ON_A_SHARED_LINE = 1;
    EXPECT_EQ(static_cast<std::ptrdiff_t>(reached.size() + LogStatements_Unreached().size()) +
                  ON_A_SHARED_LINE,
              written)
        << "a new failing path gets its row in a logcases file";
}
