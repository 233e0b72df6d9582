#pragma once

#include "logcapture.h"

#include <functional>
#include <ostream>
#include <string>
#include <vector>

/// @file
/// The failing paths of the library as a table: a call that fails, and everything that it logs. The rows are
/// in the logcases_*.cpp beside this file; logconformance_test.cpp runs them.

/// One failing call.
struct SLogCase {
    std::string name;                ///< the row's place in a test name
    std::function<bool()> call;      ///< @return what the call returned: false, or whether it gave an object
    std::vector<SLogRecord> records; ///< all that it logs, innermost first
};

inline std::ostream& operator<<(std::ostream& stream, const SLogCase& logCase)
{
    return stream << logCase.name;
}

/// A log statement that nothing can reach.
struct SUnreachedLog {
    std::string scope;
    std::string when;   ///< what the statement waits for
    std::string reason; ///< why that never happens
};

std::vector<SLogCase> LogCases_Records();
std::vector<SLogCase> LogCases_CutTables();
std::vector<SLogCase> LogCases_Assembly();
std::vector<SLogCase> LogCases_Generator();
std::vector<SLogCase> LogCases_Workers();
std::vector<SLogCase> LogCases_Storage();
std::vector<SLogCase> LogCases_Platform();
std::vector<SUnreachedLog> LogStatements_Unreached();
