// Every failing path of the library: the call, and the whole sequence of its log records.

#include "logcase.h"
#include "logscopes.h"

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

constexpr const char* STATEMENTS[] = {"Log_Failure(", "Log_FailureValue(", "DOTWEAVE_LOG("};

/// One file of the library.
struct SSource {
    std::string unit; ///< what its records carry as their file
    std::string text;
};

/// The unit that a file belongs to: the longest that its name starts with.
std::string Unit_OfFile(const std::string& stem)
{
    std::string longest;
    for (const std::string unit :
         {UNIT_MASK, UNIT_FACTORY, UNIT_STORAGE, UNIT_SINE, UNIT_GENERATOR, UNIT_WORKER}) {
        if (stem.starts_with(unit) && unit.size() > longest.size())
            longest = unit;
    }
    return longest;
}

/// The library's sources but for the two tools that write records.
std::vector<SSource> LibrarySources()
{
    std::vector<SSource> sources;
    for (const auto& entry : std::filesystem::directory_iterator(DOTWEAVE_LIBRARY_DIR)) {
        const std::string stem = entry.path().stem().string();
        if (entry.path().extension() != ".cpp" || stem == "log")
            continue;
        std::ifstream file(entry.path());
        sources.push_back(
            {Unit_OfFile(stem), {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()}});
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

/// Whether a line of a source belongs to a log statement, which may go over several lines.
bool IsOfLogStatement(const std::string& source, std::ptrdiff_t line)
{
    const auto lineOf = [&source](std::size_t at) {
        return 1 + std::count(source.begin(), source.begin() + static_cast<std::ptrdiff_t>(at), '\n');
    };
    for (const std::string statement : STATEMENTS) {
        for (std::size_t at = source.find(statement); at != std::string::npos;
             at = source.find(statement, at + statement.size())) {
            if (lineOf(at) <= line && line <= lineOf(source.find(';', at)))
                return true;
        }
    }
    return false;
}

/// Whether a record's line is that of a log statement in a source which spells its scope.
bool IsLineOfAStatement(const SLogRecord& record)
{
    const std::vector<SSource> sources = LibrarySources();
    return std::any_of(sources.begin(), sources.end(), [&record](const SSource& source) {
        std::set<std::string> scopes;
        Scopes_Collect(source.text, scopes);
        return source.unit == record.unit && scopes.contains(record.scope) &&
               IsOfLogStatement(source.text, record.line);
    });
}

} // namespace

TEST_P(LogConformance, LogsTheAgreedRecords)
{
    const CLogCapture log;
    EXPECT_FALSE(GetParam().call());
    const std::vector<SLogRecord> records = log.Records();
    const std::vector<SLogRecord>& agreed = GetParam().records;
    EXPECT_EQ(records, agreed);
    for (std::size_t i = 0; i < std::min(records.size(), agreed.size()); ++i) {
        if (agreed[i].line == LINE_ANY) {
            EXPECT_TRUE(IsLineOfAStatement(records[i])) << records[i];
        }
    }
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
    for (const SSource& source : LibrarySources())
        Scopes_Collect(source.text, spelled);
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
    for (const SSource& source : LibrarySources()) {
        for (const char* statement : STATEMENTS)
            written += Count(source.text, statement);
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

TEST(LogConformanceTable, TakesAnyLineWhereNoneIsAgreedButAsksForOne)
{
    const SLogRecord any = Failure(UNIT_MASK, SCOPE_MASK_DATA);
    const auto atLine = [](unsigned int line) { return Failure(UNIT_MASK, SCOPE_MASK_DATA, line); };
    EXPECT_TRUE(any == atLine(7));
    EXPECT_TRUE(atLine(7) == any);
    EXPECT_TRUE(atLine(7) == atLine(7));
    EXPECT_FALSE(atLine(7) == atLine(8));
    EXPECT_FALSE(any == atLine(0)) << "a record without a line";
}
