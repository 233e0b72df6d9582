#pragma once

#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

/// One record as a host's sink sees it: the innermost scope, its unit and line, severity and text.
struct SLogRecord {
    std::string scope;
    std::string unit;
    unsigned int line = 0; ///< LINE_ANY in an expectation where no line number is agreed
    int severity = 0;
    std::string text;
};

inline constexpr unsigned int LINE_ANY = 0;

/// Equal when all agree. A line of LINE_ANY on one side agrees with every line of the other, which must have
/// one.
bool operator==(const SLogRecord& a, const SLogRecord& b);
std::ostream& operator<<(std::ostream& stream, const SLogRecord& record);

/// The record of a failing operation: "failure" at severity 2.
SLogRecord Failure(const std::string& unit, const std::string& scope, unsigned int line = LINE_ANY);

/// Collects every record that reaches the logging core while it lives, from any thread, and keeps them from
/// the console. One at a time.
class CLogCapture {
public:
    CLogCapture();
    CLogCapture(const CLogCapture&) = delete;
    CLogCapture& operator=(const CLogCapture&) = delete;
    ~CLogCapture();

    /// What was logged since construction or the last Clear, in the order of arrival.
    std::vector<SLogRecord> Records() const;
    void Clear();

private:
    struct SState;
    std::unique_ptr<SState> m_state;
};
